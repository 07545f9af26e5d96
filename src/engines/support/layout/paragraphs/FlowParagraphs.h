// The paragraphs of a page's flow, in the order in which they are read.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_FLOWPARAGRAPHS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_FLOWPARAGRAPHS_H_

#include <string>
#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines {

// Those of tables are left out.
std::vector<Paragraph*> FlowParagraphs(PageLayout& page);

// UTF-8; what parts words at the ends of lines is joined.
std::string TextOf(const Paragraph& paragraph);

// Moves it to another place on the page.
void MoveBy(Paragraph& paragraph, double dx, double dy);

// The part of a piece between two bytes of its text, about where it stands.
//   face - of the piece, by whose letters its place is told the better; may be null
TextPiece PartOf(const TextPiece& piece, std::size_t begin, std::size_t end,
                 const Typeface* face = nullptr);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_FLOWPARAGRAPHS_H_
