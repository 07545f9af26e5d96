#include "engines/pdfa/convert/fonts/TrueTypeFonts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "engines/pdfa/FontSubject.h"
#include "engines/pdfa/convert/fonts/FontTexts.h"
#include "engines/support/fonts/CMapText.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using fonts::CharacterMap;
using fonts::DocumentFont;
using fonts::FontKind;
using fonts::FontProgram;
using pdf::Arena;
using pdf::Object;

namespace {

constexpr std::int64_t kSymbolic = 1 << 2;
constexpr std::int64_t kNonsymbolic = 1 << 5;
constexpr std::uint32_t kMaxCid = 0xFFFF;

class TrueTypeMender {
 public:
  TrueTypeMender(Conversion& conversion, FontProgram& program, SfntFile& file)
      : conversion_(&conversion), program_(&program), file_(&file) {}

  bool Mend(const std::vector<const FontUse*>& uses) {
    for (const FontUse* use : uses) {
      if (use->font->kind() == FontKind::kCidType2) {
        MendComposite(*use);
      }
    }
    MendSimple(uses);
    return has_changed_;
  }

 private:
  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  // One for each advance; 0 where it cannot be made.
  std::uint32_t Blank(const FontUse& use, std::uint32_t code) {
    const double width = use.WidthOf(code).value_or(0);
    const auto units =
        static_cast<std::uint16_t>(std::lround(width * program_->units_per_em() / 1000));
    const auto [known, is_new] = blanks_.try_emplace(units, 0);
    if (is_new) {
      known->second = file_->AddGlyphLikeNotdef();
      file_->SetAdvances({{known->second, units}});
      has_changed_ = true;
    }
    return known->second;
  }

  // Codes that lead to no glyph get one that looks like what is shown for them.
  void MendComposite(const FontUse& use) {
    fonts::GlyphFinder finder(*use.font, *program_);
    std::map<std::uint32_t, std::uint32_t> added;
    for (const std::uint32_t code : use.codes) {
      if (finder.StandardGlyphOf(code) == 0) {
        added[use.font->CidOf(code)] = Blank(use, code);
      }
    }
    Arena arena;
    const Object font = conversion_->document.Load({use.font->number(), 0}, arena);
    const auto descendants =
        conversion_->document.Resolve(font.Get("DescendantFonts"), arena).Items();
    const std::uint32_t number =
        descendants.empty() ? 0 : conversion_->document.Follow(descendants[0], arena).number;
    if (added.empty() || number == 0) {
      return;
    }
    std::string reference;
    pdf::AppendReference(
        reference, rewriter().Add(pdf::ObjectChange::Stream("<<>>", GlyphMap(*use.font, added))));
    rewriter().SetEntry(number, "CIDToGIDMap", reference);
    conversion_->report.Changed("characters of fonts that have no glyph");
  }

  std::string GlyphMap(const DocumentFont& font,
                       const std::map<std::uint32_t, std::uint32_t>& added) const {
    std::string map;
    const std::uint32_t count = std::max(program_->glyph_count(), added.rbegin()->first + 1);
    for (std::uint32_t cid = 0; cid <= kMaxCid && (cid < count || font.MappedGlyphOf(cid) != cid);
         ++cid) {
      const auto own = added.find(cid);
      std::uint32_t glyph = own != added.end() ? own->second : font.MappedGlyphOf(cid);
      glyph = own != added.end() || glyph < program_->glyph_count() ? glyph : 0;
      map += static_cast<char>(glyph >> 8);
      map += static_cast<char>(glyph);
    }
    return map;
  }

  // All simple fonts of the program get the same map, so they have to agree.
  void MendSimple(const std::vector<const FontUse*>& uses) {
    std::map<std::uint8_t, std::uint16_t> glyphs;
    std::vector<const FontUse*> simple;
    bool is_fine = true;
    bool agrees = true;
    for (const FontUse* use : uses) {
      if (use->font->kind() != FontKind::kTrueType) {
        continue;
      }
      simple.push_back(use);
      is_fine = is_fine && IsFine(*use);
      agrees = agrees && AddGlyphs(*use, glyphs);
    }
    if (is_fine || !agrees) {
      return;
    }
    file_->SetSymbolMap(glyphs);
    has_changed_ = true;
    for (const FontUse* use : simple) {
      MakeSymbolic(*use);
    }
  }

