// The levels of PDF/A (ISO 19005), which ask more and more of a document.
#ifndef TARNIX_PDF_COMPLIANCE_H_
#define TARNIX_PDF_COMPLIANCE_H_

#include <cstdint>

namespace TarnixTools {

// The part of the standard and its level: B keeps the look of the pages, U also their text, A also
// the structure of the document.
enum class PdfCompliance : std::int32_t {
  None = 0,  // none asked for, or none claimed
  PdfA1B = 0x1401,
  PdfA1A = 0x1402,
  PdfA2B = 0x1701,
  PdfA2U = 0x1702,
  PdfA2A = 0x1703,
  PdfA3B = 0x1711,
  PdfA3U = 0x1712,
  PdfA3A = 0x1713,
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_COMPLIANCE_H_
