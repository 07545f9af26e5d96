#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/files/DiskFile.h"
#include "engines/support/pages/PageLimits.h"
#include "engines/support/pages/PageReader.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using testing::TestPdf;

using Parts = PageReader::Parts;

constexpr const char* kFont =
    "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>";

class PageReaderTest : public ::testing::Test {
 protected:
  PageModel Page(const TestPdf& pdf, Parts parts = Parts::kAll) {
    const auto document = pdf::Document::Open(
        std::make_unique<DiskSource>(
            OpenShared(platform::WidePath(pdf.Write(directory_.Path("a.pdf"))))),
        "");
    const pdf::PageTree pages(*document);
    const pdf::VisibleLayers layers(*document);
    return PageReader(*document, pages, layers, parts).Read(0);
  }

  // A page with this content, whose font is F.
  PageModel Page(const std::string& content, Parts parts = Parts::kAll) {
    return Page(TestPdf().Page().PageEntry(kFont).Content(content), parts);
  }

  testing::TempDir directory_;
};

std::u32string TextOf(const PageModel& page) {
  std::u32string text;
  for (const Glyph& glyph : page.glyphs) {
    text += page.text.substr(glyph.text, glyph.length);
  }
  return text;
}

std::string Repeated(const std::string& part, std::size_t count) {
  std::string text;
  text.reserve(part.size() * count);
  for (std::size_t i = 0; i < count; ++i) {
    text += part;
  }
  return text;
}

TEST_F(PageReaderTest, LeavesOutWhatIsTooMuch) {
  const PageModel text = Page("BT /F 1 Tf 0 Tz 100 700 Td (" +
                              std::string(limits::kMaxGlyphsOfPage + 1, 'A') + ") Tj ET");
  EXPECT_EQ(text.glyphs.size(), limits::kMaxGlyphsOfPage);
  EXPECT_EQ(text.text.size(), limits::kMaxGlyphsOfPage);
  EXPECT_TRUE(text.is_partial);
  const auto images = [&](std::size_t count) {
    return Page(TestPdf()
                    .Page()
                    .PageEntry("/Resources<</XObject<</I {{I}}>>>>")
                    .Object("I",
                            "<</Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace"
                            "/DeviceGray/Length 1>>\nstream\nx\nendstream")
                    .Content(Repeated("/I Do ", count)));
  };
  EXPECT_FALSE(images(limits::kMaxPlacedImages).is_partial);
  const PageModel many = images(limits::kMaxPlacedImages + 1);
  EXPECT_TRUE(many.is_partial);
  EXPECT_EQ(many.images.size(), limits::kMaxPlacedImages);
  const PageModel paths = Page(Repeated("5 5 9 9 re f ", limits::kMaxPathsOfPage + 1));
  EXPECT_TRUE(paths.is_partial);
  EXPECT_EQ(paths.paths.size(), limits::kMaxPathsOfPage);
}

TEST_F(PageReaderTest, ReadsGlyphsWithTheirPlaces) {
  const PageModel page = Page("BT /F 10 Tf 100 700 Td (AB) Tj ET");
  ASSERT_EQ(page.glyphs.size(), 2U);
  EXPECT_EQ(TextOf(page), U"AB");
  EXPECT_NEAR(page.glyphs[0].x, 100, 1e-6);
  EXPECT_NEAR(page.glyphs[0].y, 92, 1e-6);
  EXPECT_NEAR(page.glyphs[1].x, 106.67, 0.05);
  EXPECT_NEAR(page.styles[0].size, 10, 1e-6);
}

TEST_F(PageReaderTest, ReadsGlyphsOfVerticalWritingBelowEachOther) {
  const PageModel page =
      Page(TestPdf()
               .Page()
               .PageEntry(
                   "/Resources<</Font<</F<</Type/Font/Subtype/Type0/BaseFont/Gothic-UniJIS-UTF16-V"
                   "/Encoding/UniJIS-UTF16-V/DescendantFonts[<</Type/Font/Subtype/CIDFontType0"
                   "/BaseFont/Gothic/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)"
                   "/Supplement 6>>>>]>>>>>>")
               .Content("BT /F 10 Tf 300 700 Td <4E004E8C> Tj ET"));
  ASSERT_EQ(page.glyphs.size(), 2U);
  EXPECT_TRUE(page.styles[0].is_vertical);
  EXPECT_NEAR(page.glyphs[0].x, 300, 1e-6);
  EXPECT_NEAR(page.glyphs[0].y, 92, 1e-6);
  EXPECT_NEAR(page.glyphs[1].x, 300, 1e-6);
  EXPECT_NEAR(page.glyphs[1].y, 102, 1e-6);
  EXPECT_NEAR(page.glyphs[0].advance, 10, 1e-6);
}

