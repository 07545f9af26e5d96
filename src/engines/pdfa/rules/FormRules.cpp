#include <array>

#include "engines/pdfa/rules/FormFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::array<Rule<FormFacts>, 2> kFormRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.9", 1},
     .later = {"6.4.1", 3},
     .holds = [](const FormFacts& form) { return !form.needs_appearances; },
     .wrong = "The form asks viewers to make the appearances of its fields.",
     .cure = "Make them, and remove /NeedAppearances."},
    {.levels = kParts2And3,
     .later = {"6.4.2", 1},
     .holds = [](const FormFacts& form) { return !form.has_xfa; },
     .wrong = "The form is described by XFA.",
     .cure = "Remove /XFA."},
}};

constexpr std::array<Rule<FieldFacts>, 1> kFieldRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.6.2", 2},
     .later = {"6.4.1", 2},
     .holds = [](const FieldFacts& field) { return !field.has_additional_actions; },
     .wrong = "A form field has additional actions.",
     .cure = "Remove its /AA."},
}};

constexpr std::array<Rule<SignatureFacts>, 1> kSignatureRules = {{
    {.levels = kParts2And3,
     .later = {"6.4.3", 1},
     .holds = [](const SignatureFacts& signature) { return signature.covers_document; },
     .wrong = "A signature does not cover the whole file.",
     .cure = "Sign the document anew, as the last thing that is done with it."},
}};

constexpr std::array<Rule<SignatureMessageFacts>, 2> kSignatureMessageRules = {{
    {.levels = kParts2And3,
     .later = {"6.4.3", 2},
     .holds = [](const SignatureMessageFacts& message) { return message.has_certificate; },
     .wrong = "A signature does not have the signer's certificate.",
     .cure = "Sign the document anew, with the certificate in the signature."},
    {.levels = kParts2And3,
     .later = {"6.4.3", 3},
     .holds = [](const SignatureMessageFacts& message) { return message.signers == 1; },
     .wrong = "A signature is not that of one signer.",
     .cure = "Sign the document anew, each signer with a signature of their own."},
}};

constexpr std::array<Rule<PermissionsFacts>, 1> kPermissionsRules = {{
    {.levels = kParts2And3,
     .later = {"6.1.12", 1},
     .holds = [](const PermissionsFacts& permissions) { return !permissions.has_others; },
     .wrong = "The permissions of the document are others than DocMDP and UR3.",
     .cure = "Remove the other entries of /Perms."},
}};

constexpr std::array<Rule<SignatureReferenceFacts>, 1> kSignatureReferenceRules = {{
    {.levels = kParts2And3,
     .later = {"6.1.12", 2},
     .holds =
         [](const SignatureReferenceFacts& reference) {
           return !reference.document_has_mdp || !reference.has_digest;
         },
     .wrong = "A signature reference has a digest, and the document certifies its changes.",
     .cure = "Remove /DigestLocation, /DigestMethod and /DigestValue."},
}};

}  // namespace

template <>
std::span<const Rule<FormFacts>> RulesFor<FormFacts>() {
  return kFormRules;
}

template <>
std::span<const Rule<FieldFacts>> RulesFor<FieldFacts>() {
  return kFieldRules;
}

template <>
std::span<const Rule<SignatureFacts>> RulesFor<SignatureFacts>() {
  return kSignatureRules;
}

template <>
std::span<const Rule<SignatureMessageFacts>> RulesFor<SignatureMessageFacts>() {
  return kSignatureMessageRules;
}

template <>
std::span<const Rule<PermissionsFacts>> RulesFor<PermissionsFacts>() {
  return kPermissionsRules;
}

template <>
std::span<const Rule<SignatureReferenceFacts>> RulesFor<SignatureReferenceFacts>() {
  return kSignatureReferenceRules;
}

}  // namespace TarnixTools::engines::pdfa
