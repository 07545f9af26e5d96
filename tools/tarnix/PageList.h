// Lists of pages and ranges on the command line: "1,3-5,10".
#ifndef TARNIX_CLI_PAGE_LIST_H_
#define TARNIX_CLI_PAGE_LIST_H_

#include <list>
#include <string>
#include <vector>

#include "PdfDoc.h"

namespace TarnixTools::cli {

// The one-based numbers that an option's value names, each once, in order; those beyond the longest
// of the documents are left out, except for the first. Empty for an empty value. Throws UsageError.
//   option - its name, for the message
std::list<int> ParsePageList(const std::string& option, const std::string& list,
                             std::vector<PdfDoc> documents);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PAGE_LIST_H_
