#include "engines/pdfa/Level.h"

#include <array>

namespace TarnixTools::engines::pdfa {

namespace {

struct LevelRow {
  Level level;
  std::int32_t code;
  const char* name;
};

constexpr std::array<LevelRow, 8> kLevels = {{
    {Level::k1b, 0x1401, "PDF/A-1b"},
    {Level::k1a, 0x1402, "PDF/A-1a"},
    {Level::k2b, 0x1701, "PDF/A-2b"},
    {Level::k2u, 0x1702, "PDF/A-2u"},
    {Level::k2a, 0x1703, "PDF/A-2a"},
    {Level::k3b, 0x1711, "PDF/A-3b"},
    {Level::k3u, 0x1712, "PDF/A-3u"},
    {Level::k3a, 0x1713, "PDF/A-3a"},
}};

const LevelRow& RowOf(Level level) {
  for (const LevelRow& row : kLevels) {
    if (row.level == level) {
      return row;
    }
  }
  return kLevels.front();
}

}  // namespace

std::int32_t CodeOf(Level level) {
  return RowOf(level).code;
}

std::optional<Level> LevelOfCode(std::int32_t code) {
  for (const LevelRow& row : kLevels) {
    if (row.code == code) {
      return row.level;
    }
  }
  return std::nullopt;
}

std::optional<Level> LevelOf(int part, char conformance) {
  for (const LevelRow& row : kLevels) {
    if (PartOf(row.level) == part && ConformanceOf(row.level) == conformance) {
      return row.level;
    }
  }
  return std::nullopt;
}

const char* NameOf(Level level) {
  return RowOf(level).name;
}

}  // namespace TarnixTools::engines::pdfa
