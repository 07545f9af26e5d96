// Colour spaces of images (ISO 32000-2, 8.6): how many components they have, and their colours as
// far as they are computed here.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_COLORSPACE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_COLORSPACE_H_

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/pictures/IccTransform.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

enum class ColorKind : std::uint8_t {
  kGray,
  kRgb,
  kCmyk,
  kLab,
  kIcc,
  kIndexed,
  kInks,  // Separation and DeviceN
};

struct ColorSpace {
  ColorKind kind = ColorKind::kGray;
  int components = 1;                       // 1 to 32
  std::shared_ptr<const IccTransform> icc;  // kIcc
  std::array<double, 4> lab_range{-100, 100, -100, 100};
  // kIndexed: red, green, blue of each index; empty when those of the base are not computed.
  std::vector<std::uint8_t> palette;

  // Whether its colours are computed here.
  bool is_computed() const {
    return kind != ColorKind::kInks && (kind != ColorKind::kIndexed || !palette.empty());
  }
};

// The device colour space of so many components.
ColorSpace DeviceSpace(int components);

// value: resolved; null counts as gray. Nothing for what is no colour space that images may have.
// Throws pdf::Error for a document that cannot be read any more.
std::optional<ColorSpace> ColorSpaceOf(pdf::Document& document, const pdf::Object& value,
                                       pdf::Arena& arena);

// Colours as sRGB, eight bits a component: `rgb` gets three for each pixel.
//   kGray, kRgb, kCmyk and kIcc only
void ToRgb(const ColorSpace& space, const std::uint8_t* components, std::uint8_t* rgb,
           std::size_t pixel_count);

// A colour of kLab.
std::array<std::uint8_t, 3> LabToRgb(double lightness, double a, double b);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_COLORSPACE_H_
