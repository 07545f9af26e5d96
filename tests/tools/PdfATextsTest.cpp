// Documents that are converted to PDF/A where only one font is installed, whole.
#include <regex>

#include "support/CompactText.h"
#include "support/Expected.h"
#include "support/QpdfDocument.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TestFont.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

class PdfATexts : public CliTest {
 protected:
  PdfATexts() {
    WriteBytes(fonts_.Path("a.ttf"), TestFont{.family = "Boxes"}.Bytes());
    setup_.environment["FONTCONFIG_FILE"] = FontConfiguration(fonts_);
  }

  // What the run says, and what it has written.
  std::string Converted(RawPdf file, const std::string& level) {
    WriteBytes(Path("doc.pdf"), file.Table("/Root 1 0 R"));
    const auto result =
        Run({"pdfa", "-v", "--level", level, "--name", "out.pdf", "doc.pdf"}, setup_);
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
    return "== " + level + "\n" + result.err + WithoutPrograms(OnLines(PdfText(Path("out.pdf"))));
  }

  // What a subset of a font is like byte by byte is up to the library that makes it.
  static std::string WithoutPrograms(const std::string& text) {
    const std::string without = std::regex_replace(
        text, std::regex("\"/Length1\": [0-9]+\\}\n[0-9]+ bytes, checksum [0-9a-f]+"), "PROGRAM");
    return std::regex_replace(without, std::regex("/[A-Z]{6}\\+"), "/TAG+");
  }

  TempDir fonts_;
  RunSetup setup_;
};

// Fields of all kinds without appearances, whose texts are boxes.
RawPdf Fields() {
  const char* const fields[] = {
      "/Widget/FT/Tx/V(A AA)",
      "/Widget/FT/Tx/V(AA)/Q 1/DA(/TiRo 8 Tf .5 g)/MK<</BC[1 0 0]/BG[0 1 0]>>/BS<</W 2/S/D>>",
      "/Widget/FT/Tx/V(AA)/Q 2/DA(/Cour 0 Tf 0 1 0 rg)/MK<</R 90/BC[0 0 1]>>/BS<</S/U>>",
      "/Widget/FT/Tx/Ff 4096/V(A AA AAA AAAA AAAAA A AA)/DA(/Own 9 Tf)",
      "/Widget/FT/Tx/Ff 4096/V(A\\rAA\\nAAA\\r\\nAAAA)",
      "/Widget/FT/Tx/Ff 16777216/MaxLen 5/V(AAA)/DA(/Helv 10 Tf 0 0 0 1 k)",
      "/Widget/FT/Tx/Ff 16777216/MaxLen 2/V(AAA)",
      "/Widget/FT/Tx/Ff 8192/V(AA)",
      "/Widget/FT/Tx/V(A\\rB)",
      "/Widget/FT/Tx/V()/MK<</BG[.9]>>",
      "/Widget/FT/Ch/Ff 131072/Opt[[(1)(A)][(2)(AA)]]/V(2)",
      "/Widget/FT/Ch/Opt[(A)(AA)(AAA)]/V[(AA)(AAA)]/TI 1",
      "/Widget/FT/Ch/Opt[(A)[(x)(AA)]]/V(x)/DA(/Helv 6 Tf)",
      "/Widget/FT/Ch/Ff 131072/V(AAA)",
      "/Widget/FT/Btn/Ff 65536/MK<</CA(AA)/BC[0]/BG[1]>>",
      "/Widget/FT/Btn/Ff 65536",
      "/Widget/FT/Sig",
      "/FreeText/Contents(A AAA AAAAAA AAAAAAAAA AAAAAAAAAAAA)/DA(/Helv 7 Tf 1 0 0 rg)/C[1 1 0]",
      "/FreeText/Contents(A)/DA(0 g)/Q 2/CA .5/Border[0 0 0]",
      "/FreeText/Contents(AA)/DA(/HeBo 20 Tf)/BS<</W 3/S/D>>/CA .25"};
  RawPdf file;
  std::string annotations;
  int number = 10;
  for (const char* field : fields) {
    const int x = 10 + 100 * ((number - 10) % 4);
    const int y = 10 + 50 * ((number - 10) / 4);
    file.Object(number, "<</Type/Annot/T(a)/F 4/Rect[" + std::to_string(x) + " " +
                            std::to_string(y) + " " + std::to_string(x + 90) + " " +
                            std::to_string(y + 30) + "]/Subtype" + field + ">>");
    annotations += " " + std::to_string(number++) + " 0 R";
  }
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[" + annotations +
                     "]/DA(/Helv 0 Tf 0 0 1 rg)/Q 0/DR<</Font<</Own 4 0 R>>>>>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 420 320]/Annots[" + annotations + "]>>");
  return file.Object(4, "<</Type/Font/Subtype/Type1/BaseFont/Times-Bold>>");
}

TEST_F(PdfATexts, ShowTheTextOfFields) {
  EXPECT_TRUE(IsAsExpected("pdfa/whole/fields-1b.txt", Converted(Fields(), "1b")));
  EXPECT_TRUE(IsAsExpected("pdfa/whole/fields-2u.txt", Converted(Fields(), "2u")));
}

