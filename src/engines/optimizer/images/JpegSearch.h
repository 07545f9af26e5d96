// Finds the JPEG of a picture that is best by its bytes and its look together.
//
//   JpegSearch search(look, goals, bytes_now);
//   search.Try(picture_at_150_dpi, false);
//   search.Try(picture_at_200_dpi, false);
//   if (std::optional<CodedPicture> found = search.Result()) ...
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_

#include <cstdint>
#include <optional>

#include "engines/optimizer/images/CodedPicture.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/images/Similarity.h"

namespace TarnixTools::engines::optimizer {

class JpegSearch {
 public:
  // Look and goals outlive this.
  //   bytes_now - of the image as it is, which looks as it should
  JpegSearch(const Look& look, const ImageGoals& goals, std::uint64_t bytes_now);

  // Tries the picture in one size, from the quality that is asked for upwards. Returns what the best
  // of them costs.
  //   is_flat - its colours have sharp edges
  double Try(const SamplePicture& picture, bool is_flat);

  // The best that was found; nothing when the image as it is was better.
  std::optional<CodedPicture> Result() const;

 private:
  double CostOf(std::uint64_t bytes, double similarity) const;

  const Look* look_;
  const ImageGoals* goals_;
  double least_cost_;
  std::optional<SamplePicture> picture_;  // of the least cost
  JpegChoice choice_;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_
