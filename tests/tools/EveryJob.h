// Every job of the command line with the documents that it works on, for tests of what all of them have
// in common, and of what they do when the system fails them or they are interrupted, which
// FaultInjector.cpp does to them.
#ifndef TARNIX_TESTS_TOOLS_EVERY_JOB_H_
#define TARNIX_TESTS_TOOLS_EVERY_JOB_H_

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "support/Surroundings.h"
#include "tools/CliTest.h"

namespace TarnixTools::testing {

struct EveryJob {
  std::string name;                // of the test
  std::vector<std::string> words;  // of the command line, without where the output goes
  bool writes = true;              // files
  bool varies = false;  // it may write other bytes: encrypted, or in another way after a fault
  // Of a run without more words: the files that it writes to the current directory, in order, and the
  // fields of its JSON object beside those of every job.
  std::vector<std::string> outputs = {};
  std::vector<std::string> fields = {};
};

void PrintTo(const EveryJob& job, std::ostream* out);

const std::vector<EveryJob>& EveryJobThereIs();

// Those of them that write files.
std::vector<EveryJob> EveryJobThatWrites();

// Ends the test as skipped when the build has no fault injector.
#define TARNIX_NEED_FAULT_INJECTOR()                       \
  do {                                                     \
    if (::TarnixTools::testing::FaultInjector().empty()) { \
      GTEST_SKIP() << "this build has no fault injector";  \
    }                                                      \
  } while (false)

// The documents lie in a directory of their own, jobs write to "out" in it, and what they keep for
// themselves goes to "tmp".
class EveryJobTest : public CliTest, public ::testing::WithParamInterface<EveryJob> {
 protected:
  using Files = std::map<std::string, std::string>;  // bytes by name

  EveryJobTest();

  void SetUp() override;

  // The job with more words behind its name.
  RunResult RunJob(const std::vector<std::string>& more, const RunSetup& setup = {}) const;

  // The job with a fault in it, as TARNIX_FAULT has it; empty for none.
  RunResult RunWith(const std::string& fault) const;

  // How many there were of each kind in the last run.
  std::map<std::string, int> Counts() const;

  // In the directory, and what lies in directories of it. Of a job whose outputs vary, the bytes are
  // left away.
  Files FilesIn(const std::string& folder) const;

  Files inputs_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_TOOLS_EVERY_JOB_H_
