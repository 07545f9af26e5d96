#include "engines/optimizer/OptimizerSettings.h"

#include <array>

namespace TarnixTools::engines::optimizer {

namespace {

struct Profile {
  std::int32_t number;
  OptimizerSettings settings;
};

// The one place where profiles stand.
constexpr std::array<Profile, 2> kProfiles = {{
    // Keeps every object as it is, and images in their size.
    {.number = kDefaultProfile,
     .settings = {.bitonal_codecs = kBitonalJbig2,
                  .continuous_codecs = kContinuousJpeg,
                  .image_quality = 75}},
    // For the screen: everything that keeps the look, but no standard fonts out and no clipping.
    {.number = kImageProfile,
     .settings = {.bitonal_codecs = kBitonalJbig2,
                  .continuous_codecs = kContinuousJpeg,
                  .image_quality = 75,
                  .resolution_dpi = 150,
                  .threshold_dpi = 225,
                  .optimizes_resources = true,
                  .removes_redundant_objects = true,
                  .subsets_fonts = true,
                  .drops_hints = true,
                  .reduces_color_complexity = true}},
}};

}  // namespace

std::optional<OptimizerSettings> ProfileSettings(std::int32_t profile) {
  for (const Profile& known : kProfiles) {
    if (known.number == profile) {
      return known.settings;
    }
  }
  return std::nullopt;
}

}  // namespace TarnixTools::engines::optimizer
