// Operands of the usual forms, taken without building values: numbers, and names.
#ifndef TARNIX_PDF_CONTENT_OPERANDS_H_
#define TARNIX_PDF_CONTENT_OPERANDS_H_

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "pdf/content/ContentReader.h"

namespace TarnixTools::pdf {

// The last operands as numbers, as many as there is room for: surplus ones come first, and what is
// no number counts as 0. False, and what is in `numbers` is of no use, when there are too few.
bool LastNumbers(const Operation& operation, std::span<double> numbers);

// The last operand, when it is a name: escapes resolved, within the content or in the arena.
std::optional<std::string_view> LastName(const Operation& operation, Arena& arena);

// A name and then a number, which are the last operands.
struct NameAndNumber {
  std::string_view name;
  double number = 0;
};

std::optional<NameAndNumber> LastNameAndNumber(const Operation& operation, Arena& arena);

// Where in the operands the strings of their last array begin, in its order: those of TJ, as they are
// shown one by one.
std::vector<std::size_t> StringOffsets(std::string_view operands);

// The first name among the operands as it stands, without its slash; empty for none.
std::string_view FirstRawName(std::string_view operands);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_OPERANDS_H_
