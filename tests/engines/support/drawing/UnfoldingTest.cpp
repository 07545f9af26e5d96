#include <gtest/gtest.h>

#include "engines/support/drawing/Unfolding.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using testing::RawPdf;

constexpr std::uint64_t kEndless = Unfolding::kEndless;

// Of the fields below object 10.
std::uint64_t SizeIn(RawPdf file) {
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  const std::string bytes = file.Table();
  const auto document = testing::OpenBytes(bytes);
  return Unfolding(*document, "Kids").SizeOf(pdf::Object::Ref({10, 0}));
}

TEST(Unfolding, CountsDictionariesAndArrays) {
  EXPECT_EQ(SizeIn(RawPdf().Object(10, "<<>>")), 2U);  // what is missing counts as one
  EXPECT_EQ(SizeIn(RawPdf()
                       .Object(10, "[11 0 R 12 0 R<</Kids[<<>>]>>]")
                       .Object(11, "<</Kids[12 0 R 12 0 R]>>")
                       .Object(12, "<</T(b)>>")),
            1U + (2U + 2U + 2U) + 2U + (2U + 2U));
}

TEST(Unfolding, IsEndlessForCircles) {
  EXPECT_EQ(SizeIn(RawPdf().Object(10, "<</Kids[11 0 R]>>").Object(11, "<</Kids[10 0 R]>>")),
            kEndless);
  EXPECT_EQ(SizeIn(RawPdf().Object(10, "[<</Kids 10 0 R>>]")), kEndless);
}

// Each field has the next one as both of its kids.
TEST(Unfolding, CountsWhatIsSharedEachTime) {
  RawPdf file;
  for (int number = 10; number < 30; ++number) {
    const std::string kid = std::to_string(number + 1) + " 0 R ";
    file.Object(number, "<</Kids[" + kid + kid + "]>>");
  }
  EXPECT_GT(SizeIn(file), std::uint64_t{1} << 20);
}

// The fields have no numbers, only the lists that they stand in.
TEST(Unfolding, LooksAtListsThatAreSharedOnce) {
  RawPdf file;
  for (int number = 10; number < 90; ++number) {
    const std::string kids = "<</Kids " + std::to_string(number + 1) + " 0 R>>";
    file.Object(number, "[" + kids + kids + "]");
  }
  EXPECT_EQ(SizeIn(file), kEndless);
}

TEST(Unfolding, IsEndlessForVeryDeepOnes) {
  RawPdf file;
  for (int number = 10; number < 300; ++number) {
    file.Object(number, "<</Kids[" + std::to_string(number + 1) + " 0 R]>>");
  }
  EXPECT_EQ(SizeIn(file), kEndless);
}

}  // namespace
}  // namespace TarnixTools::engines
