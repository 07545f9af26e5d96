// What PdfGetLastError answers. 17 is fixed; the others are listed with their meaning in
// docs/engines.md.
#ifndef TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_
#define TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum ToolboxError : std::int32_t {
  kToolboxNoError = 0,
  kToolboxInternalError = 1,
  kToolboxReadError = 2,
  kToolboxWriteError = 3,
  kToolboxNotAPdfError = 4,
  kToolboxNoPagesError = 5,
  kToolboxUnsupportedSecurityError = 6,
  kToolboxDamagedSecurityError = 7,
  kToolboxLimitError = 8,
  kToolboxFilterError = 9,
  kToolboxSourceChangedError = 10,
  kToolboxArgumentError = 11,
  kToolboxMemoryError = 12,
  kToolboxFontNotFoundError = 13,
  kToolboxFontEmbeddingError = 14,
  kToolboxCharacterError = 15,
  kToolboxImageError = 16,
  kToolboxPasswordError = 17,
  kToolboxLibraryError = 18,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_ERRORCODES_H_
