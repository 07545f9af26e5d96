#include "engines/pdfa/Level.h"

#include <array>

#include "engines/support/metadata/PdfAClaim.h"

namespace TarnixTools::engines::pdfa {

namespace {

struct LevelName {
  Level level;
  const char* name;
};

constexpr std::array<LevelName, 8> kLevels = {{
    {Level::k1b, "PDF/A-1b"},
    {Level::k1a, "PDF/A-1a"},
    {Level::k2b, "PDF/A-2b"},
    {Level::k2u, "PDF/A-2u"},
    {Level::k2a, "PDF/A-2a"},
    {Level::k3b, "PDF/A-3b"},
    {Level::k3u, "PDF/A-3u"},
    {Level::k3a, "PDF/A-3a"},
}};

template <typename Predicate>
std::optional<Level> FindLevel(Predicate&& is_wanted) {
  for (const LevelName& row : kLevels) {
    if (is_wanted(row.level)) {
      return row.level;
    }
  }
  return std::nullopt;
}

}  // namespace

std::int32_t CodeOf(Level level) {
  return PdfACode(PartOf(level), ConformanceOf(level));
}

std::optional<Level> LevelOfCode(std::int32_t code) {
  return FindLevel([code](Level level) { return CodeOf(level) == code; });
}

std::optional<Level> LevelOf(int part, char conformance) {
  return FindLevel([part, conformance](Level level) {
    return PartOf(level) == part && ConformanceOf(level) == conformance;
  });
}

const char* NameOf(Level level) {
  for (const LevelName& row : kLevels) {
    if (row.level == level) {
      return row.name;
    }
  }
  return "";
}

}  // namespace TarnixTools::engines::pdfa
