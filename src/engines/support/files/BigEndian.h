// Numbers as font files, PNG files and profiles have them: the highest byte first.
#ifndef TARNIX_ENGINES_SUPPORT_FILES_BIGENDIAN_H_
#define TARNIX_ENGINES_SUPPORT_FILES_BIGENDIAN_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

// The two or four bytes at a place; 0 where the bytes end before.
inline std::uint32_t Big16(std::string_view bytes, std::size_t at) {
  if (bytes.size() < 2 || at > bytes.size() - 2) {
    return 0;
  }
  return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[at])) << 8 |
         static_cast<unsigned char>(bytes[at + 1]);
}

inline std::uint32_t Big32(std::string_view bytes, std::size_t at) {
  return bytes.size() < 4 || at > bytes.size() - 4 ? 0
                                                   : Big16(bytes, at) << 16 | Big16(bytes, at + 2);
}

// Append the last bytes of a number.
inline void AppendBig(std::string& out, std::uint64_t value, int bytes) {
  for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
    out += static_cast<char>(value >> shift);
  }
}

inline void AppendBig16(std::string& out, std::uint64_t value) {
  AppendBig(out, value, 2);
}

inline void AppendBig32(std::string& out, std::uint64_t value) {
  AppendBig(out, value, 4);
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_FILES_BIGENDIAN_H_
