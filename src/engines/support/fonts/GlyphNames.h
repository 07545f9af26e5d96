// What the names of glyphs tell.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_GLYPHNAMES_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_GLYPHNAMES_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TarnixTools::engines::fonts {

using CharactersByName = std::unordered_map<std::string, std::vector<char32_t>>;

// The characters that glyphs of these names stand for, by the Adobe Glyph List and by names such as
// uni20AC and u1F600; the likeliest first. Names that tell of none are not there. Throws
// LibraryMissing.
CharactersByName CharactersOfNames(const std::vector<std::string_view>& names);

// The glyph whose number is all that a name tells, as producers make them up: g12, glyph12,
// cid12, index12 and the like.
std::optional<std::uint32_t> GlyphNumberIn(std::string_view name);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_GLYPHNAMES_H_
