// Bounds of the engines for PDF/A.
#ifndef TARNIX_ENGINES_PDFA_LIMITS_H_
#define TARNIX_ENGINES_PDFA_LIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::pdfa::limits {

// Findings of one rule that are kept; those beyond are only counted.
inline constexpr std::size_t kMaxFindingsOfRule = 100;
// Bytes of the name of what a finding is about.
inline constexpr std::size_t kMaxSubjectBytes = 200;

}  // namespace TarnixTools::engines::pdfa::limits

#endif  // TARNIX_ENGINES_PDFA_LIMITS_H_
