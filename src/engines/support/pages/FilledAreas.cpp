#include "engines/support/pages/FilledAreas.h"

#include <cstddef>

namespace TarnixTools::engines {

namespace {

// Of more rectangles than that none is taken for a hole: patterns of small ones beside each other.
constexpr std::size_t kMostAreas = 200;
constexpr double kNoWidth = 0.01;  // points

bool IsHole(const FilledArea& inner, const FilledArea& outer, pdf::FillRule rule) {
  return inner.box != outer.box && outer.box.Encloses(inner.box) &&
         (rule == pdf::FillRule::kEvenOdd || inner.is_clockwise != outer.is_clockwise);
}

void AddAround(const pdf::Box& outer, const pdf::Box& hole, std::vector<pdf::Box>& boxes) {
  for (const pdf::Box& box : {pdf::Box{outer.left, outer.bottom, outer.right, hole.bottom},
                              pdf::Box{outer.left, hole.top, outer.right, outer.top},
                              pdf::Box{outer.left, hole.bottom, hole.left, hole.top},
                              pdf::Box{hole.right, hole.bottom, outer.right, hole.top}}) {
    if (box.width() > kNoWidth && box.height() > kNoWidth) {
      boxes.push_back(box);
    }
  }
}

}  // namespace

std::optional<std::vector<pdf::Box>> PaintedBoxes(std::span<const FilledArea> areas,
                                                  pdf::FillRule rule) {
  const bool has_holes = areas.size() <= kMostAreas;
  std::vector<const FilledArea*> hole_of(areas.size());
  std::vector<bool> is_hole(areas.size());
  for (std::size_t outer = 0; has_holes && outer < areas.size(); ++outer) {
    for (std::size_t inner = 0; inner < areas.size(); ++inner) {
      if (!IsHole(areas[inner], areas[outer], rule)) {
        continue;
      }
      if (hole_of[outer] != nullptr || is_hole[inner]) {
        return std::nullopt;
      }
      hole_of[outer] = &areas[inner];
      is_hole[inner] = true;
    }
  }
  std::vector<pdf::Box> boxes;
  for (std::size_t i = 0; i < areas.size(); ++i) {
    if (hole_of[i] != nullptr && is_hole[i]) {
      return std::nullopt;
    }
    if (hole_of[i] != nullptr) {
      AddAround(areas[i].box, hole_of[i]->box, boxes);
    } else if (!is_hole[i]) {
      boxes.push_back(areas[i].box);
    }
  }
  return boxes;
}

}  // namespace TarnixTools::engines