  bool AddGlyphs(const FontUse& use, std::map<std::uint8_t, std::uint16_t>& glyphs) {
    fonts::GlyphFinder finder(*use.font, *program_);
    for (const std::uint32_t code : use.codes) {
      const auto found = finder.GlyphsOf(code);
      const auto glyph =
          static_cast<std::uint16_t>(found.empty() ? Blank(use, code) : found.front());
      const auto [known, is_new] = glyphs.try_emplace(static_cast<std::uint8_t>(code), glyph);
      if (!is_new && known->second != glyph) {
        return false;
      }
    }
    return true;
  }

  bool HasSymbolMap() const {
    return std::any_of(program_->maps().begin(), program_->maps().end(),
                       [](const CharacterMap& map) { return map.is_symbol(); });
  }

  bool IsFine(const FontUse& use) {
    fonts::GlyphFinder finder(*use.font, *program_);
    if (std::any_of(use.codes.begin(), use.codes.end(),
                    [&](std::uint32_t code) { return finder.StandardGlyphOf(code) == 0; })) {
      return false;
    }
    const std::size_t maps = program_->maps().size();
    if (use.font->descriptor().is_symbolic) {
      return !use.font->has_encoding() &&
             (maps == 1 || (!conversion_->is_part1() && HasSymbolMap()));
    }
    return HasPlainEncoding(use) && maps > (HasSymbolMap() ? 1 : 0);
  }

  // One of the two that readers of TrueType go by, unchanged: names of glyphs may mean anything.
  bool HasPlainEncoding(const FontUse& use) {
    Arena arena;
    const Object font = conversion_->document.Load({use.font->number(), 0}, arena);
    const Object encoding = conversion_->document.Resolve(font.Get("Encoding"), arena);
    const Object base = encoding.IsName()
                            ? encoding
                            : conversion_->document.Resolve(encoding.Get("BaseEncoding"), arena);
    return (base.IsName("WinAnsiEncoding") || base.IsName("MacRomanEncoding")) &&
           (encoding.IsName() || !encoding.Has("Differences"));
  }

  void MakeSymbolic(const FontUse& use) {
    if (!use.font->has_to_unicode()) {
      TellTexts(use);
    }
    rewriter().RemoveEntry(use.font->number(), "Encoding");
    const std::uint32_t descriptor = use.font->descriptor().number;
    Arena arena;
    const std::int64_t flags =
        conversion_->document
            .Resolve(conversion_->document.Load({descriptor, 0}, arena).Get("Flags"), arena)
            .IntegerOr(0);
    if (descriptor != 0) {
      rewriter().SetEntry(descriptor, "Flags", std::to_string((flags | kSymbolic) & ~kNonsymbolic));
    }
    conversion_->report.Changed(SubjectOf(*use.font) +
                                ", whose codes did not surely lead to glyphs");
  }

  // What the encoding has told until now.
  void TellTexts(const FontUse& use) {
    const FontTexts texts(conversion_->document, *use.font);
    std::map<std::uint32_t, std::u32string> unicode;
    for (const std::uint32_t code : use.codes) {
      if (const std::u32string text = texts.TextOf(code); !text.empty()) {
        unicode[code] = text;
      }
    }
    std::string reference;
    pdf::AppendReference(reference, rewriter().Add(pdf::ObjectChange::Stream(
                                        "<<>>", fonts::ToUnicodeText(unicode, 1))));
    rewriter().SetEntry(use.font->number(), "ToUnicode", reference);
  }

  Conversion* conversion_;
  FontProgram* program_;
  SfntFile* file_;
  std::map<std::uint16_t, std::uint32_t> blanks_;  // glyphs by advance
  bool has_changed_ = false;
};

}  // namespace

bool MendTrueTypeFonts(Conversion& conversion, const std::vector<const FontUse*>& uses,
                       FontProgram& program, SfntFile& file) {
  return TrueTypeMender(conversion, program, file).Mend(uses);
}

}  // namespace TarnixTools::engines::pdfa
