// What kind of picture some samples are, and what they could do without.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_PICTUREFEATURES_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_PICTUREFEATURES_H_

#include <cstdint>

#include "engines/optimizer/images/SamplePicture.h"

namespace TarnixTools::engines::optimizer {

struct PictureFeatures {
  bool is_gray = false;         // of three components: none of its pixels has a colour that is seen
  bool is_one_color = false;    // all pixels are the same
  bool has_few_colors = false;  // as what is drawn has
  double repeated_part = 0;     // of the pixels: those that are what their left neighbour is

  // Drawn, not photographed: coding without loss is worth a try.
  bool is_flat() const { return has_few_colors || repeated_part > 0.5; }
};

PictureFeatures FeaturesOf(const SamplePicture& picture);

// Of a picture of three components that is gray.
SamplePicture GrayOf(const SamplePicture& picture);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_PICTUREFEATURES_H_
