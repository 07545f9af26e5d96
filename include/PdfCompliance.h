// The levels of PDF/A (ISO 19005), which ask more and more of a document.
//
//   PdfTransformation archive(PdfTransformType::PdfA);
//   archive.SetCompliance(PdfCompliance::PdfA2B);
#ifndef TARNIX_PDF_COMPLIANCE_H_
#define TARNIX_PDF_COMPLIANCE_H_

#include <cstdint>

namespace TarnixTools {

// The part of the standard and its level:
//
//   B  the pages look the same everywhere and always: fonts are embedded, colours are defined.
//   U  and their text can be searched and copied: every character has its Unicode value. Part 1
//      has no such level.
//   A  and the structure of the document is told: headings, paragraphs, tables, reading order.
//
// Which of them a document claims stands in its XMP metadata, not in what it is made of.
enum class PdfCompliance : std::int32_t {
  None = 0,  // none asked for, or none claimed

  // ISO 19005-1, on PDF 1.4: no transparency, no layers, no attached files.
  PdfA1B = 0x1401,
  PdfA1A = 0x1402,

  // ISO 19005-2, on PDF 1.7 (ISO 32000-1): transparency, layers, JPEG 2000; attached files only
  // when they are PDF/A themselves.
  PdfA2B = 0x1701,
  PdfA2U = 0x1702,
  PdfA2A = 0x1703,

  // ISO 19005-3, as part 2 but with attached files of every kind.
  PdfA3B = 0x1711,
  PdfA3U = 0x1712,
  PdfA3A = 0x1713,
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_COMPLIANCE_H_
