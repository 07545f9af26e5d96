#include "engines/support/pictures/UprightPicture.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "engines/support/pictures/PictureLimits.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

class TurnedRows : public RowSource {
 public:
  TurnedRows(RowSource& picture, int orientation)
      : RowSource(orientation > 4 ? picture.height() : picture.width(),
                  orientation > 4 ? picture.width() : picture.height(), picture.layout()),
        orientation_(orientation),
        source_width_(picture.width()),
        source_height_(picture.height()),
        pixels_(picture.row_bytes() * picture.height()) {
    for (std::size_t y = 0; y < source_height_; ++y) {
      is_complete_ = picture.ReadRow(pixels_.data() + y * picture.row_bytes()) && is_complete_;
    }
  }

  bool ReadRow(std::uint8_t* row) override {
    const std::size_t bytes = BytesPerPixel(layout());
    for (std::size_t x = 0; x < width(); ++x) {
      std::memcpy(row + x * bytes, pixels_.data() + SourceOf(x, next_) * bytes, bytes);
    }
    ++next_;
    return is_complete_;
  }

  std::uint64_t held_bytes() const override { return pixels_.size(); }

 private:
  // Which stored pixel is shown at a place.
  std::size_t SourceOf(std::size_t x, std::size_t y) const {
    const std::size_t right = source_width_ - 1;
    const std::size_t bottom = source_height_ - 1;
    switch (orientation_) {
      case 2:
        return y * source_width_ + (right - x);
      case 3:
        return (bottom - y) * source_width_ + (right - x);
      case 4:
        return (bottom - y) * source_width_ + x;
      case 5:
        return x * source_width_ + y;
      case 6:
        return (bottom - x) * source_width_ + y;
      case 7:
        return (bottom - x) * source_width_ + (right - y);
      default:  // 8
        return x * source_width_ + (right - y);
    }
  }

  int orientation_;
  std::size_t source_width_;
  std::size_t source_height_;
  std::vector<std::uint8_t> pixels_;
  bool is_complete_ = true;
  std::size_t next_ = 0;
};

}  // namespace

RowSourcePtr MakeUpright(RowSourcePtr picture, int orientation) {
  if (orientation <= 1 || orientation > 8) {
    return picture;
  }
  if (picture->row_bytes() > limits::kMaxTurnedBytes / picture->height()) {
    throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the picture is too large to be turned");
  }
  return std::make_unique<TurnedRows>(*picture, orientation);
}

}  // namespace TarnixTools::engines
