#include "engines/toolbox/content/ContentText.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "foundation/Utf8.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines::toolbox {

namespace {

constexpr double kLargest = 1e9;
constexpr int kMatrixDecimals = 6;

}  // namespace

void AppendNumber(std::string& out, double value, int decimals) {
  const double bounded = std::isfinite(value) ? std::clamp(value, -kLargest, kLargest) : 0;
  char digits[32];
  const auto result =
      std::to_chars(digits, digits + sizeof digits, bounded, std::chars_format::fixed, decimals);
  std::string_view text(digits, static_cast<std::size_t>(result.ptr - digits));
  if (text.find('.') != std::string_view::npos) {
    text = text.substr(0, text.find_last_not_of('0') + 1);
    text.remove_suffix(text.back() == '.' ? 1 : 0);
  }
  const bool is_negative = text.starts_with('-');
  text.remove_prefix(is_negative ? 1 : 0);
  if (text == "0") {
    out += text;
    return;
  }
  if (is_negative) {
    out += '-';
  }
  out += text.starts_with("0.") ? text.substr(1) : text;
}

void AppendOperand(std::string& out, double value, int decimals) {
  if (!out.empty() && pdf::IsRegular(out.back())) {
    out += ' ';
  }
  AppendNumber(out, value, decimals);
}

void AppendTransform(std::string& out, const pdf::Matrix& matrix) {
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d}) {
    AppendOperand(out, value, kMatrixDecimals);
  }
  AppendOperand(out, matrix.e);
  AppendOperand(out, matrix.f);
  out += " cm";
}

void AppendCode(std::string& out, unsigned code) {
  for (int shift = 12; shift >= 0; shift -= 4) {
    out += pdf::kHexDigits[(code >> shift) & 0xF];
  }
}

void AppendUtf16Hex(std::string& out, std::u32string_view text) {
  for (const char32_t c : text) {
    for (const char16_t unit : EncodeUtf16(c)) {
      AppendCode(out, unit);
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
