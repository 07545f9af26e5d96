// What a page shows apart from text: pictures, drawings, frames and rules, and its background.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_PAGEGRAPHICS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_PAGEGRAPHICS_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

struct PageGraphics {
  std::vector<Picture> pictures;  // that have their place in the flow
  std::vector<Drawing> drawings;
  std::vector<Picture> behind_pictures;  // that text runs over
  std::vector<Drawing> behind_drawings;  // frames and rules too
  std::optional<Rgb> background;
};

//   lines  - upright text outside tables
//   used   - in PageModel::paths, ascending: what marks words or belongs to tables
//   tables - their boxes
PageGraphics FindGraphics(const PageModel& page, const std::vector<WordLine>& lines,
                          const std::vector<std::uint32_t>& used,
                          const std::vector<pdf::Box>& tables);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_GRAPHICS_PAGEGRAPHICS_H_
