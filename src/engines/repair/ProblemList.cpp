#include "engines/repair/ProblemList.h"

#include <string>
#include <utility>

#include "engines/repair/Limits.h"

namespace TarnixTools::engines::repair {

void ProblemList::Add(Problem problem) {
  if (++counts_[problem.code] <= limits::kMaxListedOfAKind) {
    const bool is_lint = KindOf(problem.code).weight == Weight::kLint;
    (is_lint ? lint_ : damage_).push_back(std::move(problem));
  }
}

void ProblemList::Close() {
  for (const auto& [code, count] : counts_) {
    const ProblemKind& kind = KindOf(code);
    if (count > limits::kMaxListedOfAKind) {
      (kind.weight == Weight::kLint ? lint_ : damage_)
          .push_back({.code = ProblemCode::kMoreOfAKind,
                      .outcome = Outcome::kWorkedAround,
                      .detail = std::to_string(count) + " times: " + kind.sentence});
    }
  }
  counts_.clear();
}

}  // namespace TarnixTools::engines::repair
