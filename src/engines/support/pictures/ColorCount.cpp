#include "engines/support/pictures/ColorCount.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kMaxPalette = 256;

bool CanBeReduced(const Raster& raster, PictureSpace space) {
  return raster.color.bits() == 8 && raster.space == space && raster.color_key.empty();
}

// Packs one byte for each pixel, of which the value is what `value_of` says, into `bits` bits.
Plane Pack(const Plane& plane, int bits, const std::array<std::uint8_t, 256>& value_of) {
  Plane packed(plane.width(), plane.height(), 1, bits);
  const auto width = static_cast<unsigned>(bits);
  const unsigned mask = (1U << width) - 1;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* from = plane.row(y);
    unsigned char* to = packed.row(y);
    unsigned byte = 0;
    unsigned filled = 0;
    for (std::uint32_t x = 0; x < plane.width(); ++x) {
      byte = byte << width | (value_of[from[x]] & mask);
      filled += width;
      if (filled == 8) {
        *to++ = static_cast<unsigned char>(byte);
        byte = filled = 0;
      }
    }
    if (filled > 0) {
      *to = static_cast<unsigned char>(byte << (8 - filled));
    }
  }
  return packed;
}

// A table for indices that stay what they are. Those too large for the palette are wrong anyway.
std::array<std::uint8_t, 256> Same() {
  std::array<std::uint8_t, 256> same{};
  for (unsigned value = 0; value < same.size(); ++value) {
    same[value] = static_cast<std::uint8_t>(value);
  }
  return same;
}

int BitsFor(std::size_t colors) {
  return colors <= 2 ? 1 : colors <= 4 ? 2 : colors <= 16 ? 4 : 8;
}

std::array<bool, 256> UsedValues(const Plane& plane) {
  std::array<bool, 256> used{};
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* row = plane.row(y);
    for (std::uint32_t x = 0; x < plane.width(); ++x) {
      used[row[x]] = true;
    }
  }
  return used;
}

bool AllMultiplesOf(const std::array<bool, 256>& used, unsigned factor) {
  for (unsigned value = 0; value < used.size(); ++value) {
    if (used[value] && value % factor != 0) {
      return false;
    }
  }
  return true;
}

bool ReduceToLevels(Raster& raster, const std::array<bool, 256>& used) {
  for (const auto& [bits, factor] : {std::pair{1, 255U}, {2, 85U}, {4, 17U}}) {
    if (AllMultiplesOf(used, factor)) {
      std::array<std::uint8_t, 256> value_of{};
      for (unsigned value = 0; value < value_of.size(); ++value) {
        value_of[value] = static_cast<std::uint8_t>(value / factor);
      }
      raster.color = Pack(raster.color, bits, value_of);
      return true;
    }
  }
  return false;
}

void ReduceGrayToPalette(Raster& raster, const std::array<bool, 256>& used) {
  std::array<std::uint8_t, 256> value_of{};
  std::string palette;
  for (unsigned value = 0; value < used.size(); ++value) {
    if (used[value]) {
      value_of[value] = static_cast<std::uint8_t>(palette.size() / 3);
      palette.append(3, static_cast<char>(raster.is_inverted ? 255 - value : value));
    }
  }
  const std::size_t colors = palette.size() / 3;
  if (colors > 16 || !raster.profile.empty()) {
    return;
  }
  raster.color = Pack(raster.color, BitsFor(colors), value_of);
  raster.palette = std::move(palette);
  raster.space = PictureSpace::kIndexed;
  raster.is_inverted = false;
}

bool HasNoColor(const Plane& plane) {
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* row = plane.row(y);
    for (std::uint32_t x = 0; x < plane.width(); ++x, row += 3) {
      if (row[0] != row[1] || row[1] != row[2]) {
        return false;
      }
    }
  }
  return true;
}

Plane GrayOf(const Plane& plane) {
  Plane gray(plane.width(), plane.height(), 1, 8);
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* from = plane.row(y);
    unsigned char* to = gray.row(y);
    for (std::uint32_t x = 0; x < plane.width(); ++x) {
      to[x] = from[std::size_t{3} * x];
    }
  }
  return gray;
}

// Numbers colours in the order in which they come.
class ColorTable {
 public:
  // Nothing once there are more than a palette holds.
  std::optional<std::uint8_t> IndexOf(const unsigned char* rgb) {
    const std::uint32_t color = rgb[0] | rgb[1] << 8 | rgb[2] << 16;
    if (color == last_ && !palette_.empty()) {
      return last_index_;
    }
    std::size_t slot = color * 2654435761U >> 22;
    while (slots_[slot] != 0 && colors_[slot] != color) {
      slot = (slot + 1) % kSlots;
    }
    if (slots_[slot] == 0) {
      if (palette_.size() == 3 * kMaxPalette) {
        return std::nullopt;
      }
      palette_.append(reinterpret_cast<const char*>(rgb), 3);
      colors_[slot] = color;
      slots_[slot] = static_cast<std::uint16_t>(palette_.size() / 3);
    }
    last_ = color;
    last_index_ = static_cast<std::uint8_t>(slots_[slot] - 1);
    return last_index_;
  }

