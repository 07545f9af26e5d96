// Programs that lead from tints of inks to another colour space (ISO 32000-2, 7.10.5).
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_TINTPROGRAM_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_TINTPROGRAM_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

class TintProgram {
 public:
  // Nothing for a text that is no such program, and for one that is too long or too deep.
  static std::optional<TintProgram> Read(std::string_view text);

  // The numbers that the program leaves of those that it is given, the last one on top. Empty where
  // it takes what there is not, or leaves too much.
  std::vector<double> Run(std::span<const double> numbers) const;

  // That Run takes at most.
  std::size_t step_count() const { return step_count_; }

 private:
  friend class TintProgramReader;

  enum class Kind : std::uint8_t { kNumber, kOperator, kChoice };

  struct Step {
    Kind kind = Kind::kNumber;
    double number = 0;
    std::size_t code = 0;    // of an operator, its place among those that are known
    std::size_t first = 0;   // of a choice: the block for what is true
    std::size_t second = 0;  // and that for what is not; 0 for none
  };

  bool RunBlock(std::size_t block, std::vector<double>& stack) const;

  std::vector<std::vector<Step>> blocks_;  // the whole program is the first one
  std::size_t step_count_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_TINTPROGRAM_H_
