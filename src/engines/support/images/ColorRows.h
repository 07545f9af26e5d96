// Samples of an image as pixels in sRGB or gray: the stage that converts colours. Masks are none of
// its business.
//
//   RowSourcePtr picture = std::make_unique<ColorRows>(*OpenSamples(image, facts));
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_COLORROWS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_COLORROWS_H_

#include <cstdint>
#include <span>
#include <vector>

#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/RowConverter.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

class ColorRows : public RowSource {
 public:
  // samples: in a colour space that is computed. Their alpha channel is not used.
  explicit ColorRows(ImageSamples samples);

  bool ReadRow(std::uint8_t* row) override;

  std::uint64_t held_bytes() const override { return samples_->held_bytes(); }

  bool is_bilevel() const override { return converter_.is_bilevel(); }

  bool ReadBits(std::uint8_t* bits) override;

  const SampleFormat& format() const { return samples_->format(); }

  // What the row was made of that has been read last, as SampleRows::ReadRow gave it.
  std::span<const std::uint8_t> last_samples() const { return last_samples_; }

 private:
  void ConvertPart(std::uint8_t* row);

  SampleRowsPtr samples_;
  RowConverter converter_;
  std::span<const std::uint8_t> last_samples_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_COLORROWS_H_
