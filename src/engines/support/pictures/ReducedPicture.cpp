#include "engines/support/pictures/ReducedPicture.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace TarnixTools::engines {
namespace {

// What all weights of a row, and of a pixel in it, add up to. Sums of rows fit 16 bits, which
// processors add up eight at a time, and sums of these fit 32.
constexpr std::uint32_t kRowUnit = 1U << 8U;
constexpr std::uint32_t kPixelUnit = 1U << 16U;
constexpr unsigned kUnitBits = 24;  // of the product

// How many of `unit` parts of a small piece, `from` long, lie before a place in it. What two of
// these differ by is a weight: rounded, but the weights of a piece add up to the unit.
std::uint32_t PartsBefore(std::uint64_t place, std::uint64_t from, std::uint32_t unit) {
  return static_cast<std::uint32_t>((2 * place * unit + from) / (2 * from));
}

// Bytes that are added up at once: so many that compilers use vectors.
constexpr std::size_t kBlock = 32;

void TakeBlock(const std::uint8_t* __restrict row, std::uint16_t factor,
               std::uint16_t* __restrict sums) {
  for (std::size_t i = 0; i < kBlock; ++i) {
    sums[i] = static_cast<std::uint16_t>(row[i] * factor);
  }
}

void AddBlock(const std::uint8_t* __restrict row, std::uint16_t factor,
              std::uint16_t* __restrict sums) {
  for (std::size_t i = 0; i < kBlock; ++i) {
    sums[i] = static_cast<std::uint16_t>(sums[i] + row[i] * factor);
  }
}

class ReducedRows : public RowSource {
 public:
  ReducedRows(RowSourcePtr source, std::uint32_t width, std::uint32_t height)
      : RowSource(width, height, source->layout()),
        source_(std::move(source)),
        row_((source_->row_bytes() + kBlock - 1) / kBlock * kBlock),
        sums_(row_.size()) {
    WeighPixels();
  }

  bool ReadRow(std::uint8_t* row) override {
    AddRows();
    switch (layout()) {
      case PixelLayout::kGray:
        AddPixels<1>(row);
        break;
      case PixelLayout::kRgb:
        AddPixels<3>(row);
        break;
      default:
        AddPixels<4>(row);
    }
    return !is_ended_;
  }

  std::uint64_t held_bytes() const override { return source_->held_bytes(); }

 private:
  // The pixels of a row are gone through from left to right, the last of one pixel being the first
  // of the next where it is divided.
  struct Pixel {
    std::uint32_t first = 0;
    std::uint32_t count = 0;
  };

  void WeighPixels() {
    const std::uint64_t from = source_->width();
    const std::uint64_t to = width();
    for (std::uint64_t x = 0; x < to; ++x) {
      const std::uint64_t start = x * from;
      const std::uint64_t end = start + from;
      const auto first = static_cast<std::uint32_t>(start / to);
      std::uint32_t before = 0;
      std::uint32_t count = 0;
      for (std::uint64_t i = first; i * to < end; ++i, ++count) {
        const std::uint64_t place = std::min((i + 1) * to, end) - start;
        const std::uint32_t parts = PartsBefore(place, from, kPixelUnit);
        weights_.push_back(parts - before);
        before = parts;
      }
      pixels_.push_back({first, count});
    }
  }

  // All rows of the source that the next row covers.
  void AddRows() {
    const std::uint64_t from = source_->height();
    const std::uint64_t to = height();
    const std::uint64_t start = next_ * from;
    const std::uint64_t end = start + from;
    std::uint32_t before = 0;
    for (std::uint64_t i = start / to; i * to < end; ++i) {
      if (i >= rows_read_) {
        ReadSource();
      }
      const std::uint64_t place = std::min((i + 1) * to, end) - start;
      const std::uint32_t parts = PartsBefore(place, from, kRowUnit);
      AddRow(parts - before, before == 0);
      before = parts;
    }
    ++next_;
  }

  void ReadSource() {
    ++rows_read_;
    if (!is_ended_) {
      is_ended_ = !source_->ReadRow(row_.data());
    } else if (!is_white_) {
      is_white_ = true;
      std::memset(row_.data(), 0xFF, row_.size());
    }
  }

  void AddRow(std::uint32_t weight, bool is_first) {
    const auto factor = static_cast<std::uint16_t>(weight);
    for (std::size_t i = 0; i < sums_.size(); i += kBlock) {
      if (is_first) {
        TakeBlock(row_.data() + i, factor, sums_.data() + i);
      } else {
        AddBlock(row_.data() + i, factor, sums_.data() + i);
      }
    }
  }

  template <std::size_t kBytes>
  void AddPixels(std::uint8_t* row) const {
    const std::uint32_t* weight = weights_.data();
    for (const Pixel& pixel : pixels_) {
      const std::uint16_t* sums = sums_.data() + kBytes * pixel.first;
      std::uint32_t totals[kBytes] = {};
      for (std::uint32_t i = 0; i < pixel.count; ++i) {
        for (std::size_t c = 0; c < kBytes; ++c) {
          totals[c] += *weight * sums[c];
        }
        ++weight;
        sums += kBytes;
      }
      for (std::size_t c = 0; c < kBytes; ++c) {
        *row++ = static_cast<std::uint8_t>((totals[c] + (1U << (kUnitBits - 1))) >> kUnitBits);
      }
    }
  }

  RowSourcePtr source_;
  std::vector<std::uint8_t> row_;  // the one that was read last, up to a whole block
  std::vector<std::uint16_t> sums_;
  std::vector<Pixel> pixels_;
  std::vector<std::uint32_t> weights_;  // of all pixels, one after the other
  std::uint64_t next_ = 0;
  std::uint64_t rows_read_ = 0;
  bool is_ended_ = false;
  bool is_white_ = false;
};

}  // namespace

RowSourcePtr ReducePicture(RowSourcePtr source, std::uint32_t width, std::uint32_t height) {
  if (width == source->width() && height == source->height()) {
    return source;
  }
  return std::make_unique<ReducedRows>(std::move(source), width, height);
}

}  // namespace TarnixTools::engines
