#include "engines/support/pages/PaintedColor.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engines/support/pages/PageLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kMostComponents = 32;

std::uint8_t ToByte(double value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
}

Rgb OfInks(std::span<const double> tints) {
  double light = 1;
  for (const double tint : tints) {
    light *= 1 - std::clamp(tint, 0.0, 1.0);
  }
  const std::uint8_t gray = ToByte(light);
  return {gray, gray, gray};
}

Rgb OfPalette(const ColorSpace& space, double index) {
  const std::size_t entries = space.palette.size() / 3;
  if (entries == 0) {
    return {};
  }
  const auto entry =
      static_cast<std::size_t>(std::clamp(index, 0.0, static_cast<double>(entries - 1)));
  const std::uint8_t* rgb = space.palette.data() + 3 * entry;
  return {rgb[0], rgb[1], rgb[2]};
}

// Black ink alone is seen as somewhat less than black where colours are matched to a press; text in
// it is meant to be black.
bool IsBlackInk(const ColorSpace& space, std::span<const double> values) {
  return space.kind == ColorKind::kCmyk && values[0] <= 0 && values[1] <= 0 && values[2] <= 0;
}

Rgb Computed(const ColorSpace& space, std::span<const double> values) {
  if (IsBlackInk(space, values)) {
    return OfInks(values.subspan(3));
  }
  if (space.kind == ColorKind::kLab) {
    const auto rgb = LabToRgb(values[0], values[1], values[2]);
    return {rgb[0], rgb[1], rgb[2]};
  }
  std::array<std::uint8_t, kMostComponents> components{};
  std::transform(values.begin(), values.end(), components.begin(), ToByte);
  std::array<std::uint8_t, 3> rgb{};
  ToRgb(space, components.data(), rgb.data(), 1);
  return {rgb[0], rgb[1], rgb[2]};
}

}  // namespace

std::optional<Rgb> PaintedColors::Of(const pdf::Color& color) {
  if (!color.pattern.IsNull()) {
    return std::nullopt;
  }
  const auto& [space, spot] = SpaceOf(color.space);
  std::array<double, kMostComponents> values{};
  const std::size_t found = color.ReadComponents(values);
  if (!space) {
    return Rgb{};
  }
  const auto count = static_cast<std::size_t>(space->components);
  if (found < count) {  // the initial colour: black, in most spaces
    return space->kind == ColorKind::kIndexed ? OfPalette(*space, 0) : Rgb{};
  }
  const std::span<const double> components(values.data(), count);
  if (space->kind == ColorKind::kIndexed) {
    return OfPalette(*space, components[0]);
  }
  if (spot) {
    return OfSpot(*spot, components);
  }
  return space->is_computed() ? Computed(*space, components) : OfInks(components);
}

Rgb PaintedColors::OfSpot(const SpotColor& spot, std::span<const double> tints) {
  if (last_.spot == &spot && std::ranges::equal(last_.tints, tints)) {
    return last_.color;
  }
  steps_ += spot.function.step_count();
  const std::vector<double> alternate =
      steps_ <= limits::kMaxTintSteps ? spot.function.At(tints) : std::vector<double>();
  last_ = {&spot,
           {tints.begin(), tints.end()},
           alternate.empty() ? OfInks(tints) : Computed(spot.alternate, alternate)};
  return last_.color;
}

// Names of spaces are not worth being kept.
const PaintedColors::Space& PaintedColors::SpaceOf(const pdf::Object& space) {
  pdf::Arena arena;
  const pdf::Followed found = document_->Follow(space, arena);
  if (found.number == 0 && found.value.Items().empty()) {
    named_ = Read(found.value, arena);
    return named_;
  }
  if (spaces_.size() >= limits::kMaxColorSpaces) {
    spaces_.clear();
    last_ = {};
  }
  std::optional<Space>& place =
      found.number != 0 ? spaces_[found.number] : in_place_[found.value.Items().data()];
  if (!place) {
    place = Read(found.value, arena);
  }
  return *place;
}

PaintedColors::Space PaintedColors::Read(const pdf::Object& space, pdf::Arena& arena) {
  return {ColorSpaceOf(*document_, space, arena), ReadSpotColor(*document_, space, arena)};
}

}  // namespace TarnixTools::engines
