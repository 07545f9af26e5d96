// The glyphs of a CFF font and, of a CID-keyed one, their character identifiers (Adobe Technical
// Note 5176).
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CFFCHARSET_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CFFCHARSET_H_

#include <cstdint>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::fonts {

struct CffCharset {
  bool is_cid_keyed = false;
  std::vector<std::uint16_t> cids;  // by glyph, only of a CID-keyed font
};

// cff: a CFF font program. What cannot be read is left as if it were not there; of a CID-keyed font
// with an unusable table, glyphs have their own numbers.
CffCharset ReadCffCharset(std::string_view cff, std::uint32_t glyph_count);

// How many glyphs a CFF font program has; 0 for one that cannot be read.
std::uint32_t CffGlyphCount(std::string_view cff);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CFFCHARSET_H_
