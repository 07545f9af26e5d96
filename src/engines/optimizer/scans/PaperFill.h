// The paper of a scanned page without what is printed on it: where ink has been is what is around,
// and beside it no traces of it are left, such as JPEG leaves around sharp edges.
//
//   PaperFill paper(picture, 2);
//   paper.Cover(run.y, run.left, run.right);   // each run of ink
//   SamplePicture background = paper.Fill({1240, 1754});
#ifndef TARNIX_ENGINES_OPTIMIZER_SCANS_PAPERFILL_H_
#define TARNIX_ENGINES_OPTIMIZER_SCANS_PAPERFILL_H_

#include <cstdint>
#include <vector>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/support/codecs/JpegReader.h"

namespace TarnixTools::engines::optimizer {

class PaperFill {
 public:
  // The picture outlives this.
  //   halo - pixels around ink that are no paper either
  PaperFill(const SamplePicture& picture, std::uint32_t halo);

  // There is ink on some pixels of a row.
  void Cover(std::uint32_t y, std::uint32_t left, std::uint32_t right);

  // In so many pixels, not more than the picture has.
  SamplePicture Fill(PictureSize size) const;

 private:
  const SamplePicture* picture_;
  std::uint32_t halo_;
  std::uint32_t columns_;                 // of squares that gaps are filled by
  std::vector<std::uint8_t> is_covered_;  // a byte a pixel
  std::vector<std::uint8_t> has_ink_;     // a byte a square
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SCANS_PAPERFILL_H_
