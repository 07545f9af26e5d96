// Which entry of the document information (ISO 32000-2, 14.3.3) is meant.
//
//   PdfDoc report("/data/report.pdf", "", true);
//   std::cout << report.GetMetaData(PdfMetadataParam::Author);
//
// Title, subject and dates are not among them; the first two have calls of their own, PdfDoc::GetTitle
// and PdfSetMetaDataTask::SetTitle.
#ifndef TARNIX_PDF_METADATA_PARAM_H_
#define TARNIX_PDF_METADATA_PARAM_H_

#include <cstdint>

namespace TarnixTools {

// The values count from 0 without gaps: they are also the places of the values that
// PdfDoc::SetMetaData is given.
enum class PdfMetadataParam : std::int32_t {
  // /Author: who wrote the document.
  Author = 0,
  // /Keywords: words to find it by, in one text; how they are separated is not laid down.
  Keywords = 1,
  // /Creator: the program in which the document was written, before it became PDF.
  Creator = 2,
  // /Producer: the program that made PDF of it.
  Producer = 3,
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_METADATA_PARAM_H_
