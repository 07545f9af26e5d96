// The CMaps that readers know without a file, and their character collections (ISO 32000-1, 9.7.5.2,
// tables 118 and 119).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_PREDEFINEDMAPS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_PREDEFINEDMAPS_H_

#include <cstdint>
#include <optional>
#include <string_view>

namespace TarnixTools::engines::fonts {

// Of the registry Adobe.
struct PredefinedMap {
  std::string_view ordering;    // of its character collection: "Japan1"
  std::int64_t supplement = 0;  // that has all its identifiers, for PDF 1.7
};

// Nothing for a name that the table does not have, and for Identity-H and Identity-V, whose
// identifiers are of no collection.
std::optional<PredefinedMap> PredefinedMapOf(std::string_view name);

// Identity-H or Identity-V.
bool IsIdentityMap(std::string_view name);

// A character collection whose identifiers readers know the characters of (9.10.2).
bool IsKnownCollection(std::string_view registry, std::string_view ordering);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_PREDEFINEDMAPS_H_
