// The parts of a package as one text, to compare whole packages by.
//
//   EXPECT_TRUE(IsAsExpected("office/notes.docx.txt", PackageText(parts, PartsOf(plain))));
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_PACKAGETEXT_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_PACKAGETEXT_H_

#include <string>

#include "engines/office/writers/WriterDocuments.h"

namespace TarnixTools::engines::office {

// Each part under its name: XML as a tree with a line for each element, of pictures what they
// say of themselves, all else as it is. An element
// with all that it has in it that was there before in the part is a number: that of the first one.
// Parts that are the same in the other package are left out.
std::string PackageText(const Parts& parts, const Parts& other = {});

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_PACKAGETEXT_H_
