// What becomes of fonts that are embedded, whole.
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/StepText.h"
#include "engines/pdfa/convert/fonts/Fonts.h"
#include "engines/pdfa/convert/structure/OwnObjects.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "pdf/write/RewriteFixture.h"
#include "support/TempDir.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;
using testing::RawPdf;

using FontTextsTest = StepTextTest;

// Objects from 20 on, which show what the font has, and the programs 10 to 13.
class FontFile {
 public:
  FontFile() {
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</DR<</Font<</F20 20 0 R>>>>>>>>");
    file_.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file_.Stream(10, "/Length1 9", testing::TestFont().Bytes());
    file_.Stream(11, "", testing::Type1ProgramText({"A", "B"}));
    file_.Stream(12, "/Subtype/CIDFontType0C", testing::CidProgram({1, 65}));
    file_.Stream(13, "/Subtype/Type1C", testing::CffProgram({"A", "B"}));
    file_.Stream(14, "", "no program");
  }

  // The text is what is between BT and ET behind the font.
  void Add(const std::string& font, const std::string& text) {
    const std::string name = "F" + std::to_string(number_);
    fonts_ += "/" + name + " " + std::to_string(number_) + " 0 R";
    content_ += "BT /" + name + " 9 Tf " + text + " ET\n";
    file_.Object(number_++, "<</Type/Font" + font + ">>");
  }

  std::string AddObject(const std::string& body) {
    file_.Object(next_, body);
    return " " + std::to_string(next_++) + " 0 R";
  }

  std::string AddStream(const std::string& data) {
    file_.Stream(next_, "", data);
    return " " + std::to_string(next_++) + " 0 R";
  }

  RawPdf Take() {
    file_.Object(3,
                 "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 4 0 R/Resources<<"
                 "/Font<<" +
                     fonts_ + ">>>>>>");
    return file_.Stream(4, "", content_);
  }

 private:
  RawPdf file_;
  std::string fonts_;
  std::string content_;
  int number_ = 20;
  int next_ = 60;
};

std::string Descriptor(const std::string& name, int flags, const std::string& program) {
  return "<</Type/FontDescriptor/FontName/" + name + "/Flags " + std::to_string(flags) +
         "/FontBBox[0 0 1000 1000]/ItalicAngle 0/Ascent 900/Descent -200/CapHeight 700/StemV 80/" +
         program + ">>";
}

RawPdf SimpleFonts() {
  FontFile file;
  const std::string codes = "/FirstChar 65/LastChar 66/Widths[400 250]";
  const std::string true_type = "/Subtype/TrueType/BaseFont/";
  const auto program = [&](const std::string& name, int flags, const std::string& entry) {
    return "/FontDescriptor" + file.AddObject(Descriptor(name, flags, entry));
  };
  file.Add(true_type + "Plain" + codes + "/Encoding/WinAnsiEncoding" +
               program("Plain", 32, "FontFile2 10 0 R"),
           "(A) Tj");
  file.Add(true_type + "ABCDEF+Lost" + codes + "/Encoding/WinAnsiEncoding" +
               program("ABCDEF+Lost", 32, "FontFile2 10 0 R"),
           "(AB) Tj");
  const std::string copy = file.AddStream(testing::TestFont().Bytes());
  file.Add(true_type + "Wide/FirstChar 65/LastChar 65/Widths[412]/Encoding/MacRomanEncoding" +
               program("Wide", 32, "FontFile2" + copy),
           "(A) Tj");
  const std::string second = file.AddStream(testing::TestFont().Bytes());
  file.Add(true_type + "Odd" + codes + "/Encoding<</Differences[66/A]>>" +
               program("Odd", 36, "FontFile2" + second),
           "(B) Tj");
  const std::string third = file.AddStream(testing::TestFont().Bytes());
  file.Add(true_type + "Symbols" + codes + program("Symbols", 4, "FontFile2" + third), "(AC) Tj");
  const std::string type1 = "/Subtype/Type1/BaseFont/";
  file.Add(type1 + "ABCDEF+Boxes/FirstChar 65/LastChar 66/Widths[100 200]" +
               program("ABCDEF+Boxes", 32, "FontFile 11 0 R/CharSet(/A)"),
           "(A) Tj");
  file.Add(type1 +
               "Boxes/FirstChar 65/LastChar 66/Widths[100 200]/Encoding<</Differences[65/B/none"
               "]>>" +
               program("Boxes", 4, "FontFile3 13 0 R"),
           "(AB) Tj");
  file.Add(type1 + "Broken/FirstChar 65/LastChar 65/Widths[100]" +
               program("Broken", 4, "FontFile 14 0 R"),
           "(A) Tj");
  file.Add(type1 + "Unseen", "3 Tr (A) Tj");
  const std::string unicode = file.AddStream(
      "1 begincodespacerange<00><FF>endcodespacerange 2 beginbfchar<41><0061><42><FEFF>endbfchar");
  file.Add(type1 + "Told/FirstChar 65/LastChar 66/Widths[100 200]/ToUnicode" + unicode +
               program("Told", 4, "FontFile 11 0 R"),
           "(AB) Tj");
  return file.Take();
}

