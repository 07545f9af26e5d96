// Shapes of slides (ECMA-376, part 1, 19.3): text boxes, tables, pictures, rectangles and lines.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDESHAPES_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDESHAPES_H_

#include "engines/office/writers/slides/SlideContext.h"
#include "engines/office/writers/slides/SlideText.h"

namespace TarnixTools::engines::office {

// angle: degrees clockwise, about the middle of the box. is_vertical: the letters stand upright below
// each other.
void WriteTextShape(SlidePart& slide, const TextGroup& group, const pdf::Box& box, double angle,
                    bool is_vertical = false);

void WriteTableShape(SlidePart& slide, const Table& table);

// Nothing where the picture cannot be read.
void WritePictureShape(SlidePart& slide, const Picture& picture);

// Rectangles and lines as they are, all else as a picture.
void WriteDrawingShapes(SlidePart& slide, const Drawing& drawing);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDESHAPES_H_
