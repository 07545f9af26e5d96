#include <gmock/gmock.h>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/tables/TableColumns.h"

namespace TarnixTools::engines {
namespace {

using ::testing::SizeIs;

// Rows with as many words below each other.
std::vector<InkRow> RowsWith(std::size_t words) {
  InkRow row;
  row.size = 10;
  for (std::size_t i = 0; i < words; ++i) {
    const double left = 20 * static_cast<double>(i);
    row.chunks.push_back({.first = i, .last = i, .left = left, .right = left + 10});
  }
  return std::vector<InkRow>(3, row);
}

TEST(TableColumns, FindsGapsBetweenColumns) {
  EXPECT_THAT(FindColumnGaps(RowsWith(100), 0, 1e6, 2), SizeIs(99));
}

TEST(TableColumns, FindsNoneBetweenMoreThanATableMayHave) {
  EXPECT_THAT(FindColumnGaps(RowsWith(limits::kMaxTableColumns + 2), 0, 1e6, 2), SizeIs(0));
}

}  // namespace
}  // namespace TarnixTools::engines
