// Pages with much on them, and the whole models of them: text, paths, images and colours.
#include <cmath>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/ProgramFixture.h"
#include "engines/support/pages/PageReader.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/TestFont.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;

// In thousandths.
double Rounded(double value) {
  return std::round(value * 1000) / 1000 + 0.0;
}

std::string ColorText(const Rgb& color) {
  return std::to_string(color.red) + "," + std::to_string(color.green) + "," +
         std::to_string(color.blue);
}

std::ostream& operator<<(std::ostream& out, const pdf::Box& box) {
  return out << '[' << Rounded(box.left) << ' ' << Rounded(box.bottom) << ' ' << Rounded(box.right)
             << ' ' << Rounded(box.top) << ']';
}

void AddPlace(std::ostream& out, std::uint32_t place) {
  if (place != kNoPlace) {
    out << " at " << place;
  }
}

void AddStyles(std::ostream& out, const PageModel& page) {
  for (const TextStyle& style : page.styles) {
    out << "style " << style.face->family << (style.face->is_bold ? " bold" : "")
        << (style.face->is_italic ? " italic" : "") << (style.face->is_serif ? " serif" : "")
        << (style.face->is_fixed_pitch ? " fixed" : "") << ' ' << Rounded(style.size) << ' '
        << ColorText(style.color) << " along " << Rounded(style.direction_x) << ' '
        << Rounded(style.direction_y) << (style.is_vertical ? " vertical" : "")
        << (style.is_hidden ? " hidden" : "") << '\n';
  }
}

void AddGlyphs(std::ostream& out, const PageModel& page) {
  for (const Glyph& glyph : page.glyphs) {
    out << "glyph";
    for (const char32_t character : page.text.substr(glyph.text, glyph.length)) {
      out << ' ' << std::hex << static_cast<std::uint32_t>(character) << std::dec;
    }
    out << ", style " << glyph.style << ", mark " << glyph.mark << ", " << Rounded(glyph.x) << ' '
        << Rounded(glyph.y) << " advance " << Rounded(glyph.advance);
    AddPlace(out, glyph.place);
    out << '\n';
  }
}

void AddPaths(std::ostream& out, const PageModel& page) {
  for (const PathShape& path : page.paths) {
    out << (path.kind == PathShape::Kind::kLine        ? "line "
            : path.kind == PathShape::Kind::kRectangle ? "rectangle "
                                                       : "other ")
        << path.order << ' ' << path.box << (path.fill ? " fill " + ColorText(*path.fill) : "")
        << (path.stroke ? " stroke " + ColorText(*path.stroke) : "") << " width "
        << Rounded(path.line_width) << (path.rises ? " rises" : "");
    AddPlace(out, path.place);
    out << '\n';
  }
}

std::string ModelText(const PageModel& page) {
  std::ostringstream out;
  out << "page " << Rounded(page.width) << " x " << Rounded(page.height) << ", scale "
      << Rounded(page.scale) << (page.has_shadings ? ", shadings" : "")
      << (page.is_partial ? ", partial" : "") << '\n';
  AddStyles(out, page);
  AddGlyphs(out, page);
  AddPaths(out, page);
  for (const ImagePlace& image : page.images) {
    const pdf::Matrix& m = image.matrix;
    out << "image " << image.number << ' ' << image.order << " by " << Rounded(m.a) << ' '
        << Rounded(m.b) << ' ' << Rounded(m.c) << ' ' << Rounded(m.d) << ' ' << Rounded(m.e) << ' '
        << Rounded(m.f) << " seen " << image.box << " mark " << image.mark;
    AddPlace(out, image.place);
    out << '\n';
  }
  return out.str();
}

// A page of 200 by 300 points; objects from 20 on are free.
class OnePageDocument {
 public:
  OnePageDocument(const std::string& content, const std::string& resources,
                  const std::string& entries = "/MediaBox[0 0 200 300]") {
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/Contents 4 0 R/Resources<<" + resources + ">>" +
                       entries + ">>")
        .Stream(4, "", content);
  }

  RawPdf& file() { return file_; }

  std::string Model(PageReader::Parts parts = PageReader::Parts::kAll,
                    const pdf::SeenSize& room = {}) {
    const std::string bytes = file_.Table();
    const auto document = testing::OpenBytes(bytes);
    const pdf::PageTree pages(*document);
    const pdf::VisibleLayers layers(*document);
    PageReader reader(*document, pages, layers, parts);
    reader.set_room(room);
    return ModelText(reader.Read(0));
  }

  std::string Both() {
    return Model() + "the content alone\n" + Model(PageReader::Parts::kContent);
  }

 private:
  RawPdf file_;
};

