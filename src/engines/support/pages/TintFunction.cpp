#include "engines/support/pages/TintFunction.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

#include "engines/support/pages/PageLimits.h"

namespace TarnixTools::engines {

namespace {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

constexpr std::array<std::int64_t, 8> kSampleBits = {1, 2, 4, 8, 12, 16, 24, 32};
constexpr std::size_t kBitsOfByte = 8;
constexpr std::size_t kMostMixedAxes = 6;  // beyond which the nearest sample is taken

// As many numbers as are asked for; where there are fewer, this one.
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

}  // namespace

// ISO 32000-2, 7.10.3.
std::vector<double> TintFunction::Curve::At(double tint) const {
  const double share = std::pow(std::clamp(tint, 0.0, 1.0), exponent);
  std::vector<double> values;
  for (std::size_t i = 0; i < none.size(); ++i) {
    values.push_back(none[i] + share * (full[i] - none[i]));
  }
  return values;
}

std::optional<std::string> TintFunction::DataOf(Document& document, const pdf::Followed& function,
                                                Budget& budget) {
  auto stream = document.TryDecodeStream(function.number, budget.bytes);
  if (!stream) {
    return std::nullopt;
  }
  budget.bytes -= std::min(budget.bytes, stream->data.size());
  return std::move(stream->data);
}

// ISO 32000-2, 7.10.2.
std::optional<TintFunction::Grid> TintFunction::Grid::Read(Document& document,
                                                           const pdf::Followed& function,
                                                           std::size_t inputs, std::size_t outputs,
                                                           Budget& budget) {
  const std::int64_t bits = function.value.Get("BitsPerSample").IntegerOr(0);
  if (std::ranges::find(kSampleBits, bits) == kSampleBits.end()) {
    return std::nullopt;
  }
  auto data = DataOf(document, function, budget);
  if (!data) {
    return std::nullopt;
  }
  Grid grid;
  grid.samples = std::move(*data);
  grid.bits = static_cast<std::size_t>(bits);
  const std::size_t all = grid.samples.size() * kBitsOfByte / grid.bits / outputs;
  std::size_t colors = 1;
  const double of_one = inputs == 1 ? static_cast<double>(all) : 0;
  for (const double size : Numbers(document, function.value.Get("Size"), inputs, of_one)) {
    const double count = std::clamp(size, 0.0, static_cast<double>(all));
    grid.axes.push_back({.size = static_cast<std::size_t>(count), .first = 0, .last = count - 1});
    colors *= grid.axes.back().size;
    if (grid.axes.back().size < 2 || colors > all) {
      return std::nullopt;
    }
  }
  const Object encode = function.value.Get("Encode");
  if (!encode.IsNull()) {
    const std::vector<double> ends = Numbers(document, encode, 2 * inputs, 0);
    for (std::size_t i = 0; i < inputs; ++i) {
      grid.axes[i].first = ends[2 * i];
      grid.axes[i].last = ends[2 * i + 1];
    }
  }
  const bool decodes = function.value.Has("Decode");
  grid.range = Numbers(document, function.value.Get(decodes ? "Decode" : "Range"), 2 * outputs, 1);
  return grid;
}

double TintFunction::Grid::SampleAt(std::size_t place, std::size_t component) const {
  const std::size_t first = (place * (range.size() / 2) + component) * bits;
  const std::size_t last = first + bits - 1;
  std::uint64_t value = 0;
  for (std::size_t byte = first / kBitsOfByte; byte <= last / kBitsOfByte; ++byte) {
    value = value << kBitsOfByte | static_cast<std::uint8_t>(samples[byte]);
  }
  const std::uint64_t most = (std::uint64_t{1} << bits) - 1;
  value = value >> (kBitsOfByte - 1 - last % kBitsOfByte) & most;
  const double share = static_cast<double>(value) / static_cast<double>(most);
  return range[2 * component] + share * (range[2 * component + 1] - range[2 * component]);
}

// Mixes the colours at the corners around the place.
std::vector<double> TintFunction::Grid::At(std::span<const double> tints) const {
  struct Corner {
    std::size_t place = 0;
    double weight = 1;
  };

  std::vector<Corner> corners{{}};
  std::size_t step = 1;
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const Axis& axis = axes[i];
    const double most = static_cast<double>(axis.size - 1);
    const double tint = std::clamp(i < tints.size() ? tints[i] : 0, 0.0, 1.0);
    double at = std::clamp(axis.first + tint * (axis.last - axis.first), 0.0, most);
    at = axes.size() > kMostMixedAxes ? std::round(at) : at;
    const auto lower = std::min(static_cast<std::size_t>(at), axis.size - 2);
    const double share = at - static_cast<double>(lower);
    std::vector<Corner> next;
    for (const Corner& corner : corners) {
      if (share < 1) {
        next.push_back({corner.place + lower * step, corner.weight * (1 - share)});
      }
      if (share > 0) {
        next.push_back({corner.place + (lower + 1) * step, corner.weight * share});
      }
    }
    corners = std::move(next);
    step *= axis.size;
  }
  std::vector<double> values(range.size() / 2);
  for (const Corner& corner : corners) {
    for (std::size_t i = 0; i < values.size(); ++i) {
      values[i] += corner.weight * SampleAt(corner.place, i);
    }
  }
  return values;
}

