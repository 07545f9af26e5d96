// What an engine throws inside: the code of an error of its contract.
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_

#include <exception>

namespace TarnixTools::engines {

// Each engine names its own:
//
//   using ExpaFailure = EngineFailure<ExpaError>;
//   throw ExpaFailure(kExpaArgumentError);
template <typename Code>
class EngineFailure : public std::exception {
 public:
  explicit EngineFailure(Code code) : code_(code) {}

  Code code() const { return code_; }

  const char* what() const noexcept override { return "an engine's operation failed"; }

 private:
  Code code_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_
