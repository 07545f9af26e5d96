// Quantises the coefficients of blocks by what they are worth: what each adds to the picture, against the
// bits that it takes.
//
//   const Quantizer quantizer(EncoderSteps(JpegPlane::kLuminance, 75));
//   quantizer.Quantize(block, row[x]);
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEG_QUANTIZER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEG_QUANTIZER_H_

#include <array>
#include <cstdint>

#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/jpeg/BlockTransform.h"

namespace TarnixTools::engines::jpeg {

class Quantizer {
 public:
  explicit Quantizer(const JpegSteps& steps);

  // What stands for the block: 64 whole numbers of steps in the same order. None is further from 0 than
  // rounding would have it.
  void Quantize(const Block& block, std::int16_t* quantized) const;

 private:
  std::array<float, 64> factors_{};  // one by the step
};

}  // namespace TarnixTools::engines::jpeg

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEG_QUANTIZER_H_
