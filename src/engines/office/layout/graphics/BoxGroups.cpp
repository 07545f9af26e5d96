#include "engines/office/layout/graphics/BoxGroups.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "engines/office/Limits.h"
#include "engines/office/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

class Sets {
 public:
  explicit Sets(std::size_t count) : parent_(count) {
    std::iota(parent_.begin(), parent_.end(), 0U);
  }

  std::uint32_t Find(std::uint32_t item) {
    while (parent_[item] != item) {
      parent_[item] = parent_[parent_[item]];
      item = parent_[item];
    }
    return item;
  }

  void Join(std::uint32_t a, std::uint32_t b) {
    const std::uint32_t one = Find(a);
    const std::uint32_t other = Find(b);
    parent_[std::max(one, other)] = std::min(one, other);
  }

 private:
  std::vector<std::uint32_t> parent_;
};

}  // namespace

std::vector<std::vector<std::uint32_t>> GroupBoxes(const std::vector<pdf::Box>& boxes,
                                                   double margin) {
  std::vector<std::uint32_t> order(boxes.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&boxes](std::uint32_t a, std::uint32_t b) {
    return UpperEdge(boxes[a]) < UpperEdge(boxes[b]);
  });
  Sets sets(boxes.size());
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
  std::map<std::uint32_t, std::vector<std::uint32_t>> groups;
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

}  // namespace TarnixTools::engines::office
