// Samples as the PDF standard packs them (ISO 32000-2, 8.9.5.2) as rows of pixels.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_ROWCONVERTER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_ROWCONVERTER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/PixelLayout.h"

namespace TarnixTools::engines {

class RowConverter {
 public:
  // bits: of a component, 1, 2, 4, 8 or 16. Of facts, /Decode and the colour key are used.
  RowConverter(ColorSpace space, const ImageFacts& facts, int bits, std::uint32_t width);

  // kGray for pictures in one grey, kRgb for others.
  PixelLayout layout() const { return layout_; }

  // Bytes of a row of samples.
  std::size_t packed_bytes() const { return packed_bytes_; }

  void Convert(const std::uint8_t* packed, std::uint8_t* pixels);

  // Whether the picture is in black and white, a bit for each pixel; then this gives 1 for white.
  bool is_bilevel() const { return is_bilevel_; }

  void ConvertToBits(const std::uint8_t* packed, std::uint8_t* bits) const;

 private:
  void BuildTables(const std::vector<double>& decode);
  void BuildGrayBits();
  bool IsCopy() const;
  void Unpack(const std::uint8_t* packed);
  void ConvertUnpacked(std::uint8_t* pixels);
  void ConvertLab(std::uint8_t* pixels) const;
  void WhitenKeyed(std::uint8_t* pixels) const;

  ColorSpace space_;
  std::vector<double> decode_;
  std::vector<std::int64_t> color_key_;
  int bits_;
  std::uint32_t width_;
  PixelLayout layout_ = PixelLayout::kRgb;
  std::size_t packed_bytes_ = 0;
  bool has_plain_decode_ = false;
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
