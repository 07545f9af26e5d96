// What is asked of images: the settings that are about them, and what they are taken to promise.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEGOALS_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEGOALS_H_

#include <cstdint>

#include "engines/optimizer/OptimizerSettings.h"

namespace TarnixTools::engines::optimizer {

// Pixels per inch at which pages are looked at.
inline constexpr double kSeenDpi = 150;

struct ImageGoals {
  OptimizerSettings settings;
  bool converts_to_rgb = false;  // CMYK images
  // What the look of an image is worth (Similarity.h): losing one hundredth of its similarity has to
  // save this many hundredths of its bytes.
  double worth_of_look = 0;
};

// What an image costs in bytes and in look: bytes count by their ratio.
//   similarity - to the look of the image as it was
double CostOf(std::uint64_t bytes, double similarity, const ImageGoals& goals);

// has_cmyk_intent: the document says that it is for a CMYK device.
ImageGoals GoalsOf(const OptimizerSettings& settings, bool has_cmyk_intent);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEGOALS_H_
