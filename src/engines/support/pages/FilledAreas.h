// Rectangles that one path fills together: one within another is a hole or not, as the rule says.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_FILLEDAREAS_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_FILLEDAREAS_H_

#include <optional>
#include <span>
#include <vector>

#include "pdf/Box.h"
#include "pdf/content/ContentVisitor.h"

namespace TarnixTools::engines {

struct FilledArea {
  pdf::Box box;
  bool is_clockwise = false;
};

// Boxes that are painted all over: of a rectangle with a hole, those around the hole. Nothing for
// rectangles that lie in each other in another way.
std::optional<std::vector<pdf::Box>> PaintedBoxes(std::span<const FilledArea> areas,
                                                  pdf::FillRule rule);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_FILLEDAREAS_H_
