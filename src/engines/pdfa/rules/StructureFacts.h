// Logical structure and language (ISO 19005-1, 6.8; -2 and -3, 6.7).
#ifndef TARNIX_ENGINES_PDFA_RULES_STRUCTUREFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_STRUCTUREFACTS_H_

#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// An element of the structure, by its type.
struct StructureElementFacts {
  bool leads_to_standard_type = true;  // its type is one, or the role map leads to one
  bool is_mapped_in_circle = false;
  bool is_remapped_standard_type = false;  // to one that is none
};

// A /Lang, of the catalog, of a structure element, or of marked content.
struct LanguageFacts {
  std::string_view tag;  // UTF-8
};

template <>
std::span<const Rule<StructureElementFacts>> RulesFor<StructureElementFacts>();
template <>
std::span<const Rule<LanguageFacts>> RulesFor<LanguageFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_STRUCTUREFACTS_H_
