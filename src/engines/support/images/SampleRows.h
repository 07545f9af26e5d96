// The samples of an image, row by row, packed as the PDF standard has them (ISO 32000-2, 8.9.5.2):
// in the image's own colour space and depth.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_SAMPLEROWS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_SAMPLEROWS_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace TarnixTools::engines {

struct SampleFormat {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  int components = 1;  // of a pixel, 1 to 32
  int bits = 8;        // of a component: 1, 2, 4, 8 or 16

  std::size_t samples_in_row() const {
    return std::size_t{width} * static_cast<std::size_t>(components);
  }

  // Every row starts with a byte of its own.
  std::size_t row_bytes() const {
    return (samples_in_row() * static_cast<std::size_t>(bits) + 7) / 8;
  }
};

class SampleRows {
 public:
  explicit SampleRows(const SampleFormat& format) : format_(format) {}

  virtual ~SampleRows() = default;
  SampleRows(const SampleRows&) = delete;
  SampleRows& operator=(const SampleRows&) = delete;

  const SampleFormat& format() const { return format_; }

  // The next row, height() times, valid until the next call: row_bytes() bytes, fewer where the
  // data ends within the row, none where there is no data for it.
  virtual std::span<const std::uint8_t> ReadRow() = 0;

  // Memory that it takes until it is destroyed, as far as that depends on the image's size.
  virtual std::uint64_t held_bytes() const = 0;

 private:
  SampleFormat format_;
};

using SampleRowsPtr = std::unique_ptr<SampleRows>;

// The first `count` samples of a row, a byte each; of sixteen bits the upper eight.
void UnpackSamples(const std::uint8_t* packed, int bits, std::size_t count, std::uint8_t* samples);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_SAMPLEROWS_H_
