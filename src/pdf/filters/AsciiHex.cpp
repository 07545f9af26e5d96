#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

// -1 for what is no hexadecimal digit.
int DigitValue(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

}  // namespace

Decoded filters::DecodeAsciiHex(std::string_view encoded, std::size_t limit) {
  LimitedOutput out(limit);
  int high = -1;
  bool ended = false;
  for (const char c : encoded) {
    const int digit = DigitValue(c);
    if (digit < 0 && IsWhiteSpace(c)) {
      continue;
    }
    if (digit < 0) {
      ended = c == '>';
      break;
    }
    if (high < 0) {
      high = digit;
    } else {
      out.Append(static_cast<char>(high * 16 + digit));
      high = -1;
    }
  }
  if (high >= 0) {
    out.Append(static_cast<char>(high * 16));
  }
  return {out.Take(), ended};
}

}  // namespace TarnixTools::pdf
