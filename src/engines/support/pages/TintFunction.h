// Functions that lead from tints of inks to another colour space (ISO 32000-2, 7.10).
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_TINTFUNCTION_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_TINTFUNCTION_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "engines/support/pages/TintProgram.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

class TintFunction {
 public:
  // Nothing for several functions, and for one that is damaged or put together of very many. Throws
  // pdf::Error for a document that cannot be read any more.
  //   inputs - inks, 1 to 32
  //   outputs - components of the other space, 1 at least
  static std::optional<TintFunction> Read(pdf::Document& document, const pdf::Followed& function,
                                          std::size_t inputs, std::size_t outputs);

  // The components for as many tints as there are inks, from 0 to 1 each. Empty where a program
  // fails.
  std::vector<double> At(std::span<const double> tints) const;

  // What that costs at most, in operations.
  std::size_t step_count() const;

 private:
  // What may yet be read of a function: parts, how deep they are, and bytes of samples and programs.
  struct Budget {
    std::size_t parts = 0;
    std::size_t depth = 0;
    std::size_t bytes = 0;
  };

  // Between a colour without the ink and one with all of it.
  struct Curve {
    std::vector<double> none;
    std::vector<double> full;
    double exponent = 1;

    std::vector<double> At(double tint) const;
  };

  // A grid of colours, the first ink's steps next to each other.
  struct Grid {
    struct Axis {
      std::size_t size = 2;
      double first = 0;  // the place of tint 0 among the steps, and that of tint 1
      double last = 1;
    };

    std::vector<Axis> axes;
    std::vector<double>
        range;             // of each component, what the least and the greatest sample stand for
    std::size_t bits = 8;  // of a sample
    std::string samples;

    static std::optional<Grid> Read(pdf::Document& document, const pdf::Followed& function,
                                    std::size_t inputs, std::size_t outputs, Budget& budget);

    std::vector<double> At(std::span<const double> tints) const;
    double SampleAt(std::size_t place, std::size_t component) const;
  };

  struct Formula {
    TintProgram program;
    std::vector<double> range;  // that each component is within

    std::vector<double> At(std::span<const double> tints) const;
  };

  // Functions of one ink side by side, each for a part of its tints.
  struct Stitched {
    std::vector<TintFunction> parts;
    std::vector<double> bounds;  // where each begins, and where the last one ends
    std::vector<double> encode;  // of each, the tints that it is asked for at its bounds

    std::vector<double> At(double tint) const;
  };

  using Way = std::variant<Curve, Grid, Formula, Stitched>;

  explicit TintFunction(Way way) : way_(std::move(way)) {}

  static std::optional<TintFunction> Read(pdf::Document& document, const pdf::Followed& function,
                                          std::size_t inputs, std::size_t outputs, Budget& budget);
  static std::optional<std::string> DataOf(pdf::Document& document, const pdf::Followed& function,
                                           Budget& budget);
  static std::optional<Stitched> ReadStitched(pdf::Document& document, const pdf::Object& function,
                                              std::size_t outputs, Budget& budget);

  Way way_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_TINTFUNCTION_H_
