// The output intents of a document and their profiles (ISO 19005-1, 6.2.2; -2 and -3, 6.2.3).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_OUTPUTPROFILES_H_
#define TARNIX_ENGINES_PDFA_CHECKS_OUTPUTPROFILES_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "engines/pdfa/rules/ProfileFacts.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class CheckedDocument;

// What the header of a profile says; not readable where the data is too short for one.
ProfileFacts FactsOfProfile(std::string_view profile);

// Of the profile that the object's stream is.
ProfileFacts FactsOfProfile(pdf::Document& document, std::uint32_t number);

// The colour space of the profile of the PDF/A output intent, four letters; empty where there is
// none.
std::string OutputSpaceOf(pdf::Document& document);

void CheckOutputIntents(CheckedDocument& checked);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_OUTPUTPROFILES_H_
