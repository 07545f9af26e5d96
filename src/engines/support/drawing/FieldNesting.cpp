#include "engines/support/drawing/FieldNesting.h"

#include <algorithm>

#include "engines/support/drawing/DrawingLimits.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines {
namespace {

constexpr std::uint64_t kTooMany = std::uint64_t{1} << 40;

}  // namespace

bool FieldNesting::IsBounded(const pdf::Object& form) {
  pdf::Arena arena;
  const std::uint64_t size = SizeOfAll(document_->Resolve(form.Get("Fields"), arena), 0);
  return size < 2 * sizes_.size() + limits::kMaxRepeatedFields;
}

std::uint64_t FieldNesting::SizeOfAll(const pdf::Object& fields, std::uint32_t depth) {
  if (depth > pdf::limits::kMaxFieldNesting) {
    return kTooMany;
  }
  std::uint64_t size = 1;
  for (const pdf::Object& field : fields.Items()) {
    size = std::min(kTooMany, size + SizeOf(field, depth));
  }
  return size;
}

std::uint64_t FieldNesting::SizeOf(const pdf::Object& field, std::uint32_t depth) {
  const std::uint32_t number = field.AsReference().number;
  if (number != 0) {
    const auto [found, is_new] = sizes_.emplace(number, 0);
    if (!is_new) {
      return found->second == 0 ? kTooMany : found->second;
    }
  }
  pdf::Arena arena;
  const pdf::Object kids = document_->Resolve(document_->Resolve(field, arena).Get("Kids"), arena);
  const std::uint64_t size = SizeOfAll(kids, depth + 1);
  if (number != 0) {
    sizes_[number] = size;
  }
  return size;
}

}  // namespace TarnixTools::engines
