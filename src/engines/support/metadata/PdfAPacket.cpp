#include "engines/support/metadata/PdfAPacket.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>

#include "engines/support/metadata/XmlNamespaces.h"
#include "engines/support/metadata/XmpDate.h"
#include "engines/support/metadata/XmpExtensions.h"
#include "engines/support/metadata/XmpWriter.h"

namespace TarnixTools::engines {

namespace {

// Of a namespace whose prefix WriteXmp knows.
XmpNode Simple(std::string_view name_space, std::string_view name, std::string value) {
  XmpNode node;
  node.name_space = name_space;
  node.name = name;
  node.value = std::move(value);
  return node;
}

XmpNode Array(XmpNode node, XmpKind kind, std::vector<XmpNode> items) {
  node.kind = kind;
  node.children = std::move(items);
  return node;
}

XmpNode Item(std::string value) {
  return Simple({}, {}, std::move(value));
}

XmpNode ForAllLanguages(std::string value) {
  XmpNode item = Item(std::move(value));
  item.qualifiers.push_back(Simple(kXmlNamespace, "lang", "x-default"));
  return item;
}

// The type that a property can be declared to have; nothing for a structure and what holds one.
std::optional<std::string> TypeByShape(const XmpNode& node) {
  if (node.kind == XmpKind::kSimple) {
    return "Text";
  }
  const auto all_items = [&](auto&& holds) {
    return std::all_of(node.children.begin(), node.children.end(), holds);
  };
  if (node.kind == XmpKind::kStruct ||
      !all_items([](const XmpNode& item) { return item.kind == XmpKind::kSimple; })) {
    return std::nullopt;
  }
  const bool has_languages =
      node.kind == XmpKind::kAlt && !node.children.empty() &&
      all_items([](const XmpNode& item) { return item.Language().has_value(); });
  return has_languages                ? "Lang Alt"
         : node.kind == XmpKind::kBag ? "bag Text"
         : node.kind == XmpKind::kSeq ? "seq Text"
                                      : "alt Text";
}

// A simple value where an array should be, as many writers have it.
void MendShape(XmpNode& node, std::string_view type) {
  if (node.kind != XmpKind::kSimple || node.value.empty()) {
    return;
  }
  const std::string value = node.value;
  if (type == "lang alt") {
    node = Array(std::move(node), XmpKind::kAlt, {ForAllLanguages(value)});
  } else if (type.starts_with("seq ")) {
    node = Array(std::move(node), XmpKind::kSeq, {Item(value)});
  } else if (type.starts_with("bag ")) {
    node = Array(std::move(node), XmpKind::kBag, {Item(value)});
  }
}

class PacketMaker {
 public:
  PacketMaker(const XmpTree& given, const PdfALevel& level, const XmpInfoValues& info)
      : given_(given),
        level_(level),
        info_(info),
        release_(level.part == 1 ? XmpRelease::k2004 : XmpRelease::k2005),
        judge_(release_, {}) {}

  PdfAPacket Make();

 private:
  void AddClaim();
  void AddInfo();
  XmpNode NodeFor(const XmpMirror& mirror, const std::string& value) const;
  void AddGiven();
  void Keep(XmpNode node);
  void KeepSchemas();
  bool IsSoundSchema(const XmpNode& schema) const;
  void AddDeclarations();

