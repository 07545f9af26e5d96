// Stages of a piece of work, as the host hears of them.
#include <cstdint>
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
using Told = std::vector<std::pair<std::int64_t, std::int64_t>>;

JobWatch::Tell ListenerTo(Told& told) {
  return [&told](const std::string&, std::int64_t done, std::int64_t of) {
    if (told.empty() || told.back() != std::pair(done, of)) {
      told.emplace_back(done, of);
    }
    return true;
  };
}

TEST(JobStages, TellHundredthsOfTheWhole) {
  Told told;
  const JobWatch watch(ListenerTo(told), "job");
  JobStages stages;
  stages.Begin(20);
  {
    JobSteps steps(4);
    for (int i = 0; i < 6; ++i) {
      steps.Done();  // two more than there are
    }
  }
  stages.Begin(50);
  stages.Begin(100);
  {
    JobSteps steps(2);
    steps.Done();
    JobSteps(7).Done();  // steps within steps
  }
  stages.Finish();
  EXPECT_THAT(told, ElementsAre(std::pair(0, 100), std::pair(5, 100), std::pair(10, 100),
                                std::pair(15, 100), std::pair(20, 100), std::pair(50, 100),
                                std::pair(75, 100), std::pair(100, 100)));
}

TEST(JobStages, BeginAnewAfterOthers) {
  Told told;
  const JobWatch watch(ListenerTo(told), "job");
  for (int i = 0; i < 2; ++i) {
    JobStages stages;
    stages.Begin(40);
    JobSteps steps(2);
    steps.Done();
    EXPECT_EQ(told.back(), std::pair(std::int64_t{20}, std::int64_t{100}));
    JobStages().Finish();  // stages within stages
    EXPECT_EQ(told.back().first, 20);
    JobStages::FinishCurrent();  // not while there are steps
    EXPECT_EQ(told.back().first, 20);
  }
  EXPECT_THAT(told, ElementsAre(std::pair(0, 100), std::pair(20, 100), std::pair(0, 100),
                                std::pair(20, 100)));
}

TEST(JobStages, AreFinishedByWhoeverDoesTheWork) {
  Told told;
  const JobWatch watch(ListenerTo(told), "job");
  JobStages stages;
  stages.Begin(60);
  JobStages::FinishCurrent();
  EXPECT_THAT(told, ElementsAre(std::pair(0, 100), std::pair(60, 100)));
}

TEST(JobStages, AreAllDoneWhereOneWasEnough) {
  Told told;
  const JobWatch watch(ListenerTo(told), "job");
  JobStages stages;
  stages.Begin(40);
  stages.Finish();
  EXPECT_THAT(told, ElementsAre(std::pair(0, 100), std::pair(100, 100)));
}

TEST(JobStages, AreNotHeardOfWithinSteps) {
  Told told;
  const JobWatch watch(ListenerTo(told), "job");
  JobSteps documents(2);
  {
    JobStages stages;
    stages.Begin(50);
    JobSteps(5).Done();
    JobStages::FinishCurrent();
    stages.Finish();
  }
  documents.Done();
  EXPECT_THAT(told, ElementsAre(std::pair(0, 2), std::pair(1, 2)));
}

TEST(JobStages, StopTheJobWhenTheHostWishes) {
  const JobWatch watch(
      [](const std::string&, std::int64_t done, std::int64_t) { return done < 30; }, "job");
  JobStages stages;
  stages.Begin(30);
  EXPECT_THROW(stages.Begin(100), PdfException);
  EXPECT_THROW(JobSteps(3), PdfException);
}

// Wherever it asks next, once the host has been told and has answered.
TEST(JobStages, StopTheJobAtEveryStepAfterThat) {
  bool goes_on = true;
  const JobWatch watch([&](const std::string&, std::int64_t, std::int64_t) { return goes_on; },
                       "job");
  JobStages stages;
  {
    JobSteps steps(2);
    JobStages within;
    JobSteps one(1);
    goes_on = false;
    EXPECT_THROW(JobWatch::Report(7, 9), PdfException);
    EXPECT_THROW(steps.Done(), PdfException);
    EXPECT_THROW(one.Done(), PdfException);
    EXPECT_THROW(JobSteps(1), PdfException);
    EXPECT_THROW(JobSteps(2), PdfException);
    EXPECT_THROW(JobStages(), PdfException);
    EXPECT_THROW(within.Begin(50), PdfException);
    EXPECT_THROW(within.Finish(), PdfException);
  }
  EXPECT_THROW(stages.Begin(50), PdfException);
  EXPECT_THROW(JobSteps(2), PdfException);
  EXPECT_THROW(stages.Finish(), PdfException);
  EXPECT_THROW(watch.ThrowIfCancelled(), PdfException);
}

TEST(JobStages, DoNothingWithoutAJob) {
  JobStages stages;
  stages.Begin(30);
  JobSteps(3).Done();
  JobStages::FinishCurrent();
  stages.Finish();
}

}  // namespace
}  // namespace TarnixTools
