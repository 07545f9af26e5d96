// Rows of which a bit for each pixel is given, the first in the highest bit of a byte, many pixels at
// a time.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_BITROWS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_BITROWS_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace TarnixTools::engines {

// A picture in black and white in memory.
struct BitPicture {
  const std::uint8_t* rows = nullptr;  // top row first
  std::size_t stride = 0;              // bytes from one row to the next
  std::uint32_t width = 0;             // pixels
  std::uint32_t height = 0;
  int black = 0;  // the value of the bits that are black, 0 or 1

  const std::uint8_t* row(std::uint32_t y) const { return rows + stride * y; }
};

// Up to 64 pixels, the first in the highest bit; zeros behind the last byte.
//   count - bytes that there are
inline std::uint64_t LoadBig(const std::uint8_t* bytes, std::size_t count = 8) {
  std::uint64_t word = 0;
  if (count >= 8) {
    std::memcpy(&word, bytes, 8);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
  }
  for (std::size_t i = 0; i < count; ++i) {
    word |= static_cast<std::uint64_t>(bytes[i]) << (56 - 8 * i);
  }
  return word;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_BITROWS_H_
