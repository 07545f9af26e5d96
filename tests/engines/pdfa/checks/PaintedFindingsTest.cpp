// What every level finds, and where, in pages that paint many things.
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/Expected.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;
using testing::PaintedPage;
using testing::ProfileHeader;

// What the page shows, and what is found there.
std::string Said(const std::string& what, const PaintedPage& page) {
  return what + "\n" + page.FindingsText();
}

PaintedPage ColorPage(const std::string& content, const std::string& space) {
  PaintedPage page(content);
  page.Output("RGB ").Resources("/ColorSpace<</C" + space +
                                "/Other/DeviceCMYK>>/ExtGState<</Over<</OP true/OPM 1>>"
                                "/Both<</op true/OPM 1>>>>");
  page.pdf()
      .Stream(20, "/N 3", ProfileHeader("RGB "))
      .Stream(21, "/N 4", ProfileHeader("CMYK"))
      .Stream(22, "/N 1", ProfileHeader("RGB "))
      .Stream(23, "", "short")
      .Stream(24, "/N 4", ProfileHeader("CMYK", 4, "link"))
      .Object(25, "[/Separation/Gold/DeviceCMYK 26 0 R]")
      .Object(26, "<</FunctionType 2/Domain[0 1]/C0[0 0 0 0]/C1[0 1 1 0]/N 1>>")
      .Object(27, "[/Indexed 28 0 R 1<000000FFFFFF>]")
      .Object(28, "[/ICCBased 22 0 R]");
  return page;
}

