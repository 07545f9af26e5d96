// Fonts for the text of appearances that are made: installed faces, embedded with the characters
// that are shown in all of them.
//
//   AppearanceFonts fonts(conversion);
//   if (AppearanceFont* font = fonts.Find("Helvetica-Bold", text)) content += font->Shown(text);
//   fonts.Write();   // when all appearances are made
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_APPEARANCEFONTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_APPEARANCEFONTS_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/fonts/ComposedFont.h"
#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::pdfa {

// Measures are those of a font size of 1.
class AppearanceFont {
 public:
  AppearanceFont(Conversion& conversion, std::unique_ptr<fonts::FontFace> face,
                 std::uint32_t number);

  // Of the object that it will be.
  std::uint32_t number() const { return number_; }

  double ascent() const { return InEms(face_->ascent()); }

  double descent() const { return InEms(face_->descent()); }

  bool HasAll(std::u32string_view text) const;

  double WidthOf(std::u32string_view text) const;

  // The operand of Tj.
  std::string Shown(std::u32string_view text);

  bool Write() { return font_.Write(number_); }

 private:
  double InEms(int units) const { return static_cast<double>(units) / face_->units_per_em(); }

  std::uint32_t GlyphOf(char32_t character) const;

  std::unique_ptr<fonts::FontFace> face_;
  ComposedFont font_;
  std::uint32_t number_;
};

class AppearanceFonts {
 public:
  // The conversion outlives this.
  explicit AppearanceFonts(Conversion& conversion) : conversion_(&conversion) {}

  // The font for the name, as /BaseFont has them, in a face that has the text as far as one has.
  // Null where no face can be embedded.
  AppearanceFont* Find(const std::string& name, std::u32string_view text);

  // Writes the fonts that were found.
  void Write();

 private:
  Conversion* conversion_;
  std::map<std::string, std::vector<std::unique_ptr<AppearanceFont>>> fonts_;  // by name
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_APPEARANCEFONTS_H_