// Text in fonts that are not embedded: by names, encodings, collections and numbers of glyphs.
RawPdf Fonts() {
  const char* const fonts[] = {
      "/Subtype/Type1/BaseFont/Helvetica",
      "/Subtype/Type1/BaseFont/ABCDEF+TimesNewRomanPS-BoldItalicMT/FirstChar 65/LastChar "
      "65/Widths[700]",
      "/Subtype/TrueType/BaseFont/Courier,Bold/Encoding/WinAnsiEncoding/FirstChar 32/LastChar "
      "66/Widths"
      "[600]/FontDescriptor<</FontName/Courier/Flags 33/MissingWidth 600>>",
      "/Subtype/TrueType/BaseFont/Unheard/Encoding<</Differences[65/A/B 33/A]>>/FontDescriptor<<"
      "/FontName/Unheard/Flags 98>>",
      "/Subtype/Type0/BaseFont/Wide/Encoding/Identity-H/DescendantFonts[<</Type/Font/Subtype"
      "/CIDFontType2/BaseFont/Wide/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement "
      "0>>"
      "/DW 500/W[16706[450]]>>]",
      "/Subtype/Type0/BaseFont/Tall/Encoding/UniJIS-UCS2-V/DescendantFonts[<</Type/Font/Subtype"
      "/CIDFontType0/BaseFont/Tall/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)/Supplement "
      "2>>/DW "
      "500>>]"};
  RawPdf file;
  std::string names;
  std::string content;
  int number = 10;
  for (const char* font : fonts) {
    const std::string name = "F" + std::to_string(number);
    file.Object(number, "<</Type/Font" + std::string(font) + ">>");
    names += "/" + name + " " + std::to_string(number) + " 0 R";
    content += "BT /" + name + " 12 Tf 10 " + std::to_string(20 * (number - 9)) +
               " Td (AB) Tj <0041> Tj <0001> Tj ET\n";
    ++number;
  }
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[]/DR<</Font<</Helv 10 0 R>>>>>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents 4 0 R/Resources<</Font<<" +
                  names + ">>>>>>");
  return file.Stream(4, "", content);
}

TEST_F(PdfATexts, HaveTheirFontsReplaced) {
  EXPECT_TRUE(IsAsExpected("pdfa/whole/fonts-1a.txt", Converted(Fonts(), "1a")));
  EXPECT_TRUE(IsAsExpected("pdfa/whole/fonts-2u.txt", Converted(Fonts(), "2u")));
}

// By their names, their styles, and what their descriptors say.
TEST_F(PdfATexts, HaveFontsReplacedByOnesThatAreAlike) {
  int number = 0;
  for (const char* family :
       {"Arial", "Times New Roman", "Courier New", "Own", "Symbol", "D050000L"}) {
    for (const char* style : {"Regular", "Bold", "Italic", "Bold Italic"}) {
      WriteBytes(fonts_.Path(std::to_string(++number) + ".ttf"),
                 TestFont{.family = family, .style = style}.Bytes());
    }
  }
  const std::pair<const char*, int> names[] = {{"Helvetica", 32},
                                               {"Helvetica-Bold", 32},
                                               {"Helvetica-Oblique", 32},
                                               {"Helvetica-BoldOblique", 32},
                                               {"Arial", 32},
                                               {"ArialMT", 32},
                                               {"Arial-BoldMT", 32},
                                               {"Arial,Italic", 32},
                                               {"ABCDEF+Arial-BoldItalicMT", 32},
                                               {"TimesNewRoman", 32},
                                               {"TimesNewRomanPSMT", 32},
                                               {"TimesNewRomanPS-BoldMT", 32},
                                               {"TimesNewRoman,BoldItalic", 32},
                                               {"Times-Roman", 32},
                                               {"Times-BoldItalic", 32},
                                               {"CourierNew", 32},
                                               {"CourierNewPS-ItalicMT", 32},
                                               {"Courier", 32},
                                               {"Courier-BoldOblique", 32},
                                               {"Symbol", 4},
                                               {"SymbolMT", 4},
                                               {"ZapfDingbats", 4},
                                               {"Own", 32},
                                               {"Own-Bold", 32},
                                               {"Own,Oblique", 32},
                                               {"Unheard", 32},
                                               {"Unheard", 33},
                                               {"Unheard", 34},
                                               {"Unheard", 35},
                                               {"Unheard", 96},
                                               {"Unheard", 262176},
                                               {"Unheard", 262240},
                                               {"Unheard-Black", 34},
                                               {"Unheard-Heavy", 33},
                                               {"Unheard-Italic", 34},
                                               {"MT", 32},
                                               {"PS", 33},
                                               {"", 32}};
  RawPdf file;
  std::string fonts;
  std::string content;
  number = 10;
  for (const auto& [name, flags] : names) {
    const std::string base_font = *name != '\0' ? std::string("/BaseFont/") + name : "";
    file.Object(number, "<</Type/Font/Subtype/TrueType" + base_font +
                            "/FirstChar 65/LastChar 65/Widths[400]/ToUnicode 5 0 R/FontDescriptor<<"
                            "/Type/FontDescriptor/FontName/X/Flags " +
                            std::to_string(flags) + ">>>>");
    fonts += "/F" + std::to_string(number) + " " + std::to_string(number) + " 0 R";
    content += "BT /F" + std::to_string(number) + " 9 Tf (A) Tj ET\n";
    ++number;
  }
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents 4 0 R/Resources<</Font<<" +
                  fonts + ">>>>>>");
  file.Stream(4, "", content);
  file.Stream(5, "",
              "1 begincodespacerange<00><FF>endcodespacerange 1 beginbfchar<41><0041>endbfchar");
  Converted(file, "2b");
  const QpdfDocument written(Path("out.pdf"));
  const auto page = written.Follow(written.Page(1));
  std::string text;
  number = 10;
  for (const auto& [name, flags] : names) {
    const auto font = written.Follow(page["/Resources"]["/Font"]["/F" + std::to_string(number++)]);
    const std::string face = font["/BaseFont"].get<std::string>();
    text += std::string(name) + " " + std::to_string(flags) + ": " +
            face.substr(face.find('+') + 1) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("pdfa/whole/faces.txt", text));
}

