// The cosine transform of blocks of eight by eight samples (ITU-T T.81, A.3.3).
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEG_BLOCKTRANSFORM_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEG_BLOCKTRANSFORM_H_

#include <array>
#include <cstddef>

namespace TarnixTools::engines::jpeg {

// By frequency and place.
using CosineBasis = std::array<std::array<float, 8>, 8>;

const CosineBasis& TheCosineBasis();

// Coefficients, in rows of equal vertical frequency.
using Block = std::array<float, 64>;

// The transform of samples that lie around 0.
//   stride - samples from one row to the next
void Transform(const float* samples, std::size_t stride, Block& block);

}  // namespace TarnixTools::engines::jpeg

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEG_BLOCKTRANSFORM_H_
