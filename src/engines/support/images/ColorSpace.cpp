#include "engines/support/images/ColorSpace.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "engines/support/images/ImageLimits.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

// What process inks of offset printing look like on coated paper, in sRGB: the corners between
// which colours are interpolated. Index: cyan 1, magenta 2, yellow 4, black 8.
constexpr std::array<std::array<std::uint8_t, 3>, 16> kInkCorners = {{{255, 255, 255},
                                                                      {0, 174, 239},
                                                                      {236, 0, 140},
                                                                      {46, 49, 146},
                                                                      {255, 242, 0},
                                                                      {0, 166, 81},
                                                                      {237, 28, 36},
                                                                      {54, 54, 57},
                                                                      {35, 31, 32},
                                                                      {0, 15, 21},
                                                                      {32, 0, 11},
                                                                      {7, 6, 20},
                                                                      {28, 26, 0},
                                                                      {0, 19, 9},
                                                                      {34, 2, 0},
                                                                      {0, 0, 0}}};

void CmykToRgb(const std::uint8_t* cmyk, std::uint8_t* rgb) {
  // Interpolated one ink after the other, in 1/255 steps.
  std::array<std::array<std::uint32_t, 3>, 16> corners{};
  for (std::size_t i = 0; i < 16; ++i) {
    for (std::size_t c = 0; c < 3; ++c) {
      corners[i][c] = kInkCorners[i][c] * 256U;
    }
  }
  std::size_t count = 16;
  for (std::size_t ink = 4; ink-- > 0;) {
    count /= 2;
    const std::uint32_t amount = cmyk[ink];
    for (std::size_t i = 0; i < count; ++i) {
      for (std::size_t c = 0; c < 3; ++c) {
        corners[i][c] =
            (corners[i][c] * (255 - amount) + corners[i + count][c] * amount + 127) / 255;
      }
    }
  }
  for (std::size_t c = 0; c < 3; ++c) {
    rgb[c] = static_cast<std::uint8_t>(std::min<std::uint32_t>(255, (corners[0][c] + 128) / 256));
  }
}

double LabInverse(double t) {
  return t > 6.0 / 29 ? t * t * t : 108.0 / 841 * (t - 4.0 / 29);
}

std::uint8_t ToSrgbByte(double linear) {
  const double clipped = std::clamp(linear, 0.0, 1.0);
  const double value =
      clipped <= 0.0031308 ? 12.92 * clipped : 1.055 * std::pow(clipped, 1 / 2.4) - 0.055;
  return static_cast<std::uint8_t>(std::lround(value * 255));
}

class Reader {
 public:
  Reader(pdf::Document& document, pdf::Arena& arena) : document_(&document), arena_(&arena) {}

  std::optional<ColorSpace> Read(const Object& value, int steps) {
    if (steps > limits::kMaxColorSpaceSteps) {
      return std::nullopt;
    }
    if (value.IsNull()) {
      return DeviceSpace(1);
    }
    const std::string_view name = value.IsName() ? value.Text() : Item(value, 0).Text();
    if (name == "DeviceGray" || name == "CalGray" || name == "G") {
      return DeviceSpace(1);
    }
    if (name == "DeviceRGB" || name == "CalRGB" || name == "RGB") {
      return DeviceSpace(3);
    }
    if (name == "DeviceCMYK" || name == "CMYK") {
      return DeviceSpace(4);
    }
    if (name == "ICCBased") {
      return ReadIcc(value, steps);
    }
    if (name == "Lab") {
      return ReadLab(value);
    }
    if (name == "Separation") {
      return InkSpace(1);
    }
    if (name == "DeviceN") {
      return InkSpace(Item(value, 1).Items().size());
    }
    return name == "Indexed" || name == "I" ? ReadIndexed(value, steps) : std::nullopt;
  }

 private:
  Object Resolve(const Object& value) { return document_->Resolve(value, *arena_); }

  Object Item(const Object& array, std::size_t index) {
    return index < array.Items().size() ? Resolve(array.Items()[index]) : Object();
  }

  static std::optional<ColorSpace> InkSpace(std::size_t inks) {
    if (inks < 1 || inks > limits::kMaxInks) {
      return std::nullopt;
    }
    ColorSpace space;
    space.kind = ColorKind::kInks;
    space.components = static_cast<int>(inks);
    return space;
  }

  std::optional<ColorSpace> ReadIcc(const Object& value, int steps) {
    const std::uint32_t number =
        value.Items().size() > 1 ? value.Items()[1].AsReference().number : 0;
    const Object dictionary = Item(value, 1);
    const std::int64_t components = Resolve(dictionary.Get("N")).IntegerOr(0);
    const Object alternate = Resolve(dictionary.Get("Alternate"));
    if (components != 1 && components != 3 && components != 4) {
      return alternate.IsNull() ? std::nullopt : Read(alternate, steps + 1);
    }
    ColorSpace space = DeviceSpace(static_cast<int>(components));
    const std::string profile = components == 1 ? "" : ProfileOf(number);
    if (!profile.empty() && !IccTransform::IsSrgb(profile)) {
      space.icc = IccTransform::Make(profile, space.components);
      space.kind = space.icc != nullptr ? ColorKind::kIcc : space.kind;
    }
    return space;
  }

