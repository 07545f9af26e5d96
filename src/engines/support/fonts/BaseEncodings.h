// The encodings that a simple font names, code by code (ISO 32000-2, 9.6.5 and annex D.2).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_BASEENCODINGS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_BASEENCODINGS_H_

#include <cstdint>
#include <optional>
#include <string_view>

namespace TarnixTools::engines::fonts {

enum class BaseEncoding : std::uint8_t { kStandard, kWinAnsi, kMacRoman };

// As /Encoding or /BaseEncoding names it. Nothing for MacExpertEncoding, which no font met so far
// has, and for names that mean none.
std::optional<BaseEncoding> BaseEncodingOf(std::string_view name);

// The name of a code's glyph; empty for a code that the encoding does not use.
std::string_view GlyphNameIn(BaseEncoding encoding, std::uint8_t code);

// The code that a glyph's name has in a Macintosh character map of a TrueType font: that of
// MacRomanEncoding, and those that table 113 adds. Nothing for a name that has none.
std::optional<std::uint8_t> MacCodeOf(std::string_view name);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_BASEENCODINGS_H_
