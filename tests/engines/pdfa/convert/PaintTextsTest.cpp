// What becomes of colours, images, transparency, layers' content and operators, whole.
#include <regex>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/StepText.h"
#include "engines/pdfa/convert/colors/Colors.h"
#include "engines/pdfa/convert/contents/Contents.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/images/Images.h"
#include "engines/pdfa/convert/structure/HiddenContent.h"
#include "engines/pdfa/convert/structure/Layers.h"
#include "engines/pdfa/convert/transparency/Flattening.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;
using testing::RawPdf;

using PaintTextsTest = StepTextTest;

constexpr const char* kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

// Inks in content, resources, groups, shadings, patterns, Type 3 fonts and images.
RawPdf ManyInks() {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/OutputIntents[<</S/GTS_PDFX>>]>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/Resources 10 0 R>>");
  file.Object(
      3,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 20 0 R/Group<</S/Transparency"
      "/CS/DeviceCMYK/I true>>>>");
  file.Object(
      4,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 20 0 R/Group 11 0 R/Resources<<"
      "/ColorSpace<</DefaultCMYK[/Lab<<>>]/C/DeviceRGB>>/XObject<</F 12 0 R>>>>>>");
  file.Object(5,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 20 0 R/Resources 10 0 R>>");
  file.Object(
      10,
      "<</XObject<</F 12 0 R/G 13 0 R/I 14 0 R>>/ColorSpace 15 0 R/Shading<</S 16 0 R/T 17 0 R"
      ">>/Pattern<</P 18 0 R/Q 19 0 R>>/Font<</T3 21 0 R>>>>");
  file.Object(11, "<</S/Transparency/CS/DeviceCMYK>>");
  file.Stream(12, std::string(kForm) + "/Group<</CS/DeviceCMYK/S/Transparency>>", "0 0 9 9 re f");
  file.Stream(13, std::string(kForm) + "/Resources<</ColorSpace<<>>>>/Group 11 0 R", "1 0 0 0 k");
  file.Stream(14, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceCMYK/BitsPerComponent 8",
              "xxxx");
  file.Object(
      15,
      "<</Gold 22 0 R/N 23 0 R/M 24 0 R/O 25 0 R/P[/DeviceN[/Cyan]/DeviceCMYK 26 0 R]/R 29 0 "
      "R/S 30 0 R>>");
  file.Object(29, "[/DeviceN[/Cyan/Gold]/DeviceCMYK 26 0 R<</Process/Odd/Own(x)/Colorants(y)>>]");
  file.Object(30,
              "[/DeviceN[/Violet/Gold]/DeviceRGB 26 0 R<</Process<</Components[/Violet]/ColorSpace"
              "/DeviceRGB>>>>]");
  file.Object(16, "<</ShadingType 2/ColorSpace/DeviceCMYK/Coords[0 0 1 1]/Function 26 0 R>>");
  file.Object(17, "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[0 0 1 1]/Function 26 0 R>>");
  file.Stream(18,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9/Resources<<>>",
              "1 0 0 0 k 0 0 9 9 re f");
  file.Object(19, "<</PatternType 2/Shading 16 0 R>>");
  file.Stream(20, "", "/F Do /G Do /I Do /S sh /T sh /Gold cs /N CS 0 0 9 9 re B");
  file.Object(21,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[1 0 0 1 0 0]/FirstChar 97"
              "/LastChar 97/Widths[9]/Encoding<</Differences[97/a]>>/CharProcs<</a 27 0 R>>"
              "/Resources<<>>>>");
  file.Object(22, "[/Separation/Gold/DeviceCMYK 26 0 R]");
  file.Object(23,
              "[/DeviceN[/Cyan/Gold/Silver/None/All/Silver]/DeviceCMYK 26 0 R<</Subtype/DeviceN"
              "/Process<</Components[/Cyan]/ColorSpace/DeviceCMYK>>>>]");
  file.Object(24, "[/DeviceN[/Gold/Red]/DeviceRGB 26 0 R<</Colorants 28 0 R>>]");
  file.Object(25,
              "[/DeviceN[/Magenta/Yellow/Black]/DeviceCMYK 26 0 R<</Process<</Components[/Magenta]"
              "/ColorSpace/DeviceRGB>>>>]");
  file.Object(26, "<</FunctionType 2/Domain[0 1]/C0[0 0 0 0]/C1[0 1 1 0]/N 1>>");
  file.Stream(27, "", "9 0 d0 0 1 0 0 k 0 0 9 9 re f");
  file.Object(28, "<</Red[/Separation/Red/DeviceRGB 26 0 R]>>");
  return file;
}

TEST_F(PaintTextsTest, HaveColorsThatAreKnown) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/colors.txt",
                           SurveyText(ManyInks(), {Level::k1b, Level::k2b}, &MendColors)));
}

