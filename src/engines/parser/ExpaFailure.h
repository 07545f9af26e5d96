// What the content parser throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_PARSER_EXPAFAILURE_H_
#define TARNIX_ENGINES_PARSER_EXPAFAILURE_H_

#include "engines/parser/ErrorCodes.h"
#include "engines/support/contract/Guard.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::parser {

using ExpaFailure = EngineFailure<ExpaError>;

// For the guard.
struct ExpaErrors {
  using Code = ExpaError;
  using Known = KnownErrors<pdf::Error>;
  static constexpr Code kInternal = kExpaInternalError;
  static constexpr Code kMemory = kExpaMemoryError;
  static constexpr Code kArgument = kExpaArgumentError;
  static Code Of(const pdf::Error& error);
};

}  // namespace TarnixTools::engines::parser

#endif  // TARNIX_ENGINES_PARSER_EXPAFAILURE_H_
