#include "pdf/write/NumberMap.h"

#include <algorithm>

namespace TarnixTools::pdf {

void NumberMap::Set(std::uint32_t number, std::uint32_t target) {
  if (number >= numbers_.size()) {
    numbers_.resize(std::max<std::size_t>(number + 1, numbers_.size() * 2));
  }
  if (numbers_[number] == 0) {
    set_.push_back(number);
  }
  numbers_[number] = target;
}

void NumberMap::Clear() {
  for (const std::uint32_t number : set_) {
    numbers_[number] = 0;
  }
  set_.clear();
}

}  // namespace TarnixTools::pdf
