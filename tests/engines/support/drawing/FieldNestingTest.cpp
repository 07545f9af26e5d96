#include <gtest/gtest.h>

#include "engines/support/drawing/FieldNesting.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;

// Whether the fields below object 10 can all be gone through.
bool IsBounded(RawPdf file) {
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  const std::string bytes = file.Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  return FieldNesting(*document).IsBounded(document->Load({10, 0}, arena));
}

TEST(FieldNesting, IsBoundedForTrees) {
  EXPECT_TRUE(IsBounded(RawPdf().Object(10, "<<>>")));
  EXPECT_TRUE(IsBounded(RawPdf()
                            .Object(10, "<</Fields[11 0 R 12 0 R<</Kids[<<>>]>>]>>")
                            .Object(11, "<</Kids[13 0 R 13 0 R]>>")
                            .Object(12, "<</T(a)>>")
                            .Object(13, "<</T(b)>>")));
}

TEST(FieldNesting, IsNotForCircles) {
  EXPECT_FALSE(IsBounded(RawPdf()
                             .Object(10, "<</Fields[11 0 R]>>")
                             .Object(11, "<</Kids[12 0 R]>>")
                             .Object(12, "<</Kids[11 0 R]>>")));
}

// Each field has the next one as both of its kids.
TEST(FieldNesting, IsNotForFieldsThatUnfold) {
  RawPdf file;
  file.Object(10, "<</Fields[11 0 R]>>");
  for (int number = 11; number < 40; ++number) {
    const std::string kid = std::to_string(number + 1) + " 0 R ";
    file.Object(number, "<</Kids[" + kid + kid + "]>>");
  }
  EXPECT_FALSE(IsBounded(file));
}

TEST(FieldNesting, IsNotForVeryDeepOnes) {
  RawPdf file;
  file.Object(10, "<</Fields[11 0 R]>>");
  for (int number = 11; number < 200; ++number) {
    file.Object(number, "<</Kids[" + std::to_string(number + 1) + " 0 R]>>");
  }
  EXPECT_FALSE(IsBounded(file));
}

}  // namespace
}  // namespace TarnixTools::engines
