// What the analysis has to know of characters.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_CHARACTERS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_CHARACTERS_H_

#include <string>
#include <string_view>

namespace TarnixTools::engines {

// White space of any width; also characters that show nothing.
bool IsSpace(char32_t character);

bool IsHyphen(char32_t character);

bool IsDigit(char32_t character);

// Letters as far as cases matter: Latin, Greek, Cyrillic.
bool IsUpperCase(char32_t character);
bool IsLowerCase(char32_t character);

// Letters that are written from left to right, or from right to left.
bool RunsRight(char32_t character);
bool RunsLeft(char32_t character);

// Scripts whose words have no spaces between them: Chinese, Japanese, Thai, Khmer, Lao, Burmese.
bool HasNoSpaces(char32_t character);

// Marks that stand on the letter before them.
bool IsCombining(char32_t character);

// Adds a text with Latin ligatures as the letters they are made of, and without characters that
// mean nothing in a text.
void AppendPlain(std::u32string& out, std::u32string_view text);

std::string ToUtf8(std::u32string_view text);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_TEXT_CHARACTERS_H_
