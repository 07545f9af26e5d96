// Text of slides (ECMA-376, part 1, 21.1.2): paragraphs below each other in a shape or a cell, each
// line where it stands on the page.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDETEXT_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDETEXT_H_

#include <vector>

#include "engines/office/writers/slides/SlideContext.h"
#include "engines/office/writers/text/ParagraphFit.h"

namespace TarnixTools::engines::office {

// A paragraph that knows its place.
struct PlacedParagraph {
  const Paragraph* paragraph = nullptr;
  FittedParagraph fitted;
  double pitch = 0;
  double top = 0;     // of its first line as it is shown, on the page
  double bottom = 0;  // of its last
};

// Paragraphs that one shape holds, from top to bottom.
struct TextGroup {
  std::vector<PlacedParagraph> paragraphs;
  pdf::Box box;  // around their room
};

// The paragraphs among the blocks, those together that follow each other without anything between
// them and do not overlap. left, right: the room that they have.
std::vector<TextGroup> GroupText(SlidePart& slide, const std::vector<Block>& blocks, double left,
                                 double right);

// The paragraphs as elements a:p, in a shape whose sides are those of the box.
void WriteParagraphs(SlidePart& slide, const TextGroup& group, double left, double right);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_SLIDES_SLIDETEXT_H_
