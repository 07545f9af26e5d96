#include "pdf/file/NumberArrays.h"

#include <array>
#include <span>

namespace TarnixTools::pdf {

namespace {

template <std::size_t kCount>
std::array<double, kCount> NumbersOf(Document& document, std::span<const Object> items,
                                     Arena& arena) {
  std::array<double, kCount> numbers{};
  for (std::size_t i = 0; i < kCount; ++i) {
    numbers[i] = document.Resolve(items[i], arena).NumberOr(0);
  }
  return numbers;
}

}  // namespace

std::optional<Box> ReadBox(Document& document, const Object& value) {
  Arena arena;
  const auto items = document.Resolve(value, arena).Items();
  if (items.size() != 4) {
    return std::nullopt;
  }
  const auto corner = NumbersOf<4>(document, items, arena);
  return Box::OfCorners(corner[0], corner[1], corner[2], corner[3]);
}

std::optional<Matrix> ReadMatrix(Document& document, const Object& value) {
  Arena arena;
  const auto items = document.Resolve(value, arena).Items();
  if (items.size() < 6) {
    return std::nullopt;
  }
  const auto number = NumbersOf<6>(document, items, arena);
  return Matrix{number[0], number[1], number[2], number[3], number[4], number[5]};
}

}  // namespace TarnixTools::pdf
