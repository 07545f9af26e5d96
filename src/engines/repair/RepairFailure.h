// What the repair engine throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_REPAIR_REPAIRFAILURE_H_
#define TARNIX_ENGINES_REPAIR_REPAIRFAILURE_H_

#include "engines/repair/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::repair {

using RepairFailure = EngineFailure<PdfRepairError>;

// For the guard.
struct RepairErrors {
  using Code = PdfRepairError;
  using Known = KnownErrors<pdf::Error>;
  static constexpr Code kInternal = kRepairInternalError;
  static constexpr Code kMemory = kRepairMemoryError;
  static constexpr Code kArgument = kRepairArgumentError;
  static Code Of(const pdf::Error& error);
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_REPAIRFAILURE_H_
