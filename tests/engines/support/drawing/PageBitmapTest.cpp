#include <gtest/gtest.h>

#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/DrawnPages.h"
#include "engines/support/drawing/PageBitmap.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using testing::TestPdf;

using PageBitmapTest = DrawingTest;

TEST_F(PageBitmapTest, HasTheSizeOfThePage) {
  const testing::TempDir directory;
  const std::string path =
      TestPdf().Page().Size(100, 51).Page().Size(0.01, 100).Write(directory.Path("in.pdf"));
  DrawnDocument document(WidePath(path), "");
  const PageBitmap page = DrawPage(document, 0, 144);
  EXPECT_EQ(page.width, 200);
  EXPECT_EQ(page.height, 102);
  EXPECT_EQ(page.pixels.size(), std::size_t{200} * 102 * 4);
  EXPECT_EQ(DrawPage(document, 1, 72).width, 1);
}

TEST_F(PageBitmapTest, ComesInBandsToo) {
  const std::string path = testing::ExamplesDir() + "/report.pdf";
  DrawnDocument document(WidePath(path), "");
  const PageBitmap page = DrawPage(document, 0, 150);
  std::vector<std::uint8_t> pixels;
  int count = 0;
  const bool is_whole = DrawPageInBands(document, 0, 150, [&](const PageBand& band) {
    EXPECT_EQ(band.top, static_cast<int>(pixels.size() / (std::size_t{4} * page.width)));
    EXPECT_EQ(band.pixels.size(), std::size_t{4} * band.width * band.row_count);
    EXPECT_EQ(band.height, page.height);
    pixels.insert(pixels.end(), band.pixels.begin(), band.pixels.end());
    ++count;
  });
  EXPECT_TRUE(is_whole);
  EXPECT_GT(count, 1);
  EXPECT_TRUE(pixels == page.pixels);
}

TEST_F(PageBitmapTest, IsNotHeldWhenItIsTooLarge) {
  const testing::TempDir directory;
  const std::string path = TestPdf().Page().Size(7200, 7200).Write(directory.Path("in.pdf"));
  DrawnDocument document(WidePath(path), "");
  for (const double dpi : {400.0, 1e9}) {
    try {
      DrawPage(document, 0, dpi);
      ADD_FAILURE();
    } catch (const DrawingError& error) {
      EXPECT_EQ(error.code(), DrawingErrorCode::kMemory);
    }
  }
}

TEST(BandHeight, FollowsTheSizeOfTheBitmap) {
  EXPECT_EQ(BandHeightOf(100, 100), 100);
  EXPECT_EQ(BandHeightOf(4096, 4096), 256);
  EXPECT_EQ(BandHeightOf(100'000'000, 10), 1);
  EXPECT_EQ(BandHeightOf(65536, 65536) * std::size_t{65536} * 4, limits::kMaxBandBytes);
}

}  // namespace
}  // namespace TarnixTools::engines
