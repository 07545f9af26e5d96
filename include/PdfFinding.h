// What a validation has found: one thing that is not as a level of PDF/A asks for.
//
//   if (!document.ValidatePdfA(PdfCompliance::PdfA2B)) {
//     for (const PdfFinding& finding : document.GetFindings()) {
//       std::cerr << finding.clause << '-' << finding.test << ": " << finding.message << '\n';
//     }
//   }
#ifndef TARNIX_PDF_FINDING_H_
#define TARNIX_PDF_FINDING_H_

#include <cstdint>
#include <string>

namespace TarnixTools {

// Clause and test together name the rule, as the published validation profiles number it. Texts are
// UTF-8. A rule that is broken many times has a finding for each object and page that it is broken on.
struct PdfFinding {
  // Whether all of it is alike.
  bool operator==(const PdfFinding&) const = default;

  std::string clause;       // of ISO 19005: "6.1.8"
  std::int32_t test = 0;    // of the clause
  std::string message;      // a sentence in English: what is wrong
  std::string cure;         // a sentence in English: how to mend it
  std::string subject;      // what it is about: "font Helvetica"; empty where nothing has a name
  std::int32_t object = 0;  // number of the object; 0 for none
  std::int32_t page = 0;    // one-based; 0 for none
  // Where on the page: points from the lower left corner of the page as a viewer shows it.
  bool has_box = false;
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_FINDING_H_
