#include "engines/support/layout/tables/OpenRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TarnixTools::engines {

namespace {

constexpr double kTabularShare = 0.5;  // of the rows between two rules

bool Overlap(const pdf::Box& box, const Ink& ink) {
  const double x = (ink.left + ink.right) / 2;
  const double y = (ink.upper + ink.lower) / 2;
  return x > box.left && x < box.right && y > box.bottom && y < box.top;
}

}  // namespace

std::vector<Ink> InksIn(std::span<const Ink> inks, const pdf::Box& box) {
  std::vector<Ink> found;
  std::copy_if(inks.begin(), inks.end(), std::back_inserter(found),
               [&box](const Ink& ink) { return Overlap(box, ink); });
  return found;
}

bool IsTabular(const std::vector<InkRow>& rows, double width) {
  std::size_t columned = 0;
  std::size_t full = 0;
  for (const InkRow& row : rows) {
    columned += row.chunks.size() >= 2 ? 1 : 0;
    full += std::any_of(row.chunks.begin(), row.chunks.end(),
                        [width](const Chunk& c) { return c.right - c.left > 0.7 * width; })
                ? 1
                : 0;
  }
  return static_cast<double>(columned) >= kTabularShare * static_cast<double>(rows.size()) &&
         3 * full <= rows.size();
}

void AddRulesIn(const Rules& rules, TableArea& area) {
  for (const Rule& rule : rules.horizontal) {
    if (rule.at > area.box.bottom && rule.at < area.box.top && rule.to > area.box.left &&
        rule.from < area.box.right) {
      area.horizontal.push_back(rule);
      area.rows.push_back(rule.at);
    }
  }
  area.rows = Snap(std::move(area.rows));
}

}  // namespace TarnixTools::engines