const std::string kWidths =
    "/FirstChar 65/LastChar 70/Widths[500 600 700 800 900 1000]/FontDescriptor<</MissingWidth 250"
    "/Flags 32>>";
const std::string kFonts =
    "/Font<<"
    "/F<</Type/Font/Subtype/Type1/BaseFont/Georgia-BoldItalic" +
    kWidths +
    ">>"
    "/M<</Type/Font/Subtype/TrueType/BaseFont/ABCDEF#2BCourierNew" +
    kWidths +
    ">>"
    "/N<</Type/Font/Subtype/TrueType/BaseFont/Courier>>"
    "/V<</Type/Font/Subtype/Type0/BaseFont/V/Encoding/Identity-V/DescendantFonts[<</Type/Font"
    "/Subtype/CIDFontType2/BaseFont/V/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)"
    "/Supplement 0>>/DW 1000>>]/ToUnicode 20 0 R>>"
    "/H<</Type/Font/Subtype/Type0/BaseFont/H/Encoding/Identity-H/DescendantFonts[<</Type/Font"
    "/Subtype/CIDFontType2/BaseFont/H/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)"
    "/Supplement 0>>/DW 700/W[1[300 400]5 7 250]>>]/ToUnicode 20 0 R>>"
    "/U<</Type/Font/Subtype/Type0/BaseFont/U/Encoding/Unknown-H/DescendantFonts[<</Type/Font"
    "/Subtype/CIDFontType2/BaseFont/U/CIDSystemInfo<</Registry(Adobe)/Ordering(Own)"
    "/Supplement 0>>/DW 600>>]>>"
    "/T<</Type/Font/Subtype/Type3/FontBBox[0 0 10 22]/FontMatrix[0.1 0 0 0.1 0 0]/CharProcs<<>>"
    "/Encoding<</Differences[65/A/B]>>/FirstChar 65/LastChar 66/Widths[8 9]>>"
    "/S<</Type/Font/Subtype/Type3/FontBBox[0 -5 10 100]/FontMatrix[1 0 0 1 0 0]/CharProcs<<>>"
    "/Encoding<</Differences[65/A/B]>>/FirstChar 65/LastChar 66/Widths[8 9]>>"
    "/R<</Type/Font/Subtype/Type3/FontBBox[0 -4 10 40]/FontMatrix[1 0 0 1 0 0]/CharProcs<<>>"
    "/Encoding<</Differences[65/A/B]>>/FirstChar 65/LastChar 66/Widths[8 9]>>>>";

const std::string kToUnicode =
    "begincmap 1 begincodespacerange <0000> <FFFF> endcodespacerange 1 beginbfrange <0001> <0009> "
    "<0041> endbfrange 1 beginbfchar <000A> <D83DDE00> endbfchar endcmap";

TEST(WholePages, OfText) {
  OnePageDocument document(
      "BT /F 10 Tf 1 0 0 1 20 250 Tm (AB) Tj 2 Tc (CD) Tj 0 Tc 3 Tw (E F) Tj 0 Tw 50 Tz (AF) Tj "
      "100 "
      "Tz 4 Ts (A) Tj 0 Ts 12 TL T* (B) ' 1 2 (C D) \" 0 Tc 0 Tw [(A) -500 (B) 250 (C)] TJ (G) Tj "
      "ET\n"
      "BT /F 10 Tf 0 1 -1 0 60 20 Tm (AB) Tj 2 0 0 3 20 120 Tm (A) Tj 1 0 0 -1 20 100 Tm (A) Tj "
      "0.5 0 0.3 1 90 100 Tm (AB) Tj ET\n"
      "BT /F 8 Tf 1 0 0 rg 0 0 1 RG 20 80 Td 0 Tr (A) Tj 1 Tr (B) Tj 2 Tr (C) Tj 3 Tr (D) Tj 0 Tr "
      "/X gs (E) Tj 1 Tr (F) Tj /Y gs (A) Tj 0 Tr (B) Tj ET\n"
      "BT /M 10 Tf 20 60 Td (ABg) Tj /N 10 Tf (AB) Tj /Odd 10 Tf (AB) Tj ET\n"
      "BT /V 10 Tf 150 250 Td <00010002000A> Tj /H 12 Tf 20 -100 Td <0001000200050009> Tj 1 Tc "
      "<00010002> Tj /U 10 Tf -60 0 Td <41420043> Tj <41> Tj ET\n"
      "BT /T 2 Tf 100 40 Td (ABC) Tj /S 1 Tf (AB) Tj /R 1 Tf (AB) Tj ET\n"
      "BT /F 10 Tf 20 20 Td (A) Tj 400 0 Td (B) Tj -400 400 Td (C) Tj ET",
      kFonts + "/ExtGState<</X<</ca 0>>/Y<</ca 0.5/CA 0>>>>");
  document.file().Stream(20, "", kToUnicode);
  EXPECT_TRUE(testing::IsAsExpected("pages/text.txt", document.Both()));
}

