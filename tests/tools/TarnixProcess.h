// Runs the built command line as a user would.
//
//   const auto result = RunTarnix({"merge", "a.pdf", "b.pdf"}, {.directory = dir});
//   EXPECT_EQ(result.status, 0) << result.err;
#ifndef TARNIX_TESTS_TOOLS_TARNIX_PROCESS_H_
#define TARNIX_TESTS_TOOLS_TARNIX_PROCESS_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <sys/types.h>

namespace TarnixTools::testing {

struct RunSetup {
  std::string directory = {};  // where the program runs; empty: here
  std::string input = {};      // its standard input
  // Where its standard output goes instead of to RunResult::out: a path, or "closed" or "broken
  // pipe".
  std::string output = {};
  std::map<std::string, std::string> environment = {};  // beside the test's own
  std::uint64_t file_size_limit = 0;  // bytes that no file can grow beyond; 0: as large as it likes
};

struct RunResult {
  int status = -1;  // exit status; 128 + signal when killed
  std::string out;
  std::string err;
};

// The program under test: the environment variable TARNIX_CLI, or the one that was built along.
std::string TarnixPath();

RunResult RunTarnix(const std::vector<std::string>& arguments, const RunSetup& setup = {});

// Any program, found along PATH. Status 127 when there is none of that name.
RunResult RunCommand(const std::vector<std::string>& words, const RunSetup& setup = {});

// What a run reads from.
enum class TerminalInput { Tests, Terminal };  // the test's own standard input, or what is typed

struct TerminalSetup {
  TerminalInput input = TerminalInput::Tests;
  unsigned short columns = 0;  // 0: the terminal does not know
  std::string kind = "xterm";  // for TERM
};

// A run whose standard error is a terminal; its standard output is thrown away.
class TerminalRun {
 public:
  explicit TerminalRun(const std::vector<std::string>& arguments, const TerminalSetup& setup = {});
  // Kills the program if it is still running.
  ~TerminalRun();
  TerminalRun(const TerminalRun&) = delete;
  TerminalRun& operator=(const TerminalRun&) = delete;

  // Waits until the terminal has shown the text; false when the program ended without.
  bool WaitFor(const std::string& text);
  // What somebody types. The terminal shows it unless the program has told it not to.
  void Type(const std::string& text) const;
  // Waits for the end of the program and returns all that the terminal has shown.
  std::string Finish();

  // Kills the program and returns all that the terminal has shown.
  std::string Kill();

  // As RunResult::status, once the program has ended.
  int Status() const { return status_; }

 private:
  bool ReadMore();

  int terminal_ = -1;
  pid_t process_ = -1;
  int status_ = -1;
  std::string shown_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_TOOLS_TARNIX_PROCESS_H_
