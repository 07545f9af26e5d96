// The problems that an analysis finds.
#ifndef TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_
#define TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "engines/repair/Problem.h"

namespace TarnixTools::engines::repair {

class ProblemList {
 public:
  // A problem of a kind of which limits::kMaxListedOfAKind are listed is only counted.
  void Add(Problem problem);

  // Those that these analyses find, in the order of what they are about: the file, its objects,
  // pages, other trees, content. Behind those of a kind that has more than are listed stands how many
  // there are.
  //   analyses - AnalysisBits
  ProblemList Of(std::uint32_t analyses) const;

  std::span<const Problem> damage() const { return damage_; }

  std::span<const Problem> lint() const { return lint_; }

 private:
  std::vector<Problem>& ListOf(ProblemCode code);

  std::vector<Problem> damage_;
  std::vector<Problem> lint_;

  // Of a kind, those that are not listed too.
  struct Count {
    std::size_t problems = 0;
    Outcome worst = Outcome::kFixed;
  };

  std::map<ProblemCode, Count> counts_;
};

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_PROBLEMLIST_H_
