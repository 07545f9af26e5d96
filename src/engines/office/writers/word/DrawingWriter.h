// Pictures, shapes and text boxes of a Word document (ECMA-376, part 1, 20.4): in a line, or at
// their place on the page. Everything is written as runs of the paragraph that is open.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_DRAWINGWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_DRAWINGWRITER_H_

#include <functional>
#include <optional>
#include <string>

#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// The image as a file: of a picture its images, of a drawing what the page shows there.
std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Picture& picture);
std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Drawing& drawing);

// Opens the link that leads out of the document from where a picture is; false for none, and then
// there is nothing to close.
bool OpenLinkOf(Story& story, const OfficePage& page, const pdf::Box& picture);

void WriteInlinePicture(Story& story, const OfficePicture& picture, const pdf::Box& box,
                        const std::string& description);

void WriteAnchoredPicture(Story& story, const OfficePicture& picture, const pdf::Box& box,
                          const std::string& description, bool is_behind);

// Rectangles and lines, behind the text.
void WriteShapes(Story& story, const OfficePage& page, const Drawing& drawing);

void WriteBackground(Story& story, const PageLayout& page, const Rgb& color);

struct TextBoxLook {
  double angle = 0;  // degrees clockwise, from 0 up to 360
  bool is_behind = false;
  bool is_vertical = false;  // letters stand upright below each other
};

// write_content: writes at least one paragraph.
void WriteTextBox(Story& story, const pdf::Box& box, const TextBoxLook& look,
                  const std::function<void()>& write_content);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_DRAWINGWRITER_H_
