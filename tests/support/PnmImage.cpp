#include "support/PnmImage.h"

#include <cstdio>

#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::testing {

namespace {

// Where the samples begin; 0 for a file of another format.
std::size_t ReadHeader(const std::string& bytes, char& kind, PnmImage& image) {
  int maximum = 0;
  int end = 0;
  const char* text = bytes.c_str();
  if (std::sscanf(text, "P%c %d %d%n", &kind, &image.width, &image.height, &end) == 3 &&
      kind == '4') {
    return static_cast<std::size_t>(end) + 1;
  }
  if (std::sscanf(text, "P%c %d %d %d%n", &kind, &image.width, &image.height, &maximum, &end) ==
          4 &&
      maximum == 255 && (kind == '5' || kind == '6')) {
    return static_cast<std::size_t>(end) + 1;
  }
  return 0;
}

}  // namespace

Rgb PnmImage::At(int x, int y) const {
  const auto at = static_cast<std::size_t>(3 * (y * width + x));
  return at + 2 < pixels.size() ? Rgb{pixels[at], pixels[at + 1], pixels[at + 2]} : Rgb{-1, -1, -1};
}

PnmImage ReadPnm(std::string_view bytes) {
  PnmImage image;
  char kind = 0;
  const std::size_t start = ReadHeader(std::string(bytes.substr(0, 100)), kind, image);
  if (start == 0) {
    return {};
  }
  const auto width = static_cast<std::size_t>(image.width);
  const std::size_t row_bytes = kind == '4' ? (width + 7) / 8 : kind == '5' ? width : 3 * width;
  const auto byte = [&](std::size_t at) {
    return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : std::uint8_t{0};
  };
  for (std::size_t y = 0; y < static_cast<std::size_t>(image.height); ++y) {
    const std::size_t row = start + y * row_bytes;
    for (std::size_t i = 0; i < 3 * width; ++i) {
      const std::size_t x = i / 3;
      const bool is_black = (byte(row + x / 8) >> (7 - x % 8) & 1U) != 0;
      image.pixels.push_back(kind == '4'   ? (is_black ? 0 : 255)
                             : kind == '5' ? byte(row + x)
                                           : byte(row + i));
    }
  }
  return image;
}

PnmImage ImageByPoppler(const std::string& document, int index) {
  const TempDir directory;
  RunProgram(
      {"pdfimages", WriteBytes(directory.Path("in.pdf"), document), directory.Path("image")});
  const std::string stem = directory.Path("image-00" + std::to_string(index));
  for (const char* suffix : {".ppm", ".pgm", ".pbm"}) {
    if (Exists(stem + suffix)) {
      return ReadPnm(ReadBytes(stem + suffix));
    }
  }
  return {};
}

}  // namespace TarnixTools::testing
