// Actions (ISO 19005-1, 6.6; -2 and -3, 6.5), wherever they stand.
#ifndef TARNIX_ENGINES_PDFA_RULES_ACTIONFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_ACTIONFACTS_H_

#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

struct ActionFacts {
  std::string_view type;  // /S
};

// One of type Named.
struct NamedActionFacts {
  std::string_view name;  // /N
};

template <>
std::span<const Rule<ActionFacts>> RulesFor<ActionFacts>();
template <>
std::span<const Rule<NamedActionFacts>> RulesFor<NamedActionFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_ACTIONFACTS_H_
