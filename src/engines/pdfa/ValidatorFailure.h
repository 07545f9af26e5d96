// What the validator throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_PDFA_VALIDATORFAILURE_H_
#define TARNIX_ENGINES_PDFA_VALIDATORFAILURE_H_

#include "engines/pdfa/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::pdfa {

using ValidatorFailure = EngineFailure<PdfValidatorError>;

// For the guard.
struct ValidatorErrors {
  using Code = PdfValidatorError;
  using Known = KnownErrors<pdf::Error>;
  static constexpr Code kInternal = kValidatorInternalError;
  static constexpr Code kMemory = kValidatorMemoryError;
  static constexpr Code kArgument = kValidatorArgumentError;
  static Code Of(const pdf::Error& error);
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VALIDATORFAILURE_H_
