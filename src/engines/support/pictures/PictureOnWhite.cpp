#include "engines/support/pictures/PictureOnWhite.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace TarnixTools::engines {
namespace {

// What lies between a value and the matte is the transparent part: it becomes white.
void PutMattedOnWhite(std::uint8_t* pixel, std::size_t bytes, unsigned alpha, const Rgb& matte) {
  for (std::size_t c = 0; c < bytes; ++c) {
    pixel[c] = static_cast<std::uint8_t>(
        std::min(255U, pixel[c] + ((255U - matte[c]) * (255 - alpha) + 127) / 255));
  }
}

void PutPixelOnWhite(std::uint8_t* pixel, std::size_t bytes, unsigned alpha) {
  for (std::size_t c = 0; c < bytes; ++c) {
    pixel[c] = static_cast<std::uint8_t>((pixel[c] * alpha + 255 * (255 - alpha) + 127) / 255);
  }
}

class RowsOnWhite : public RowSource {
 public:
  RowsOnWhite(RowSourcePtr picture, RowSourcePtr alpha, const std::optional<Rgb>& matte)
      : RowSource(picture->width(), picture->height(), picture->layout()),
        picture_(std::move(picture)),
        alpha_(std::move(alpha)),
        matte_(matte),
        alpha_row_(alpha_->row_bytes()),
        alpha_of_pixels_(width()) {
    for (std::uint64_t x = 0; alpha_->width() != width() && x < width(); ++x) {
      columns_.push_back(Nearest(x, alpha_->width(), width()));
    }
  }

  bool ReadRow(std::uint8_t* row) override {
    const bool is_there = picture_->ReadRow(row);
    ReadAlpha();
    PutOnWhite(row, layout(), columns_.empty() ? alpha_row_.data() : alpha_of_pixels_.data(),
               width(), matte_);
    ++next_;
    return is_there;
  }

  std::uint64_t held_bytes() const override {
    return picture_->held_bytes() + alpha_->held_bytes();
  }

 private:
  // Which of so many samples lies at the middle of a pixel.
  static std::uint32_t Nearest(std::uint64_t pixel, std::uint64_t samples, std::uint64_t pixels) {
    return static_cast<std::uint32_t>((2 * pixel + 1) * samples / (2 * pixels));
  }

  void ReadAlpha() {
    const std::uint32_t wanted = Nearest(next_, alpha_->height(), height());
    bool is_new = false;
    while (alpha_rows_read_ <= wanted && alpha_rows_read_ < alpha_->height()) {
      alpha_->ReadRow(alpha_row_.data());
      ++alpha_rows_read_;
      is_new = true;
    }
    for (std::size_t x = 0; is_new && x < columns_.size(); ++x) {
      alpha_of_pixels_[x] = alpha_row_[columns_[x]];
    }
  }

  RowSourcePtr picture_;
  RowSourcePtr alpha_;
  std::optional<Rgb> matte_;
  std::vector<std::uint32_t> columns_;  // of the alpha, by pixel; empty where they are the same
  std::vector<std::uint8_t> alpha_row_;
  std::vector<std::uint8_t> alpha_of_pixels_;
  std::uint32_t alpha_rows_read_ = 0;
  std::uint32_t next_ = 0;
};

}  // namespace

void PutOnWhite(std::uint8_t* pixels, PixelLayout layout, const std::uint8_t* alpha,
                std::size_t count, const std::optional<Rgb>& matte) {
  const std::size_t bytes = BytesPerPixel(layout);
  for (std::size_t x = 0; x < count; ++x) {
    std::uint8_t* const pixel = pixels + bytes * x;
    if (alpha[x] == 255) {
      continue;
    }
    if (matte) {
      PutMattedOnWhite(pixel, bytes, alpha[x], *matte);
    } else if (alpha[x] == 0) {
      std::memset(pixel, 0xFF, bytes);
    } else {
      PutPixelOnWhite(pixel, bytes, alpha[x]);
    }
  }
}

RowSourcePtr PictureOnWhite(RowSourcePtr picture, RowSourcePtr alpha,
                            const std::optional<Rgb>& matte) {
  return std::make_unique<RowsOnWhite>(std::move(picture), std::move(alpha), matte);
}

}  // namespace TarnixTools::engines
