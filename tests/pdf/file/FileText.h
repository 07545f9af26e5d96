// A PDF file in words, as the core reads it: how it is written, what it holds, and what was wrong
// with it.
//
//   EXPECT_TRUE(IsAsExpected("file/plain.txt", FileText(bytes)));
#ifndef TARNIX_TESTS_PDF_FILE_FILETEXT_H_
#define TARNIX_TESTS_PDF_FILE_FILETEXT_H_

#include <string>

namespace TarnixTools::pdf::testing {

// What opening, looking at every page, and loading every object tells; one fact a line. An error
// ends it.
std::string ContentText(const std::string& bytes, const std::string& password = "");

// What an observer hears.
std::string SyntaxText(const std::string& bytes);

// Lines of the one text that the other has not: "- LINE", then "+ LINE" of those it has instead.
std::string Difference(const std::string& from, const std::string& to);

}  // namespace TarnixTools::pdf::testing

#endif  // TARNIX_TESTS_PDF_FILE_FILETEXT_H_
