#include "TemporaryDirectory.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
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

void RemoveTemporaryDirectories() {
  Registry& registry = Directories();
  const std::lock_guard lock(registry.mutex);
  for (const std::string& path : registry.paths) {
    Remove(path);
  }
}

}  // namespace TarnixTools::cli
