// A composite font made of glyphs of an installed face whose advances are those that the document
// asks for, which PDF/A wants to agree (ISO 19005-2, 6.2.11.5).
//
//   ComposedFont font(conversion, *face, {.code_bytes = 2});
//   font.Add(code, glyph, width, text);   // for each code
//   if (!font.Write(number)) { ... the face cannot be cut ... }
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_

#include <cstdint>
#include <map>
#include <string>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/support/fonts/CompositeFont.h"
#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::pdfa {

struct ComposedCodes {
  int code_bytes = 1;  // or 2
  bool is_vertical = false;
};

class ComposedFont {
 public:
  // Both outlive this.
  ComposedFont(Conversion& conversion, const fonts::FontFace& face, ComposedCodes codes);

  // What a code shows, stands for, and how far it moves on, in thousandths; below 0 for a width:
  // the glyph's own. A glyph has the width that it was first added with.
  void Add(std::uint32_t code, std::uint32_t glyph, double width, const std::u32string& text);

  // Makes the font of the object. False where the face cannot be cut. Throws fonts::LibraryMissing.
  bool Write(std::uint32_t number);

 private:
  void SetAdvances(std::string& program) const;

  Conversion* conversion_;
  const fonts::FontFace* face_;
  fonts::CompositeFont font_;
  std::map<std::uint32_t, double> advances_;  // by glyph, in thousandths
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_
