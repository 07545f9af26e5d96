// Whether an embedded file is valid PDF/A-1 or -2 itself (ISO 19005-2, 6.8).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDPDF_H_
#define TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDPDF_H_

#include <cstdint>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// By the level that it claims. False for what is embedded deeper than limits::kMaxEmbeddedDepth.
//   number - of the embedded file's stream
//   depth  - of the document within others
bool IsEmbeddedPdfA(pdf::Document& document, std::uint32_t number, int depth);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_EMBEDDEDPDF_H_
