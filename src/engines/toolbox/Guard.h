// Keeps exceptions inside the engine: what an operation throws becomes the thread's last error
// code.
#ifndef TARNIX_ENGINES_TOOLBOX_GUARD_H_
#define TARNIX_ENGINES_TOOLBOX_GUARD_H_

#include <cstdint>
#include <exception>
#include <new>

#include "engines/toolbox/ErrorCodes.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

void SetLastError(ToolboxError code) noexcept;
void SetLastErrorCharacter(std::uint32_t code_point) noexcept;

// A failure that is not the core's.
class ToolboxException : public std::exception {
 public:
  explicit ToolboxException(ToolboxError code) : code_(code) {}

  ToolboxError code() const { return code_; }

  const char* what() const noexcept override { return "the document engine failed"; }

 private:
  ToolboxError code_;
};

// Runs one contract operation; a null or zero result when it throws.
template <typename Operation>
auto Guarded(Operation&& operation) noexcept -> decltype(operation()) {
  try {
    return operation();
  } catch (const pdf::Error& error) {
    SetLastError(CodeOf(error.code()));
  } catch (const ToolboxException& error) {
    SetLastError(error.code());
  } catch (const std::bad_alloc&) {
    SetLastError(kMemoryError);
  } catch (...) {
    SetLastError(kInternalError);
  }
  return {};
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_GUARD_H_
