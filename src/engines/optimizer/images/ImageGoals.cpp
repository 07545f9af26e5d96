#include "engines/optimizer/images/ImageGoals.h"

#include <array>
#include <cmath>

namespace TarnixTools::engines::optimizer {

namespace {

struct Price {
  int quality;           // from this on
  float resolution_dpi;  // and this
  double worth_of_look;
};

// The first row that fits holds.
constexpr std::array<Price, 3> kPrices = {{
    {.quality = 75, .resolution_dpi = kSeenDpi, .worth_of_look = 18},
    {.quality = 50, .resolution_dpi = kSeenDpi, .worth_of_look = 20},
    {.quality = 0, .resolution_dpi = 0, .worth_of_look = 9},
}};

double WorthOfLook(int quality, float resolution_dpi) {
  for (const Price& price : kPrices) {
    if (quality >= price.quality &&
        (resolution_dpi == 0 || resolution_dpi >= price.resolution_dpi)) {
      return price.worth_of_look;
    }
  }
  return kPrices.back().worth_of_look;
}

}  // namespace

double CostOf(std::uint64_t bytes, double similarity, const ImageGoals& goals) {
  return std::log(static_cast<double>(bytes)) + goals.worth_of_look * (1 - similarity);
}

ImageGoals GoalsOf(const OptimizerSettings& settings, bool has_cmyk_intent) {
  return {.settings = settings,
          .converts_to_rgb = settings.color_conversion == ColorConversion::kRgb && !has_cmyk_intent,
          .worth_of_look = WorthOfLook(settings.image_quality, settings.resolution_dpi)};
}

}  // namespace TarnixTools::engines::optimizer
