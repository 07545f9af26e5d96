// A picture as rows of pixels, read once from top to bottom.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_ROWSOURCE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_ROWSOURCE_H_

#include <cstddef>
#include <cstdint>
#include <memory>

#include "engines/support/pictures/PixelLayout.h"

namespace TarnixTools::engines {

class RowSource {
 public:
  RowSource(std::uint32_t width, std::uint32_t height, PixelLayout layout)
      : width_(width), height_(height), layout_(layout) {}

  virtual ~RowSource() = default;
  RowSource(const RowSource&) = delete;
  RowSource& operator=(const RowSource&) = delete;

  std::uint32_t width() const { return width_; }

  std::uint32_t height() const { return height_; }

  PixelLayout layout() const { return layout_; }

  std::size_t row_bytes() const { return width_ * BytesPerPixel(layout_); }

  // The next row, height() times: row_bytes() bytes. False where there is no data for it; the row
  // is white then.
  virtual bool ReadRow(std::uint8_t* row) = 0;

  // Memory that it takes until it is destroyed, as far as that depends on the picture's size.
  virtual std::uint64_t held_bytes() const = 0;

  // Of a picture in black and white, ReadBits may be called instead, for every row: a bit for each
  // pixel, 1 for white.
  virtual bool is_bilevel() const { return false; }

  virtual bool ReadBits(std::uint8_t* /*bits*/) { return false; }

 private:
  std::uint32_t width_;
  std::uint32_t height_;
  PixelLayout layout_;
};

using RowSourcePtr = std::unique_ptr<RowSource>;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_ROWSOURCE_H_
