// Keeps exceptions inside the engine: what an operation throws becomes the thread's last error
// code.
#ifndef TARNIX_ENGINES_TOOLBOX_GUARD_H_
#define TARNIX_ENGINES_TOOLBOX_GUARD_H_

#include <new>

#include "engines/toolbox/ErrorCodes.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

void SetLastError(ToolboxError code) noexcept;

// Runs one contract operation; a null or zero result when it throws.
template <typename Operation>
auto Guarded(Operation&& operation) noexcept -> decltype(operation()) {
  try {
    return operation();
  } catch (const pdf::Error& error) {
    SetLastError(CodeOf(error.code()));
  } catch (const std::bad_alloc&) {
    SetLastError(kMemoryError);
  } catch (...) {
    SetLastError(kInternalError);
  }
  return {};
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_GUARD_H_