// What of a font's program tells characters, advances and style, where the font itself does not.
TEST(WholePages, OfTextInEmbeddedFonts) {
  const std::string simple = "/Type/Font/BaseFont/Boxes/Subtype";
  const std::string courier = "/Type/Font/BaseFont/Courier/Subtype";
  const std::string composite =
      "/Type/Font/Subtype/Type0/BaseFont/C/Encoding/Identity-H/DescendantFonts[<</BaseFont/C"
      "/Subtype";
  const std::string letters = "(ABC\\351) Tj ";
  const std::string numbers = "<00000001000200030041> Tj ";
  const std::string names = "/Encoding<</Differences[65/g1/g2/uni0416]>>";
  std::string type1 = testing::Type1ProgramText({"A", "B", "C"});
  const std::string info = "/FontInfo 1 dict dup begin\n";
  type1.replace(type1.find(info), info.size(),
                "/FontInfo 3 dict dup begin\n/Weight (Bold) readonly def\n/ItalicAngle -12 def\n");

  struct Row {
    std::string font;
    std::string text;
  };

  const std::vector<Row> rows = {
      {simple + "/Type1/FontDescriptor 20 0 R", letters},
      {simple + "/Type1/FontDescriptor 20 0 R" + names, letters},
      {simple + "/Type1/FontDescriptor 20 0 R/FirstChar 66/Widths[333]", letters},
      {simple + "/Type1/FontDescriptor 22 0 R", letters},
      {simple + "/Type1/FontDescriptor 22 0 R/Encoding/WinAnsiEncoding", letters},
      {simple + "/TrueType/FontDescriptor 24 0 R", letters},
      {simple + "/TrueType/FontDescriptor 24 0 R/Encoding/WinAnsiEncoding", letters},
      {courier + "/TrueType/FontDescriptor 28 0 R", letters},
      {courier + "/TrueType/FontDescriptor 30 0 R", letters},
      {composite + "/CIDFontType0/FontDescriptor 26 0 R>>]", numbers},
      {composite + "/CIDFontType2/DW 700/FontDescriptor 24 0 R>>]", numbers},
      {composite + "/CIDFontType2/DW 700/CIDToGIDMap 32 0 R/FontDescriptor 24 0 R>>]", numbers},
      {composite + "/CIDFontType0/FontDescriptor 20 0 R>>]/ToUnicode 33 0 R", numbers},
  };
  std::string fonts = "/Font<<";
  std::string content;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::string name = "/F" + std::to_string(i);
    fonts += name + "<<" + rows[i].font + ">>";
    content +=
        "BT " + name + " 10 Tf 20 " + std::to_string(280 - 20 * i) + " Td " + rows[i].text + "ET\n";
  }
  OnePageDocument document(content, fonts + ">>");
  document.file()
      .Object(20, "<</Flags 4/FontFile3 21 0 R>>")
      .Stream(21, "/Subtype/Type1C", testing::CffProgram({"A", "B", "eacute", "g5"}))
      .Object(22, "<</Flags 32/FontFile 23 0 R>>")
      .Stream(23, "", type1)
      .Object(24, "<</Flags 4/FontFile2 25 0 R>>")
      .Stream(25, "", testing::TestFont().Bytes())
      .Object(26, "<</Flags 4/FontFile3 27 0 R>>")
      .Stream(27, "/Subtype/CIDFontType0C", testing::CidProgram({2, 1, 65}))
      .Object(28, "<</Flags 4/FontFile2 29 0 R>>")
      .Stream(29, "", "no program")
      .Object(30, "<</Flags 4/FontFile2 31 0 R>>")
      .Stream(31, "/Filter/ASCIIHexDecode", "zz")
      .Stream(32, "", std::string("\0\0\0\1\0\1\0\2", 8))
      .Stream(33, "", kToUnicode);
  EXPECT_TRUE(testing::IsAsExpected("pages/embedded_fonts.txt", document.Both()));
}

