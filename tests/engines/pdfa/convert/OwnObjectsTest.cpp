// What documents have in place, where others have a reference, is mended like the others.
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/ConvertedDocument.h"
#include "engines/pdfa/convert/structure/OwnObjects.h"
#include "pdf/file/ByteSource.h"
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using testing::QpdfDocument;
using testing::RawPdf;

constexpr const char* kHelvetica =
    "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>";
constexpr const char* kShowsText = "BT /F 20 Tf 10 40 Td (ABC) Tj ET";

class OwnObjectsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_PROGRAM("pdftoppm");
  }

  // Writes the document at the level, which it must reach: it is judged by all rules.
  void Convert(RawPdf file, Level level = Level::k2b) {
    in_ = testing::WriteBytes(directory_.Path("in.pdf"), file.Table());
    out_ = directory_.Path("out.pdf");
    const ConversionResult result =
        ConvertedDocument(platform::WidePath(in_), "").Save(platform::WidePath(out_), level);
    report_ = result.report.Text(true);
    EXPECT_EQ(result.reached, level) << report_;
  }

  // What the document shows when it is written.
  testing::Picture Seen(RawPdf file) {
    Convert(std::move(file));
    return testing::Pictures(out_, 72).at(0);
  }

  // A document that has its fonts in it shows the same afterwards; colours may be rounded.
  void ExpectTheSameSeen() const {
    constexpr int kRounded = 8;
    const testing::Picture before = testing::Pictures(in_, 36).at(0);
    const testing::Picture after = testing::Pictures(out_, 36).at(0);
    ASSERT_EQ(before.pixels.size(), after.pixels.size());
    int most = 0;
    for (std::size_t i = 0; i < before.pixels.size(); ++i) {
      const auto one = static_cast<unsigned char>(before.pixels[i]);
      const auto other = static_cast<unsigned char>(after.pixels[i]);
      most = std::max(most, std::abs(one - other));
    }
    EXPECT_LE(most, kRounded);
    EXPECT_TRUE(ShowsSomething(before));
  }

  static bool ShowsSomething(const testing::Picture& picture) {
    return picture.pixels != std::string(picture.pixels.size(), '\xFF');
  }

  std::string Plain() const { return testing::RunProgram({"qpdf", "--qdf", out_, "-"}).output; }

  testing::TempDir directory_;
  std::string in_;
  std::string out_;
  std::string report_;
};

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

// A document in which the font, or a reference to it, stands in some place.
struct Place {
  const char* name;
  RawPdf (*document)(const std::string& font);
};

RawPdf Page(const std::string& resources, const std::string& content,
            const std::string& catalog = "", const std::string& page = "") {
  RawPdf file = OnePage("/Contents 4 0 R/Resources<<" + resources + ">>" + page, catalog);
  file.Stream(4, "", content);
  return file;
}

std::string Named(const std::string& font) {
  return "/Font<</F " + font + ">>";
}

constexpr Place kPlaces[] = {
    {"Page", [](const std::string& font) { return Page(Named(font), kShowsText); }},
    {"FontsOfTheirOwn",
     [](const std::string& font) {
       return Page("/Font 5 0 R", kShowsText).Object(5, "<</F " + font + ">>");
     }},
    {"PageTree",
     [](const std::string& font) {
       RawPdf file;
       file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
       file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1/Resources<<" + Named(font) + ">>>>");
       file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 4 0 R>>");
       return file.Stream(4, "", kShowsText);
     }},
    {"Form",
     [](const std::string& font) {
       return Page("/XObject<</X 5 0 R>>", "/X Do")
           .Stream(5, "/Subtype/Form/BBox[0 0 200 100]/Resources<<" + Named(font) + ">>",
                   kShowsText);
     }},
    {"Pattern",
     [](const std::string& font) {
       return Page("/Pattern<</P 5 0 R>>", "/Pattern cs /P scn 0 0 200 100 re f")
           .Stream(5,
                   "/PatternType 1/PaintType 1/TilingType 1/XStep 100/YStep 80/BBox[0 0 100 80]"
                   "/Resources<<" +
                       Named(font) + ">>",
                   kShowsText);
     }},
    {"Type3Glyph",
     [](const std::string& font) {
       return Page("/Font<</T 5 0 R>>", "BT /T 20 Tf 10 40 Td (AA) Tj ET")
           .Object(5,
                   "<</Type/Font/Subtype/Type3/FontBBox[0 0 200 100]/FontMatrix[.01 0 0 .01 0 0]"
                   "/FirstChar 65/LastChar 65/Widths[200]/CharProcs<</a 6 0 R>>"
                   "/Encoding<</Differences[65/a]>>/Resources<<" +
                       Named(font) + ">>>>")
           .Stream(6, "", std::string("200 0 d0 ") + kShowsText);
     }},
    {"GraphicsState",
     [](const std::string& font) {
       return Page("/ExtGState<</G<</Font[" + font + " 20]>>>>", "BT /G gs 10 40 Td (ABC) Tj ET");
     }},
    {"Appearance",
     [](const std::string& font) {
       return Page("", "", "/AcroForm<</Fields[5 0 R]/DA(/F 12 Tf)/DR<<" + Named(font) + ">>>>",
                   "/Annots[5 0 R]")
           .Object(5,
                   "<</Type/Annot/Subtype/Widget/FT/Tx/T(t)/V(ABC)/Rect[10 10 150 90]/F 4"
                   "/AP<</N 6 0 R>>>>")
           .Stream(6, "/Subtype/Form/BBox[0 0 140 80]/Resources<<" + Named(font) + ">>",
                   kShowsText);
     }},
};

