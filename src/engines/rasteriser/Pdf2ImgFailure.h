// What the rasteriser throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_RASTERISER_PDF2IMGFAILURE_H_
#define TARNIX_ENGINES_RASTERISER_PDF2IMGFAILURE_H_

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "engines/support/drawing/DrawingError.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::rasteriser {

using Pdf2ImgFailure = EngineFailure<Pdf2ImgError>;

// For the guard.
struct Pdf2ImgErrors {
  using Code = Pdf2ImgError;
  using Known = KnownErrors<pdf::Error, DrawingError>;
  static constexpr Code kInternal = kPdf2ImgInternalError;
  static constexpr Code kMemory = kPdf2ImgMemoryError;
  static constexpr Code kArgument = kPdf2ImgArgumentError;
  static Code Of(const pdf::Error& error);
  static Code Of(const DrawingError& error);
};

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_ENGINES_RASTERISER_PDF2IMGFAILURE_H_
