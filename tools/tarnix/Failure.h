// What can go wrong in the command line, and how it is told: wrong usage (exit status 2) and failed
// jobs (10 + code).
#ifndef TARNIX_CLI_FAILURE_H_
#define TARNIX_CLI_FAILURE_H_

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "PdfException.h"
#include "PdfReport.h"

namespace TarnixTools::cli {

constexpr int kExitUsage = 2;

// The command line itself is wrong; nothing was done.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A failed job in a form that can be printed.
struct Failure {
  PdfExceptionCode code = PdfExceptionCode::InternalError;
  long engine_code = 0;
  std::string message;
  std::string cause = {};  // in a few words; empty where the message says it all
  bool is_usage = false;   // the command line itself is wrong
  int system_error = 0;    // why the system refused something: an errno value, or 0
};

// "InvalidParameter"; "Error<n>" for a value without a name.
std::string CodeName(PdfExceptionCode code);

// 10 + the code; 2 for wrong usage.
int ExitStatus(const Failure& failure);

// A failed job that can tell why in more than a message: its report is printed, too.
class ReportedFailure : public PdfException {
 public:
  ReportedFailure(const PdfException& failure, const PdfReport& report)
      : PdfException(failure), report_(report) {}

  const PdfReport& report() const { return report_; }

 private:
  PdfReport report_;
};

// The exception being handled, whatever it is; one that is not the library's own counts as an
// internal error. Paths in its message are in the system's form, and no password is in it. Call it
// inside a catch block only.
Failure CurrentFailure();

// "tarnix: CodeName: message (cause)" as one line on standard error.
void PrintFailure(const Failure& failure);

// "unknown option --name (did you mean --names?)": the word's name only, since what follows it may be
// a password.
//   known - the right names, with their dashes.
std::string UnknownOption(std::string_view word, const std::vector<std::string>& known);

// What is wrong, then a line that points to --help, on standard error. `command` is what precedes
// "--help" there, as in "tarnix merge". Returns the exit status.
int PrintUsageError(std::string_view message, std::string_view command);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_FAILURE_H_
