// What the document engine throws inside, and the codes that its contract makes of what is thrown.
#ifndef TARNIX_ENGINES_TOOLBOX_TOOLBOXFAILURE_H_
#define TARNIX_ENGINES_TOOLBOX_TOOLBOXFAILURE_H_

#include "engines/support/contract/Guard.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/toolbox/ErrorCodes.h"
#include "pdf/Error.h"

namespace TarnixTools::engines::toolbox {

using ToolboxFailure = EngineFailure<ToolboxError>;

// For the guard.
struct ToolboxErrors {
  using Code = ToolboxError;
  using Known = KnownErrors<pdf::Error, ImageError, fonts::LibraryMissing>;
  static constexpr Code kInternal = kToolboxInternalError;
  static constexpr Code kMemory = kToolboxMemoryError;
  static constexpr Code kArgument = kToolboxArgumentError;
  static Code Of(const pdf::Error& error);
  static Code Of(const ImageError& error);
  static Code Of(const fonts::LibraryMissing& error);
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_TOOLBOXFAILURE_H_
