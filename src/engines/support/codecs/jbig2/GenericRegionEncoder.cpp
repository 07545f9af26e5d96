#include "engines/support/codecs/jbig2/GenericRegionEncoder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <utility>

namespace TarnixTools::engines::jbig2 {
namespace {

// Rows that are kept, in turn: a power of two, and more than contexts look back.
constexpr std::int64_t kKeptRows = 32;
static_assert(kMaxAdaptiveDistance < kKeptRows);

// Bytes of zeros on both sides of a kept row: what lies outside the region is 0, and windows reach
// beyond it.
constexpr std::size_t kMargin = 24;

// Pixels that are coded from one set of windows, and those that windows have before the first.
constexpr unsigned kPixelsAtOnce = 32;
constexpr int kPlace = 16;

// 64 pixels from this one on, 57 of them at least.
std::uint64_t WindowFrom(const std::uint8_t* row, std::int64_t first) {
  return LoadBig(row + (first >> 3)) << (first & 7);
}

}  // namespace

GenericRegionEncoder::GenericRegionEncoder(const BitPicture& picture, TemplatePixel first_adaptive)
    : picture_(picture),
      first_adaptive_(first_adaptive),
      row_bytes_((std::size_t{picture.width} + 7) / 8),
      kept_bytes_(row_bytes_ + 2 * kMargin),
      rows_(kept_bytes_ * kKeptRows),
      contexts_(GenericContexts()) {}

std::uint8_t* GenericRegionEncoder::Row(std::int64_t y) {
  return rows_.data() + static_cast<std::size_t>(y & (kKeptRows - 1)) * kept_bytes_ + kMargin;
}

void GenericRegionEncoder::TakeRow(std::uint32_t y) {
  const std::uint8_t* bits = picture_.row(y);
  std::uint8_t* row = Row(y);
  const auto inverse = static_cast<std::uint8_t>(picture_.black == 0 ? 0xFF : 0);
  for (std::size_t i = 0; i < row_bytes_; ++i) {
    row[i] = bits[i] ^ inverse;
  }
  const unsigned bits_behind = static_cast<unsigned>(row_bytes_ * 8 - picture_.width);
  row[row_bytes_ - 1] &= static_cast<std::uint8_t>(0xFFU << bits_behind);
}

void GenericRegionEncoder::EncodeRows() {
  bool was_typical = false;
  for (std::uint32_t y = 0; y < picture_.height; ++y) {
    TakeRow(y);
    const bool is_typical = std::memcmp(Row(y), Row(std::int64_t{y} - 1), row_bytes_) == 0;
    encoder_.Encode(contexts_[kTypicalContexts[0]], is_typical != was_typical ? 1 : 0);
    was_typical = is_typical;
    if (!is_typical) {
      EncodeRow(y);
    }
  }
}

void GenericRegionEncoder::EncodeRow(std::int64_t y) {
  const std::uint8_t* second_above = Row(y - 2);
  const std::uint8_t* above = Row(y - 1);
  const std::uint8_t* current = Row(y);
  const std::uint8_t* adaptive = Row(y + first_adaptive_.y);
  for (std::int64_t x = 0; x < picture_.width; x += kPixelsAtOnce) {
    const std::int64_t first = x - kPlace;
    EncodePixels({.second_above = WindowFrom(second_above, first),
                  .above = WindowFrom(above, first),
                  .current = WindowFrom(current, first),
                  .adaptive = WindowFrom(adaptive, first + first_adaptive_.x)},
                 static_cast<unsigned>(std::min<std::int64_t>(kPixelsAtOnce, picture_.width - x)));
  }
  encoder_.EncodeZeros(contexts_[0], std::exchange(zeros_, 0));
}

void GenericRegionEncoder::EncodePixels(const Windows& windows, unsigned count) {
  const std::uint64_t a = windows.second_above;
  const std::uint64_t b = windows.above;
  const std::uint64_t c = windows.current;
  // A bit for each pixel that is 1 or has a 1 in its context: each row of the template moved onto the
  // pixel, a step for each place that it has there.
  const std::uint64_t busy = (a << 2U | a << 1U | a | a >> 1U | a >> 2U |            //
                              b << 2U | b << 1U | b | b >> 1U | b >> 2U | b >> 3U |  //
                              c | c >> 1U | c >> 2U | c >> 3U | c >> 4U | windows.adaptive)
                             << kPlace;
  for (unsigned i = 0; i < count; ++i) {
    const std::uint64_t rest = busy << i;
    const unsigned zeros = std::min(static_cast<unsigned>(std::countl_zero(rest)), count - i);
    zeros_ += zeros;
    i += zeros;
    if (i < count) {
      EncodePixel(windows, i);
    }
  }
}

void GenericRegionEncoder::EncodePixel(const Windows& windows, unsigned index) {
  if (zeros_ > 0) {
    encoder_.EncodeZeros(contexts_[0], std::exchange(zeros_, 0));
  }
  const unsigned shift = 63 - kPlace - index;  // of the pixel itself
  const std::uint64_t context = (windows.second_above >> (shift - 2) & 0x1FU) << 11U |
                                (windows.above >> (shift - 2) & 0x3FU) << 5U |
                                (windows.adaptive >> shift & 1U) << 4U |
                                (windows.current >> (shift + 1) & 0xFU);
  encoder_.Encode(contexts_[context], static_cast<int>(windows.current >> shift & 1U));
}

std::string GenericRegionEncoder::Finish() {
  return encoder_.Finish();
}

}  // namespace TarnixTools::engines::jbig2
