#include "pdf/content/Operands.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <string>
#include <vector>

#include "pdf/syntax/Chars.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {

namespace {

// Nearly all operands are decimal numbers with white space between them. False for anything else.
bool ReadPlainNumbers(std::string_view text, std::span<double> numbers) {
  const char* at = text.data();
  const char* const end = at + text.size();
  for (double& number : numbers) {
    while (at != end && IsSpace(*at)) {
      ++at;
    }
    const auto [after, error] = std::from_chars(at, end, number, std::chars_format::fixed);
    if (error != std::errc() || (after != end && !IsSpace(*after))) {
      return false;
    }
    at = after;
  }
  return true;
}

bool IsBlank(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsSpace);
}

// A name, its slash left out, and what follows it.
struct RawName {
  std::string_view name;
  std::string_view after;
};

RawName RawNameAt(std::string_view text, std::size_t slash) {
  std::size_t end = slash + 1;
  while (end < text.size() && IsRegular(text[end])) {
    ++end;
  }
  return {text.substr(slash + 1, end - slash - 1), text.substr(end)};
}

// nullopt for operands that have to be parsed to find it.
std::optional<RawName> LastRawName(std::string_view operands) {
  const std::size_t slash = operands.rfind('/');
  const bool is_plain = operands.find_first_of("%([<") == std::string_view::npos;
  return slash != std::string_view::npos && is_plain ? std::optional(RawNameAt(operands, slash))
                                                     : std::nullopt;
}

std::string_view DecodedName(std::string_view raw, Arena& arena) {
  if (raw.find('#') == std::string_view::npos) {
    return raw;
  }
  std::string name;
  DecodeName("/" + std::string(raw), name);
  return arena.CopyText(name);
}

}  // namespace

bool LastNumbers(const Operation& operation, std::span<double> numbers) {
  if (operation.operand_count < numbers.size()) {
    return false;
  }
  if (operation.operand_count == numbers.size() && ReadPlainNumbers(operation.operands, numbers)) {
    return true;
  }
  Arena arena;
  const std::vector<Object> values = ParseOperands(operation.operands, arena);
  if (values.size() < numbers.size()) {
    return false;
  }
  std::transform(values.end() - static_cast<std::ptrdiff_t>(numbers.size()), values.end(),
                 numbers.begin(), [](const Object& value) { return value.NumberOr(0); });
  return true;
}

std::optional<std::string_view> LastName(const Operation& operation, Arena& arena) {
  if (const auto raw = LastRawName(operation.operands); raw && IsBlank(raw->after)) {
    return DecodedName(raw->name, arena);
  }
  const std::vector<Object> values = ParseOperands(operation.operands, arena);
  return !values.empty() && values.back().IsName() ? std::optional(values.back().Text())
                                                   : std::nullopt;
}

std::optional<NameAndNumber> LastNameAndNumber(const Operation& operation, Arena& arena) {
  NameAndNumber found;
  const std::span<double> number(&found.number, 1);
  if (const auto raw = LastRawName(operation.operands);
      raw && operation.operand_count == 2 && ReadPlainNumbers(raw->after, number)) {
    found.name = DecodedName(raw->name, arena);
    return found;
  }
  const std::vector<Object> values = ParseOperands(operation.operands, arena);
  if (values.size() < 2 || !values[values.size() - 2].IsName()) {
    return std::nullopt;
  }
  return NameAndNumber{values[values.size() - 2].Text(), values.back().NumberOr(0)};
}

std::vector<std::size_t> StringOffsets(std::string_view operands) {
  using Kind = Token::Kind;
  std::vector<std::size_t> offsets;
  std::size_t depth = 0;
  Lexer lexer(operands, true);
  for (Token token = lexer.Next(); token.kind != Kind::kEnd; token = lexer.Next()) {
    if (token.kind == Kind::kArrayOpen && depth++ == 0) {
      offsets.clear();
    } else if (token.kind == Kind::kArrayClose && depth > 0) {
      --depth;
    } else if (depth == 1 && (token.kind == Kind::kString || token.kind == Kind::kHexString)) {
      offsets.push_back(static_cast<std::size_t>(token.text.data() - operands.data()));
    }
  }
  return offsets;
}

std::string_view FirstRawName(std::string_view operands) {
  const std::size_t slash = operands.find('/');
  return slash == std::string_view::npos ? std::string_view() : RawNameAt(operands, slash).name;
}

}  // namespace TarnixTools::pdf