// Each of these alone says that there are inks.
TEST_F(PaintTextsTest, KnowInksWhereverTheyAre) {
  std::string text;
  for (const char* content :
       {"1 g", "0 0 0 1 k", "0 0 0 1 K", "/DeviceCMYK cs", "/DeviceCMYK CS", "/DeviceRGB cs",
        "BI/W 1/H 1/BPC 8/CS/CMYK ID xxxx EI", "BI/W 1/H 1/BPC 8/ColorSpace/DeviceCMYK ID xxxx EI",
        "BI/W 1/H 1/BPC 8/CS/DeviceCMYK ID xxxx EI", "BI/W 1/H 1/BPC 8/ColorSpace/CMYK ID xxxx EI",
        "BI/W 1/H 1/BPC 8/CS/G ID x EI"}) {
    RawPdf file = OnePage("/Contents 4 0 R");
    file.Stream(4, "", content);
    OpenedConversion opened(file);
    MendColors(opened.conversion(), ContentSurvey(opened.document(), opened.conversion().pages));
    text += std::string(content) + ": " + opened.Report() + "\n";
  }
  for (const char* resources :
       {"/ColorSpace<</C[/Separation/A/DeviceCMYK 5 0 R]>>", "/ColorSpace<</C/DeviceRGB>>",
        "/ColorSpace<</DeviceCMYK/DeviceRGB>>",
        "/Shading<</S<</ShadingType 2/ColorSpace/DeviceCMYK>>>>", "/XObject<</I 6 0 R>>",
        "/XObject<</G 7 0 R>>", "/XObject<</H 8 0 R>>"}) {
    RawPdf file = OnePage(std::string("/Resources<<") + resources + ">>");
    file.Object(5, "<</FunctionType 2/Domain[0 1]/N 1>>");
    file.Stream(6, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceCMYK/BitsPerComponent 8",
                "xxxx");
    file.Stream(7, std::string(kForm) + "/Group<</S/Transparency/CS/DeviceCMYK>>", "");
    file.Stream(8, std::string(kForm) + "/Group<</S/Transparency/CS/DeviceRGB>>", "");
    OpenedConversion opened(file);
    MendColors(opened.conversion(), ContentSurvey(opened.document(), opened.conversion().pages));
    text += std::string(resources) + ": " + opened.Report() + "\n";
  }
  EXPECT_TRUE(IsAsExpected("pdfa/convert/inks.txt", text));
}

// Their own names for them are inks, too: in place, as objects, and of content within content.
TEST_F(PaintTextsTest, KnowInksByOtherNames) {
  for (const char* resources :
       {"/ColorSpace<</C/DeviceCMYK>>", "/ColorSpace 5 0 R", "/XObject<</F 7 0 R>>"}) {
    RawPdf file = OnePage(std::string("/Resources<<") + resources + ">>");
    file.Object(5, "<</C 6 0 R>>").Object(6, "/DeviceCMYK");
    file.Stream(7, std::string(kForm) + "/Resources<</ColorSpace<</C/DeviceCMYK>>>>", "/C cs");
    OpenedConversion opened(file);
    MendColors(opened.conversion(), ContentSurvey(opened.document(), opened.conversion().pages));
    EXPECT_EQ(opened.Report(), "changed: CMYK of the device into CMYK with a profile\n")
        << resources;
  }
}

