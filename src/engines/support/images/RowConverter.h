// Samples as the PDF standard packs them (ISO 32000-2, 8.9.5.2) as rows of pixels.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_ROWCONVERTER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_ROWCONVERTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/SampleRows.h"
#include "engines/support/pictures/PixelLayout.h"

namespace TarnixTools::engines {

class RowConverter {
 public:
  //   space  - of the samples, one that is computed
  //   decode - /Decode; what is too short for the components counts as none
  RowConverter(const SampleFormat& format, ColorSpace space, const std::vector<double>& decode);

  // kGray for pictures in one grey, kRgb for others.
  static PixelLayout LayoutOf(const ColorSpace& space);

  // A whole row of samples, and as many pixels as the format has.
  void Convert(const std::uint8_t* packed, std::uint8_t* pixels);

  // Whether the picture is in black and white, a bit for each pixel; then this gives 1 for white.
  bool is_bilevel() const { return is_bilevel_; }

  void ConvertToBits(const std::uint8_t* packed, std::uint8_t* bits) const;

 private:
  void BuildTables(const std::vector<double>& decode);
  void BuildGrayBits();
  const std::uint8_t* Mapped(const std::uint8_t* samples);
  void LookUp(const std::uint8_t* indices, std::uint8_t* pixels) const;
  const std::uint8_t* PaletteColor(std::size_t index) const;
  void ConvertLab(const std::uint8_t* samples, std::uint8_t* pixels) const;

  SampleFormat format_;
  ColorSpace space_;
  std::vector<double> decode_;
  PixelLayout layout_ = PixelLayout::kRgb;
  bool is_mapped_ = true;  // samples are not yet what values_ says
  bool is_bilevel_ = false;
  std::uint8_t bits_to_turn_ = 0;  // of every byte, where 0 is white
  // By component and sample (its upper eight bits): the component's value from 0 to 255, or the
  // index of a palette.
  std::array<std::array<std::uint8_t, 256>, 4> values_{};
  // By packed byte: eight pixels of a picture with one bit a pixel.
  std::vector<std::array<std::uint8_t, 8>> gray_bits_;
  std::vector<std::uint8_t> samples_;
  std::vector<std::uint8_t> mapped_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_ROWCONVERTER_H_
