// Finds the JPEG of a picture that is best by its bytes and its look together.
//
//   JpegSearch search(look, goals, bytes_now);
//   search.Try(at_150_dpi, {1240, 1754}, false);
//   search.Try(at_200_dpi, {1654, 2339}, false);
//   if (search.found()) ...
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_

#include <cstdint>
#include <optional>

#include "engines/optimizer/images/CodedPicture.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/images/Similarity.h"
#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::engines::optimizer {

class JpegSearch {
 public:
  // Look and goals outlive this.
  //   bytes_now - of the picture as it is, which looks as it should
  JpegSearch(const Look& look, const ImageGoals& goals, std::uint64_t bytes_now);

  // Tries a picture in one size, from the quality that is asked for upwards. Returns what the best of
  // them costs.
  //   whole   - the size of what the picture is a part of
  //   is_flat - its colours have sharp edges
  double Try(const SamplePicture& picture, PictureSize whole, bool is_flat);

  struct Found {
    PictureSize whole;
    JpegChoice choice;
    double similarity = 1;
  };

  // The best; nothing when the image as it is was better.
  const std::optional<Found>& found() const { return found_; }

 private:
  const Look* look_;
  const ImageGoals* goals_;
  double least_cost_;
  std::optional<Found> found_;  // of the least cost
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_
