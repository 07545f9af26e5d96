// The text that codes of a font stand for (ISO 32000-1, 9.10.2): by /ToUnicode, or by the names of
// glyphs.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_CODETEXT_H_
#define TARNIX_ENGINES_PDFA_CHECKS_CODETEXT_H_

#include <optional>
#include <string>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/CheckedFont.h"
#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphNames.h"

namespace TarnixTools::engines::pdfa {

class CodeText {
 public:
  //   program - null for none that can be read; outlives this, as the font does
  CodeText(CheckedDocument& checked, const CheckedFont& font, fonts::FontProgram* program);

  // In UTF-16; nothing where the document does not tell.
  std::optional<std::u16string> Of(std::uint32_t code);

  // Whether it is a composite font of a character collection whose characters readers know.
  bool has_known_collection() const { return has_known_collection_; }

  // Whether it is a composite font with Identity-H or Identity-V.
  bool has_identity_map() const { return has_identity_map_; }

 private:
  void ReadMap(CheckedDocument& checked);
  void ReadNames();
  std::string NameOf(std::uint8_t code);

  const CheckedFont* font_;
  fonts::FontProgram* program_;
  std::optional<fonts::CMapFile> map_;                 // /ToUnicode
  std::optional<fonts::CharactersByName> characters_;  // once they are asked for
  bool has_known_collection_ = false;
  bool has_identity_map_ = false;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_CODETEXT_H_
