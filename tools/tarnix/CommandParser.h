// Turns the words after a job's name into inputs and option values.
#ifndef TARNIX_CLI_COMMAND_PARSER_H_
#define TARNIX_CLI_COMMAND_PARSER_H_

#include <string>
#include <vector>

#include "Job.h"
#include "OptionTable.h"

namespace TarnixTools::cli {

struct Command {
  const Job* job = nullptr;
  std::vector<std::string> inputs;
  OptionValues values;  // one entry per option that the job accepts
};

// Reads the words and checks them against the rows: known options, their values, what excludes or
// needs what, and the number of inputs. Throws UsageError. With --help or --version among the words
// nothing beyond the syntax is checked.
Command ParseCommand(const Job& job, const std::vector<std::string>& words);

// Throws UsageError when the row's value is not of its kind, or does not go with the other values.
void CheckOption(const OptionRow& row, const OptionValues& values);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_COMMAND_PARSER_H_
