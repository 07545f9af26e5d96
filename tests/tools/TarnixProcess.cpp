#include "tools/TarnixProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Surroundings.h"

namespace TarnixTools::testing {
namespace {

constexpr int kNotStarted = 127;

// A file without a name, gone with its descriptor.
class ScratchFile {
 public:
  ScratchFile() : file_(std::tmpfile()) {
    if (file_ == nullptr) {
      throw std::runtime_error("no temporary file");
    }
  }

  ~ScratchFile() { std::fclose(file_); }

  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  int Descriptor() const { return fileno(file_); }

  void Write(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), file_);
    std::fflush(file_);
    std::rewind(file_);
    lseek(Descriptor(), 0, SEEK_SET);
  }

  std::string Read() {
    std::string text;
    std::rewind(file_);
    std::array<char, 4096> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file_)) {
      text.append(block.data(), count);
    }
    return text;
  }

 private:
  std::FILE* file_;
};

int StatusOf(pid_t process) {
  int status = 0;
  while (waitpid(process, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

// Called in the child only.
void RedirectOutput(const std::string& output, int usual) {
  if (output.empty()) {
    dup2(usual, STDOUT_FILENO);
  } else if (output == "closed") {
    close(STDOUT_FILENO);
  } else if (output == "broken pipe") {
    int ends[2];
    if (pipe(ends) == 0) {
      dup2(ends[1], STDOUT_FILENO);
      close(ends[0]);
      close(ends[1]);
    }
  } else {
    dup2(open(output.c_str(), O_WRONLY), STDOUT_FILENO);
  }
}

// Called in the child only.
void LimitFileSize(rlim_t bytes) {
  const rlimit limit = {.rlim_cur = bytes, .rlim_max = bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

[[noreturn]] void Execute(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const std::string& word : words) {
    pointers.push_back(const_cast<char*>(word.c_str()));
  }
  pointers.push_back(nullptr);
  std::signal(SIGPIPE, SIG_DFL);
  std::signal(SIGINT, SIG_DFL);  // shells have it ignored by what they run in the background
  execvp(pointers[0], pointers.data());
  _exit(kNotStarted);
}

}  // namespace

std::string TarnixPath() {
  const char* path = std::getenv("TARNIX_CLI");
  return path != nullptr ? std::string(path) : testing::BuiltTarnix();
}

RunResult RunTarnix(const std::vector<std::string>& arguments, const RunSetup& setup) {
  std::vector<std::string> words = {TarnixPath()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return RunCommand(words, setup);
}

RunResult RunCommand(const std::vector<std::string>& words, const RunSetup& setup) {
  ScratchFile in;
  ScratchFile out;
  ScratchFile err;
  in.Write(setup.input);
  const pid_t process = fork();
  if (process < 0) {
    throw std::runtime_error("cannot fork");
  }
  if (process == 0) {
    if (!setup.directory.empty() && chdir(setup.directory.c_str()) != 0) {
      _exit(kNotStarted);
    }
    unsetenv("TARNIX_PASSWORD");
    for (const auto& [name, value] : setup.environment) {
      setenv(name.c_str(), value.c_str(), 1);
    }
    dup2(in.Descriptor(), STDIN_FILENO);
    dup2(err.Descriptor(), STDERR_FILENO);
    RedirectOutput(setup.output, out.Descriptor());
    if (setup.file_size_limit > 0) {
      LimitFileSize(setup.file_size_limit);
    }
    Execute(words);
  }
  const int status = StatusOf(process);
  return {.status = status, .out = out.Read(), .err = err.Read()};
}

TerminalRun::TerminalRun(const std::vector<std::string>& arguments, const TerminalSetup& setup)
    : terminal_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  if (terminal_ < 0 || grantpt(terminal_) != 0 || unlockpt(terminal_) != 0) {
    throw std::runtime_error("no terminal");
  }
  const winsize size = {.ws_row = 24, .ws_col = setup.columns, .ws_xpixel = 0, .ws_ypixel = 0};
  ioctl(terminal_, TIOCSWINSZ, &size);
  std::vector<std::string> words = {TarnixPath()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  process_ = fork();
  if (process_ == 0) {
    setenv("TERM", setup.kind.c_str(), 1);
    unsetenv("TARNIX_PASSWORD");
    dup2(open(ptsname(terminal_), O_RDWR | O_NOCTTY), STDERR_FILENO);
    if (setup.input == TerminalInput::Terminal) {
      dup2(STDERR_FILENO, STDIN_FILENO);
    }
    dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
    Execute(words);
  }
}

TerminalRun::~TerminalRun() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    StatusOf(process_);
  }
  close(terminal_);
}

bool TerminalRun::WaitFor(const std::string& text) {
  while (shown_.find(text) == std::string::npos) {
    if (!ReadMore()) {
      return false;
    }
  }
  return true;
}

void TerminalRun::Type(const std::string& text) const {
  if (write(terminal_, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
    throw std::runtime_error("nothing can be typed");
  }
}

std::string TerminalRun::Finish() {
  while (ReadMore()) {
  }
  status_ = StatusOf(process_);
  process_ = -1;
  return shown_;
}

std::string TerminalRun::Kill() {
  kill(process_, SIGKILL);
  return Finish();
}

bool TerminalRun::ReadMore() {
  std::array<char, 1024> block;
  const ssize_t count = read(terminal_, block.data(), block.size());
  if (count <= 0) {
    return false;  // the last one who had it open for writing is gone
  }
  shown_.append(block.data(), static_cast<std::size_t>(count));
  return true;
}

}  // namespace TarnixTools::testing
