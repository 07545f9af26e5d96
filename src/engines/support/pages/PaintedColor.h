// Colours that content paints with, as they are seen.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PAINTEDCOLOR_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PAINTEDCOLOR_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "engines/support/images/ColorSpace.h"
#include "engines/support/pages/PageModel.h"
#include "engines/support/pages/SpotColor.h"
#include "pdf/content/GraphicsState.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

class PaintedColors {
 public:
  explicit PaintedColors(pdf::Document& document) : document_(&document) {}

  // Nothing for a pattern. Inks of which the document does not say how they look, or not in a way
  // that is read here, are as dark as they are.
  std::optional<Rgb> Of(const pdf::Color& color);

  // Spaces that are no objects of their own are known by their place in memory, which may be others'
  // from now on.
  void ForgetInPlace() {
    in_place_.clear();
    last_ = {};
  }

  // What may be computed for a page counts from here.
  void BeginPage() { steps_ = 0; }

 private:
  struct Space {
    std::optional<ColorSpace> space;
    std::optional<SpotColor> spot;
  };

  // The tint that was asked for last; most are asked for again and again.
  struct Seen {
    const SpotColor* spot = nullptr;
    std::vector<double> tints;
    Rgb color;
  };

  Rgb OfSpot(const SpotColor& spot, std::span<const double> tints);
  const Space& SpaceOf(const pdf::Object& space);
  Space Read(const pdf::Object& space, pdf::Arena& arena);

  pdf::Document* document_;
  std::map<std::uint32_t, std::optional<Space>> spaces_;  // by number
  std::map<const void*, std::optional<Space>> in_place_;  // by their items
  Space named_;
  Seen last_;
  std::size_t steps_ = 0;  // of functions, on the page
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PAINTEDCOLOR_H_
