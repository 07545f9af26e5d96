#include "pdf/content/GraphicsState.h"

#include <algorithm>

#include "pdf/content/ContentReader.h"

namespace TarnixTools::pdf {

std::size_t Color::ReadComponents(std::span<double> numbers) const {
  Arena arena;
  std::size_t count = 0;
  for (const Object& value : ParseOperands(components, arena)) {
    if (value.IsName()) {
      break;  // of the pattern
    }
    if (count < numbers.size()) {
      numbers[count] = value.NumberOr(0);
    }
    ++count;
  }
  return count;
}

double LineStyle::ReadDash(std::vector<double>& lengths) const {
  lengths.clear();
  Arena arena;
  std::vector<Object> operands;
  std::span<const Object> items = dash.Items();
  if (dash.IsNull()) {
    operands = ParseOperands(dash_operands, arena);
    items = operands;
  }
  if (items.size() < 2) {
    return 0;
  }
  const Object& phase = items[items.size() - 1];
  for (const Object& length : items[items.size() - 2].Items()) {
    lengths.push_back(length.NumberOr(0));
  }
  return phase.NumberOr(0);
}

}  // namespace TarnixTools::pdf
