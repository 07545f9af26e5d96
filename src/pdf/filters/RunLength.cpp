#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/LimitedOutput.h"

namespace TarnixTools::pdf {
namespace {

constexpr unsigned kEndOfData = 128;

}  // namespace

Decoded filters::DecodeRunLength(std::string_view encoded, std::size_t limit) {
  LimitedOutput out(limit);
  while (!encoded.empty()) {
    const unsigned length = static_cast<unsigned char>(encoded.front());
    encoded.remove_prefix(1);
    if (length == kEndOfData) {
      return {out.Take(), true};
    }
    if (length < kEndOfData) {
      const std::string_view literal = encoded.substr(0, length + 1);
      out.Append(literal);
      encoded.remove_prefix(literal.size());
    } else if (!encoded.empty()) {
      out.Append(257 - length, encoded.front());
      encoded.remove_prefix(1);
    }
  }
  return {out.Take(), false};
}

}  // namespace TarnixTools::pdf
