#include "PdfALevel.h"

#include <algorithm>
#include <array>

namespace TarnixTools::cli {
namespace {

struct LevelWord {
  std::string_view word;
  PdfCompliance level;
};

constexpr std::array<LevelWord, 8> kLevels = {{
    {"1a", PdfCompliance::PdfA1A},
    {"1b", PdfCompliance::PdfA1B},
    {"2a", PdfCompliance::PdfA2A},
    {"2b", PdfCompliance::PdfA2B},
    {"2u", PdfCompliance::PdfA2U},
    {"3a", PdfCompliance::PdfA3A},
    {"3b", PdfCompliance::PdfA3B},
    {"3u", PdfCompliance::PdfA3U},
}};

}  // namespace

PdfCompliance LevelOfWord(std::string_view word) {
  const auto found = std::find_if(kLevels.begin(), kLevels.end(),
                                  [&](const LevelWord& level) { return level.word == word; });
  return found == kLevels.end() ? PdfCompliance::None : found->level;
}

std::string WordOfLevel(PdfCompliance level) {
  const auto found = std::find_if(kLevels.begin(), kLevels.end(),
                                  [&](const LevelWord& word) { return word.level == level; });
  return found == kLevels.end() ? std::string() : std::string(found->word);
}

Json LevelJson(PdfCompliance level) {
  const std::string word = WordOfLevel(level);
  return word.empty() ? Json(nullptr) : Json(word);
}

}  // namespace TarnixTools::cli
