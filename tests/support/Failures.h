// What a call throws, as a value that tests compare.
//
//   EXPECT_EQ(FailureOf([&] { PdfDoc("", "", true); }),
//             Failure(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc"));
#ifndef TARNIX_TESTS_SUPPORT_FAILURES_H_
#define TARNIX_TESTS_SUPPORT_FAILURES_H_

#include <ostream>
#include <string>

#include "PdfException.h"

namespace TarnixTools::testing {

struct Failure {
  Failure() = default;

  Failure(PdfExceptionCode code_of, std::string message_of, long engine_code_of = 0)
      : code(code_of), message(std::move(message_of)), engine_code(engine_code_of) {}

  bool operator==(const Failure&) const = default;

  PdfExceptionCode code{};
  std::string message;  // empty when nothing was thrown
  long engine_code = 0;
};

inline std::ostream& operator<<(std::ostream& out, const Failure& failure) {
  if (failure.message.empty()) {
    return out << "no failure";
  }
  return out << static_cast<int>(failure.code) << " \"" << failure.message << "\" (engine code "
             << failure.engine_code << ")";
}

// No failure when nothing is thrown; other exceptions pass.
template <typename Call>
Failure FailureOf(Call&& call) {
  try {
    call();
  } catch (PdfException& error) {
    return {error.GetCode(), error.what(), error.GetErrorCode()};
  }
  return {};
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_FAILURES_H_
