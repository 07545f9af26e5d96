// What a validation says of a file in memory.
#ifndef TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_
#define TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "engines/pdfa/rules/FindingList.h"

namespace TarnixTools::testing {

// "6.1.3-1" of each rule that does not hold.
//   level - "2b"
std::set<std::string> BrokenRules(const std::string& bytes, const std::string& level);

// The findings of a file in words, as TextOf tells them.
std::string FindingsOf(const std::string& bytes, const std::string& level);

// The findings in words, a line for each: "6.3.2-1 page 1 object 20 [0 0 10 10] (Link)".
std::string TextOf(const std::vector<engines::pdfa::Finding>& findings);

// What each level says, in lines that start with the levels that say the same:
//
//   1a 1b: 6.5.2-1 page 1 object 20 (Caret)
//   2a 2b 2u 3a 3b 3u:
//
//   findings_at - gets "2b", and says the findings in words
std::string TextOfLevels(const std::function<std::string(const std::string&)>& findings_at);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_
