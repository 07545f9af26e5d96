// A paragraph of a Word document: its properties, and its lines as one text with runs.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_PARAGRAPHWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_PARAGRAPHWRITER_H_

#include <functional>

#include "engines/office/writers/text/ParagraphFit.h"
#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// The share of a line's height that is above its baseline.
inline constexpr double kAboveBaseline = 0.8;

// What a paragraph has of the place where it stands.
struct ParagraphPlace {
  double left = 0;  // the room of the column, on the page
  double right = 0;
  double before = 0;
  double after = 0;
  double pitch = 0;  // from line to line, exactly
  bool begins_page = false;
  bool begins_column = false;
  bool is_in_cell = false;
  std::function<void()> write_anchored;  // runs of what is anchored at the paragraph; may be empty
  std::function<void()> write_section;   // the section that ends with it; may be empty
};

void WriteParagraph(Story& story, const OfficePage& page, const Paragraph& paragraph,
                    const ParagraphPlace& place);

// One without text, as high as place.pitch says.
void WriteSpacer(Story& story, const ParagraphPlace& place);

// One that holds a picture.
void WritePictureParagraph(Story& story, const OfficePage& page, const OfficePicture& picture,
                           const pdf::Box& box, const std::string& description,
                           const ParagraphPlace& place);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_PARAGRAPHWRITER_H_
