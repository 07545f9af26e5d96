#include "engines/pdfa/checks/NodeWalk.h"

#include <utility>

#include "pdf/Limits.h"

namespace TarnixTools::engines::pdfa {

void NodeWalk::Add(const pdf::Object& value) {
  if (value.IsReference() || value.IsDictionary() || value.IsArray()) {
    waiting_.push_back({value, node_.number, 0, arena_});
  }
}

void NodeWalk::AddItems(const Item& array) {
  if (array.depth >= static_cast<std::size_t>(pdf::limits::kMaxNesting)) {
    return;
  }
  const std::span<const pdf::Object> items = array.value.Items();
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    waiting_.push_back({*item, array.holder, array.depth + 1, array.arena});
  }
}

const pdf::Followed* NodeWalk::Next() {
  while (!waiting_.empty()) {
    Item item = std::move(waiting_.back());
    waiting_.pop_back();
    if (item.value.IsReference()) {
      if (!seen_.insert(item.value.AsReference().number).second) {
        continue;
      }
      item.arena = std::make_shared<pdf::Arena>();
      const pdf::Followed followed = document_->Follow(item.value, *item.arena);
      item.value = followed.value;
      item.holder = followed.number;
    }
    if (item.value.IsArray()) {
      AddItems(item);
    } else if (item.value.IsDictionary()) {
      arena_ = std::move(item.arena);
      node_ = {item.value, item.holder};
      return &node_;
    }
  }
  node_ = {};
  arena_ = nullptr;
  return nullptr;
}

}  // namespace TarnixTools::engines::pdfa
