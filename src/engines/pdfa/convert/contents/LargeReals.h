// Real numbers beyond what PDF/A-1 allows (ISO 19005-1, 6.1.12), where integers may be as large.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_LARGEREALS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_LARGEREALS_H_

#include <string>
#include <string_view>

namespace TarnixTools::engines::pdfa {

// A number as it is written.
bool IsLargeReal(std::string_view number);
// The integer next to it.
std::string Rounded(std::string_view number);

// Operands of an operator, as they are written. Those with strings and names count as none.
bool HasLargeReal(std::string_view operands);
std::string WithoutLargeReals(std::string_view operands);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_LARGEREALS_H_
