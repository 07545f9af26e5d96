#include "engines/pdfa/ValidatorFailure.h"

namespace TarnixTools::engines::pdfa {

PdfValidatorError ValidatorErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kValidatorReadError;
    case pdf::ErrorCode::kNotAPdf:
      return kValidatorNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kValidatorNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kValidatorPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kValidatorUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kValidatorDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kValidatorLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kValidatorFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kValidatorSourceChangedError;
    case pdf::ErrorCode::kWriteFailed:
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kValidatorInternalError;
}

}  // namespace TarnixTools::engines::pdfa
