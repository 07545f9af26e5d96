#include "TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>

#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

struct Registry {
  std::mutex mutex;
  std::set<std::string> paths;
};

// Never destroyed: the program may be interrupted while its static objects go.
Registry& Directories() {
  static auto* const registry = new Registry;
  return *registry;
}

void Remove(const std::string& path) {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

[[noreturn]] void ThrowCannotCreate(const std::string& name) {
  throw PdfException(PdfExceptionCode::FileNotFound, 0, "Unable to create new file [%s] (%s)",
                     name.c_str(), std::strerror(errno != 0 ? errno : EIO));
}

}  // namespace

TemporaryDirectory::TemporaryDirectory() {
  std::error_code error;
  path_ = (std::filesystem::temp_directory_path(error) / "tarnix-XXXXXX").string();
  Registry& registry = Directories();
  const std::lock_guard lock(registry.mutex);
  if (error || mkdtemp(path_.data()) == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Unable to create temporary directory [%s] (%s)", path_.c_str(),
                       error ? error.message().c_str() : std::strerror(errno));
  }
  registry.paths.insert(path_);
}

TemporaryDirectory::~TemporaryDirectory() {
  Registry& registry = Directories();
  const std::lock_guard lock(registry.mutex);
  Remove(path_);
  registry.paths.erase(path_);
}

UnfinishedFile::UnfinishedFile(const std::string& name) : name_(name), path_(name + ".part") {
  Registry& registry = Directories();
  const std::lock_guard lock(registry.mutex);
  errno = 0;
  if (!std::ofstream(path_, std::ios::binary | std::ios::trunc)) {
    ThrowCannotCreate(name_);
  }
  registry.paths.insert(path_);
}

UnfinishedFile::~UnfinishedFile() {
  Registry& registry = Directories();
  const std::lock_guard lock(registry.mutex);
  Remove(path_);
  registry.paths.erase(path_);
}

void UnfinishedFile::Complete(const std::string& bytes) {
  errno = 0;
  std::ofstream file(path_, std::ios::binary | std::ios::app);
  file << bytes;
  file.close();
  if (!file || std::rename(path_.c_str(), name_.c_str()) != 0) {
    ThrowCannotCreate(name_);
  }
}

void RemoveTemporaryFiles() {
  Registry& registry = Directories();
  registry.mutex.lock();  // for good: the process ends
  for (const std::string& path : registry.paths) {
    Remove(path);
  }
}

}  // namespace TarnixTools::cli
