#include "engines/office/writers/word/DownwardPages.h"

#include <algorithm>
#include <utility>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {

namespace {

// Whether the lines of both follow each other, and are not columns above each other.
bool FollowEachOther(const Floating& a, const Floating& b) {
  const pdf::Box one = QuarterTurned(a.box);
  const pdf::Box other = QuarterTurned(b.box);
  return other.right <= one.left;
}

}  // namespace

bool RunsDown(const PageLayout& page) {
  const bool has_flow = std::any_of(page.bands.begin(), page.bands.end(), [](const Band& band) {
    return std::any_of(band.columns.begin(), band.columns.end(),
                       [](const Column& column) { return !column.blocks.empty(); });
  });
  const bool is_vertical = std::all_of(
      page.floats.begin(), page.floats.end(),
      [](const Floating& floating) { return floating.is_vertical && floating.angle == 90; });
  return !has_flow && is_vertical && !page.floats.empty() && page.notes.empty() &&
         !page.background &&
         std::adjacent_find(page.floats.begin(), page.floats.end(),
                            [](const Floating& a, const Floating& b) {
                              return !FollowEachOther(a, b);
                            }) == page.floats.end();
}

std::vector<Block> BlocksDown(const PageLayout& page) {
  std::vector<Block> blocks;
  for (const Floating& floating : page.floats) {
    const double x = MiddleX(floating.box);
    const double y = MiddleY(floating.box);
    for (const Block& block : floating.blocks) {
      if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
        Paragraph moved = *paragraph;
        MoveBy(moved, y - x, page.width - x - y);
        blocks.push_back(Block{std::move(moved)});
      }
    }
  }
  return blocks;
}

}  // namespace TarnixTools::engines::office
