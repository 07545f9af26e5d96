#include <array>

#include "engines/pdfa/rules/ActionFacts.h"
#include "engines/pdfa/vocabulary/Names.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kActionWrong =
    "An action runs a script, starts a program, plays something or changes the document.";

constexpr std::array<Rule<ActionFacts>, 2> kActionRules = {{
    {.levels = kPart1,
     .part1 = {"6.6.1", 1},
     .holds = [](const ActionFacts& action) { return IsOneOf(action.type, kPlainActions); },
     .wrong = kActionWrong,
     .cure = "Remove the action."},
    {.levels = kParts2And3,
     .later = {"6.5.1", 1},
     .holds =
         [](const ActionFacts& action) {
           return IsOneOf(action.type, kPlainActions) || action.type == kLaterAction;
         },
     .wrong = kActionWrong,
     .cure = "Remove the action."},
}};

constexpr std::array<Rule<NamedActionFacts>, 1> kNamedActionRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.6.1", 2},
     .later = {"6.5.1", 2},
     .holds = [](const NamedActionFacts& action) { return IsOneOf(action.name, kPageActions); },
     .wrong = "A named action does something else than go to a page.",
     .cure = "Remove the action."},
}};

}  // namespace

template <>
std::span<const Rule<ActionFacts>> RulesFor<ActionFacts>() {
  return kActionRules;
}

template <>
std::span<const Rule<NamedActionFacts>> RulesFor<NamedActionFacts>() {
  return kNamedActionRules;
}

}  // namespace TarnixTools::engines::pdfa
