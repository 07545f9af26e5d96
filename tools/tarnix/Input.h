// The inputs of a job, as they were given and as they are opened.
#ifndef TARNIX_CLI_INPUT_H_
#define TARNIX_CLI_INPUT_H_

#include <memory>
#include <string>
#include <vector>

#include "CommandParser.h"
#include "TemporaryFiles.h"

namespace TarnixTools::cli {

struct Input {
  std::string given;  // as the user calls it
  std::string path;   // what is opened
  std::string stem;   // its name without directory and extension
  std::string pages;  // behind FILE:PAGES; empty for all
};

// What the words of a command line stand for; "-" is standard input, copied to a file that is there
// as long as the object.
class Inputs {
 public:
  // Throws UsageError for a name with a backslash, or standard input twice; PdfException when
  // standard input cannot be read or kept.
  explicit Inputs(const Command& command);

  const std::vector<Input>& List() const { return list_; }

 private:
  Input FromStandardInput();

  std::unique_ptr<TemporaryDirectory> directory_;
  std::vector<Input> list_;
};

// The part of a path behind the last slash, without what follows the last full stop; all of a name that
// begins with its only one, such as ".hidden".
std::string StemOf(const std::string& path);

// Throws UsageError for a name with a backslash: the library takes those for slashes.
//   what - "--output", or empty for an input.
void RequireNoBackslash(const std::string& what, const std::string& name);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_INPUT_H_
