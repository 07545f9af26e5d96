#include "engines/support/pages/SpotColor.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>

#include "engines/support/pages/PageLimits.h"

namespace TarnixTools::engines {

namespace {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

using Tints = std::vector<std::vector<double>>;

constexpr std::size_t kSeparationItems = 4;
constexpr int kCurveSteps = 32;
constexpr std::int64_t kBitsOfByte = 8;

// As many numbers as the components; where there are fewer, this one.
std::vector<double> Numbers(Document& document, const Object& value, std::size_t count,
                            double missing) {
  Arena arena;
  const Object array = document.Resolve(value, arena);
  std::vector<double> numbers;
  for (const Object& item : array.Items().first(std::min(count, array.Items().size()))) {
    numbers.push_back(item.NumberOr(missing));
  }
  numbers.resize(count, missing);
  return numbers;
}

// ISO 32000-2, 7.10.3.
Tints OfExponential(Document& document, const Object& function, std::size_t components) {
  const std::vector<double> none = Numbers(document, function.Get("C0"), components, 0);
  const std::vector<double> full = Numbers(document, function.Get("C1"), components, 1);
  const double exponent = function.Get("N").NumberOr(1);
  Tints tints;
  for (int step = 0; step <= kCurveSteps; ++step) {
    const double share = std::pow(static_cast<double>(step) / kCurveSteps, exponent);
    std::vector<double>& values = tints.emplace_back();
    for (std::size_t i = 0; i < components; ++i) {
      values.push_back(none[i] + share * (full[i] - none[i]));
    }
  }
  return tints;
}

// ISO 32000-2, 7.10.2: samples of eight bits.
Tints OfSamples(Document& document, const pdf::Followed& function, std::size_t components) {
  if (function.value.Get("BitsPerSample").IntegerOr(0) != kBitsOfByte) {
    return {};
  }
  const auto stream = document.TryDecodeStream(function.number, limits::kMaxTintBytes);
  const std::size_t count = stream ? stream->data.size() / components : 0;
  std::vector<double> range = Numbers(document, function.value.Get("Range"), 2 * components, 1);
  if (function.value.Has("Decode")) {
    range = Numbers(document, function.value.Get("Decode"), 2 * components, 1);
  }
  Tints tints;
  for (std::size_t k = 0; k < count; ++k) {
    std::vector<double>& values = tints.emplace_back();
    for (std::size_t i = 0; i < components; ++i) {
      const double share = static_cast<std::uint8_t>(stream->data[k * components + i]) / 255.0;
      values.push_back(range[2 * i] + share * (range[2 * i + 1] - range[2 * i]));
    }
  }
  return tints;
}

}  // namespace

std::vector<double> SpotColor::At(double tint) const {
  const double place = std::clamp(tint, 0.0, 1.0) * static_cast<double>(tints.size() - 1);
  const auto lower = std::min(static_cast<std::size_t>(place), tints.size() - 2);
  const double share = place - static_cast<double>(lower);
  std::vector<double> values = tints[lower];
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] += share * (tints[lower + 1][i] - values[i]);
  }
  return values;
}

std::optional<SpotColor> ReadSpotColor(Document& document, const Object& space, Arena& arena) {
  const auto items = space.Items();
  if (items.size() < kSeparationItems || !document.Resolve(items[0], arena).IsName("Separation")) {
    return std::nullopt;
  }
  auto alternate = ColorSpaceOf(document, document.Resolve(items[2], arena), arena);
  const pdf::Followed function = document.Follow(items[3], arena);
  if (!alternate || !alternate->is_computed() || alternate->kind == ColorKind::kIndexed) {
    return std::nullopt;
  }
  const auto components = static_cast<std::size_t>(alternate->components);
  const std::int64_t type = function.value.Get("FunctionType").IntegerOr(-1);
  Tints tints;
  if (type == 2) {
    tints = OfExponential(document, function.value, components);
  } else if (type == 0) {
    tints = OfSamples(document, function, components);
  }
  if (tints.size() < 2) {
    return std::nullopt;
  }
  return SpotColor{std::move(*alternate), std::move(tints)};
}

}  // namespace TarnixTools::engines
