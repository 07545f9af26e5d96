#include "engines/support/codecs/JpegTables.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace TarnixTools::engines {
namespace {

constexpr int kQualities = 100;

// ITU-T T.81, tables K.1 and K.2.

constexpr JpegSteps kLuminanceExample = {16, 11, 10, 16, 24,  40,  51,  61,   //
                                         12, 12, 14, 19, 26,  58,  60,  55,   //
                                         14, 13, 16, 24, 40,  57,  69,  56,   //
                                         14, 17, 22, 29, 51,  87,  80,  62,   //
                                         18, 22, 37, 56, 68,  109, 103, 77,   //
                                         24, 35, 55, 64, 81,  104, 113, 92,   //
                                         49, 64, 78, 87, 103, 121, 120, 101,  //
                                         72, 92, 95, 98, 112, 100, 103, 99};

constexpr JpegSteps kChrominanceExample = {17, 18, 24, 47, 99, 99, 99, 99,  //
                                           18, 21, 26, 66, 99, 99, 99, 99,  //
                                           24, 26, 56, 99, 99, 99, 99, 99,  //
                                           47, 66, 99, 99, 99, 99, 99, 99,  //
                                           99, 99, 99, 99, 99, 99, 99, 99,  //
                                           99, 99, 99, 99, 99, 99, 99, 99,  //
                                           99, 99, 99, 99, 99, 99, 99, 99,  //
                                           99, 99, 99, 99, 99, 99, 99, 99};

// What a step is to be multiplied by, in per cent, as libjpeg has it.
int ScaleOf(int quality) {
  return quality < 50 ? 5000 / quality : 200 - 2 * quality;
}

// The mean of the steps' logarithms, low frequencies first: of these pictures have the most.
double CoarsenessOf(const JpegSteps& steps) {
  double sum = 0;
  double weights = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const std::size_t frequency = i / 8 + i % 8;
    const double weight = 1.0 / static_cast<double>(1 + frequency);
    sum += weight * std::log2(static_cast<double>(std::max<std::uint16_t>(steps[i], 1)));
    weights += weight;
  }
  return sum / weights;
}

// What is known of the tables of one plane, by quality, the lowest first.
struct KnownTables {
  explicit KnownTables(JpegPlane plane) {
    for (int quality = 1; quality <= kQualities; ++quality) {
      const auto index = static_cast<std::size_t>(quality - 1);
      coarseness[index] = CoarsenessOf(LibjpegSteps(plane, quality));
      own[index] = EncoderSteps(plane, quality);
    }
  }

  static const KnownTables& Of(JpegPlane plane) {
    static const KnownTables luminance(JpegPlane::kLuminance);
    static const KnownTables chrominance(JpegPlane::kChrominance);
    return plane == JpegPlane::kLuminance ? luminance : chrominance;
  }

  std::array<double, kQualities> coarseness{};  // of those of libjpeg
  std::array<JpegSteps, kQualities> own{};
};

int QualityOf(JpegPlane plane, const JpegSteps& steps) {
  const KnownTables& known = KnownTables::Of(plane);
  const auto same = std::find(known.own.rbegin(), known.own.rend(), steps);
  if (same != known.own.rend()) {
    return static_cast<int>(known.own.rend() - same);
  }
  const double wanted = CoarsenessOf(steps);
  const auto nearest = std::min_element(
      known.coarseness.begin(), known.coarseness.end(),
      [&](double a, double b) { return std::abs(a - wanted) < std::abs(b - wanted); });
  return static_cast<int>(nearest - known.coarseness.begin()) + 1;
}

// The steps of a component; null where they are not known.
const JpegSteps* StepsOf(const JpegHeader& header, std::size_t component) {
  const std::size_t table = header.component[component].table;
  return table < header.steps.size() && header.steps[table][0] != 0 ? &header.steps[table]
                                                                    : nullptr;
}

}  // namespace

JpegSteps LibjpegSteps(JpegPlane plane, int quality) {
  JpegSteps steps = plane == JpegPlane::kLuminance ? kLuminanceExample : kChrominanceExample;
  for (std::uint16_t& step : steps) {
    step = static_cast<std::uint16_t>(std::clamp((step * ScaleOf(quality) + 50) / 100, 1, 255));
  }
  return steps;
}

// Of all tables that were tried, photographs and scans of equal similarity (SSIM) were smallest by a
// tenth with steps that are far more even than those of the standard's examples, and finer for the means
// of blocks. At quality 75 pictures look as with those of libjpeg. Elsewhere they do, too, because steps
// grow less than its own: the finer they are, the more is gained by their being even.
JpegSteps EncoderSteps(JpegPlane plane, int quality) {
  constexpr double kUnevenness = 0.2;  // 1 for that of the examples, 0 for none
  constexpr double kGrowth = 0.73;
  constexpr double kMean = 0.7;
  const double middle = plane == JpegPlane::kLuminance ? 12 : 23;
  const double growth = std::pow(ScaleOf(quality) / static_cast<double>(ScaleOf(75)), kGrowth);
  JpegSteps steps = LibjpegSteps(plane, 75);
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const double even = middle * std::pow(steps[i] / middle, kUnevenness);
    const double step = even * growth * (i == 0 ? kMean : 1);
    steps[i] = static_cast<std::uint16_t>(std::clamp(std::lround(step), 1L, 255L));
  }
  return steps;
}

std::optional<JpegQuality> EstimateQuality(const JpegHeader& header) {
  const JpegSteps* luminance = StepsOf(header, 0);
  const JpegSteps* chrominance = StepsOf(header, 1);
  if (luminance == nullptr || (header.components > 1 && chrominance == nullptr)) {
    return std::nullopt;
  }
  return JpegQuality{
      .luminance = QualityOf(JpegPlane::kLuminance, *luminance),
      .chrominance = header.components > 1 ? QualityOf(JpegPlane::kChrominance, *chrominance) : 0};
}

bool AreStepsAsCoarse(const JpegHeader& header, int quality) {
  const JpegSteps* steps = StepsOf(header, 0);
  return steps != nullptr && (*steps == EncoderSteps(JpegPlane::kLuminance, quality) ||
                              QualityOf(JpegPlane::kLuminance, *steps) <= quality);
}

}  // namespace TarnixTools::engines
