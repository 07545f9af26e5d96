#include "engines/support/layout/graphics/BoxGroups.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/DisjointSets.h"
#include "engines/support/layout/LayoutLimits.h"

namespace TarnixTools::engines {

std::vector<std::vector<std::uint32_t>> GroupBoxes(const std::vector<pdf::Box>& boxes,
                                                   double margin) {
  std::vector<std::uint32_t> order(boxes.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&boxes](std::uint32_t a, std::uint32_t b) {
    return UpperEdge(boxes[a]) < UpperEdge(boxes[b]);
  });
  DisjointSets sets(boxes.size());
  std::vector<std::uint32_t> open;  // those that may touch one further down
  std::size_t compared = 0;
  for (const std::uint32_t next : order) {
    const double upper = UpperEdge(boxes[next]) - margin;
    std::erase_if(open, [&](std::uint32_t other) { return LowerEdge(boxes[other]) < upper; });
    compared += open.size();
    const bool is_too_much = compared > limits::kMaxBoxComparisons;
    for (const std::uint32_t other : open) {
      if (is_too_much || SharedWidth(boxes[next], boxes[other]) >= -margin) {
        sets.Join(next, other);
      }
    }
    if (is_too_much) {
      open.clear();
    }
    open.push_back(next);
  }
  std::map<std::size_t, std::vector<std::uint32_t>> groups;
  for (std::uint32_t i = 0; i < boxes.size(); ++i) {
    groups[sets.Find(i)].push_back(i);
  }
  std::vector<std::vector<std::uint32_t>> all;
  all.reserve(groups.size());
  for (auto& [first, members] : groups) {
    all.push_back(std::move(members));
  }
  return all;
}

}  // namespace TarnixTools::engines
