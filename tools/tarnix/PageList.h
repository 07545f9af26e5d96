// Lists of pages on the command line, in the one grammar that all jobs have:
//
//   1-3,5     pages and ranges      8-     to the end        z, r2     the last, the last but one
//   z-1       backwards             :odd   of all pages      4-9:even  of a range
//
// The order of the list counts, and a page may be there more than once.
#ifndef TARNIX_CLI_PAGE_LIST_H_
#define TARNIX_CLI_PAGE_LIST_H_

#include <string>
#include <vector>

#include "PdfDoc.h"
#include "PdfPageRange.h"

namespace TarnixTools::cli {

// Throws UsageError for what is no such list. Whether a document has the pages is not looked at.
//   what - what the message calls it: "--pages", or an input.
void CheckPageList(const std::string& what, const std::string& list);

// What an item of a list, behind a comma or in front of one, stands for in a document.
struct PageItem {
  std::string label;       // "3-5", "7", "10-1", "2-9-even"
  std::vector<int> pages;  // one-based, in order; one at least
};

// Throws UsageError as CheckPageList does, PdfException (InvalidParameter) for a page that the
// document lacks and for an item that names none, and what PdfDoc::GetPagesNum throws.
std::vector<PageItem> PageItemsOf(const std::string& what, const std::string& list,
                                  PdfDoc document);

// The pages of all items, one after the other.
std::vector<int> PagesOf(const std::string& what, const std::string& list, PdfDoc document);

// Pages in their order as ranges, each as long as it can be.
std::vector<PdfPageRange> RangesOf(const std::vector<int>& pages);

// Pages as a pattern of the library, "1-3,5", each once and in the order of the document.
std::string PatternOf(std::vector<int> pages);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PAGE_LIST_H_
