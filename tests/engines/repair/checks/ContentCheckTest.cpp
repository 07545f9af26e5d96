#include "engines/repair/CheckTest.h"
#include "engines/repair/checks/ContentCheck.h"
#include "engines/repair/checks/MendedContent.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::RawPdf;

using Code = ProblemCode;

class ContentCheckTest : public CheckTest {
 protected:
  static std::string WithContent(const std::string& content, const std::string& resources = "") {
    return OnePage("/Contents 10 0 R/Resources<<" + resources + ">>")
        .Stream(10, "", content)
        .Table();
  }
};

TEST_F(ContentCheckTest, FindsNothingInSoundContent) {
  Repair(WithContent(
      "q 1 0 0 1 0 0 cm /P <</MCID 0>> BDC BT /F 12 Tf (a) Tj [(b)-3(c)] TJ ET EMC Q BX odd EX\n"
      "BI /W 1 /H 1 /BPC 8 /CS /G ID x EI /DeviceRGB cs 1 0 0 sc 0 0 9 9 re f /OC /Layer BDC EMC",
      "/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), Not(Contains(Code::kContentUnbalanced)));
}

TEST_F(ContentCheckTest, FindsAndMendsWhatIsWrong) {
  const struct {
    const char* content;
    Code code;
  } kCases[] = {
      {"0 0 9 9 re f odd", Code::kContentOperatorUnknown},
      {"9 9 re f", Code::kContentOperands},
      {"0 0 9 9 re f (text", Code::kContentCutOff},
      {"0 0 9 9 re f [1 2", Code::kContentCutOff},
      {"0 0 9 9 re f > 1 0 0 rg", Code::kContentDamaged},
  };

  for (const auto& example : kCases) {
    SCOPED_TRACE(example.content);
    ExpectMended(WithContent(example.content), {example.code});
  }
}

TEST_F(ContentCheckTest, SaysWhatDoesNotMatch) {
  for (const char* content :
       {"q 0 0 9 9 re f", "0 0 9 9 re f Q", "/P BMC 0 0 9 9 re f", "EMC 0 0 9 9 re f",
        "BT 1 0 0 1 0 0 Tm", "0 0 9 9 re f ET", "0 0 9 9 re f 1 2"}) {
    SCOPED_TRACE(content);
    Repair(WithContent(content));
    EXPECT_THAT(Damage(), IsEmpty());
    EXPECT_THAT(Lint(), Contains(Code::kContentUnbalanced));
  }
}

TEST_F(ContentCheckTest, LooksIntoFormsOnce) {
  RawPdf file = OnePage("/Contents 10 0 R/Resources<</XObject<</F 11 0 R/G 11 0 R>>>>");
  file.Stream(10, "", "/F Do /G Do /F Do")
      .Stream(11, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f odd");
  ExpectMended(file.Table(), {Code::kContentOperatorUnknown});
}

TEST_F(ContentCheckTest, FindsResourcesThatAreNotThere) {
  Repair(WithContent("/F Do", "/XObject<</G 11 0 R>>"));
  EXPECT_THAT(Damage(), Contains(Code::kResourceUnknown));
  Repair(WithContent("/G Do", "/XObject<</G 11 0 R>>"));
  EXPECT_THAT(Damage(), Contains(Code::kResourceDead));
  Repair(OnePage("/Contents 10 0 R").Stream(10, "", "/G Do").Table());
  EXPECT_THAT(Damage(), Contains(Code::kResourcesMissing));
  Repair(WithContent("/G gs"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), Contains(Code::kGraphicsStateUnknown));
}

TEST_F(ContentCheckTest, FindsFormsThatDrawThemselves) {
  RawPdf file = OnePage("/Contents 10 0 R/Resources<</XObject<</F 11 0 R>>>>");
  file.Stream(10, "", "/F Do")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</F 11 0 R>>>>", "/F Do");
  Repair(file.Table());
  EXPECT_EQ(Damage(), Codes{Code::kContentTooDeep});
}

TEST_F(ContentCheckTest, KeepsTheContentsThatAreThere) {
  RawPdf file = OnePage("/Contents[10 0 R 11 0 R 12 0 R]");
  file.Stream(10, "", "q").Object(11, "(no stream)").Stream(12, "", "Q");
  ExpectMended(file.Table(), {Code::kContentMissing});
}

TEST(MendedContent, KeepsEveryOperationThatCanBeRead) {
  EXPECT_EQ(MendedContent("1 0 0 rg odd Q 9 re 0 0 9 9 re f"), "1 0 0 rg\n0 0 9 9 re\nf\n");
  EXPECT_EQ(MendedContent("BX odd EX 1 w"), "BX\nodd\nEX\n1 w\n");
  EXPECT_EQ(MendedContent("BI /W 1 /H 1 /BPC 8 /CS /G ID x\nEI 1 w"),
            "BI /W 1 /H 1 /BPC 8 /CS /G\nID x\nEI\n1 w\n");
}

TEST(MendedContent, LeavesOutOperatorsInArrays) {
  EXPECT_EQ(MendedContent("BT [(a) 3 Tc -2 Tw (b)] TJ ET"), "BT\n[(a)3 -2(b)]TJ\nET\n");
  EXPECT_EQ(MendedContent("BT [(a) 3 Tj 1 w ET"), "BT\n1 w\nET\n");
}

TEST(MendedContent, EndsPartsThatAreCut) {
  const std::string_view cut[] = {"q 1 w (text", "2 w Q"};
  EXPECT_EQ(MendedContent(cut), "q\n1 w\n2 w\nQ\n");
  const std::string_view split[] = {"q 1", "w Q"};
  EXPECT_EQ(MendedContent(split), "q\n1 w\nQ\n");
}

TEST(MendedContent, ClosesWhatIsOpen) {
  EXPECT_EQ(MendedContent("q BT (a) Tj"), "q\nBT\n(a)Tj\nET Q\n");
  EXPECT_EQ(MendedContent("q /P BMC BT (a) Tj (b"), "q\n/P BMC\nBT\n(a)Tj\nET EMC Q\n");
}

TEST_F(ContentCheckTest, ListsPagesThatItDoesNotLookAt) {
  const std::string bytes = testing::TestPdf().Page("a").Page("b").Page("c").Bytes();
  testing::RewriteCase opened(bytes);
  const pdf::PageTree pages(opened.source());
  ProblemList problems;
  CheckContext context = {opened.source(), pages, opened.rewriter(), problems};
  CheckContentUpTo(1, context);
  ASSERT_EQ(problems.lint().size(), 2U);
  EXPECT_EQ(problems.lint()[0].code, Code::kContentTooMuch);
  EXPECT_EQ(problems.lint()[0].page, 2U);
  EXPECT_EQ(problems.lint()[1].page, 3U);
  EXPECT_THAT(problems.damage(), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::engines::repair
