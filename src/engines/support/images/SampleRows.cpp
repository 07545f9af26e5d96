#include "engines/support/images/SampleRows.h"

#include <algorithm>

namespace TarnixTools::engines {

void UnpackSamples(const std::uint8_t* packed, int bits, std::size_t count, std::uint8_t* samples) {
  if (bits == 8) {
    std::copy_n(packed, count, samples);  // of a row that is not there, too: no bytes at no address
  } else if (bits == 16) {
    for (std::size_t i = 0; i < count; ++i) {
      samples[i] = packed[2 * i];
    }
  } else {
    const auto step = static_cast<std::size_t>(bits);
    const auto mask = static_cast<std::uint8_t>((1U << step) - 1);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t at = i * step;
      samples[i] = static_cast<std::uint8_t>((packed[at / 8] >> (8 - step - at % 8)) & mask);
    }
  }
}

}  // namespace TarnixTools::engines
