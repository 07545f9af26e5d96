#include "engines/support/metadata/XmpExtensions.h"

#include <algorithm>
#include <array>
#include <span>
#include <tuple>
#include <utility>

namespace TarnixTools::engines {

namespace {

enum class EntryType : std::uint8_t { kText, kUri, kSeq, kCategory, kTypeName };

struct EntryRule {
  std::string_view name;
  EntryType type;
  bool is_needed = true;
};

// The tables of the standard.
constexpr EntryRule kSchemaEntries[] = {{"schema", EntryType::kText},
                                        {"namespaceURI", EntryType::kUri},
                                        {"prefix", EntryType::kText},
                                        {"property", EntryType::kSeq},
                                        {"valueType", EntryType::kSeq, false}};
constexpr EntryRule kPropertyEntries[] = {{"name", EntryType::kText},
                                          {"valueType", EntryType::kTypeName},
                                          {"category", EntryType::kCategory},
                                          {"description", EntryType::kText}};
constexpr EntryRule kValueTypeEntries[] = {{"type", EntryType::kText},
                                           {"namespaceURI", EntryType::kUri},
                                           {"prefix", EntryType::kText},
                                           {"description", EntryType::kText},
                                           {"field", EntryType::kSeq, false}};
constexpr EntryRule kFieldEntries[] = {{"name", EntryType::kText},
                                       {"valueType", EntryType::kTypeName},
                                       {"description", EntryType::kText}};

struct PartRule {
  std::string_view name_space;
  std::string_view prefix;
  std::span<const EntryRule> entries;
  std::string_view named_by;
};

// By XmpExtensionPart.
constexpr std::array<PartRule, 4> kParts = {{
    {kPdfASchemaNamespace, "pdfaSchema", kSchemaEntries, "schema"},
    {kPdfAPropertyNamespace, "pdfaProperty", kPropertyEntries, "name"},
    {kPdfATypeNamespace, "pdfaType", kValueTypeEntries, "type"},
    {kPdfAFieldNamespace, "pdfaField", kFieldEntries, "name"},
}};

const PartRule& RuleOf(XmpExtensionPart part) {
  return kParts[static_cast<std::size_t>(part)];
}

// The items of a field that is an array.
std::span<const XmpNode> ItemsOf(const XmpNode& node, std::string_view name_space,
                                 std::string_view name) {
  const XmpNode* field = node.Field(name_space, name);
  return field != nullptr && field->IsArray() ? field->children : std::span<const XmpNode>();
}

std::string TextOf(const XmpNode& node, std::string_view name_space, std::string_view name) {
  const XmpNode* field = node.Field(name_space, name);
  return field == nullptr ? std::string() : field->value;
}

std::vector<XmpDeclaredField> FieldsIn(std::span<const XmpNode> items,
                                       std::string_view name_space) {
  std::vector<XmpDeclaredField> fields;
  for (const XmpNode& item : items) {
    fields.push_back(
        {TextOf(item, name_space, "name"), PlainXmpType(TextOf(item, name_space, "valueType"))});
  }
  return fields;
}

std::vector<XmpDeclaredType> TypesOf(const XmpNode& schema) {
  std::vector<XmpDeclaredType> types;
  for (const XmpNode& item : ItemsOf(schema, kPdfASchemaNamespace, "valueType")) {
    XmpDeclaredType type = {
        PlainXmpType(TextOf(item, kPdfATypeNamespace, "type")),
        TextOf(item, kPdfATypeNamespace, "namespaceURI"),
        FieldsIn(ItemsOf(item, kPdfATypeNamespace, "field"), kPdfAFieldNamespace)};
    if (!type.name.empty() && !type.name_space.empty()) {
      types.push_back(std::move(type));
    }
  }
  return types;
}

XmpDeclaredSchema SchemaOf(const XmpNode& node) {
  XmpDeclaredSchema schema;
  schema.name_space = TextOf(node, kPdfASchemaNamespace, "namespaceURI");
  schema.types = TypesOf(node);
  schema.properties =
      FieldsIn(ItemsOf(node, kPdfASchemaNamespace, "property"), kPdfAPropertyNamespace);
  const auto is_of_no_type = [&](const XmpDeclaredField& property) {
    return !IsKnownXmpType(property.type, schema.types);
  };
  schema.properties.erase(
      std::remove_if(schema.properties.begin(), schema.properties.end(), is_of_no_type),
      schema.properties.end());
  return schema;
}

bool IsRight(const XmpNode& node, EntryType type, std::span<const XmpDeclaredType> declared) {
  switch (type) {
    case EntryType::kText:
    case EntryType::kUri:
      return node.kind == XmpKind::kSimple;
    case EntryType::kSeq:
      return node.kind == XmpKind::kSeq;
    case EntryType::kCategory:
      return node.kind == XmpKind::kSimple &&
             (node.value == "external" || node.value == "internal");
    case EntryType::kTypeName:
      return node.kind == XmpKind::kSimple && IsKnownXmpType(PlainXmpType(node.value), declared);
  }
  return false;
}

XmpExtensionObject DescriptionOf(const XmpNode& node, XmpExtensionPart part,
                                 std::span<const XmpDeclaredType> declared) {
  const PartRule& rule = RuleOf(part);
  XmpExtensionObject object{part, TextOf(node, rule.name_space, rule.named_by), false, {}};
  for (const EntryRule& entry : rule.entries) {
    const auto found = std::find_if(node.children.begin(), node.children.end(),
                                    [&](const XmpNode& child) { return child.name == entry.name; });
    const bool is_there = found != node.children.end();
    object.entries.push_back(
        {entry.name, is_there,
         is_there && found->name_space == rule.name_space && found->prefix == rule.prefix,
         is_there && IsRight(*found, entry.type, declared), entry.is_needed});
  }
  object.has_other_fields =
      std::any_of(node.children.begin(), node.children.end(), [&](const XmpNode& child) {
        return std::none_of(rule.entries.begin(), rule.entries.end(),
                            [&](const EntryRule& entry) { return entry.name == child.name; });
      });
  return object;
}

// A schema without a namespace declares nothing.
void DescribeSchema(const XmpNode& node, std::vector<XmpExtensionObject>& objects) {
  const bool is_usable = !TextOf(node, kPdfASchemaNamespace, "namespaceURI").empty();
  const std::vector<XmpDeclaredType> types =
      is_usable ? TypesOf(node) : std::vector<XmpDeclaredType>();
  objects.push_back(DescriptionOf(node, XmpExtensionPart::kSchema, types));
  for (const XmpNode& item : ItemsOf(node, kPdfASchemaNamespace, "property")) {
    objects.push_back(DescriptionOf(item, XmpExtensionPart::kProperty, types));
  }
  for (const XmpNode& item : ItemsOf(node, kPdfASchemaNamespace, "valueType")) {
    objects.push_back(DescriptionOf(item, XmpExtensionPart::kValueType, types));
    for (const XmpNode& field : ItemsOf(item, kPdfATypeNamespace, "field")) {
      objects.push_back(DescriptionOf(field, XmpExtensionPart::kField, types));
    }
  }
}

std::span<const XmpNode> SchemasIn(const XmpTree& tree) {
  const XmpNode* schemas = tree.Find(kPdfAExtensionNamespace, "schemas");
  return schemas != nullptr && schemas->IsArray() ? schemas->children : std::span<const XmpNode>();
}

// The schema that declares the property, and as what; null when none does.
std::pair<const XmpDeclaredSchema*, const XmpDeclaredField*> FindDeclared(
    const std::vector<XmpDeclaredSchema>& schemas, const XmpNode& property) {
  for (const XmpDeclaredSchema& schema : schemas) {
    const auto found =
        std::find_if(schema.properties.begin(), schema.properties.end(),
                     [&](const XmpDeclaredField& field) { return field.name == property.name; });
    if (schema.name_space == property.name_space && found != schema.properties.end()) {
      return {&schema, &*found};
    }
  }
  return {nullptr, nullptr};
}

}  // namespace

std::vector<XmpDeclaredSchema> ReadXmpExtensions(const XmpTree& tree) {
  std::vector<XmpDeclaredSchema> schemas;
  for (const XmpNode& node : SchemasIn(tree)) {
    schemas.push_back(SchemaOf(node));
  }
  return schemas;
}

std::vector<XmpExtensionObject> DescribeXmpExtensions(const XmpTree& tree) {
  std::vector<XmpExtensionObject> objects;
  for (const XmpNode& node : SchemasIn(tree)) {
    DescribeSchema(node, objects);
  }
  return objects;
}

XmpPropertyFacts XmpJudge::FactsOf(const XmpNode& property,
                                   const std::vector<XmpDeclaredSchema>& own) const {
  XmpPropertyFacts facts;
  if (const XmpDefinition* known = FindXmpProperty(release_, property.name_space, property.name)) {
    facts.is_predefined = true;
    facts.has_right_type =
        property.name_space == kPdfAExtensionNamespace || IsOfXmpType(property, known->type, {});
  }
  auto [schema, declared] = FindDeclared(own, property);
  if (declared == nullptr) {
    std::tie(schema, declared) = FindDeclared(document_, property);
  }
  if (declared != nullptr) {
    facts.is_declared = true;
    facts.has_right_type =
        facts.has_right_type || IsOfXmpType(property, declared->type, schema->types);
  }
  return facts;
}

}  // namespace TarnixTools::engines
