#include "engines/pdfa/convert/fonts/UnicodeMaps.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engines/pdfa/FontSubject.h"
#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/fonts/FontTexts.h"
#include "engines/support/fonts/CMapText.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/PredefinedMaps.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontProgram;

namespace {

constexpr std::size_t kMaxMappings = 200'000;
constexpr char32_t kPrivate = 0xE000;
constexpr std::uint32_t kPrivateCount = 0x1900;

// Stands for a character that is not known.
constexpr char32_t kReplacement = 0xFFFD;

bool IsPrivate(char32_t c) {
  return (c >= kPrivate && c < kPrivate + kPrivateCount) || c >= 0xF0000;
}

// ISO 19005-2, 6.2.11.7.2 and 6.2.11.7.3.
bool IsAllowed(const std::u32string& text, Level level) {
  return !text.empty() && std::none_of(text.begin(), text.end(), [level](char32_t c) {
    return c == 0 || c == 0xFEFF || c == 0xFFFE || (Contains(kTaggedLevels, level) && IsPrivate(c));
  });
}

// Codes are told apart by characters of private use where these are allowed.
std::u32string UnknownText(Level level, std::uint32_t index) {
  return {Contains(kTaggedLevels, level) ? kReplacement : kPrivate + index % kPrivateCount};
}

// The characters that the glyphs of an embedded program stand for.
class ProgramTexts {
 public:
  ProgramTexts(pdf::Document& document, const fonts::DocumentFont& font) {
    stream_ = document.TryDecodeStream(font.descriptor().program, limits::kMaxProgramBytes);
    program_ = stream_ ? FontProgram::Open(stream_->data) : nullptr;
    if (program_ == nullptr) {
      return;
    }
    finder_.emplace(font, *program_);
    for (std::size_t map = 0; map < program_->maps().size(); ++map) {
      if (program_->maps()[map].is_unicode()) {
        for (const fonts::CodeGlyph& row : program_->Mappings(map, kMaxMappings)) {
          characters_.emplace(row.glyph, row.code);
        }
      }
    }
  }

  std::u32string TextOf(std::uint32_t code) {
    const std::uint32_t glyph = finder_ ? finder_->StandardGlyphOf(code) : 0;
    if (const auto found = characters_.find(glyph); glyph != 0 && found != characters_.end()) {
      return std::u32string(1, found->second);
    }
    const std::string name = glyph != 0 ? program_->NameOf(glyph) : std::string();
    const auto named = fonts::CharactersOfNames({name});
    const auto character = named.find(name);
    return character != named.end() && !character->second.empty()
               ? std::u32string(1, character->second.front())
               : std::u32string();
  }

 private:
  std::optional<pdf::Decoded> stream_;
  std::unique_ptr<FontProgram> program_;
  std::optional<fonts::GlyphFinder> finder_;
  std::map<std::uint32_t, char32_t> characters_;
};

// What readers know without being told: names of glyphs by an encoding of the standard.
bool IsKnown(const FontUse& use, const FontTexts& texts, std::uint32_t code, Level level) {
  if (use.font->has_to_unicode()) {
    return texts.is_map_sound() && IsAllowed(texts.SaidTextOf(code), level);
  }
  return !use.font->is_composite() && use.font->kind() != fonts::FontKind::kType3 &&
         !use.font->GlyphNameOf(static_cast<std::uint8_t>(code)).empty() &&
         IsAllowed(texts.TextOf(code), level);
}

// Whether its identifiers are of a collection whose characters readers know (9.10.2).
bool IsOfKnownCollection(pdf::Document& document, const FontUse& use) {
  pdf::Arena arena;
  const pdf::Object font = document.Load({use.font->number(), 0}, arena);
  const auto descendants = document.Resolve(font.Get("DescendantFonts"), arena).Items();
  if (descendants.empty()) {
    return false;
  }
  const pdf::Object descendant = document.Resolve(descendants[0], arena);
  const pdf::Object system = document.Resolve(descendant.Get("CIDSystemInfo"), arena);
  return fonts::IsKnownCollection(document.Resolve(system.Get("Registry"), arena).Text(),
                                  document.Resolve(system.Get("Ordering"), arena).Text());
}

// Whether the font's /ToUnicode has none of its codes.
bool TellsNothing(const FontUse& use, const FontTexts& texts) {
  return std::none_of(use.codes.begin(), use.codes.end(),
                      [&](std::uint32_t code) { return !texts.SaidTextOf(code).empty(); });
}

}  // namespace

void MendUnicode(Conversion& conversion, const FontUse& use) {
  const Level level = conversion.level;
  const FontTexts texts(conversion.document, *use.font);
  if (IsOfKnownCollection(conversion.document, use) && TellsNothing(use, texts)) {
    conversion.rewriter.RemoveEntry(use.font->number(), "ToUnicode");
    return;
  }
  if (std::all_of(use.codes.begin(), use.codes.end(),
                  [&](std::uint32_t code) { return IsKnown(use, texts, code, level); })) {
    return;
  }
  ProgramTexts program(conversion.document, *use.font);
  std::map<std::uint32_t, std::u32string> unicode;
  std::uint32_t unknown = 0;
  for (const std::uint32_t code : use.codes) {
    std::u32string text = texts.TextOf(code);
    if (!IsAllowed(text, level)) {
      text = program.TextOf(code);
    }
    const bool is_allowed = IsAllowed(text, level);
    unicode[code] =
        is_allowed ? text : UnknownText(level, use.font->is_composite() ? unknown : code);
    unknown += is_allowed ? 0 : 1;
  }
  std::string reference;
  const int code_bytes = use.font->codes() != nullptr ? use.font->codes()->code_bytes() : 2;
  pdf::AppendReference(reference, conversion.rewriter.Add(pdf::ObjectChange::Stream(
                                      "<<>>", fonts::ToUnicodeText(unicode, code_bytes))));
  conversion.rewriter.SetEntry(use.font->number(), "ToUnicode", reference);
  conversion.report.Changed(SubjectOf(*use.font) + ", whose text was not told");
  conversion.report.Changed("glyphs of which nobody knows the text", unknown);
}

}  // namespace TarnixTools::engines::pdfa
