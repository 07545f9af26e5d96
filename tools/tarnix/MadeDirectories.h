// The directories that the program makes for its outputs. Those that stay empty, because the job
// fails or is interrupted, go again.
#ifndef TARNIX_CLI_MADE_DIRECTORIES_H_
#define TARNIX_CLI_MADE_DIRECTORIES_H_

#include <string>
#include <system_error>

namespace TarnixTools::cli {

// Makes a directory with its parents, and notes those that were not there. What is there already is
// no error, whatever it is.
std::error_code MakeDirectories(const std::string& path);

// Takes away the noted directories that are empty.
void RemoveEmptyDirectories();

// Does so when it goes.
class MadeDirectories {
 public:
  MadeDirectories() = default;
  MadeDirectories(const MadeDirectories&) = delete;
  MadeDirectories& operator=(const MadeDirectories&) = delete;

  ~MadeDirectories() { RemoveEmptyDirectories(); }
};

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_MADE_DIRECTORIES_H_
