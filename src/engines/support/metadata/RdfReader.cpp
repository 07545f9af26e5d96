#include "engines/support/metadata/RdfReader.h"

#include <algorithm>
#include <iterator>
#include <tuple>
#include <utility>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmlNamespaces.h"

namespace TarnixTools::engines {

namespace {

bool IsSpace(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool IsLanguage(const XmlQName& name) {
  return name.local == "lang" && name.name_space == kXmlNamespace;
}

// Names of RDF that no property has (7.2.4 of RDF/XML Syntax: those of its grammar and the old
// ones); items of arrays have one of them.
bool CanBeProperty(const XmlQName& name) {
  constexpr std::string_view kReserved[] = {
      "RDF",      "ID", "about",       "parseType", "resource",        "nodeID",
      "datatype", "li", "Description", "aboutEach", "aboutEachPrefix", "bagID"};
  return !name.name_space.empty() &&
         (name.name_space != kRdfNamespace ||
          std::find(std::begin(kReserved), std::end(kReserved), name.local) == std::end(kReserved));
}

XmpKind KindOf(const XmlQName& name) {
  return name.IsRdf("Bag")   ? XmpKind::kBag
         : name.IsRdf("Seq") ? XmpKind::kSeq
         : name.IsRdf("Alt") ? XmpKind::kAlt
                             : XmpKind::kStruct;
}

const RdfAttribute* Find(const std::vector<RdfAttribute>& attributes, std::string_view name) {
  const auto found =
      std::find_if(attributes.begin(), attributes.end(),
                   [&](const RdfAttribute& attribute) { return attribute.name.IsRdf(name); });
  return found == attributes.end() ? nullptr : &*found;
}

bool HasDuplicates(const std::vector<XmpNode>& nodes) {
  using Key = std::tuple<std::string_view, std::string_view>;
  std::vector<Key> keys;
  keys.reserve(nodes.size());
  for (const XmpNode& node : nodes) {
    keys.emplace_back(node.name_space, node.name);
  }
  std::sort(keys.begin(), keys.end());
  return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

// A structure with an rdf:value is that value with qualifiers (ISO 16684-1, 7.8).
void TakeQualifiersOut(XmpNode& node) {
  const auto value =
      std::find_if(node.children.begin(), node.children.end(),
                   [](const auto& field) { return field.Is(kRdfNamespace, "value"); });
  if (node.kind != XmpKind::kStruct || value == node.children.end()) {
    return;
  }
  XmpNode inner = std::move(*value);
  node.children.erase(value);
  std::move(node.children.begin(), node.children.end(), std::back_inserter(node.qualifiers));
  std::move(inner.qualifiers.begin(), inner.qualifiers.end(), std::back_inserter(node.qualifiers));
  node.kind = inner.kind;
  node.is_uri = inner.is_uri;
  node.value = std::move(inner.value);
  node.children = std::move(inner.children);
}

}  // namespace

bool RdfReader::Start(const XmlQName& name, const std::vector<RdfAttribute>& attributes) {
  if (open_.empty()) {
    return StartTop(name, attributes);
  }
  switch (open_.back().role) {
    case Role::kTop:
    case Role::kTyped:
    case Role::kFields:
      return StartProperty(name, attributes);
    case Role::kProperty:
      return StartTyped(name, attributes);
    case Role::kNothing:
      break;
  }
  return false;
}

bool RdfReader::Text(const std::string& characters) {
  if (open_.empty() || open_.back().role != Role::kProperty || open_.back().has_node) {
    return IsSpace(characters);
  }
  open_.back().node.value += characters;
  return true;
}

bool RdfReader::End() {
  Open ended = std::move(open_.back());
  open_.pop_back();
  XmpNode& node = ended.node;
  if (!node.IsArray() && HasDuplicates(node.children)) {
    return false;
  }
  if (ended.role == Role::kTop) {
    std::move(node.children.begin(), node.children.end(), std::back_inserter(properties_));
    return true;
  }
  if (ended.role == Role::kTyped) {
    XmpNode& property = open_.back().node;
    property.kind = node.kind;
    property.children = std::move(node.children);
    std::move(node.qualifiers.begin(), node.qualifiers.end(),
              std::back_inserter(property.qualifiers));
    return true;
  }
  TakeQualifiersOut(node);
  if (HasDuplicates(node.qualifiers)) {
    return false;
  }
  open_.back().node.children.push_back(std::move(node));
  return true;
}

bool RdfReader::Finish() {
  return !HasDuplicates(properties_);
}

bool RdfReader::StartTop(const XmlQName& name, const std::vector<RdfAttribute>& attributes) {
  Open top{Role::kTop, MakeNode(name)};
  top.node.kind = XmpKind::kStruct;
  if (!name.IsRdf("Description") || !ReadNodeAttributes(attributes, top.node)) {
    return false;
  }
  const RdfAttribute* about = Find(attributes, "about");
  open_.push_back(std::move(top));
  return about == nullptr || KeepAbout(about->value);
}

// All descriptions are about one document; the ones before the first that names it need not.
bool RdfReader::KeepAbout(const std::string& about) {
  if (about_.empty()) {
    about_ = about;
  }
  return about_ == about;
}

bool RdfReader::StartTyped(const XmlQName& name, const std::vector<RdfAttribute>& attributes) {
  Open& property = open_.back();
  if (property.has_node || !IsSpace(property.node.value)) {
    return false;
  }
  property.has_node = true;
  property.node.value.clear();
  Open typed{Role::kTyped, MakeNode(name)};
  typed.node.kind = KindOf(name);
  const bool is_plain = name.IsRdf("Description") || typed.node.IsArray();
  if (name.name_space.empty() || (!is_plain && name.name_space == kRdfNamespace) ||
      !ReadNodeAttributes(attributes, typed.node)) {
    return false;
  }
  if (!is_plain) {
    const XmlQName type{kRdfNamespace, "rdf", "type"};
    typed.node.qualifiers.push_back(
        MakeNode(type, std::string(name.name_space) + std::string(name.local)));
  }
  open_.push_back(std::move(typed));
  return true;
}

bool RdfReader::StartProperty(const XmlQName& name, const std::vector<RdfAttribute>& attributes) {
  const XmpNode& parent = open_.back().node;
  if (parent.IsArray() ? !name.IsRdf("li") : !CanBeProperty(name)) {
    return false;
  }
  Open property{Role::kProperty, MakeNode(name)};
  if (parent.IsArray()) {
    property.node.name_space = property.node.prefix = property.node.name = {};
  }
  if (!ReadPropertyAttributes(attributes, property)) {
    return false;
  }
  open_.push_back(std::move(property));
  return !is_too_large_;
}

// Attributes of a description or an array are properties of it, or say what it is about.
bool RdfReader::ReadNodeAttributes(const std::vector<RdfAttribute>& attributes, XmpNode& node) {
  int subjects = 0;
  for (const RdfAttribute& attribute : attributes) {
    const XmlQName& name = attribute.name;
    if (name.IsRdf("about") || name.IsRdf("ID") || name.IsRdf("nodeID")) {
      ++subjects;
    } else if (IsLanguage(name)) {
      node.qualifiers.push_back(MakeNode(name, attribute.value));
    } else if (!CanBeProperty(name) || node.IsArray()) {
      return false;
    } else {
      node.children.push_back(MakeNode(name, attribute.value));
    }
  }
  return subjects <= 1;
}

bool RdfReader::ReadPropertyAttributes(const std::vector<RdfAttribute>& attributes, Open& open) {
  for (const RdfAttribute& attribute : attributes) {
    if (IsLanguage(attribute.name)) {
      open.node.qualifiers.push_back(MakeNode(attribute.name, attribute.value));
    }
  }
  const auto own = std::count_if(attributes.begin(), attributes.end(), [](const auto& attribute) {
    return !IsLanguage(attribute.name) && !attribute.name.IsRdf("ID");
  });
  if (own == 0) {
    return true;
  }
  if (const RdfAttribute* type = Find(attributes, "parseType")) {
    open.role = Role::kFields;
    open.node.kind = XmpKind::kStruct;
    return own == 1 && type->value == "Resource";
  }
  return (own == 1 && Find(attributes, "datatype") != nullptr) || ReadShortForm(attributes, open);
}

// A property without content (ISO 16684-1, 7.9.2.3 and C.2.12): a URI, a value or fields, and
// qualifiers beside the first two.
bool RdfReader::ReadShortForm(const std::vector<RdfAttribute>& attributes, Open& open) {
  open.role = Role::kNothing;
  const RdfAttribute* resource = Find(attributes, "resource");
  const RdfAttribute* value = Find(attributes, "value");
  if (resource != nullptr && (value != nullptr || Find(attributes, "nodeID") != nullptr)) {
    return false;
  }
  const RdfAttribute* simple = resource != nullptr ? resource : value;
  open.node.is_uri = resource != nullptr;
  open.node.value = simple == nullptr ? std::string() : simple->value;
  std::vector<XmpNode>& others = simple == nullptr ? open.node.children : open.node.qualifiers;
  for (const RdfAttribute& attribute : attributes) {
    const XmlQName& name = attribute.name;
    if (&attribute == simple || IsLanguage(name) || name.IsRdf("ID") || name.IsRdf("nodeID")) {
      continue;
    }
    if (!CanBeProperty(name)) {
      return false;
    }
    others.push_back(MakeNode(name, attribute.value));
  }
  open.node.kind = open.node.children.empty() ? XmpKind::kSimple : XmpKind::kStruct;
  return true;
}

XmpNode RdfReader::MakeNode(const XmlQName& name, std::string value) {
  is_too_large_ = is_too_large_ || ++node_count_ > limits::kMaxXmpNodes;
  XmpNode node;
  node.name_space = name.name_space;
  node.prefix = name.prefix;
  node.name = name.local;
  node.value = std::move(value);
  return node;
}

}  // namespace TarnixTools::engines
