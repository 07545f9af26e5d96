// Directories and files of the program's own for what it keeps while it runs.
#ifndef TARNIX_CLI_TEMPORARY_FILES_H_
#define TARNIX_CLI_TEMPORARY_FILES_H_

#include <cstdio>
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

// A file that gets its name when it is complete; what there is of it before that is gone when the object
// goes, and when the program is interrupted.
class UnfinishedFile {
 public:
  // Makes an empty one beside it, under a name that no file has. Throws PdfException (FileNotFound)
  // when that cannot be.
  explicit UnfinishedFile(const std::string& name);
  ~UnfinishedFile();
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;

  // Writes all of it, in place of a file that has the name. Throws PdfException (FileNotFound).
  void Complete(const std::string& bytes);

 private:
  std::string name_;
  std::string path_;  // until it is complete
  std::FILE* file_ = nullptr;
};

// Removes what there is of these, for a program that ends without its destructors. May be called on
// another thread; no new ones are made from then on.
void RemoveTemporaryFiles();

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_TEMPORARY_FILES_H_
