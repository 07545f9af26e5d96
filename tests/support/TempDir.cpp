#include "support/TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>
#include <unistd.h>

namespace TarnixTools::testing {

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::temp_directory_path() / "tarnix-test-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("cannot make a temporary directory: " + pattern);
  }
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TempDir::MakeDir(const std::string& name) const {
  fs::create_directories(Path(name));
  return Path(name);
}

std::vector<std::string> TempDir::Names(const std::string& directory) const {
  std::vector<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator(Path(directory))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string ReadBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string WriteBytes(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes << std::flush;
  if (!file) {
    throw std::runtime_error("cannot write " + path);
  }
  return path;
}

bool Exists(const std::string& path) {
  struct stat info {};

  return lstat(path.c_str(), &info) == 0;
}

unsigned PermissionsOf(const std::string& path) {
  struct stat info {};

  return stat(path.c_str(), &info) == 0 ? info.st_mode & 0777U : 0U;
}

std::string Backslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace TarnixTools::testing
