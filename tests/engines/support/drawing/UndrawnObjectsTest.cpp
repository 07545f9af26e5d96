#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/drawing/UndrawnObjects.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RawPdf;

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
const std::string kImage = "/Subtype/Image/Width 16/Height 8/BitsPerComponent 8";

std::string BytesOf(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// Objects 5 to 7 are images that PDFium draws nothing of, 8 the profile of 5; 9 is a plain one.
class UndrawnObjectsTest : public ::testing::Test {
 protected:
  UndrawnObjectsTest() {
    const std::string profile = testing::TestRgbProfile(2.2, true);
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages/Count 2/Kids[3 0 R 4 0 R]>>")
        .Stream(5, kImage + "/ColorSpace[/ICCBased 8 0 R]", "x")
        .Stream(6, kImage + "/ColorSpace/DeviceGray/Filter/JPXDecode",
                BytesOf(testing::kGrayAlphaJpx))
        .Stream(7,
                "/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/ImageMask true/Filter"
                "[/ASCIIHexDecode/JBIG2Decode]",
                std::string(testing::kRefinedJbig2) + ">")
        .Stream(8, "/N 1", profile)
        .Stream(9, kImage + "/ColorSpace/DeviceGray/SMask 6 0 R", "x");
  }

  // Looks at two pages with these entries.
  void Find(const std::string& first, const std::string& second = "") {
    file_.Object(3, "<</Type/Page/Parent 2 0 R" + first + ">>");
    file_.Object(4, "<</Type/Page/Parent 2 0 R" + second + ">>");
    bytes_ = file_.Table();
    document_ = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_), "");
    const pdf::PageTree pages(*document_);
    undrawn_ = std::make_unique<UndrawnObjects>(*document_);
    undrawn_->FindOnPage(pages, 0);
    undrawn_->FindOnPage(pages, 1);
  }

  RawPdf file_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  std::unique_ptr<UndrawnObjects> undrawn_;
};

TEST_F(UndrawnObjectsTest, OnThePage) {
  Find("/Resources<</XObject<</I 5 0 R/J 6 0 R/K 7 0 R>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U, 7U));
}

TEST_F(UndrawnObjectsTest, EachOnce) {
  Find("/Resources<</XObject<</I 5 0 R/J 6 0 R/K 6 0 R>>>>",
       "/Resources<</XObject<</J 6 0 R>>/ColorSpace<</C[/ICCBased 8 0 R]>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, NoneOnPlainPages) {
  file_.Stream(10, kImage + "/ColorSpace/DeviceGray", "x");
  Find("/Resources<</XObject<</I 10 0 R>>/ColorSpace<</C[/CalGray<<>>]/D/DeviceRGB>>>>");
  EXPECT_TRUE(undrawn_->empty());
}

TEST_F(UndrawnObjectsTest, AsMasks) {
  Find("/Resources<</XObject<</I 9 0 R>>>>");
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, InAppearances) {
  file_.Stream(10, kForm + "/Resources<</XObject<</I 5 0 R/J 6 0 R>>>>", "")
      .Object(11, "<</Subtype/Stamp/AP<</N<</On 10 0 R>>>>>>");
  Find("", "/Annots[11 0 R]");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, InPatternsSoftMasksAndGlyphs) {
  file_.Stream(10, "/PatternType 1/Resources<</XObject<</I 5 0 R>>>>", "")
      .Object(11, "<</SMask<</S/Alpha/G 12 0 R>>>>")
      .Stream(12, kForm + "/Resources<</XObject<</I 6 0 R>>>>", "")
      .Object(13, "<</Subtype/Type3/CharProcs<</a 14 0 R>>/Resources<</XObject<</I 7 0 R>>>>>>")
      .Stream(14, "", "");
  Find("/Resources<</Pattern<</P 10 0 R>>/ExtGState<</G 11 0 R>>/Font<</T 13 0 R>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ::testing::UnorderedElementsAre(6U, 7U));
}

TEST_F(UndrawnObjectsTest, ProfilesWithinSpaces) {
  Find("/Resources<</Shading<</S<</ColorSpace[/Indexed[/ICCBased 8 0 R]0(x)]>>>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), IsEmpty());
}

// Each function is made of the next one, twice.
TEST_F(UndrawnObjectsTest, FunctionsThatUnfold) {
  for (int number = 10; number < 40; ++number) {
    const std::string next = std::to_string(number + 1) + " 0 R ";
    file_.Object(number, "<</FunctionType 3/Functions[" + next + next + "]>>");
  }
  Find("/Resources<</Shading<</S<</Function 10 0 R>>/T<</Function[39 0 R 38 0 R]>>>>>>",
       "/Resources<</ColorSpace<</C[/Separation/Spot/DeviceRGB<</Functions[11 0 R]>>]>>"
       "/ExtGState<</G<</TR 12 0 R/TR2 39 0 R/SMask<</TR 13 0 R>>>>>>>>");
  EXPECT_THAT(undrawn_->functions(), ::testing::UnorderedElementsAre(10U, 11U, 12U, 13U));
}

}  // namespace
}  // namespace TarnixTools::engines
