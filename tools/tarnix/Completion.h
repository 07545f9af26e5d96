// The bash completion script, made from the job table.
#ifndef TARNIX_CLI_COMPLETION_H_
#define TARNIX_CLI_COMPLETION_H_

#include <string>

namespace TarnixTools::cli {

// A script to be sourced: completes job names, options, the words an option allows, files and
// directories. It needs nothing but bash itself.
std::string BashCompletion();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_COMPLETION_H_
