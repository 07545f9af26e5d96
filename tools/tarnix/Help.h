// The texts of --help and --version, made from the job table.
#ifndef TARNIX_CLI_HELP_H_
#define TARNIX_CLI_HELP_H_

#include <string>

#include "Job.h"

namespace TarnixTools::cli {

// Help of the whole command: every job in a line.
std::string GeneralHelp();

// Help of one job with all its options.
std::string JobHelp(const Job& job);

// "tarnix 5.4.0"
std::string VersionLine();

// "-o, --out-dir DIR"
std::string OptionHeading(const OptionRow& row);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_HELP_H_
