#include "engines/toolbox/copy/fields/FieldTree.h"

#include <algorithm>

#include "engines/toolbox/SourceDocument.h"
#include "pdf/Limits.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

FieldTree::FieldTree(SourceDocument& source, const Object& form)
    : source_(&source), document_(&source.document()) {
  if (form.IsDictionary()) {
    pdf::Arena arena;
    AddRoots(document_->Resolve(form.Get("Fields"), arena));
    RankCalculations(document_->Resolve(form.Get("CO"), arena));
  }
}

std::uint32_t FieldTree::Find(std::uint32_t number) const {
  const auto found = by_number_.find(number);
  return found == by_number_.end() ? kNone : found->second;
}

// A field may stand in the list beside its parent: the climb leads to the topmost one.
void FieldTree::AddRoots(const Object& fields) {
  for (const Object& item : fields.Items()) {
    const std::uint32_t number = item.AsReference().number;
    if (number == 0 || by_number_.contains(number)) {
      continue;
    }
    pdf::Arena arena;
    const Object dictionary = document_->Load({number, 0}, arena);
    if (IsNode(number, dictionary)) {
      AddClimbed(ClimbFrom(number, dictionary));
    }
  }
}

std::uint32_t FieldTree::Adopt(std::uint32_t number, const Object& widget) {
  if (number != 0 && (by_number_.contains(number) || passed_over_.contains(number))) {
    return Find(number);
  }
  const Climb climb = ClimbFrom(number, widget);
  if (climb.above == kNone && (!climb.has_name || !climb.has_type)) {
    passed_over_.insert(climb.numbers.begin(), climb.numbers.end());
    return kNone;
  }
  return AddClimbed(climb);
}

FieldTree::Climb FieldTree::ClimbFrom(std::uint32_t number, const Object& dictionary) {
  Climb climb;
  pdf::Arena arena;
  Object current = dictionary;
  for (;;) {
    if (number != 0) {
      climb.numbers.push_back(number);
    }
    climb.has_name = climb.has_name || document_->Resolve(current.Get("T"), arena).IsString();
    climb.has_type = climb.has_type || document_->Resolve(current.Get("FT"), arena).IsName();
    number = current.Get("Parent").AsReference().number;
    climb.above = Find(number);
    const bool is_loop =
        std::find(climb.numbers.begin(), climb.numbers.end(), number) != climb.numbers.end();
    if (number == 0 || climb.above != kNone || is_loop || passed_over_.contains(number) ||
        climb.numbers.size() > pdf::limits::kMaxFieldNesting) {
      return climb;
    }
    current = document_->Load({number, 0}, arena);
    if (!IsNode(number, current)) {
      return climb;
    }
  }
}

// Adds what the climb has passed, from the top down, with all that is below. Returns the node where
// it began.
std::uint32_t FieldTree::AddClimbed(const Climb& climb) {
  std::uint32_t node = climb.above;
  for (auto number = climb.numbers.rbegin(); number != climb.numbers.rend(); ++number) {
    AddSubtree(*number, node);
    node = Find(*number);
    if (node == kNone) {
      break;
    }
  }
  return node;
}

void FieldTree::AddSubtree(std::uint32_t number, std::uint32_t parent) {
  if (!by_number_.emplace(number, kNone).second) {
    return;
  }
  waiting_.push_back({number, parent});
  while (!waiting_.empty()) {
    const Waiting place = waiting_.back();
    waiting_.pop_back();
    if (place.parent != kNone && nodes_[place.parent].depth >= pdf::limits::kMaxFieldNesting) {
      continue;
    }
    arena_.Reset();
    const Object dictionary = document_->Load({place.number, 0}, arena_);
    if (IsNode(place.number, dictionary)) {
      AddNode(place, dictionary);
    }
  }
}

void FieldTree::AddNode(const Waiting& place, const Object& dictionary) {
  const auto index = static_cast<std::uint32_t>(nodes_.size());
  const auto kids = ResolveOnce(dictionary.Get("Kids")).Items();
  const Object type = document_->Resolve(dictionary.Get("FT"), arena_);
  Node node;
  node.number = place.number;
  node.parent = place.parent;
  node.is_widget = dictionary.Get("Subtype").IsName("Widget");
  node.is_field = place.parent == kNone || !node.is_widget || !kids.empty() ||
                  document_->Resolve(dictionary.Get("T"), arena_).IsString();
  node.has_type = type.IsName();
  node.is_signature = type.IsName("Sig");
  if (place.parent != kNone) {
    Node& parent = nodes_[place.parent];
    terminal_count_ -= IsTerminal(parent) ? 1 : 0;
    node.depth = parent.depth + 1;
    if (!type.IsName()) {
      node.has_type = parent.has_type;
      node.is_signature = parent.is_signature;
    }
    parent.is_field = parent.has_kids = 1;
    parent.has_field_kids = parent.has_field_kids || node.is_field;
    terminal_count_ += IsTerminal(parent) ? 1 : 0;
  }
  terminal_count_ += IsTerminal(node) ? 1 : 0;
  nodes_.push_back(node);
  by_number_[place.number] = index;
  for (auto kid = kids.rbegin(); kid != kids.rend(); ++kid) {
    const std::uint32_t number = kid->AsReference().number;
    if (number != 0 && by_number_.emplace(number, kNone).second) {
      waiting_.push_back({number, index});
    }
  }
}

// Whether the object may be a field or a widget at all.
bool FieldTree::IsNode(std::uint32_t number, const Object& dictionary) const {
  const pdf::PageTree& pages = source_->pages();
  if (!dictionary.IsDictionary() || pages.IsPage(number) || pages.IsNode(number) ||
      document_->IsCatalogObject(number)) {
    return false;
  }
  const Object subtype = dictionary.Get("Subtype");
  if (subtype.IsName("Widget")) {
    return true;
  }
  return subtype.IsNull() && !source_->parts().annotations().Contains(number) &&
         (dictionary.Has("T") || dictionary.Has("FT") || dictionary.Has("Kids"));
}

// Null for a list that was read before, so that a list that many fields share is read once.
Object FieldTree::ResolveOnce(const Object& value) {
  Object current = value;
  while (current.IsReference()) {
    if (!lists_.insert(current.AsReference().number).second) {
      return {};
    }
    current = document_->Load(current.AsReference(), arena_);
  }
  return current;
}

void FieldTree::RankCalculations(const Object& order) {
  std::uint32_t rank = 0;
  for (const Object& item : order.Items()) {
    const std::uint32_t index = Find(item.AsReference().number);
    if (index != kNone && nodes_[index].calculation_rank == kNone) {
      nodes_[index].calculation_rank = rank++;
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
