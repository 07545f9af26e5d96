#include "engines/pdfa/checks/TokenCheck.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "engines/pdfa/rules/FileFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

// Short ones are within every bound, and nearly all are short.
constexpr std::size_t kShortNumber = 5;
constexpr std::size_t kShortText = 127;

// Of a number that a double cannot hold.
double ValueBeyond(std::string_view text) {
  const bool is_large =
      text.substr(0, text.find('.')).find_first_not_of('0') != std::string_view::npos;
  return is_large ? std::numeric_limits<double>::max() : std::numeric_limits<double>::min();
}

}  // namespace

void TokenCheck::Check(const pdf::Token& token) {
  switch (token.kind) {
    case pdf::Token::Kind::kInteger:
      if (token.text.size() > kShortNumber) {
        findings_->Check(IntegerFacts{token.integer}, place_);
      }
      return;
    case pdf::Token::Kind::kReal:
    case pdf::Token::Kind::kOddNumber:
      return CheckReal(token.text);
    case pdf::Token::Kind::kString:
    case pdf::Token::Kind::kHexString:
      return CheckString(token);
    case pdf::Token::Kind::kName:
      return CheckName(token);
    default:
      return;
  }
}

// An integer that 63 bits cannot hold is an odd number.
void TokenCheck::CheckReal(std::string_view text) {
  if (text.size() <= kShortNumber) {
    return;
  }
  const bool is_negative = text.front() == '-';
  if (text.front() == '+' || is_negative) {
    text.remove_prefix(1);
  }
  if (text.find_first_not_of("0123456789") == std::string_view::npos) {
    constexpr std::int64_t kBeyond = std::int64_t{1} << 62;
    findings_->Check(IntegerFacts{is_negative ? -kBeyond : kBeyond}, place_);
    return;
  }
  double value = 0;
  const auto result =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    value = ValueBeyond(text);
  }
  findings_->Check(RealFacts{is_negative ? -value : value}, place_);
}

void TokenCheck::CheckString(const pdf::Token& token) {
  const bool is_hex = token.kind == pdf::Token::Kind::kHexString;
  if (!is_hex && token.text.size() <= kShortText) {
    return;
  }
  StringFacts facts{.is_hex = is_hex};
  if (is_hex) {
    const pdf::HexSyntax hex = pdf::HexSyntaxOf(token);
    facts.hex_characters = hex.digits + hex.others;
    facts.has_only_hex_digits = hex.others == 0;
  }
  scratch_.clear();
  pdf::DecodeString(token, scratch_);
  facts.bytes = scratch_.size();
  findings_->Check(facts, place_);
}

void TokenCheck::CheckName(const pdf::Token& token) {
  if (token.text.size() <= kShortText) {
    return;
  }
  scratch_.clear();
  pdf::DecodeName(token.text, scratch_);
  findings_->Check(NameFacts{scratch_.size()}, place_);
}

}  // namespace TarnixTools::engines::pdfa
