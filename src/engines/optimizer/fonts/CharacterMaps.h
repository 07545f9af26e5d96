// The table of a TrueType font that tells the glyphs of codes, with what is still in the font.
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_CHARACTERMAPS_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_CHARACTERMAPS_H_

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::optimizer {

// All maps of the program, each with the codes only that have one of these glyphs: a 'cmap' table.
// Empty for a program without; the table as it is where maps in it cannot be read. Nothing for maps
// that are too large.
std::optional<std::string> CutCharacterMaps(fonts::FontProgram& program,
                                            const std::set<std::uint32_t>& glyphs);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_CHARACTERMAPS_H_
