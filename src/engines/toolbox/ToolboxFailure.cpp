#include "engines/toolbox/ToolboxFailure.h"

namespace TarnixTools::engines::toolbox {

ToolboxError ToolboxErrors::Of(const pdf::Error& error) {
  switch (error.code()) {
    case pdf::ErrorCode::kReadFailed:
      return kToolboxReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kToolboxWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kToolboxNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kToolboxNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kToolboxPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kToolboxUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kToolboxDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kToolboxLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kToolboxFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kToolboxSourceChangedError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kToolboxInternalError;
}

ToolboxError ToolboxErrors::Of(const ImageError& error) {
  return error.code() == ImageErrorCode::kLimit ? kToolboxLimitError : kToolboxImageError;
}

ToolboxError ToolboxErrors::Of(const fonts::LibraryMissing&) {
  return kToolboxLibraryError;
}

}  // namespace TarnixTools::engines::toolbox
