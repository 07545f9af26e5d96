// Bounds of the engines for PDF/A.
#ifndef TARNIX_ENGINES_PDFA_LIMITS_H_
#define TARNIX_ENGINES_PDFA_LIMITS_H_

#include <cstddef>

namespace TarnixTools::engines::pdfa::limits {

// Findings of one rule that are kept; those beyond are only counted.
inline constexpr std::size_t kMaxFindingsOfRule = 100;
// Bytes of the name of what a finding is about.
inline constexpr std::size_t kMaxSubjectBytes = 200;
// Documents embedded in each other that are validated, and bytes of one.
inline constexpr int kMaxEmbeddedDepth = 2;
inline constexpr std::size_t kMaxEmbeddedFile = std::size_t{256} << 20;
// Bytes of a colour profile.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{64} << 20;

}  // namespace TarnixTools::engines::pdfa::limits

#endif  // TARNIX_ENGINES_PDFA_LIMITS_H_
