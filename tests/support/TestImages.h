// Small image files, made byte by byte.
#ifndef TARNIX_TESTS_SUPPORT_TESTIMAGES_H_
#define TARNIX_TESTS_SUPPORT_TESTIMAGES_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::testing {

std::string Big16(std::uint32_t value);
std::string Big32(std::uint32_t value);
std::string Little16(std::uint32_t value);
std::string Little32(std::uint32_t value);

// A marker segment of a JPEG file, its length put in.
std::string JpegSegment(std::uint8_t marker, std::string_view data);

// A JPEG file of 16 x 8 pixels, all of one gray, or of RGB or CMYK; `segments` follow the start
// marker. Decoders read it.
std::string TestJpeg(int components = 1, std::string_view segments = {});

// An Exif block (without "Exif\0\0") with orientation and resolution; dpi 0: none.
std::string TestExif(int orientation, int dpi = 0);
std::string ExifJpegSegment(int orientation, int dpi = 0);

struct TestPng {
  std::uint32_t width = 4;
  std::uint32_t height = 4;
  int bits = 8;
  int color_type = 2;
  bool interlaced = false;
  std::string rows;               // filtered rows as they are deflated
  std::string chunks;             // between IHDR and IDAT
  std::size_t data_chunk = 8192;  // bytes of an IDAT chunk

  std::string Bytes() const;
};

std::string PngChunk(std::string_view type, std::string_view data);

// The smallest thing that looks like a profile of that colour space ("RGB ").
std::string TestProfile(std::string_view space);

// A profile with the primaries of sRGB and a power for a tone curve.
//   is_swapped - its red is blue, and its blue is red
std::string TestRgbProfile(double gamma, bool is_swapped = false);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TESTIMAGES_H_
