// Font programs that a document has several times.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_SAMEPROGRAMS_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_SAMEPROGRAMS_H_

#include <cstdint>
#include <map>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::optimizer {

// For each of the streams that has the bytes of an earlier one, however they are encoded, that
// earlier one. Throws Error for a document that cannot be read any more.
std::map<std::uint32_t, std::uint32_t> FindSamePrograms(pdf::Document& document,
                                                        const std::vector<std::uint32_t>& streams);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_SAMEPROGRAMS_H_
