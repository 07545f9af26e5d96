// Cuts a page along its white space into bands from top to bottom, and these into columns.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_REGIONS_BANDS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_REGIONS_BANDS_H_

#include <cstdint>
#include <vector>

#include "pdf/Box.h"

namespace TarnixTools::engines {

// A line of text, or a thing that is as it is.
struct RegionItem {
  pdf::Box box;             // of text: from the small letters' height to the baseline
  double size = 0;          // of text; 0 for other things
  std::size_t letters = 0;  // of text
};

struct RegionColumn {
  pdf::Box box;
  std::vector<std::uint32_t> items;  // as they are read
};

struct RegionBand {
  pdf::Box box;
  std::vector<RegionColumn> columns;  // as they are read
};

// Every item is in one column. Columns within columns are read one after the other.
//   is_right_to_left - which column is read first
std::vector<RegionBand> CutIntoBands(const std::vector<RegionItem>& items, bool is_right_to_left);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_REGIONS_BANDS_H_
