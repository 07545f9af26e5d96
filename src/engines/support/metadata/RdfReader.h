// Makes a tree of the RDF in an XMP packet, of the part of RDF that XMP allows (ISO 16684-1, 7.4 to
// 7.9 and Annex C): told of one tag after the other, without recursion.
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_RDFREADER_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_RDFREADER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines {

// A name or an attribute whose namespace is known.
struct XmlQName {
  std::string_view name_space;
  std::string_view prefix;
  std::string_view local;

  bool IsRdf(std::string_view name) const { return local == name && name_space == kRdfNamespace; }
};

struct RdfAttribute {
  XmlQName name;
  std::string value;  // expanded
};

class RdfReader {
 public:
  // Below rdf:RDF, whose own tags are not told of. Each is false for what XMP does not allow.
  bool Start(const XmlQName& name, const std::vector<RdfAttribute>& attributes);
  bool Text(const std::string& characters);
  bool End();

  // False when a property is there twice.
  bool Finish();

  bool is_too_large() const { return is_too_large_; }

  std::vector<XmpNode> TakeProperties() { return std::move(properties_); }

 private:
  enum class Role : std::uint8_t {
    kTop,       // a description, whose properties are the document's
    kTyped,     // what a property holds: a description or an array
    kProperty,  // holds text or one of these
    kFields,    // a property that holds properties
    kNothing,   // may not hold anything
  };

  struct Open {
    Role role;
    XmpNode node;
    bool has_node = false;  // a property that holds more than text
  };

  bool StartTop(const XmlQName& name, const std::vector<RdfAttribute>& attributes);
  bool StartTyped(const XmlQName& name, const std::vector<RdfAttribute>& attributes);
  bool StartProperty(const XmlQName& name, const std::vector<RdfAttribute>& attributes);
  bool ReadNodeAttributes(const std::vector<RdfAttribute>& attributes, XmpNode& node);
  bool ReadPropertyAttributes(const std::vector<RdfAttribute>& attributes, Open& open);
  bool ReadShortForm(const std::vector<RdfAttribute>& attributes, Open& open);
  bool KeepAbout(const std::string& about);
  XmpNode MakeNode(const XmlQName& name, std::string value = {});

  std::vector<Open> open_;
  std::vector<XmpNode> properties_;
  std::string about_;
  std::size_t node_count_ = 0;
  bool is_too_large_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_RDFREADER_H_
