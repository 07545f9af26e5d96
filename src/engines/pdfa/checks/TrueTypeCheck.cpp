#include "engines/pdfa/checks/TrueTypeCheck.h"

#include <algorithm>
#include <string>
#include <vector>

#include "engines/pdfa/rules/FontFacts.h"
#include "engines/support/files/BigEndian.h"
#include "engines/support/fonts/GlyphNames.h"
#include "pdf/content/Differences.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontProgram;
using pdf::Object;

namespace {

constexpr std::uint32_t kMapTable = 0x636D6170;  // "cmap"
constexpr std::int64_t kSymbolicFlag = 1 << 2;
constexpr std::uint32_t kMicrosoft = 3;
constexpr std::uint32_t kSymbols = 0;
constexpr std::uint32_t kUnicode = 1;

// The maps as the table lists them, those that readers do not know included.
struct MapList {
  std::size_t count = 0;
  bool has_symbols = false;
  bool has_unicode = false;
};

MapList MapsOf(FontProgram& program) {
  const std::string table = program.Table(kMapTable);
  MapList list;
  list.count = Big16(table, 2);
  for (std::size_t i = 0; i < list.count && 4 + 8 * (i + 1) <= table.size(); ++i) {
    const std::uint32_t platform = Big16(table, 4 + 8 * i);
    const std::uint32_t encoding = Big16(table, 6 + 8 * i);
    list.has_symbols |= platform == kMicrosoft && encoding == kSymbols;
    list.has_unicode |= platform == kMicrosoft && encoding == kUnicode;
  }
  return list;
}

bool IsPlain(const Object& encoding) {
  return encoding.IsName("MacRomanEncoding") || encoding.IsName("WinAnsiEncoding");
}

// A suffix makes a name one that the Adobe Glyph List does not have.
bool AreKnown(const std::vector<std::string_view>& names) {
  const fonts::CharactersByName known = fonts::CharactersOfNames(names);
  return std::all_of(names.begin(), names.end(), [&](std::string_view name) {
    return name == ".notdef" ||
           (name.find('.') == std::string_view::npos && known.contains(std::string(name)));
  });
}

}  // namespace

void CheckTrueTypeFont(CheckedDocument& checked, const fonts::DocumentFont& font,
                       const Object& dictionary, FontProgram* program, const Place& place) {
  pdf::Arena arena;
  const Object encoding = checked.Get(dictionary, "Encoding", arena);
  const Object base = encoding.IsName() ? encoding : checked.Get(encoding, "BaseEncoding", arena);
  const Object descriptor = checked.Get(dictionary, "FontDescriptor", arena);
  const std::int64_t flags = checked.Get(descriptor, "Flags", arena).IntegerOr(0);
  const MapList maps = program == nullptr ? MapList{} : MapsOf(*program);
  TrueTypeFontFacts facts = {.is_symbolic = (flags & kSymbolicFlag) != 0,
                             .has_encoding = font.has_encoding(),
                             .has_plain_encoding = IsPlain(base),
                             .has_differences = encoding.Has("Differences")};
  if (facts.has_differences && maps.has_unicode) {
    std::vector<std::string_view> names;
    for (const std::string_view name : pdf::ReadDifferences(checked.document(), encoding, arena)) {
      if (!name.empty()) {
        names.push_back(name);
      }
    }
    facts.differences_are_unicode = AreKnown(names);
  }
  checked.findings().Check(facts, place);
  if (program != nullptr && program->kind() == fonts::ProgramKind::kTrueType) {
    checked.findings().Check(TrueTypeProgramFacts{.is_symbolic = facts.is_symbolic,
                                                  .maps = maps.count,
                                                  .has_symbol_map = maps.has_symbols},
                             place);
  }
}

}  // namespace TarnixTools::engines::pdfa
