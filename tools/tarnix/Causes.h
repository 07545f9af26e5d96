// The codes of the engines in words: what a failed job prints in brackets, and the table of
// docs/errors.md, which `tarnix errors` writes.
#ifndef TARNIX_CLI_CAUSES_H_
#define TARNIX_CLI_CAUSES_H_

#include <string>
#include <vector>

#include "Input.h"
#include "Job.h"

namespace TarnixTools::cli {

// Why the job failed: the engine's code in words, or what the system says of an input. Empty where
// the message says it all.
std::string CauseOf(const Job& job, const Failure& failure, const std::vector<Input>& inputs);

// Every code of every engine, with cause and cure, as a document in Markdown.
std::string ErrorTable();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_CAUSES_H_
