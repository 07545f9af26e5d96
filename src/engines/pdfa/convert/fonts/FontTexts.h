// The text that the codes of a font of a document stand for (ISO 32000-2, 9.10.2), and what readers
// take for it where the document does not tell.
//
//   FontTexts texts(document, *use.font);
//   const std::u32string text = texts.TextOf(code);
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTTEXTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTTEXTS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/GlyphNames.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

class FontTexts {
 public:
  // The font outlives this. Throws pdf::Error for a document that cannot be read any more, and
  // fonts::LibraryMissing.
  FontTexts(pdf::Document& document, const fonts::DocumentFont& font);

  // Empty for a code of which nothing is known.
  std::u32string TextOf(std::uint32_t code) const;

  // By the font's own /ToUnicode only.
  std::u32string SaidTextOf(std::uint32_t code) const;

  // Whether every reader takes the font's /ToUnicode, if it has one.
  bool is_map_sound() const { return !to_unicode_ || to_unicode_->has_right_counts(); }

  // The name of the glyph that readers show for a code of a simple font without a program.
  std::string_view GlyphNameOf(std::uint8_t code) const;

 private:
  std::u32string TextOfSimple(std::uint8_t code) const;

  const fonts::DocumentFont* font_;
  std::optional<fonts::CMapFile> to_unicode_;
  fonts::CharactersByName characters_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_FONTTEXTS_H_
