#include "Terminal.h"

#include <atomic>
#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "Streams.h"

namespace TarnixTools::cli {
namespace {

constexpr int kUsualWidth = 80;
constexpr int kLeastWidth = 20;
constexpr std::size_t kLongestLine = 4096;

termios& Before() {
  static termios before{};
  return before;
}

std::atomic<bool> is_silent = false;

void SilenceTerminal() {
  termios silent = Before();
  silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
  is_silent = tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent) == 0;
}

std::string ReadLine() {
  std::string line;
  char byte = 0;
  while (line.size() < kLongestLine && read(STDIN_FILENO, &byte, 1) == 1 && byte != '\n') {
    line += byte;
  }
  return line;
}

}  // namespace

bool ErrorTakesBar() {
  const char* const kind = std::getenv("TERM");
  return ErrorIsTerminal() && (kind == nullptr || std::string_view(kind) != "dumb") &&
         ErrorWidth() >= kLeastWidth;
}

int ErrorWidth() {
  winsize size{};
  const bool is_known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return is_known ? size.ws_col : kUsualWidth;
}

std::optional<std::string> AskOnTerminal(const std::string& question) {
  if (isatty(STDIN_FILENO) != 1 || tcgetattr(STDIN_FILENO, &Before()) != 0) {
    return std::nullopt;
  }
  SilenceTerminal();  // first: what is typed at once is neither shown nor lost
  WriteError(question);
  std::string line = ReadLine();
  RestoreTerminal();
  WriteError("\n");
  return line;
}

void RestoreTerminal() {
  if (is_silent.exchange(false)) {
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &Before());
  }
}

}  // namespace TarnixTools::cli
