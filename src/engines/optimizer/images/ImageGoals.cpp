#include "engines/optimizer/images/ImageGoals.h"

#include <array>

namespace TarnixTools::engines::optimizer {

namespace {

struct Promise {
  int quality;           // from this on
  float resolution_dpi;  // and this
  double similarity;
};

// The first row that fits holds.
constexpr std::array<Promise, 4> kPromises = {{
    {.quality = 75, .resolution_dpi = kSeenDpi, .similarity = 0.985},
    {.quality = 50, .resolution_dpi = kSeenDpi, .similarity = 0.97},
    {.quality = 50, .resolution_dpi = 0, .similarity = 0.925},
    {.quality = 0, .resolution_dpi = 0, .similarity = 0.85},
}};

double SimilarityFor(int quality, float resolution_dpi) {
  for (const Promise& promise : kPromises) {
    if (quality >= promise.quality &&
        (resolution_dpi == 0 || resolution_dpi >= promise.resolution_dpi)) {
      return promise.similarity;
    }
  }
  return kPromises.back().similarity;
}

}  // namespace

ImageGoals GoalsOf(const OptimizerSettings& settings, bool has_cmyk_intent) {
  return {.settings = settings,
          .converts_to_rgb = settings.color_conversion == ColorConversion::kRgb && !has_cmyk_intent,
          .least_similarity = SimilarityFor(settings.image_quality, settings.resolution_dpi)};
}

}  // namespace TarnixTools::engines::optimizer