// Images with samples of all depths, masks and codings that some part does not take.
RawPdf ManyImages() {
  RawPdf file;
  std::string names;
  for (int i = 20; i < 42; ++i) {
    names += "/I" + std::to_string(i) + " " + std::to_string(i) + " 0 R";
  }
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Resources<</XObject<<" + names +
                     ">>>>>>");
  const std::string image = "/Type/XObject/Subtype/Image/Width 3/Height 2";
  const std::string gray = image + "/ColorSpace/DeviceGray";
  const std::string samples("\x00\x10\x80\x20\xFF\x30\x01\x40\x02\x50\xFE\x60", 12);
  file.Stream(10, gray + "/BitsPerComponent 8", std::string("\x00\x40\x80\xC0\xFF\x01", 6));
  file.Stream(11, gray + "/BitsPerComponent 4/Decode[1 0]", std::string("\x0F\x80\xF1\x20", 4));
  file.Stream(12, gray + "/BitsPerComponent 1", "\x40\x80");
  file.Stream(13, image + "/ColorSpace/DeviceRGB/BitsPerComponent 8", samples + samples);
  file.Stream(14, image + "/ImageMask true/BitsPerComponent 1", "\x40\x80");
  file.Stream(20, gray + "/BitsPerComponent 16", samples);
  file.Stream(21, gray + "/BitsPerComponent 16/Decode[1 0]/SMask 10 0 R/Intent/Perceptual",
              samples);
  file.Stream(22, gray + "/BitsPerComponent 8/SMask 10 0 R/Matte[0]", samples.substr(0, 6));
  file.Stream(23, gray + "/BitsPerComponent 8/SMask 11 0 R", samples.substr(0, 6));
  file.Stream(24, gray + "/BitsPerComponent 8/SMask 12 0 R", samples.substr(0, 6));
  file.Stream(25, gray + "/BitsPerComponent 8/SMask 13 0 R", samples.substr(0, 6));
  file.Stream(26, gray + "/BitsPerComponent 8/Mask 14 0 R/Name/Own", samples.substr(0, 6));
  file.Stream(27, image + "/ColorSpace/DeviceRGB/BitsPerComponent 8/SMask 10 0 R",
              samples + samples.substr(0, 6));
  file.Stream(28,
              image +
                  "/ColorSpace[/Indexed/DeviceRGB 3<000000FF000000FF000000FF>]"
                  "/BitsPerComponent 2/SMask 10 0 R",
              "\x1B\xE4");
  file.Stream(29, image + "/ColorSpace/DeviceCMYK/BitsPerComponent 8/SMask 10 0 R",
              samples + samples);
  file.Stream(30, image + "/ColorSpace/DeviceRGB/BitsPerComponent 16/Decode[0 1 1 0 0 1]",
              samples + samples + samples);
  file.Stream(31, gray + "/BitsPerComponent 8/SMask 10 0 R", "x");
  const std::string jpx =
      "/Type/XObject/Subtype/Image/Width 16/Height 8/Filter[/ASCIIHexDecode"
      "/JPXDecode]";
  file.Stream(32, jpx, testing::kRedBlueJpx);
  file.Stream(33, jpx, testing::kGrayAlphaJpx);
  file.Stream(34, jpx + "/SMaskInData 1", testing::kGrayAlphaJpx);
  file.Stream(35, jpx + "/ColorSpace/DeviceGray", testing::kGrayAlphaJpx);
  file.Stream(36, jpx, "00");
  file.Stream(37, image + "/ImageMask true/BitsPerComponent 1/Decode[1 0]", "\x40\x80");
  // Wider than the bits of a byte, and with less data than pixels.
  const std::string wide = "/Type/XObject/Subtype/Image/Width 10/Height 2/ColorSpace/DeviceGray";
  file.Stream(15, wide + "/BitsPerComponent 8", std::string("\0\1\0\2\0\3\4\0\0\5\0\0\6\7", 14));
  file.Stream(38, wide + "/BitsPerComponent 8/SMask 15 0 R", std::string(17, 'a') + "bcd");
  file.Stream(16, wide + "/BitsPerComponent 2/Decode[1 0]", "\x1B\xE4\xFF\x3F");
  file.Stream(39, wide + "/BitsPerComponent 4/SMask 16 0 R", "abcdefghij");
  const std::string eight = "/Type/XObject/Subtype/Image/Width 8/Height 1/BitsPerComponent 8";
  file.Stream(18, eight + "/ColorSpace/DeviceGray", std::string("\0\1\2\3\4\5\6\0", 8));
  file.Stream(40, eight + "/ColorSpace/DeviceGray/SMask 18 0 R", "abcdefgh");
  file.Stream(41, image + "/ColorSpace/DeviceCMYK/BitsPerComponent 16",
              samples + samples + samples + samples);
  return file;
}

