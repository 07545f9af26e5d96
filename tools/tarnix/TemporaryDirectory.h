// Directories of the program's own for what it keeps while it runs.
#ifndef TARNIX_CLI_TEMPORARY_DIRECTORY_H_
#define TARNIX_CLI_TEMPORARY_DIRECTORY_H_

#include <string>

namespace TarnixTools::cli {

// Readable by nobody else; gone with everything in it when the object goes, and when the program is
// interrupted.
class TemporaryDirectory {
 public:
  // Throws PdfException (FileNotFound) when none can be made.
  TemporaryDirectory();
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

// Removes those that are there, for a program that ends without its destructors. May be called on
// another thread.
void RemoveTemporaryDirectories();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_TEMPORARY_DIRECTORY_H_
