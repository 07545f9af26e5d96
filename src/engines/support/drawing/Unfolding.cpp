#include "engines/support/drawing/Unfolding.h"

#include <algorithm>

#include "engines/support/drawing/DrawingLimits.h"

namespace TarnixTools::engines {

std::uint64_t Unfolding::SizeOf(const pdf::Object& value, std::uint32_t depth) {
  if (depth > limits::kMaxUnfoldingDepth) {
    return kEndless;
  }
  const std::uint32_t number = value.AsReference().number;
  if (number == 0) {
    return SizeOfDirect(value, depth);
  }
  const auto [found, is_new] = sizes_.emplace(number, 0);
  if (!is_new) {
    return found->second == 0 ? kEndless : found->second;
  }
  pdf::Arena arena;
  const std::uint64_t size = SizeOf(document_->Load(value.AsReference(), arena), depth + 1);
  sizes_[number] = size;
  return size;
}

std::uint64_t Unfolding::SizeOfDirect(const pdf::Object& value, std::uint32_t depth) {
  if (value.IsDictionary()) {
    return std::min(kEndless, 1 + SizeOf(value.Get(kids_), depth + 1));
  }
  std::uint64_t size = 1;
  for (const pdf::Object& item : value.Items()) {
    size = std::min(kEndless, size + SizeOf(item, depth + 1));
  }
  return size;
}

}  // namespace TarnixTools::engines
