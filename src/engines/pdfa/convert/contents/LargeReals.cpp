#include "engines/pdfa/convert/contents/LargeReals.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr double kLargestReal = 32'767;
constexpr double kLargestInteger = 2'147'483'647;
// Digits before the point of a number that may be too large.
constexpr std::size_t kLeastDigits = 5;
constexpr std::string_view kSeparators = " \t\r\n\f[]";

double ValueOf(std::string_view number) {
  return pdf::Object::Real(number).NumberOr(0);
}

}  // namespace

bool IsLargeReal(std::string_view number) {
  const std::size_t point = number.find('.');
  return point != std::string_view::npos && point >= kLeastDigits &&
         std::abs(ValueOf(number)) > kLargestReal;
}

std::string Rounded(std::string_view number) {
  return std::to_string(
      std::lround(std::clamp(ValueOf(number), -kLargestInteger, kLargestInteger)));
}

bool HasLargeReal(std::string_view operands) {
  if (operands.size() <= kLeastDigits || operands.find_first_of("(</") != std::string_view::npos) {
    return false;
  }
  std::size_t at = 0;
  while (at < operands.size()) {
    const std::size_t end = std::min(operands.find_first_of(kSeparators, at), operands.size());
    if (IsLargeReal(operands.substr(at, end - at))) {
      return true;
    }
    at = end + 1;
  }
  return false;
}

std::string WithoutLargeReals(std::string_view operands) {
  std::string text;
  std::size_t at = 0;
  while (at < operands.size()) {
    const std::size_t end = std::min(operands.find_first_of(kSeparators, at), operands.size());
    const std::string_view token = operands.substr(at, end - at);
    text += IsLargeReal(token) ? Rounded(token) : std::string(token);
    text += operands.substr(end, 1);
    at = end + 1;
  }
  return text;
}

}  // namespace TarnixTools::engines::pdfa
