#include <array>
#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/Operands.h"
#include "pdf/content/PathBuilder.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The first operation of the content, which outlives it.
Operation First(const std::string& content) {
  Operation operation;
  ContentReader(content).Next(operation);
  return operation;
}

std::vector<double> Numbers(const std::string& content, std::size_t count) {
  std::vector<double> numbers(count);
  return LastNumbers(First(content), numbers) ? numbers : std::vector<double>();
}

std::string Name(const std::string& content) {
  Arena arena;
  const auto name = LastName(First(content), arena);
  return name ? std::string(*name) : "none";
}

TEST(Operands, Numbers) {
  EXPECT_THAT(Numbers("1 -.5 +2 3. 0004 cm", 5), ElementsAre(1, -0.5, 2, 3, 4));
  EXPECT_THAT(Numbers("1 2 3 cm", 2), ElementsAre(2, 3));
  EXPECT_THAT(Numbers("1 2 cm", 3), IsEmpty());
  EXPECT_THAT(Numbers("cm", 0), IsEmpty());
}

TEST(Operands, WhatIsNoNumberCountsAsNone) {
  EXPECT_THAT(Numbers("1/A(b)[2]<<>>true 3 cm", 7), ElementsAre(1, 0, 0, 0, 0, 0, 3));
  EXPECT_THAT(Numbers("1%comment\n2 cm", 2), ElementsAre(1, 2));
}

TEST(Operands, OddNumbersAsReadersTakeThem) {
  EXPECT_THAT(Numbers("--5 1.2.3 cm", 2), ElementsAre(-5, 1.2));
}

TEST(Operands, Names) {
  EXPECT_EQ(Name("/A Do"), "A");
  EXPECT_EQ(Name("1/A\n Do"), "A");
  EXPECT_EQ(Name("/A#20b Do"), "A b");
  EXPECT_EQ(Name("/A%comment /B\n Do"), "A");
  EXPECT_EQ(Name("(/A)/B Do"), "B");
}

TEST(Operands, OffsetsOfStringsInAnArray) {
  EXPECT_THAT(StringOffsets("[(a) -5 (])<41>]"), ElementsAre(1, 8, 11));
  EXPECT_THAT(StringOffsets("(x)[(y)] [%(c)\n(z)[(in)]"), ElementsAre(15));
  EXPECT_THAT(StringOffsets("(a)"), IsEmpty());
}

TEST(Operands, WhatIsNoName) {
  EXPECT_EQ(Name("Do"), "none");
  EXPECT_EQ(Name("/A 1 Do"), "none");
  EXPECT_EQ(Name("(/A) Do"), "none");
  EXPECT_EQ(Name("[/A] Do"), "none");
}

TEST(Operands, ANameAndANumber) {
  Arena arena;
  for (const char* const content : {"/F#31 12 Tf", "[]/F1 12 Tf", "/X/F1 12 Tf"}) {
    const std::string text = content;
    const auto found = LastNameAndNumber(First(text), arena);
    ASSERT_TRUE(found) << content;
    EXPECT_EQ(found->name, "F1");
    EXPECT_EQ(found->number, 12);
  }
  for (const char* const content : {"/F1 Tf", "12 Tf", "1 2 Tf", "Tf"}) {
    const std::string text = content;
    EXPECT_FALSE(LastNameAndNumber(First(text), arena)) << content;
  }
}

TEST(Operands, TheFirstNameAsItStands) {
  EXPECT_EQ(FirstRawName(" /P#31 /Q "), "P#31");
  EXPECT_EQ(FirstRawName("1 2"), "");
}

class PathBuilderTest : public ::testing::Test {
 protected:
  PathBuilder& Build(const std::string& content, const Matrix& matrix = {}) {
    ContentReader reader(content);
    Operation operation;
    while (reader.Next(operation)) {
      path_.Run(operation, matrix);
    }
    return path_;
  }

  bool IsRectangle(const std::string& content, const Matrix& matrix = {}) {
    path_.Clear();
    return Build(content, matrix).IsRectangle();
  }

  PathBuilder path_;
};

