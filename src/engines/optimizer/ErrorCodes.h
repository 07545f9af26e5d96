// What PdfOptimizeGetErrorCode answers. 17 is fixed; the others are listed with their meaning in
// docs/engines.md.
#ifndef TARNIX_ENGINES_OPTIMIZER_ERRORCODES_H_
#define TARNIX_ENGINES_OPTIMIZER_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum PdfOptimizeError : std::int32_t {
  kOptimizerNoError = 0,
  kOptimizerInternalError = 1,
  kOptimizerReadError = 2,
  kOptimizerWriteError = 3,
  kOptimizerNotAPdfError = 4,
  kOptimizerNoPagesError = 5,
  kOptimizerUnsupportedSecurityError = 6,
  kOptimizerDamagedSecurityError = 7,
  kOptimizerLimitError = 8,
  kOptimizerFilterError = 9,
  kOptimizerSourceChangedError = 10,
  kOptimizerArgumentError = 11,
  kOptimizerMemoryError = 12,
  kOptimizerOpenError = 13,
  kOptimizerCreateError = 14,
  kOptimizerPasswordError = 17,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_OPTIMIZER_ERRORCODES_H_
