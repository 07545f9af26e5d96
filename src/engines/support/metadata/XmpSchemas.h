// The schemas that the XMP Specification defines: which properties there are in a namespace, and of
// which type each is. PDF/A-1 goes by the XMP Specification of January 2004, PDF/A-2 and -3 by
// that of September 2005.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPSCHEMAS_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPSCHEMAS_H_

#include <cstdint>
#include <span>
#include <string_view>

namespace TarnixTools::engines {

enum class XmpRelease : std::uint8_t { k2004, k2005 };

// A property of a schema, or a field of a structure.
struct XmpDefinition {
  std::string_view name;
  std::string_view type;  // "bag ProperName"
  XmpRelease since = XmpRelease::k2004;
};

struct XmpSchema {
  std::string_view name_space;
  std::span<const XmpDefinition> properties;
};

struct XmpStructure {
  std::string_view name;  // of the type, in small letters
  std::string_view name_space;
  std::span<const XmpDefinition> fields;
};

// Null for a property that the release does not define.
const XmpDefinition* FindXmpProperty(XmpRelease release, std::string_view name_space,
                                     std::string_view name);

// type: in small letters. Null for a type that is no structure of the specifications.
const XmpStructure* FindXmpStructure(std::string_view type);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPSCHEMAS_H_
