// Text of a page that something is painted over: it is there to be found, not to be seen.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_COVEREDTEXT_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_COVEREDTEXT_H_

#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include "engines/support/pages/PageModel.h"
#include "pdf/Box.h"
#include "pdf/content/GraphicsState.h"

namespace TarnixTools::engines {

class CoveredText {
 public:
  // The page outlives this.
  explicit CoveredText(PageModel& page) : page_(&page) {}

  // Hides the glyphs that the page has so far within a box that is painted over in full, unless what
  // lies below is seen through it. Beyond limits::kMaxCoverChecks glyphs stay as they are.
  void Cover(const pdf::Box& box, const pdf::GraphicsState& state);

 private:
  std::uint32_t HiddenStyle(std::uint32_t style);

  PageModel* page_;
  std::unordered_map<std::uint32_t, std::uint32_t> hidden_;  // styles, by those that are seen
  std::size_t checked_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_COVEREDTEXT_H_