TEST(WholePages, OfMarkedText) {
  OnePageDocument document(
      "/P<</MCID 3>>BDC BT /F 10 Tf 20 250 Td (AB) Tj ET EMC /Span<</ActualText(xyz)>>BDC BT /F 10 "
      "Tf 20 200 Td (ABC) Tj ET EMC\n"
      "/P<</MCID 0>>BDC /Span<</ActualText<FEFF00E4D83DDE00>>>BDC BT /F 10 Tf 20 180 Td (AB) Tj ET "
      "EMC BT /F 10 Tf 60 180 Td (C) Tj ET EMC EMC\n"
      "/Span<</ActualText()>>BDC BT /F 10 Tf 20 160 Td (AB) Tj ET EMC\n"
      "/Span<</ActualText(two lines)>>BDC BT /F 10 Tf 20 140 Td (A) Tj 0 -12 Td (B) Tj ET EMC\n"
      "/Span<</ActualText(back)>>BDC BT /F 10 Tf 60 110 Td (A) Tj -30 0 Td (B) Tj ET EMC\n"
      "/Span/Own BDC BT /F 10 Tf 20 90 Td (A) Tj ET EMC /Q<</MCID -4>>BDC /I Do EMC\n"
      "/P<</MCID 9>>BDC /Fm Do 1 0 0 1 40 40 cm /I Do EMC /P BMC BT /F 9 Tf 9 9 Td (A) Tj ET EMC",
      kFonts + "/Properties<</Own<</MCID 7/ActualText(own)>>>>/XObject<</Fm 21 0 R/I 22 0 R>>");
  document.file()
      .Stream(20, "", kToUnicode)
      .Stream(
          21, "/Type/XObject/Subtype/Form/BBox[0 0 90 90]/Resources<<" + kFonts + ">>",
          "/P<</MCID 5>>BDC BT /F 10 Tf 5 60 Td (A) Tj ET 0 0 20 20 re f /Span<</ActualText(q)>>"
          "BDC BT /F 10 Tf 5 50 Td (AB) Tj ET EMC EMC")
      .Stream(22,
              "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace"
              "/DeviceGray",
              "x");
  EXPECT_TRUE(testing::IsAsExpected("pages/marked.txt", document.Both()));
}

TEST(WholePages, OfPaths) {
  OnePageDocument document(
      "10 10 50 20 re f 10 40 50 2.9 re f 10 50 3 40 re f 10 100 3.2 40 re f 10 10 50 20 re S\n"
      "2 w 20 150 m 60 150 l S 20 150 m 60 190 l S 60 150 m 20 190 l S 20 200 m 60 200 l 60 240 l "
      "S\n"
      "20 200 m 60 200 l 60 240 l h S 20 200 m 60 200 l 60 240 l 20 240 l h f\n"
      "20 200 m 60 200 l 60 240 l 20 240 l f 20 200 m 60 200 l 60.05 240 l 20 240.05 l h f\n"
      "20 200 m 60 200 l 60.5 240 l 20 240 l h f 20 200 m 60 200 70 210 60 240 c f\n"
      "100 100 50 50 re 110 110 20 20 re f* 100 100 50 50 re 110 110 20 20 re f\n"
      "100 100 50 50 re 130 110 m 110 110 l 110 130 l 130 130 l h f\n"
      "100 100 50 50 re 110 110 20 20 re B* 100 100 50 50 re 110 110 30 30 re 115 115 9 9 re f*\n"
      "100 100 50 50 re 105 105 9 9 re 130 130 9 9 re f* 100 100 50 50 re 100 110 20 20 re f*\n"
      "q 2 0 0 3 0 0 cm 4 w 10 60 20 20 re S 1 0 0 RG 0 1 0 rg 10 60 20 20 re B Q\n"
      "q 0.7 0.7 -0.7 0.7 100 200 cm 0 0 20 20 re f 0 0 m 20 0 l S Q\n"
      "q 0 0 100 100 re W n 50 50 100 100 re f 90 90 m 150 150 l S 90 50 m 150 50 l S 110 110 20 "
      "20 "
      "re f Q\n"
      "/Pattern cs /P scn 10 10 20 20 re f /Sh sh 0 0 0 rg 5 5 m 5 5 l S 7 7 m f 8 8 m 9 8 l 8 8 l "
      "S\n"
      "300 300 20 20 re f /Fm Do",
      "/Pattern<</P<</PatternType 2/Shading 20 0 R>>>>/Shading<</Sh 20 0 R>>/XObject<</Fm 21 0 "
      "R>>");
  document.file()
      .Object(20,
              "<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 9 9]/Function<</FunctionType 2"
              "/Domain[0 1]/N 1>>>>")
      .Stream(21, "/Type/XObject/Subtype/Form/BBox[0 0 50 50]/Matrix[1 0 0 1 100 200]",
              "10 10 60 20 re f");
  EXPECT_TRUE(testing::IsAsExpected("pages/paths.txt", document.Both()));
}

