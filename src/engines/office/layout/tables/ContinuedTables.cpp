#include "engines/office/layout/tables/ContinuedTables.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSameEdge = 5;     // points between edges of columns that are one
constexpr double kEndOfPage = 0.6;  // of its height: what ends above is not cut by the page's end
constexpr double kStartOfPage = 0.35;  // of its height

// The first or the last block of the flow if it is a table; null if it is not.
Table* TableAt(PageLayout& page, bool is_first) {
  Block* found = nullptr;
  for (Band& band : page.bands) {
    for (Column& column : band.columns) {
      for (Block& block : column.blocks) {
        found = is_first && found != nullptr ? found : &block;
      }
    }
  }
  return found == nullptr ? nullptr : std::get_if<Table>(&found->content);
}

// Wherever the tables stand: a page may be a left one or a right one.
bool HaveSameColumns(const Table& a, const Table& b) {
  if (a.columns.size() != b.columns.size() || a.columns.size() < 3) {
    return false;
  }
  for (std::size_t i = 0; i < a.columns.size(); ++i) {
    const double shift = (b.columns[i] - b.columns[0]) - (a.columns[i] - a.columns[0]);
    if (std::abs(shift) > kSameEdge) {
      return false;
    }
  }
  return true;
}

}  // namespace

void MarkContinuedTables(OfficeDocument& document) {
  for (std::size_t i = 1; i < document.pages.size(); ++i) {
    OfficePage& before = document.pages[i - 1];
    OfficePage& page = document.pages[i];
    Table* first = TableAt(page.layout, true);
    const Table* last = TableAt(before.layout, false);
    if (first == nullptr || last == nullptr || page.model.number != before.model.number + 1) {
      continue;
    }
    first->goes_on = first->is_ruled == last->is_ruled && HaveSameColumns(*last, *first) &&
                     LowerEdge(last->box) > kEndOfPage * before.layout.height &&
                     UpperEdge(first->box) < kStartOfPage * page.layout.height;
  }
}

}  // namespace TarnixTools::engines::office
