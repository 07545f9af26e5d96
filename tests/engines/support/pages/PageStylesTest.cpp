// What a page's text and paths look like, and where they are: each operator that has a say in it.
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/files/DiskFile.h"
#include "engines/support/pages/PageReader.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using testing::TestPdf;

constexpr const char* kResources =
    "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
    "/V<</Type/Font/Subtype/Type0/BaseFont/V/Encoding/Identity-V/DescendantFonts[<</Type/Font"
    "/Subtype/CIDFontType2/BaseFont/V/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)"
    "/Supplement 0>>/DW 1000>>]>>>>"
    "/ExtGState<</NoFill<</ca 0>>/NoStroke<</CA 0>>>>"
    "/Pattern<</P<</PatternType 2/Shading<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 9 9]"
    "/Function<</FunctionType 2/Domain[0 1]/N 1>>>>>>>>>>";

class PageStylesTest : public ::testing::Test {
 protected:
  // A page of 612 by 792 points; places count from its upper-left corner.
  PageModel Page(const std::string& content) {
    const auto document = pdf::Document::Open(
        std::make_unique<DiskSource>(
            OpenShared(platform::WidePath(TestPdf()
                                              .Page()
                                              .PageEntry(kResources)
                                              .Content(content)
                                              .Write(directory_.Path("a.pdf"))))),
        "");
    const pdf::PageTree pages(*document);
    const pdf::VisibleLayers layers(*document);
    return PageReader(*document, pages, layers, PageReader::Parts::kAll).Read(0);
  }

  // The style of the first glyph.
  TextStyle Style(const std::string& operators) {
    const PageModel page = Page("BT /F 10 Tf 100 700 Td " + operators + " (A) Tj ET");
    return page.glyphs.empty() ? TextStyle() : page.styles.at(page.glyphs[0].style);
  }

  testing::TempDir directory_;
};

constexpr double kA = 6.67;  // the advance of an A of ten points

void ExpectGlyph(const Glyph& glyph, double x, double y, double advance) {
  EXPECT_NEAR(glyph.x, x, 0.01);
  EXPECT_NEAR(glyph.y, y, 0.01);
  EXPECT_NEAR(glyph.advance, advance, 0.01);
}

TEST_F(PageStylesTest, OfTurnedAndStretchedText) {
  const PageModel turned = Page("BT /F 10 Tf 0 1 -1 0 100 400 Tm (AA) Tj ET");
  ASSERT_EQ(turned.glyphs.size(), 2U);
  ExpectGlyph(turned.glyphs[0], 100, 392, kA);
  ExpectGlyph(turned.glyphs[1], 100, 392 - kA, kA);
  EXPECT_NEAR(turned.styles[0].direction_x, 0, 1e-6);
  EXPECT_NEAR(turned.styles[0].direction_y, -1, 1e-6);
  EXPECT_NEAR(turned.styles[0].size, 10, 1e-6);
  const PageModel stretched = Page("2 0 0 3 0 0 cm BT /F 10 Tf 10 20 Td (AA) Tj ET");
  ASSERT_EQ(stretched.glyphs.size(), 2U);
  ExpectGlyph(stretched.glyphs[0], 20, 732, 2 * kA);
  ExpectGlyph(stretched.glyphs[1], 20 + 2 * kA, 732, 2 * kA);
  EXPECT_NEAR(stretched.styles[0].size, 30, 1e-6);
  EXPECT_NEAR(stretched.styles[0].direction_x, 1, 1e-6);
}

TEST_F(PageStylesTest, OfTextWithSpacing) {
  const PageModel page =
      Page("BT /F 10 Tf 100 700 Td 5 Tc 7 Tw 50 Tz 3 Ts (A A) Tj [(A) -1000 (A)] TJ ET");
  ASSERT_EQ(page.glyphs.size(), 5U);
  double x = 100;
  ExpectGlyph(page.glyphs[0], x, 89, kA / 2);
  x += (kA + 5) / 2;
  ExpectGlyph(page.glyphs[1], x, 89, 1.39);
  x += (2.78 + 5 + 7) / 2;
  ExpectGlyph(page.glyphs[2], x, 89, kA / 2);
  x += (kA + 5) / 2;
  ExpectGlyph(page.glyphs[3], x, 89, kA / 2);
  x += (kA + 5 + 10) / 2;
  ExpectGlyph(page.glyphs[4], x, 89, kA / 2);
}

TEST_F(PageStylesTest, OfTextThatIsNotSeen) {
  EXPECT_FALSE(Style("").is_hidden);
  EXPECT_TRUE(Style("3 Tr").is_hidden);
  EXPECT_TRUE(Style("7 Tr").is_hidden);
  EXPECT_TRUE(Style("/NoFill gs").is_hidden);
  EXPECT_FALSE(Style("/NoFill gs 1 Tr").is_hidden);
  EXPECT_TRUE(Style("/NoStroke gs 1 Tr").is_hidden);
  EXPECT_FALSE(Style("/NoStroke gs").is_hidden);
  EXPECT_FALSE(Style("/NoStroke gs 2 Tr").is_hidden);
}

TEST_F(PageStylesTest, HaveTheColorThatIsSeen) {
  const std::string colors = "1 0 0 RG 0 0 1 rg ";
  EXPECT_EQ(Style(colors).color, (Rgb{0, 0, 255}));
  EXPECT_EQ(Style(colors + "1 Tr").color, (Rgb{255, 0, 0}));
  EXPECT_EQ(Style(colors + "2 Tr").color, (Rgb{0, 0, 255}));
  EXPECT_EQ(Style("0.2 g").color, (Rgb{51, 51, 51}));
  EXPECT_EQ(Style("0.2 G 1 Tr").color, (Rgb{51, 51, 51}));
}

