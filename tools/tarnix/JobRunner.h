// Runs one job from its words on the command line to the exit status.
#ifndef TARNIX_CLI_JOB_RUNNER_H_
#define TARNIX_CLI_JOB_RUNNER_H_

#include <string>
#include <vector>

#include "Job.h"

namespace TarnixTools::cli {

// Parses, runs and prints: the result on standard output, everything else on standard error. Throws
// UsageError, and PdfException when the result cannot be written.
int RunJob(const Job& job, const std::vector<std::string>& words);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_JOB_RUNNER_H_
