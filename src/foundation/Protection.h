// What a report says of an input whose protection is gone.
#ifndef TARNIX_FOUNDATION_PROTECTION_H_
#define TARNIX_FOUNDATION_PROTECTION_H_

#include <string>

#include "PdfReport.h"

namespace TarnixTools {

// path: of the input.
inline PdfReportEntry ProtectionDropped(const std::string& path) {
  return {.kind = PdfReportKind::Protection,
          .outcome = PdfReportOutcome::Dropped,
          .count = 1,
          .page = 0,
          .reason = "the input is protected, the output is not",
          .source = path};
}

}  // namespace TarnixTools

#endif  // TARNIX_FOUNDATION_PROTECTION_H_
