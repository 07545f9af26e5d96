// Font programs in code, in the forms in which documents embed them. Their glyphs are boxes, the
// glyph with number n as wide as 100 * n, and 500 high; glyph 0 is .notdef.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_FONTS_PROGRAMFIXTURE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_FONTS_PROGRAMFIXTURE_H_

#include <cstdint>
#include <string>
#include <vector>

namespace TarnixTools::testing {

// Bare CFF whose glyphs from 1 on have these names.
std::string CffProgram(const std::vector<std::string>& names);

// Bare CFF, CID-keyed, whose glyphs from 1 on have these identifiers.
std::string CidProgram(const std::vector<std::uint16_t>& cids);

// Type 1 with a glyph of each name, and eacute put together of the first of them twice. Every glyph
// is drawn by a subroutine of its own, and there is one more that nothing calls.
std::string Type1ProgramText(const std::vector<std::string>& names);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_FONTS_PROGRAMFIXTURE_H_