  std::string& palette() { return palette_; }

 private:
  static constexpr std::size_t kSlots = 1024;

  std::array<std::uint32_t, kSlots> colors_{};
  std::array<std::uint16_t, kSlots> slots_{};  // index + 1
  std::string palette_;
  std::uint32_t last_ = 0;
  std::uint8_t last_index_ = 0;
};

bool CountsUpToPalette(const Plane& plane) {
  ColorTable table;
  for (std::uint32_t y = 0; y < plane.height(); ++y) {
    const unsigned char* row = plane.row(y);
    for (std::uint32_t x = 0; x < plane.width(); ++x, row += 3) {
      if (!table.IndexOf(row)) {
        return false;
      }
    }
  }
  return true;
}

void ReduceToPalette(Raster& raster) {
  ColorTable table;
  Plane indices(raster.color.width(), raster.color.height(), 1, 8);
  for (std::uint32_t y = 0; y < indices.height(); ++y) {
    const unsigned char* from = raster.color.row(y);
    unsigned char* to = indices.row(y);
    for (std::uint32_t x = 0; x < indices.width(); ++x, from += 3) {
      to[x] = table.IndexOf(from).value_or(0);
    }
  }
  raster.palette = std::move(table.palette());
  raster.space = PictureSpace::kIndexed;
  const int bits = BitsFor(raster.palette.size() / 3);
  raster.color = bits == 8 ? std::move(indices) : Pack(indices, bits, Same());
}

// Whether the indices are, or have been made, what a picture without palette has: values of gray in
// equal steps, from black or from white on, or any gray of 8 bits.
bool PaletteIsGray(Raster& raster) {
  std::array<std::uint8_t, 256> value_of{};
  const std::size_t colors = raster.palette.size() / 3;
  bool ascends = true;
  bool descends = true;
  for (std::size_t i = 0; i < colors; ++i) {
    const auto* rgb = reinterpret_cast<const unsigned char*>(raster.palette.data()) + 3 * i;
    if (rgb[0] != rgb[1] || rgb[1] != rgb[2]) {
      return false;
    }
    value_of[i] = rgb[0];
    ascends &= rgb[0] == i * 255 / (colors - 1);
    descends &= rgb[0] == 255 - i * 255 / (colors - 1);
  }
  if (descends && !ascends) {
    raster.is_inverted = true;
  } else if (!ascends && colors == kMaxPalette) {
    raster.color = Pack(raster.color, 8, value_of);
    ascends = true;
  }
  return ascends || descends;
}

}  // namespace

void ApplyPalette(Raster& raster, Plane&& indices, const std::string& palette, int transparent) {
  raster.palette = palette;
  raster.palette.resize(std::min<std::size_t>(palette.size() / 3, kMaxPalette) * 3);
  const int bits = BitsFor(raster.palette.size() / 3);
  raster.palette.resize((std::size_t{3} << bits), '\0');
  raster.color = indices.bits() == 8 && bits < 8 ? Pack(indices, bits, Same()) : std::move(indices);
  if (transparent < 0 && raster.color.bits() == bits && PaletteIsGray(raster)) {
    raster.palette.clear();
    raster.space = PictureSpace::kGray;
    return;
  }
  raster.space = PictureSpace::kIndexed;
  if (transparent >= 0) {
    raster.color_key = std::to_string(transparent) + ' ' + std::to_string(transparent);
  }
}

void ReduceGray(Raster& raster) {
  if (CanBeReduced(raster, PictureSpace::kGray)) {
    ReduceToLevels(raster, UsedValues(raster.color));
  }
}

void ReduceColors(Raster& raster) {
  if (CanBeReduced(raster, PictureSpace::kRgb)) {
    if (raster.profile.empty() && HasNoColor(raster.color)) {
      raster.color = GrayOf(raster.color);
      raster.space = PictureSpace::kGray;
    } else if (CountsUpToPalette(raster.color)) {
      ReduceToPalette(raster);
    }
  }
  if (CanBeReduced(raster, PictureSpace::kGray)) {
    const std::array<bool, 256> used = UsedValues(raster.color);
    if (!ReduceToLevels(raster, used)) {
      ReduceGrayToPalette(raster, used);
    }
  }
}

}  // namespace TarnixTools::engines
