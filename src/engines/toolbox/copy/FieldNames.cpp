#include "engines/toolbox/copy/FieldNames.h"

#include <algorithm>

#include "pdf/tree/TextString.h"

namespace TarnixTools::engines {

namespace {

// Where the first partial name of a full name ends.
std::size_t RootLength(std::string_view full_name) {
  const bool is_big_endian = full_name.starts_with("\xFE\xFF");
  const bool is_little_endian = full_name.starts_with("\xFF\xFE");
  if (!is_big_endian && !is_little_endian) {
    return std::min(full_name.find('.'), full_name.size());
  }
  std::size_t at = 2;
  while (at + 1 < full_name.size() && (full_name[at] != (is_big_endian ? '\0' : '.') ||
                                       full_name[at + 1] != (is_big_endian ? '.' : '\0'))) {
    at += 2;
  }
  return std::min(at, full_name.size());
}

}  // namespace

const std::string* FieldRenames::SuffixOf(const std::string& name) const {
  const auto found = suffixes_.find(name);
  return found == suffixes_.end() ? nullptr : &found->second;
}

std::string FieldRenames::Apply(std::string_view full_name) const {
  const std::string_view root = full_name.substr(0, RootLength(full_name));
  const std::string* suffix = SuffixOf(pdf::TextStringToUtf8(root));
  if (suffix == nullptr) {
    return std::string(full_name);
  }
  return TextStringWith(root, *suffix).append(full_name.substr(root.size()));
}

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