  std::string ProfileOf(std::uint32_t number) {
    std::optional<pdf::Decoded> decoded =
        document_->TryDecodeStream(number, limits::kMaxProfileBytes);
    return decoded ? std::move(decoded->data) : std::string();
  }

  std::optional<ColorSpace> ReadLab(const Object& value) {
    ColorSpace space;
    space.kind = ColorKind::kLab;
    space.components = 3;
    const Object dictionary = Item(value, 1);
    ReadNumbers(Resolve(dictionary.Get("Range")), space.lab_range);
    return space;
  }

  template <std::size_t kCount>
  void ReadNumbers(const Object& array, std::array<double, kCount>& numbers) {
    if (array.Items().size() >= kCount) {
      for (std::size_t i = 0; i < kCount; ++i) {
        numbers[i] = Item(array, i).NumberOr(numbers[i]);
      }
    }
  }

  std::optional<ColorSpace> ReadIndexed(const Object& value, int steps) {
    const std::optional<ColorSpace> base = Read(Item(value, 1), steps + 1);
    if (!base || base->kind == ColorKind::kIndexed) {
      return std::nullopt;
    }
    ColorSpace space;
    space.kind = ColorKind::kIndexed;
    if (!base->is_computed()) {
      return space;
    }
    const auto count =
        static_cast<std::size_t>(std::clamp<std::int64_t>(Item(value, 2).IntegerOr(0), 0, 255) + 1);
    std::string table = TableOf(value);
    table.resize(count * static_cast<std::size_t>(base->components));
    space.palette.resize(count * 3);
    const auto* entries = reinterpret_cast<const std::uint8_t*>(table.data());
    if (base->kind == ColorKind::kLab) {
      FillFromLab(*base, entries, space.palette);
    } else {
      ToRgb(*base, entries, space.palette.data(), count);
    }
    return space;
  }

  static void FillFromLab(const ColorSpace& base, const std::uint8_t* entries,
                          std::vector<std::uint8_t>& palette) {
    const auto& range = base.lab_range;
    for (std::size_t i = 0; i < palette.size(); i += 3) {
      const auto rgb =
          LabToRgb(entries[i] / 2.55, range[0] + entries[i + 1] * (range[1] - range[0]) / 255,
                   range[2] + entries[i + 2] * (range[3] - range[2]) / 255);
      std::copy(rgb.begin(), rgb.end(), palette.begin() + static_cast<std::ptrdiff_t>(i));
    }
  }

  std::string TableOf(const Object& value) {
    const Object table = Item(value, 3);
    if (table.IsString()) {
      return std::string(table.Text());
    }
    const std::uint32_t number =
        value.Items().size() > 3 ? value.Items()[3].AsReference().number : 0;
    std::string bytes = number != 0 ? ProfileOf(number) : "";
    bytes.resize(std::min(bytes.size(), limits::kMaxPaletteBytes));
    return bytes;
  }

  pdf::Document* document_;
  pdf::Arena* arena_;
};

}  // namespace

ColorSpace DeviceSpace(int components) {
  ColorSpace space;
  space.components = components;
  space.kind = components == 4   ? ColorKind::kCmyk
               : components == 3 ? ColorKind::kRgb
                                 : ColorKind::kGray;
  return space;
}

std::optional<ColorSpace> ColorSpaceOf(pdf::Document& document, const Object& value,
                                       pdf::Arena& arena) {
  return Reader(document, arena).Read(value, 0);
}

void ToRgb(const ColorSpace& space, const std::uint8_t* components, std::uint8_t* rgb,
           std::size_t pixel_count) {
  switch (space.kind) {
    case ColorKind::kRgb:
      std::memcpy(rgb, components, pixel_count * 3);
      break;
    case ColorKind::kIcc:
      space.icc->Convert(components, rgb, pixel_count);
      break;
    case ColorKind::kCmyk: {
      for (std::size_t i = 0; i < pixel_count; ++i) {
        if (i > 0 && std::memcmp(components + 4 * i, components + 4 * (i - 1), 4) == 0) {
          std::memcpy(rgb + 3 * i, rgb + 3 * (i - 1), 3);
        } else {
          CmykToRgb(components + 4 * i, rgb + 3 * i);
        }
      }
      break;
    }
    default:
      for (std::size_t i = 0; i < pixel_count; ++i) {
        std::memset(rgb + 3 * i, components[i], 3);
      }
  }
}

std::array<std::uint8_t, 3> LabToRgb(double lightness, double a, double b) {
  const double m = (lightness + 16) / 116;
  // Relative to the white point, which becomes that of sRGB: D65.
  const double x = 0.95047 * LabInverse(m + a / 500);
  const double y = LabInverse(m);
  const double z = 1.08883 * LabInverse(m - b / 200);
  return {ToSrgbByte(3.2406 * x - 1.5372 * y - 0.4986 * z),
          ToSrgbByte(-0.9689 * x + 1.8758 * y + 0.0415 * z),
          ToSrgbByte(0.0557 * x - 0.2040 * y + 1.0570 * z)};
}

}  // namespace TarnixTools::engines