TEST_F(FontTextsTest, AreSimpleOnes) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/fonts-simple.txt",
                           SurveyText(SimpleFonts(), {Level::k1b, Level::k2a}, &MendFonts)));
}

RawPdf CompositeFonts() {
  FontFile file;
  const std::string composite = "/Subtype/Type0/BaseFont/ABCDEF+Boxes/Encoding";
  const std::string of_adobe = "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";
  const auto descendant = [&](const std::string& entries, const std::string& program) {
    const std::string descriptor = file.AddObject(Descriptor("ABCDEF+Boxes", 4, program));
    return "/DescendantFonts[" +
           file.AddObject("<</Type/Font/BaseFont/ABCDEF+Boxes" + entries + "/FontDescriptor" +
                          descriptor + ">>") +
           "]";
  };
  const auto copy = [&] { return "FontFile2" + file.AddStream(testing::TestFont().Bytes()); };
  const std::string type2 = "/Subtype/CIDFontType2" + of_adobe;
  file.Add(composite + "/Identity-H" + descendant(type2 + "/DW 400", copy()), "<00010002> Tj");
  file.Add(composite + "/Identity-H" +
               descendant(type2 + "/DW 412/CIDToGIDMap/Identity", copy() + "/CIDSet 14 0 R"),
           "<0002> Tj");
  const std::string map = file.AddStream(std::string("\0\0\0\2\0\1\0\7\0\3\0\1", 12));
  file.Add(composite + "/Identity-V" + descendant(type2 + "/DW 400/CIDToGIDMap" + map, copy()),
           "<000100020003> Tj");
  file.Add(composite + "/Identity-H" +
               descendant("/Subtype/CIDFontType0/DW 100/W[65[200]]" + of_adobe, "FontFile3 12 0 R"),
           "<00010041> Tj <00> Tj");
  file.Add(composite + "/UniJIS-UTF16-H" +
               descendant("/Subtype/CIDFontType0/DW 100/CIDSystemInfo<</Registry(Adobe)/Ordering"
                          "(Japan1)/Supplement 2>>",
                          "FontFile3 12 0 R"),
           "<0041> Tj");
  const std::string nothing = file.AddStream("1 begincodespacerange<0000><FFFF>endcodespacerange");
  file.Add(composite + "/UniJIS-UTF16-H/ToUnicode" + nothing +
               descendant("/Subtype/CIDFontType0/DW 100/CIDSystemInfo<</Registry(Adobe)/Ordering"
                          "(Japan1)/Supplement 2>>",
                          "FontFile3 12 0 R"),
           "<0041> Tj");
  const std::string unicode = file.AddStream(
      "1 begincodespacerange<0000><FFFF>endcodespacerange 2 beginbfrange<0001><0002><E000>"
      "endbfrange");
  file.Add(composite + "/Identity-H/ToUnicode" + unicode +
               descendant(type2 + "/DW 400/CIDToGIDMap/Identity", copy()),
           "<00010002> Tj");
  return file.Take();
}

TEST_F(FontTextsTest, AreCompositeOnes) {
  EXPECT_TRUE(
      IsAsExpected("pdfa/convert/fonts-composite.txt",
                   SurveyText(CompositeFonts(), {Level::k1a, Level::k2b, Level::k2u}, &MendFonts)));
}

RawPdf DrawnFonts() {
  FontFile file;
  const std::string glyph = file.AddStream("9 0 d0 0 0 9 9 re f");
  const std::string type3 =
      "/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[.1 0 0 .1 0 0]/FirstChar 65/LastChar "
      "67/Widths[9 8 "
      "7.5]/Resources<<>>";
  file.Add(type3 + "/Encoding<</Differences[65/A/B]>>/CharProcs<</A" + glyph + ">>", "(ABC) Tj");
  file.Add(type3 + "/Encoding<</Differences[65/A/.notdef]>>/CharProcs<</A" + glyph + "/.notdef" +
               glyph + ">>",
           "(AB) Tj");
  file.Add(
      type3 + "/Encoding<</Differences[65/g1/g2]>>/CharProcs<</g1" + glyph + "/g2" + glyph + ">>",
      "(AB) Tj");
  file.Add(type3 + "/Encoding 70 0 R/CharProcs 71 0 R", "(A) Tj");
  RawPdf pdf = file.Take();
  pdf.Object(70, "<</Differences[65/A]>>").Object(71, "<</A" + glyph + ">>");
  return pdf;
}

