#include "engines/repair/CheckTest.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Code = ProblemCode;

class FontCheckTest : public CheckTest {
 protected:
  // A page with a font of these entries and, beside it, streams: 20 is what the font's map says, 21
  // is no map, 23 is empty.
  void RepairFont(const std::string& entries, const std::string& map = "") {
    Repair(OnePage("/Resources<</Font<</F 10 0 R/G 11 0 R>>>>")
               .Object(10, "<</Type/Font" + entries + ">>")
               .Object(11, "<</Type/Font" + entries + ">>")
               .Stream(20, "", map)
               .Stream(21, "", "no map")
               .Stream(23, "", "")
               .Table());
  }
};

const std::string kCourier = "/Subtype/Type1/BaseFont/Courier";

// Of each of these words one is enough.
TEST_F(FontCheckTest, KnowsMapsByTheirWords) {
  for (const char* word : {"begincodespacerange", "beginbfchar", "beginbfrange", "begincidchar",
                           "begincidrange", "beginnotdefrange", "usecmap", "begincmap"}) {
    RepairFont(kCourier + "/ToUnicode 20 0 R", "of " + std::string(word) + " there");
    EXPECT_THAT(Damage(), IsEmpty()) << word;
  }
  for (const char* other : {"begin", "beginbf", "usefont", "endcmap", " "}) {
    RepairFont(kCourier + "/ToUnicode 20 0 R", other);
    EXPECT_THAT(Damage(), ElementsAre(Code::kFontMapUnreadable, Code::kFontMapUnreadable)) << other;
  }
}

TEST_F(FontCheckTest, ListsAMapForEachFontThatHasIt) {
  RepairFont(kCourier + "/ToUnicode 21 0 R");
  EXPECT_THAT(
      Messages(),
      ElementsAre("Page 1: object 10: a character map of the font cannot be read (ToUnicode); lost",
                  "Page 1: object 11: a character map of the font cannot be read (ToUnicode); "
                  "lost"));
  RepairFont(kCourier + "/ToUnicode 23 0 R");
  EXPECT_THAT(Damage(), IsEmpty());
  RepairFont(kCourier + "/ToUnicode/Identity-H");
  EXPECT_THAT(Damage(), IsEmpty());
  RepairFont(kCourier + "/ToUnicode 99 0 R");
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(FontCheckTest, MissesWidthsOfEmbeddedFontsAndOfThoseOfContent) {
  const std::string embedded = "/FontDescriptor<</FontFile2 20 0 R>>";
  RepairFont("/Subtype/TrueType/BaseFont/Own" + embedded, testing::TestFont().Bytes());
  EXPECT_THAT(Lint(), ElementsAre(Code::kFontWidthsMissing, Code::kFontWidthsMissing));
  RepairFont("/Subtype/TrueType/BaseFont/Own/Widths[500]" + embedded, testing::TestFont().Bytes());
  EXPECT_THAT(Lint(), IsEmpty());
  RepairFont("/Subtype/Type3/CharProcs<<>>");
  EXPECT_THAT(Lint(), ElementsAre(Code::kFontWidthsMissing, Code::kFontWidthsMissing));
  RepairFont("/Subtype/Type3/CharProcs<<>>/Widths[]");
  EXPECT_THAT(Lint(), IsEmpty());
  RepairFont(kCourier);
  EXPECT_THAT(Lint(), IsEmpty());
  RepairFont("/Subtype/Type1/BaseFont/Own");
  EXPECT_THAT(Lint(), ElementsAre(Code::kFontProgramMissing, Code::kFontProgramMissing));
  EXPECT_THAT(Damage(), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::engines::repair
