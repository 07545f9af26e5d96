#include "engines/optimizer/OptimizerFailure.h"

namespace TarnixTools::engines::optimizer {

PdfOptimizeError OptimizerErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kOptimizerReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kOptimizerWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kOptimizerNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kOptimizerNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kOptimizerPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kOptimizerUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kOptimizerDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kOptimizerLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kOptimizerFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kOptimizerSourceChangedError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kOptimizerInternalError;
}

}  // namespace TarnixTools::engines::optimizer
