#include "engines/repair/ProblemList.h"

#include <algorithm>
#include <string>
#include <utility>

#include "engines/repair/Limits.h"

namespace TarnixTools::engines::repair {

namespace {

// Problems of one hundred stay in the order in which they were found.
int SubjectOf(ProblemCode code) {
  return static_cast<int>(code) / 100;
}

std::vector<Problem> Selected(const std::vector<Problem>& problems, std::uint32_t analyses) {
  std::vector<Problem> selected;
  for (const Problem& problem : problems) {
    if ((KindOf(problem.code).analysis & analyses) != 0) {
      selected.push_back(problem);
    }
  }
  std::ranges::stable_sort(selected, {}, [](const Problem& p) { return SubjectOf(p.code); });
  return selected;
}

}  // namespace

std::vector<Problem>& ProblemList::ListOf(ProblemCode code) {
  return KindOf(code).weight == Weight::kLint ? lint_ : damage_;
}

void ProblemList::Add(Problem problem) {
  Count& count = counts_[problem.code];
  count.worst = std::max(count.worst, problem.outcome);
  if (++count.problems <= limits::kMaxListedOfAKind) {
    ListOf(problem.code).push_back(std::move(problem));
  }
}

ProblemList ProblemList::Of(std::uint32_t analyses) const {
  ProblemList selected;
  selected.damage_ = Selected(damage_, analyses);
  selected.lint_ = Selected(lint_, analyses);
  for (const auto& [code, count] : counts_) {
    if (count.problems > limits::kMaxListedOfAKind && (KindOf(code).analysis & analyses) != 0) {
      std::vector<Problem>& list = selected.ListOf(code);
      const auto last = std::ranges::find(list.rbegin(), list.rend(), code, &Problem::code);
      list.insert(last.base(),
                  {.code = ProblemCode::kMoreOfAKind,
                   .outcome = count.worst,
                   .detail = std::to_string(count.problems) + ": " + KindOf(code).sentence});
    }
  }
  return selected;
}

}  // namespace TarnixTools::engines::repair
