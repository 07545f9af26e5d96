// Standard output and standard error of the process, and text that is fit for them.
#ifndef TARNIX_CLI_STREAMS_H_
#define TARNIX_CLI_STREAMS_H_

#include <string>
#include <string_view>

namespace TarnixTools::cli {

// Makes sure that the three standard descriptors are taken, so that no document is ever opened as
// one of them, and turns a write to a closed pipe into an error instead of a signal.
void PrepareStandardStreams();

// Writes everything or throws PdfException (InternalError) with the system's reason.
void WriteOutput(std::string_view text);

// Writes to standard error; a failure is ignored, since there is nowhere left to tell it.
void WriteError(std::string_view text);

bool ErrorIsTerminal();

// The text as one line that cannot steer a terminal: control characters become '?'.
std::string OneLine(std::string_view text);

// The path in the system's own form, with '/' as separator.
std::string NativePath(std::string_view path);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_STREAMS_H_
