#include "PdfException.h"

#include <cstdarg>
#include <cstdio>

#include "foundation/Platform.h"

namespace TarnixTools {

PdfExceptionBase::~PdfExceptionBase() = default;

const char* PdfExceptionBase::what() const noexcept {
  return "Unknown exception";
}

PdfException::PdfException(PdfExceptionCode code, std::int32_t error_code, const char* format, ...)
    : code_(code),
      error_code_(error_code),
      system_error_(error_code != 0 ? platform::LastSystemError() : 0) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message_, sizeof(message_), format, arguments);
  va_end(arguments);
}

PdfException::PdfException(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(message_, sizeof(message_), format, arguments);
  va_end(arguments);
}

PdfException::~PdfException() = default;

const char* PdfException::what() noexcept {
  return message_;
}

}  // namespace TarnixTools