TEST_F(PageReaderTest, ShowsSpotColorsAsTheDocumentSays) {
  const TestPdf pdf = TestPdf()
                          .Page()
                          .PageEntry(
                              "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
                              ">>/ColorSpace<</S[/Separation/Sea/DeviceRGB<</FunctionType 2/Domain"
                              "[0 1]/C0[1 1 1]/C1[0 0.2 0.4]/N 1>>]>>>>")
                          .Content("/S cs 1 scn BT /F 10 Tf 100 700 Td (A) Tj 0.5 scn (B) Tj ET");
  const PageModel page = Page(pdf);
  ASSERT_EQ(page.styles.size(), 2U);
  EXPECT_EQ(page.styles[0].color, (Rgb{0, 51, 102}));
  EXPECT_EQ(page.styles[1].color, (Rgb{128, 153, 179}));
}

// A sign for each glyph: minus for what is hidden.
std::string HiddenSigns(const PageModel& page) {
  std::string hidden;
  for (const Glyph& glyph : page.glyphs) {
    hidden += page.styles[glyph.style].is_hidden ? '-' : '+';
  }
  return hidden;
}

TEST_F(PageReaderTest, HidesTextThatIsPaintedOver) {
  const auto with = [this](const std::string& painted) {
    return HiddenSigns(Page("BT /F 10 Tf 100 700 Td (AB) Tj ET q " + painted +
                            " Q BT /F 10 Tf 100 700 Td (C) Tj ET"));
  };
  EXPECT_EQ(with("1 g 90 690 100 30 re f"), "--+");
  EXPECT_EQ(with("1 g 90 690 17 30 re f"), "-++");                    // the first letter alone
  EXPECT_EQ(with("1 g 90 690 100 12 re f"), "+++");                   // their feet alone
  EXPECT_EQ(with("1 g 90 690 100 30 re S"), "+++");                   // a frame
  EXPECT_EQ(with("1 g 90 690 100 30 re 95 695 80 20 re f*"), "+++");  // another one
  EXPECT_EQ(with("300 300 9 9 re W n 1 g 90 690 100 30 re f"), "+++");
}

TEST_F(PageReaderTest, SeesTextThroughWhatIsTransparent) {
  const auto with = [this](const std::string& state) {
    return HiddenSigns(
        Page(TestPdf()
                 .Page()
                 .PageEntry("/Resources<</Font<</F<</Type/Font/Subtype/Type1"
                            "/BaseFont/Helvetica>>>>/ExtGState<</G<<" +
                            state + ">>>>>>")
                 .Content("BT /F 10 Tf 100 700 Td (A) Tj ET /G gs 90 690 100 30 re f")));
  };
  EXPECT_EQ(with("/BM/Normal/ca 1/SMask/None"), "-");
  EXPECT_EQ(with("/BM/Multiply"), "+");
  EXPECT_EQ(with("/ca 0.5"), "+");
}

TEST_F(PageReaderTest, HidesTextUnderImages) {
  const auto with = [this](const std::string& entries) {
    return HiddenSigns(Page(
        TestPdf()
            .Object("image",
                    "<</Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray"
                    "/Length 1" +
                        entries + ">>stream\nx\nendstream")
            .Page()
            .PageEntry("/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>"
                       "/XObject<</I {{image}}>>>>")
            .Content("BT /F 10 Tf 100 700 Td (A) Tj ET 600 0 0 800 0 0 cm /I Do")));
  };
  EXPECT_EQ(with(""), "-");
  EXPECT_EQ(with("/Mask[0 1]"), "+");
  EXPECT_EQ(with("/ImageMask true"), "+");
}

