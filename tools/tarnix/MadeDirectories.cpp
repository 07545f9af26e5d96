#include "MadeDirectories.h"

#include <algorithm>
#include <cerrno>
#include <mutex>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace TarnixTools::cli {
namespace {

struct Registry {
  std::mutex mutex;
  std::vector<std::string> paths;  // parents first
};

// Never destroyed: the program may be interrupted while its static objects go.
Registry& Made() {
  static auto* const registry = new Registry;
  return *registry;
}

}  // namespace

std::error_code MakeDirectories(const std::string& path) {
  constexpr mode_t kAnyone = 0777;  // less what the umask takes
  Registry& made = Made();
  const std::lock_guard lock(made.mutex);
  for (std::size_t end = 0; end < path.size();) {
    end = std::min(path.find('/', end + 1), path.size());
    const std::string parent = path.substr(0, end);
    if (mkdir(parent.c_str(), kAnyone) == 0) {
      made.paths.push_back(parent);
    } else if (errno != EEXIST) {
      return {errno, std::generic_category()};
    }
  }
  return {};
}

void RemoveEmptyDirectories() {
  Registry& made = Made();
  const std::lock_guard lock(made.mutex);
  for (; !made.paths.empty(); made.paths.pop_back()) {
    rmdir(made.paths.back().c_str());
  }
}

}  // namespace TarnixTools::cli
