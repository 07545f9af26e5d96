#include <array>

#include "engines/pdfa/rules/MetadataFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kDescribe =
    "Describe the schema as the standard has it: each field with its own prefix, type and value.";

bool IsRightIfThere(const ExtensionEntryFacts& entry, XmpExtensionPart part,
                    std::string_view name) {
  return !entry.Is(part, name) || !entry.is_there || entry.is_right;
}

bool IsThere(const ExtensionEntryFacts& entry, XmpExtensionPart part, std::string_view name) {
  return !entry.Is(part, name) || (entry.is_there && entry.is_right);
}

constexpr std::array<Rule<ExtensionsFacts>, 1> kExtensionsRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 2},
     .later = {"6.6.2.3.3", 1},
     .holds =
         [](const ExtensionsFacts& schemas) { return schemas.is_bag && schemas.has_right_prefix; },
     .wrong = "The extension schemas are not in a bag under the prefix pdfaExtension.",
     .cure = kDescribe},
}};

constexpr std::array<Rule<ExtensionFacts>, 1> kExtensionRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 1},
     .later = {"6.6.2.3.2", 1},
     .holds = [](const ExtensionFacts& extension) { return !extension.has_other_fields; },
     .wrong = "The description of an extension schema has fields that are not in the standard.",
     .cure = "Remove the fields."},
}};

constexpr std::array<Rule<ExtensionEntryFacts>, 17> kExtensionEntryRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 3},
     .later = {"6.6.2.3.3", 2},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kSchema, "schema");
         },
     .wrong = "The description of an extension schema lacks a sound schema.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 4},
     .later = {"6.6.2.3.3", 3},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kSchema, "namespaceURI");
         },
     .wrong = "The description of an extension schema lacks a sound namespaceURI.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 5},
     .later = {"6.6.2.3.3", 4},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kSchema, "prefix");
         },
     .wrong = "The description of an extension schema lacks a sound prefix.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 6},
     .later = {"6.6.2.3.3", 5},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsRightIfThere(entry, XmpExtensionPart::kSchema, "property");
         },
     .wrong = "The description of an extension schema has an unsound property.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 7},
     .later = {"6.6.2.3.3", 6},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsRightIfThere(entry, XmpExtensionPart::kSchema, "valueType");
         },
     .wrong = "The description of an extension schema has an unsound valueType.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 8},
     .later = {"6.6.2.3.3", 7},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kProperty, "name");
         },
     .wrong = "The description of a property of an extension schema lacks a sound name.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 9},
     .later = {"6.6.2.3.3", 8},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kProperty, "valueType");
         },
     .wrong = "The description of a property of an extension schema lacks a sound valueType.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 10},
     .later = {"6.6.2.3.3", 9},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kProperty, "category");
         },
     .wrong = "The description of a property of an extension schema lacks a sound category.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 11},
     .later = {"6.6.2.3.3", 10},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kProperty, "description");
         },
     .wrong = "The description of a property of an extension schema lacks a sound description.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 12},
     .later = {"6.6.2.3.3", 11},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kValueType, "type");
         },
     .wrong = "The description of a value type of an extension schema lacks a sound type.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 13},
     .later = {"6.6.2.3.3", 12},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kValueType, "namespaceURI");
         },
     .wrong = "The description of a value type of an extension schema lacks a sound namespaceURI.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 14},
     .later = {"6.6.2.3.3", 13},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kValueType, "prefix");
         },
     .wrong = "The description of a value type of an extension schema lacks a sound prefix.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 15},
     .later = {"6.6.2.3.3", 14},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kValueType, "description");
         },
     .wrong = "The description of a value type of an extension schema lacks a sound description.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 16},
     .later = {"6.6.2.3.3", 15},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsRightIfThere(entry, XmpExtensionPart::kValueType, "field");
         },
     .wrong = "The description of a value type of an extension schema has an unsound field.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 17},
     .later = {"6.6.2.3.3", 16},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kField, "name");
         },
     .wrong = "The description of a field of a value type lacks a sound name.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 18},
     .later = {"6.6.2.3.3", 17},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kField, "valueType");
         },
     .wrong = "The description of a field of a value type lacks a sound valueType.",
     .cure = kDescribe},
    {.levels = kAllLevels,
     .part1 = {"6.7.8", 19},
     .later = {"6.6.2.3.3", 18},
     .holds =
         [](const ExtensionEntryFacts& entry) {
           return IsThere(entry, XmpExtensionPart::kField, "description");
         },
     .wrong = "The description of a field of a value type lacks a sound description.",
     .cure = kDescribe},
}};

}  // namespace

template <>
std::span<const Rule<ExtensionsFacts>> RulesFor<ExtensionsFacts>() {
  return kExtensionsRules;
}

template <>
std::span<const Rule<ExtensionFacts>> RulesFor<ExtensionFacts>() {
  return kExtensionRules;
}

template <>
std::span<const Rule<ExtensionEntryFacts>> RulesFor<ExtensionEntryFacts>() {
  return kExtensionEntryRules;
}

}  // namespace TarnixTools::engines::pdfa
