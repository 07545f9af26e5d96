// Finds the smallest JPEG of a picture that still looks as it should.
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
  //   most_bytes - what is not smaller is of no use
  JpegSearch(const Look& look, const ImageGoals& goals, std::uint64_t most_bytes)
      : look_(&look), goals_(&goals), most_bytes_(most_bytes) {}

  // Tries the picture in one size, from the quality that is asked for upwards.
  //   is_flat - its colours have sharp edges
  void Try(SamplePicture picture, bool is_flat);

  // Whether sizes larger than those tried can be of no use.
  bool is_over() const { return is_over_; }

  // The smallest that was found.
  std::optional<CodedPicture> Result();

 private:
  const Look* look_;
  const ImageGoals* goals_;
  std::uint64_t most_bytes_;
  bool is_over_ = false;
  std::optional<SamplePicture> picture_;  // that has been best so far
  JpegChoice choice_;
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_JPEGSEARCH_H_
