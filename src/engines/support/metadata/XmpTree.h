// What an XMP packet says (ISO 16684-1, clauses 6 and 7): its properties as a tree, and how it is
// written. Reads what XmpEdit changes; whoever only changes a packet needs no tree.
//
//   const XmpTree tree = ReadXmp(bytes);
//   if (const XmpNode* title = tree.Find(kDcNamespace, "title")) { ... title->children ... }
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMPTREE_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMPTREE_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/metadata/XmpEncoding.h"
#include "engines/support/metadata/XmpNames.h"

namespace TarnixTools::engines {

enum class XmpKind : std::uint8_t { kSimple, kStruct, kBag, kSeq, kAlt };

// A property, a field of a structure, an item of an array or a qualifier.
struct XmpNode {
  std::string_view name_space;  // empty for an item
  std::string_view prefix;      // as it is written
  std::string_view name;
  XmpKind kind = XmpKind::kSimple;
  bool is_uri = false;              // the value is that of an rdf:resource
  std::string value;                // of a simple one
  std::vector<XmpNode> children;    // fields of a structure or items of an array, in their order
  std::vector<XmpNode> qualifiers;  // xml:lang is one of them

  bool IsArray() const { return kind >= XmpKind::kBag; }

  bool Is(std::string_view wanted_space, std::string_view wanted_name) const {
    return name == wanted_name && name_space == wanted_space;
  }

  // Null when there is none.
  const XmpNode* Field(std::string_view wanted_space, std::string_view wanted_name) const;

  // Nothing without one.
  std::optional<std::string_view> Language() const;
};

enum class XmpState : std::uint8_t {
  kFine,
  kTooLarge,   // a bound was passed
  kMalformed,  // no well-formed XML in an encoding that XMP has, or with a document type
  kNoRdf,      // XML without an rdf:RDF
  kBadRdf,     // not the RDF that XMP allows
};

// The processing instruction that a packet starts with.
struct XmpHeader {
  bool has_bytes = false;     // its attribute "bytes"
  bool has_encoding = false;  // its attribute "encoding"
};

struct XmpTree {
  XmpState state = XmpState::kMalformed;
  XmpEncoding encoding = XmpEncoding::kUtf8;
  std::optional<XmpHeader> header;
  std::vector<XmpNode> properties;  // none unless the state is fine

  // What the views of the nodes are views of.
  std::shared_ptr<const std::string> text;

  // Null when there is none.
  const XmpNode* Find(std::string_view name_space, std::string_view name) const;
};

XmpTree ReadXmp(std::string_view packet);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMPTREE_H_
