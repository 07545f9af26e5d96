#include "TemporaryFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <set>
#include <utility>

#include "PdfException.h"

namespace TarnixTools::cli {
namespace {

struct Registry {
  std::mutex mutex;
  std::set<std::string> paths;
};

// Never destroyed: the program may be interrupted while its static objects go.
Registry& TemporaryPaths() {
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
  Registry& registry = TemporaryPaths();
  const std::lock_guard lock(registry.mutex);
  if (error || mkdtemp(path_.data()) == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Unable to create temporary directory [%s] (%s)", path_.c_str(),
                       error ? error.message().c_str() : std::strerror(errno));
  }
  registry.paths.insert(path_);
}

TemporaryDirectory::~TemporaryDirectory() {
  Registry& registry = TemporaryPaths();
  const std::lock_guard lock(registry.mutex);
  Remove(path_);
  registry.paths.erase(path_);
}

UnfinishedFile::UnfinishedFile(const std::string& name) : name_(name) {
  Registry& registry = TemporaryPaths();
  const std::lock_guard lock(registry.mutex);
  for (int number = 1; file_ == nullptr; ++number) {
    path_ = name + "." + std::to_string(number) + ".part";
    file_ = std::fopen(path_.c_str(), "wbx");
    if (file_ == nullptr && errno != EEXIST) {
      ThrowCannotCreate(name_);
    }
  }
  registry.paths.insert(path_);
}

UnfinishedFile::~UnfinishedFile() {
  if (file_ != nullptr) {
    std::fclose(file_);
  }
  Registry& registry = TemporaryPaths();
  const std::lock_guard lock(registry.mutex);
  Remove(path_);
  registry.paths.erase(path_);
}

void UnfinishedFile::Complete(const std::string& bytes) {
  errno = 0;
  const bool is_written = std::fwrite(bytes.data(), 1, bytes.size(), file_) == bytes.size();
  if (std::fclose(std::exchange(file_, nullptr)) != 0 || !is_written ||
      std::rename(path_.c_str(), name_.c_str()) != 0) {
    ThrowCannotCreate(name_);
  }
}

void RemoveTemporaryFiles() {
  Registry& registry = TemporaryPaths();
  registry.mutex.lock();  // for good: the process ends
  for (const std::string& path : registry.paths) {
    Remove(path);
  }
}

}  // namespace TarnixTools::cli
