#include "engines/support/fonts/CollectionText.h"

#include <map>
#include <mutex>
#include <utility>

#include "engines/support/fonts/InstalledMaps.h"
#include "engines/support/fonts/PredefinedMaps.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::fonts {

namespace {

std::unique_ptr<CollectionText> Find(const std::string& collection) {
  for (const std::string_view folder : kCMapFolders) {
    auto found =
        CollectionText::Read(std::string(folder) + collection + "/" + collection + "-UCS2");
    if (found != nullptr) {
      return found;
    }
  }
  return nullptr;
}

}  // namespace

const CollectionText* CollectionText::Of(std::string_view ordering) {
  static std::mutex mutex;
  static std::map<std::string, std::unique_ptr<CollectionText>, std::less<>> known;
  if (!IsKnownCollection("Adobe", ordering)) {
    return nullptr;
  }
  const std::scoped_lock lock(mutex);
  const auto [place, is_new] = known.try_emplace(std::string(ordering));
  if (is_new) {
    place->second = Find("Adobe-" + place->first);
  }
  return place->second.get();
}

std::unique_ptr<CollectionText> CollectionText::Read(const std::string& path) {
  const std::string bytes = ReadCMapFile(path);
  if (bytes.empty()) {
    return nullptr;
  }
  return std::unique_ptr<CollectionText>(new CollectionText(CMapFile::Read(bytes)));
}

std::u32string CollectionText::TextOf(std::uint32_t cid) const {
  const auto units = file_.TextOf(cid);
  return units ? WideToUtf32(std::wstring(units->begin(), units->end())) : std::u32string();
}

}  // namespace TarnixTools::engines::fonts
