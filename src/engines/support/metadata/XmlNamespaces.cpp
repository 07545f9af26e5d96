#include "engines/support/metadata/XmlNamespaces.h"

#include <algorithm>

#include "engines/support/metadata/MetadataLimits.h"

namespace TarnixTools::engines {

std::string_view XmlPrefix(std::string_view name) {
  const std::size_t colon = name.find(':');
  return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view XmlLocalPart(std::string_view name) {
  return name.substr(name.find(':') + 1);
}

bool IsXmlDeclaration(std::string_view name) {
  return name == "xmlns" || XmlPrefix(name) == "xmlns";
}

bool XmlNamespaces::Declare(const std::vector<XmlAttribute>& attributes) {
  for (const XmlAttribute& attribute : attributes) {
    if (!IsXmlDeclaration(attribute.name)) {
      continue;
    }
    const std::string_view prefix =
        attribute.name == "xmlns" ? std::string_view() : XmlLocalPart(attribute.name);
    declared_.push_back({prefix, attribute.Content()});
    if (declared_.size() > limits::kMaxXmlNamespaces ||
        attribute.Content().find_first_of("&<>\"\t\r\n") != std::string_view::npos) {
      return false;
    }
  }
  return true;
}

std::string_view XmlNamespaces::Of(std::string_view prefix) const {
  if (prefix == "xml") {
    return kXmlNamespace;
  }
  const auto found = std::find_if(declared_.rbegin(), declared_.rend(),
                                  [&](const Declared& known) { return known.prefix == prefix; });
  return found == declared_.rend() ? std::string_view() : found->name;
}

}  // namespace TarnixTools::engines
