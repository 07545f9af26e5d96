// PDFDocEncoding (ISO 32000-2, annex D.3): text of one byte for each character.
#ifndef TARNIX_PDF_SYNTAX_PDFDOCENCODING_H_
#define TARNIX_PDF_SYNTAX_PDFDOCENCODING_H_

#include <optional>

namespace TarnixTools::pdf {

// Bytes that the encoding does not define are control characters; 0x9F is U+FFFD.
char32_t PdfDocCharacter(char byte);

// Nothing for a character that the encoding does not define, control characters among them.
std::optional<char> PdfDocByte(char32_t character);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_SYNTAX_PDFDOCENCODING_H_
