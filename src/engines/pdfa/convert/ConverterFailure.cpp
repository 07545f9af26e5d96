#include "engines/pdfa/convert/ConverterFailure.h"

namespace TarnixTools::engines::pdfa {

Pdf2PdfError ConverterErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kConverterReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kConverterWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kConverterNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kConverterNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kConverterPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kConverterUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kConverterDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kConverterLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kConverterFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kConverterSourceChangedError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kConverterInternalError;
}

}  // namespace TarnixTools::engines::pdfa