// A page with letters in these tints of an ink, each after the other; its function is {{tint}}.
TestPdf PageInInk(const std::string& function, std::initializer_list<double> tints) {
  std::string content = "/S cs BT /F 10 Tf 100 700 Td ";
  for (const double tint : tints) {
    content += std::to_string(tint) + " scn (A) Tj ";
  }
  return TestPdf()
      .Object("tint", function)
      .Page()
      .PageEntry(
          "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>"
          "/ColorSpace<</S[/Separation/Sea/DeviceRGB {{tint}}]>>>>")
      .Content(content + "ET");
}

std::vector<Rgb> ColorsOf(const PageModel& page) {
  std::vector<Rgb> colors;
  for (const Glyph& glyph : page.glyphs) {
    colors.push_back(page.styles[glyph.style].color);
  }
  return colors;
}

// From white to red up to a quarter, from there back from black to red.
TEST_F(PageReaderTest, ShowsInksWhoseFunctionIsPutTogetherOfOthers) {
  const std::string function =
      "<</FunctionType 3/Domain[0 1]/Bounds[0.25]/Encode[0 1 1 0]/Functions["
      "<</FunctionType 2/Domain[0 1]/C0[1 1 1]/C1[1 0 0]/N 1>>"
      "<</FunctionType 2/Domain[0 1]/C0[1 0 0]/C1[0 0 0]/N 1>>]>>";
  EXPECT_THAT(
      ColorsOf(Page(PageInInk(function, {0, 0.125, 0.25, 1}))),
      ::testing::ElementsAre(Rgb{255, 255, 255}, Rgb{255, 128, 128}, Rgb{0, 0, 0}, Rgb{255, 0, 0}));
}

// An ink of which the function cannot be read is as dark as it is.
TEST_F(PageReaderTest, PassesOverAFunctionOfItself) {
  const std::string function =
      "<</FunctionType 3/Domain[0 1]/Bounds[0.5]/Encode[0 1 0 1]/Functions[{{tint}}{{tint}}]>>";
  EXPECT_THAT(ColorsOf(Page(PageInInk(function, {1}))), ::testing::ElementsAre(Rgb{0, 0, 0}));
}

// White, and a blue, of sixteen bits a sample, of four and of one.
TEST_F(PageReaderTest, ReadsSamplesOfAnyDepth) {
  const auto function = [](const std::string& bits, const std::string& samples) {
    return "<</FunctionType 0/Domain[0 1]/Range[0 1 0 1 0 1]/Size[2]/BitsPerSample " + bits +
           "/Filter/ASCIIHexDecode/Length " + std::to_string(samples.size()) + ">>stream\n" +
           samples + "\nendstream";
  };
  EXPECT_THAT(ColorsOf(Page(PageInInk(function("16", "ffffffffffff000000008000>"), {0, 1}))),
              ::testing::ElementsAre(Rgb{255, 255, 255}, Rgb{0, 0, 128}));
  EXPECT_THAT(ColorsOf(Page(PageInInk(function("4", "fff008>"), {0, 1}))),
              ::testing::ElementsAre(Rgb{255, 255, 255}, Rgb{0, 0, 136}));
  EXPECT_THAT(ColorsOf(Page(PageInInk(function("1", "e4>"), {0, 1}))),
              ::testing::ElementsAre(Rgb{255, 255, 255}, Rgb{0, 0, 255}));
}

// The samples are white, red, green and black: without inks, with the first, the second and both.
TEST_F(PageReaderTest, MixesColorsOfSeveralInks) {
  const std::string samples = "ffffffff000000ff00000000>";
  const TestPdf pdf =
      TestPdf()
          .Page()
          .PageEntry(
              "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
              ">>/ColorSpace<</S[/DeviceN[/Red/Green]/DeviceRGB {{mix}}]>>>>")
          .Content("/S cs 1 0 scn BT /F 10 Tf 100 700 Td (A) Tj 0 0.5 scn (B) Tj 1 1 scn (C) Tj ET")
          .Object("mix",
                  "<</FunctionType 0/Domain[0 1 0 1]/Range[0 1 0 1 0 1]/Size[2 2]/BitsPerSample 8"
                  "/Filter/ASCIIHexDecode/Length " +
                      std::to_string(samples.size()) + ">>stream\n" + samples + "\nendstream");
  const PageModel page = Page(pdf);
  ASSERT_EQ(page.styles.size(), 3U);
  EXPECT_EQ(page.styles[0].color, (Rgb{255, 0, 0}));
  EXPECT_EQ(page.styles[1].color, (Rgb{128, 255, 128}));
  EXPECT_EQ(page.styles[2].color, (Rgb{0, 0, 0}));
}

