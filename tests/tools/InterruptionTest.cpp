// What is left of a job that is interrupted, wherever it is at that moment. A few moments of each job
// in an ordinary run; the environment variable TARNIX_INTERRUPTIONS gives another number.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <random>
#include <sstream>

#include "tools/EveryJob.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;

int MomentsOfEach() {
  const char* const number = std::getenv("TARNIX_INTERRUPTIONS");
  return number == nullptr ? 4 : std::atoi(number);
}

class Interruption : public EveryJobTest {
 protected:
  // The moments are counted: of what the program asks the system for, and of the memory that it takes.
  std::vector<std::string> Moments(const std::map<std::string, int>& counts, int number) const {
    std::mt19937 random(static_cast<unsigned>(GetParam().name.size()));  // the same ones every time
    const std::vector<std::string> kinds = {"new", "name", "disk", "read", "open"};
    std::vector<std::string> moments;
    for (int i = 0; i < number; ++i) {
      const std::string kind = kinds[static_cast<std::size_t>(i) % kinds.size()];
      const int count = counts.at(kind);
      if (count > 0) {
        const int place = std::uniform_int_distribution<>(1, count)(random);
        moments.push_back(kind + ":" + std::to_string(place));
      }
    }
    return moments;
  }

  // The outputs that the program has told, on standard output when it came to its end.
  std::vector<std::string> Told(const RunResult& result) const {
    const std::string head = "tarnix: finished before: ";
    std::vector<std::string> told;
    std::istringstream lines(result.status == sound_.status ? result.out : result.err);
    for (std::string line; std::getline(lines, line);) {
      const std::size_t start = line.starts_with(head) ? head.size() : 0;
      if (line.substr(start).starts_with("out/")) {
        told.push_back(line.substr(start + 4));
      }
    }
    return told;
  }

  void Check(const RunResult& result, int signal) {
    if (result.status != sound_.status) {  // else it had nothing left to do
      EXPECT_EQ(result.status, 128 + signal) << result.err;
    }
    EXPECT_EQ(FilesIn("."), inputs_);
    EXPECT_TRUE(FilesIn("tmp").empty());
    EXPECT_TRUE(directory_.Names("tmp").empty());
    const Files after = FilesIn("out");
    for (const auto& [name, bytes] : after) {
      EXPECT_EQ(bytes, reference_.contains(name) ? reference_.at(name) : "no such output") << name;
    }
    std::vector<std::string> names;
    for (const auto& [name, bytes] : after) {
      names.push_back(name);
    }
    std::vector<std::string> told = Told(result);
    std::sort(told.begin(), told.end());
    const bool tells_findings =
        GetParam().words.front() == "validate" && result.status == sound_.status;
    if (GetParam().writes && !tells_findings) {
      EXPECT_EQ(told, names) << result.err << result.out;
    }
  }

  RunResult sound_;
  Files reference_;
};

TEST_P(Interruption, LeavesNothingUnfinishedAndTellsWhatIsFinished) {
  TARNIX_NEED_FAULT_INJECTOR();
  sound_ = RunWith("");
  ASSERT_LT(sound_.status, 2) << sound_.err;
  reference_ = FilesIn("out");
  const auto counts = Counts();
  int number = 0;
  for (const std::string& moment : Moments(counts, MomentsOfEach())) {
    const bool is_first = number++ % 2 == 0;
    const std::string fault = (is_first ? "interrupt-" : "terminate-") + moment;
    SCOPED_TRACE(fault);
    Check(RunWith(fault), is_first ? SIGINT : SIGTERM);
  }
}

// In the middle of its work a job always stops, with the status of the signal.
TEST_P(Interruption, AtAWriteEndsTheJob) {
  if (!GetParam().writes) {
    GTEST_SKIP() << "it writes nothing";
  }
  TARNIX_NEED_FAULT_INJECTOR();
  sound_ = RunWith("");
  reference_ = FilesIn("out");
  const int writes = Counts()["disk"];
  ASSERT_GT(writes, 0);
  for (const auto& [fault, signal] :
       {std::pair{"interrupt-disk:1", SIGINT}, {"terminate-disk:1", SIGTERM}}) {
    const RunResult result = RunWith(fault);
    EXPECT_EQ(result.status, 128 + signal) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err,
                HasSubstr(signal == SIGINT ? "tarnix: interrupted\n" : "tarnix: terminated\n"));
    Check(result, signal);
  }
}

INSTANTIATE_TEST_SUITE_P(Jobs, Interruption, ::testing::ValuesIn(EveryJobThereIs()),
                         [](const auto& job) { return job.param.name; });

}  // namespace
}  // namespace TarnixTools::testing