TEST_F(PaintTextsTest, HaveImagesThatAreAllowed) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/images.txt",
                           Text(ManyImages(), {Level::k1b, Level::k2b}, &MendImages)));
}

std::string BytesOf(const std::string& hexadecimal) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hexadecimal.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hexadecimal.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

std::string Replaced(std::string data, const std::string& digits, const std::string& by) {
  return data.replace(data.find(digits), digits.size(), by);
}

// Data whose boxes tell these colour spaces: method, precedence, approximation and number, each box
// in hexadecimal. The page's image has the data, which is recoded or not.
TEST_F(PaintTextsTest, RecodeDataThatIsNotAllowed) {
  const std::string head = "0000000F636F6C72";
  const std::string color = head + "01000000000010";
  const std::pair<const char*, std::string> rows[] = {
      {"as it is", testing::kRedBlueJpx},
      {"method 0", Replaced(testing::kRedBlueJpx, color, head + "00000000000010")},
      {"method 1", Replaced(testing::kRedBlueJpx, color, head + "01000100000010")},
      {"method 2", Replaced(testing::kRedBlueJpx, color, head + "02000000000010")},
      {"method 3", Replaced(testing::kRedBlueJpx, color, head + "03000000000010")},
      {"method 4", Replaced(testing::kRedBlueJpx, color, head + "04000000000010")},
      {"number 18", Replaced(testing::kRedBlueJpx, color, head + "01000000000012")},
      {"number 19", Replaced(testing::kRedBlueJpx, color, head + "01000000000013")},
      {"number 20", Replaced(testing::kRedBlueJpx, color, head + "01000000000014")},
      {"two boxes", Replaced(Replaced(testing::kRedBlueJpx, "0000002D6A703268", "0000003C6A703268"),
                             color, color + color)},
      {"one exact", Replaced(Replaced(testing::kRedBlueJpx, "0000002D6A703268", "0000003C6A703268"),
                             color, color + head + "01000100000010")},
      {"both exact",
       Replaced(Replaced(testing::kRedBlueJpx, "0000002D6A703268", "0000003C6A703268"), color,
                head + "01000100000010" + head + "01000100000010")},
      {"depths", Replaced(testing::kRedBlueJpx, "03070101070101070101", "03070101060101070101")},
      {"one channel", Replaced(Replaced(testing::kRedBlueJpx, "03070101070101070101", "01070101"),
                               "FF51002F", "FF510029")},
      {"four channels", Replaced(Replaced(testing::kRedBlueJpx, "03070101070101070101",
                                          "04070101070101070101070101"),
                                 "FF51002F", "FF510032")},
      {"38 bits", Replaced(testing::kRedBlueJpx, "03070101070101070101", "03250101250101250101")},
      {"39 bits", Replaced(testing::kRedBlueJpx, "03070101070101070101", "03260101260101260101")},
      {"gray and alpha", testing::kGrayAlphaJpx}};
  std::string text;
  for (const auto& [name, data] : rows) {
    for (const char* space : {"", "/ColorSpace/DeviceRGB"}) {
      RawPdf file = OnePage("/Resources<</XObject<</I 4 0 R>>>>");
      file.Stream(4, std::string("/Subtype/Image/Width 16/Height 8/Filter/JPXDecode") + space,
                  BytesOf(data));
      OpenedConversion opened(file);
      MendImages(opened.conversion());
      text += std::string(name) + space + ": " + opened.Report() + "\n";
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/convert/jpx.txt", text));
}

// Readers would have to guess what its samples mean.
TEST_F(PaintTextsTest, RecodeDataThatTellsNoColors) {
  const std::string data = BytesOf(Replaced(testing::kRedBlueJpx, "636F6C72", "636F6C78"));
  for (const char* space : {"", "/ColorSpace/DeviceRGB"}) {
    RawPdf file = OnePage("/Resources<</XObject<</I 4 0 R>>>>");
    file.Stream(4, std::string("/Subtype/Image/Width 16/Height 8/Filter/JPXDecode") + space, data);
    OpenedConversion opened(file);
    MendImages(opened.conversion());
    EXPECT_EQ(opened.Report(),
              *space == '\0' ? "changed: images whose data is not allowed\n" : std::string());
  }
}

// What is half transparent over other things, in forms, behind clips, and as annotations.
RawPdf ManyTransparencies() {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 3 0 R]/Count 3/Resources 10 0 R>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 60 40]/CropBox[5 5 55 35]/Rotate 90"
              "/Contents[20 0 R 21 0 R]/Annots[30 0 R 31 0 R 32 0 R]>>");
  file.Object(
      4,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 60 40]/Contents 22 0 R/Resources<</ExtGState 11 0 "
      "R/XObject 12 0 R>>>>");
  file.Object(10, "<</ExtGState 11 0 R/XObject 12 0 R/Shading<</S 16 0 R>>>>");
  file.Object(
      11,
      "<</H<</ca .5>>/C<</CA .5>>/M<</BM/Multiply>>/N<</ca 1/CA 1/BM/Normal/SMask/None>>/S<<"
      "/SMask<</S/Alpha/G 13 0 R>>>>>>");
  file.Object(12, "<</F 13 0 R/I 14 0 R>>");
  file.Stream(13, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 1 0 rg 0 0 9 9 re f");
  file.Stream(
      14, "/Subtype/Image/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8/SMask 15 0 R",
      "xy");
  file.Stream(15, "/Subtype/Image/Width 2/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8",
              "\x80z");
  file.Object(
      16,
      "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[0 0 60 0]/Function<</FunctionType 2/Domain"
      "[0 1]/C0[1 0 0]/C1[0 0 1]/N 1>>>>");
  file.Stream(20, "", "q 1 0 0 rg 10 10 20 10 re f q /H gs 15 12 8 8 re f");
  file.Stream(21, "", "Q /C gs 2 w 40 20 m 50 30 l S Q q 6 0 0 6 12 14 cm /I Do");
  file.Stream(
      22, "",
      "1 g 0 0 60 40 re f q /M gs 10 10 5 5 re f Q q 20 10 5 5 re W n /H gs /S sh Q q /S gs "
      "30 10 5 5 re f Q q /H gs 1 0 0 1 40 10 cm /F Do Q q 5 0 0 5 50 30 cm /I Do Q /N gs 0 0 "
      "3 3 re f");
  const std::string note = "<</Type/Annot/Subtype/Stamp/F 4/Rect";
  file.Object(30, note + "[10 10 20 20]/AP<</N 33 0 R>>>>");
  file.Object(31, note + "[20 10 30 20]/AP<</N 13 0 R>>>>");
  file.Object(32, note + "[90 90 95 95]/AP<</N 33 0 R>>>>");
  file.Stream(33, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources<</ExtGState 11 0 R>>",
              "/H gs 0 0 9 9 re f");
  return file;
}

