// What PdfValidatorGetErrorCode answers. 17 is fixed; the others are listed with their meaning in
// docs/engines.md.
#ifndef TARNIX_ENGINES_PDFA_ERRORCODES_H_
#define TARNIX_ENGINES_PDFA_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum PdfValidatorError : std::int32_t {
  kValidatorNoError = 0,
  kValidatorInternalError = 1,
  kValidatorReadError = 2,
  kValidatorNotAPdfError = 3,
  kValidatorNoPagesError = 4,
  kValidatorUnsupportedSecurityError = 5,
  kValidatorDamagedSecurityError = 6,
  kValidatorLimitError = 7,
  kValidatorFilterError = 8,
  kValidatorSourceChangedError = 9,
  kValidatorArgumentError = 10,
  kValidatorMemoryError = 11,
  kValidatorOpenError = 12,
  kValidatorPasswordError = 17,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PDFA_ERRORCODES_H_
