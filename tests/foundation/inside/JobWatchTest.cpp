#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfException.h"
#include "foundation/JobWatch.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

using Steps = std::vector<std::pair<std::int64_t, std::int64_t>>;

void Count(int count) {
  JobSteps steps(count);
  for (int i = 0; i < count; ++i) {
    steps.Done();
  }
}

TEST(JobWatch, TellsWhatIsDoneInASingleStep) {
  Steps heard;
  const JobWatch watch(
      [&](const std::string&, std::int64_t done, std::int64_t of) {
        heard.emplace_back(done, of);
        return true;
      },
      "job");
  JobSteps one(1);
  Count(2);
  one.Done();
  heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
  EXPECT_THAT(heard, ElementsAre(Pair(0, 0), Pair(0, 2), Pair(1, 2), Pair(2, 2)));
}

TEST(JobWatch, TellsStepsAndNoneWithinThem) {
  Steps heard;
  const JobWatch watch(
      [&](const std::string& job, std::int64_t done, std::int64_t of) {
        EXPECT_EQ(job, "job");
        heard.emplace_back(done, of);
        return true;
      },
      "job");
  JobSteps steps(2);
  Count(5);
  steps.Done();
  Count(5);
  steps.Done();
  // Calls between steps tell the same again.
  heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
  EXPECT_THAT(heard, ElementsAre(Pair(0, 2), Pair(1, 2), Pair(2, 2)));
}

TEST(JobWatch, IsNotThatOfWhatTheHostDoesItself) {
  Steps heard;
  const JobWatch watch(
      [&](const std::string&, std::int64_t done, std::int64_t of) {
        heard.emplace_back(done, of);
        Count(7);
        EXPECT_FALSE(JobWatch::IsCancelled());
        return true;
      },
      "job");
  Count(2);
  heard.erase(std::unique(heard.begin(), heard.end()), heard.end());
  EXPECT_THAT(heard, ElementsAre(Pair(0, 2), Pair(1, 2), Pair(2, 2)));
}

TEST(JobWatch, LetsTheHostRunAJobThatIsStopped) {
  int inner_stops = 0;
  const JobWatch watch(
      [&](const std::string&, std::int64_t, std::int64_t) {
        const JobWatch inner([](const std::string&, std::int64_t, std::int64_t) { return false; },
                             "inner");
        EXPECT_THROW(Count(2), PdfException);
        EXPECT_TRUE(JobWatch::IsCancelled());
        ++inner_stops;
        return true;
      },
      "outer");
  Count(2);
  EXPECT_GE(inner_stops, 3);
  EXPECT_FALSE(JobWatch::IsCancelled());
  watch.ThrowIfCancelled();
}

TEST(JobWatch, KeepsWhatTheHostThrows) {
  int calls = 0;
  {
    const JobWatch watch(
        [&](const std::string&, std::int64_t, std::int64_t) -> bool {
          ++calls;
          throw std::length_error("enough");
        },
        "job");
    EXPECT_THROW(Count(2), PdfException);
    EXPECT_THROW(Count(2), PdfException);
    EXPECT_TRUE(JobWatch::IsCancelled());
    EXPECT_THROW(watch.ThrowIfCancelled(), std::length_error);
  }
  EXPECT_EQ(calls, 1);
  EXPECT_FALSE(JobWatch::IsCancelled());
  Count(2);
}

TEST(JobWatch, KnowsWhoIsBusy) {
  const int one = 1;
  const int other = 2;
  EXPECT_FALSE(JobWatch::IsBusy(&one));
  const JobWatch watch(nullptr, "job", &one);
  {
    const JobWatch inner(nullptr, "inner", &other);
    EXPECT_TRUE(JobWatch::IsBusy(&one));
    EXPECT_TRUE(JobWatch::IsBusy(&other));
  }
  EXPECT_TRUE(JobWatch::IsBusy(&one));
  EXPECT_FALSE(JobWatch::IsBusy(&other));
}

}  // namespace
}  // namespace TarnixTools
