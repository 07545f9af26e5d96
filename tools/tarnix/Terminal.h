// The terminal that the program runs on, if there is one.
#ifndef TARNIX_CLI_TERMINAL_H_
#define TARNIX_CLI_TERMINAL_H_

#include <optional>
#include <string>

namespace TarnixTools::cli {

// Whether standard error is a terminal on which a line can be drawn again and again.
bool ErrorTakesBar();

// Columns of the terminal that standard error is; 80 where it does not tell.
int ErrorWidth();

// A line that is typed without being shown. Nothing when standard input is no terminal.
std::optional<std::string> AskOnTerminal(const std::string& question);

// Undoes what AskOnTerminal does to the terminal, for a program that is interrupted meanwhile.
void RestoreTerminal();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_TERMINAL_H_
