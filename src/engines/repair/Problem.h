// What is wrong with a document: a code that stays what it is from version to version, where, and
// what becomes of it.
//
//   problems.Add({.code = ProblemCode::kStreamLengthWrong,
//                 .outcome = Outcome::kFixed,
//                 .object = 12,
//                 .detail = "120 bytes given, 118 there"});
//   MessageOf(problem, Tense::kDone);
//   // "Object 12: the length of the stream is wrong (120 bytes given, 118 there); fixed"
#ifndef TARNIX_ENGINES_REPAIR_PROBLEM_H_
#define TARNIX_ENGINES_REPAIR_PROBLEM_H_

#include <cstdint>
#include <optional>
#include <string>

#include "engines/repair/ProblemCodes.h"

namespace TarnixTools::engines::repair {

// What repair makes of it.
enum class Outcome : std::uint8_t {
  kFixed,         // it is as it was meant to be
  kWorkedAround,  // what it leads to is there, found or put together in another way
  kLost,          // something that the document had is not in the output
};

struct Problem {
  ProblemCode code{};
  Outcome outcome = Outcome::kFixed;
  std::uint32_t page = 0;                    // from 1; 0: none in particular
  std::uint32_t object = 0;                  // 0: none in particular
  std::optional<std::uint64_t> offset = {};  // in the file, where no object says it
  std::string detail = {};  // figures and names of keys, never text of the document
};

enum class Tense : std::uint8_t {
  kAhead,  // of a document that was analysed: "can be fixed"
  kDone,   // of one that was repaired: "fixed"
};

// In English, one line: where, what, what becomes of it.
std::string MessageOf(const Problem& problem, Tense tense);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_PROBLEM_H_
