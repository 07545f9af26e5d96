// The examples in the help of each job are run as they stand there.
#include <filesystem>

#include "support/Readers.h"
#include "support/Surroundings.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

std::vector<std::string> JobsOf(const std::string& help) {
  std::vector<std::string> jobs;
  std::istringstream lines(help.substr(help.find("Jobs:\n") + 6));
  for (std::string line; std::getline(lines, line) && !line.empty();) {
    if (line.starts_with("  ") && line[2] != ' ') {
      jobs.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
  }
  return jobs;
}

std::vector<std::string> ExamplesOf(const std::string& help) {
  std::vector<std::string> examples;
  std::istringstream lines(help.substr(help.find("Examples:\n") + 10));
  for (std::string line; std::getline(lines, line);) {
    examples.push_back(line.substr(2));
  }
  return examples;
}

class HelpExamples : public CliTest {
 protected:
  HelpExamples() {
    for (const auto& entry : std::filesystem::directory_iterator(ExamplesDir())) {
      if (entry.is_regular_file()) {
        std::filesystem::copy(entry.path(), directory_.Path());
      }
    }
  }

  // In a shell that finds the program.
  RunResult RunLine(const std::string& line) const {
    const std::string program = TarnixPath();
    return RunCommand({"env", "PATH=" + program.substr(0, program.rfind('/')) + ":/usr/bin:/bin",
                       "bash", "-c", line},
                      {.directory = directory_.Path()});
  }
};

TEST_F(HelpExamples, OfEveryJobWork) {
  TARNIX_NEED_PROGRAM("bash");
  const std::vector<std::string> jobs = JobsOf(Run({"help"}).out);
  ASSERT_GE(jobs.size(), 20U);
  for (const std::string& job : jobs) {
    const std::vector<std::string> examples = ExamplesOf(Run({job, "--help"}).out);
    EXPECT_EQ(examples.size(), 3U) << job;
    for (const std::string& example : examples) {
      const auto result = RunLine(example);
      EXPECT_EQ(result.status, 0) << example << ": " << result.err;
      EXPECT_FALSE(example.find("-o - ") == std::string::npos && result.out.empty()) << example;
    }
  }
}

}  // namespace
}  // namespace TarnixTools::testing
