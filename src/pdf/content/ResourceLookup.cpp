#include "pdf/content/ResourceLookup.h"

namespace TarnixTools::pdf {

namespace {

// Up to this many entries are as quickly gone through.
constexpr std::size_t kFewEntries = 16;

}  // namespace

Object ResourceLookup::Find(ResourceCategory category, std::string_view name) {
  const Object& entries = Category(category);
  if (entries.Entries().size() <= kFewEntries) {
    return entries.Get(name);
  }
  Index& index = indexes_[static_cast<std::size_t>(category)];
  if (index.empty()) {
    for (const DictionaryEntry& entry : entries.Entries()) {
      index.insert_or_assign(entry.Key(), entry.value);
    }
  }
  const auto found = index.find(name);
  return found == index.end() ? Object() : found->second;
}

const Followed& ResourceLookup::Follow(const Object& value) {
  const std::uint32_t number = value.AsReference().number;
  if (number == 0) {
    in_place_ = {value, 0};
    return in_place_;
  }
  const auto [place, is_new] = followed_.try_emplace(number);
  if (is_new) {
    place->second = document_->Follow(value, *arena_);
  }
  return place->second;
}

const Object& ResourceLookup::Category(ResourceCategory category) {
  std::optional<Object>& entries = categories_[static_cast<std::size_t>(category)];
  if (!entries) {
    entries = document_->Resolve(
        resources_.Get(kResourceCategoryKeys[static_cast<std::size_t>(category)]), *arena_);
  }
  return *entries;
}

}  // namespace TarnixTools::pdf
