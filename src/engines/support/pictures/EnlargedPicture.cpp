#include "engines/support/pictures/EnlargedPicture.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace TarnixTools::engines {
namespace {

// What the weights of two neighbours add up to. Their sum fits 16 bits, of which processors compute
// many at a time.
constexpr std::uint32_t kUnit = 1U << 8U;

// Where the middle of a pixel lies in the source: between the middles of two pixels there.
struct Place {
  std::uint32_t first = 0;
  std::uint16_t weight = 0;  // of the one after the first
};

// Beyond the outermost middles the outermost pixel counts alone.
Place PlaceOf(std::uint64_t pixel, std::uint64_t from, std::uint64_t to) {
  const std::uint64_t middle = (2 * pixel + 1) * from * kUnit / (2 * to);
  const std::uint64_t place =
      std::clamp<std::uint64_t>(middle, kUnit / 2, from * kUnit - kUnit / 2) - kUnit / 2;
  return {static_cast<std::uint32_t>(place / kUnit), static_cast<std::uint16_t>(place % kUnit)};
}

std::uint8_t Mix(std::uint8_t first, std::uint8_t second, std::uint16_t weight) {
  const auto sum = static_cast<std::uint16_t>(first * (kUnit - weight) + second * weight);
  return static_cast<std::uint8_t>(static_cast<std::uint16_t>(sum + kUnit / 2) / kUnit);
}

void MixRows(const std::uint8_t* __restrict first, const std::uint8_t* __restrict second,
             std::uint16_t weight, std::size_t size, std::uint8_t* __restrict out) {
  for (std::size_t i = 0; i < size; ++i) {
    out[i] = Mix(first[i], second[i], weight);
  }
}

class EnlargedRows : public RowSource {
 public:
  EnlargedRows(RowSourcePtr source, std::uint32_t width, std::uint32_t height)
      : RowSource(width, height, source->layout()),
        source_(std::move(source)),
        row_(source_->row_bytes() + BytesPerPixel(layout())),
        upper_(row_bytes()),
        lower_(row_bytes()) {
    columns_.reserve(width);
    for (std::uint32_t x = 0; x < width; ++x) {
      columns_.push_back(PlaceOf(x, source_->width(), width));
    }
  }

  bool ReadRow(std::uint8_t* row) override {
    const Place place = PlaceOf(next_++, source_->height(), height());
    const std::uint32_t needed = place.first + (place.weight != 0 ? 1 : 0);
    while (rows_read_ <= needed) {
      ReadSource();
    }
    // Of the two rows held, the lower is the one that was read last.
    const std::vector<std::uint8_t>& first = place.first + 1 == rows_read_ ? lower_ : upper_;
    if (place.weight == 0) {
      std::memcpy(row, first.data(), first.size());
    } else {
      MixRows(first.data(), lower_.data(), place.weight, lower_.size(), row);
    }
    return !is_ended_;
  }

  std::uint64_t held_bytes() const override { return source_->held_bytes(); }

 private:
  void ReadSource() {
    ++rows_read_;
    std::swap(upper_, lower_);
    if (!is_ended_) {
      is_ended_ = !source_->ReadRow(row_.data());
      Widen();
    } else {
      std::memset(lower_.data(), 0xFF, lower_.size());
    }
  }

  void Widen() {
    switch (layout()) {
      case PixelLayout::kGray:
        WidenPixels<1>();
        break;
      case PixelLayout::kRgb:
        WidenPixels<3>();
        break;
      default:
        WidenPixels<4>();
    }
  }

  template <std::size_t kBytes>
  void WidenPixels() {
    std::uint8_t* out = lower_.data();
    for (const Place& column : columns_) {
      const std::uint8_t* pixel = row_.data() + kBytes * column.first;
      for (std::size_t c = 0; c < kBytes; ++c) {
        *out++ = Mix(pixel[c], pixel[c + kBytes], column.weight);
      }
    }
  }

  RowSourcePtr source_;
  std::vector<std::uint8_t> row_;    // as it was read, and a pixel that counts nothing
  std::vector<std::uint8_t> upper_;  // rows of the source, as wide as they become
  std::vector<std::uint8_t> lower_;
  std::vector<Place> columns_;
  std::uint64_t next_ = 0;
  std::uint32_t rows_read_ = 0;
  bool is_ended_ = false;
};

}  // namespace

RowSourcePtr EnlargePicture(RowSourcePtr source, std::uint32_t width, std::uint32_t height) {
  if (width == source->width() && height == source->height()) {
    return source;
  }
  return std::make_unique<EnlargedRows>(std::move(source), width, height);
}

}  // namespace TarnixTools::engines
