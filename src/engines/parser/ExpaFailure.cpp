#include "engines/parser/ExpaFailure.h"

#include <new>

#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

ExpaError CodeOf(pdf::ErrorCode code) {
  switch (code) {
    case pdf::ErrorCode::kReadFailed:
    case pdf::ErrorCode::kSourceChanged:
      return kExpaFileError;
    case pdf::ErrorCode::kWriteFailed:
      return kExpaWriteError;
    case pdf::ErrorCode::kNotAPdf:
      return kExpaNotAPdfError;
    case pdf::ErrorCode::kNoPages:
      return kExpaNoPagesError;
    case pdf::ErrorCode::kPasswordRequired:
      return kExpaPasswordError;
    case pdf::ErrorCode::kUnsupportedSecurity:
    case pdf::ErrorCode::kDamagedSecurity:
      return kExpaSecurityError;
    case pdf::ErrorCode::kLimitExceeded:
      return kExpaLimitError;
    case pdf::ErrorCode::kFilterFailed:
      return kExpaImageError;
    case pdf::ErrorCode::kInternal:
      break;
  }
  return kExpaInternalError;
}

}  // namespace

ExpaError ExpaCodeOfCurrentException() noexcept {
  try {
    throw;
  } catch (const ExpaFailure& failure) {
    return failure.code();
  } catch (const pdf::Error& error) {
    return CodeOf(error.code());
  } catch (const std::bad_alloc&) {
    return kExpaMemoryError;
  } catch (...) {
    return kExpaInternalError;
  }
}

}  // namespace TarnixTools::engines
