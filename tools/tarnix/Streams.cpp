#include "Streams.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fstream>
#include <ostream>

#include <fcntl.h>
#include <unistd.h>

#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

constexpr std::size_t kBlock = 65536;

// Returns 0, or the system's error number.
int WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      return errno;
    }
    if (written > 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  return 0;
}

}  // namespace

void PrepareStandardStreams() {
  for (int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) == -1) {
      // Takes the lowest free number, which is this one. Read-only: a result written to a closed
      // output must fail.
      (void)!open("/dev/null", O_RDONLY);
    }
  }
  for (const int signal : {SIGPIPE, SIGXFSZ}) {  // the write that caused it fails, and says why
    std::signal(signal, SIG_IGN);
  }
}

void WriteOutput(std::string_view text) {
  if (const int error = WriteAll(STDOUT_FILENO, text); error != 0) {
    if (error == EPIPE) {
      throw BrokenPipe();
    }
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unable to write to standard output (%s)", std::strerror(error));
  }
}

void CopyToOutput(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::array<char, kBlock> block{};
  do {
    file.read(block.data(), block.size());
    WriteOutput({block.data(), static_cast<std::size_t>(file.gcount())});
  } while (file);
  if (!file.eof()) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to read [%s]", path.c_str());
  }
}

void CopyStandardInput(std::ostream& target) {
  std::array<char, kBlock> block{};
  ssize_t count = 0;
  while (target && (count = read(STDIN_FILENO, block.data(), block.size())) != 0) {
    if (count < 0 && errno != EINTR) {
      throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to read standard input (%s)",
                         std::strerror(errno));
    }
    target.write(block.data(), std::max<ssize_t>(count, 0));
  }
}

void WriteError(std::string_view text) {
  WriteAll(STDERR_FILENO, text);
}

bool ErrorIsTerminal() {
  return isatty(STDERR_FILENO) == 1;
}

std::string OneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const auto next = i + 1 < text.size() ? static_cast<unsigned char>(text[i + 1]) : 0U;
    if (byte == 0xC2 && next >= 0x80 && next <= 0x9F) {  // U+0080 to U+009F, controls too
      line += '?';
      ++i;
    } else {
      line += byte < 0x20 || byte == 0x7F ? '?' : text[i];
    }
  }
  return line;
}

std::string WithoutDot(const std::string& path) {
  return path.starts_with("./") ? path.substr(2) : path;
}

std::string NativePath(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

}  // namespace TarnixTools::cli
