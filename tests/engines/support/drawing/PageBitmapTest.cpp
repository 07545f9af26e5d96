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

// The page draws a square, and a letter beside it; so does a form, and a form in that one.
TEST_F(PageBitmapTest, LeavesTextOutWhereverItStands) {
  const auto form = [](const std::string& resources, const std::string& content) {
    return "<</Subtype/Form/BBox[0 0 300 100]/Resources<<" + resources + ">>/Length " +
           std::to_string(content.size()) + ">>stream\n" + content + "\nendstream";
  };
  const auto drawn = [](int left) {
    return std::to_string(left) + " 10 40 40 re f BT /F 60 Tf " + std::to_string(left + 45) +
           " 10 Td (M) Tj ET ";
  };
  const std::string font = "/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica-Bold>>>>";
  const testing::TempDir directory;
  const std::string path =
      TestPdf()
          .Object("inner", form(font, drawn(200)))
          .Object("outer", form(font + "/XObject<</I {{inner}}>>", drawn(100) + "/I Do"))
          .Page()
          .Size(300, 100)
          .PageEntry("/Resources<<" + font + "/XObject<</O {{outer}}>>>>")
          .Content(drawn(0) + "/O Do")
          .Page()
          .Size(300, 100)
          .PageEntry("/Resources<<" + font + "/XObject<</O {{outer}}>>>>")
          .Content("/O Do " + drawn(0))
          .Write(directory.Path("in.pdf"));
  DrawnDocument document(WidePath(path), "");
  const auto ink_in = [](const PageBitmap& page, int left) {
    int dark = 0;
    for (int y = 0; y < page.height; ++y) {
      for (int x = left; x < left + 50; ++x) {
        dark += page.Row(y)[4 * x] < 128 ? 1 : 0;
      }
    }
    return dark;
  };
  for (const int index : {0, 1}) {
    const PageBitmap whole = DrawPage(document, index, 72);
    const PageBitmap bare = DrawRegionWithoutText(document, index, {0, 0, 300, 100}, 72);
    for (const int left : {0, 100, 200}) {
      EXPECT_GE(ink_in(bare, left), 1500) << left;
      EXPECT_GT(ink_in(whole, left + 45), 300) << left;
      EXPECT_EQ(ink_in(bare, left + 45), 0) << left;
    }
  }
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
