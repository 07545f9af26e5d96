// Fonts that text is shown in, and the glyphs that are shown (ISO 19005-1, 6.3; -2 and -3, 6.2.11).
#ifndef TARNIX_ENGINES_PDFA_RULES_FONTFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_FONTFACTS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"
#include "engines/support/fonts/CMapFile.h"

namespace TarnixTools::engines::pdfa {

// A font's dictionary; of a composite font also that of its descendant.
struct FontFacts {
  bool has_type = false;  // /Type /Font
  std::string_view subtype;
  bool has_name = false;  // /BaseFont
  std::optional<std::string_view> program_subtype;
  bool needs_program =
      false;  // it is shown otherwise than invisibly, and is of a kind that has one
  bool has_program = false;
};

// A simple font.
struct SimpleFontFacts {
  bool is_standard = false;  // of the 14 whose widths readers know
  std::optional<std::int64_t> first_code;
  std::optional<std::int64_t> last_code;
  std::optional<std::size_t> widths;
};

// A composite font: whether its codes and its glyphs go by the same character collection.
struct CollectionFacts {
  bool has_identity_map = false;
  fonts::CharacterCollection of_font;
  fonts::CharacterCollection of_map;
};

// A CIDFont.
struct CidFontFacts {
  bool has_true_type_outlines = false;  // a CIDFontType2
  bool has_glyph_map = false;           // /CIDToGIDMap
  bool is_rendered = false;             // it is shown otherwise than invisibly
  bool has_program = false;
  bool is_subset = false;  // by its name
  bool has_cid_set = false;
  bool cid_set_is_true = true;    // the program has all glyphs that it tells of
  bool cid_set_is_whole = true;   // it tells of all glyphs that the program has
  bool cid_set_has_shown = true;  // it tells of all glyphs that are shown
};

// The map of a composite font from codes to identifiers.
struct CodeMapFacts {
  bool is_identity = false;
  bool is_predefined = false;  // by name; those of the identity, too
  bool is_embedded = false;
  std::int64_t write_mode = 0;         // as the file says
  std::int64_t stated_write_mode = 0;  // as its dictionary says
  std::uint64_t highest_cid = 0;
};

// A map that another one builds on.
struct UsedMapFacts {
  bool is_predefined = false;
};

// A Type 1 font.
struct Type1FontFacts {
  bool has_program = false;
  bool is_subset = false;  // by its name
  bool has_char_set = false;
  bool char_set_is_true = true;    // the program has all glyphs that it names
  bool char_set_is_whole = true;   // it names all glyphs that the program has
  bool char_set_has_shown = true;  // it names all glyphs that are shown
};

// A TrueType font; not a composite one.
struct TrueTypeFontFacts {
  bool is_symbolic = false;
  bool has_encoding = false;
  bool has_plain_encoding = false;  // MacRomanEncoding or WinAnsiEncoding, or one based on it
  bool has_differences = false;
  bool differences_are_unicode = false;  // known names, and a program that goes by characters
};

// The program of a TrueType font; not of a composite one.
struct TrueTypeProgramFacts {
  bool is_symbolic = false;  // its font is
  std::size_t maps = 0;
  bool has_symbol_map = false;  // of platform 3, encoding 0
};

// A code that is shown.
struct GlyphFacts {
  bool is_rendered = false;        // otherwise than invisibly
  std::optional<bool> is_present;  // in the program; nothing where there is none to look into
  bool is_notdef = false;
  std::optional<double> program_width;  // both in thousandths of the font's size
  std::optional<double> stated_width;
  std::optional<std::u16string> text;
  bool has_known_collection = false;  // whose characters readers know
  bool has_identity_map = false;      // its codes are identifiers
  bool has_actual_text = false;
};

template <>
std::span<const Rule<FontFacts>> RulesFor<FontFacts>();
template <>
std::span<const Rule<SimpleFontFacts>> RulesFor<SimpleFontFacts>();
template <>
std::span<const Rule<CollectionFacts>> RulesFor<CollectionFacts>();
template <>
std::span<const Rule<CidFontFacts>> RulesFor<CidFontFacts>();
template <>
std::span<const Rule<CodeMapFacts>> RulesFor<CodeMapFacts>();
template <>
std::span<const Rule<UsedMapFacts>> RulesFor<UsedMapFacts>();
template <>
std::span<const Rule<Type1FontFacts>> RulesFor<Type1FontFacts>();
template <>
std::span<const Rule<TrueTypeFontFacts>> RulesFor<TrueTypeFontFacts>();
template <>
std::span<const Rule<TrueTypeProgramFacts>> RulesFor<TrueTypeProgramFacts>();
template <>
std::span<const Rule<GlyphFacts>> RulesFor<GlyphFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_FONTFACTS_H_
