// The one error type of the library.
//
//   try {
//     task.Execute();
//   } catch (PdfException& error) {
//     std::cerr << error.what() << " (" << error.GetErrorCode() << ")\n";
//     return static_cast<int>(error.GetCode());
//   }
//
// Where a header says that something throws InvalidParameter, or another of the codes below, it is
// always a PdfException with that code. Beside it, what the standard library throws may pass
// through: std::bad_alloc when there is no memory. A call that throws leaves no half-written file
// behind.
#ifndef TARNIX_PDF_EXCEPTION_H_
#define TARNIX_PDF_EXCEPTION_H_

#include <cstdint>
#include <exception>

#include "TarnixExport.h"

namespace TarnixTools {

// What kind of failure it was. Hosts branch on this, never on the message.
//
// AllPagesScanned, ConversionTimeout and NoTablesFound belong to conversions to Office formats,
// which this version does not have: no job throws them yet.
enum class PdfExceptionCode : std::int32_t {
  PasswordError = 1,     // a document needs a password: none was given, or the one given is wrong
  NoPages = 3,           // no page would be left, or a document has no page at all
  InvalidParameter = 4,  // a bad argument, option or range
  FileNotFound = 6,      // a file or directory is missing, cannot be created or cannot be deleted
  InternalError = 7,     // an operation failed or an object is in an unexpected state
  NoImagesFound = 8,     // an extraction found no images
  // Every page to be converted is a scanned image, and text recognition is off.
  AllPagesScanned = 10,
  ConversionTimeout = 11,  // an Office conversion ran past its time limit
  NoTablesFound = 12,      // a table extraction found no tables
  EngineError = 13,        // an engine reported failure; GetErrorCode() is the engine's own code
};

// What a handler of std::exception sees of a PdfException: the fixed text "Unknown exception".
class TARNIX_EXPORT PdfExceptionBase : public std::exception {
 public:
  PdfExceptionBase() noexcept = default;
  PdfExceptionBase(const PdfExceptionBase&) noexcept = default;
  PdfExceptionBase& operator=(const PdfExceptionBase&) noexcept = default;
  ~PdfExceptionBase() override;

  // "Unknown exception", always; the text is static.
  const char* what() const noexcept override;
};

// A failure: a category, the code of the engine call that failed (0 when no engine was involved)
// and a message in English, for people, which later versions may word otherwise. No password and no
// text of a document is part of it, with one exception: the one for a wrong password of a document
// to be rendered shows that password.
//
// The message is read through a non-const PdfException only: catch it as `PdfException&`. Through
// std::exception, or through a const reference, what() answers "Unknown exception".
//
// Exceptions are plain values: copies hold the same three, and own nothing.
class TARNIX_EXPORT PdfException : public PdfExceptionBase {
 public:
  // Formats the message as printf does. At most 1023 bytes of it are kept; the rest is cut without
  // notice.
  //   error_code - the failed engine call's code, 0 when there is none. With a code, the reason of the
  //                system goes along that the last engine's call that failed on this thread had.
  PdfException(PdfExceptionCode code, std::int32_t error_code, const char* format, ...)
      __attribute__((format(printf, 4, 5)));

  // A message only: GetCode() is no enumerator and GetErrorCode() 0 then. The library itself always
  // gives a code.
  explicit PdfException(const char* format, ...) __attribute__((format(printf, 2, 3)));

  // Copies have a message of their own; neither copying nor destroying one throws.
  PdfException(const PdfException&) noexcept = default;
  PdfException& operator=(const PdfException&) noexcept = default;
  ~PdfException() override;

  using PdfExceptionBase::what;
  // The formatted message, NUL-terminated; it lives as long as the exception.
  virtual const char* what() noexcept;

  // What a host decides by.
  PdfExceptionCode GetCode() const noexcept { return code_; }

  // The engine's own code, whose meaning depends on the engine: docs/engines.md lists them. 0 when
  // no engine was involved; seldom of use beyond a line in a log.
  long GetErrorCode() const noexcept { return error_code_; }

  // Why the system refused what the engine had it do: an errno value, such as ENOSPC where an output
  // could not be written to its end. 0 when no engine was involved, and where it failed for another
  // reason.
  int GetSystemError() const noexcept { return system_error_; }

 private:
  char message_[1024] = {};
  PdfExceptionCode code_{};
  std::int32_t error_code_ = 0;
  std::int32_t system_error_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_EXCEPTION_H_