std::vector<double> TintFunction::Formula::At(std::span<const double> tints) const {
  std::vector<double> values = program.Run(tints);
  if (values.size() < range.size() / 2) {
    return {};
  }
  values.erase(values.begin(), values.end() - static_cast<std::ptrdiff_t>(range.size() / 2));
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = std::max(range[2 * i], std::min(values[i], range[2 * i + 1]));
  }
  return values;
}

// ISO 32000-2, 7.10.4.
std::vector<double> TintFunction::Stitched::At(double tint) const {
  const double within = std::max(bounds.front(), std::min(tint, bounds.back()));
  std::size_t part = 0;
  while (part + 1 < parts.size() && within >= bounds[part + 1]) {
    ++part;
  }
  const double length = bounds[part + 1] - bounds[part];
  const double share = length > 0 ? (within - bounds[part]) / length : 0;
  const double first = encode[2 * part];
  const double asked = first + share * (encode[2 * part + 1] - first);
  return parts[part].At(std::span(&asked, 1));
}

std::optional<TintFunction::Stitched> TintFunction::ReadStitched(Document& document,
                                                                 const Object& function,
                                                                 std::size_t outputs,
                                                                 Budget& budget) {
  Arena arena;
  const Object functions = document.Resolve(function.Get("Functions"), arena);
  const std::size_t count = functions.Items().size();
  if (count == 0 || count > budget.parts || budget.depth == 0) {
    return std::nullopt;
  }
  budget.parts -= count;
  --budget.depth;
  Stitched stitched;
  for (const Object& item : functions.Items()) {
    auto part = Read(document, document.Follow(item, arena), 1, outputs, budget);
    if (!part) {
      return std::nullopt;
    }
    stitched.parts.push_back(std::move(*part));
  }
  ++budget.depth;
  const std::vector<double> domain = Numbers(document, function.Get("Domain"), 2, 1);
  stitched.bounds = Numbers(document, function.Get("Bounds"), count - 1, domain[1]);
  stitched.bounds.insert(stitched.bounds.begin(), std::min(domain[0], domain[1]));
  stitched.bounds.push_back(domain[1]);
  stitched.encode = Numbers(document, function.Get("Encode"), 2 * count, 0);
  return stitched;
}

std::optional<TintFunction> TintFunction::Read(Document& document, const pdf::Followed& function,
                                               std::size_t inputs, std::size_t outputs) {
  Budget budget{.parts = limits::kMaxTintParts,
                .depth = limits::kMaxTintDepth,
                .bytes = limits::kMaxTintBytes};
  return Read(document, function, inputs, outputs, budget);
}

std::optional<TintFunction> TintFunction::Read(Document& document, const pdf::Followed& function,
                                               std::size_t inputs, std::size_t outputs,
                                               Budget& budget) {
  const Object& value = function.value;
  const std::int64_t type = value.Get("FunctionType").IntegerOr(-1);
  if (type == 2 && inputs == 1) {
    return TintFunction(Curve{.none = Numbers(document, value.Get("C0"), outputs, 0),
                              .full = Numbers(document, value.Get("C1"), outputs, 1),
                              .exponent = value.Get("N").NumberOr(1)});
  }
  if (type == 3 && inputs == 1) {
    if (auto stitched = ReadStitched(document, value, outputs, budget)) {
      return TintFunction(std::move(*stitched));
    }
  }
  if (type == 4) {
    const auto data = DataOf(document, function, budget);
    auto program = data ? TintProgram::Read(*data) : std::nullopt;
    if (program) {
      return TintFunction(
          Formula{std::move(*program), Numbers(document, value.Get("Range"), 2 * outputs, 0)});
    }
  }
  if (type == 0) {
    if (auto grid = Grid::Read(document, function, inputs, outputs, budget)) {
      return TintFunction(std::move(*grid));
    }
  }
  return std::nullopt;
}

std::size_t TintFunction::step_count() const {
  if (const auto* formula = std::get_if<Formula>(&way_)) {
    return formula->program.step_count();
  }
  if (const auto* stitched = std::get_if<Stitched>(&way_)) {
    std::size_t most = 0;
    for (const TintFunction& part : stitched->parts) {
      most = std::max(most, part.step_count());
    }
    return most + stitched->parts.size();
  }
  const auto* grid = std::get_if<Grid>(&way_);
  return grid == nullptr ? 1 : std::size_t{1} << std::min(grid->axes.size(), kMostMixedAxes);
}

std::vector<double> TintFunction::At(std::span<const double> tints) const {
  if (const auto* curve = std::get_if<Curve>(&way_)) {
    return curve->At(tints.empty() ? 1 : tints.front());
  }
  if (const auto* formula = std::get_if<Formula>(&way_)) {
    return formula->At(tints);
  }
  if (const auto* stitched = std::get_if<Stitched>(&way_)) {
    return stitched->At(tints.empty() ? 1 : tints.front());
  }
  return std::get<Grid>(way_).At(tints);
}

}  // namespace TarnixTools::engines
