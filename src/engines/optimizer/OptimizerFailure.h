// What the optimizer throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_OPTIMIZER_OPTIMIZERFAILURE_H_
#define TARNIX_ENGINES_OPTIMIZER_OPTIMIZERFAILURE_H_

#include "engines/optimizer/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::optimizer {

using OptimizerFailure = EngineFailure<PdfOptimizeError>;

// For the guard.
struct OptimizerErrors {
  using Code = PdfOptimizeError;
  using Known = KnownErrors<pdf::Error>;
  static constexpr Code kInternal = kOptimizerInternalError;
  static constexpr Code kMemory = kOptimizerMemoryError;
  static constexpr Code kArgument = kOptimizerArgumentError;
  static Code Of(const pdf::Error& error);
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_OPTIMIZERFAILURE_H_
