#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "pdf/file/NumberArrays.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// A document whose object 3 is the value.
class NumberArraysTest : public ::testing::Test {
 protected:
  std::optional<Box> BoxOf(const std::string& value) {
    return ReadBox(Open(value), Object::Ref({3, 0}));
  }

  std::optional<Matrix> MatrixOf(const std::string& value) {
    return ReadMatrix(Open(value), Object::Ref({3, 0}));
  }

 private:
  Document& Open(const std::string& value) {
    bytes_ = RawPdf()
                 .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                 .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                 .Object(3, value)
                 .Object(4, "9")
                 .Table();
    document_ = Document::Open(std::make_unique<MemorySource>(bytes_), "");
    return *document_;
  }

  std::string bytes_;
  std::unique_ptr<Document> document_;
};

TEST_F(NumberArraysTest, ReadsRectanglesWithTheirCornersInOrder) {
  EXPECT_EQ(BoxOf("[1 2.5 3 4]"), (Box{1, 2.5, 3, 4}));
  EXPECT_EQ(BoxOf("[3 4 1 2]"), (Box{1, 2, 3, 4}));
  EXPECT_EQ(BoxOf("[1 1 1 1]"), (Box{1, 1, 1, 1}));
}

TEST_F(NumberArraysTest, FollowsReferencesAndTakesOtherThingsAs0) {
  EXPECT_EQ(BoxOf("[/x (y) 4 0 R 7]"), (Box{0, 0, 9, 7}));
  EXPECT_EQ(BoxOf("[null 99 0 R [5] 7]"), (Box{0, 0, 0, 7}));
  const std::optional<Matrix> matrix = MatrixOf("[4 0 R /b 0 2 true 5]");
  ASSERT_TRUE(matrix);
  EXPECT_EQ(matrix->a, 9);
  EXPECT_EQ(matrix->b, 0);
  EXPECT_EQ(matrix->d, 2);
  EXPECT_EQ(matrix->e, 0);
  EXPECT_EQ(matrix->f, 5);
}

TEST_F(NumberArraysTest, ReadsNoRectangleFromOtherArrays) {
  for (const char* value :
       {"[]", "[1 2 3]", "[1 2 3 4 5]", "[[1 2 3 4]]", "(1 2 3 4)", "null", "<</a 1>>", "4"}) {
    EXPECT_FALSE(BoxOf(value)) << value;
  }
}

TEST_F(NumberArraysTest, ReadsMatricesOfSixNumbersOrMore) {
  EXPECT_TRUE(MatrixOf("[1 0 0 1 0 0]")->IsIdentity());
  EXPECT_TRUE(MatrixOf("[1 0 0 1 0 0 7 8]")->IsIdentity());
  for (const char* value : {"[]", "[1 0 0 1 0]", "[[1 0 0 1 0 0]]", "null", "4"}) {
    EXPECT_FALSE(MatrixOf(value)) << value;
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
