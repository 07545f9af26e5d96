// All rules of PDF/A that are checked, whatever they look at: for documents about them, and tests.
#ifndef TARNIX_ENGINES_PDFA_RULES_RULELIST_H_
#define TARNIX_ENGINES_PDFA_RULES_RULELIST_H_

#include <vector>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

struct RuleText {
  LevelSet levels = 0;
  RuleNumber part1;
  RuleNumber later;
  const char* wrong = "";
  const char* cure = "";
};

std::vector<RuleText> AllRules();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_RULELIST_H_
