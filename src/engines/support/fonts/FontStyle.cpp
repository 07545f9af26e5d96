#include "engines/support/fonts/FontStyle.h"

#include <array>
#include <cstdlib>
#include <string>

namespace TarnixTools::engines::fonts {

namespace {

struct Word {
  std::string_view word;
  int value;
};

// Words that others contain come after those.
constexpr std::array<Word, 18> kWeights = {{{"extralight", 40},
                                            {"ultralight", 40},
                                            {"semilight", 55},
                                            {"demilight", 55},
                                            {"semibold", 180},
                                            {"demibold", 180},
                                            {"extrabold", 205},
                                            {"ultrabold", 205},
                                            {"extrablack", 215},
                                            {"ultrablack", 215},
                                            {"thin", 0},
                                            {"light", 50},
                                            {"book", 75},
                                            {"medium", 100},
                                            {"bold", 200},
                                            {"demi", 180},
                                            {"black", 210},
                                            {"heavy", 210}}};
constexpr std::array<Word, 2> kSlants = {{{"italic", 100}, {"oblique", 110}}};
constexpr std::array<Word, 9> kWidths = {{{"ultracondensed", 50},
                                          {"extracondensed", 63},
                                          {"semicondensed", 87},
                                          {"condensed", 75},
                                          {"narrow", 75},
                                          {"semiexpanded", 113},
                                          {"extraexpanded", 150},
                                          {"ultraexpanded", 200},
                                          {"expanded", 125}}};
// What says that something is as usual.
constexpr std::array<Word, 5> kUsual = {
    {{"regular", 0}, {"roman", 0}, {"normal", 0}, {"upright", 0}, {"plain", 0}}};

// Between weights and widths that have names of their own.
constexpr int kMaxWeightDifference = 5;
constexpr int kMaxWidthDifference = 5;

// Lower case, letters only: "Semi-Bold" and "SemiBold" are the same.
std::string Letters(std::string_view words) {
  std::string letters;
  for (const char c : words) {
    if (c >= 'A' && c <= 'Z') {
      letters += static_cast<char>(c - 'A' + 'a');
    } else if (c >= 'a' && c <= 'z') {
      letters += c;
    }
  }
  return letters;
}

// Takes the first word that the letters contain out of them.
template <std::size_t N>
int Take(std::string& letters, const std::array<Word, N>& words, int otherwise) {
  for (const Word& word : words) {
    if (const std::size_t at = letters.find(word.word); at != std::string::npos) {
      letters.erase(at, word.word.size());
      return word.value;
    }
  }
  return otherwise;
}

}  // namespace

FontStyle ParseFontStyle(std::string_view words) {
  std::string letters = Letters(words);
  FontStyle style;
  style.width = Take(letters, kWidths, style.width);
  style.slant = Take(letters, kSlants, style.slant);
  style.weight = Take(letters, kWeights, style.weight);
  Take(letters, kUsual, 0);
  style.is_known = letters.empty();
  return style;
}

bool IsOfStyle(const FontStyle& wanted, const FontStyle& face) {
  return wanted.is_known && (wanted.slant == 0) == (face.slant == 0) &&
         std::abs(wanted.width - face.width) <= kMaxWidthDifference &&
         std::abs(wanted.weight - face.weight) <= kMaxWeightDifference;
}

int StyleDistance(const FontStyle& wanted, const FontStyle& face) {
  const bool is_slant_other = (wanted.slant == 0) != (face.slant == 0);
  return (is_slant_other ? 1'000'000 : std::abs(wanted.slant - face.slant)) +
         std::abs(wanted.width - face.width) * 1000 + std::abs(wanted.weight - face.weight) * 2;
}

}  // namespace TarnixTools::engines::fonts