TEST_F(PaintTextsTest, HaveNoTransparencyInPart1) {
  const auto step = [this](Conversion& conversion) {
    conversion.pictured_annotations.insert(31);
    FlattenTransparency(conversion, platform::WidePath(Path("in.pdf")), "");
    WriteEditedContents(conversion);
  };
  // How pixels look is up to what draws them.
  const std::string text = std::regex_replace(Text(ManyTransparencies(), {Level::k1b}, step),
                                              std::regex(", checksum [0-9a-f]+"), "");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/transparency.txt", text));
  EXPECT_EQ(Text(ManyTransparencies(), {Level::k2b}, step).find("Flat"), std::string::npos);
}

// Every kind of operator on layers that are not seen, and around them.
RawPdf ManyLayers() {
  RawPdf file = OnePage(
      "/Contents[4 0 R 5 0 R]/Resources<</Font<</F 6 0 R/V 16 0 R>>/Properties<</L 7 0 R/M 8 0 R"
      "/D 15 0 R>>/XObject<</F 9 0 R/G 10 0 R/I 11 0 R/J 12 0 R>>/Shading<</S 13 0 R>>"
      "/Pattern<</P 14 0 R>>>>",
      "/OCProperties<</OCGs[7 0 R 8 0 R]/D<</OFF[7 0 R]>>>>");
  file.Stream(
      4, "",
      "/OC/L BDC 1 2 m 3 4 l S 1 2 3 4 re W n 1 2 3 4 re W f 1 2 m 1 w 3 4 l S EMC "
      "/OC/M BDC 5 6 7 8 re f EMC BT /F 10 Tf 2 Tc 50 Tz 1 2 Td /OC/L BDC (AB) Tj "
      "[(A)-100(B)50]TJ (A)' 3 4(B)\" <41> Tj EMC (A) Tj ET /OC/L BDC BT /V 10 Tf <0041> Tj "
      "ET EMC /Span BMC /OC/L BDC /Span BMC 0 0 1 1 re f EMC 0 0 2 2 re B* EMC EMC");
  file.Stream(
      5, "",
      " /OC/L BDC q 1 0 0 1 5 5 cm /F Do Q /I Do /S sh BI/W 1/H 1/CS/G/BPC 8 ID x EI EMC "
      "/G Do /I Do /J Do /OC/D BDC 0 0 3 3 re f EMC /Pattern cs /P scn 0 0 4 4 re f EMC EMC");
  file.Object(
      6,
      "<</Type/Font/Subtype/Type3/FontMatrix[.001 0 0 .001 0 0]/FontBBox[0 0 9 9]/CharProcs<<>>"
      "/Encoding<<>>/FirstChar 65/LastChar 66/Widths[500 250]>>");
  file.Object(7, "<</Type/OCG/Name(hidden)>>").Object(8, "<</Type/OCG/Name(seen)>>");
  file.Stream(9, std::string(kForm) + "/Resources<</Properties<</L 7 0 R>>>>",
              "0 0 9 9 re f /OC/L BDC 2 0 9 9 re f EMC");
  file.Stream(10, std::string(kForm) + "/Resources<</Properties<</L 7 0 R>>>>",
              "/OC/L BDC 2 0 9 9 re f EMC 1 0 0 rg");
  file.Stream(11, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x");
  file.Stream(12, std::string(kForm) + "/OC 7 0 R", "5 0 9 9 re f");
  file.Object(13, "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[0 0 1 1]>>");
  file.Stream(14,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9/Resources<<"
              "/Properties<</L 7 0 R>>>>",
              "/OC/L BDC 0 0 9 9 re f EMC 1 1 2 2 re f");
  file.Object(15, "<</Type/OCMD/OCGs[7 0 R]/P/AllOff>>");
  file.Object(16, "<</Type/Font/Subtype/Type0/Encoding/Identity-V/DescendantFonts[17 0 R]>>");
  file.Object(17, "<</Type/Font/Subtype/CIDFontType2/CIDToGIDMap/Identity/W[65[300]]>>");
  return file;
}

TEST_F(PaintTextsTest, HaveNothingHiddenInPart1) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/hidden.txt",
                           Text(ManyLayers(), {Level::k1b}, [](Conversion& conversion) {
                             MendLayers(conversion);
                             RemoveHiddenContent(conversion);
                             WriteEditedContents(conversion);
                           })));
}

