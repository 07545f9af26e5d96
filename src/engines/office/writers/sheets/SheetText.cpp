#include "engines/office/writers/sheets/SheetText.h"

#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

std::string SheetText(std::string_view text, std::size_t most_units) {
  std::string out;
  std::size_t count = 0;
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    text.remove_prefix(next.length);
    const char32_t c = next.character;
    const bool is_control = c < 0x20 && c != '\n' && c != '\t';
    if (is_control || c == 0xFFFE || c == 0xFFFF) {
      continue;
    }
    count += EncodeUtf16(c).count;
    if (count > most_units) {
      break;
    }
    AppendUtf8(out, c);
  }
  return out;
}

}  // namespace TarnixTools::engines::office