class InPlaceTest : public OwnObjectsTest, public ::testing::WithParamInterface<Place> {};

TEST_P(InPlaceTest, FontIsEmbeddedAsAnywhereElse) {
  const testing::Picture referred = Seen(GetParam().document("9 0 R").Object(9, kHelvetica));
  EXPECT_THAT(report_, HasSubstr("changed: font Helvetica, which was not embedded"));
  EXPECT_EQ(Seen(GetParam().document(kHelvetica)), referred);
  EXPECT_THAT(report_, HasSubstr("changed: font Helvetica, which was not embedded"));
  EXPECT_TRUE(ShowsSomething(referred));
}

INSTANTIATE_TEST_SUITE_P(OwnObjects, InPlaceTest, ::testing::ValuesIn(kPlaces),
                         [](const auto& place) { return place.param.name; });

// The font of tests, embedded. Beside standing in place, it lists its glyphs wrongly, does not say
// which glyphs its identifiers have, and names glyphs by an encoding that is not allowed.
constexpr const char* kShowsGlyph = "BT /F 20 Tf 10 40 Td <0001> Tj ET";

std::string Descriptor(int flags, const std::string& more) {
  return "<</Type/FontDescriptor/FontName/ABCDEF+Test/Flags " + std::to_string(flags) +
         "/FontBBox[0 0 1000 1000]/ItalicAngle 0/Ascent 900/Descent -200/CapHeight 700/StemV 80"
         "/FontFile2 8 0 R" +
         more + ">>";
}

std::string Descendant(const std::string& descriptor) {
  return "<</Type/Font/Subtype/CIDFontType2/BaseFont/ABCDEF+Test/CIDSystemInfo<</Registry(Adobe)"
         "/Ordering(Identity)/Supplement 0>>/DW 400/FontDescriptor " +
         descriptor + ">>";
}

std::string Composite(const std::string& descendant) {
  return "<</Type/Font/Subtype/Type0/BaseFont/ABCDEF+Test/Encoding/Identity-H/DescendantFonts[" +
         descendant + "]>>";
}

std::string Simple(const std::string& descriptor) {
  return "<</Type/Font/Subtype/TrueType/BaseFont/ABCDEF+Test/FirstChar 65/LastChar 65/Widths[400]"
         "/Encoding<</BaseEncoding/WinAnsiEncoding/Differences[66/A]>>/FontDescriptor " +
         descriptor + ">>";
}

TEST_F(OwnObjectsTest, CompositeFontsAreMended) {
  const std::string descriptor = Descriptor(4, "/CIDSet 7 0 R");
  const std::pair<std::string, Level> fonts[] = {{Composite(Descendant(descriptor)), Level::k2b},
                                                 {Composite(Descendant(descriptor)), Level::k1b},
                                                 {Composite(Descendant("9 0 R")), Level::k2b},
                                                 {Composite("10 0 R"), Level::k2b}};
  for (const auto& [font, level] : fonts) {
    SCOPED_TRACE(font);
    RawPdf file = Page("/Font<</F 5 0 R>>", kShowsGlyph);
    file.Object(5, font).Stream(7, "", "\x80").Stream(8, "", testing::TestFont().Bytes());
    file.Object(9, descriptor).Object(10, Descendant(descriptor));
    Convert(file, level);
    ExpectTheSameSeen();
    EXPECT_EQ(CountOf(Plain(), "/CIDSet"), level == Level::k1b ? 1 : 0);
    EXPECT_EQ(CountOf(Plain(), "/CIDToGIDMap /Identity"), 1);
  }
}

// A code without a glyph gets one, which the list of the subset has to have.
TEST_F(OwnObjectsTest, GlyphsThatAreAddedAreListed) {
  RawPdf file = Page("/Font<</F 5 0 R>>", "BT /F 20 Tf 10 40 Td <00010999> Tj ET");
  file.Object(5, Composite("10 0 R")).Stream(8, "", testing::TestFont().Bytes());
  file.Object(10, Descendant(Descriptor(4, "")));
  Convert(file, Level::k1b);
  EXPECT_THAT(report_, HasSubstr("changed: characters of fonts that have no glyph"));
  EXPECT_EQ(CountOf(Plain(), "/CIDSet"), 1);
}

