// What an engine throws inside: the code of an error of its contract.
#ifndef TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_
#define TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_

#include <exception>

namespace TarnixTools::engines {

// Each engine names its own:
//
//   using ExpaFailure = EngineFailure<ExpaError>;
//   throw ExpaFailure(kExpaArgumentError);
//   throw ExpaFailure(kExpaCreateError, errno);  // where the system has refused something
template <typename Code>
class EngineFailure : public std::exception {
 public:
  explicit EngineFailure(Code code, int system_error = 0)
      : code_(code), system_error_(system_error) {}

  Code code() const { return code_; }

  // An errno value; 0 where the system has nothing to do with it.
  int system_error() const { return system_error_; }

  const char* what() const noexcept override { return "an engine's operation failed"; }

 private:
  Code code_;
  int system_error_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CONTRACT_ENGINEFAILURE_H_