// A page whose text is in inks that this program leads to blue, each string in another tint.
TestPdf PageInTints(const std::string& program, std::size_t count) {
  std::string content = "/S cs BT /F 10 Tf 100 700 Td ";
  for (std::size_t i = 0; i < count; ++i) {
    content += std::to_string(1 - static_cast<double>(i) / static_cast<double>(2 * count)) +
               " scn (A) Tj ";
  }
  return TestPdf()
      .Page()
      .PageEntry(
          "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
          ">>/ColorSpace<</S[/Separation/Sea/DeviceRGB {{program}}]>>>>")
      .Content(content + "ET")
      .Object("program", "<</FunctionType 4/Domain[0 1]/Range[0 1 0 1 0 1]/Length " +
                             std::to_string(program.size()) + ">>stream\n" + program +
                             "\nendstream");
}

TEST_F(PageReaderTest, ComputesColorsOfInksByPrograms) {
  const std::string program = "{dup 0.5 gt {pop 0 0.2} {0.4 exch} ifelse 1}";
  const TestPdf pdf =
      TestPdf()
          .Page()
          .PageEntry(
              "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
              ">>/ColorSpace<</S[/Separation/Sea/DeviceRGB {{program}}]>>>>")
          .Content("/S cs 1 scn BT /F 10 Tf 100 700 Td (A) Tj 0 scn (B) Tj ET")
          .Object("program", "<</FunctionType 4/Domain[0 1]/Range[0 1 0 1 0 1]/Length " +
                                 std::to_string(program.size()) + ">>stream\n" + program +
                                 "\nendstream");
  const PageModel page = Page(pdf);
  ASSERT_EQ(page.styles.size(), 2U);
  EXPECT_EQ(page.styles[0].color, (Rgb{0, 51, 255}));
  EXPECT_EQ(page.styles[1].color, (Rgb{102, 0, 255}));
}

TEST_F(PageReaderTest, TakesCodesThatCountGlyphsForNoCharacters) {
  const auto text_of = [this](const std::string& differences) {
    TestPdf pdf;
    pdf.Page()
        .PageEntry(
            "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Own/Encoding<</Differences[" +
            differences + "]>>>>>>>>")
        .Content("BT /F 10 Tf 100 700 Td (AB) Tj ET");
    return Page(pdf).text;
  };
  EXPECT_EQ(text_of("2/g18 65/g152/g135"), U"");
  EXPECT_EQ(text_of("65/g152/g135"), U"AB");
  EXPECT_EQ(text_of("2/g18 65/C/g135"), U"C");
  EXPECT_EQ(text_of("2/fi 65/g152/g135"), U"AB");
}

TEST_F(PageReaderTest, ComputesNoMoreThanAPageMayHave) {
  constexpr std::size_t kSteps = 9'000;
  std::string program = "{pop 0 0 1";
  for (std::size_t i = 0; i < kSteps / 2; ++i) {
    program += " dup pop";
  }
  const PageModel page = Page(PageInTints(program + "}", limits::kMaxTintSteps / kSteps + 50));
  EXPECT_EQ(page.styles.front().color, (Rgb{0, 0, 255}));
  const Rgb last = page.styles.back().color;
  EXPECT_EQ(last.red, last.blue);
}

TEST_F(PageReaderTest, TellsThatContentIsUnreadable) {
  const TestPdf pdf = TestPdf()
                          .Page()
                          .PageEntry("/Resources<</XObject<</X {{form}}>>>>")
                          .Content("/X Do")
                          .Object("form",
                                  "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/Filter/NoSuchFilter"
                                  "/Length 1>>stream\nx\nendstream");
  EXPECT_TRUE(Page(pdf).is_partial);
  EXPECT_FALSE(Page("BT /F 10 Tf 100 700 Td (A) Tj ET").is_partial);
}

