// What a validation says of a file in memory.
#ifndef TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_
#define TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_

#include <set>
#include <string>

namespace TarnixTools::testing {

// "6.1.3-1" of each rule that does not hold.
//   level - "2b"
std::set<std::string> BrokenRules(const std::string& bytes, const std::string& level);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_PDFA_FINDINGS_H_
