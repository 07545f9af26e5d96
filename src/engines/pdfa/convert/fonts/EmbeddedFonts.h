// Embedded fonts that do not say the same as their programs: advances, maps of glyphs, lists of what
// is in there.
//
//   EmbeddedFonts embedded(conversion);
//   embedded.Take(use);  // each font
//   embedded.Mend();
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_EMBEDDEDFONTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_EMBEDDEDFONTS_H_

#include <cstdint>
#include <map>
#include <vector>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"
#include "engines/support/fonts/FontProgram.h"

namespace TarnixTools::engines::pdfa {

class EmbeddedFonts {
 public:
  explicit EmbeddedFonts(Conversion& conversion) : conversion_(&conversion) {}

  // The use outlives this. Throws pdf::Error.
  void Take(const FontUse& use);

  // All fonts that share a program together. Throws pdf::Error.
  void Mend();

 private:
  void MendComposite(const FontUse& use);
  void MendLists(const FontUse& use);
  void AddLists(const FontUse& use, fonts::FontProgram& program);
  void MendProgram(std::uint32_t number, const std::vector<const FontUse*>& uses);

  Conversion* conversion_;
  std::map<std::uint32_t, std::vector<const FontUse*>> programs_;  // by number
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_EMBEDDEDFONTS_H_
