// Files that a job makes for itself, gone when the job is left.
#ifndef TARNIX_DOCUMENT_TEMPORARY_FILES_H_
#define TARNIX_DOCUMENT_TEMPORARY_FILES_H_

#include <string>
#include <vector>

namespace TarnixTools {

class TemporaryFiles {
 public:
  TemporaryFiles() = default;
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  ~TemporaryFiles();

  // The path, or one like it where something of that name is there already. What is made under it is
  // deleted when this object is, unless it is kept.
  const std::string& Reserve(const std::string& path);
  void Keep(const std::string& path);

 private:
  std::vector<std::string> paths_;
};

// Copies a file to the path, where it appears whole, in place of one that has its name. Throws
// PdfException (FileNotFound) when it cannot be read or written.
void CopyWhole(const std::string& from, const std::string& to);

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_TEMPORARY_FILES_H_