TEST_F(FontTextsTest, AreDrawnOnes) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/fonts-drawn.txt",
                           SurveyText(DrawnFonts(), {Level::k1a, Level::k2u}, &MendFonts)));
}

// Widths that are not told, codes that are 0, characters that are none, and descendants in place.
RawPdf OddFonts() {
  FontFile file;
  const std::string glyph = file.AddStream("9 0 d0 0 0 9 9 re f");
  const std::string type3 =
      "/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[.1 0 0 .1 0 0]/FirstChar 65/LastChar 65"
      "/Widths[9]/Resources<<>>/Encoding<</Differences[0/A 65/A]>>/CharProcs<</A" +
      glyph + ">>";
  file.Add(type3, "(AB\\000) Tj");
  const std::string none = file.AddStream(
      "1 begincodespacerange<00><FF>endcodespacerange 4 beginbfchar<00><0061><41><0000><42><0001>"
      "<43><FFFE>endbfchar");
  file.Add(type3 + "/ToUnicode" + none, "(A\\000) Tj");
  const std::string type1 =
      "/Subtype/Type1/BaseFont/Boxes/FirstChar 65/LastChar 67/Widths[100 200 "
      "0]/FontDescriptor" +
      file.AddObject(Descriptor("Boxes", 4, "FontFile 11 0 R"));
  file.Add(type1 + "/ToUnicode" + none, "(ABC) Tj");
  const std::string nothing = file.AddStream("1 begincodespacerange<00><FF>endcodespacerange");
  file.Add(type1 + "/ToUnicode" + nothing + "/Encoding<</Differences[0/A 65/none/B/.notdef]>>",
           "(ABC\\000) Tj");
  const std::string descriptor =
      "/FontDescriptor" +
      file.AddObject(
          Descriptor("Boxes", 4, "FontFile2" + file.AddStream(testing::TestFont().Bytes())));
  file.Add(
      "/Subtype/Type0/BaseFont/Boxes/Encoding/Identity-H/DescendantFonts[<</Type/Font/BaseFont"
      "/Boxes/Subtype/CIDFontType2/DW 400" +
          descriptor + ">>]",
      "<0002> Tj");
  return file.Take();
}

TEST_F(FontTextsTest, AreOddOnes) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/fonts-odd.txt",
                           SurveyText(OddFonts(), {Level::k1a, Level::k2u}, &MendFonts)));
}

// Fonts, descriptors, shadings and spot colours in place, however deep, become objects of their own.
TEST_F(FontTextsTest, AreLiftedOutOfPlaces) {
  const std::string font = "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>";
  const std::string spot = "[/Separation/Gold/DeviceRGB<</FunctionType 2>>]";
  RawPdf file =
      OnePage("/Resources<</Font<</A " + font + "/B " + font +
              "/C<</Subtype/Type1>>/D<</BaseFont/X>>/E<</Type/Font/FontDescriptor<<"
              "/FontName/X/Flags 4>>>>>>/ColorSpace<</S" +
              spot +
              "/T[/Separation/Gold/DeviceRGB]/N[/DeviceN[/A]/DeviceRGB 4 0 R<<"
              "/Colorants<</A" +
              spot + ">>>>]/I[/Indexed" + spot +
              "1<0000>]>>/Shading<</H<</ShadingType 2>>>>/Pattern<</P<</PatternType 2"
              "/Shading<</ShadingType 3>>>>>>/Own<</A<</Subtype/Type0>>/B<</Subtype/MMType1>>/C<<"
              "/Subtype/TrueType>>/D<</Subtype/Type3>>/E<</Subtype/CIDFontType0>>/F<<"
              "/Subtype/CIDFontType2>>/G<</Subtype/Form>>/H<</Type/FontDescriptor>>/I[[" +
              spot + "]]>>>>");
  file.Object(4, "[" + spot + font + "<</FontName/X>><</Flags 4>>]");
  const auto document = testing::OpenBytes(file.Table());
  const auto written = WithOwnObjects(*document, pdf::PageTree(*document));
  ASSERT_NE(written, nullptr);
  DiskSource source(written);
  std::string bytes(source.Size(), '\0');
  bytes.resize(source.ReadAt(0, bytes.data(), bytes.size()));
  testing::WriteBytes(Path("out.pdf"), bytes);
  EXPECT_TRUE(IsAsExpected("pdfa/convert/own-objects.txt",
                           testing::OnLines(testing::PdfText(Path("out.pdf")))));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
