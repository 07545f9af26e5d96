// Numbers that look like chance and are the same every time, for scenes that nobody would think of.
//
//   Dice dice(17);
//   if (dice.Chance(20)) scene.Text(dice.Between(100, 120, 0.5), 200, dice.Of(kWords));
//
// Steps are powers of two, so that numbers meet the bounds of what is tested exactly. A call and an operator have
// one throw at most among what they take: compilers work it out in orders of their own.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_DICE_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_DICE_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines {

class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}

  // From 0 to one less than the count.
  std::size_t Under(std::size_t count) { return static_cast<std::size_t>(Next() % count); }

  // Of a hundred throws so many are.
  bool Chance(std::size_t percent) { return Under(100) < percent; }

  // One of first, first + step, ... last.
  double Between(double first, double last, double step) {
    const auto steps = static_cast<std::size_t>((last - first) / step) + 1;
    return first + step * static_cast<double>(Under(steps));
  }

  template <typename Values>
  const auto& Of(const Values& values) {
    return values[Under(values.size())];
  }

 private:
  std::uint64_t Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    std::uint64_t mixed = state_ ^ (state_ >> 33U);
    mixed *= 0xFF51AFD7ED558CCDU;
    return (mixed ^ (mixed >> 33U)) >> 8U;
  }

  std::uint64_t state_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_LAYOUT_DICE_H_
