// The guard around the document engine's contract. Its last error is the thread's, for a failure may
// leave no object that could be asked.
#ifndef TARNIX_ENGINES_TOOLBOX_GUARD_H_
#define TARNIX_ENGINES_TOOLBOX_GUARD_H_

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "engines/toolbox/ToolboxFailure.h"

namespace TarnixTools::engines::toolbox {

void SetLastError(ToolboxError code) noexcept;
void SetLastErrorCharacter(std::uint32_t code_point) noexcept;

// Runs one contract operation; a null or zero result when it throws.
template <typename Operation>
GuardedResult<Operation> Guarded(Operation&& operation) noexcept {
  return GuardedBy<ToolboxErrors>(SetLastError, operation);
}

// Runs one contract operation on handles. When one of them is null, it fails and leaves the last
// error as it was.
template <typename Operation>
GuardedResult<Operation> Guarded(std::initializer_list<const void*> handles,
                                 Operation&& operation) noexcept {
  if (std::find(handles.begin(), handles.end(), nullptr) != handles.end()) {
    return {};
  }
  return Guarded(operation);
}

// Throws the argument error unless the condition holds.
inline void Require(bool condition) {
  engines::Require<ToolboxErrors>(condition);
}

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_GUARD_H_
