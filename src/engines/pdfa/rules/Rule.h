// What PDF/A asks for (ISO 19005-1, -2 and -3), as rows of tables.
//
// A rule looks at one kind of thing: it gets the facts of one such thing and says whether they are
// as they should be. Facts are gathered elsewhere (checks/) and handed over with FindingList::Check,
// so that a new rule is a row, and at most a new fact. What facts and tables there are stands in a
// header by theme beside its table:
//
//   // OutputFacts.h
//   struct OutputIntentFacts {
//     bool has_profile_reference = false;
//   };
//   template <>
//   std::span<const Rule<OutputIntentFacts>> RulesFor<OutputIntentFacts>();
//
//   // OutputRules.cpp
//   constexpr std::array<Rule<OutputIntentFacts>, 1> kOutputIntentRules = {{
//       {.levels = kParts2And3,
//        .later = {"6.2.3", 3},
//        .holds = [](const OutputIntentFacts& intent) { return !intent.has_profile_reference; },
//        .wrong = "The output intent refers to a profile outside of the document.",
//        .cure = "Embed the profile and name it in /DestOutputProfile."},
//   }};
//   template <>
//   std::span<const Rule<OutputIntentFacts>> RulesFor<OutputIntentFacts>() {
//     return kOutputIntentRules;
//   }
//
// Clauses and tests are numbered as in the published validation profiles, so that a finding can be
// looked up. Every type of facts is also listed in RuleList.cpp.
#ifndef TARNIX_ENGINES_PDFA_RULES_RULE_H_
#define TARNIX_ENGINES_PDFA_RULES_RULE_H_

#include <span>

#include "engines/pdfa/Level.h"

namespace TarnixTools::engines::pdfa {

// "6.1.8", 1. No clause: this part of the standard does not have the rule.
struct RuleNumber {
  const char* clause = nullptr;
  int test = 0;

  explicit operator bool() const { return clause != nullptr; }
};

template <typename Facts>
struct Rule {
  LevelSet levels = 0;    // that ask for it
  RuleNumber part1 = {};  // in ISO 19005-1
  RuleNumber later = {};  // in ISO 19005-2 and -3, which have the same numbers
  bool (*holds)(const Facts& facts) = nullptr;
  const char* wrong = "";  // a sentence: what is wrong when it does not hold
  const char* cure = "";   // a sentence: how to mend that

  const RuleNumber& NumberIn(Level level) const { return PartOf(level) == 1 ? part1 : later; }

  bool AppliesTo(Level level) const { return Contains(levels, level) && NumberIn(level); }
};

// The rules about one kind of thing.
template <typename Facts>
std::span<const Rule<Facts>> RulesFor();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_RULE_H_
