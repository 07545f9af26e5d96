#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/contents/Contents.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/contents/LargeReals.h"
#include "support/Readers.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::RawPdf;
using testing::RunProgram;

class ContentsTest : public ConversionTest {
 protected:
  // The content of the page, decoded by qpdf.
  std::string Mended(const std::string& content, Level level) {
    RawPdf file = OnePage("/Contents 4 0 R");
    file.Stream(4, "", content);
    Run(file, level, [](Conversion& conversion, const ContentSurvey& survey) {
      MendContents(conversion, survey);
      WriteEditedContents(conversion);
    });
    return RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output;
  }
};

TEST_F(ContentsTest, HasNoUnknownOperators) {
  const std::string content = Mended("1 0 0 rg 7 8 what 0 0 9 9 re f", Level::k2b);
  EXPECT_THAT(content, Not(HasSubstr("what")));
  EXPECT_THAT(content, HasSubstr("1 0 0 rg"));
  EXPECT_THAT(content, HasSubstr("0 0 9 9 re f"));
}

TEST_F(ContentsTest, HasNoLargeRealsInPart1) {
  const std::string content = "q 1 0 0 1 40000.6 -50000.4 cm Q";
  EXPECT_THAT(Mended(content, Level::k1b), HasSubstr("1 0 0 1 40001 -50000"));
  EXPECT_THAT(Mended(content, Level::k2b), HasSubstr("40000.6 -50000.4 cm"));
}

TEST_F(ContentsTest, HasNoInterpolationOfInlineImages) {
  const std::string image = "BI/W 1/H 1/CS/G/BPC 8/I true/IM false ID x EI";
  EXPECT_THAT(Mended("q " + image + " Q", Level::k2b), HasSubstr("/I false/IM false ID x EI"));
}

// What is cut off may be wrong only there.
TEST_F(ContentsTest, StaysWhereItIsNotWhole) {
  RawPdf file = OnePage("/Contents 4 0 R/Resources<</XObject<</F 5 0 R/G 6 0 R>>>>");
  file.Stream(4, "", "/F Do /G Do");
  const std::string form = "/Subtype/Form/BBox[0 0 9 9]/Filter/FlateDecode";
  const std::string data = "1 foo 0 0 9 9 re";
  file.Stream(5, form, std::string("\x78\x01\x01\x20\x00\xDF\xFF", 7) + data);
  file.Stream(6, form, std::string("\x78\x01\x01\x10\x00\xEF\xFF", 7) + data);
  Run(file, Level::k2b, [](Conversion& conversion, const ContentSurvey& survey) {
    MendContents(conversion, survey);
    WriteEditedContents(conversion);
  });
  EXPECT_THAT(RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output, HasSubstr(data));
  EXPECT_EQ(Report(), "changed: content with operators or numbers that are not allowed\n");
}

TEST(LargeReals, AreBeyondSixteenBits) {
  for (const char* number : {"32767.1", "-32767.1", "32768.", "99999.0", "00040000.5", "-99999.",
                             "12345678901.5", "+32768.5"}) {
    EXPECT_TRUE(IsLargeReal(number)) << number;
  }
  for (const char* number : {"32767.", "32767.0", "-32767.0", "9999.9", "99999", "", ".", ".99999",
                             "0000.5", "00001.5", "-32767"}) {
    EXPECT_FALSE(IsLargeReal(number)) << number;
  }
  for (const auto& [number, rounded] :
       {std::pair("40000.5", "40001"), std::pair("40000.4", "40000"),
        std::pair("-40000.5", "-40001"), std::pair("2147483646.4", "2147483646"),
        std::pair("2147483647.4", "2147483647"), std::pair("2147483648.5", "2147483647"),
        std::pair("-2147483648.5", "-2147483647"), std::pair("0.4", "0")}) {
    EXPECT_EQ(Rounded(number), rounded) << number;
  }
}

TEST(LargeReals, AreFoundAmongOperands) {
  for (const char* operands : {"40000.", "1 40000.5", "40000.5 1", "[1 40000.5]", "1.5[2 40000.5]3",
                               "1\n40000.5\t", "1\r40000.5\f0", "7 1.5 99999.5"}) {
    EXPECT_TRUE(HasLargeReal(operands)) << operands;
  }
  for (const char* operands : {"", "1.5 2.5 3.5", "/a 40000.5", "<40000.5>", "(a)40000.5", "12345",
                               "7 99999 1.5", "1 2 3 99999", "4000. 5 6", "99999 .5"}) {
    EXPECT_FALSE(HasLargeReal(operands)) << operands;
  }
  EXPECT_EQ(WithoutLargeReals("1 40000.5\n[-50000.25 99999]7"), "1 40001\n[-50000 99999]7");
  EXPECT_EQ(WithoutLargeReals("40000.5"), "40001");
  EXPECT_EQ(WithoutLargeReals(""), "");
}

TEST(LargeReals, AreThoseThatIntegersCanBe) {
  EXPECT_TRUE(IsLargeReal("-32767.5"));
  EXPECT_FALSE(IsLargeReal("32767.0"));
  EXPECT_FALSE(IsLargeReal("99999"));
  EXPECT_EQ(Rounded("-99999999999.5"), "-2147483647");
  EXPECT_FALSE(HasLargeReal("(40000.5)"));
  EXPECT_EQ(WithoutLargeReals("[40000.5 1.5] 0"), "[40001 1.5] 0");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
