#include "engines/repair/CheckTest.h"

namespace TarnixTools::engines::repair {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::PageFacts;
using testing::RawPdf;

using Code = ProblemCode;

class PageTreeCheckTest : public CheckTest {
 protected:
  // A document of two pages, the second of them as given.
  static std::string DocumentWith(const std::string& page,
                                  const std::string& tree = "/Kids[3 0 R 4 0 R]/Count 2") {
    return RawPdf()
        .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages" + tree + ">>")
        .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 200]>>")
        .Object(4, page)
        .Table();
  }

  std::vector<PageFacts> Pages() const { return testing::PageFactsOf(Path("out.pdf")); }
};

TEST_F(PageTreeCheckTest, FindsNothingInSoundPages) {
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox[9 9 0 0]/Rotate -90>>"));
  EXPECT_THAT(Damage(), IsEmpty());
}

TEST_F(PageTreeCheckTest, GivesAPageItsType) {
  Repair(DocumentWith("<</Parent 2 0 R/MediaBox[0 0 9 9]>>"));
  EXPECT_THAT(Messages(),
              ElementsAre("Page 2: object 4: a page or a part of the page tree does not "
                          "say what it is; fixed"));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(PageTreeCheckTest, GivesAPageItsParent) {
  Repair(DocumentWith("<</Type/Page/Parent 3 0 R/MediaBox[0 0 9 9]>>"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kPageParentWrong));
  EXPECT_EQ(Complaints(), "");
}

TEST_F(PageTreeCheckTest, GivesAPageASize) {
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R>>"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kPageBoxMissing));
  EXPECT_EQ(Pages()[1].height, 792);
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox 7>>"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kPageBoxInvalid));
  EXPECT_EQ(Pages()[1].height, 792);
}

TEST_F(PageTreeCheckTest, DoesNotMindABoxThatReadersPassOver) {
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/CropBox[1]>>"));
  EXPECT_THAT(Damage(), IsEmpty());
  EXPECT_THAT(Lint(), ElementsAre(Code::kPageBoxInvalid));
  Repair(DocumentWith("<</Parent 2 0 R/MediaBox[0 0 9 9]/CropBox[1]>>"));
  EXPECT_EQ(Output().find("/CropBox"), std::string::npos);
}

TEST_F(PageTreeCheckTest, TurnsByWholeQuarters) {
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Rotate 100>>"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kPageRotationInvalid));
  EXPECT_EQ(Pages()[1].rotation, 90);
}

TEST_F(PageTreeCheckTest, PutsTheCountRight) {
  Repair(
      DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>", "/Kids[3 0 R 4 0 R]/Count 7"));
  EXPECT_THAT(Damage(), Contains(Code::kPageCountWrong));
  EXPECT_EQ(Complaints(), "");
  EXPECT_EQ(Pages().size(), 2u);
}

TEST_F(PageTreeCheckTest, LeavesALoop) {
  Repair(DocumentWith("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>",
                      "/Kids[3 0 R 2 0 R 4 0 R]/Count 2"));
  EXPECT_THAT(Damage(), ElementsAre(Code::kPageTreeLoop));
  EXPECT_EQ(Complaints(), "");
  EXPECT_EQ(Pages().size(), 2u);
}

TEST_F(PageTreeCheckTest, KeepsThePlaceOfALostPage) {
  Repair(DocumentWith("(no page)", "/Kids[4 0 R 3 0 R]/Count 2"));
  EXPECT_THAT(Messages(), Contains("Page 1: the page cannot be read; an empty one stands for it; "
                                   "lost"));
  EXPECT_EQ(Complaints(), "");
  ASSERT_EQ(Pages().size(), 2u);
  EXPECT_EQ(Pages()[0].width, 300);
  EXPECT_EQ(Pages()[1].width, 300);
}

TEST_F(PageTreeCheckTest, GivesALostPageTheSizeOfTheOneNextToIt) {
  Repair(DocumentWith("(no page)"));
  ASSERT_EQ(Pages().size(), 2u);
  EXPECT_EQ(Pages()[1].width, 300);
}

TEST_F(PageTreeCheckTest, GivesTheCatalogItsType) {
  Repair(RawPdf()
             .Object(1, "<</Pages 2 0 R>>")
             .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
             .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 200]>>")
             .Table());
  EXPECT_THAT(Messages(),
              ElementsAre("An entry of the document catalog cannot be used (Type); fixed"));
  EXPECT_EQ(Complaints(), "");
}

}  // namespace
}  // namespace TarnixTools::engines::repair
