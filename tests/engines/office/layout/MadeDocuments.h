// Documents of made pages that have all that the analysis looks for, analysed.
#ifndef TARNIX_TESTS_ENGINES_OFFICE_LAYOUT_MADEDOCUMENTS_H_
#define TARNIX_TESTS_ENGINES_OFFICE_LAYOUT_MADEDOCUMENTS_H_

#include <map>
#include <string>
#include <vector>

#include "engines/office/layout/OfficeDocument.h"
#include "engines/support/layout/MadePage.h"

namespace TarnixTools::engines::office {

// The pages, numbered from 0, before what only the whole document tells.
OfficeDocument PagesOf(std::vector<MadePage> pages);

// The first words of each block of a page, with what it is: "H1 " is a heading, "(a)7)" a label of the
// seventh list, "->" a tab, "#" stands before the number of the page and "^" before the mark of a note.
std::string PartsText(const PageLayout& page);

// "report": headers, footers, contents, headings, lists, notes, captions, links, a table over two
// pages. "journal": columns, initials, marked, turned, vertical and right-to-left text, drawings.
// "tables": ruled, open, filled and tagged ones.
std::map<std::string, OfficeDocument> MadeDocuments();

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_TESTS_ENGINES_OFFICE_LAYOUT_MADEDOCUMENTS_H_
