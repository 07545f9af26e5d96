// CMap files (ISO 32000-2, 9.7.5.4 and 9.10.3), written.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CMAPTEXT_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CMAPTEXT_H_

#include <cstdint>
#include <map>
#include <string>

namespace TarnixTools::engines::fonts {

// The name of the map that CodeMapText makes.
inline constexpr const char* kCodeMapName = "TarnixCodes";

// Entries of the dictionary that such a map's stream wants.
std::string CodeMapEntries(bool is_vertical);

// A map from codes to character identifiers of the collection Adobe-Identity.
//   code_bytes - 1 or 2
std::string CodeMapText(const std::map<std::uint32_t, std::uint32_t>& cids, int code_bytes,
                        bool is_vertical);

// What the stream of a /ToUnicode holds. The texts are cut where they are very long.
std::string ToUnicodeText(const std::map<std::uint32_t, std::u32string>& texts, int code_bytes);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CMAPTEXT_H_
