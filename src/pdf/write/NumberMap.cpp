#include "pdf/write/NumberMap.h"

#include <algorithm>

namespace TarnixTools::pdf {

void NumberMap::Set(std::uint32_t number, std::uint32_t target) {
  std::vector<std::uint32_t>& numbers = IsAddedObject(number) ? added_ : numbers_;
  const std::size_t index = IndexOf(number);
  if (index >= numbers.size()) {
    numbers.resize(std::max(index + 1, numbers.size() * 2));
  }
  if (numbers[index] == 0) {
    set_.push_back(number);
  }
  numbers[index] = target;
}

void NumberMap::Clear() {
  for (const std::uint32_t number : set_) {
    (IsAddedObject(number) ? added_ : numbers_)[IndexOf(number)] = 0;
  }
  set_.clear();
}

}  // namespace TarnixTools::pdf
