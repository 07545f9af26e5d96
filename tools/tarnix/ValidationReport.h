// The result of a validation as a page for people: one HTML file that needs nothing else, for a
// screen of any width and for paper.
#ifndef TARNIX_CLI_VALIDATION_REPORT_H_
#define TARNIX_CLI_VALIDATION_REPORT_H_

#include <map>
#include <string>
#include <vector>

#include "PdfCompliance.h"
#include "PdfFinding.h"
#include "PdfSize.h"

namespace TarnixTools::cli {

// A picture of a page.
struct PagePicture {
  std::string jpeg;  // its bytes
  PdfSize size;      // of the page as it is seen, in points
};

// A document that was validated.
struct ValidatedFile {
  std::string path;
  PdfCompliance claims{};  // a version of PDF where no level is claimed
  PdfCompliance level{};   // that it was judged by
  bool is_valid = false;
  std::vector<PdfFinding> findings;     // by clause
  std::map<int, PagePicture> pictures;  // by page number, of pages that findings are on
  std::string no_pictures;  // why there are none; empty where there are, or none are due
};

std::string HtmlReport(const std::vector<ValidatedFile>& files);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_VALIDATION_REPORT_H_