TEST(PaintedFindings, AreThoseOfColorSpaces) {
  std::string text;
  for (const char* space :
       {"/DeviceGray",
        "/DeviceRGB",
        "/DeviceCMYK",
        "/Other",
        "/Missing",
        "[/DeviceCMYK]",
        "[/CalGray<<>>]",
        "[/Lab<<>>]",
        "[/ICCBased 20 0 R]",
        "[/ICCBased 21 0 R]",
        "[/ICCBased 22 0 R]",
        "[/ICCBased 23 0 R]",
        "[/ICCBased 24 0 R]",
        "[/ICCBased]",
        " 25 0 R",
        " 27 0 R",
        " 28 0 R",
        "[/Pattern/DeviceCMYK]",
        "[/Pattern]",
        "[/Separation/#E4/DeviceGray 26 0 R]",
        "[/Separation/All/DeviceCMYK 26 0 R]",
        "[/Separation/Gold]",
        "[/DeviceN[/Cyan/Magenta/Yellow/Black/None]/DeviceCMYK 26 0 R]",
        "[/DeviceN[/Cyan/Gold]/DeviceRGB 26 0 R]",
        "[/DeviceN[/Cyan/Gold]/DeviceRGB 26 0 R<</Colorants<</Gold 25 0 R>>>>]",
        "[/DeviceN[/A/B/C]/DeviceRGB 26 0 R<</Colorants<</A[/ICCBased 22 0 R]/B/DeviceCMYK"
        "/C[/ICCBased 24 0 R]>>>>]",
        "[/DeviceN[/Red/#E4]/DeviceRGB 26 0 R<</Process<</Components[/Red]/ColorSpace/DeviceCMYK>>"
        ">>]",
        "[/Indexed[/Indexed[/Indexed/DeviceCMYK 0<00>]0<00>]0<00>]",
        "[/I/CMYK 1<00>]",
        "[/Odd/DeviceCMYK]",
        "[]",
        "(text)"}) {
    text += Said(space, ColorPage("/C cs 0 0 9 9 re f /C CS 0 0 9 9 re S", space));
    text += Said(std::string(space) + " set", ColorPage("/C CS 0 SCN", space));
  }
  for (const char* content :
       {"/C cs 0 0 9 9 re f", "/C cs /Over gs 0 0 9 9 re f", "/C cs /Both gs 0 0 9 9 re f",
        "/C CS /Over gs 0 0 9 9 re S", "/C CS /Both gs 0 0 9 9 re S",
        "/C cs /Both gs BT 0 Tr (a) Tj ET", "/C CS /C cs /Over gs 0 0 9 9 re B"}) {
    text += Said(content, ColorPage(content, "[/ICCBased 21 0 R]"));
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/colors.txt", text));
}

// Content in content, each painting with what it has.
PaintedPage NestedPage(const std::string& content) {
  PaintedPage page(content);
  page.Resources(
      "/XObject<</F 20 0 R/Bare 21 0 R/G 22 0 R/I 23 0 R/J 24 0 R/P 25 0 R>>/Pattern<</T 26 0 R/S "
      "27 0 R>>/ExtGState<</M 28 0 R/A 29 0 R/O<</OP true/op true/OPM 1>>>>/Font<</T3 30 0 R>>"
      "/Properties<</MC<</ActualText(a)>>>>");
  const std::string form = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
  const std::string image = "/Type/XObject/Subtype/Image/Width 1/Height 1";
  page.pdf()
      .Stream(20, form + "/Resources<</XObject<</G 22 0 R>>/ColorSpace<</DefaultCMYK[/Lab<<>>]>>>>",
              "0 0 0 1 k 0 0 9 9 re f /G Do")
      .Stream(21, form, "0 0 0 1 k 0 0 9 9 re f /I Do /A gs")
      .Stream(22,
              form + "/Group<</S/Transparency/CS/DeviceCMYK>>/Resources<</XObject<</I 23 0 R>>>>",
              "q 3 0 0 4 1 2 cm /I Do Q")
      .Stream(23, image + "/BitsPerComponent 16/ColorSpace/DeviceRGB/SMask 24 0 R/Interpolate true",
              "xxxxxx")
      .Stream(24, image + "/BitsPerComponent 3/ColorSpace/DeviceGray/Intent/Odd", "x")
      .Stream(25, "/Type/XObject/Subtype/PS", "")
      .Stream(26,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9/Resources<<>>",
              "0 0 0 1 k 0 0 9 9 re f bad 1 2 worse")
      .Object(27,
              "<</PatternType 2/Shading<</ShadingType 2/ColorSpace/DeviceCMYK/Coords[0 0 1 1]"
              ">>>>")
      .Object(28, "<</SMask<</S/Alpha/G 22 0 R>>/BM/Multiply>>")
      .Object(29, "<</CA 0.5/ca 0.25/TR/Identity/HTP[1 1]/BM[/Odd/Normal]/RI/Odd>>")
      .Object(30,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[1 0 0 1 0 0]/FirstChar 97"
              "/LastChar 98/Widths[9 9]/Encoding<</Differences[97/a/b]>>/CharProcs<</a 31 0 R/b 32 "
              "0 R>>/Resources<</XObject<</I 23 0 R>>>>>>")
      .Stream(31, "", "9 0 0 0 9 9 d1 0 0 0 1 k 0 0 9 9 re f")
      .Stream(32, "", "9 0 d0 0 0 0 1 k 0 0 9 9 re f /I Do");
  return page;
}

TEST(PaintedFindings, AreThoseOfNestedContent) {
  std::string text;
  for (const char* content :
       {"/F Do",
        "/Bare Do /Bare Do",
        "/G Do",
        "q 10 0 0 20 5 6 cm /I Do Q /I Do",
        "0 1 -1 0 50 0 cm 10 0 0 20 5 6 cm /I Do",
        "/J Do",
        "/P Do",
        "/M gs 0 0 9 9 re f",
        "/A gs 0 0 9 9 re f /A gs",
        "/Pattern cs /T scn 0 0 9 9 re f",
        "/Pattern CS /S SCN 0 0 9 9 re S",
        "BT /T3 9 Tf (a) Tj ET",
        "BT /T3 9 Tf (b) Tj ET",
        "BT /T3 9 Tf (c) Tj ET",
        "/Span/MC BDC BT /T3 9 Tf (c) Tj ET EMC",
        "/Span<</ActualText(x)>>BDC EMC BT /T3 9 Tf (c) Tj ET",
        "EMC EMC",
        "/Missing Do /Missing gs",
        "BI/W 1/H 1/CS/CMYK/BPC 8/IM false ID xxxx EI",
        "BI/W 1/H 1/IM true/BPC 1/D[1 0] ID x EI",
        "10 0 0 20 5 6 cm BI/W 1/H 1/CS/G/BPC 3/I true/Intent/Odd/F[/AHx/LZW/Odd] ID 78> EI",
        "BI/Width 1/Height 1/ColorSpace/G/BitsPerComponent 8/Filter/LZWDecode ID x EI",
        "q q Q Q Q Q q",
        "/Odd ri 1 ri ri",
        "1 2 3 bad /a (b) worse",
        "BX 1 foo EX",
        "32768.5 0 m 99999999999 0 l <ABC> Tj",
        "0.5 g 0 0 9 9 re f 0 0 9 9 re W n",
        "3 Tr BT (a) Tj ET",
        "BT 1 Tr (a) Tj 2 Tr (a) Tj 4 Tr (a) Tj ET"}) {
    text += Said(content, NestedPage(content));
    PaintedPage page = NestedPage(content);
    page.Output("CMYK").PageEntries("/StructParents 0/Group<</S/Transparency/CS/DeviceRGB>>");
    text += Said(std::string(content) + " for a press, in a group", page);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/nested-content.txt", text));
}

// The page shows text in the font, object 20; programs are objects 30 to 35.
PaintedPage FontPage(const std::string& font, const std::string& text) {
  PaintedPage page("BT /F 9 Tf " + text + " ET");
  page.Output("RGB ").Resources("/Font<</F 20 0 R>>");
  page.pdf()
      .Object(20, "<<" + font + ">>")
      .Stream(30, "", testing::Type1ProgramText({"A"}))
      .Stream(31, "", testing::TestFont().Bytes())
      .Stream(32, "/Subtype/CIDFontType0C", testing::CidProgram({1, 65}))
      .Stream(33, "", "no program")
      .Stream(34, "",
              "1 begincodespacerange<00><FF>endcodespacerange 2 beginbfchar<41><0041><42>"
              "<E000>endbfchar")
      .Stream(35, "",
              "1 begincodespacerange<00><FF>endcodespacerange 5 beginbfchar<41><0000>"
              "endbfchar")
      .Object(36,
              "<</Type/Font/Subtype/CIDFontType2/BaseFont/Boxes/DW 400/CIDSystemInfo<<"
              "/Registry(Adobe)/Ordering(Identity)/Supplement 0>>/CIDToGIDMap/Identity"
              "/FontDescriptor<</Flags 4/FontFile2 31 0 R>>>>")
      .Object(37,
              "<</Type/Font/Subtype/CIDFontType0/BaseFont/Boxes/DW 0/CIDSystemInfo<<"
              "/Registry(Adobe)/Ordering(Japan1)/Supplement 2>>/FontDescriptor<</Flags 4"
              "/FontFile3 32 0 R>>>>")
      .Stream(38, "",
              "1 begincodespacerange<0000><FFFF>endcodespacerange 2 beginbfrange<0000>"
              "<0002><0041><0041><0041><FEFF>endbfrange");
  return page;
}

TEST(PaintedFindings, AreThoseOfFonts) {
  const std::string type1 = "/Type/Font/Subtype/Type1/BaseFont/Boxes";
  const std::string codes = "/FirstChar 65/LastChar 66/Widths[150 150]";
  const std::string program = "/FontDescriptor<</Flags 32/FontFile 30 0 R>>";
  const std::string true_type = "/Type/Font/Subtype/TrueType/BaseFont/Boxes" + codes;
  const std::string of_windows = "/Encoding/WinAnsiEncoding";
  const std::string composite = "/Type/Font/Subtype/Type0/BaseFont/Boxes/Encoding";
  std::string text;
  for (const std::string& font :
       {std::string("/Type/Font/Subtype/Type1/BaseFont/Helvetica"),
        std::string("/Type/Font/Subtype/TrueType/BaseFont/Arial"),
        std::string("/Type/Font/Subtype/Odd"),
        std::string(""),
        type1 + codes + program,
        type1 + codes + program + "/ToUnicode 34 0 R",
        type1 + codes + program + "/ToUnicode 35 0 R",
        type1 + codes + program + "/Encoding<</Differences[65/eacute/nonsense/a.alt]>>",
        type1 + codes + program + "/Encoding/MacRomanEncoding",
        type1 + program,
        type1 + "/FirstChar 65/LastChar 65/Widths[152]" + program,
        type1 + codes + "/FontDescriptor<</Flags 32/FontFile 33 0 R>>",
        type1 + codes + "/FontDescriptor<</Flags 32/MissingWidth 150>>",
        type1 + "/FirstChar 1/LastChar 1/Widths[7]/FontDescriptor<</MissingWidth 150/FontFile 30 0 "
                "R>>",
        true_type + of_windows + "/FontDescriptor<</Flags 32/FontFile2 31 0 R>>",
        true_type + of_windows + "/FontDescriptor<</Flags 4/FontFile2 31 0 R>>",
        true_type + "/FontDescriptor<</Flags 4/FontFile2 31 0 R>>",
        true_type + "/Encoding<</BaseEncoding/WinAnsiEncoding/Differences[66/B/A.alt/.notdef]>>"
                    "/FontDescriptor<</Flags 32/FontFile2 31 0 R>>",
        true_type + "/Encoding<</Differences[66/B]>>/FontDescriptor<</Flags 32/FontFile2 31 0 R>>",
        true_type + of_windows + "/FontDescriptor<</Flags 32/FontFile2 33 0 R>>",
        composite + "/Identity-H/DescendantFonts[36 0 R]",
        composite + "/Identity-H/DescendantFonts[36 0 R]/ToUnicode 38 0 R",
        composite + "/Identity-V/DescendantFonts[37 0 R]",
        composite + "/UniJIS-UCS2-H/DescendantFonts[37 0 R]",
        composite + "/H/DescendantFonts[37 0 R]",
        composite + "/Odd/DescendantFonts[36 0 R]",
        composite + "/Identity-H/DescendantFonts[]",
        composite + "/Identity-H"}) {
    for (const char* shown : {"(AB) Tj", "3 Tr (AB) Tj", "<000041> Tj 3 Tr <C3> Tj"}) {
      text += Said(font + " " + shown, FontPage(font, shown));
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/fonts.txt", text));
}

// Images that are painted over others in inks, in place and as objects, before and after what is painted
// plainly.
TEST(PaintedFindings, AreThoseOfOverprintedImages) {
  std::string text;
  for (const char* content :
       {"/I Do", "/Over gs /I Do", "/Both gs /I Do", "/I Do /Both gs /I Do /I Do",
        "/Both gs /I Do /Plain gs /I Do", "/Both gs BI/W 1/H 1/BPC 8/CS/C ID xxxx EI",
        "/Plain gs BI/W 1/H 1/BPC 8/CS/C ID xxxx EI", "/Modeless gs /I Do"}) {
    PaintedPage page(content);
    page.Output("RGB ").Resources(
        "/ColorSpace<</C 21 0 R>>/XObject<</I 20 0 R>>/ExtGState<</Over<</OP true/op false/OPM 1>>"
        "/Both<</op true/OPM 1>>/Plain<</op false/OPM 1>>/Modeless<</op true/OPM 0>>>>");
    page.pdf()
        .Stream(20, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace 21 0 R", "xxxx")
        .Object(21, "[/ICCBased 22 0 R]")
        .Stream(22, "/N 4", ProfileHeader("CMYK"));
    text += Said(content, page);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/overprinted-images.txt", text));
}

// A spot colour has one definition, by whatever spaces it comes.
TEST(PaintedFindings, AreThoseOfSpotColors) {
  std::string text;
  for (const char* content :
       {"/A cs 1 scn /B cs 1 scn", "/A cs 1 scn /C cs 1 scn", "/A cs 1 scn /D cs 1 1 scn",
        "/C CS 1 SCN /D cs 1 1 scn", "/A cs 1 scn /E cs 1 scn", "/E cs 1 scn /A cs 1 scn",
        "/D cs 1 1 scn", "/F cs 1 1 scn"}) {
    PaintedPage page(content);
    page.Output("RGB ").Resources(
        "/ColorSpace<</A[/Separation/Gold/DeviceRGB 20 0 R]/B[/Separation/Gold/DeviceRGB 21 0 R]"
        "/C[/Separation/Gold/DeviceRGB 22 0 R]/D[/DeviceN[/Gold/Silver]/DeviceRGB 20 0 "
        "R<</Colorants<<"
        "/Gold[/Separation/Gold/DeviceRGB 20 0 R]/Silver[/Separation/Silver/DeviceGray 22 0 R]>>>>]"
        "/E[/Separation/Gold/DeviceGray 20 0 R]/F[/DeviceN[/Gold/Silver]/DeviceRGB 20 0 "
        "R<</Colorants"
        "<</Silver[/Separation/Silver/DeviceGray 22 0 R]>>>>]>>");
    page.pdf()
        .Object(20, "<</FunctionType 2/Domain[0 1]/N 1>>")
        .Object(21, "<</N 1/Domain[0 1]/FunctionType 2>>")
        .Object(22, "<</FunctionType 2/Domain[0 1]/N 2>>");
    text += Said(content, page);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/spot-colors.txt", text));
}

// Colours count where they are set, groups where they are entered, each in what stands for it.
TEST(PaintedFindings, AreThoseOfColorsThatAreOnlySet) {
  std::string text;
  for (const char* content :
       {"0.5 g", "0.5 G", "1 0 0 rg", "1 0 0 RG", "0 0 0 1 k", "0 0 0 1 K", "/DeviceGray cs",
        "/DeviceGray CS", "/DeviceRGB cs 1 0 0 sc", "/DeviceRGB CS 1 0 0 SC",
        "/DeviceCMYK cs 0 0 0 1 scn", "/DeviceCMYK CS 0 0 0 1 SCN", "/G Do", "/H Do", "0.5 x",
        "BI/W 1/H 1/BPC 8/CS/G ID x EI BI/W 1/H 1/BPC 8/CS/CMYK ID xxxx EI"}) {
    PaintedPage page(content);
    page.Resources("/XObject<</G 20 0 R/H 21 0 R>>");
    const std::string form = "/Subtype/Form/BBox[0 0 9 9]/Group<</S/Transparency/CS/DeviceCMYK>>";
    page.pdf()
        .Stream(20, form + "/Resources<</ColorSpace<</DefaultCMYK[/ICCBased 22 0 R]>>>>", "")
        .Stream(21, form + "/Resources<</ColorSpace<</DefaultRGB[/ICCBased 22 0 R]>>>>", "")
        .Stream(22, "/N 4", ProfileHeader("CMYK"));
    text += Said(content, page);
    page.Output("CMYK").Resources(
        "/XObject<</G 20 0 R/H 21 0 R>>/ColorSpace<</DefaultRGB[/CalRGB<<>>]>>");
    page.PageEntries("/Group<</S/Transparency/CS/DeviceRGB>>");
    text += Said(std::string(content) + " for a press, in a group", page);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/set-colors.txt", text));
}

TEST(PaintedFindings, AreThoseOfStates) {
  std::string text;
  for (const char* state :
       {"",
        "/BM/Normal",
        "/BM/Compatible",
        "/BM[/Normal]",
        "/BM[/Compatible/Normal]",
        "/BM[/Normal/Multiply]",
        "/BM/Multiply",
        "/BM/Odd",
        "/BM(Normal)",
        "/BM[]",
        "/CA 1/ca 1",
        "/CA 0.99",
        "/ca 0.99",
        "/CA 0",
        "/SMask/None",
        "/SMask<</S/Alpha>>",
        "/SMask/Odd",
        "/TR/Default",
        "/TR/Identity",
        "/TR2/Default",
        "/TR2/Identity",
        "/HTP[1 1]",
        "/HTO[1 1]",
        "/HT/Default",
        "/HT<</HalftoneType 1>>",
        "/HT<</HalftoneType 5>>",
        "/HT<</HalftoneType 6>>",
        "/HT<</HalftoneType 1/HalftoneName(x)>>",
        "/HT<</HalftoneType 1/TransferFunction/Identity>>",
        "/HT<</HalftoneType 5/Cyan<</HalftoneType 1>>>>",
        "/HT<</HalftoneType 5/Cyan<</HalftoneType 1/TransferFunction/Identity>>>>",
        "/HT<</HalftoneType 5/Spot<</HalftoneType 1>>>>",
        "/HT<</HalftoneType 5/Spot<</HalftoneType 1/TransferFunction/Identity>>>>",
        "/HT<</HalftoneType 5/Default<</HalftoneType 2/HalftoneName(x)>>>>",
        "/RI/Perceptual",
        "/RI/Odd",
        "/RI(Perceptual)"}) {
    PaintedPage page("/Plain gs /S gs");
    page.Resources("/ExtGState<</Plain<<>>/S<<" + std::string(state) + ">>>>");
    text += Said(state, page);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/states.txt", text));
}

// Of one that stands in place in several resources there are not more findings than of one object.
TEST(PaintedFindings, AreThoseOfFontsInPlace) {
  const std::string type1 = "<</Type/Font/Subtype/Type1/BaseFont/Boxes/FirstChar 65/LastChar 66";
  const std::string program = "/FontDescriptor<</Flags 32/FontFile 30 0 R>>";
  PaintedPage page(
      "BT /A 9 Tf (A) Tj /B 9 Tf (B) Tj /C 9 Tf (A) Tj /D 9 Tf (A) Tj /E 9 Tf (AB) Tj ET "
      "/X Do");
  page.Output("RGB ").Resources("/Font<</A" + type1 + "/Widths[150 150]" + program + ">>/B" +
                                type1 + "/Widths[150 150]" + program + ">>/C" + type1 +
                                "/Widths[152 152]" + program + ">>/D" + type1 +
                                "/Widths[150 150]>>/E 20 0 R>>/XObject<</X 21 0 R>>");
  page.pdf()
      .Object(20, type1 + "/Widths[150 150]/ToUnicode 31 0 R" + program + ">>")
      .Stream(21,
              "/Subtype/Form/BBox[0 0 9 9]/Resources<</Font<</D" + type1 + "/Widths[150 150]>>/F" +
                  type1 + "/Widths[153 153]" + program + ">>>>>>",
              "BT /D 9 Tf (A) Tj /F 9 Tf (A) Tj ET")
      .Stream(30, "", testing::Type1ProgramText({"A"}))
      .Stream(31, "", "1 begincodespacerange<00><FF>endcodespacerange");
  EXPECT_TRUE(IsAsExpected("pdfa/findings/fonts-in-place.txt", Said("many", page)));
}

// A character of private use is said to mean something by what is marked around it, and by no more.
TEST(PaintedFindings, AreThoseOfTextThatIsSaidToMeanSomething) {
  const std::string meant = "/Span<</ActualText(x)>>BDC ";
  std::string text;
  for (const std::string& content :
       {std::string("(B) Tj"), meant + "(B) Tj EMC", meant + "(B) Tj EMC (B) Tj",
        "(B) Tj " + meant + "(B) Tj EMC", meant + "/P BMC (B) Tj EMC EMC",
        meant + "/P BMC EMC EMC (B) Tj", "/P BMC " + meant + "EMC (B) Tj EMC",
        meant + meant + "EMC (B) Tj EMC", meant + meant + "EMC EMC (B) Tj"}) {
    text += Said(content,
                 FontPage("/Type/Font/Subtype/Type1/BaseFont/Boxes/FirstChar 65/LastChar 66/Widths["
                          "150 150]/FontDescriptor<</Flags 32/FontFile 30 0 R>>/ToUnicode 34 0 R",
                          content));
  }
  for (const char* parents : {"", "/StructParents 0", "/StructParents 1", "/StructParents 5"}) {
    for (const char* mark : {"/Span<</MCID 0>>BDC ", "/Span<</MCID 1>>BDC "}) {
      PaintedPage page = FontPage(
          "/Type/Font/Subtype/Type1/BaseFont/Boxes/FirstChar 65/LastChar 66/Widths[150 150]"
          "/FontDescriptor<</Flags 32/FontFile 30 0 R>>/ToUnicode 34 0 R",
          std::string(mark) + "(B) Tj EMC");
      page.PageEntries(parents).CatalogEntries(
          "/StructTreeRoot<</ParentTree<</Nums[0[40 0 R 41 0 R]5[41 0 R 42 0 R]]>>>>");
      page.pdf()
          .Object(40, "<</S/Span/ActualText(x)>>")
          .Object(41, "<</S/Span>>")
          .Object(42, "<</S/Span/P 40 0 R>>");
      text += Said(std::string(mark) + parents, page);
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/meant-text.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
