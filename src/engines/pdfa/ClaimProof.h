// A claim that is made true: documents that were written by a job which knows nothing of the rules.
#ifndef TARNIX_ENGINES_PDFA_CLAIMPROOF_H_
#define TARNIX_ENGINES_PDFA_CLAIMPROOF_H_

#include <cstdio>
#include <optional>

#include "engines/pdfa/Level.h"

namespace TarnixTools::engines::pdfa {

// The level that the document in the file may claim, of the part that it claims: where that is not what
// its packet says, the packet is changed in its place, in as many bytes. Nothing: it claims none any
// more. The packet of a claim must be stored as it is, neither compressed nor encrypted. Throws
// pdf::Error for a file that cannot be read or written.
std::optional<Level> ProveClaim(std::FILE* file);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CLAIMPROOF_H_
