// How much a picture still looks like another: the mean of the structural similarity (Wang et al.,
// IEEE Transactions on Image Processing 13, 2004) of their lightness, by windows of 7 by 7 pixels.
//
//   const Look look(original, false, 850, 1100);
//   const double similarity = look.SimilarityOf(coded);   // 1: the same
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_SIMILARITY_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_SIMILARITY_H_

#include <cstdint>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"

namespace TarnixTools::engines::optimizer {

// Lightness of a picture, a byte a pixel: of gray as it is, of RGB weighted, of CMYK by what the
// inks leave of the paper.
//   is_inverted - of CMYK: 255 is no ink
SamplePicture LightnessOf(const SamplePicture& picture, bool is_inverted);

// A picture of a byte a pixel as viewers show it in so many pixels.
SamplePicture SeenIn(SamplePicture lightness, std::uint32_t width, std::uint32_t height);

// What a picture looks like when it is seen in a certain size.
class Look {
 public:
  //   width, height - pixels in which it is seen
  Look(const SamplePicture& picture, bool is_inverted, std::uint32_t width, std::uint32_t height);

  // Of a picture of any size in the same colours: up to 1, for the same look.
  double SimilarityOf(const SamplePicture& picture) const;

  const SamplePicture& lightness() const { return lightness_; }

 private:
  bool is_inverted_;
  SamplePicture lightness_;
};

// Of two pictures of gray of one size. Windows lie two pixels apart.
double StructuralSimilarity(const SamplePicture& first, const SamplePicture& second);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_SIMILARITY_H_
