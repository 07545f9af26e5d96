// The properties of a packet that say what the entries of the document information say (ISO 19005-1,
// 6.7.3; ISO 32000-2, 14.3.3), and whether both agree.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPINFO_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPINFO_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/metadata/XmpTree.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

// In the order of the standard's table.
enum class XmpInfoField : std::uint8_t {
  kTitle,
  kAuthor,
  kSubject,
  kKeywords,
  kCreator,
  kProducer,
  kCreationDate,
  kModDate,
};

inline constexpr std::size_t kXmpInfoFieldCount = 8;

// What a field is in either place.
struct XmpMirror {
  XmpInfoField field;
  std::string_view key;  // of the document information
  std::string_view name_space;
  std::string_view prefix;
  std::string_view name;
  std::string_view type;  // of the property, as in XmpSchemas.h
};

extern const std::array<XmpMirror, kXmpInfoFieldCount> kXmpMirrors;

inline const XmpMirror& XmpMirrorOf(XmpInfoField field) {
  return kXmpMirrors[static_cast<std::size_t>(field)];
}

// By XmpInfoField, in UTF-8, without NULs at the end; dates as the information has them. Nothing for
// an entry that is not there or no string.
using XmpInfoValues = std::array<std::optional<std::string>, kXmpInfoFieldCount>;

XmpInfoValues ReadXmpInfoValues(pdf::Document& document);

// What the packet says in a field: of a text in several languages the one that is for all others,
// of an array with one item that item. Nothing when it says nothing or something else.
std::optional<std::string> XmpFieldText(const XmpTree& tree, const XmpMirror& mirror);

// Whether the packet says what the information says. Dates agree when they name the same moment.
bool XmpAgrees(const XmpTree& tree, const XmpMirror& mirror, std::string_view info_value);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPINFO_H_
