#include "engines/parser/ExpaFailure.h"

namespace TarnixTools::engines::parser {

ExpaError ExpaErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
    case pdf::ErrorCode::kSourceChanged:
      return kExpaFileError;
    case pdf::ErrorCode::kWriteFailed:
      return kExpaWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kExpaNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kExpaNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kExpaPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
    case pdf::ErrorCode::kDamagedSecurity:
      return kExpaSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kExpaLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kExpaImageError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kExpaInternalError;
}

}  // namespace TarnixTools::engines::parser
