// The codes of the engines in words: what a failed job prints in brackets, and the table of
// docs/errors.md, which `tarnix errors` writes.
#ifndef TARNIX_CLI_CAUSES_H_
#define TARNIX_CLI_CAUSES_H_

#include <string>
#include <vector>

#include "CommandParser.h"
#include "Failure.h"
#include "Input.h"

namespace TarnixTools::cli {

// The exception being handled, with why the job failed: what the system says of a file that was to be
// read, or the engine's code in words; no cause where the message says it all. Standard input is called
// so, not by where it is kept. Call it inside a catch block only.
Failure CurrentFailureOn(const Command& command, const std::vector<Input>& inputs);

// Every code of every engine, with cause and cure, as a document in Markdown.
std::string ErrorTable();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_CAUSES_H_
