// The sets by which descriptors of subsets tell the glyphs in them: /CharSet and /CIDSet (ISO
// 19005-1, 6.3.5; -2 and -3, 6.2.11.4.2).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_GLYPHSETS_H_
#define TARNIX_ENGINES_PDFA_CHECKS_GLYPHSETS_H_

#include <string_view>

#include "engines/pdfa/checks/ShownFonts.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

// How a set agrees with the program.
struct SetAgreement {
  bool is_true = true;   // the program has all that the set tells of
  bool is_whole = true;  // the set tells of all that the program has
};

// Of a program that cannot be read (null) nothing is known, and nothing wrong.
//   names - as the descriptor has them: "/A/eacute"
SetAgreement CompareCharSet(std::string_view names, fonts::FontProgram* program);
//   bits - of the stream, by identifier, the highest of each byte first
SetAgreement CompareCidSet(std::string_view bits, const fonts::DocumentFont& font,
                           const fonts::FontProgram* program);

// Whether a set tells of all glyphs that are shown, which is all that PDF/A-1 asks of it.
bool CharSetHasShown(std::string_view names, const fonts::DocumentFont& font,
                     fonts::FontProgram* program, const ShownFonts::Font& shown);
bool CidSetHasShown(std::string_view bits, const fonts::DocumentFont& font,
                    const ShownFonts::Font& shown);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_GLYPHSETS_H_
