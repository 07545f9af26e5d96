// Which pages a PdfTransformation selects.
#include <limits>
#include <random>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfTransformation.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;

constexpr int kLastPage = std::numeric_limits<int>::max();

class TargetPagesTest : public ::testing::Test {
 protected:
  std::list<int> Selected(const std::string& pattern) {
    transformation_.ClearTargetPages();
    transformation_.AddTargetPattern(pattern);
    return transformation_.GetTargetPages();
  }

  Failure FailureOfPattern(const std::string& pattern) {
    return FailureOf([&] { transformation_.AddTargetPattern(pattern); });
  }

  static Failure BadPattern(const std::string& pattern) {
    return {PdfExceptionCode::InvalidParameter, "Invalid target pages pattern [" + pattern + "]"};
  }

  static Failure BadItem(const std::string& item) {
    return {PdfExceptionCode::InvalidParameter, "Invalid page number pages pattern [" + item + "]"};
  }

  PdfTransformation transformation_{PdfTransformType::StampText};
};

TEST_F(TargetPagesTest, AreAllPagesAtFirst) {
  EXPECT_EQ(transformation_.GetTargetPagesNum(), 0);
  for (const int page : {-1, 0, 1, 500, kLastPage}) {
    EXPECT_TRUE(transformation_.IsTargetPage(page));
  }
  transformation_.AddTargetPage(2);
  EXPECT_FALSE(transformation_.IsTargetPage(1));
  transformation_.ClearTargetPages();
  EXPECT_TRUE(transformation_.IsTargetPage(1));
  EXPECT_THAT(transformation_.GetTargetRanges(), IsEmpty());
}

TEST_F(TargetPagesTest, AreNamedByPattern) {
  EXPECT_THAT(Selected("1,3,5-7"), ElementsAre(1, 3, 5, 6, 7));
  EXPECT_THAT(Selected("9-5"), ElementsAre(5, 6, 7, 8, 9));
  EXPECT_THAT(Selected("1,"), ElementsAre(1));
  EXPECT_THAT(Selected("007-0008"), ElementsAre(7, 8));
  EXPECT_THAT(Selected(""), IsEmpty());
  EXPECT_TRUE(transformation_.IsTargetPage(77));
}

TEST_F(TargetPagesTest, KeepTheOrderOfTheirFirstAddition) {
  Selected("1,3,5-7");
  transformation_.AddTargetPattern("3-4");
  EXPECT_THAT(transformation_.GetTargetPages(), ElementsAre(1, 3, 5, 6, 7, 4));
  EXPECT_EQ(transformation_.GetTargetPagesNum(), 6);
  transformation_.AddTargetPage(4);
  EXPECT_EQ(transformation_.GetTargetPagesNum(), 6);
  EXPECT_THAT(Selected("8,2-3,1-9"), ElementsAre(8, 2, 3, 1, 4, 5, 6, 7, 9));
}

TEST_F(TargetPagesTest, RememberEveryRange) {
  Selected("4-2,3");
  const auto& ranges = transformation_.GetTargetRanges();
  ASSERT_EQ(ranges.size(), 2U);
  EXPECT_EQ(ranges[0].GetStartPageNum(), 2);
  EXPECT_EQ(ranges[0].GetEndPageNum(), 4);
  EXPECT_EQ(ranges[1].GetStartPageNum(), 3);
}

TEST_F(TargetPagesTest, NameTheWholePatternForWhatIsNoList) {
  for (const std::string pattern : {"1,,2", ",1", "1;2", ",", "1 ", "a", "1\n", "1,2,,", "+1"}) {
    EXPECT_EQ(FailureOfPattern(pattern), BadPattern(pattern));
  }
}

TEST_F(TargetPagesTest, NameTheItemForWhatIsNoRange) {
  for (const std::string item : {"5-", "-5", "1-2-3", "-", "1--2", "--", "1-2-"}) {
    EXPECT_EQ(FailureOfPattern("2," + item + ",4"), BadItem(item));
    EXPECT_EQ(FailureOf([&] { transformation_.PatternToRange(item); }), BadItem(item));
  }
}

TEST_F(TargetPagesTest, KnowNoPageZero) {
  const Failure bad_start(PdfExceptionCode::InvalidParameter,
                          "Invalid PDF page range start value [0], expected positive integer");
  EXPECT_EQ(FailureOfPattern("0"), bad_start);
  EXPECT_EQ(FailureOfPattern("0-3"), bad_start);
  EXPECT_EQ(FailureOfPattern("3-0"),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid PDF page range end value [0], expected positive integer"));
  EXPECT_EQ(FailureOf([&] { transformation_.AddTargetPage(-4); }).code,
            PdfExceptionCode::InvalidParameter);
}

TEST_F(TargetPagesTest, KeepTheItemsBeforeTheBadOne) {
  EXPECT_EQ(FailureOfPattern("1,3,0,5").code, PdfExceptionCode::InvalidParameter);
  EXPECT_EQ(FailureOfPattern("7,,8"), BadPattern("7,,8"));
  EXPECT_THAT(transformation_.GetTargetPages(), ElementsAre(1, 3, 7));
}

TEST_F(TargetPagesTest, TakeNoRoomForPagesThatNoDocumentHas) {
  transformation_.AddTargetPattern("5-2147483647");
  EXPECT_EQ(transformation_.GetTargetPagesNum(), kLastPage - 4);
  EXPECT_TRUE(transformation_.IsTargetPage(kLastPage));
  EXPECT_FALSE(transformation_.IsTargetPage(4));
  transformation_.AddTargetPattern("1-99999999999999999999");
  EXPECT_EQ(transformation_.GetTargetPagesNum(), kLastPage);
  transformation_.AddTargetPage(kLastPage);
  EXPECT_EQ(transformation_.GetTargetPagesNum(), kLastPage);
}

TEST_F(TargetPagesTest, ReadAnItemByItsLeadingDigits) {
  transformation_.PatternToRange("2x5");
  EXPECT_THAT(transformation_.GetTargetPages(), ElementsAre(2, 3, 4, 5));
  EXPECT_EQ(FailureOf([&] { transformation_.PatternToRange("2-x"); }).code,
            PdfExceptionCode::InvalidParameter);
}

// The selection kept as a plain list, page by page.
TEST_F(TargetPagesTest, AreThoseOfAPlainListWhateverIsAdded) {
  std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same every time
  for (int round = 0; round < 300; ++round) {
    std::list<int> listed;
    std::set<int> seen;
    transformation_.ClearTargetPages();
    for (int i = 0; i < 12; ++i) {
      const int start = static_cast<int>(random() % 40 + 1);
      const int end = start + static_cast<int>(random() % 6);
      transformation_.AddTargetRange(PdfPageRange(start, end));
      for (int page = start; page <= end; ++page) {
        if (seen.insert(page).second) {
          listed.push_back(page);
        }
      }
    }
    ASSERT_EQ(transformation_.GetTargetPages(), listed);
    ASSERT_EQ(transformation_.GetTargetPagesNum(), static_cast<int>(listed.size()));
    for (int page = 0; page <= 50; ++page) {
      ASSERT_EQ(transformation_.IsTargetPage(page), seen.contains(page));
    }
  }
}

}  // namespace
}  // namespace TarnixTools
