// The levels of PDF/A (ISO 19005-1, -2 and -3), sets of them, and the codes that stand for them on
// every interface.
#ifndef TARNIX_ENGINES_PDFA_LEVEL_H_
#define TARNIX_ENGINES_PDFA_LEVEL_H_

#include <cstdint>
#include <optional>

namespace TarnixTools::engines::pdfa {

// Each a bit of its own, so that a LevelSet is made of them.
enum class Level : std::uint8_t {
  k1b = 1 << 0,
  k1a = 1 << 1,
  k2b = 1 << 2,
  k2u = 1 << 3,
  k2a = 1 << 4,
  k3b = 1 << 5,
  k3u = 1 << 6,
  k3a = 1 << 7,
};

using LevelSet = std::uint8_t;

template <typename... Levels>
constexpr LevelSet SetOf(Levels... levels) {
  return static_cast<LevelSet>((static_cast<unsigned>(levels) | ...));
}

inline constexpr LevelSet kAllLevels = 0xFF;
inline constexpr LevelSet kPart1 = SetOf(Level::k1b, Level::k1a);
inline constexpr LevelSet kPart2 = SetOf(Level::k2b, Level::k2u, Level::k2a);
inline constexpr LevelSet kPart3 = SetOf(Level::k3b, Level::k3u, Level::k3a);
inline constexpr LevelSet kParts2And3 = kPart2 | kPart3;
// Text can be had as Unicode: u, and a, which asks for all that u does.
inline constexpr LevelSet kUnicodeLevels =
    SetOf(Level::k1a, Level::k2u, Level::k2a, Level::k3u, Level::k3a);
// The document has a logical structure.
inline constexpr LevelSet kTaggedLevels = SetOf(Level::k1a, Level::k2a, Level::k3a);

constexpr bool Contains(LevelSet levels, Level level) {
  return (levels & static_cast<LevelSet>(level)) != 0;
}

// 1, 2 or 3.
constexpr int PartOf(Level level) {
  return Contains(kPart1, level) ? 1 : Contains(kPart2, level) ? 2 : 3;
}

// 'a', 'b' or 'u'.
constexpr char ConformanceOf(Level level) {
  return Contains(kTaggedLevels, level) ? 'a' : Contains(kUnicodeLevels, level) ? 'u' : 'b';
}

// 0x1401 for 1b, and so on.
std::int32_t CodeOf(Level level);
// Nothing for a code that is no level's.
std::optional<Level> LevelOfCode(std::int32_t code);
// Nothing for a part and a conformance that do not go together.
//   conformance - 'a', 'b' or 'u'
std::optional<Level> LevelOf(int part, char conformance);
// "PDF/A-2b". The text is static.
const char* NameOf(Level level);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_LEVEL_H_