TEST_F(PaintTextsTest, HaveOperatorsThatAreAllowed) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 3 0 R]/Count 3>>");
  file.Object(
      3,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents[5 0 R 6 0 R]/Resources<</XObject<<"
      "/F 7 0 R/G 8 0 R>>>>>>");
  file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 9 0 R>>");
  file.Stream(5, "", "1 2 foo BX bar EX 0 0 m 32767.5 -40000.25 l [32768.0 1] 0 d");
  file.Stream(6, "",
              " 99999999999.5 w (40000.5) Tj /F Do /G Do BI/W 1/H 1/I true/CS/G/BPC 8 ID x EI");
  file.Stream(7, kForm, "1 0 0 rg 5 x y BI/W 1/H 1/Interpolate  true/CS/G/BPC 8 ID x EI");
  file.Stream(8, kForm, "40000.5 0 m 1 1 l S");
  file.Stream(9, "", "32767.0 0 l -32767.9 0 m 40000 1 l");
  const auto step = [](Conversion& conversion, const ContentSurvey& survey) {
    MendContents(conversion, survey);
    WriteEditedContents(conversion);
  };
  EXPECT_TRUE(
      IsAsExpected("pdfa/convert/operators.txt", SurveyText(file, {Level::k1b, Level::k2b}, step)));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
