// Documents in words, for comparing whole outputs with texts (support/Expected.h) where there are too
// many of them to have another program read each.
//
//   EXPECT_TRUE(IsAsExpected("repair/pages.txt", DocumentText(ReadBytes(path))));
#ifndef TARNIX_TESTS_PDF_WRITE_DOCUMENT_TEXT_H_
#define TARNIX_TESTS_PDF_WRITE_DOCUMENT_TEXT_H_

#include <string>

namespace TarnixTools::testing {

// The trailer without its identifiers, and each object on a line of its own, in their order. A
// stream is followed by its data, decoded where it can be.
std::string DocumentText(const std::string& bytes, const std::string& password = "");

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_PDF_WRITE_DOCUMENT_TEXT_H_
