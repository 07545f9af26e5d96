// The passwords that a command line gives, and which of them opens an input.
#ifndef TARNIX_CLI_PASSWORDS_H_
#define TARNIX_CLI_PASSWORDS_H_

#include <map>
#include <string>
#include <vector>

#include "CommandParser.h"
#include "Input.h"

namespace TarnixTools::cli {

class Passwords {
 public:
  // Reads those that are to be read from files. Throws PdfException when one cannot be read.
  explicit Passwords(const Command& command);

  // The one that opens the input: of several, those that were given are tried in turn. Empty without
  // any.
  const std::string& For(const Input& input);

  // What the option --NAME or --NAME-file gives, empty without either; a file is read once.
  const std::string& OfOption(const std::string& name);

  // Asks on the terminal, without echo, for the passwords that the inputs need and nobody gave. False
  // when there is no terminal, or nothing to ask for.
  bool AskFor(const std::vector<Input>& inputs);

 private:
  const OptionValues& values_;
  std::vector<std::string> given_;
  std::map<std::string, std::string> of_input_;   // by path
  std::map<std::string, std::string> of_option_;  // by name
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PASSWORDS_H_
