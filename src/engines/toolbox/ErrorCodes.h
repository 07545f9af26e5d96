// What PdfGetLastError answers. 17 is fixed; the others are listed with their meaning in
// docs/engines.md.
#ifndef TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_
#define TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_

#include <cstdint>

#include "pdf/Error.h"

namespace TarnixTools::engines {

enum ToolboxError : std::int32_t {
  kNoError = 0,
  kInternalError = 1,
  kReadError = 2,
  kWriteError = 3,
  kNotAPdfError = 4,
  kNoPagesError = 5,
  kUnsupportedSecurityError = 6,
  kDamagedSecurityError = 7,
  kLimitError = 8,
  kFilterError = 9,
  kSourceChangedError = 10,
  kArgumentError = 11,
  kMemoryError = 12,
  kFontNotFoundError = 13,
  kFontEmbeddingError = 14,
  kCharacterError = 15,
  kImageError = 16,
  kPasswordError = 17,
  kLibraryError = 18,
};

constexpr ToolboxError CodeOf(pdf::ErrorCode code) {
  switch (code) {
    case pdf::ErrorCode::kReadFailed:
      return kReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
      return kUnsupportedSecurityError;
    case pdf::ErrorCode::kDamagedSecurity:
      return kDamagedSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kFilterError;
    case pdf::ErrorCode::kSourceChanged:
      return kSourceChangedError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kInternalError;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_
