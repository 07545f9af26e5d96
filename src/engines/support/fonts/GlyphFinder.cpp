#include "engines/support/fonts/GlyphFinder.h"

#include <algorithm>
#include <array>
#include <string>

namespace TarnixTools::engines::fonts {

namespace {

constexpr std::array kEncodings = {BaseEncoding::kStandard, BaseEncoding::kWinAnsi,
                                   BaseEncoding::kMacRoman};

// Where a symbolic font has its codes; the standard knows the first two.
constexpr std::array<std::uint32_t, 4> kSymbolPlanes = {0xF000, 0, 0xF100, 0xF200};

constexpr unsigned kCodes = 256;

// Of all names in the base encodings.
const CharactersByName& CommonCharacters() {
  static const CharactersByName common = [] {
    std::vector<std::string_view> names;
    for (const BaseEncoding encoding : kEncodings) {
      for (unsigned code = 0; code < kCodes; ++code) {
        names.push_back(GlyphNameIn(encoding, static_cast<std::uint8_t>(code)));
      }
    }
    return CharactersOfNames(names);
  }();
  return common;
}

}  // namespace

struct GlyphFinder::Choice {
  void Add(std::uint32_t glyph) {
    if (glyph != 0 && glyph < glyph_count &&
        std::find(glyphs.begin(), glyphs.end(), glyph) == glyphs.end()) {
      glyphs.push_back(glyph);
    }
  }

