// What the content parser throws inside.
#ifndef TARNIX_ENGINES_PARSER_EXPAFAILURE_H_
#define TARNIX_ENGINES_PARSER_EXPAFAILURE_H_

#include <exception>

#include "engines/parser/ErrorCodes.h"

namespace TarnixTools::engines {

class ExpaFailure : public std::exception {
 public:
  explicit ExpaFailure(ExpaError code) : code_(code) {}

  ExpaError code() const { return code_; }

  const char* what() const noexcept override { return "content parser error"; }

 private:
  ExpaError code_;
};

// The code for the exception that is being handled.
ExpaError ExpaCodeOfCurrentException() noexcept;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PARSER_EXPAFAILURE_H_
