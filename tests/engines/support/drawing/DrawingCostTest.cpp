#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include "engines/support/drawing/DrawingCost.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RawPdf;

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

// What of the only page is too much. Its content is object 4.
class DrawingCostTest : public ::testing::Test {
 protected:
  DrawingCost::Excess ExcessOf(const std::string& page_entries, const std::string& content) {
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
        .Object(3,
                "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R" + page_entries + ">>")
        .Stream(4, "", content);
    return ExcessOfPage();
  }

  DrawingCost::Excess ExcessOfPage() {
    const std::string bytes = file_.Table("/Root 1 0 R");
    const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
    const pdf::PageTree pages(*document);
    return DrawingCost(*document).ExcessOf(pages, 0);
  }

  static std::vector<std::string> NamesOf(const DrawingCost::Excess& excess) {
    std::vector<std::string> names;
    for (const DrawingCost::ResourceName& name : excess.resources) {
      names.push_back(std::string(name.category) + "/" + name.name);
    }
    return names;
  }

  RawPdf file_;
};

TEST_F(DrawingCostTest, FormsThatComeToAnEndAreNotTooMuch) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 6 0 R>>>>", "/F Do /F Do");
  file_.Stream(6, kForm, "0 0 5 5 re f");
  EXPECT_TRUE(ExcessOf("/Resources<</XObject<</F 5 0 R/G 6 0 R>>>>", "/F Do /G Do").empty());
}

TEST_F(DrawingCostTest, AFormThatDrawsItself) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do /F Do");
  file_.Stream(6, kForm, "0 0 5 5 re f");
  const auto excess = ExcessOf("/Resources<</XObject<</F 5 0 R/G 6 0 R>>>>", "/F Do /G Do");
  EXPECT_FALSE(excess.contents);
  EXPECT_THAT(NamesOf(excess), ElementsAre("XObject/F"));
}

TEST_F(DrawingCostTest, FormsInACircleFarBelow) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 6 0 R>>>>", "/F Do");
  file_.Stream(6, kForm + "/Resources<</XObject<</F 7 0 R>>>>", "/F Do");
  file_.Stream(7, kForm + "/Resources<</XObject<</F 6 0 R>>>>", "/F Do /F Do");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R>>>>", "/F Do")),
              ElementsAre("XObject/F"));
}

TEST_F(DrawingCostTest, AFormThatIsNotUsedDoesNotMatter) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do /F Do");
  EXPECT_TRUE(ExcessOf("/Resources<</XObject<</F 5 0 R>>>>", "/Fm Do 0 0 5 5 re f").empty());
}

TEST_F(DrawingCostTest, AFormThatFindsItselfInThePagesResources) {
  file_.Stream(5, kForm, "/F Do /F Do");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R>>>>", "/F Do")),
              ElementsAre("XObject/F"));
}

TEST_F(DrawingCostTest, NamesWithEscapes) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 5 0 R>>>>", "/#46 Do");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R>>>>", "/#46 Do")),
              ElementsAre("XObject/F"));
}

// Each draws the next twice: a thousand million times the last one.
TEST_F(DrawingCostTest, FormsThatUnfold) {
  for (int number = 5; number < 35; ++number) {
    file_.Stream(number,
                 kForm + "/Resources<</XObject<</F " + std::to_string(number + 1) + " 0 R>>>>",
                 "/F Do /F Do");
  }
  file_.Stream(35, kForm, "0 0 5 5 re f");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R/G 25 0 R>>>>", "/F Do /G Do")),
              ElementsAre("XObject/F"));
}

TEST_F(DrawingCostTest, AFormThatIsDrawnTooOften) {
  file_.Stream(5, kForm, std::string(20'000, ' '));
  std::string often;
  for (int i = 0; i < 20'000; ++i) {
    often += "/F Do ";
  }
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R>>>>", often)),
              ElementsAre("XObject/F"));
}

TEST_F(DrawingCostTest, PatternsSoftMasksAndGlyphsThatDrawThemselves) {
  file_.Stream(5, "/PatternType 1/Resources<</Pattern<</P 5 0 R>>>>", "/P scn 0 0 9 9 re f");
  file_.Object(6, "<</SMask<</S/Luminosity/G 7 0 R>>>>");
  file_.Stream(7, kForm + "/Resources<</ExtGState<</G 6 0 R>>>>", "/G gs 0 0 9 9 re f");
  file_.Object(8, "<</Subtype/Type3/CharProcs<</a 9 0 R>>/Resources<</Font<</T 8 0 R>>>>>>");
  file_.Stream(9, "", "/T 9 Tf (a) Tj");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources<</Pattern<</P 5 0 R>>/ExtGState<</G 6 0 R/D<</ca 1>>>>"
                               "/Font<</T 8 0 R>>>>",
                               "/P scn /G gs /D gs BT /T 9 Tf (a) Tj ET")),
              ElementsAre("Pattern/P", "ExtGState/G", "Font/T"));
}

TEST_F(DrawingCostTest, AFontThatIsNoObject) {
  file_.Object(5, "<</Font<</T<</Subtype/Type3/CharProcs<</a 6 0 R/b 7 0 R>>>>>>>>");
  file_.Stream(6, "", "0 0 5 5 re f");
  file_.Stream(7, "", "/T 9 Tf (b) Tj");
  EXPECT_THAT(NamesOf(ExcessOf("/Resources 5 0 R", "BT /T 9 Tf (a) Tj ET")), ElementsAre("Font/T"));
}

// The same object, once as a form that draws nothing, once as a graphics state.
TEST_F(DrawingCostTest, AFormThatIsAGraphicsStateToo) {
  file_.Stream(5, kForm + "/SMask<</S/Alpha/G 6 0 R>>", "");
  file_.Stream(6, kForm + "/Resources<</XObject<</F 6 0 R>>>>", "/F Do");
  EXPECT_THAT(
      NamesOf(ExcessOf("/Resources<</XObject<</F 5 0 R>>/ExtGState<</G 5 0 R>>>>", "/F Do /G gs")),
      ElementsAre("ExtGState/G"));
}

TEST_F(DrawingCostTest, AnAppearanceThatDrawsItself) {
  file_.Stream(5, kForm + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do /F Do");
  file_.Object(6, "<</Subtype/Stamp/AP<</N 5 0 R>>>>");
  file_.Object(7, "<</Subtype/Stamp/AP<</N<</On 5 0 R>>>>>>");
  file_.Object(8, "<</Subtype/Stamp/AP<</N 9 0 R>>>>");
  file_.Stream(9, kForm, "0 0 5 5 re f");
  const auto excess = ExcessOf("/Annots[6 0 R 8 0 R 7 0 R]", "");
  EXPECT_THAT(excess.annotations, ElementsAre(0U, 2U));
}

std::string Deflated(const std::string& bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string packed(size, '\0');
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
            reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()), 1);
  packed.resize(size);
  return packed;
}

TEST_F(DrawingCostTest, ContentThatIsTooLong) {
  file_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents[4 0 R 4 0 R]>>")
      .Stream(4, "/Filter/FlateDecode", Deflated(std::string(std::size_t{129} << 20, ' ')));
  const auto excess = ExcessOfPage();
  EXPECT_TRUE(excess.contents);
  EXPECT_FALSE(excess.empty());
}

TEST_F(DrawingCostTest, ContentThatCannotBeRead) {
  EXPECT_TRUE(ExcessOf("/Contents[null 77 0 R 3 0 R(x)]", "").empty());
}

}  // namespace
}  // namespace TarnixTools::engines
