#include "engines/support/pages/SpotColor.h"

#include <cstddef>
#include <utility>

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kItems = 4;  // the family, names, the alternate space, the function
constexpr std::size_t kMostInks = 32;

}  // namespace

std::optional<SpotColor> ReadSpotColor(pdf::Document& document, const pdf::Object& space,
                                       pdf::Arena& arena) {
  const auto items = space.Items();
  if (items.size() < kItems) {
    return std::nullopt;
  }
  const pdf::Object family = document.Resolve(items[0], arena);
  const std::size_t inks =
      family.IsName("DeviceN") ? document.Resolve(items[1], arena).Items().size() : 1;
  if ((!family.IsName("Separation") && !family.IsName("DeviceN")) || inks == 0 ||
      inks > kMostInks) {
    return std::nullopt;
  }
  auto alternate = ColorSpaceOf(document, document.Resolve(items[2], arena), arena);
  if (!alternate || !alternate->is_computed() || alternate->kind == ColorKind::kIndexed) {
    return std::nullopt;
  }
  auto function = TintFunction::Read(document, document.Follow(items[3], arena), inks,
                                     static_cast<std::size_t>(alternate->components));
  if (!function) {
    return std::nullopt;
  }
  return SpotColor{std::move(*alternate), std::move(*function)};
}

}  // namespace TarnixTools::engines
