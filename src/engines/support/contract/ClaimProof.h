// How a job that keeps a document's claim of PDF/A (ISO 19005) has it proven of what it wrote. Engines
// don't know each other: who calls them hands the validator's function over.
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_CLAIMPROOF_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_CLAIMPROOF_H_

#include <cstdint>
#include <cstdio>

namespace TarnixTools::engines {

// Is given a document that is complete, in a file that can be read and written, and makes its claim
// true: the level that it claims where that holds, else the best one below it, else none. Returns the
// code of the level (0x1401 for 1b, ...), 0 for none, or -1 where the file could not be read or
// written. Must not throw.
using TPdfClaimProof = std::int32_t (*)(std::FILE* file);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_CLAIMPROOF_H_