// What lies over text hides it, if it is opaque and covers all of it.
TEST(WholePages, OfCoveredText) {
  std::string content;
  int count = 0;
  const auto cover = [&](const std::string& how) {
    content += "q 1 0 0 1 0 " + std::to_string(200 * count++) +
               " cm BT /F 10 Tf 20 100 Td (AB) Tj ET q " + how + " Q Q\n";
  };
  cover("20 99 11 9 re f");
  cover("22 99 11 9 re f");
  cover("20.9 101.1 9 4 re f");
  cover("21.1 101.1 9 4 re f");
  cover("/X gs 10 90 50 50 re f");
  cover("/B gs 10 90 50 50 re f");
  cover("/C gs 10 90 50 50 re f");
  cover("/G gs 10 90 50 50 re f");
  cover("10 90 50 50 re S");
  cover("0 0 22 200 re W n 10 90 50 50 re f");
  cover("0 0 m 90 0 l 90 200 l h W n 10 90 50 50 re f");
  cover("50 0 0 50 10 90 cm /I Do");
  cover("0 50 -50 0 60 90 cm /I Do");
  cover("40 40 -40 40 30 60 cm /I Do");
  cover("50 0 0 50 10 90 cm /J Do");
  cover("50 0 0 50 10 90 cm /K Do");
  cover("50 0 0 50 10 90 cm /L Do");
  cover("50 0 0 50 10 90 cm BI/W 1/H 1/BPC 8/CS/G ID x EI");
  cover("/Fm Do");
  cover("50 0 0 50 10 90 cm /N Do");
  cover("20.99 100.99 9.02 4.02 re f");
  cover("21.01 100.99 9 4.02 re f");
  cover("20.99 100.99 9 4.02 re f");
  cover("20.99 101.01 9.02 4 re f");
  cover("20.99 100.99 9.02 4 re f");
  const std::string image = "/Type/XObject/Subtype/Image/Width 1/Height 1";
  OnePageDocument document(
      content,
      kFonts +
          "/XObject<</I 21 0 R/J 22 0 R/K 23 0 R/L 24 0 R/N 26 0 R/Fm 25 0 R>>/ExtGState<</X<</ca "
          "0.9>>"
          "/B<</BM/Multiply>>/C<</BM/Normal>>/G<</SMask<</S/Alpha/G 25 0 R>>>>>>",
      "/MediaBox[0 0 200 5000]");
  const std::string gray = "/BitsPerComponent 8/ColorSpace/DeviceGray";
  document.file()
      .Stream(20, "", kToUnicode)
      .Stream(21, image + gray, "x")
      .Stream(22, image + gray + "/SMask 21 0 R", "x")
      .Stream(23, image + gray + "/Mask[0 0]", "x")
      .Stream(24, image + "/ImageMask true/BitsPerComponent 1", "x")
      .Stream(26, image + gray + "/SMaskInData 1", "x")
      .Stream(25, "/Type/XObject/Subtype/Form/BBox[0 0 200 5000]/Group<</S/Transparency>>",
              "10 90 50 50 re f");
  EXPECT_TRUE(testing::IsAsExpected("pages/covered.txt", document.Both()));
}

