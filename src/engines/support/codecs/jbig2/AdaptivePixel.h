// Where the first adaptive pixel of a generic region's template is of most use (ISO/IEC 14492, 6.2.5.3).
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ADAPTIVEPIXEL_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ADAPTIVEPIXEL_H_

#include "engines/support/codecs/BitRows.h"
#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// A screen of dots repeats itself: one place further on, where a pixel is most often what it is here, tells
// more than one more neighbour, and such pictures take half the bytes. Told by a sample of rows, and tried
// on it. For all other pictures the nominal place.
TemplatePixel ChooseAdaptivePixel(const BitPicture& picture);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_ADAPTIVEPIXEL_H_