TEST_F(PageReaderTest, TakesNoReplacementTextWithoutBounds) {
  const std::string long_text(10'000, 'x');
  const std::string content = "BT /F 10 Tf 100 700 Td /Span<</ActualText(";
  EXPECT_EQ(TextOf(Page(content + "yz)>>BDC (a) Tj EMC ET")), U"yz");
  EXPECT_EQ(TextOf(Page(content + long_text + ")>>BDC (a) Tj EMC ET")), U"a");
}

TEST_F(PageReaderTest, LeavesOutWhatIsBesideThePage) {
  EXPECT_EQ(TextOf(Page("BT /F 10 Tf 100 900 Td (A) Tj 0 -200 Td (B) Tj ET")), U"B");
}

TEST_F(PageReaderTest, TakesTextThatStandsForGlyphs) {
  EXPECT_EQ(TextOf(Page("BT /F 10 Tf 100 700 Td (a) Tj /Span <</ActualText (xyz)>> BDC (bc) Tj EMC "
                        "/Span <</ActualText ()>> BDC (d) Tj EMC (e) Tj ET")),
            U"axyze");
}

TEST_F(PageReaderTest, ReadsEachRuleOfAPath) {
  const PageModel page = Page("10 10 m 200 10 l 10 20 m 200 20 l 50 50 100 30 re S");
  ASSERT_EQ(page.paths.size(), 3U);
  EXPECT_EQ(page.paths[0].kind, PathShape::Kind::kLine);
  EXPECT_EQ(page.paths[1].kind, PathShape::Kind::kLine);
  EXPECT_EQ(page.paths[2].kind, PathShape::Kind::kRectangle);
  EXPECT_NEAR(page.paths[1].box.bottom, 772, 1e-6);
}

TEST_F(PageReaderTest, KeepsPathsWithCurvesWhole) {
  const PageModel page = Page("10 10 m 200 10 l 10 20 m 20 30 40 50 60 20 c S 0 0 100 1 re f");
  ASSERT_EQ(page.paths.size(), 2U);
  EXPECT_EQ(page.paths[0].kind, PathShape::Kind::kOther);
  EXPECT_EQ(page.paths[1].kind, PathShape::Kind::kLine);
}

TEST_F(PageReaderTest, TellsPlacesOfOperatorsAndStrings) {
  const std::string content =
      "BT /F 10 Tf 100 700 Td (A) Tj [(B) -9 <43>] TJ ET 0 0 9 9 re f BI /W 1 /H 1 /CS /G /BPC 8 "
      "ID "
      "x EI";
  const PageModel page = Page(content, Parts::kContent);
  ASSERT_EQ(page.glyphs.size(), 3U);
  EXPECT_EQ(content.substr(page.glyphs[0].place, 2), "Tj");
  EXPECT_EQ(content.substr(page.glyphs[1].place, 3), "(B)");
  EXPECT_EQ(content.substr(page.glyphs[2].place, 4), "<43>");
  ASSERT_EQ(page.paths.size(), 1U);
  EXPECT_EQ(content.substr(page.paths[0].place, 1), "f");
  ASSERT_EQ(page.images.size(), 1U);
  EXPECT_EQ(content.substr(page.images[0].place, 2), "BI");
  EXPECT_EQ(Page(content).glyphs[0].place, kNoPlace);
}

TEST_F(PageReaderTest, TellsThePlaceOfAFormForAllInIt) {
  const std::string content = "q /X Do Q";
  const TestPdf pdf = TestPdf()
                          .Page()
                          .PageEntry("/Resources<</XObject<</X {{form}}>>>>")
                          .Content(content)
                          .Object("form",
                                  "<</Type/XObject/Subtype/Form/BBox[0 0 99 99]/Length 13>>stream\n"
                                  "0 0 9 9 re f \nendstream");
  const PageModel page = Page(pdf, Parts::kContent);
  ASSERT_EQ(page.paths.size(), 1U);
  EXPECT_EQ(content.substr(page.paths[0].place, 2), "Do");
}

TEST_F(PageReaderTest, LeavesOutAnnotationsWhereOnlyContentIsRead) {
  TestPdf pdf;
  pdf.Page().Annotation("/Subtype/Stamp/Rect[10 20 110 40]/AP<</N {{form}}>>");
  pdf.Object("form",
             "<</Type/XObject/Subtype/Form/BBox[0 0 99 99]/Length 13>>stream\n"
             "0 0 9 9 re f \nendstream");
  EXPECT_EQ(Page(pdf).paths.size(), 1U);
  EXPECT_EQ(Page(pdf, Parts::kContent).paths.size(), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines
