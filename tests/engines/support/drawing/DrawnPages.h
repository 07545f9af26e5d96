// Pages drawn as bitmaps, by the library and by another program.
//
//   const PageBitmap page = DrawnAt72(TestPdf().Page("text").Write(path));
//   EXPECT_EQ(ColorAt(page, 10, 10), kWhite);
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_DRAWING_DRAWNPAGES_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_DRAWING_DRAWNPAGES_H_

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/drawing/DrawnDocument.h"
#include "engines/support/drawing/PageBitmap.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "foundation/Platform.h"
#include "support/JpegImage.h"
#include "support/Readers.h"

namespace TarnixTools::engines {

using testing::Rgb;

inline constexpr Rgb kRed = {255, 0, 0};
inline constexpr Rgb kBlue = {0, 0, 255};
inline constexpr Rgb kBlack = {0, 0, 0};
inline constexpr Rgb kWhite = {255, 255, 255};

// Skips tests where there is no PDFium.
class DrawingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    const PdfiumLock pdfium;
    if (!pdfium.is_available()) {
      GTEST_SKIP() << "needs PDFium";
    }
  }
};

inline PageBitmap DrawnAt72(const std::string& path, int page_index = 0,
                            const std::string& password = "") {
  DrawnDocument document(platform::WidePath(path), password);
  return DrawPage(document, page_index, 72);
}

inline Rgb ColorAt(const PageBitmap& page, int x, int y) {
  const std::uint8_t* pixel = page.Row(y) + std::ptrdiff_t{4} * x;
  return {pixel[2], pixel[1], pixel[0]};
}

// Whether the pixel has the colour, but for a little.
inline bool IsNear(const PageBitmap& page, int x, int y, const Rgb& color, int tolerance = 3) {
  const Rgb found = ColorAt(page, x, y);
  for (std::size_t i = 0; i < 3; ++i) {
    if (std::abs(found[i] - color[i]) > tolerance) {
      return false;
    }
  }
  return true;
}

// The page as poppler draws it; without pixels when it does not.
inline PageBitmap DrawnByPoppler(const std::string& path, int page_number, int dpi) {
  const std::string page = std::to_string(page_number);
  const testing::ProgramResult result = testing::RunProgram(
      {"pdftoppm", "-cropbox", "-r", std::to_string(dpi), "-f", page, "-l", page, path});
  PageBitmap bitmap;
  char newline = 0;
  std::size_t start = 0;
  if (std::sscanf(result.output.c_str(), "P6 %d %d 255%c", &bitmap.width, &bitmap.height,
                  &newline) == 3) {
    start = result.output.size() - std::size_t{3} * static_cast<std::size_t>(bitmap.width) *
                                       static_cast<std::size_t>(bitmap.height);
    for (std::size_t i = start; i + 2 < result.output.size(); i += 3) {
      for (const std::size_t component : {2, 1, 0}) {
        bitmap.pixels.push_back(static_cast<std::uint8_t>(result.output[i + component]));
      }
      bitmap.pixels.push_back(0);
    }
  }
  return bitmap;
}

// By how much the components of all pixels differ, on average, from 0 to 255; 255 for bitmaps of
// sizes that are more than a pixel apart.
inline double DifferenceOf(const PageBitmap& first, const PageBitmap& second) {
  if (std::abs(first.width - second.width) > 1 || std::abs(first.height - second.height) > 1) {
    return 255;
  }
  double sum = 0;
  const int width = std::min(first.width, second.width);
  const int height = std::min(first.height, second.height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      for (std::ptrdiff_t i = 0; i < 3; ++i) {
        const std::ptrdiff_t at = std::ptrdiff_t{4} * x + i;
        sum += std::abs(first.Row(y)[at] - second.Row(y)[at]);
      }
    }
  }
  return sum / (3.0 * width * height);
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_DRAWING_DRAWNPAGES_H_
