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

PixelLayout RowConverter::LayoutOf(const ColorSpace& space) {
  const bool is_gray = space.kind == ColorKind::kGray ||
                       (space.kind == ColorKind::kIndexed && IsGrayPalette(space.palette));
  return is_gray ? PixelLayout::kGray : PixelLayout::kRgb;
}

RowConverter::RowConverter(const SampleFormat& format, ColorSpace space,
                           const std::vector<double>& decode)
    : format_(format), space_(std::move(space)), layout_(LayoutOf(space_)) {
  const bool is_plain = decode.size() < 2 * static_cast<std::size_t>(format_.components);
  is_mapped_ = !is_plain || format_.bits < 8;
  BuildTables(is_plain ? std::vector<double>() : decode);
  if (format_.bits == 1 && layout_ == PixelLayout::kGray) {
    BuildGrayBits();
  }
}

void RowConverter::BuildTables(const std::vector<double>& decode) {
  const int table_bits = std::min(format_.bits, 8);
  const double most = (1 << table_bits) - 1;
  const bool is_indexed = space_.kind == ColorKind::kIndexed;
  decode_ = decode;
  if (decode_.empty() && space_.kind == ColorKind::kLab) {
    const auto& range = space_.lab_range;
    decode_ = {0, 100, range[0], range[1], range[2], range[3]};
  }
  for (std::size_t c = 0; is_mapped_ && c < static_cast<std::size_t>(format_.components); ++c) {
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
    gray[bit] = space_.kind == ColorKind::kIndexed ? *PaletteColor(value)
                                                   : static_cast<std::uint8_t>(value);
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
  for (std::size_t i = 0; i < format_.row_bytes(); ++i) {
    bits[i] = packed[i] ^ bits_to_turn_;
  }
}

void RowConverter::Convert(const std::uint8_t* packed, std::uint8_t* pixels) {
  const std::size_t width = format_.width;
  if (!gray_bits_.empty()) {
    const std::size_t whole = width / 8;
    for (std::size_t i = 0; i < whole; ++i) {
      std::memcpy(pixels + 8 * i, gray_bits_[packed[i]].data(), 8);
    }
    if (width % 8 != 0) {
      std::memcpy(pixels + 8 * whole, gray_bits_[packed[whole]].data(), width % 8);
    }
    return;
  }
  const std::uint8_t* samples = packed;
  if (format_.bits != 8) {
    samples_.resize(format_.samples_in_row());
    UnpackSamples(packed, format_.bits, samples_.size(), samples_.data());
    samples = samples_.data();
  }
  if (space_.kind == ColorKind::kLab) {
    ConvertLab(samples, pixels);
  } else if (space_.kind == ColorKind::kIndexed) {
    LookUp(Mapped(samples), pixels);
  } else if (layout_ == PixelLayout::kGray) {
    std::memcpy(pixels, Mapped(samples), width);
  } else {
    ToRgb(space_, Mapped(samples), pixels, width);
  }
}

// Components from 0 to 255, or indices.
const std::uint8_t* RowConverter::Mapped(const std::uint8_t* samples) {
  if (!is_mapped_) {
    return samples;
  }
  const auto components = static_cast<std::size_t>(format_.components);
  mapped_.resize(format_.samples_in_row());
  for (std::size_t i = 0; i < mapped_.size(); i += components) {
    for (std::size_t c = 0; c < components; ++c) {
      mapped_[i + c] = values_[c][samples[i + c]];
    }
  }
  return mapped_.data();
}

void RowConverter::LookUp(const std::uint8_t* indices, std::uint8_t* pixels) const {
  const std::size_t bytes = BytesPerPixel(layout_);
  for (std::size_t x = 0; x < format_.width; ++x) {
    std::memcpy(pixels + bytes * x, PaletteColor(indices[x]), bytes);
  }
}

// Beyond the palette it is its last colour (ISO 32000-2, 8.6.6.3).
const std::uint8_t* RowConverter::PaletteColor(std::size_t index) const {
  return space_.palette.data() + 3 * std::min(index, space_.palette.size() / 3 - 1);
}

void RowConverter::ConvertLab(const std::uint8_t* samples, std::uint8_t* pixels) const {
  const double most = (1 << std::min(format_.bits, 8)) - 1;
  const auto value = [&](std::size_t x, std::size_t c) {
    const double low = decode_[2 * c];
    return low + samples[3 * x + c] * (decode_[2 * c + 1] - low) / most;
  };
  for (std::size_t x = 0; x < format_.width; ++x) {
    const auto rgb = LabToRgb(value(x, 0), value(x, 1), value(x, 2));
    std::copy(rgb.begin(), rgb.end(), pixels + 3 * x);
  }
}

}  // namespace TarnixTools::engines
