#include "engines/support/metadata/XmlScanner.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <system_error>

#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kSpace = " \t\r\n";
constexpr std::string_view kSectionStart = "<![CDATA[";
constexpr std::string_view kSectionEnd = "]]>";
constexpr std::string_view kAfterName = " \t\r\n=/><\"'";

struct Entity {
  std::string_view name;
  char32_t character;
};

constexpr std::array<Entity, 5> kEntities = {
    {{"amp", U'&'}, {"lt", U'<'}, {"gt", U'>'}, {"quot", U'"'}, {"apos", U'\''}}};

// Of what is between "&" and ";"; 0 for what is none.
char32_t CharacterOf(std::string_view reference) {
  const auto known = std::find_if(kEntities.begin(), kEntities.end(),
                                  [&](const Entity& entity) { return entity.name == reference; });
  if (known != kEntities.end()) {
    return known->character;
  }
  const bool is_hexadecimal = reference.starts_with("#x");
  if (!reference.starts_with('#')) {
    return 0;
  }
  const std::string_view digits = reference.substr(is_hexadecimal ? 2 : 1);
  std::uint32_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value,
                                            is_hexadecimal ? 16 : 10);
  const bool is_number = error == std::errc() && end == digits.data() + digits.size();
  return is_number && IsXmlCharacter(value) ? value : U'\0';
}

}  // namespace

bool IsXmlCharacter(char32_t character) {
  return character == U'\t' || character == U'\n' || character == U'\r' ||
         (character >= 0x20 && character < 0xD800) ||
         (character >= 0xE000 && character <= 0x10FFFF && character != 0xFFFE &&
          character != 0xFFFF);
}

std::optional<std::string> ExpandXml(std::string_view raw) {
  std::string text;
  while (!raw.empty()) {
    const std::size_t start = std::min(raw.find('&'), raw.size());
    text += raw.substr(0, start);
    raw.remove_prefix(start);
    if (raw.empty()) {
      break;
    }
    const std::size_t end = raw.find(';');
    const char32_t character =
        end == std::string_view::npos ? U'\0' : CharacterOf(raw.substr(1, end - 1));
    if (character == 0) {
      return std::nullopt;
    }
    AppendUtf8(text, character);
    raw.remove_prefix(end + 1);
  }
  return text;
}

bool XmlScanner::Next() {
  characters_.clear();
  while (!is_malformed_) {
    if (!GoToMarkup()) {
      return Fail();
    }
    if (at_ == text_.size()) {
      return false;
    }
    const char kind = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
    if (kind != '!' && kind != '?') {
      return ReadTag() || Fail();
    }
    if (!SkipMarkup()) {
      return Fail();
    }
  }
  return false;
}

// To the next "<", or to the end. False for character data that is none.
bool XmlScanner::GoToMarkup() {
  const std::size_t end = std::min(text_.find('<', at_), text_.size());
  const std::string_view raw = text_.substr(at_, end - at_);
  at_ = end;
  if (!keeps_characters_ || raw.empty()) {
    return true;
  }
  const std::optional<std::string> expanded = ExpandXml(raw);
  characters_ += expanded.value_or("");
  return expanded.has_value() && raw.find("]]>") == std::string_view::npos;
}

bool XmlScanner::SkipMarkup() {
  const std::string_view rest = text_.substr(at_);
  if (rest.starts_with("<?")) {
    return SkipPast("?>");
  }
  if (rest.starts_with("<!--")) {
    at_ += 4;
    return SkipPast("-->");
  }
  return rest.starts_with(kSectionStart) && SkipSection();
}

bool XmlScanner::SkipSection() {
  const std::size_t start = at_ + kSectionStart.size();
  const bool is_closed = SkipPast(kSectionEnd);
  if (is_closed && keeps_characters_) {
    characters_ += text_.substr(start, at_ - kSectionEnd.size() - start);
  }
  return is_closed;
}

bool XmlScanner::ReadTag() {
  tag_ = {XmlTag::Kind::kStart, {}, at_, 0};
  attributes_.clear();
  ++at_;
  if (text_.substr(at_).starts_with('/')) {
    tag_.kind = XmlTag::Kind::kEnd;
    ++at_;
  }
  tag_.name = ReadName();
  if (tag_.name.empty()) {
    return false;
  }
  while (true) {
    const bool has_space = SkipSpace();
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with('>')) {
      ++at_;
      break;
    }
    if (rest.starts_with("/>") && tag_.kind == XmlTag::Kind::kStart) {
      tag_.kind = XmlTag::Kind::kEmpty;
      at_ += 2;
      break;
    }
    if (!has_space || tag_.kind == XmlTag::Kind::kEnd || !ReadAttribute()) {
      return false;
    }
  }
  tag_.end = at_;
  return true;
}

bool XmlScanner::ReadAttribute() {
  XmlAttribute attribute;
  attribute.begin = text_.find_last_not_of(kSpace, at_ - 1) + 1;
  attribute.name = ReadName();
  SkipSpace();
  if (attribute.name.empty() || !text_.substr(at_).starts_with('=')) {
    return false;
  }
  ++at_;
  SkipSpace();
  const char quote = at_ < text_.size() ? text_[at_] : '\0';
  if (quote != '"' && quote != '\'') {
    return false;
  }
  const std::size_t close = text_.find(quote, at_ + 1);
  if (close == std::string_view::npos) {
    return false;
  }
  attribute.value = text_.substr(at_, close + 1 - at_);
  at_ = close + 1;
  attribute.end = at_;
  attributes_.push_back(attribute);
  return attribute.value.find('<') == std::string_view::npos;
}

bool XmlScanner::SkipPast(std::string_view mark) {
  const std::size_t found = text_.find(mark, at_);
  at_ = found == std::string_view::npos ? text_.size() : found + mark.size();
  return found != std::string_view::npos;
}

// Whether there was any.
bool XmlScanner::SkipSpace() {
  const std::size_t start = at_;
  at_ = std::min(text_.find_first_not_of(kSpace, at_), text_.size());
  return at_ > start;
}

std::string_view XmlScanner::ReadName() {
  const std::size_t start = at_;
  at_ = std::min(text_.find_first_of(kAfterName, at_), text_.size());
  return text_.substr(start, at_ - start);
}

bool XmlScanner::Fail() {
  is_malformed_ = true;
  return false;
}

}  // namespace TarnixTools::engines
