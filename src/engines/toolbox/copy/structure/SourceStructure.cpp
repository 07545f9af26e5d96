#include "engines/toolbox/copy/structure/SourceStructure.h"

#include <algorithm>

#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/copy/structure/StructureReader.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

SourceStructure::SourceStructure(SourceDocument& source) : document_(&source.document()) {
  pdf::Arena arena;
  const Object catalog = document_->Catalog(arena);
  const Object marks = document_->Resolve(catalog.Get("MarkInfo"), arena);
  const auto says = [&](const char* key) {
    return document_->Resolve(marks.Get(key), arena).BooleanOr(false);
  };
  mark_info_ = {marks.IsDictionary(), says("Marked"), says("UserProperties"), says("Suspects")};
  if (catalog.Has("StructTreeRoot")) {
    StructureReader(source, *this).Read(catalog.Get("StructTreeRoot"));
  }
}

std::span<const SourceStructure::Item> SourceStructure::ItemsOfPage(
    std::uint32_t page_number) const {
  if (page_number == 0) {
    return {};
  }
  const auto [first, last] =
      std::equal_range(items_.begin(), items_.end(), Item{page_number, 0, 0, 0, 0},
                       [](const Item& a, const Item& b) { return a.page < b.page; });
  return {first, last};
}

std::span<const std::uint32_t> SourceStructure::ItemsOfObject(std::uint32_t number) const {
  if (number == 0) {
    return {};
  }
  const auto first = std::partition_point(by_object_.begin(), by_object_.end(),
                                          [&](auto i) { return items_[i].object < number; });
  const auto last = std::partition_point(first, by_object_.end(),
                                         [&](auto i) { return items_[i].object == number; });
  return {first, last};
}

std::uint32_t SourceStructure::InheritedPage(std::uint32_t index) const {
  const auto found = std::partition_point(inherited_pages_.begin(), inherited_pages_.end(),
                                          [&](const auto& entry) { return entry.first < index; });
  return found != inherited_pages_.end() && found->first == index ? found->second : 0;
}

const SourceStructure::Held* SourceStructure::FindHeld(std::uint32_t index) const {
  const auto found = std::partition_point(held_.begin(), held_.end(),
                                          [&](const Held& held) { return held.index < index; });
  return found != held_.end() && found->index == index ? &*found : nullptr;
}

SourceStructure::Loaded SourceStructure::Load(std::uint32_t index, pdf::Arena& arena) const {
  if (const Held* held = FindHeld(index)) {
    return held->loaded;
  }
  const Object dictionary = document_->Load({elements_[index].number, 0}, arena);
  return {dictionary, KidsOf(dictionary, arena)};
}

}  // namespace TarnixTools::engines::toolbox
