#include "engines/support/metadata/XmlScanner.h"

#include <algorithm>

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kSpace = " \t\r\n";
constexpr std::string_view kAfterName = " \t\r\n=/><\"'";

}  // namespace

bool XmlScanner::Next() {
  while (!is_malformed_) {
    at_ = text_.find('<', at_);
    if (at_ == std::string_view::npos) {
      at_ = text_.size();
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

bool XmlScanner::SkipMarkup() {
  const std::string_view rest = text_.substr(at_);
  if (rest.starts_with("<?")) {
    return SkipPast("?>");
  }
  if (rest.starts_with("<!--")) {
    at_ += 4;
    return SkipPast("-->");
  }
  return rest.starts_with("<![CDATA[") && SkipPast("]]>");
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
