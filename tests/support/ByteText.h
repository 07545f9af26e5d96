// Bytes in words, for texts that whole outputs are compared with.
#ifndef TARNIX_TESTS_SUPPORT_BYTETEXT_H_
#define TARNIX_TESTS_SUPPORT_BYTETEXT_H_

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

#include <zlib.h>

namespace TarnixTools::testing {

inline std::string ChecksumOf(std::string_view bytes) {
  char text[16];
  const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
  std::snprintf(text, sizeof text, "%08lx", crc32(0, data, static_cast<unsigned>(bytes.size())));
  return text;
}

inline std::string HexOf(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    text += digits;
  }
  return text;
}

// Bytes in hexadecimal; more than so many by their number and their checksum.
inline std::string ShortBytes(std::string_view bytes, std::size_t most = 12) {
  return bytes.size() <= most ? HexOf(bytes)
                              : std::to_string(bytes.size()) + ":" + ChecksumOf(bytes);
}

template <typename Bytes>
std::string ShortBytesOf(const Bytes& bytes, std::size_t most = 12) {
  return ShortBytes({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, most);
}

// Bytes that look like noise, below a bound; the same ones each time.
inline std::string NoiseBytes(std::size_t count, unsigned bound = 256, unsigned seed = 1) {
  std::string bytes;
  unsigned state = seed;
  for (std::size_t i = 0; i < count; ++i) {
    state = state * 1664525U + 1013904223U;
    bytes += static_cast<char>((state >> 16U) % bound);
  }
  return bytes;
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_BYTETEXT_H_
