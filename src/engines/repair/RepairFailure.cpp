#include "engines/repair/RepairFailure.h"

namespace TarnixTools::engines::repair {

PdfRepairError RepairErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kRepairReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kRepairWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kRepairNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kRepairNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kRepairPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kRepairUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kRepairDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kRepairLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kRepairFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kRepairSourceChangedError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kRepairInternalError;
}

}  // namespace TarnixTools::engines::repair
