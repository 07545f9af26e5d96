#include <string>

#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/structure/HiddenContent.h"
#include "support/PageViews.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::RawPdf;
using testing::RunProgram;

constexpr const char* kLayers = "/OCProperties<</OCGs[7 0 R 8 0 R]/D<</OFF[7 0 R]>>>>";

class HiddenContentTest : public ConversionTest {
 protected:
  // A page with the content: layer /L is not seen, layer /M is; forms F1, which has hidden parts, and
  // F2, which is one.
  static RawPdf WithContent(const std::string& content) {
    RawPdf file = OnePage(
        "/Contents 4 0 R/Resources<</Font<</F 5 0 "
        "R/H<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"
        "/T 11 0 R/C 12 0 R/V 13 0 R>>/Properties<</L 7 0 R/M 8 0 R>>"
        "/XObject<</F1 9 0 R/F2 10 0 R>>>>",
        kLayers);
    file.Stream(4, "", content);
    file.Object(
        5,
        "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding/FirstChar 65"
        "/LastChar 67/Widths[667 667 722]>>");
    file.Object(7, "<</Type/OCG/Name(hidden)>>");
    file.Object(8, "<</Type/OCG/Name(seen)>>");
    file.Stream(9, "/Subtype/Form/BBox[0 0 90 90]/Resources<</Properties<</L 7 0 R>>>>",
                "0 0 9 9 re f /OC /L BDC 20 0 9 9 re f EMC");
    file.Stream(10, "/Subtype/Form/BBox[0 0 90 90]/OC 7 0 R", "50 0 9 9 re f");
    file.Object(11,
                "<</Type/Font/Subtype/Type3/FontMatrix[.01 0 0 .01 0 0]/FontBBox[0 0 9 9]"
                "/CharProcs<<>>/Encoding<<>>/FirstChar 65/LastChar 65/Widths[50]>>");
    file.Object(12, "<</Type/Font/Subtype/Type0/Encoding/Identity-H/DescendantFonts[14 0 R]>>");
    file.Object(13, "<</Type/Font/Subtype/Type0/Encoding/Identity-V/DescendantFonts[14 0 R]>>");
    file.Object(14, "<</Type/Font/Subtype/CIDFontType2/CIDToGIDMap/Identity/W[32[300]]>>");
    return file;
  }

  std::string Written(const std::string& content, Level level = Level::k1b) {
    Run(WithContent(content), level, [](Conversion& conversion) {
      RemoveHiddenContent(conversion);
      conversion.rewriter.RemoveEntry(conversion.rewriter.catalog(), "OCProperties");
      WriteEditedContents(conversion);
    });
    return RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output;
  }
};

TEST_F(HiddenContentTest, IsTakenOutOfPages) {
  const std::string written = Written(
      "/OC /L BDC 1 2 3 4 re f BI /W 1 /H 1 /BPC 8 /CS /G ID x EI EMC /OC /M BDC 5 6 7 8 re f EMC");
  EXPECT_THAT(written, Not(HasSubstr("1 2 3 4 re")));
  EXPECT_THAT(written, Not(HasSubstr("BI")));
  EXPECT_THAT(written, HasSubstr("5 6 7 8 re f"));
  EXPECT_THAT(Report(), HasSubstr("left out: content on layers that are not seen"));
}

TEST_F(HiddenContentTest, LeavesTheStateThatItSets) {
  const std::string written = Written("/OC /L BDC 1 0 0 rg 0 0 9 9 re W f EMC 1 1 9 9 re f");
  EXPECT_THAT(written, HasSubstr("1 0 0 rg 0 0 9 9 re W n"));
}

TEST_F(HiddenContentTest, LeavesOtherTextInItsPlace) {
  const std::string written = Written(
      "BT /F 10 Tf 10 50 Td (A) Tj /OC /L BDC (AB) Tj [(C) -100] TJ EMC (C) Tj "
      "/OC /L BDC 3 1 (B) \" EMC ET");
  EXPECT_THAT(written, HasSubstr("[-1334]TJ"));
  EXPECT_THAT(written, HasSubstr("[-822]TJ"));
  EXPECT_THAT(written, HasSubstr("3 Tw 1 Tc T* [-767]TJ"));
  EXPECT_THAT(written, HasSubstr("(C) Tj"));
}

