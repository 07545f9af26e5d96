// What a validation has found, and the place where facts meet rules:
//
//   FindingList findings(Level::k2b);
//   findings.Check(OutputIntentFacts{.has_profile_reference = true}, {.object = 12});
//
// Bounded: of each rule as many findings are kept as were asked for, and the others counted.
#ifndef TARNIX_ENGINES_PDFA_RULES_FINDINGLIST_H_
#define TARNIX_ENGINES_PDFA_RULES_FINDINGLIST_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/rules/Rule.h"
#include "pdf/Box.h"

namespace TarnixTools::engines::pdfa {

// Where the thing is that a rule looks at. All of it may be unknown.
struct Place {
  std::uint32_t object = 0;     // number of the object that it is, or that it stands in
  std::size_t page_number = 0;  // one-based
  std::optional<pdf::Box> box;  // around it, in the page's own space
  std::string_view subject;     // its name: "font Helvetica", "operator foo"; UTF-8
};

struct Finding {
  RuleNumber rule;
  const char* wrong = "";
  const char* cure = "";
  std::uint32_t object = 0;
  std::size_t page_number = 0;
  std::optional<pdf::Box> box;
  std::string subject;
};

class FindingList {
 public:
  //   most_of_rule - how many findings of one rule are kept, at least one
  explicit FindingList(Level level, std::size_t most_of_rule = limits::kMaxFindingsOfRule)
      : level_(level), most_of_rule_(most_of_rule) {}

  Level level() const { return level_; }

  // Asks all rules about the kind of thing that the facts are of.
  template <typename Facts>
  void Check(const Facts& facts, const Place& place = {}) {
    for (const Rule<Facts>& rule : RulesFor<Facts>()) {
      if (rule.AppliesTo(level_) && !rule.holds(facts)) {
        Add(&rule, {rule.NumberIn(level_), rule.wrong, rule.cure}, place);
      }
    }
  }

  // In the order of their clauses, and as they were found within.
  std::vector<Finding> Take();

 private:
  void Add(const void* rule, const Finding& finding, const Place& place);

  Level level_;
  std::size_t most_of_rule_;
  std::vector<Finding> findings_;
  std::unordered_map<const void*, std::vector<std::size_t>> of_rule_;  // by its row
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_FINDINGLIST_H_
