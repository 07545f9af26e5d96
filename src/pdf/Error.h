// What the PDF core throws when a document or a file cannot be worked with.
#ifndef TARNIX_PDF_ERROR_H_
#define TARNIX_PDF_ERROR_H_

#include <stdexcept>
#include <string>
#include <utility>

namespace TarnixTools::pdf {

enum class ErrorCode {
  kInternal,             // our own fault
  kReadFailed,           // the byte source reported an error
  kWriteFailed,          // the byte sink reported an error
  kNotAPdf,              // nothing in the file looks like a PDF document
  kNoPages,              // no page tree and no page object can be found
  kPasswordRequired,     // the password is missing or wrong
  kUnsupportedSecurity,  // a security handler or an algorithm the core does not know
  kDamagedSecurity,      // the encryption dictionary is unusable
  kLimitExceeded,        // a bound of Limits.h was passed
  kFilterFailed,         // stream data that cannot be decoded
  kSourceChanged,        // the file is not the one that was opened
};

class Error : public std::runtime_error {
 public:
  // system_error: the errno value with which the system refused what had to be done; 0 where it did
  // not.
  Error(ErrorCode code, const std::string& message, int system_error = 0)
      : std::runtime_error(message), code_(code), system_error_(system_error) {}

  ErrorCode code() const { return code_; }

  int system_error() const { return system_error_; }

  // Whether the document's own content is the cause, and neither what it is read from, what is
  // written to, a password nor our own fault: who can do without the part in question goes on.
  bool is_damage() const {
    switch (code_) {
      case ErrorCode::kInternal:
      case ErrorCode::kReadFailed:
      case ErrorCode::kWriteFailed:
      case ErrorCode::kSourceChanged:
      case ErrorCode::kPasswordRequired:
        return false;
      default:
        return true;
    }
  }

 private:
  ErrorCode code_;
  int system_error_;
};

// What the function gives; where the document is damaged, what stands in for it. Every other error
// goes through.
//
//   return UnlessDamaged(0.0, [&] { return document.Resolve(value, arena).NumberOr(0); });
template <typename Value, typename Function>
Value UnlessDamaged(Value otherwise, Function&& function) {
  try {
    return std::forward<Function>(function)();
  } catch (const Error& error) {
    if (!error.is_damage()) {
      throw;
    }
    return otherwise;
  }
}

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_ERROR_H_
