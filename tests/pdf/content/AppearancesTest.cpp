#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/Appearances.h"
#include "pdf/content/ContentFixture.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Objects 5 to 9 are appearances; 4 is a layer that is not seen.
class AppearancesTest : public ::testing::Test {
 protected:
  // Object 20 is an annotation with these entries.
  Object Annotation(const std::string& entries) {
    file_ = std::make_unique<ContentDocument>("/OCProperties<</D<</OFF[14 0 R]>>>>");
    file_->Page("").Object(14, "<</Type/OCG>>").Object(15, "5 0 R");
    for (int number = 5; number < 10; ++number) {
      file_->Stream(number, kFormEntries + "/Matrix[2 0 0 2 0 0]", "");
    }
    file_->Object(20, "<</Subtype/Stamp" + entries + ">>");
    return file_->Open().Load({.number = 20, .generation = 0}, arena_);
  }

  std::vector<std::uint32_t> AllOf(const std::string& entries) {
    const Object annotation = Annotation(entries);
    return AppearancesOf(file_->document(), annotation);
  }

  std::uint32_t Shown(const std::string& entries) {
    const Object annotation = Annotation(entries);
    const VisibleLayers layers(file_->document());
    return ShownAppearance(file_->document(), annotation, &layers);
  }

  Matrix MatrixOf(const std::string& entries, const std::string& form) {
    const Object annotation = Annotation(entries);
    const ContentDocument other;
    Document& document = file_->document();
    RawForm(form);
    return AppearanceMatrix(document, annotation, form_);
  }

  void RawForm(const std::string& form) {
    Lexer lexer(form, true);
    Parser(arena_).Parse(lexer, nullptr, form_);
  }

  std::unique_ptr<ContentDocument> file_;
  Arena arena_;
  Object form_;
};

TEST_F(AppearancesTest, OfAllKindsInAllStates) {
  EXPECT_THAT(AllOf("/AP<</N 5 0 R/R 6 0 R/D<</On 7 0 R/Off 8 0 R/Odd null>>/X 9 0 R>>"),
              ElementsAre(5U, 7U, 8U, 6U));
  EXPECT_THAT(AllOf("/AP<</N 15 0 R>>"), ElementsAre(5U));
  EXPECT_THAT(AllOf(""), IsEmpty());
  EXPECT_THAT(AllOf("/AP(x)"), IsEmpty());
}

TEST_F(AppearancesTest, TheNormalOneIsShown) {
  EXPECT_EQ(Shown("/AP<</N 5 0 R/D 6 0 R>>"), 5U);
  EXPECT_EQ(Shown("/AP<</D 6 0 R>>"), 0U);
  EXPECT_EQ(Shown(""), 0U);
}

TEST_F(AppearancesTest, TheStateIsChosen) {
  EXPECT_EQ(Shown("/AS/On/AP<</N<</On 7 0 R/Off 8 0 R>>>>"), 7U);
  EXPECT_EQ(Shown("/AS/Off/AP<</N<</On 7 0 R/Off 8 0 R>>>>"), 8U);
  EXPECT_EQ(Shown("/AS/Odd/AP<</N<</On 7 0 R/Off 8 0 R>>>>"), 0U);
  EXPECT_EQ(Shown("/AP<</N<</On 7 0 R/Off 8 0 R>>>>"), 0U);
}

TEST_F(AppearancesTest, HiddenOnesAreNotShown) {
  EXPECT_EQ(Shown("/F 2/AP<</N 5 0 R>>"), 0U);
  EXPECT_EQ(Shown("/F 32/AP<</N 5 0 R>>"), 0U);
  EXPECT_EQ(Shown("/F 4/AP<</N 5 0 R>>"), 5U);
  EXPECT_EQ(Shown("/Subtype/Popup/AP<</N 5 0 R>>"), 0U);
  EXPECT_EQ(Shown("/OC 14 0 R/AP<</N 5 0 R>>"), 0U);
}

TEST_F(AppearancesTest, WithoutLayersAllAreShown) {
  const Object annotation = Annotation("/OC 14 0 R/AP<</N 5 0 R>>");
  EXPECT_EQ(ShownAppearance(file_->document(), annotation, nullptr), 5U);
}

TEST_F(AppearancesTest, AreFittedIntoTheRectangle) {
  const Matrix matrix = MatrixOf("/Rect[10 20 30 60]", "<</BBox[0 0 10 10]/Matrix[2 0 0 2 5 0]>>");
  EXPECT_DOUBLE_EQ(matrix.a, 2);  // 20 points for 10
  EXPECT_DOUBLE_EQ(matrix.d, 4);
  EXPECT_DOUBLE_EQ(matrix.e, 10);
  EXPECT_DOUBLE_EQ(matrix.f, 20);
}

TEST_F(AppearancesTest, WithoutBoxesTheirMatrixIsTaken) {
  for (const char* const form :
       {"<</Matrix[2 0 0 2 5 0]>>", "<</BBox[0 0 0 9]/Matrix[2 0 0 2 5 0]>>"}) {
    EXPECT_DOUBLE_EQ(MatrixOf("/Rect[10 20 30 60]", form).e, 5);
  }
  EXPECT_DOUBLE_EQ(MatrixOf("", "<</BBox[0 0 9 9]>>").a, 1);
}

}  // namespace
}  // namespace TarnixTools::pdf
