// What level of PDF/A a document claims to be, by the identification in its XMP packet (ISO 19005-1,
// 6.7.11; -2 and -3, 6.6.4). Whether the claim is true, Validation tells.
#ifndef TARNIX_ENGINES_PDFA_CLAIM_H_
#define TARNIX_ENGINES_PDFA_CLAIM_H_

#include <optional>

#include "engines/pdfa/Level.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// Nothing for a document that claims none, or none that there is.
std::optional<Level> ClaimedLevel(pdf::Document& document);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CLAIM_H_
