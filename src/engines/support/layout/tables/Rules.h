// The lines of a page that tables may be made of: rules, edges of frames and of filled boxes.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_RULES_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_RULES_H_

#include <span>
#include <vector>

#include "engines/support/pages/PageModel.h"
#include "pdf/Box.h"

namespace TarnixTools::engines {

// A straight line along one axis; pieces that lie on it are one.
struct Rule {
  double at = 0;  // on the other axis
  double from = 0;
  double to = 0;
  double width = 0;
  Rgb color;
  bool is_edge = false;  // of a filled box, which is no line by itself

  double length() const { return to - from; }
};

struct Fill {
  pdf::Box box;
  Rgb color;
};

struct Rules {
  std::vector<Rule> horizontal;  // from the top
  std::vector<Rule> vertical;    // from the left
  std::vector<Fill> fills;       // as they are painted; those of white too
};

// Lines and frames.
Rules RulesOf(const PageModel& page);

// Adds the edges of the filled boxes outside of the areas, where each box is the whole of a cell:
// programs paint it in strips, and again behind each line of words.
void AddFillEdges(std::span<const pdf::Box> areas, Rules& rules);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TABLES_RULES_H_
