#include "engines/optimizer/fonts/CharacterMaps.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <string_view>
#include <vector>

#include "engines/optimizer/fonts/FontLimits.h"
#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines::optimizer {

using fonts::CharacterMap;
using fonts::CodeGlyph;
using fonts::FontProgram;

namespace {

constexpr std::uint32_t kTable = 0x636D6170;  // "cmap"
constexpr std::uint32_t kLastShortCode = 0xFFFE;
constexpr std::size_t kMaxShortTable = 0xFFFF;
constexpr std::size_t kVariationFormat = 14;

// Maps that tell of characters' variants are no maps of codes, and are not wanted.
std::size_t CountMaps(std::string_view table) {
  const std::size_t count = Big16(table, 2);
  std::size_t maps = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t offset = Big32(table, 4 + 8 * i + 4);
    maps += Big16(table, offset) == kVariationFormat ? 0 : 1;
  }
  return maps;
}

// Codes in a row whose glyphs are in a row.
struct Run {
  std::uint32_t first = 0;
  std::uint32_t last = 0;
  std::uint32_t glyph = 0;
};

std::vector<Run> RunsOf(const std::vector<CodeGlyph>& mappings) {
  std::vector<Run> runs;
  for (const CodeGlyph& mapping : mappings) {
    const bool goes_on = !runs.empty() && mapping.code == runs.back().last + 1 &&
                         mapping.glyph == runs.back().glyph + (mapping.code - runs.back().first);
    if (goes_on) {
      runs.back().last = mapping.code;
    } else {
      runs.push_back({mapping.code, mapping.code, mapping.glyph});
    }
  }
  return runs;
}

// Format 4, in which the segment of code 0xFFFF comes last and has no glyph.
std::string ShortSegments(std::vector<Run> runs) {
  runs.push_back({0xFFFF, 0xFFFF, 0});
  const std::size_t count = runs.size();
  std::size_t power = 0;
  while ((std::size_t{2} << power) <= count) {
    ++power;
  }
  const std::size_t range = std::size_t{2} << power;
  std::string table;
  for (const std::size_t value : {std::size_t{4}, 16 + 8 * count, std::size_t{0}, 2 * count, range,
                                  power, 2 * count - range}) {
    AppendBig16(table, value);
  }
  for (const Run& run : runs) {
    AppendBig16(table, run.last);
  }
  AppendBig16(table, 0);
  for (const Run& run : runs) {
    AppendBig16(table, run.first);
  }
  for (const Run& run : runs) {
    AppendBig16(table, run.first == 0xFFFF ? 1 : std::size_t{run.glyph} - run.first);
  }
  return table + std::string(2 * count, '\0');
}

// Format 12.
std::string LongSegments(const std::vector<Run>& runs) {
  std::string table;
  AppendBig16(table, 12);
  AppendBig16(table, 0);
  AppendBig32(table, 16 + 12 * runs.size());
  AppendBig32(table, 0);
  AppendBig32(table, runs.size());
  for (const Run& run : runs) {
    AppendBig32(table, run.first);
    AppendBig32(table, run.last);
    AppendBig32(table, run.glyph);
  }
  return table;
}

// Format 6: glyphs of codes in a row. Readers expect it, or the like, of Macintosh maps.
std::string Trimmed(const std::vector<CodeGlyph>& mappings) {
  const std::uint32_t first = mappings.empty() ? 0 : mappings.front().code;
  const std::size_t count = mappings.empty() ? 0 : mappings.back().code - first + 1;
  std::vector<std::uint32_t> glyphs(count);
  for (const CodeGlyph& mapping : mappings) {
    glyphs[mapping.code - first] = mapping.glyph;
  }
  std::string table;
  for (const std::size_t value :
       {std::size_t{6}, 10 + 2 * count, std::size_t{0}, std::size_t{first}, count}) {
    AppendBig16(table, value);
  }
  for (const std::uint32_t glyph : glyphs) {
    AppendBig16(table, glyph);
  }
  return table;
}

std::string Subtable(const CharacterMap& map, const std::vector<CodeGlyph>& mappings) {
  const std::uint32_t last = mappings.empty() ? 0 : mappings.back().code;
  if (map.is_macintosh() && last < 256) {
    return Trimmed(mappings);
  }
  const std::vector<Run> runs = RunsOf(mappings);
  const bool is_short = last <= kLastShortCode && 16 + 8 * (runs.size() + 1) <= kMaxShortTable;
  return is_short ? ShortSegments(runs) : LongSegments(runs);
}

std::string Assembled(const std::vector<CharacterMap>& maps,
                      const std::vector<std::string>& subtables) {
  std::string table;
  AppendBig16(table, 0);
  AppendBig16(table, maps.size());
  std::string data;
  std::map<std::string_view, std::size_t> offsets;
  for (std::size_t i = 0; i < maps.size(); ++i) {
    const auto [place, is_new] = offsets.emplace(subtables[i], data.size());
    data += is_new ? subtables[i] : std::string();
    AppendBig16(table, maps[i].platform);
    AppendBig16(table, maps[i].encoding);
    AppendBig32(table, 4 + 8 * maps.size() + place->second);
  }
  return table + data;
}

}  // namespace

std::optional<std::string> CutCharacterMaps(FontProgram& program,
                                            const std::set<std::uint32_t>& glyphs) {
  const std::string table = program.Table(kTable);
  const std::vector<CharacterMap>& maps = program.maps();
  if (table.empty() || maps.size() != CountMaps(table)) {
    return table;
  }
  std::vector<std::string> subtables;
  for (std::size_t map = 0; map < maps.size(); ++map) {
    std::vector<CodeGlyph> mappings = program.Mappings(map, limits::kMaxMappings);
    if (mappings.size() == limits::kMaxMappings) {
      return std::nullopt;
    }
    std::erase_if(mappings,
                  [&](const CodeGlyph& mapping) { return !glyphs.contains(mapping.glyph); });
    subtables.push_back(Subtable(maps[map], mappings));
  }
  return Assembled(maps, subtables);
}

}  // namespace TarnixTools::engines::optimizer
