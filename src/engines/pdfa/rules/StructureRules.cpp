#include <array>

#include "engines/pdfa/rules/StructureFacts.h"
#include "engines/pdfa/vocabulary/LanguageTag.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kLanguageWrong = "A language is not named as RFC 3066 has it.";
constexpr const char* kLanguageCure = "Name it like en, en-US or de-CH.";

constexpr std::array<Rule<StructureElementFacts>, 3> kStructureElementRules = {{
    {.levels = kTaggedLevels,
     .part1 = {"6.8.3.4", 1},
     .later = {"6.7.3.4", 1},
     .holds =
         [](const StructureElementFacts& element) {
           return element.leads_to_standard_type || element.is_mapped_in_circle;
         },
     .wrong = "A structure element is of a type that is no standard one and not mapped to one.",
     .cure = "Add the type to the role map."},
    {.levels = kTaggedLevels,
     .part1 = {"6.8.3.4", 2},
     .later = {"6.7.3.4", 2},
     .holds = [](const StructureElementFacts& element) { return !element.is_mapped_in_circle; },
     .wrong = "The role map leads from a structure type back to itself.",
     .cure = "Map the type to a standard one."},
    {.levels = kTaggedLevels,
     .later = {"6.7.3.4", 3},
     .holds =
         [](const StructureElementFacts& element) { return !element.is_remapped_standard_type; },
     .wrong = "The role map leads from a standard structure type to one that is none.",
     .cure = "Remove the standard type from the role map."},
}};

constexpr std::array<Rule<LanguageFacts>, 2> kLanguageRules = {{
    {.levels = kTaggedLevels,
     .part1 = {"6.8.4", 1},
     .holds =
         [](const LanguageFacts& language) {
           return IsLanguageTag(language.tag, Subtags::kLetters);
         },
     .wrong = kLanguageWrong,
     .cure = kLanguageCure},
    {.levels = kTaggedLevels,
     .later = {"6.7.4", 1},
     .holds =
         [](const LanguageFacts& language) {
           return IsLanguageTag(language.tag, Subtags::kLettersAndDigits);
         },
     .wrong = kLanguageWrong,
     .cure = kLanguageCure},
}};

}  // namespace

template <>
std::span<const Rule<StructureElementFacts>> RulesFor<StructureElementFacts>() {
  return kStructureElementRules;
}

template <>
std::span<const Rule<LanguageFacts>> RulesFor<LanguageFacts>() {
  return kLanguageRules;
}

}  // namespace TarnixTools::engines::pdfa
