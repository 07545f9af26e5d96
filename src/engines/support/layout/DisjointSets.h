// Which of several things hang together.
//
//   DisjointSets sets(count);
//   sets.Join(2, 5);
//   sets.Find(2) == sets.Find(5)
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_DISJOINTSETS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_DISJOINTSETS_H_

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace TarnixTools::engines {

class DisjointSets {
 public:
  // Each thing is a set of its own.
  explicit DisjointSets(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), std::size_t{0});
  }

  // The first thing of the set.
  std::size_t Find(std::size_t thing) {
    while (parents_[thing] != thing) {
      parents_[thing] = parents_[parents_[thing]];
      thing = parents_[thing];
    }
    return thing;
  }

  void Join(std::size_t a, std::size_t b) {
    const std::size_t one = Find(a);
    const std::size_t other = Find(b);
    parents_[std::max(one, other)] = std::min(one, other);
  }

 private:
  std::vector<std::size_t> parents_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_DISJOINTSETS_H_
