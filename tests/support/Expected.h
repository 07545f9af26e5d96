// Whole outputs, compared with the texts in tests/expected.
//
// For what is made of many small decisions, each of which would need a test: the text shows them
// all, and a difference tells the first line that is another one. What is expected was looked at and
// judged by another reader when it was written. To write the texts anew, and to read the difference
// before it is committed:
//
//   TARNIX_RENEW=1 build/release/bin/core_tests --gtest_filter='Outline*'
//   git diff tests/expected
//
//   EXPECT_TRUE(IsAsExpected("toolbox/outlines.txt", PdfText(path)));
#ifndef TARNIX_TESTS_SUPPORT_EXPECTED_H_
#define TARNIX_TESTS_SUPPORT_EXPECTED_H_

#include <string>

#include <gtest/gtest.h>

namespace TarnixTools::testing {

// Whether the text is the one of this file in tests/expected; a failure names the first line that
// differs.
::testing::AssertionResult IsAsExpected(const std::string& name, const std::string& text);

// Text as it is, and other bytes by their number and checksum.
std::string DataText(const std::string& bytes);

// A PDF file in words, by qpdf: its trailer and its objects in order, streams decoded. Of streams
// that are no text it has their length and their checksum; dates and the identifiers of the trailer
// are left out.
std::string PdfText(const std::string& path, const std::string& password = "");

// The same without cross-reference streams, whose bytes are others where streams can be compressed
// better; the trailer has what else they say.
std::string ObjectsText(const std::string& path, const std::string& password = "");

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_EXPECTED_H_
