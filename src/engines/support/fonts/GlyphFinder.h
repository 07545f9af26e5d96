// Which glyphs of a font's program its codes have (ISO 32000-2, 9.6.5.4, 9.7.4.2).
//
//   GlyphFinder finder(font, *program);
//   for (const std::uint32_t glyph : finder.GlyphsOf(code)) ...
//
// For one thread at a time, as the program is.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_GLYPHFINDER_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_GLYPHFINDER_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphNames.h"

namespace TarnixTools::engines::fonts {

class GlyphFinder {
 public:
  // Both outlive this. Throws LibraryMissing.
  GlyphFinder(const DocumentFont& font, FontProgram& program);

  // All glyphs that one reader or another takes for the code: readers differ where fonts are not by
  // the standard. The one that the standard says comes first; glyph 0 is never among them, and is
  // what is shown where there are none.
  std::vector<std::uint32_t> GlyphsOf(std::uint32_t code);

  // The glyph that the standard says for the code, and no other that readers may take; 0 for none.
  std::uint32_t StandardGlyphOf(std::uint32_t code);

 private:
  struct Choice;

  void AddOfCid(std::uint32_t code, Choice& choice);
  void AddOfTrueType(std::uint8_t code, Choice& choice);
  void AddByMaps(std::uint8_t code, bool takes_all, Choice& choice);
  void AddByName(std::string_view name, Choice& choice);
  void AddByCharacters(std::string_view name, Choice& choice);
  void AddOfNamedGlyphs(std::uint8_t code, Choice& choice);
  std::uint32_t StandardGlyphOfCid(std::uint32_t cid) const;
  std::uint32_t StandardGlyphOfTrueType(std::uint8_t code);
  std::uint32_t StandardNamedGlyph(std::uint8_t code);
  std::uint32_t BuiltInGlyph(std::uint8_t code);

  const DocumentFont* font_;
  FontProgram* program_;
  CharactersByName characters_;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_GLYPHFINDER_H_
