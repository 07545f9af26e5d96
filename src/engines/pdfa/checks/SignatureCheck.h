// Checks signatures (ISO 19005-2 and -3, 6.1.12 and 6.4.3): what they cover, and who has signed. No
// signature is verified.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_SIGNATURECHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_SIGNATURECHECK_H_

#include <string_view>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/rules/FormFacts.h"

namespace TarnixTools::engines::pdfa {

// Of a field of any type; one that holds no signature is passed over.
void CheckSignatureField(CheckedDocument& checked, const pdf::Followed& field);

// What a signed message says (RFC 5652, 5.1); no signer for what is none.
SignatureMessageFacts FactsOfMessage(std::string_view message);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_SIGNATURECHECK_H_
