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
