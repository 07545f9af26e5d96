// What becomes of a job that is interrupted (SIGINT, SIGTERM): what it had not finished is gone, what
// it had is told, and the exit status is 128 and the signal.
#ifndef TARNIX_CLI_INTERRUPTION_H_
#define TARNIX_CLI_INTERRUPTION_H_

#include <string>
#include <vector>

namespace TarnixTools::cli {

// Waits for the signals on a thread of its own from now on. Unfinished outputs have no names, so that
// the process may end wherever it is. A signal that is ignored stays so.
//   job - its name where JSON is asked for, which then tells of the interruption; else empty.
void WatchForInterruption(const std::string& job);

// Notes an output that is complete, for what is told of a job that does not come to its end.
void NoteFinished(const std::string& path);

// The outputs that are finished, in order.
std::vector<std::string> FinishedOutputs();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_INTERRUPTION_H_
