// What the converter throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONVERTERFAILURE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONVERTERFAILURE_H_

#include "engines/pdfa/convert/ConverterErrors.h"
#include "engines/support/contract/Guard.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::pdfa {

using ConverterFailure = EngineFailure<Pdf2PdfError>;

// For the guard.
struct ConverterErrors {
  using Code = Pdf2PdfError;
  using Known = KnownErrors<pdf::Error, fonts::LibraryMissing>;
  static constexpr Code kInternal = kConverterInternalError;
  static constexpr Code kMemory = kConverterMemoryError;
  static constexpr Code kArgument = kConverterArgumentError;
  static Code Of(const pdf::Error& error);

  static Code Of(const fonts::LibraryMissing&) { return kConverterLibraryError; }
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONVERTERFAILURE_H_
