// Pictures of some pages of a document, drawn in a private temporary directory that is gone
// afterwards.
#ifndef TARNIX_CLI_PAGE_PICTURES_H_
#define TARNIX_CLI_PAGE_PICTURES_H_

#include <map>
#include <set>

#include "PdfDoc.h"
#include "ValidationReport.h"

namespace TarnixTools::cli {

// By page number. Throws PdfException for a document that cannot be drawn, or when the directory
// cannot be made.
std::map<int, PagePicture> DrawPages(PdfDoc& document, const std::set<int>& pages);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_PAGE_PICTURES_H_
