// Standard output and standard error of the process, and text that is fit for them.
#ifndef TARNIX_CLI_STREAMS_H_
#define TARNIX_CLI_STREAMS_H_

#include <exception>
#include <iosfwd>
#include <string>
#include <string_view>

namespace TarnixTools::cli {

// Makes sure that the three standard descriptors are taken, so that no document is ever opened as
// one of them, and turns a write to a closed pipe, or beyond the size that files may have, into an
// error instead of a signal.
void PrepareStandardStreams();

// Nobody reads standard output any more: the program ends without a word.
class BrokenPipe : public std::exception {};

// Writes everything or throws: BrokenPipe, or PdfException (InternalError) with the system's reason.
void WriteOutput(std::string_view text);

// Writes a file to standard output; throws what WriteOutput throws, and PdfException (FileNotFound)
// for a file that cannot be read.
void CopyToOutput(const std::string& path);

// Copies standard input to its end; the stream tells whether it could be written. Throws
// PdfException (FileNotFound) when standard input cannot be read.
void CopyStandardInput(std::ostream& target);

// Writes to standard error; a failure is ignored, since there is nowhere left to tell it.
void WriteError(std::string_view text);

bool ErrorIsTerminal();

// The text as one line that cannot steer a terminal: control characters become '?'.
std::string OneLine(std::string_view text);

// The path in the system's own form, with '/' as separator.
std::string NativePath(std::string_view path);

// The path without "./" in front.
std::string WithoutDot(const std::string& path);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_STREAMS_H_
