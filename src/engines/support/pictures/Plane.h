// Decoded samples in memory: rows as PNG has them (PNG, 7.2), each behind one byte for its filter
// type, so that the same memory can be filtered in place and compressed.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_PLANE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_PLANE_H_

#include <cstddef>
#include <cstdint>
#include <memory>

namespace TarnixTools::engines {

class Plane {
 public:
  Plane() = default;

  // Samples are not set.
  //   channels - samples of a pixel
  //   bits     - of a sample: 1, 2, 4 (packed, the first pixel in the highest bits), 8, or 16 (high
  //              byte first)
  // Throws ImageError(kLimit) for more than limits::kMaxDecodedBytes.
  Plane(std::uint32_t width, std::uint32_t height, int channels, int bits);

  bool empty() const { return height_ == 0; }

  std::uint32_t width() const { return width_; }

  std::uint32_t height() const { return height_; }

  int channels() const { return channels_; }

  int bits() const { return bits_; }

  // Bytes of a row's samples, and from one row to the next.
  std::size_t row_bytes() const { return stride_ - 1; }

  std::size_t stride() const { return stride_; }

  // The samples of a row, top row first.
  unsigned char* row(std::uint32_t y) { return data_.get() + y * stride_ + 1; }

  const unsigned char* row(std::uint32_t y) const { return data_.get() + y * stride_ + 1; }

  // All rows with their filter bytes.
  unsigned char* data() { return data_.get(); }

  const unsigned char* data() const { return data_.get(); }

  std::size_t size() const { return stride_ * height_; }

  // Sets the rows from `first` on to one byte.
  void Fill(unsigned char value, std::uint32_t first = 0);

 private:
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  int channels_ = 1;
  int bits_ = 8;
  std::size_t stride_ = 1;
  std::unique_ptr<unsigned char[]> data_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_PLANE_H_
