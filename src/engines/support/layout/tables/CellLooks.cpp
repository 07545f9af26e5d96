#include "engines/support/layout/tables/CellLooks.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines {

namespace {

constexpr double kSamePlace = 4;       // points between a rule and the edge that it makes
constexpr double kCoveredShare = 0.5;  // of an edge, that a rule must run along
constexpr double kFilledShare = 0.5;   // of a box, behind cells that are filled
constexpr double kHairline = 0.25;     // points: the least that a border is drawn with

// Of the rules along an edge, the one that covers most of it.
Border BorderAt(std::span<const Rule> rules, double at, double from, double to) {
  Border border;
  double most = kCoveredShare * (to - from);
  for (const Rule& rule : rules) {
    const double covered = std::min(rule.to, to) - std::max(rule.from, from);
    if (!rule.is_edge && std::abs(rule.at - at) <= kSamePlace && covered >= most) {
      most = covered;
      border = {std::max(rule.width, kHairline), rule.color};
    }
  }
  return border;
}

// Over more than half of the cell's width and height, and so behind its middle.
bool IsBehind(const pdf::Box& fill, const pdf::Box& cell) {
  const pdf::Box both = fill.Within(cell);
  return 2 * both.width() > cell.width() && 2 * both.height() > cell.height();
}

}  // namespace

void SetLooks(const TableArea& area, const Rules& rules, Table& table) {
  for (TableCell& cell : table.cells) {
    const pdf::Box& box = cell.box;
    cell.borders = {BorderAt(area.horizontal, box.bottom, box.left, box.right),
                    BorderAt(area.vertical, box.right, box.bottom, box.top),
                    BorderAt(area.horizontal, box.top, box.left, box.right),
                    BorderAt(area.vertical, box.left, box.bottom, box.top)};
    const auto fill = std::find_if(rules.fills.rbegin(), rules.fills.rend(),
                                   [&box](const Fill& other) { return IsBehind(other.box, box); });
    if (fill != rules.fills.rend()) {
      cell.fill = fill->color;
    }
  }
}

bool HasFilledCells(const pdf::Box& box, const Table& table) {
  double filled = 0;
  for (const TableCell& cell : table.cells) {
    filled += cell.fill ? CoveredShare(box, cell.box) : 0;
  }
  return filled > kFilledShare;
}

}  // namespace TarnixTools::engines
