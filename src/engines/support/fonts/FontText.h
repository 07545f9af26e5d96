// The text that the codes of a document's font stand for (ISO 32000-2, 9.10.2), from the best
// source that the font has: its /ToUnicode, the names of its glyphs, and what the characters of its
// program are.
//
//   FontText text(document, reference, font, program.get());
//   const std::u32string& characters = text.TextOf(code);
//
// For one thread at a time, as the program is.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTTEXT_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTTEXT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"

namespace TarnixTools::engines::fonts {

class FontText {
 public:
  // reference: what the font was made of. program: null for a font without one; it and the font
  // outlive this. Throws Error for a document that cannot be read any more, and LibraryMissing.
  FontText(pdf::Document& document, const pdf::Object& reference, const DocumentFont& font,
           FontProgram* program);

  // Empty where nothing tells. Valid as long as this is.
  const std::u32string& TextOf(std::uint32_t code);

 private:
  std::u32string Find(std::uint32_t code);
  std::u32string OfToUnicode(std::uint32_t code) const;
  std::u32string OfName(std::uint32_t code, std::string_view name) const;
  std::u32string OfUnicodeCode(std::uint32_t code) const;
  std::u32string OfCollection(std::uint32_t code) const;
  std::string_view UsualNameOf(std::uint8_t code) const;
  std::u32string OfProgram(std::uint32_t code);
  void ReadNames();
  void ReadCharacters();

  const DocumentFont* font_;
  FontProgram* program_;
  std::optional<CMapFile> to_unicode_;
  std::optional<GlyphFinder> glyphs_;
  CharactersByName characters_of_names_;
  std::unordered_map<std::uint32_t, char32_t> characters_;  // by glyph of the program
  bool has_characters_ = false;
  bool has_own_codes_ = false;  // they count glyphs as they come, and stand for no characters
  std::unordered_map<std::uint32_t, std::u32string> texts_;  // by code, as they were asked for
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTTEXT_H_
