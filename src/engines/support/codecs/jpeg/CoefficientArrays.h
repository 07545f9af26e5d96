// Arrays of the coefficients of a JPEG picture, a block each for eight by eight samples of a component,
// in memory of libjpeg's, which codes them from there.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTARRAYS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTARRAYS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "engines/support/codecs/LibjpegCalls.h"

namespace TarnixTools::engines::jpeg {

struct ArraySize {
  std::uint32_t across = 0;  // blocks, whole units of those that are coded together
  std::uint32_t down = 0;
  std::uint32_t unit_down = 1;  // blocks of a unit
};

class CoefficientArrays : private LibjpegCalls {
 public:
  CoefficientArrays() { Watch(state_); }

  ~CoefficientArrays() { jpeg_destroy_compress(&state_); }

  // Once, with zeros. False when there is no memory for them.
  bool Allocate(std::span<const ArraySize> sizes);

  // The blocks of a row, to be written; null when the library gives none.
  JBLOCKROW Row(std::size_t component, std::uint32_t row);

  jvirt_barray_ptr* get() { return arrays_.data(); }

 private:
  jpeg_compress_struct state_{};  // for its memory only
  std::array<jvirt_barray_ptr, 4> arrays_{};
};

}  // namespace TarnixTools::engines::jpeg

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEG_COEFFICIENTARRAYS_H_
