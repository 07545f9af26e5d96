#include "engines/support/pdfium/FormNesting.h"

#include <algorithm>
#include <string_view>

namespace TarnixTools::engines {
namespace {

constexpr int kMaxDepth = 64;
constexpr std::uint64_t kTooMany = 100'000;

}  // namespace

bool FormNesting::IsBounded(const pdf::Object& resources) {
  return SizeOfResources(resources, 0) < kTooMany;
}

std::uint64_t FormNesting::SizeOfResources(const pdf::Object& resources, int depth) {
  if (depth > kMaxDepth) {
    return kTooMany;
  }
  std::uint64_t size = 1;
  for (const std::string_view category : {"XObject", "Pattern"}) {
    pdf::Arena arena;
    const pdf::Object named = document_->Resolve(resources.Get(category), arena);
    for (const pdf::DictionaryEntry& entry : named.Entries()) {
      size = std::min(kTooMany, size + SizeOf(entry.value.AsReference().number, depth));
    }
  }
  return size;
}

std::uint64_t FormNesting::SizeOf(std::uint32_t number, int depth) {
  if (number == 0) {
    return 0;
  }
  const auto [found, is_new] = sizes_.emplace(number, 0);
  if (!is_new) {
    return found->second == 0 ? kTooMany : found->second;
  }
  pdf::Arena arena;
  const pdf::Object form = document_->Load({.number = number, .generation = 0}, arena);
  const pdf::Object resources = document_->Resolve(form.Get("Resources"), arena);
  const std::uint64_t size = resources.IsDictionary() ? SizeOfResources(resources, depth + 1) : 1;
  sizes_[number] = size;
  return size;
}

}  // namespace TarnixTools::engines
