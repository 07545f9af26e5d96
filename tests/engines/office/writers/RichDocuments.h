// Documents made by hand that have all that writers can be given, for tests of what holds for every
// document.
#ifndef TARNIX_TESTS_ENGINES_OFFICE_WRITERS_RICHDOCUMENTS_H_
#define TARNIX_TESTS_ENGINES_OFFICE_WRITERS_RICHDOCUMENTS_H_

#include <map>
#include <string>

#include "engines/office/layout/OfficeDocument.h"

namespace TarnixTools::engines::office {

// By what they are about.
std::map<std::string, OfficeDocument> RichDocuments();

// A page with a paragraph of each role, with text of each look, and with lists of all kinds.
OfficePage PageOfText();

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_WRITERS_RICHDOCUMENTS_H_