TEST(WholePages, OfColors) {
  std::string content;
  std::string spaces;
  int next = 0;
  const auto paint = [&](const std::string& space, const std::string& values) {
    const std::string name = "/C" + std::to_string(next++);
    spaces += name + space;
    content += name + " cs " + values + " scn 10 10 20 20 re f\n";
  };
  const std::string tint = "<</FunctionType 2/Domain[0 1]/C0[1 1 1]/C1[0 0.5 0.2]/N 1>>";
  for (const char* operators :
       {"0.25 g", "0.1 0.5 0.9 rg", "0.1 0.2 0.3 0.4 k", "0 0 0 0.5 k", "0 0 0 1 k", "1 0 0 0 k",
        "/DeviceCMYK cs", "/DeviceRGB cs", "/DeviceGray cs 2 sc", "/DeviceGray cs -1 sc"}) {
    content += std::string(operators) + " 10 10 20 20 re f\n";
  }
  paint("[/CalGray<</WhitePoint[0.95 1 1.09]/Gamma 2.2>>]", "0.5");
  paint("[/CalRGB<</WhitePoint[0.95 1 1.09]/Gamma[1.8 1.8 1.8]>>]", "0.2 0.4 0.6");
  paint("[/Lab<</WhitePoint[0.95 1 1.09]/Range[-100 100 -100 100]>>]", "60 40 -30");
  paint("[/ICCBased 20 0 R]", "0.2 0.4 0.6");
  paint("[/Indexed/DeviceRGB 2<FF000000FF000000FF>]", "1");
  paint("[/Indexed/DeviceRGB 2<FF000000FF000000FF>]", "9");
  paint("[/Indexed/DeviceRGB 2<FF000000FF000000FF>]", "");
  paint("[/Separation/Spot/DeviceRGB" + tint + "]", "0.5");
  paint("[/Separation/Spot/DeviceRGB" + tint + "]", "");
  paint("[/Separation/Spot/DeviceRGB(none)]", "0.25");
  paint("[/DeviceN[/A/B]/DeviceRGB 21 0 R]", "0.5 0.25");
  paint("[/DeviceN[/A/B]/DeviceCMYK 22 0 R]", "0.5 0.25");
  paint("[/DeviceN[/A/B]/DeviceRGB(none)]", "0.5 0.25");
  paint(
      "[/Separation/Spot/DeviceCMYK<</FunctionType 2/Domain[0 1]/C0[0 0 0 0]/C1[0 0 0 0.5]/N 1>>]",
      "1");
  paint("[/Separation/Spot/Lab" + tint + "]", "0.5");
  paint("/Odd", "0.5");
  OnePageDocument document(content, "/ColorSpace<<" + spaces + ">>");
  document.file()
      .Stream(20, "/N 3/Alternate/DeviceRGB", "no profile")
      .Stream(21, "/FunctionType 4/Domain[0 1 0 1]/Range[0 1 0 1 0 1]", "{0.75}")
      .Stream(22, "/FunctionType 4/Domain[0 1 0 1]/Range[0 1 0 1 0 1 0 1]", "{exch 0 0.5}");
  EXPECT_TRUE(testing::IsAsExpected("pages/colors.txt", document.Model()));
}

TEST(WholePages, AreAsTheyAreSeen) {
  std::string text;
  for (const char* entries :
       {"/MediaBox[0 0 200 300]", "/MediaBox[10 20 210 320]", "/MediaBox[0 0 200 300]/Rotate 90",
        "/MediaBox[0 0 200 300]/Rotate 180", "/MediaBox[0 0 200 300]/Rotate 270",
        "/MediaBox[0 0 200 300]/Rotate -90", "/MediaBox[0 0 200 300]/CropBox[20 30 150 290]",
        "/MediaBox[0 0 200 300]/UserUnit 2",
        "/MediaBox[200 300 0 0]/Rotate 90/CropBox[20 30 150 290]",
        "/MediaBox[0 0 200 300]/Annots[<</Subtype/Square/Rect[50 50 90 80]/AP<</N 21 0 R>>>>]"}) {
    OnePageDocument document(
        "BT /F 10 Tf 40 100 Td (AB) Tj ET 40 50 30 20 re f q 30 0 0 40 50 150 cm BI/W 1/H 1/BPC 8"
        "/CS/G ID x EI Q",
        kFonts, entries);
    document.file()
        .Stream(20, "", kToUnicode)
        .Stream(21, "/Type/XObject/Subtype/Form/BBox[0 0 20 20]", "5 5 10 10 re f");
    text += std::string(entries) + "\n" + document.Model() + "with little room\n" +
            document.Model(PageReader::Parts::kContent, {.width = 100, .height = 120});
  }
  EXPECT_TRUE(testing::IsAsExpected("pages/seen.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
