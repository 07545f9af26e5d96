// Extension schemas (ISO 19005-1, 6.7.8; ISO 19005-2 and -3, 6.6.2.3): the schemas that a packet
// declares for properties that no XMP specification defines.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPEXTENSIONS_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPEXTENSIONS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/metadata/XmpSchemas.h"
#include "engines/support/metadata/XmpTree.h"
#include "engines/support/metadata/XmpTypes.h"

namespace TarnixTools::engines {

struct XmpDeclaredSchema {
  std::string name_space;
  std::vector<XmpDeclaredField> properties;
  std::vector<XmpDeclaredType> types;
};

// What is declared well enough to be used.
std::vector<XmpDeclaredSchema> ReadXmpExtensions(const XmpTree& tree);

enum class XmpExtensionPart : std::uint8_t { kSchema, kProperty, kValueType, kField };

// A field of a description that the standard gives it.
struct XmpExtensionEntry {
  std::string_view name;
  bool is_there = false;
  bool has_right_prefix = false;  // and namespace
  bool has_right_value = false;   // type, and for a value type that it is known
  bool is_needed = true;

  // As the standard asks for.
  bool IsRight() const { return is_there ? has_right_prefix && has_right_value : !is_needed; }
};

// A schema, property, value type or field that is described. The standard's fields come in the
// order of its tables.
struct XmpExtensionObject {
  XmpExtensionPart part{};
  std::string name;               // what it describes; empty when it does not say
  bool has_other_fields = false;  // that the standard does not give it
  std::vector<XmpExtensionEntry> entries;
};

// Nothing that is described: without the property, and when it is no bag of structures.
std::vector<XmpExtensionObject> DescribeXmpExtensions(const XmpTree& tree);

// What PDF/A asks of a property of the packet.
struct XmpPropertyFacts {
  bool is_predefined = false;  // by the XMP Specification
  bool is_declared = false;    // in an extension schema of the packet, or of the document's
  bool has_right_type = false;
};

// For one packet after the other: that of the document, and those of its objects, which may use what
// the document's declares.
class XmpJudge {
 public:
  // document: of the document's packet, or empty.
  XmpJudge(XmpRelease release, std::vector<XmpDeclaredSchema> document)
      : release_(release), document_(std::move(document)) {}

  // own: what the packet of the property declares; empty for the document's packet.
  XmpPropertyFacts FactsOf(const XmpNode& property,
                           const std::vector<XmpDeclaredSchema>& own) const;

 private:
  XmpRelease release_;
  std::vector<XmpDeclaredSchema> document_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPEXTENSIONS_H_