TEST_F(HiddenContentTest, LeavesPathsWithinWhichSomethingIsSet) {
  EXPECT_THAT(Written("/OC /L BDC 0 0 9 9 re 1 0 0 rg f EMC"), HasSubstr("0 0 9 9 re 1 0 0 rg n"));
  EXPECT_THAT(Written("0 0 9 9 re /OC /L BDC f EMC"), HasSubstr("0 0 9 9 re /OC /L BDC n EMC"));
  EXPECT_THAT(Written("/OC /L BDC 0 0 9 9 re 1 w n 1 2 3 4 re f EMC"), Not(HasSubstr("1 2 3 4")));
}

TEST_F(HiddenContentTest, MovesOnAsFarAsTheFontDoes) {
  const auto moved = [this](const std::string& text) {
    return Written("BT /OC /L BDC " + text + " EMC ET");
  };
  EXPECT_THAT(moved("/H 10 Tf (AB) Tj"), HasSubstr("[-1333.984]TJ"));
  EXPECT_THAT(moved("/T 10 Tf (A) Tj"), HasSubstr("[-500]TJ"));
  EXPECT_THAT(moved("/C 10 Tf 5 Tw <00200041> Tj"), HasSubstr("[-1300]TJ"));
  EXPECT_THAT(moved("/None 10 Tf 2 Tc 50 Tz (AB) Tj"), HasSubstr("[-1400]TJ"))
      << "without a font each is half as wide as high";
  EXPECT_THAT(moved("/F 0 Tf (AB) Tj"), HasSubstr("[0]TJ"));
  EXPECT_THAT(moved("/V 10 Tf 50 Tz 1 Tc <00200041> Tj"), HasSubstr("[1800]TJ"));
}

TEST_F(HiddenContentTest, IsTakenOutOfForms) {
  const std::string written = Written("/F1 Do /F2 Do");
  EXPECT_THAT(written, Not(HasSubstr("20 0 9 9 re")));
  EXPECT_THAT(written, HasSubstr("0 0 9 9 re f"));
  EXPECT_THAT(written, Not(HasSubstr("/F2 Do")));
}

TEST_F(HiddenContentTest, LooksTheSameWithoutLayers) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Written(
      "/OC /L BDC 0 0 60 60 re f EMC 1 0 0 rg BT /F 20 Tf 10 50 Td (A) Tj /OC /L BDC (BB) Tj EMC "
      "(C) Tj ET q 1 0 0 1 100 0 cm /F1 Do /F2 Do Q");
  const auto before = testing::Pictures(Path("in.pdf"), 72);
  const auto after = testing::Pictures(Path("out.pdf"), 72);
  ASSERT_EQ(before.size(), 1U);
  EXPECT_EQ(after, before);
}

// What is set in hidden parts is in force behind them, whatever they are made of.
TEST_F(HiddenContentTest, LeavesTheRestAsItLooks) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  for (const char* content : {
           "/OC /L BDC q 1 0 0 1 50 0 cm 1 0 0 rg 0 0 9 9 re f EMC 0 0 30 30 re f Q 0 0 5 5 re f",
           "/OC /L BDC 0 0 40 40 re 0 1 0 rg f EMC 50 50 40 40 re f",
           "0 0 50 50 re /OC /L BDC f EMC 60 60 20 20 re f",
           "/OC /L BDC 0 0 50 50 re W S EMC 0 0 99 99 re f",
           "/OC /L BDC /OC /M BDC 0 0 50 50 re f EMC EMC 1 0 0 rg 60 0 9 9 re f",
           "1 0 0 rg 60 0 9 9 re f /OC /L BDC 0 0 50 50 re f",
           "/OC /L BDC /F1 Do EMC 1 0 0 1 30 30 cm /F1 Do",
           "BT /F 20 Tf 3 Tc 50 Tz 14 TL 10 80 Td (A) Tj /OC /L BDC (B) ' 2 1 (C) \" "
           "[(A) -200 (B) 300] TJ EMC (C) Tj T* (A) Tj ET",
           "BT /F 20 Tf 10 50 Td /OC /L BDC 1 0 0 1 30 9 Tm (AB) Tj EMC (C) Tj ET",
       }) {
    Written(content);
    const auto before = testing::Pictures(Path("in.pdf"), 72);
    ASSERT_EQ(before.size(), 1U);
    EXPECT_EQ(testing::Pictures(Path("out.pdf"), 72), before) << content;
  }
}

TEST_F(HiddenContentTest, StaysWhereThereAreLayers) {
  EXPECT_THAT(Written("/OC /L BDC 1 2 3 4 re f EMC", Level::k2b), HasSubstr("1 2 3 4 re f"));
  EXPECT_EQ(Report(), "");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
