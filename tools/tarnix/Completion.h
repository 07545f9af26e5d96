// Completion scripts for shells, made from the job table. Each completes job names, options, the words
// that an option allows, files and directories, and needs nothing but its shell.
#ifndef TARNIX_CLI_COMPLETION_H_
#define TARNIX_CLI_COMPLETION_H_

#include <string>

namespace TarnixTools::cli {

// To be sourced by bash, or put where it looks for completions by the name "tarnix".
std::string BashCompletion();

// To be put into a directory of zsh's fpath by the name "_tarnix", or sourced after compinit.
std::string ZshCompletion();

// To be sourced by fish, or put where it looks for completions by the name "tarnix.fish".
std::string FishCompletion();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_COMPLETION_H_
