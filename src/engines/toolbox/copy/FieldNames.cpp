#include "engines/toolbox/copy/FieldNames.h"

namespace TarnixTools::engines {

std::string TakenNames::SuffixFor(const std::string& name,
                                  const std::function<bool(const std::string&)>& is_taken) {
  std::uint32_t& next = next_.emplace(name, 2).first->second;
  for (;;) {
    const std::string suffix = "_" + std::to_string(next++);
    const std::string numbered = name + suffix;
    if (!Contains(numbered) && !is_taken(numbered)) {
      return suffix;
    }
  }
}

std::string TextStringWith(std::string_view text_string, std::string_view suffix) {
  std::string result(text_string);
  const bool is_big_endian = text_string.starts_with("\xFE\xFF");
  const bool is_little_endian = text_string.starts_with("\xFF\xFE");
  if ((is_big_endian || is_little_endian) && result.size() % 2 != 0) {
    result.pop_back();
  }
  for (const char character : suffix) {
    if (is_big_endian) {
      result += '\0';
    }
    result += character;
    if (is_little_endian) {
      result += '\0';
    }
  }
  return result;
}

}  // namespace TarnixTools::engines
