// The looks of a page's text, each once.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LOOKTABLE_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LOOKTABLE_H_

#include <cstdint>
#include <map>
#include <memory>
#include <tuple>
#include <vector>

#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/text/PageText.h"
#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

class LookTable {
 public:
  // Both outlive this.
  LookTable(const PageModel& page, std::vector<TextLook>& looks) : page_(&page), looks_(&looks) {}

  // The look of a glyph of a word, in the looks.
  //   line_size - of the line around it, which raised text has too
  std::uint32_t Of(const PlacedGlyph& glyph, const Word& word, double line_size);

 private:
  using Key = std::tuple<const Typeface*, double, std::uint32_t, std::int64_t, int>;

  std::shared_ptr<const Typeface> FaceOf(const TextStyle& style, bool is_doubled);

  const PageModel* page_;
  std::vector<TextLook>* looks_;
  std::map<Key, std::uint32_t> known_;
  std::map<const Typeface*, std::shared_ptr<const Typeface>> bold_faces_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PARAGRAPHS_LOOKTABLE_H_
