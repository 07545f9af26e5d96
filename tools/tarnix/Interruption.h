// What becomes of a job that is interrupted (SIGINT, SIGTERM): what it had not finished is gone, what
// it had is told, and the exit status is 128 and the signal.
#ifndef TARNIX_CLI_INTERRUPTION_H_
#define TARNIX_CLI_INTERRUPTION_H_

#include <string>
#include <vector>

namespace TarnixTools::cli {

// Waits for the signals on a thread of its own from now on. A signal that is ignored stays so. A job
// that writes files is given a moment to stop by itself (IsInterrupted) and to take away what it leaves
// half done; after that, or at a second signal, the process ends wherever it is.
//   job - its name where JSON is asked for, which then tells of the interruption; else empty.
void WatchForInterruption(const std::string& job, bool writes_files);

// Whether a signal has come; the job is to stop.
bool IsInterrupted();

// Ends the process when a signal has come: for a job that has stopped.
void EndIfInterrupted();

// Notes an output that is complete, for what is told of a job that does not come to its end.
void NoteFinished(const std::string& path);

// The outputs that are finished, in order.
std::vector<std::string> FinishedOutputs();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_INTERRUPTION_H_