TEST_F(PathBuilderTest, Rectangles) {
  EXPECT_TRUE(IsRectangle("1 2 3 4 re"));
  EXPECT_TRUE(IsRectangle("1 2 3 4 re", {0, 2, -2, 0, 5, 5}));
  EXPECT_TRUE(IsRectangle("0 0 m 5 0 l 5 5 l 0 5 l"));
  EXPECT_TRUE(IsRectangle("0 0 m 0 5 l 5 5 l 5 0 l 0 0 l h"));
}

TEST_F(PathBuilderTest, WhatIsNoRectangle) {
  for (const char* const content :
       {"", "1 2 3 4 re 9 9 1 1 re", "0 0 m 5 0 l 5 5 l", "0 0 m 5 0 l 5 5 l 1 5 l h",
        "0 0 m 5 0 l 5 5 l 0 5 l 1 1 l", "0 0 m 5 0 l 5 5 l 0 1 2 3 0 5 c",
        "5 0 l 5 5 l 0 5 l 0 0 l", "0 0 m 5 0 l 9 9 m 0 5 l h"}) {
    EXPECT_FALSE(IsRectangle(content)) << content;
  }
  EXPECT_FALSE(IsRectangle("1 2 3 4 re", {1, 1, -1, 1, 0, 0}));
}

TEST_F(PathBuilderTest, TheBoxIsAroundAllPoints) {
  EXPECT_EQ(path_.box(), Box());
  EXPECT_EQ(Build("5 5 m 1 2 9 -3 6 6 c").box(), (Box{1, -3, 9, 6}));
  path_.Clear();
  EXPECT_EQ(path_.box(), Box());
  EXPECT_EQ(Build("5 5 -2 -3 re").box(), (Box{3, 2, 5, 5}));
}

TEST_F(PathBuilderTest, GoesOnFromWhereItWasClosed) {
  EXPECT_EQ(Build("5 5 m 9 9 l h 1 1 2 2 v").segments()[3].points[0], (Point{5, 5}));
}

TEST_F(PathBuilderTest, EveryOperatorHasItsSegments) {
  // As text: a letter, then the points that count, each of them doubled by the matrix.
  const auto text_of = [&](const std::string& content) {
    path_.Clear();
    std::string text;
    for (const PathSegment& segment : Build(content, {2, 0, 0, 2, 0, 0}).segments()) {
      const bool is_curve = segment.kind == PathSegment::Kind::kCurve;
      text += "mlch"[static_cast<int>(segment.kind)];
      for (std::size_t i = is_curve ? 0 : 2; i < 3; ++i) {
        if (segment.kind != PathSegment::Kind::kClose) {
          text += std::to_string(std::lround(segment.points[i].x)) + "," +
                  std::to_string(std::lround(segment.points[i].y)) + " ";
        }
      }
    }
    return text;
  };
  EXPECT_EQ(text_of("1 2 m 3 4 l h"), "m2,4 l6,8 h");
  EXPECT_EQ(text_of("1 2 m 3 4 5 6 7 8 c"), "m2,4 c6,8 10,12 14,16 ");
  EXPECT_EQ(text_of("1 2 m 3 4 5 6 v"), "m2,4 c2,4 6,8 10,12 ");
  EXPECT_EQ(text_of("1 2 m 3 4 5 6 y"), "m2,4 c6,8 10,12 10,12 ");
  EXPECT_EQ(text_of("1 2 3 4 re"), "m2,4 l8,4 l8,12 l2,12 h");
  EXPECT_EQ(text_of("1 m 3 l 1 2 3 4 5 c 1 2 3 v 1 2 3 re"), "");
}

TEST_F(PathBuilderTest, SegmentsAreBounded) {
  std::string content = "0 0 m ";
  for (int i = 0; i < 500'000; ++i) {
    content += "1 1 l ";
  }
  Build(content + "7 7 l");
  EXPECT_EQ(path_.segments().size(), 500'000U);
  EXPECT_FALSE(path_.is_whole());
  EXPECT_EQ(path_.box(), (Box{0, 0, 7, 7}));
  path_.Clear();
  EXPECT_TRUE(path_.is_whole());
}

}  // namespace
}  // namespace TarnixTools::pdf
