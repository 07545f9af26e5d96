// Cuts a line of text into stretches of one face, one script and one direction.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_TEXTITEMS_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_TEXTITEMS_H_

#include <cstdint>
#include <string_view>
#include <vector>

#include "engines/support/fonts/TextShaper.h"

namespace TarnixTools::engines::fonts {

struct TextItem {
  FontFace* face = nullptr;
  std::uint32_t script = 0;  // as HarfBuzz has it
  std::uint8_t level = 0;    // odd: from right to left
  std::size_t first = 0;     // character
  std::size_t count = 0;
};

struct TextItems {
  std::vector<TextItem> items;  // in the order of the text
  char32_t missing = 0;         // the first character that no usable face has, or 0
};

// levels: of each character. Throws LibraryMissing.
TextItems CutIntoItems(FaceStore& faces, const InstalledFace& face, std::u32string_view text,
                       const std::vector<std::uint8_t>& levels);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_TEXTITEMS_H_
