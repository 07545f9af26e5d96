// The characters of the standard fonts Symbol and ZapfDingbats, code by code (ISO 32000-2, annexes
// D.5 and D.6).
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_PICTUREENCODINGS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_PICTUREENCODINGS_H_

#include <cstdint>
#include <string_view>

namespace TarnixTools::engines::pdfa {

// Whether the font of this name is one of the two.
bool HasPictures(std::string_view font_name);

// 0 for a code that the font does not have, and for other fonts.
char32_t PictureOf(std::string_view font_name, std::uint8_t code);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_PICTUREENCODINGS_H_
