// The rules that OfficeSchema.h goes by.
//
// Children are a sequence of items: a name, or names in brackets any of which may stand there, with
// "?" for at most one, "*" for any number, "+" for at least one. "#text" is text.
//
// Attributes are "name=values", or "name?=values" for what may be left out. Values are words with
// bars between them: "any", "text" (not empty), "hex6", "id" (of a relationship), "field" (of the
// page's number), a range of whole numbers "0..31680", or the value itself.
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_SCHEMARULES_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_SCHEMARULES_H_

#include <span>
#include <string_view>

namespace TarnixTools::engines::office {

struct ElementRule {
  // With its prefix; "parent/name" where it depends on the parent, and comes before the other.
  std::string_view name;
  std::string_view children;
  std::string_view attributes;
};

std::span<const ElementRule> WordRules();     // the text of documents, and what belongs to it
std::span<const ElementRule> DrawingRules();  // shapes and pictures, of both
std::span<const ElementRule> SlideRules();
std::span<const ElementRule> PackageRules();  // relationships, types and properties

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_SCHEMA_SCHEMARULES_H_
