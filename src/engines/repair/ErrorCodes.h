// What PdfRepairGetErrorCode answers. 17 is fixed; the others are listed with their meaning in
// docs/engines.md.
#ifndef TARNIX_ENGINES_REPAIR_ERRORCODES_H_
#define TARNIX_ENGINES_REPAIR_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum PdfRepairError : std::int32_t {
  kRepairNoError = 0,
  kRepairInternalError = 1,
  kRepairReadError = 2,
  kRepairWriteError = 3,
  kRepairNotAPdfError = 4,
  kRepairNoPagesError = 5,
  kRepairUnsupportedSecurityError = 6,
  kRepairDamagedSecurityError = 7,
  kRepairLimitError = 8,
  kRepairFilterError = 9,
  kRepairSourceChangedError = 10,
  kRepairArgumentError = 11,
  kRepairMemoryError = 12,
  kRepairOpenError = 13,
  kRepairCreateError = 14,
  kRepairPasswordError = 17,
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_REPAIR_ERRORCODES_H_
