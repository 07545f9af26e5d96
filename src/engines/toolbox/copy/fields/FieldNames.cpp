#include "engines/toolbox/copy/fields/FieldNames.h"

#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::toolbox {

namespace {

// Where the first partial name of a full name ends.
std::size_t RootLength(std::string_view full_name) {
  const pdf::TextEncoding encoding = pdf::EncodingOf(full_name);
  const std::string dot = pdf::AsciiIn(encoding, ".");
  std::size_t at = pdf::MarkOf(encoding).size();
  while (at + dot.size() <= full_name.size() && full_name.substr(at, dot.size()) != dot) {
    at += dot.size();
  }
  return at;
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
  return pdf::TextStringWith(root, *suffix).append(full_name.substr(root.size()));
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

}  // namespace TarnixTools::engines::toolbox
