#include "pdf/crypt/Passwords.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "foundation/Utf8.h"
#include "pdf/crypt/Saslprep.h"
#include "pdf/syntax/PdfDocEncoding.h"

namespace TarnixTools::pdf::crypt {
namespace {

std::optional<char> Latin1Byte(char32_t character) {
  return character <= 0xFF ? std::optional(static_cast<char>(character)) : std::nullopt;
}

// Nothing for what is not UTF-8, or has a character without a byte.
std::optional<std::string> Encode(std::string_view utf8, std::optional<char> (*byte_of)(char32_t)) {
  std::string encoded;
  while (!utf8.empty()) {
    const DecodedCharacter decoded = DecodeUtf8(utf8);
    const std::optional<char> byte =
        decoded.is_well_formed ? byte_of(decoded.character) : std::nullopt;
    if (!byte) {
      return std::nullopt;
    }
    encoded += *byte;
    utf8.remove_prefix(decoded.length);
  }
  return encoded;
}

}  // namespace

std::vector<std::string> PasswordCandidates(std::string_view password, int revision) {
  std::vector<std::string> candidates;
  const auto add = [&](std::optional<std::string> candidate) {
    if (candidate &&
        std::find(candidates.begin(), candidates.end(), *candidate) == candidates.end()) {
      candidates.push_back(*std::move(candidate));
    }
  };
  if (revision >= 5) {
    add(PreparePassword(password));
    add(std::string(password));
    add(WideToUtf8(Utf8ToWide(password)));
  } else {
    add(Encode(password, PdfDocByte));
    add(std::string(password));
    add(Encode(password, Latin1Byte));
  }
  return candidates;
}

}  // namespace TarnixTools::pdf::crypt