TEST_F(OwnObjectsTest, DescriptorsAreMended) {
  RawPdf file = Page("/Font<</F 5 0 R>>", "BT /F 20 Tf 10 40 Td (A) Tj ET");
  file.Object(5, Simple(Descriptor(32, ""))).Stream(8, "", testing::TestFont().Bytes());
  Convert(file, Level::k1b);
  ExpectTheSameSeen();
  EXPECT_THAT(Plain(), HasSubstr("/Flags 4\n"));
}

// Pages that have all their fonts in place do not get one program each.
TEST_F(OwnObjectsTest, TheSameFontBecomesOneObject) {
  RawPdf file;
  file.Pages(3, "/MediaBox[0 0 200 100]/Contents 9 0 R/Resources<</Font<</F " +
                    std::string(kHelvetica) + ">>>>");
  file.Stream(9, "", kShowsText);
  Convert(file);
  EXPECT_EQ(CountOf(Plain(), "/Type /FontDescriptor"), 1);
  EXPECT_EQ(testing::Pictures(out_, 20).size(), 3U);
}

TEST_F(OwnObjectsTest, SpotColoursAreDescribed) {
  RawPdf file = Page("/ColorSpace<</D[/DeviceN[/Gold/Silver]/DeviceCMYK 5 0 R]>>",
                     "/D cs .5 .2 scn 10 10 50 50 re f");
  file.Stream(5, "/FunctionType 4/Domain[0 1 0 1]/Range[0 1 0 1 0 1 0 1]", "{0 0}");
  Convert(file);
  ExpectTheSameSeen();
  EXPECT_EQ(CountOf(Plain(), "/Colorants"), 1);
}

TEST_F(OwnObjectsTest, ShadingsOfPatternsHaveColoursThatAreKnown) {
  Convert(
      Page("/Pattern<</P<</PatternType 2/Shading<</ShadingType 2/ColorSpace/DeviceCMYK"
           "/Coords[0 0 200 0]/Function<</FunctionType 2/Domain[0 1]/C0[0 0 0 0]"
           "/C1[1 0 0 0]/N 1>>>>>>>>",
           "/Pattern cs /P scn 0 0 200 100 re f"));
  ExpectTheSameSeen();
}

// Poppler knows no such pages.
TEST_F(OwnObjectsTest, PagesAreMended) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2,
              "<</Type/Pages/Count 1/Kids[<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]"
              "/Contents 4 0 R/Annots[5 0 R]/Resources<<" +
                  Named(kHelvetica) + ">>>>]>>");
  file.Stream(4, "", std::string(kShowsText) + " 1 0 0 0 k 0 0 20 20 re f");
  file.Object(5, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(x)>>>>");
  Convert(file);
  const QpdfDocument written(out_);
  EXPECT_EQ(testing::QpdfComplaints(out_), "");
  EXPECT_EQ(written.Follow(written.Follow(written.Page(1))["/Annots"][0])["/F"], 4);
  EXPECT_EQ(testing::PageTexts(out_), std::vector<std::string>{"ABC"});
  EXPECT_THAT(report_, HasSubstr("changed: font Helvetica, which was not embedded"));
}

TEST_F(OwnObjectsTest, EncryptedDocumentsAreKnownAsSuch) {
  const std::string in =
      testing::WriteBytes(directory_.Path("in.pdf"), Page(Named(kHelvetica), kShowsText).Table());
  const std::string locked = testing::EncryptWithQpdf(in, directory_.Path("locked.pdf"), "u", "o");
  ConvertedDocument document{platform::WidePath(locked), "u"};
  EXPECT_TRUE(document.is_encrypted());
  const ConversionResult result =
      document.Save(platform::WidePath(directory_.Path("out.pdf")), Level::k2b);
  EXPECT_EQ(result.reached, Level::k2b) << result.report.Text(true);
  EXPECT_FALSE(ConvertedDocument(platform::WidePath(in), "").is_encrypted());
}

TEST_F(OwnObjectsTest, NothingIsWrittenWhereNothingIsInPlace) {
  const auto has_file = [](RawPdf file) {
    const auto document =
        pdf::Document::Open(std::make_unique<pdf::MemorySource>(file.Table()), "");
    return WithOwnObjects(*document, pdf::PageTree(*document)) != nullptr;
  };
  EXPECT_FALSE(has_file(Page("/Font<</F 5 0 R>>/ColorSpace<</C[/ICCBased 6 0 R]>>", kShowsText)
                            .Object(5, kHelvetica)
                            .Object(6, "[/DeviceN[/A]/DeviceGray 7 0 R]")));
  EXPECT_TRUE(has_file(Page(Named(kHelvetica), kShowsText)));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
