// Levels of PDF/A as the command line has them: "2b".
#ifndef TARNIX_CLI_PDFA_LEVEL_H_
#define TARNIX_CLI_PDFA_LEVEL_H_

#include <string>
#include <string_view>

#include "Job.h"
#include "PdfCompliance.h"

namespace TarnixTools::cli {

inline constexpr std::string_view kLevelWords = "1a|1b|2a|2b|2u|3a|3b|3u";

// None for a word that is no level.
PdfCompliance LevelOfWord(std::string_view word);

// Empty for what is no level.
std::string WordOfLevel(PdfCompliance level);

// The word, or null for what is no level.
Json LevelJson(PdfCompliance level);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PDFA_LEVEL_H_
