// Keeps exceptions inside an engine: runs one operation of its contract; what it throws becomes an
// error code, and a null or zero result.
//
// An engine says once what its codes are, which exceptions it knows of what it is built on, and what
// their codes mean to it:
//
//   struct Pdf2ImgErrors {
//     using Code = Pdf2ImgError;
//     using Known = KnownErrors<pdf::Error, DrawingError>;
//     static constexpr Code kInternal = kPdf2ImgInternalError;
//     static constexpr Code kMemory = kPdf2ImgMemoryError;
//     static constexpr Code kArgument = kPdf2ImgArgumentError;
//     static Code Of(const pdf::Error& error);
//     static Code Of(const DrawingError& error);
//   };
//
// Why the system refused something goes along by platform::NoteSystemError. The engine also says
// where its last error lives: wherever it likes (GuardedBy), or in its objects (Guarded), each
// of which has a member `last_error`:
//
//   int Pdf2ImgClose(TPdf2Img* object) {
//     return Guarded<Pdf2ImgErrors>(object, [&] { object->Close(); });
//   }
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_GUARD_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_GUARD_H_

#include <new>
#include <type_traits>

#include "engines/support/contract/EngineFailure.h"
#include "foundation/Platform.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

// Classes of exceptions.
template <typename... Errors>
struct KnownErrors {};

template <typename Errors>
typename Errors::Code CodeOfCurrentException(KnownErrors<>) noexcept {
  try {
    throw;
  } catch (const EngineFailure<typename Errors::Code>& failure) {
    return failure.code();
  } catch (const std::bad_alloc&) {
    return Errors::kMemory;
  } catch (...) {
    return Errors::kInternal;
  }
}

template <typename Errors, typename First, typename... Rest>
typename Errors::Code CodeOfCurrentException(KnownErrors<First, Rest...>) noexcept {
  try {
    throw;
  } catch (const First& error) {
    return Errors::Of(error);
  } catch (...) {
    return CodeOfCurrentException<Errors>(KnownErrors<Rest...>());
  }
}

// The code for the exception that is being handled.
template <typename Errors>
typename Errors::Code CodeOfCurrentException() noexcept {
  return CodeOfCurrentException<Errors>(typename Errors::Known());
}

// An operation that returns nothing has the result 1.
template <typename Operation>
using GuardedResult = std::conditional_t<std::is_void_v<std::invoke_result_t<Operation>>, int,
                                         std::invoke_result_t<Operation>>;

// Why the system refused what the exception that is being handled tells of: an errno value, or 0.
template <typename Errors>
int SystemErrorOfCurrentException() noexcept {
  try {
    throw;
  } catch (const EngineFailure<typename Errors::Code>& failure) {
    return failure.system_error();
  } catch (const pdf::Error& error) {
    return error.system_error();
  } catch (...) {
    return 0;
  }
}

// For an engine that keeps its last error elsewhere than in its objects.
//   note - is told the code when the operation throws; must not throw itself
template <typename Errors, typename Note, typename Operation>
GuardedResult<Operation> GuardedBy(Note&& note, Operation&& operation) noexcept {
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Operation>>) {
      operation();
      return 1;
    } else {
      return operation();
    }
  } catch (...) {
    platform::NoteSystemError(SystemErrorOfCurrentException<Errors>());
    note(CodeOfCurrentException<Errors>());
  }
  return {};
}

// Why this thread's last call without an object failed: a null handle, or no memory for an object.
template <typename Errors>
inline thread_local typename Errors::Code error_without_object = {};

// For an operation without an object, such as the one that makes objects.
template <typename Errors, typename Operation>
GuardedResult<Operation> GuardedWithoutObject(Operation&& operation) noexcept {
  return GuardedBy<Errors>([](auto code) { error_without_object<Errors> = code; }, operation);
}

// For an engine whose objects keep their last errors. A null object is an argument error.
template <typename Errors, typename Object, typename Operation>
GuardedResult<Operation> Guarded(Object* object, Operation&& operation) noexcept {
  if (object == nullptr) {
    error_without_object<Errors> = Errors::kArgument;
    return {};
  }
  return GuardedBy<Errors>([object](auto code) { object->last_error = code; }, operation);
}

// The code of the last call that failed on the object, or on this thread for the null object.
template <typename Errors, typename Object>
typename Errors::Code LastErrorOf(const Object* object) noexcept {
  return object != nullptr ? object->last_error : error_without_object<Errors>;
}

// Throws the engine's argument error unless the condition holds.
template <typename Errors>
void Require(bool condition) {
  if (!condition) {
    throw EngineFailure<typename Errors::Code>(Errors::kArgument);
  }
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_GUARD_H_
