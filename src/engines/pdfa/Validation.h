// Whether a document is what a level of PDF/A asks for: all rules, one pass over the document.
//
//   auto document = pdf::Document::Open(...);
//   const ValidationResult result = Validate(*document, Level::k2b);
//   if (!result.is_valid()) { ... result.findings ... }
//
// Nothing is changed, and memory does not grow with the document's pages. The converter asks here
// what is wrong, so that what it claims is what the rules say.
#ifndef TARNIX_ENGINES_PDFA_VALIDATION_H_
#define TARNIX_ENGINES_PDFA_VALIDATION_H_

#include <cstddef>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/rules/FindingList.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

struct ValidationResult {
  // By clause and test: at least one of each rule that is broken.
  std::vector<Finding> findings;

  bool is_valid() const { return findings.empty(); }
};

struct ValidationOptions {
  std::size_t most_of_rule = limits::kMaxFindingsOfRule;  // findings of one that are kept; not 0
  int embedded_depth = 0;                                 // of the document within others
};

// Throws pdf::Error for a document that cannot be read.
ValidationResult Validate(pdf::Document& document, Level level,
                          const ValidationOptions& options = {});

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VALIDATION_H_
