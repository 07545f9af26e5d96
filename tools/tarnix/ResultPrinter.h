// What a job tells when it is over: its outputs, its report, its warnings and what failed.
#ifndef TARNIX_CLI_RESULT_PRINTER_H_
#define TARNIX_CLI_RESULT_PRINTER_H_

#include <string>

#include "CommandParser.h"
#include "Failure.h"
#include "Job.h"

namespace TarnixTools::cli {

// The field "report" of the JSON output.
Json ReportJson(const PdfReport& report);

// Results to standard output, everything else to standard error; returns the exit status.
int PrintResult(const Command& command, const JobResult& result);

// A job that failed as a whole, with what it finished before and what it reports all the same;
// returns the exit status.
int PrintFailedJob(const Command& command, const Failure& failure, const PdfReport& report);

// The JSON object of a command line that is wrong.
//   job - empty when there is no such job.
void PrintUsageJson(const std::string& job, const std::string& message);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_RESULT_PRINTER_H_
