// Which levels of PDF/A a conversion tries, the best first.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_LEVELCHOICE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_LEVELCHOICE_H_

#include <optional>
#include <vector>

#include "engines/pdfa/Level.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// Ends with 2b, below which nothing is worth claiming.
//   wanted - nothing for the most useful level: that which the document claims, or else the highest
//            of part 2 that its tags allow, or of part 3 where there are embedded files to be kept
std::vector<Level> LevelsToTry(pdf::Document& document, std::optional<Level> wanted);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_LEVELCHOICE_H_