  const XmpTree& given_;
  PdfALevel level_;
  const XmpInfoValues& info_;
  XmpRelease release_;
  XmpJudge judge_;
  std::vector<XmpNode> schemas_;  // of the given packet, those that can stay
  std::vector<XmpDeclaredSchema> declared_;
  std::vector<XmpNode> undeclared_;  // kept, to be declared
  std::vector<XmpNode> properties_;
  PdfAPacket packet_;
};

PdfAPacket PacketMaker::Make() {
  AddClaim();
  AddInfo();
  KeepSchemas();
  AddGiven();
  AddDeclarations();
  packet_.bytes = WriteXmp(properties_);
  return std::move(packet_);
}

void PacketMaker::AddClaim() {
  const char conformance =
      static_cast<char>(std::toupper(static_cast<unsigned char>(level_.conformance)));
  properties_.push_back(Simple(kPdfAIdNamespace, "part", std::to_string(level_.part)));
  properties_.push_back(Simple(kPdfAIdNamespace, "conformance", std::string(1, conformance)));
}

void PacketMaker::AddInfo() {
  for (const XmpMirror& mirror : kXmpMirrors) {
    const std::optional<std::string>& value = info_[static_cast<std::size_t>(mirror.field)];
    if (value && CanKeepInfoValue(mirror, *value)) {
      properties_.push_back(NodeFor(mirror, *value));
    }
  }
}

// A title or subject in other languages than the one for all stays beside it.
XmpNode PacketMaker::NodeFor(const XmpMirror& mirror, const std::string& value) const {
  XmpNode node = Simple(mirror.name_space, mirror.name, value);
  if (mirror.type == "date") {
    node.value = XmpDateText(ReadInfoDate(value).value_or(XmpDate()));
  } else if (mirror.type == "lang alt") {
    std::vector<XmpNode> items = {ForAllLanguages(value)};
    const XmpNode* old = given_.Find(mirror.name_space, mirror.name);
    if (old != nullptr && IsOfXmpType(*old, "lang alt", {})) {
      std::copy_if(old->children.begin(), old->children.end(), std::back_inserter(items),
                   [](const XmpNode& item) { return item.Language() != "x-default"; });
    }
    return Array(std::move(node), XmpKind::kAlt, std::move(items));
  } else if (mirror.type.starts_with("seq ")) {
    return Array(std::move(node), XmpKind::kSeq, {Item(value)});
  }
  return node;
}

void PacketMaker::AddGiven() {
  for (const XmpNode& node : given_.properties) {
    const bool is_written =
        std::any_of(properties_.begin(), properties_.end(),
                    [&](const XmpNode& written) { return written.Is(node.name_space, node.name); });
    if (!is_written && node.name_space != kPdfAIdNamespace &&
        node.name_space != kPdfAExtensionNamespace) {
      Keep(node);
    }
  }
}

void PacketMaker::Keep(XmpNode node) {
  if (const XmpDefinition* known = FindXmpProperty(release_, node.name_space, node.name)) {
    MendShape(node, known->type);
  }
  const XmpPropertyFacts facts = judge_.FactsOf(node, declared_);
  if (facts.has_right_type) {
    properties_.push_back(std::move(node));
  } else if (!facts.is_predefined && !facts.is_declared && TypeByShape(node)) {
    undeclared_.push_back(std::move(node));
  } else {
    packet_.dropped.push_back(std::string(node.prefix) + ":" + std::string(node.name));
  }
}

void PacketMaker::KeepSchemas() {
  const XmpNode* schemas = given_.Find(kPdfAExtensionNamespace, "schemas");
  if (schemas == nullptr || schemas->kind != XmpKind::kBag) {
    return;
  }
  std::copy_if(schemas->children.begin(), schemas->children.end(), std::back_inserter(schemas_),
               [this](const XmpNode& schema) { return IsSoundSchema(schema); });
  XmpTree kept;
  kept.properties.push_back(Array(*schemas, XmpKind::kBag, schemas_));
  declared_ = ReadXmpExtensions(kept);
}

bool PacketMaker::IsSoundSchema(const XmpNode& schema) const {
  XmpTree alone;
  alone.properties.push_back(
      Array(Simple(kPdfAExtensionNamespace, "schemas", {}), XmpKind::kBag, {schema}));
  const std::vector<XmpExtensionObject> objects = DescribeXmpExtensions(alone);
  return std::all_of(objects.begin(), objects.end(), [](const XmpExtensionObject& object) {
    return !object.has_other_fields &&
           std::all_of(object.entries.begin(), object.entries.end(),
                       [](const XmpExtensionEntry& entry) { return entry.IsRight(); });
  });
}

XmpNode Structure(std::vector<XmpNode> fields) {
  XmpNode node;
  node.kind = XmpKind::kStruct;
  node.children = std::move(fields);
  return node;
}

XmpNode DeclarationOf(const XmpNode& property) {
  const auto field = [](std::string_view name, std::string value) {
    return Simple(kPdfAPropertyNamespace, name, std::move(value));
  };
  return Structure(
      {field("name", std::string(property.name)),
       field("valueType", TypeByShape(property).value_or("Text")), field("category", "external"),
       field("description", "Property of the document: " + std::string(property.name))});
}

XmpNode SchemaFor(const XmpNode& first, std::vector<XmpNode> declarations) {
  const auto field = [](std::string_view name, std::string value) {
    return Simple(kPdfASchemaNamespace, name, std::move(value));
  };
  return Structure({field("schema", "Properties in " + std::string(first.name_space)),
                    field("namespaceURI", std::string(first.name_space)),
                    field("prefix", first.prefix.empty() ? "ns" : std::string(first.prefix)),
                    Array(field("property", {}), XmpKind::kSeq, std::move(declarations))});
}

// One schema for each namespace.
void PacketMaker::AddDeclarations() {
  std::stable_sort(undeclared_.begin(), undeclared_.end(),
                   [](const XmpNode& a, const XmpNode& b) { return a.name_space < b.name_space; });
  for (auto first = undeclared_.begin(); first != undeclared_.end();) {
    const auto last = std::find_if(first, undeclared_.end(), [&](const XmpNode& node) {
      return node.name_space != first->name_space;
    });
    std::vector<XmpNode> declarations;
    std::transform(first, last, std::back_inserter(declarations), DeclarationOf);
    schemas_.push_back(SchemaFor(*first, std::move(declarations)));
    first = last;
  }
  std::move(undeclared_.begin(), undeclared_.end(), std::back_inserter(properties_));
  if (!schemas_.empty()) {
    properties_.push_back(
        Array(Simple(kPdfAExtensionNamespace, "schemas", {}), XmpKind::kBag, std::move(schemas_)));
  }
}

}  // namespace

bool CanKeepInfoValue(const XmpMirror& mirror, const std::string& value) {
  return mirror.type != "date" || ReadInfoDate(value).has_value();
}

PdfAPacket MakePdfAPacket(const XmpTree& given, const PdfALevel& level, const XmpInfoValues& info) {
  return PacketMaker(given, level, info).Make();
}

}  // namespace TarnixTools::engines
