// Rows of text as lines of a paragraph: pieces that look alike, with links and joints.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PIECEMAKER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PIECEMAKER_H_

#include <cstdint>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/paragraphs/LookTable.h"
#include "engines/support/layout/paragraphs/TextRows.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

class PieceMaker {
 public:
  // Both outlive this.
  PieceMaker(const PageModel& page, LookTable& looks) : page_(&page), looks_(&looks) {}

  TextLine LineOf(const TextRow& row);

 private:
  enum class Start { kGoesOn, kOwnPiece };

  void AddWord(const Word& word, double line_size, Start start, TextLine& line);
  void AddGap(const WordLine* before, const WordLine& next, TextLine& line);
  std::vector<std::int32_t> LinksOf(const Word& word) const;

  const PageModel* page_;
  LookTable* looks_;
};

// Says how a line of a paragraph goes on in the next one, and drops the hyphen that parts a word.
void JoinLines(TextLine& line, const TextLine& next);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_PIECEMAKER_H_
