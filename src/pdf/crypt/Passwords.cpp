#include "pdf/crypt/Passwords.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "pdf/crypt/Saslprep.h"

namespace TarnixTools::pdf::crypt {
namespace {

struct EncodedCharacter {
  char32_t character;
  std::uint8_t code;
};

// PDFDocEncoding where it differs from Latin-1 (ISO 32000-2, annex D.3).
constexpr std::array kPdfDocCharacters = {
    EncodedCharacter{0x02D8, 0x18}, EncodedCharacter{0x02C7, 0x19}, EncodedCharacter{0x02C6, 0x1A},
    EncodedCharacter{0x02D9, 0x1B}, EncodedCharacter{0x02DD, 0x1C}, EncodedCharacter{0x02DB, 0x1D},
    EncodedCharacter{0x02DA, 0x1E}, EncodedCharacter{0x02DC, 0x1F}, EncodedCharacter{0x2022, 0x80},
    EncodedCharacter{0x2020, 0x81}, EncodedCharacter{0x2021, 0x82}, EncodedCharacter{0x2026, 0x83},
    EncodedCharacter{0x2014, 0x84}, EncodedCharacter{0x2013, 0x85}, EncodedCharacter{0x0192, 0x86},
    EncodedCharacter{0x2044, 0x87}, EncodedCharacter{0x2039, 0x88}, EncodedCharacter{0x203A, 0x89},
    EncodedCharacter{0x2212, 0x8A}, EncodedCharacter{0x2030, 0x8B}, EncodedCharacter{0x201E, 0x8C},
    EncodedCharacter{0x201C, 0x8D}, EncodedCharacter{0x201D, 0x8E}, EncodedCharacter{0x2018, 0x8F},
    EncodedCharacter{0x2019, 0x90}, EncodedCharacter{0x201A, 0x91}, EncodedCharacter{0x2122, 0x92},
    EncodedCharacter{0xFB01, 0x93}, EncodedCharacter{0xFB02, 0x94}, EncodedCharacter{0x0141, 0x95},
    EncodedCharacter{0x0152, 0x96}, EncodedCharacter{0x0160, 0x97}, EncodedCharacter{0x0178, 0x98},
    EncodedCharacter{0x017D, 0x99}, EncodedCharacter{0x0131, 0x9A}, EncodedCharacter{0x0142, 0x9B},
    EncodedCharacter{0x0153, 0x9C}, EncodedCharacter{0x0161, 0x9D}, EncodedCharacter{0x017E, 0x9E},
    EncodedCharacter{0x20AC, 0xA0},
};

// Takes one character off the front. Nothing for what is not well-formed UTF-8 (RFC 3629).
std::optional<char32_t> TakeCharacter(std::string_view& utf8) {
  const auto octet = [&](std::size_t i) -> std::uint32_t {
    return static_cast<unsigned char>(utf8[i]);
  };
  const std::uint32_t first = octet(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if ((first >= 0x80 && first < 0xC2) || first > 0xF4 || utf8.size() < length) {
    return std::nullopt;
  }
  char32_t character = length == 1 ? first : first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((octet(i) & 0xC0) != 0x80) {
      return std::nullopt;
    }
    character = (character << 6) | (octet(i) & 0x3F);
  }
  constexpr std::array<char32_t, 5> kLeastOfLength = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
  if (character < kLeastOfLength[length] || character > 0x10FFFF || surrogate) {
    return std::nullopt;
  }
  utf8.remove_prefix(length);
  return character;
}

std::optional<std::uint8_t> PdfDocCode(char32_t character) {
  for (const EncodedCharacter& encoded : kPdfDocCharacters) {
    if (encoded.character == character) {
      return encoded.code;
    }
  }
  const bool as_latin1 = character < 0x18 || (character >= 0x20 && character < 0x7F) ||
                         (character > 0xA0 && character <= 0xFF && character != 0xAD);
  return as_latin1 ? std::optional(static_cast<std::uint8_t>(character)) : std::nullopt;
}

std::optional<std::uint8_t> Latin1Code(char32_t character) {
  return character <= 0xFF ? std::optional(static_cast<std::uint8_t>(character)) : std::nullopt;
}

template <typename CodeOf>
std::optional<std::string> Encode(std::string_view utf8, CodeOf&& code_of) {
  std::string encoded;
  while (!utf8.empty()) {
    const std::optional<char32_t> character = TakeCharacter(utf8);
    const std::optional<std::uint8_t> code = character ? code_of(*character) : std::nullopt;
    if (!code) {
      return std::nullopt;
    }
    encoded.push_back(static_cast<char>(*code));
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
  } else {
    add(Encode(password, PdfDocCode));
    add(std::string(password));
    add(Encode(password, Latin1Code));
  }
  return candidates;
}

}  // namespace TarnixTools::pdf::crypt