// Characters of a collection are looked for in faces of its language.
TEST_F(PdfATexts, HaveFontsReplacedByOnesOfTheirLanguage) {
  const std::pair<const char*, const char*> collections[] = {{"GB1", "UniGB-UCS2-H"},
                                                             {"CNS1", "UniCNS-UCS2-H"},
                                                             {"Japan1", "UniJIS-UCS2-H"},
                                                             {"Korea1", "UniKS-UCS2-H"},
                                                             {"KR", "UniKS-UCS2-H"}};
  std::string rules;
  for (const auto& [language, family] :
       {std::pair("zh-cn", "Simple"), std::pair("zh-tw", "Complex"), std::pair("ja", "Kana"),
        std::pair("ko", "Hangul")}) {
    WriteBytes(fonts_.Path(std::string(family) + ".ttf"), TestFont{.family = family}.Bytes());
    rules += std::string("<match><test name='lang'><string>") + language +
             "</string></test><edit name='family' mode='prepend' binding='strong'><string>" +
             family + "</string></edit></match>";
  }
  std::string configuration = ReadBytes(setup_.environment["FONTCONFIG_FILE"]);
  configuration.insert(configuration.rfind("</fontconfig>"), rules);
  setup_.environment["FONTCONFIG_FILE"] = WriteBytes(fonts_.Path("languages.conf"), configuration);
  RawPdf file;
  std::string fonts;
  std::string content;
  int number = 10;
  for (const auto& [ordering, encoding] : collections) {
    file.Object(number, std::string("<</Type/Font/Subtype/Type0/BaseFont/Unheard/Encoding/") +
                            encoding +
                            "/DescendantFonts[<</Type/Font/Subtype/CIDFontType0/BaseFont"
                            "/Unheard/DW 400/CIDSystemInfo<</Registry(Adobe)/Ordering(" +
                            ordering + ")/Supplement 0>>>>]>>");
    fonts += "/F" + std::to_string(number) + " " + std::to_string(number) + " 0 R";
    content += "BT /F" + std::to_string(number++) + " 9 Tf <0041> Tj ET\n";
  }
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents 4 0 R/Resources<</Font<<" +
                  fonts + ">>>>>>");
  file.Stream(4, "", content);
  Converted(file, "2b");
  const QpdfDocument written(Path("out.pdf"));
  const auto page = written.Follow(written.Page(1));
  std::string text;
  for (number = 10; number < 15; ++number) {
    const auto font = written.Follow(page["/Resources"]["/Font"]["/F" + std::to_string(number)]);
    const std::string face = font["/BaseFont"].get<std::string>();
    text += face.substr(face.find('+') + 1) + " ";
  }
  EXPECT_EQ(text, "Simple-Regular Complex-Regular Kana-Regular Hangul-Regular Hangul-Regular ");
}

TEST_F(PdfATexts, NameTheFontsThatNobodyHas) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 200]/Contents 4 0 R/Resources<</Font<<"
              "/F 5 0 R/G 6 0 R>>>>>>");
  file.Stream(4, "", "BT /F 12 Tf (AB) Tj /G 12 Tf (AB) Tj ET");
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Symbol>>");
  file.Object(6, "<</Type/Font/Subtype/Type1/BaseFont/ZapfDingbats>>");
  WriteBytes(Path("doc.pdf"), file.Table("/Root 1 0 R"));
  std::string text;
  for (const char* level : {"1b", "2u", "3a"}) {
    const auto result = Run({"pdfa", "-v", "--level", level, "doc.pdf"}, setup_);
    EXPECT_NE(result.status, 0);
    text += std::string(level) + "\n" + result.err;
  }
  EXPECT_TRUE(IsAsExpected("pdfa/whole/fonts-missing.txt", text));
}

}  // namespace
}  // namespace TarnixTools::testing
