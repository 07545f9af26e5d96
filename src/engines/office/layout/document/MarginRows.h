// Headers and footers whose parts stand beside each other.
#ifndef TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_MARGINROWS_H_
#define TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_MARGINROWS_H_

#include <vector>

#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// Makes one paragraph, with tabs, of paragraphs of a line that stand on one baseline.
//   blocks - of a header or a footer, from the top
void JoinRows(std::vector<Block>& blocks);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_LAYOUT_DOCUMENT_MARGINROWS_H_
