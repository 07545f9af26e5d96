// A composite font made of glyphs of an installed face, embedded as a subset (ISO 32000-2, 9.7).
//
//   ComposedFont font(conversion, *face, {.code_bytes = 2});
//   font.Add(code, glyph, width, text);   // for each code
//   if (!font.Write(number)) { ... the face cannot be cut ... }
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::pdfa {

struct ComposedCodes {
  int code_bytes = 1;  // or 2
  bool is_vertical = false;
};

class ComposedFont {
 public:
  // Both outlive this.
  ComposedFont(Conversion& conversion, const fonts::FontFace& face, ComposedCodes codes)
      : conversion_(&conversion), face_(&face), kind_(codes) {}

  // What a code shows, stands for, and how far it moves on, in thousandths; below 0 for a width:
  // the glyph's own. A glyph has the width that it was first added with.
  void Add(std::uint32_t code, std::uint32_t glyph, double width, const std::u32string& text);

  // Makes the font of the object. False where the face cannot be cut. Throws fonts::LibraryMissing.
  bool Write(std::uint32_t number);

 private:
  struct Code {
    std::uint32_t glyph = 0;
    double width = 0;
  };

  bool IsTrueType() const;
  std::uint32_t CidOf(std::uint32_t code) const;
  void SetAdvances(std::string& program) const;
  std::string SubsetName() const;
  std::string ReferenceTo(pdf::ObjectChange object);
  std::string Descriptor(const std::string& name, std::string program);
  std::string CidSet(const std::string& program) const;
  std::string Widths() const;
  std::string GlyphMap() const;
  std::string Encoding();
  std::string Descendant(const std::string& name, std::string program);

  Conversion* conversion_;
  const fonts::FontFace* face_;
  ComposedCodes kind_;
  std::set<std::uint32_t> glyphs_;
  std::map<std::uint32_t, double> advances_;  // by glyph, in thousandths
  std::map<std::uint32_t, Code> codes_;
  std::map<std::uint32_t, std::u32string> unicode_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_COMPOSEDFONT_H_
