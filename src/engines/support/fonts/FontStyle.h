// Words of a style name, such as "Semi-Bold Condensed Italic", as numbers.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTSTYLE_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTSTYLE_H_

#include <string_view>

namespace TarnixTools::engines::fonts {

// A style on fontconfig's scales.
struct FontStyle {
  int weight = 80;  // 0 thin, 80 regular, 200 bold, 210 black
  int slant = 0;    // 0 upright, 100 italic, 110 oblique
  int width = 100;  // percent
  // False: there are words of which it is not known what they mean.
  bool is_known = true;
};

// Words that are not known are passed over; what no word says is regular.
FontStyle ParseFontStyle(std::string_view words);

// Whether a face is what is wanted, and not merely close to it.
bool IsOfStyle(const FontStyle& wanted, const FontStyle& face);

// How far a face is from what is wanted: slant counts more than width, and that more than weight.
int StyleDistance(const FontStyle& wanted, const FontStyle& face);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTSTYLE_H_
