// The problems that an analysis finds, in the order in which it finds them.
#ifndef TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_
#define TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_

#include <cstddef>
#include <map>
#include <span>
#include <vector>

#include "engines/repair/Problem.h"

namespace TarnixTools::engines::repair {

class ProblemList {
 public:
  // A problem of a kind of which limits::kMaxListedOfAKind are listed is only counted.
  void Add(Problem problem);

  // Says of every kind that has more problems than are listed how many there are; once, at the end.
  void Close();

  std::span<const Problem> damage() const { return damage_; }

  std::span<const Problem> lint() const { return lint_; }

 private:
  std::vector<Problem> damage_;
  std::vector<Problem> lint_;
  std::map<ProblemCode, std::size_t> counts_;
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_
