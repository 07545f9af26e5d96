// Texts of whole files, shortened for reading.
//
//   EXPECT_TRUE(IsAsExpected("pdfa/layers.txt", OnLines(PdfText(path))));
#ifndef TARNIX_TESTS_SUPPORT_COMPACT_TEXT_H_
#define TARNIX_TESTS_SUPPORT_COMPACT_TEXT_H_

#include <string>

namespace TarnixTools::testing {

// What PdfText tells of a file: each object on one line, and what its stream has below. Streams that
// only hold other objects are left out: those stand for themselves.
std::string OnLines(const std::string& pdf_text);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_COMPACT_TEXT_H_
