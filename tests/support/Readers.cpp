#include "support/Readers.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/TempDir.h"

extern char** environ;

namespace TarnixTools::testing {
namespace {

std::string Trimmed(const std::string& text) {
  const char* const white_space = " \t\r\n\f";
  const std::size_t first = text.find_first_not_of(white_space);
  if (first == std::string::npos) {
    return "";
  }
  return text.substr(first, text.find_last_not_of(white_space) - first + 1);
}

}  // namespace

ProgramResult RunProgram(const std::vector<std::string>& command) {
  const TempDir directory;  // files rather than pipes: the program never waits for us to read
  const std::string output = directory.Path("output");
  const std::string errors = directory.Path("errors");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  const int flags = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), flags, 0600);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), flags, 0600);
  std::vector<char*> arguments;
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));
  }
  arguments.push_back(nullptr);
  ProgramResult result;
  pid_t child = 0;
  const int spawned =
      posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (spawned == 0 && waitpid(child, &status, 0) == child && WIFEXITED(status)) {
    result.exit_status = WEXITSTATUS(status);
  }
  result.output = ReadBytes(output);
  result.errors = ReadBytes(errors);
  return result;
}

bool HasProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) {
    return access(name.c_str(), X_OK) == 0;
  }
  const char* path = std::getenv("PATH");
  std::istringstream directories(path != nullptr ? path : "");
  for (std::string directory; std::getline(directories, directory, ':');) {
    if (access((directory + "/" + name).c_str(), X_OK) == 0) {
      return true;
    }
  }
  return false;
}

std::string QpdfComplaints(const std::string& path, const std::string& password) {
  const ProgramResult result = RunProgram({"qpdf", "--password=" + password, "--check", path});
  if (result.exit_status == 0 && result.errors.empty()) {
    return "";
  }
  return "exit status " + std::to_string(result.exit_status) + ": " + result.output + result.errors;
}

bool QpdfNeedsPassword(const std::string& path) {
  // Exit status 0: a password is needed, beyond the empty one.
  return RunProgram({"qpdf", "--requires-password", path}).exit_status == 0;
}

std::string QpdfEncryption(const std::string& path, const std::string& password) {
  return RunProgram({"qpdf", "--password=" + password, "--show-encryption", path}).output;
}

std::string QpdfJson(const std::string& path, const std::string& password) {
  return RunProgram({"qpdf", "--password=" + password, "--json", path}).output;
}

std::vector<std::string> PageTexts(const std::string& path, const std::string& password) {
  const ProgramResult result =
      RunProgram({"pdftotext", "-upw", password, "-enc", "UTF-8", path, "-"});
  std::vector<std::string> texts;
  std::istringstream pages(result.output);
  for (std::string page; std::getline(pages, page, '\f');) {
    texts.push_back(Trimmed(page));
  }
  return texts;
}

std::vector<PageFacts> PageFactsOf(const std::string& path, const std::string& password) {
  const ProgramResult result =
      RunProgram({"pdfinfo", "-upw", password, "-f", "1", "-l", "-1", path});
  std::vector<PageFacts> facts;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string page;
    std::string number;
    std::string what;
    words >> page >> number >> what;
    if (page == "Page" && what == "size:") {
      std::string times;
      facts.emplace_back();
      words >> facts.back().width >> times >> facts.back().height;
    } else if (page == "Page" && what == "rot:") {
      words >> facts.back().rotation;
    }
  }
  return facts;
}

std::string EncryptWithQpdf(const std::string& input, const std::string& output,
                            const std::string& user_password, const std::string& owner_password) {
  const ProgramResult result =
      RunProgram({"qpdf", "--encrypt", user_password, owner_password, "256", "--", input, output});
  if (result.exit_status != 0) {
    throw std::runtime_error("qpdf cannot encrypt " + input + ": " + result.errors);
  }
  return output;
}

}  // namespace TarnixTools::testing
