// Interactive forms and signatures (ISO 19005-1, 6.6.2 and 6.9; -2 and -3, 6.1.12 and 6.4).
#ifndef TARNIX_ENGINES_PDFA_RULES_FORMFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_FORMFACTS_H_

#include <cstddef>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// The form as a whole.
struct FormFacts {
  bool needs_appearances = false;  // /NeedAppearances is true
  bool has_xfa = false;
};

struct FieldFacts {
  bool has_additional_actions = false;  // /AA
};

// A signature and its cryptographic message.
struct SignatureFacts {
  bool covers_document = true;  // its byte range is the whole file but the signature itself
};

struct SignatureMessageFacts {
  bool has_certificate = true;  // that of the signer
  std::size_t signers = 1;
};

// The catalog's /Perms.
struct PermissionsFacts {
  bool has_others = false;  // than DocMDP and UR3
};

// A reference of a signature.
struct SignatureReferenceFacts {
  bool has_digest = false;        // /DigestLocation, /DigestMethod or /DigestValue
  bool document_has_mdp = false;  // /Perms has /DocMDP
};

template <>
std::span<const Rule<FormFacts>> RulesFor<FormFacts>();
template <>
std::span<const Rule<FieldFacts>> RulesFor<FieldFacts>();
template <>
std::span<const Rule<SignatureFacts>> RulesFor<SignatureFacts>();
template <>
std::span<const Rule<SignatureMessageFacts>> RulesFor<SignatureMessageFacts>();
template <>
std::span<const Rule<PermissionsFacts>> RulesFor<PermissionsFacts>();
template <>
std::span<const Rule<SignatureReferenceFacts>> RulesFor<SignatureReferenceFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_FORMFACTS_H_
