// Types of XMP values (ISO 16684-1, 8.2; ISO 19005, "Extension schemas"): those of the
// specifications, and those that a packet declares for the properties of a schema of its own.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPTYPES_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPTYPES_H_

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines {

struct XmpDeclaredField {
  std::string name;
  std::string type;  // as PlainXmpType gives it
};

// A structure, or a simple type when it has no fields.
struct XmpDeclaredType {
  std::string name;  // as PlainXmpType gives it
  std::string name_space;
  std::vector<XmpDeclaredField> fields;
};

// The type in small letters without what says that it is a choice: "bag text" for "Bag of open
// Choice of Text".
std::string PlainXmpType(std::string_view type);

// Whether the specifications define the type, or one of these does.
//   type - as PlainXmpType gives it
bool IsKnownXmpType(std::string_view type, std::span<const XmpDeclaredType> declared);

// Whether the value is of the type, its items and fields included. Nothing is of an unknown type.
//   type - as PlainXmpType gives it
bool IsOfXmpType(const XmpNode& node, std::string_view type,
                 std::span<const XmpDeclaredType> declared);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPTYPES_H_
