#include "engines/pdfa/vocabulary/LanguageTag.h"

#include <cstddef>

namespace TarnixTools::engines::pdfa {

namespace {

bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace

bool IsLanguageTag(std::string_view tag, Subtags subtags) {
  constexpr std::size_t kMost = 8;
  std::size_t length = 0;
  bool is_first = true;
  for (const char c : tag) {
    const bool is_digit =
        c >= '0' && c <= '9' && !is_first && subtags == Subtags::kLettersAndDigits;
    if (c == '-' && length > 0) {
      is_first = false;
      length = 0;
    } else if (!(IsLetter(c) || is_digit) || ++length > kMost) {
      return false;
    }
  }
  return tag.empty() || length > 0;
}

}  // namespace TarnixTools::engines::pdfa
