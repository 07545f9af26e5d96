// What the image-to-PDF engine throws inside, and the codes that its contract makes of what is
// thrown.
#ifndef TARNIX_ENGINES_IMG2PDF_IMG2PDFFAILURE_H_
#define TARNIX_ENGINES_IMG2PDF_IMG2PDFFAILURE_H_

#include "engines/img2pdf/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "engines/support/pictures/ImageError.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::img2pdf {

using Img2PdfFailure = EngineFailure<Img2PdfError>;

// For the guard.
struct Img2PdfErrors {
  using Code = Img2PdfError;
  using Known = KnownErrors<pdf::Error, ImageError>;
  static constexpr Code kInternal = kImg2PdfInternalError;
  static constexpr Code kMemory = kImg2PdfMemoryError;
  static constexpr Code kArgument = kImg2PdfArgumentError;
  static Code Of(const pdf::Error& error);
  static Code Of(const ImageError& error);
};

}  // namespace TarnixTools::engines::img2pdf

#endif  // TARNIX_ENGINES_IMG2PDF_IMG2PDFFAILURE_H_
