// Lengths as Office files have them.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_UNITS_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_UNITS_H_

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "engines/support/pages/PageModel.h"
#include "pdf/syntax/HexText.h"

namespace TarnixTools::engines::office {

// What a length of a page can be; files have room for no more.
inline constexpr double kMostPoints = 100'000;

inline std::int64_t Rounded(double number, double per_point) {
  const double points = std::isfinite(number) ? std::clamp(number, -kMostPoints, kMostPoints) : 0;
  return std::llround(points * per_point);
}

// What Word opens: 22 inches, the widest that its pages are.
inline constexpr std::int64_t kMostTwips = 31'680;

// Twentieths of a point.
inline std::int64_t Twips(double points) {
  return std::clamp(Rounded(points, 20), -kMostTwips, kMostTwips);
}

// English metric units: 914,400 to the inch.
inline std::int64_t Emu(double points) {
  return Rounded(points, 12'700);
}

// How wide a line of a shape is (ECMA-376 part 1, 20.1.10.35), in English metric units.
inline std::int64_t LineEmu(double points) {
  return std::clamp<std::int64_t>(Emu(points), 0, 20'116'800);
}

// "1F497D".
inline std::string Hex(const Rgb& color) {
  std::string hex;
  for (const std::uint8_t part : {color.red, color.green, color.blue}) {
    pdf::AppendHex(hex, part, 2);
  }
  return hex;
}

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_UNITS_H_
