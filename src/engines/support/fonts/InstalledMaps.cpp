#include "engines/support/fonts/InstalledMaps.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "engines/support/fonts/PredefinedMaps.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::fonts {

namespace {

constexpr std::size_t kMaxFileBytes = std::size_t{4} << 20;
// A vertical map builds on the horizontal one.
constexpr int kMaxBases = 2;

using SharedMap = std::shared_ptr<const CodeMap>;

std::string FindFile(std::string_view name, std::string_view ordering) {
  for (const std::string_view folder : kCMapFolders) {
    std::string bytes = ReadCMapFile(std::string(folder) + "Adobe-" + std::string(ordering) + "/" +
                                     std::string(name));
    if (!bytes.empty()) {
      return bytes;
    }
  }
  return {};
}

SharedMap ReadMap(std::string_view name, int bases_left) {
  const std::optional<PredefinedMap> predefined = PredefinedMapOf(name);
  if (!predefined || bases_left < 0) {
    return nullptr;
  }
  std::optional<CodeMap> map =
      CodeMap::ReadAny(FindFile(name, predefined->ordering),
                       [&](std::string_view base) { return ReadMap(base, bases_left - 1); });
  return map ? std::make_shared<const CodeMap>(*std::move(map)) : nullptr;
}

}  // namespace

std::string ReadCMapFile(const std::string& path) {
  const platform::FilePtr file = platform::OpenForReading(path);
  std::string bytes;
  std::array<char, 16384> block;
  std::size_t count = file != nullptr ? std::fread(block.data(), 1, block.size(), file.get()) : 0;
  while (count > 0 && bytes.size() <= kMaxFileBytes) {
    bytes.append(block.data(), count);
    count = std::fread(block.data(), 1, block.size(), file.get());
  }
  return bytes.size() <= kMaxFileBytes ? bytes : std::string();
}

SharedMap InstalledMap(std::string_view name) {
  static std::mutex mutex;
  static std::map<std::string, SharedMap, std::less<>> known;  // no more than predefined
  const std::lock_guard lock(mutex);
  const auto found = known.find(name);
  if (found != known.end()) {
    return found->second;
  }
  SharedMap map = ReadMap(name, kMaxBases);
  if (PredefinedMapOf(name)) {
    known.emplace(name, map);
  }
  return map;
}

}  // namespace TarnixTools::engines::fonts
