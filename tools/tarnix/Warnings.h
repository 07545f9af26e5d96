// What a job tells although nobody asked: what somebody may have counted on.
#ifndef TARNIX_CLI_WARNINGS_H_
#define TARNIX_CLI_WARNINGS_H_

#include <string>
#include <vector>

#include "PdfReport.h"

namespace TarnixTools::cli {

// A line for each entry on pages or objects lost to damage, a signature, a script, an XFA form, an
// attached file, information on the document or a claim of PDF/A that does not survive, protection that
// is gone, marks that are not there, and a font that was replaced.
std::vector<std::string> WarningsOf(const PdfReport& report);

// The warnings of a job that makes the whole document anew: a line for everything that is left out, and
// for what stands in the way of the level of PDF/A that was asked for.
std::vector<std::string> RewriteWarningsOf(const PdfReport& report);

// Whether something is lost that the input still announced.
bool HasLoss(const PdfReport& report);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_WARNINGS_H_
