// The CMaps that readers know without a file (ISO 32000-1, table 118), for those who have to know, too;
// and where systems keep the files of CMaps, as the package poppler-data does.
//
//   const auto map = InstalledMap("90ms-RKSJ-H");
//   if (map != nullptr) ... map->CidOf(code) ...
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_INSTALLEDMAPS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_INSTALLEDMAPS_H_

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "engines/support/fonts/CodeMap.h"

namespace TarnixTools::engines::fonts {

// In each of them there is a folder for each collection: "Adobe-Japan1".
inline constexpr std::array<std::string_view, 3> kCMapFolders = {
    "/usr/share/poppler/cMap/", "/usr/local/share/poppler/cMap/",
    "/opt/homebrew/share/poppler/cMap/"};

// Empty where there is no such file, and where it is longer than these files are.
std::string ReadCMapFile(const std::string& path);

// Null for a name that is not predefined, and where the map is not installed. Each is read once in the
// life of the process and shared; any thread may ask.
std::shared_ptr<const CodeMap> InstalledMap(std::string_view name);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_INSTALLEDMAPS_H_
