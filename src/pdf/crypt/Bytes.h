// Byte views for the crypt folder: nettle speaks of uint8_t, the core of string_view.
#ifndef TARNIX_PDF_CRYPT_BYTES_H_
#define TARNIX_PDF_CRYPT_BYTES_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::pdf::crypt {

template <std::size_t kSize>
using Block = std::array<std::uint8_t, kSize>;

inline const std::uint8_t* Octets(std::string_view bytes) {
  return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

inline std::uint8_t* Octets(std::string& bytes) {
  return reinterpret_cast<std::uint8_t*>(bytes.data());
}

template <std::size_t kSize>
std::string_view View(const Block<kSize>& block) {
  return {reinterpret_cast<const char*>(block.data()), kSize};
}

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_BYTES_H_
