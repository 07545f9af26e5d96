// How pages are cut into bands and columns on which lines and things stand as chance has it: in columns
// that begin and end anywhere, with lines over several of them and what stands beside.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/Dice.h"
#include "engines/support/layout/LayoutDump.h"
#include "engines/support/layout/regions/Bands.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::IsAsExpected;

using Items = std::vector<RegionItem>;

constexpr double kPitch = 12;

double Height(double size) {
  return size / 2;
}

// A column of lines, with a gap, a picture or a line that is short or sticks out here and there.
//   returns where the next line below them would be
double AddColumn(Dice& dice, double left, double right, double top, std::size_t lines,
                 Items& items) {
  double y = top;
  const std::size_t letters = dice.Chance(20) ? dice.Under(4) + 9 : 30;
  for (std::size_t i = 0; i < lines; ++i) {
    if (dice.Chance(4)) {
      const double height = dice.Between(28, 32, 0.5);
      items.push_back({.box = {left, y, left + dice.Between(20, 80, 4), y + height}});
      y += height + 4;
    }
    double end = right;
    if (dice.Chance(10)) {
      end = left + (right - left) / 2;
    } else if (dice.Chance(5)) {
      end += dice.Between(-4, 12, 0.5);
    }
    const double size = dice.Chance(10) ? dice.Between(1, 16, 3) : 10;
    items.push_back({.box = {left, y, end, y + Height(size)},
                     .size = size,
                     .letters = dice.Chance(10) ? dice.Under(14) : letters});
    y += dice.Chance(6) ? dice.Between(10, 26, 0.5) : kPitch;
  }
  return y;
}

double AddColumns(Dice& dice, double top, Items& items) {
  const std::size_t count = dice.Under(3) + 1;
  const std::size_t lines = dice.Chance(20) ? dice.Under(4) + 1 : dice.Under(10) + 2;
  const double gutter = dice.Between(4, 24, 0.5);
  const double width = (500 - gutter * static_cast<double>(count - 1)) / static_cast<double>(count);
  double left = 50;
  double end = top;
  for (std::size_t i = 0; i < count; ++i) {
    const double shift = dice.Chance(40) ? dice.Between(-24, 48, 0.5) : 0;
    const std::size_t own = dice.Chance(50) ? lines : dice.Under(lines) + 1;
    end =
        std::max(end, AddColumn(dice, left, left + width, top + std::max(shift, 0.0), own, items));
    left += width + gutter;
  }
  return end;
}

Items SceneOf(Dice& dice) {
  Items items;
  double y = 60;
  for (std::size_t parts = dice.Under(3) + 1; parts > 0; --parts) {
    if (dice.Chance(50)) {
      const double right = dice.Chance(60) ? 550 : dice.Between(100, 540, 20);
      y = AddColumn(dice, 50, right, y, dice.Under(3) + 1, items);
      y += dice.Chance(50) ? 0 : dice.Between(0, 20, 0.5);
    }
    y = AddColumns(dice, y, items);
    y += dice.Chance(50) ? 0 : dice.Between(-6, 20, 0.5);
  }
  if (dice.Chance(30)) {
    const double x = dice.Between(4, 580, 4);
    const double at = dice.Between(60, y, 4);
    items.push_back({.box = {x, at, x + dice.Between(5, 60, 5), at + 5}, .size = 10, .letters = 3});
  }
  if (dice.Chance(20)) {
    std::reverse(items.begin(), items.end());
  }
  return items;
}

// As "0-4 8": the items as they are read.
std::string Numbers(const std::vector<std::uint32_t>& items) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    const std::size_t first = i;
    while (i + 1 < items.size() && items[i + 1] == items[i] + 1) {
      ++i;
    }
    text += (text.empty() ? "" : " ") + std::to_string(items[first]);
    text += i > first ? "-" + std::to_string(items[i]) : "";
  }
  return text;
}

// Each item is in one column; no two columns of a band cross, and their boxes are around their items.
void ExpectSound(const Items& items, const std::vector<RegionBand>& bands, bool is_right_to_left) {
  std::vector<std::uint32_t> all;
  for (const RegionBand& band : bands) {
    for (std::size_t i = 0; i < band.columns.size(); ++i) {
      const RegionColumn& column = band.columns[i];
      for (const std::uint32_t item : column.items) {
        EXPECT_TRUE(column.box.Encloses(items[item].box));
        EXPECT_TRUE(band.box.Encloses(items[item].box));
      }
      all.insert(all.end(), column.items.begin(), column.items.end());
      if (i > 0) {
        const RegionColumn& before = band.columns[i - 1];
        const double gutter = is_right_to_left ? before.box.left - column.box.right
                                               : column.box.left - before.box.right;
        EXPECT_GE(gutter, 4);
      }
    }
  }
  std::sort(all.begin(), all.end());
  ASSERT_EQ(all.size(), items.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_EQ(all[i], i);
  }
}

// Bands are parted by "||", columns by "|"; the edges of a band and of its columns stand before them.
std::string Cut(const Items& items, bool is_right_to_left) {
  const std::vector<RegionBand> bands = CutIntoBands(items, is_right_to_left);
  ExpectSound(items, bands, is_right_to_left);
  std::string text;
  for (const RegionBand& band : bands) {
    text += (text.empty() ? "" : " || ") + ShownNumber(band.box.bottom) + "-" +
            ShownNumber(band.box.top) + ":";
    for (const RegionColumn& column : band.columns) {
      text += (&column == &band.columns.front() ? " " : " | ") + Numbers(column.items);
    }
  }
  return text;
}

TEST(RandomRegions, AreCutIntoBands) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 240; ++seed) {
    Dice dice(seed);
    const Items items = SceneOf(dice);
    text += std::to_string(seed) + ": " + Cut(items, seed % 8 == 0) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("layout/random-bands.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
