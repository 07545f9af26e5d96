// A key of at most 32 bytes, wiped from memory when it goes.
#ifndef TARNIX_PDF_CRYPT_SECRET_KEY_H_
#define TARNIX_PDF_CRYPT_SECRET_KEY_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include <string.h>

#include "pdf/crypt/Bytes.h"

namespace TarnixTools::pdf::crypt {

class SecretKey {
 public:
  static constexpr std::size_t kMostBytes = 32;

  SecretKey() = default;

  // `size` zero bytes to be written through data(); at most kMostBytes.
  explicit SecretKey(std::size_t size) : size_(std::min(size, kMostBytes)) {}

  // The first kMostBytes of `bytes`, or all of them.
  explicit SecretKey(std::string_view bytes) : size_(std::min(bytes.size(), kMostBytes)) {
    std::copy_n(bytes.begin(), size_, reinterpret_cast<char*>(bytes_.data()));
  }

  SecretKey(const SecretKey&) = default;
  SecretKey& operator=(const SecretKey&) = default;

  ~SecretKey() { explicit_bzero(bytes_.data(), bytes_.size()); }

  std::uint8_t* data() { return bytes_.data(); }

  const std::uint8_t* data() const { return bytes_.data(); }

  std::size_t size() const { return size_; }

  std::string_view view() const { return View(bytes_).substr(0, size_); }

 private:
  Block<kMostBytes> bytes_{};
  std::size_t size_ = 0;
};

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_SECRET_KEY_H_
