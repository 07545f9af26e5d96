// CMap files (ISO 32000-2, 9.7.5.4 and 9.10.3), as PDF/A wants them.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_CMAPTEXT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_CMAPTEXT_H_

#include <cstdint>
#include <map>
#include <string>

#include "pdf/write/ObjectChange.h"

namespace TarnixTools::engines::pdfa {

// The stream of a map from codes to character identifiers of the collection Adobe-Identity.
//   code_bytes - 1 or 2
pdf::ObjectChange MakeCodeMap(const std::map<std::uint32_t, std::uint32_t>& cids, int code_bytes,
                              bool is_vertical);

// The stream of a /ToUnicode.
pdf::ObjectChange MakeToUnicode(const std::map<std::uint32_t, std::u32string>& texts,
                                int code_bytes);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_CMAPTEXT_H_
