// The namespaces that hold at a place of an XML text (Namespaces in XML 1.0).
#ifndef TARNIX_ENGINES_SUPPORT_METADATA_XMLNAMESPACES_H_
#define TARNIX_ENGINES_SUPPORT_METADATA_XMLNAMESPACES_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include "engines/support/metadata/XmlScanner.h"

namespace TarnixTools::engines {

inline constexpr std::string_view kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

// Of "dc:title": "dc", and empty for a name without one; "title".
std::string_view XmlPrefix(std::string_view name);
std::string_view XmlLocalPart(std::string_view name);

// Whether an attribute declares a namespace.
bool IsXmlDeclaration(std::string_view name);

class XmlNamespaces {
 public:
  // Those that a start tag declares. False for more than packets have, and for a name that would need
  // expanding or could not be written as it stands, which none that is used does.
  bool Declare(const std::vector<XmlAttribute>& attributes);

  // Empty for a prefix that is not declared.
  std::string_view Of(std::string_view prefix) const;

  // How many hold, and back to that many at the end of an element.
  std::size_t count() const { return declared_.size(); }

  void ResetTo(std::size_t count) { declared_.resize(count); }

 private:
  struct Declared {
    std::string_view prefix;
    std::string_view name;
  };

  std::vector<Declared> declared_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_METADATA_XMLNAMESPACES_H_