  std::uint32_t glyph_count = 0;
  std::vector<std::uint32_t> glyphs;
};

GlyphFinder::GlyphFinder(const DocumentFont& font, FontProgram& program)
    : font_(&font), program_(&program) {
  std::vector<std::string_view> names;
  for (unsigned code = 0; code < kCodes && !font.is_composite(); ++code) {
    const std::string_view name = font.GlyphNameOf(static_cast<std::uint8_t>(code));
    if (!CommonCharacters().contains(std::string(name))) {
      names.push_back(name);
    }
  }
  characters_ = CharactersOfNames(names);
}

std::vector<std::uint32_t> GlyphFinder::GlyphsOf(std::uint32_t code) {
  Choice choice{program_->glyph_count(), {}};
  if (font_->is_composite()) {
    AddOfCid(code, choice);
  } else if (code < kCodes && program_->kind() == ProgramKind::kTrueType) {
    AddOfTrueType(static_cast<std::uint8_t>(code), choice);
  } else if (code < kCodes) {
    AddOfNamedGlyphs(static_cast<std::uint8_t>(code), choice);
  }
  return choice.glyphs;
}

// Fonts say that they are of one kind and embed another; readers then go by either.
void GlyphFinder::AddOfCid(std::uint32_t code, Choice& choice) {
  const std::uint32_t cid = font_->CidOf(code);
  if (program_->is_cid_keyed()) {
    choice.Add(program_->GlyphOfCid(cid));
  }
  choice.Add(font_->MappedGlyphOf(cid));
  choice.Add(cid);
}

void GlyphFinder::AddOfTrueType(std::uint8_t code, Choice& choice) {
  const std::string_view name = font_->GlyphNameOf(code);
  const bool is_symbolic = font_->descriptor().is_symbolic;
  if (is_symbolic || name.empty()) {
    AddByMaps(code, true, choice);
  }
  AddByName(name, choice);
  if (!is_symbolic && !name.empty()) {
    AddByMaps(code, choice.glyphs.empty(), choice);
  }
  for (const BaseEncoding encoding : kEncodings) {
    if (name.empty()) {
      AddByName(GlyphNameIn(encoding, code), choice);
    }
  }
  if (program_->maps().empty()) {
    choice.Add(code);
  }
}

// takes_all: as if codes were characters, too, which readers do where a font has nothing better.
void GlyphFinder::AddByMaps(std::uint8_t code, bool takes_all, Choice& choice) {
  for (std::size_t map = 0; map < program_->maps().size(); ++map) {
    const CharacterMap& kind = program_->maps()[map];
    if (!kind.is_symbol() && !kind.is_macintosh() && !takes_all) {
      continue;
    }
    for (const std::uint32_t plane : kSymbolPlanes) {
      choice.Add(program_->GlyphOf(map, plane + code));
    }
  }
}

void GlyphFinder::AddByName(std::string_view name, Choice& choice) {
  if (name.empty()) {
    return;
  }
  AddByCharacters(name, choice);
  const std::optional<std::uint8_t> mac_code = MacCodeOf(name);
  for (std::size_t map = 0; map < program_->maps().size(); ++map) {
    if (program_->maps()[map].is_macintosh() && mac_code) {
      choice.Add(program_->GlyphOf(map, *mac_code));
    }
  }
  choice.Add(program_->GlyphNamed(name));
  choice.Add(GlyphNumberIn(name).value_or(0));
}

void GlyphFinder::AddByCharacters(std::string_view name, Choice& choice) {
  const std::string key(name);
  const auto common = CommonCharacters().find(key);
  const auto own = characters_.find(key);
  const bool is_common = common != CommonCharacters().end();
  if (!is_common && own == characters_.end()) {
    return;
  }
  for (const char32_t character : is_common ? common->second : own->second) {
    for (std::size_t map = 0; map < program_->maps().size(); ++map) {
      if (program_->maps()[map].is_unicode()) {
        choice.Add(program_->GlyphOf(map, character));
      }
    }
  }
}

// Of Type 1 and CFF: names decide, and the font's own encoding where there is none.
void GlyphFinder::AddOfNamedGlyphs(std::uint8_t code, Choice& choice) {
  const std::string_view name = font_->GlyphNameOf(code);
  choice.Add(program_->GlyphNamed(name));
  if (!choice.glyphs.empty()) {
    return;
  }
  AddByMaps(code, false, choice);
  for (std::size_t map = 0; map < program_->maps().size(); ++map) {
    if (program_->maps()[map].is_built_in()) {
      choice.Add(program_->GlyphOf(map, code));
    }
  }
  AddByCharacters(name, choice);
  for (const BaseEncoding encoding : kEncodings) {
    if (name.empty()) {
      choice.Add(program_->GlyphNamed(GlyphNameIn(encoding, code)));
    }
  }
  choice.Add(program_->is_cid_keyed() ? code : 0);
}

std::uint32_t GlyphFinder::StandardGlyphOf(std::uint32_t code) {
  if (font_->is_composite()) {
    return StandardGlyphOfCid(font_->CidOf(code));
  }
  if (code >= kCodes) {
    return 0;
  }
  const auto byte = static_cast<std::uint8_t>(code);
  return program_->kind() == ProgramKind::kTrueType ? StandardGlyphOfTrueType(byte)
                                                    : StandardNamedGlyph(byte);
}

// 9.7.4.2: /CIDToGIDMap is for outlines of TrueType; identifiers of a CFF font that is not
// CID-keyed are the numbers of its glyphs.
std::uint32_t GlyphFinder::StandardGlyphOfCid(std::uint32_t cid) const {
  std::uint32_t glyph = cid;
  if (program_->is_cid_keyed()) {
    glyph = program_->GlyphOfCid(cid);
  } else if (!program_->is_cff() || font_->kind() == FontKind::kCidType2) {
    glyph = font_->MappedGlyphOf(cid);
  }
  return glyph < program_->glyph_count() ? glyph : 0;
}

// 9.6.5.4: a font that is not symbolic goes by its encoding, any other by its codes.
std::uint32_t GlyphFinder::StandardGlyphOfTrueType(std::uint8_t code) {
  Choice choice{program_->glyph_count(), {}};
  if (!font_->descriptor().is_symbolic || font_->has_encoding()) {
    AddByName(font_->StandardNameOf(code), choice);
  }
  if (choice.glyphs.empty() && (font_->descriptor().is_symbolic || !font_->has_encoding())) {
    AddByMaps(code, true, choice);
  }
  return choice.glyphs.empty() ? 0 : choice.glyphs.front();
}

// 9.6.5.2: where the encoding has no name for the code, the program's own encoding counts.
std::uint32_t GlyphFinder::StandardNamedGlyph(std::uint8_t code) {
  const std::string_view name = font_->GlyphNameOf(code);
  if (!name.empty()) {
    return program_->GlyphNamed(name);
  }
  return font_->has_base_encoding() ? 0 : BuiltInGlyph(code);
}

std::uint32_t GlyphFinder::BuiltInGlyph(std::uint8_t code) {
  for (std::size_t map = 0; map < program_->maps().size(); ++map) {
    if (program_->maps()[map].is_built_in()) {
      return program_->GlyphOf(map, code);
    }
  }
  return program_->is_cid_keyed() && code < program_->glyph_count() ? code : 0;
}

}  // namespace TarnixTools::engines::fonts
