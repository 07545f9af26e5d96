// Pictures seen through a mask.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_COMPOSEDROWS_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_COMPOSEDROWS_H_

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

using Rgb = std::array<std::uint8_t, 3>;

// A picture through a mask, on white. Masks may have a size of their own.
class MaskedRows : public RowSource {
 public:
  // inverted: the mask's white is what is left out.
  // matte: what the picture is mixed with already, as the mask says; in its colours.
  MaskedRows(RowSourcePtr picture, RowSourcePtr mask, bool inverted,
             const std::optional<Rgb>& matte)
      : RowSource(picture->width(), picture->height(), picture->layout()),
        picture_(std::move(picture)),
        mask_(std::move(mask)),
        inverted_(inverted),
        matte_(matte),
        mask_row_(mask_->row_bytes()),
        alpha_(width()) {}

  bool ReadRow(std::uint8_t* row) override {
    const bool is_there = picture_->ReadRow(row);
    ReadAlpha();
    const std::size_t bytes = BytesPerPixel(layout());
    for (std::size_t x = 0; x < width(); ++x) {
      const unsigned alpha = alpha_[x];
      for (std::size_t c = 0; c < bytes; ++c) {
        std::uint8_t& value = row[bytes * x + c];
        value = matte_
                    ? FromMatteToWhite(value, (*matte_)[c], alpha)
                    : static_cast<std::uint8_t>((value * alpha + 255 * (255 - alpha) + 127) / 255);
      }
    }
    ++next_;
    return is_there;
  }

  std::uint64_t held_bytes() const override { return picture_->held_bytes() + mask_->held_bytes(); }

 private:
  // What lies between a value and the matte is the transparent part (ISO 32000-2, 11.6.5.2): it
  // becomes white.
  static std::uint8_t FromMatteToWhite(unsigned value, unsigned matte, unsigned alpha) {
    return static_cast<std::uint8_t>(
        std::min(255U, value + ((255 - matte) * (255 - alpha) + 127) / 255));
  }

  // The nearest sample of the mask for each pixel.
  void ReadAlpha() {
    const std::uint64_t wanted = (2 * static_cast<std::uint64_t>(next_) + 1) * mask_->height() /
                                 (2 * std::uint64_t{height()});
    bool is_new = false;
    while (mask_rows_read_ <= wanted && mask_rows_read_ < mask_->height()) {
      mask_->ReadRow(mask_row_.data());
      ++mask_rows_read_;
      is_new = true;
    }
    const std::size_t bytes = BytesPerPixel(mask_->layout());
    for (std::size_t x = 0; is_new && x < width(); ++x) {
      const std::size_t at =
          (2 * static_cast<std::uint64_t>(x) + 1) * mask_->width() / (2 * std::uint64_t{width()});
      const std::uint8_t value = mask_row_[at * bytes];
      alpha_[x] = inverted_ ? static_cast<std::uint8_t>(255 - value) : value;
    }
  }

  RowSourcePtr picture_;
  RowSourcePtr mask_;
  bool inverted_;
  std::optional<Rgb> matte_;
  std::vector<std::uint8_t> mask_row_;
  std::vector<std::uint8_t> alpha_;
  std::uint64_t mask_rows_read_ = 0;
  std::uint32_t next_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_COMPOSEDROWS_H_
