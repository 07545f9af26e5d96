#include "pdf/syntax/PdfDocEncoding.h"

#include <algorithm>
#include <array>

#include "foundation/Utf8.h"

namespace TarnixTools::pdf {
namespace {

// Where it differs from Latin-1: 0x18 to 0x1F, and 0x80 to 0xA0.
constexpr unsigned kFirstAccent = 0x18;
constexpr std::array<char16_t, 8> kAccents = {0x02D8, 0x02C7, 0x02C6, 0x02D9,
                                              0x02DD, 0x02DB, 0x02DA, 0x02DC};
constexpr unsigned kFirstUpper = 0x80;
constexpr std::array<char16_t, 33> kUpper = {
    0x2022, 0x2020, 0x2021, 0x2026, 0x2014, 0x2013, 0x0192, 0x2044, 0x2039, 0x203A, 0x2212,
    0x2030, 0x201E, 0x201C, 0x201D, 0x2018, 0x2019, 0x201A, 0x2122, 0xFB01, 0xFB02, 0x0141,
    0x0152, 0x0160, 0x0178, 0x017D, 0x0131, 0x0142, 0x0153, 0x0161, 0x017E, 0xFFFD, 0x20AC};

bool IsItsOwnByte(char32_t character) {
  return character == '\t' || character == '\n' || character == '\r' ||
         (character >= 0x20 && character < 0x7F) ||
         (character > 0xA0 && character <= 0xFF && character != 0xAD);
}

}  // namespace

char32_t PdfDocCharacter(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  if (value >= kFirstAccent && value < kFirstAccent + kAccents.size()) {
    return kAccents[value - kFirstAccent];
  }
  if (value >= kFirstUpper && value < kFirstUpper + kUpper.size()) {
    return kUpper[value - kFirstUpper];
  }
  return value;
}

std::optional<char> PdfDocByte(char32_t character) {
  if (IsItsOwnByte(character)) {
    return static_cast<char>(character);
  }
  const auto place_in = [character](const auto& table, unsigned first) -> std::optional<char> {
    const auto found = std::find(table.begin(), table.end(), character);
    if (found == table.end() || character == kReplacementCharacter) {
      return std::nullopt;
    }
    return static_cast<char>(first + static_cast<unsigned>(found - table.begin()));
  };
  const std::optional<char> accent = place_in(kAccents, kFirstAccent);
  return accent ? accent : place_in(kUpper, kFirstUpper);
}

}  // namespace TarnixTools::pdf