TEST_F(PageStylesTest, AreListedOnce) {
  const PageModel page = Page(
      "BT /F 10 Tf 100 700 Td (A) Tj 0 0 1 rg (B) Tj 0 g (C) Tj /F 11 Tf (D) Tj /F 10 Tf (E) Tj "
      "3 Tr (F) Tj 0 Tr 1 0 0.1 1 100 600 Tm (G) Tj 0.9 0.1 0 1 100 500 Tm (H) Tj ET");
  ASSERT_EQ(page.glyphs.size(), 8U);
  EXPECT_EQ(page.styles.size(), 6U);
  EXPECT_EQ(page.glyphs[2].style, page.glyphs[0].style);
  EXPECT_EQ(page.glyphs[4].style, page.glyphs[0].style);
  for (const std::size_t other : {1U, 3U, 5U, 6U, 7U}) {
    EXPECT_NE(page.glyphs[other].style, page.glyphs[0].style) << other;
  }
}

TEST_F(PageStylesTest, OfTextThatGoesDownwards) {
  const PageModel page = Page("BT /V 10 Tf 100 700 Td 2 Tc <00410042> Tj ET");
  ASSERT_EQ(page.glyphs.size(), 2U);
  EXPECT_TRUE(page.styles[page.glyphs[0].style].is_vertical);
  ExpectGlyph(page.glyphs[0], 100, 92, 10);  // the middle of its upper edge
  // The distance between glyphs goes downwards, too.
  EXPECT_GT(page.glyphs[1].y, page.glyphs[0].y + 7);
  EXPECT_NEAR(page.glyphs[1].x, 100, 0.01);
}

TEST_F(PageStylesTest, AreThoseOfGlyphsThatTouchThePage) {
  const auto is_there = [&](double x, double y) {
    return !Page("BT /F 10 Tf " + std::to_string(x) + " " + std::to_string(y) + " Td (A) Tj ET")
                .glyphs.empty();
  };
  EXPECT_TRUE(is_there(-6.5, 100));
  EXPECT_FALSE(is_there(-6.8, 100));
  EXPECT_TRUE(is_there(618.5, 100));
  EXPECT_FALSE(is_there(618.8, 100));
  EXPECT_TRUE(is_there(100, 791.5));
  EXPECT_FALSE(is_there(100, 792));
  EXPECT_TRUE(is_there(100, -6.5));
  EXPECT_FALSE(is_there(100, -6.8));
}

TEST_F(PageStylesTest, OfTextThatIsReplacedSpanItsGlyphs) {
  const auto replaced = [&](const std::string& content) {
    return Page("BT /F 10 Tf 100 700 Td /Span<</ActualText(xyz)>>BDC " + content + " EMC ET");
  };
  const PageModel page = replaced("(AAA) Tj");
  ASSERT_EQ(page.glyphs.size(), 1U);
  ExpectGlyph(page.glyphs[0], 100, 92, 3 * kA);
  EXPECT_EQ(page.glyphs[0].length, 3U);
  EXPECT_EQ(replaced("(A) Tj 0 4.9 Td (A) Tj").glyphs.size(), 1U);
  EXPECT_EQ(replaced("(A) Tj 0 5.1 Td (A) Tj").glyphs.size(), 2U);  // in another line
  EXPECT_EQ(replaced("(A) Tj 0 -5.1 Td (A) Tj").glyphs.size(), 2U);
  EXPECT_EQ(replaced("(A) Tj -1 0 Td (A) Tj").glyphs.size(), 2U);  // backwards
  EXPECT_EQ(replaced("/V 10 Tf <00410042> Tj").glyphs.size(), 2U);
}

TEST_F(PageStylesTest, OfPaths) {
  const PageModel page = Page(
      "2 0 0 2 0 0 cm 3 w 1 0 0 RG 0 1 0 rg 10 20 30 40 re B 10 20 30 40 re f 10 20 30 40 re S");
  ASSERT_EQ(page.paths.size(), 3U);
  for (const PathShape& shape : page.paths) {
    EXPECT_EQ(shape.kind, PathShape::Kind::kRectangle);
    EXPECT_EQ(shape.box, (pdf::Box{20, 672, 80, 752}));
    EXPECT_NEAR(shape.line_width, 6, 1e-9);
  }
  EXPECT_EQ(page.paths[0].fill, (Rgb{0, 255, 0}));
  EXPECT_EQ(page.paths[0].stroke, (Rgb{255, 0, 0}));
  EXPECT_EQ(page.paths[1].fill, (Rgb{0, 255, 0}));
  EXPECT_EQ(page.paths[1].stroke, std::nullopt);
  EXPECT_EQ(page.paths[2].fill, std::nullopt);
  EXPECT_LT(page.paths[0].order, page.paths[1].order);
  EXPECT_LT(page.paths[1].order, page.paths[2].order);
  EXPECT_FALSE(page.has_shadings);
  EXPECT_FALSE(page.is_partial);
}

TEST_F(PageStylesTest, TellOfShades) {
  EXPECT_TRUE(Page("/Pattern cs /P scn 10 10 30 30 re f").has_shadings);
  EXPECT_FALSE(Page("/Pattern cs /P scn 10 10 30 30 re S").has_shadings);
  EXPECT_FALSE(Page("10 10 30 30 re f").has_shadings);
  // What comes later does not take it back.
  EXPECT_TRUE(Page("q /Pattern cs /P scn 10 10 30 30 re f Q 50 50 9 9 re f").has_shadings);
}

}  // namespace
}  // namespace TarnixTools::engines
