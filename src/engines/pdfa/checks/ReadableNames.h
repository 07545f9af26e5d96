// Names that are meant to be read: of fonts, colorants and structure types (ISO 19005-2 and -3,
// 6.1.8).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_READABLENAMES_H_
#define TARNIX_ENGINES_PDFA_CHECKS_READABLENAMES_H_

#include <string_view>

#include "engines/pdfa/rules/FindingList.h"

namespace TarnixTools::engines::pdfa {

//   name  - escapes resolved
//   place - its subject says what has the name
void CheckReadableName(FindingList& findings, std::string_view name, const Place& place);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_READABLENAMES_H_
