#include "engines/support/images/RowConverter.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

namespace TarnixTools::engines {
namespace {

bool IsGrayPalette(const std::vector<std::uint8_t>& palette) {
  for (std::size_t i = 0; i + 2 < palette.size(); i += 3) {
    if (palette[i] != palette[i + 1] || palette[i] != palette[i + 2]) {
      return false;
    }
  }
  return true;
}

std::uint8_t ToByte(double value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

}  // namespace

RowConverter::RowConverter(ColorSpace space, const ImageFacts& facts, int bits, std::uint32_t width)
    : space_(std::move(space)), color_key_(facts.color_key), bits_(bits), width_(width) {
  const auto components = static_cast<std::size_t>(space_.components);
  const bool is_gray = space_.kind == ColorKind::kGray ||
                       (space_.kind == ColorKind::kIndexed && IsGrayPalette(space_.palette));
  layout_ = is_gray ? PixelLayout::kGray : PixelLayout::kRgb;
  packed_bytes_ =
      (static_cast<std::size_t>(width) * components * static_cast<std::size_t>(bits) + 7) / 8;
  if (color_key_.size() < 2 * components) {
    color_key_.clear();
  }
  has_plain_decode_ = facts.decode.size() < 2 * components;
  BuildTables(has_plain_decode_ ? std::vector<double>() : facts.decode);
  if (bits_ == 1 && is_gray && color_key_.empty()) {
    BuildGrayBits();
  }
}

void RowConverter::BuildTables(const std::vector<double>& decode) {
  const int table_bits = std::min(bits_, 8);
  const double most = (1 << table_bits) - 1;
  const bool is_indexed = space_.kind == ColorKind::kIndexed;
  decode_ = decode;
  if (decode_.empty() && space_.kind == ColorKind::kLab) {
    const auto& range = space_.lab_range;
    decode_ = {0, 100, range[0], range[1], range[2], range[3]};
  }
  for (std::size_t c = 0; c < static_cast<std::size_t>(space_.components); ++c) {
    const double low = decode.empty() ? 0 : decode[2 * c];
    const double high = decode.empty() ? (is_indexed ? most : 1) : decode[2 * c + 1];
    for (int sample = 0; sample <= static_cast<int>(most); ++sample) {
      const double value = low + sample * (high - low) / most;
      values_[c][static_cast<std::size_t>(sample)] = ToByte(is_indexed ? value : value * 255);
    }
  }
}

void RowConverter::BuildGrayBits() {
  std::array<std::uint8_t, 2> gray{};
  for (std::size_t bit = 0; bit < 2; ++bit) {
    const std::size_t value = values_[0][bit];
    if (space_.kind == ColorKind::kIndexed) {
      gray[bit] = 3 * value < space_.palette.size() ? space_.palette[3 * value] : std::uint8_t{0};
    } else {
      gray[bit] = static_cast<std::uint8_t>(value);
    }
  }
  is_bilevel_ = (gray[0] == 0 && gray[1] == 255) || (gray[0] == 255 && gray[1] == 0);
  bits_to_turn_ = gray[0] == 255 ? 0xFF : 0;
  gray_bits_.resize(256);
  for (std::size_t byte = 0; byte < 256; ++byte) {
    for (std::size_t i = 0; i < 8; ++i) {
      gray_bits_[byte][i] = gray[(byte >> (7 - i)) & 1U];
    }
  }
}

void RowConverter::ConvertToBits(const std::uint8_t* packed, std::uint8_t* bits) const {
  for (std::size_t i = 0; i < packed_bytes_; ++i) {
    bits[i] = packed[i] ^ bits_to_turn_;
  }
}

bool RowConverter::IsCopy() const {
  return bits_ == 8 && has_plain_decode_ && color_key_.empty() &&
         (space_.kind == ColorKind::kGray || space_.kind == ColorKind::kRgb);
}

void RowConverter::Convert(const std::uint8_t* packed, std::uint8_t* pixels) {
  if (IsCopy()) {
    std::memcpy(pixels, packed, packed_bytes_);
    return;
  }
  if (!gray_bits_.empty()) {
    const std::size_t whole = width_ / 8;
    for (std::size_t i = 0; i < whole; ++i) {
      std::memcpy(pixels + 8 * i, gray_bits_[packed[i]].data(), 8);
    }
    if (width_ % 8 != 0) {
      std::memcpy(pixels + 8 * whole, gray_bits_[packed[whole]].data(), width_ % 8);
    }
    return;
  }
  Unpack(packed);
  ConvertUnpacked(pixels);
  if (!color_key_.empty()) {
    WhitenKeyed(pixels);
  }
}

void RowConverter::Unpack(const std::uint8_t* packed) {
  const std::size_t count =
      static_cast<std::size_t>(width_) * static_cast<std::size_t>(space_.components);
  samples_.resize(count);
  if (bits_ == 8) {
    std::memcpy(samples_.data(), packed, count);
  } else if (bits_ == 16) {
    for (std::size_t i = 0; i < count; ++i) {
      samples_[i] = packed[2 * i];
    }
  } else {
    const auto bits = static_cast<std::size_t>(bits_);
    const auto mask = static_cast<std::uint8_t>((1U << bits) - 1);
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t at = i * bits;
      samples_[i] = static_cast<std::uint8_t>((packed[at / 8] >> (8 - bits - at % 8)) & mask);
    }
  }
}

void RowConverter::ConvertUnpacked(std::uint8_t* pixels) {
  const auto components = static_cast<std::size_t>(space_.components);
  if (space_.kind == ColorKind::kLab) {
    ConvertLab(pixels);
    return;
  }
  mapped_.resize(samples_.size());
  for (std::size_t i = 0; i < samples_.size(); i += components) {
    for (std::size_t c = 0; c < components; ++c) {
      mapped_[i + c] = values_[c][samples_[i + c]];
    }
  }
  if (space_.kind != ColorKind::kIndexed) {
    if (layout_ == PixelLayout::kGray) {
      std::memcpy(pixels, mapped_.data(), width_);
    } else {
      ToRgb(space_, mapped_.data(), pixels, width_);
    }
    return;
  }
  const std::size_t bytes = BytesPerPixel(layout_);
  for (std::size_t x = 0; x < width_; ++x) {
    const std::size_t at = 3 * static_cast<std::size_t>(mapped_[x]);
    if (at < space_.palette.size()) {
      std::memcpy(pixels + bytes * x, space_.palette.data() + at, bytes);
    } else {
      std::memset(pixels + bytes * x, 0, bytes);
    }
  }
}

void RowConverter::ConvertLab(std::uint8_t* pixels) const {
  const double most = (1 << std::min(bits_, 8)) - 1;
  const auto value = [&](std::size_t x, std::size_t c) {
    const double low = decode_[2 * c];
    return low + samples_[3 * x + c] * (decode_[2 * c + 1] - low) / most;
  };
  for (std::size_t x = 0; x < width_; ++x) {
    const auto rgb = LabToRgb(value(x, 0), value(x, 1), value(x, 2));
    std::copy(rgb.begin(), rgb.end(), pixels + 3 * x);
  }
}

// Pixels with all components in the range of the key are not painted (8.9.6.4).
void RowConverter::WhitenKeyed(std::uint8_t* pixels) const {
  const auto components = static_cast<std::size_t>(space_.components);
  const int shift = bits_ == 16 ? 8 : 0;
  const std::size_t bytes = BytesPerPixel(layout_);
  for (std::size_t x = 0; x < width_; ++x) {
    bool is_keyed = true;
    for (std::size_t c = 0; c < components && is_keyed; ++c) {
      const std::int64_t sample = samples_[x * components + c];
      is_keyed = sample >= color_key_[2 * c] >> shift && sample <= color_key_[2 * c + 1] >> shift;
    }
    if (is_keyed) {
      std::memset(pixels + bytes * x, 0xFF, bytes);
    }
  }
}

}  // namespace TarnixTools::engines
