// What was painted onto pages, in words: as PdfText of Expected.h, but for what another version of a
// font or of the file's structure has different.
#ifndef TARNIX_TESTS_SUPPORT_PAINTED_TEXT_H_
#define TARNIX_TESTS_SUPPORT_PAINTED_TEXT_H_

#include <string>

namespace TarnixTools::testing {

// The objects of the file, by qpdf, without font programs, object streams and cross-reference
// streams.
std::string PaintedText(const std::string& path);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_PAINTED_TEXT_H_
