// A directory of a test's own, gone with everything in it when the test ends.
#ifndef TARNIX_TESTS_SUPPORT_TEMP_DIR_H_
#define TARNIX_TESTS_SUPPORT_TEMP_DIR_H_

#include <string>
#include <vector>

namespace TarnixTools::testing {

class TempDir {
 public:
  TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir();

  // Absolute, without a slash at its end.
  const std::string& Path() const { return path_; }

  std::string Path(const std::string& name) const { return path_ + "/" + name; }

  // A new directory inside.
  std::string MakeDir(const std::string& name) const;

  // The names of what is inside, hidden ones included, sorted; those of a directory inside when one
  // is named.
  std::vector<std::string> Names(const std::string& directory = "") const;

 private:
  std::string path_;
};

// The bytes of a file; empty when it cannot be read.
std::string ReadBytes(const std::string& path);

// Returns the path.
std::string WriteBytes(const std::string& path, const std::string& bytes);

bool Exists(const std::string& path);

// The nine permission bits.
unsigned PermissionsOf(const std::string& path);

// The form in which the library keeps paths: with backslashes.
std::string Backslashes(std::string path);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEMP_DIR_H_
