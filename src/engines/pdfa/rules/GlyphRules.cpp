#include <algorithm>
#include <array>
#include <cmath>

#include "engines/pdfa/rules/FontFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr double kWidthTolerance = 1;  // thousandths of the font's size

bool WidthsAgree(const GlyphFacts& glyph) {
  return !glyph.is_rendered || !glyph.program_width || !glyph.stated_width ||
         std::abs(*glyph.program_width - *glyph.stated_width) <= kWidthTolerance;
}

bool HasForbiddenCharacter(const std::u16string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char16_t unit) { return unit == 0 || unit == 0xFEFF || unit == 0xFFFE; });
}

// The areas are in the basic plane and, by high surrogates, in the last two.
bool HasPrivateCharacter(const std::u16string& text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) {
    return (unit >= 0xE000 && unit <= 0xF8FF) || (unit >= 0xDB80 && unit <= 0xDBFF);
  });
}

constexpr LevelSet kLaterUnicode = kUnicodeLevels & kParts2And3;

constexpr std::array<Rule<GlyphFacts>, 7> kGlyphRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.3.5", 1},
     .later = {"6.2.11.4.1", 2},
     .holds =
         [](const GlyphFacts& glyph) {
           return !glyph.is_rendered || glyph.is_present.value_or(true);
         },
     .wrong = "Text shows a glyph that the embedded font does not have.",
     .cure = "Embed the font with all glyphs that are shown."},
    {.levels = kAllLevels,
     .part1 = {"6.3.6", 1},
     .later = {"6.2.11.5", 1},
     .holds = WidthsAgree,
     .wrong = "The width that a font's dictionary states for a glyph is not that in its program.",
     .cure = "Write the widths that the embedded program has."},
    {.levels = SetOf(Level::k1a),
     .part1 = {"6.3.8", 1},
     .holds =
         [](const GlyphFacts& glyph) {
           return glyph.text || glyph.has_known_collection || glyph.has_identity_map;
         },
     .wrong = "Nothing tells the character that a shown code stands for.",
     .cure = "Add a /ToUnicode that has every code which is shown."},
    {.levels = kLaterUnicode,
     .later = {"6.2.11.7.2", 1},
     .holds = [](const GlyphFacts& glyph) { return glyph.text || glyph.has_known_collection; },
     .wrong = "Nothing tells the character that a shown code stands for.",
     .cure = "Add a /ToUnicode that has every code which is shown."},
    {.levels = kLaterUnicode,
     .later = {"6.2.11.7.2", 2},
     .holds =
         [](const GlyphFacts& glyph) { return !glyph.text || !HasForbiddenCharacter(*glyph.text); },
     .wrong = "A shown code stands for U+0000, U+FEFF or U+FFFE, which are no characters of text.",
     .cure = "Give the code the character that its glyph shows, in /ToUnicode."},
    {.levels = kTaggedLevels & kParts2And3,
     .later = {"6.2.11.7.3", 1},
     .holds =
         [](const GlyphFacts& glyph) {
           return glyph.has_actual_text || !glyph.text || !HasPrivateCharacter(*glyph.text);
         },
     .wrong = "A shown code stands for a character of private use, and no /ActualText says what is "
              "meant.",
     .cure = "Mark the text as a span with /ActualText, or give the code a character that has a "
             "meaning."},
    {.levels = kParts2And3,
     .later = {"6.2.11.8", 1},
     .holds = [](const GlyphFacts& glyph) { return !glyph.is_notdef; },
     .wrong = "Text shows .notdef, the glyph that stands for missing ones.",
     .cure = "Take the code out of the text, or embed a font that has a glyph for it."},
}};

}  // namespace

template <>
std::span<const Rule<GlyphFacts>> RulesFor<GlyphFacts>() {
  return kGlyphRules;
}

}  // namespace TarnixTools::engines::pdfa
