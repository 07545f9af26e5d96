// Tables that were found on a page, with the paragraphs of their cells.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLEMAKER_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLEMAKER_H_

#include <cstdint>
#include <utility>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/paragraphs/ParagraphMaker.h"
#include "engines/support/layout/tables/TableFinder.h"
#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {

class TableMaker {
 public:
  // Both outlive this.
  TableMaker(const std::vector<WordLine>& lines, ParagraphMaker& paragraphs);

  Table Make(FoundTable found);

  // The lines without the words that tables have taken so far.
  std::vector<WordLine> LinesOutside() const;

 private:
  struct Place {
    std::uint32_t line;
    std::uint32_t word;
  };

  void FillCell(std::vector<std::uint32_t> words, TableCell& cell);

  const std::vector<WordLine>* lines_;
  ParagraphMaker* paragraphs_;
  std::vector<Place> places_;   // of all words of all lines
  std::vector<bool> is_taken_;  // of the words
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLEMAKER_H_
