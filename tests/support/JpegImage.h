// JPEG files as tests see them.
//
//   const JpegImage image = ReadJpeg(path);
//   EXPECT_TRUE(image.IsNear(10, 10, {255, 0, 0}));
#ifndef TARNIX_TESTS_SUPPORT_JPEG_IMAGE_H_
#define TARNIX_TESTS_SUPPORT_JPEG_IMAGE_H_

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace TarnixTools::testing {

using Rgb = std::array<int, 3>;

struct JpegImage {
  int width = 0;  // 0 when the file cannot be read
  int height = 0;
  int components = 0;
  int density_x = 0;
  int density_unit = 0;  // 1: per inch
  bool is_subsampled = false;
  std::vector<std::uint8_t> pixels;  // red, green, blue

  Rgb At(int x, int y) const;

  // Whether the pixel has the colour, but for a little.
  bool IsNear(int x, int y, const Rgb& color, int tolerance = 6) const;

  // The smallest rectangle around all pixels that are not nearly white: left, top, right and
  // bottom, the last two beyond it.
  std::array<int, 4> Ink() const;
};

JpegImage ReadJpeg(const std::string& path);
JpegImage DecodeJpeg(const std::string& bytes);

// A file of one colour, or of two halves side by side. components: 1, 3 or 4 (stored as they are).
std::string MakeJpeg(int width, int height, const std::vector<int>& color,
                     const std::vector<int>& right_half = {});

// A file of samples, a byte each, with 1, 3 or 4 components, colours at half the resolution. Of four
// it is CMYK as it is given, with the marker that says so; as programs mostly have it, 255 is no ink.
std::string EncodeJpeg(int width, int height, int components, const std::string& samples,
                       int quality);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_JPEG_IMAGE_H_
