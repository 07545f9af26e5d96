#include "pdf/tree/PageTree.h"

#include <algorithm>
#include <unordered_map>

#include "pdf/Error.h"
#include "pdf/Limits.h"

namespace TarnixTools::pdf {

PageTree::PageTree(Document& document) : document_(&document) {
  Walk();
  const bool was_rebuilt = document.is_rebuilt();
  if ((has_holes_ || (pages_.empty() && document.findings().count() > 0)) && !was_rebuilt) {
    document.Rebuild();
    Walk();
  }
  if (pages_.empty() && (has_holes_ || document.findings().count() > 0)) {
    Salvage();
  } else if (pages_.size() < claimed_count_ && (!holes_.empty() || document.is_rebuilt())) {
    FillHoles();
  }
}

namespace {

// Copies of the values that a page may inherit, kept with the tree.
Object KeepValue(const Object& value, Arena& arena);

Object KeepArray(const Object& array, Arena& arena) {
  std::vector<Object> items;
  for (const Object& item : array.Items()) {
    items.push_back(KeepValue(item, arena));
  }
  return Object::Array(arena.CopyItems(std::span<const Object>(items)));
}

// The parser bounds nesting, so this recursion is bounded too.
Object KeepValue(const Object& value, Arena& arena) {
  switch (value.kind()) {
    case Object::Kind::kArray:
      return KeepArray(value, arena);
    case Object::Kind::kDictionary: {
      std::vector<DictionaryEntry> entries;
      for (const DictionaryEntry& entry : value.Entries()) {
        entries.push_back({KeepValue(entry.key, arena), KeepValue(entry.value, arena)});
      }
      return Object::Dictionary(arena.CopyItems(std::span<const DictionaryEntry>(entries)));
    }
    case Object::Kind::kString:
      return Object::String(arena.CopyText(value.Text()), value.is_hex());
    case Object::Kind::kName:
      return Object::Name(arena.CopyText(value.Text()));
    case Object::Kind::kReal:
      return Object::Real(arena.CopyText(value.Text()));
    default:
      return value;
  }
}

}  // namespace

void PageTree::Walk() {
  nodes_.clear();
  pages_.clear();
  page_numbers_.clear();
  node_numbers_.clear();
  holes_.clear();
  claimed_count_ = 0;
  has_holes_ = false;
  nodes_.emplace_back();  // node 0: above the root
  Arena scratch;
  const Object root_value = document_->Catalog(scratch).Get("Pages");
  const Object root = document_->Resolve(root_value, scratch);
  if (!root.IsDictionary()) {
    has_holes_ = true;
    return;
  }
  if (!root.Has("Kids") && root.Get("Type").IsName("Page")) {  // a single page in place of the tree
    pages_.push_back({root_value.AsReference().number, 0, true, KeepValue(root, arena_)});
    page_numbers_.insert(root_value.AsReference().number);
    return;
  }
  const std::int64_t count = document_->Resolve(root.Get("Count"), scratch).IntegerOr(-1);
  claimed_count_ = static_cast<std::size_t>(
      std::clamp(count, std::int64_t{0}, static_cast<std::int64_t>(limits::kMaxPages)));
  WalkBelow(root, root_value.AsReference().number);
  if (count != static_cast<std::int64_t>(pages_.size())) {
    document_->findings().Add(FindingCode::kPageCountWrong);
  }
}

void PageTree::WalkBelow(const Object& root, std::uint32_t root_number) {
  std::vector<Level> levels;
  Arena scratch;
  node_numbers_.insert(root_number);
  levels.push_back(OpenNode(root, 0, root_number));
  while (!levels.empty()) {
    Level& level = levels.back();
    if (level.next == level.kids.size()) {
      levels.pop_back();
      continue;
    }
    const Object kid = level.kids[level.next++];
    const std::uint32_t number = kid.AsReference().number;
    scratch.Reset();
    const Object dictionary = document_->Resolve(kid, scratch);
    if (!dictionary.IsDictionary()) {
      document_->findings().Add(FindingCode::kPageTreeDamaged, number);
      has_holes_ = true;
      AddHole(kid, level.node);
    } else if (dictionary.Has("Kids")) {
      if (number != 0 && !node_numbers_.insert(number).second) {
        document_->findings().Add(FindingCode::kPageTreeLoop, number);
        AddHole(kid, level.node);
      } else {
        levels.push_back(OpenNode(dictionary, level.node, number));
      }
    } else if (!dictionary.Get("Type").IsName("Pages")) {  // else an empty node
      AddPage(dictionary, level.node, number);
    }
  }
}

PageTree::Level PageTree::OpenNode(const Object& dictionary, std::uint32_t parent,
                                   std::uint32_t number) {
  const auto index = static_cast<std::uint32_t>(nodes_.size());
  Node node = nodes_[parent];
  node.number = number;
  for (std::size_t i = 0; i < kInheritablePageKeys.size(); ++i) {
    const Object own = dictionary.Get(kInheritablePageKeys[i]);
    if (!IsAbsent(own)) {
      node.attributes[i] = {KeepValue(own, arena_), index};
    }
  }
  nodes_.push_back(node);
  Level level;
  level.node = index;
  Arena scratch;
  for (const Object& kid : document_->Resolve(dictionary.Get("Kids"), scratch).Items()) {
    level.kids.push_back(KeepValue(kid, arena_));
  }
  return level;
}

void PageTree::AddPage(const Object& dictionary, std::uint32_t parent, std::uint32_t number) {
  if (pages_.size() >= limits::kMaxPages) {
    throw Error(ErrorCode::kLimitExceeded, "too many pages");
  }
  pages_.push_back({number, parent, dictionary.Has("Annots"),
                    number == 0 ? KeepValue(dictionary, arena_) : Object()});
  if (number != 0) {
    page_numbers_.insert(number);
  }
}

void PageTree::AddHole(const Object& kid, std::uint32_t node) {
  holes_.push_back({pages_.size(), node, kid.IsReference()});
}

// Pages outside the tree whose parent belongs to it, in file order.
std::vector<PageTree::Page> PageTree::FindLostPages() {
  std::unordered_map<std::uint32_t, std::uint32_t> nodes;  // by object number
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    nodes.emplace(nodes_[i].number, static_cast<std::uint32_t>(i));
  }
  std::vector<Page> lost;
  Arena scratch;
  for (const std::uint32_t number : document_->SalvagedPages()) {
    scratch.Reset();
    const Object page = document_->Load({number, 0}, scratch);
    const auto node = nodes.find(page.Get("Parent").AsReference().number);
    if (!page_numbers_.contains(number) && node != nodes.end() && node->first != 0) {
      lost.push_back({number, node->second, true, Object()});
    }
  }
  return lost;
}

// Puts pages in the places of kids that could not be used, until there are as many as claimed.
void PageTree::FillHoles() {
  std::vector<Page> lost = FindLostPages();
  lost.resize(std::min(lost.size(), claimed_count_ - pages_.size()));
  std::size_t blanks = claimed_count_ - pages_.size() - lost.size();
  for (const Page& page : lost) {
    page_numbers_.insert(page.number);
    document_->findings().Add(FindingCode::kPageAdopted, page.number);
  }
  const std::vector<Page> walked = std::move(pages_);
  pages_.clear();
  auto hole = holes_.begin();
  auto adopted = lost.begin();
  for (std::size_t i = 0; i <= walked.size(); ++i) {
    for (; hole != holes_.end() && hole->position == i; ++hole) {
      if (adopted != lost.end() && adopted->node == hole->node) {
        pages_.push_back(*adopted++);
      } else if (hole->is_lost_object && blanks > 0) {
        --blanks;
        pages_.push_back({0, hole->node, false, Object::Dictionary({})});
        document_->findings().Add(FindingCode::kPageBlank);
      }
    }
    if (i < walked.size()) {
      pages_.push_back(walked[i]);
    }
  }
  pages_.insert(pages_.end(), adopted, lost.end());  // those whose place is not known
}

// The last resort: every page object in the file, in the order they stand there.
void PageTree::Salvage() {
  for (const std::uint32_t number : document_->SalvagedPages()) {
    pages_.push_back({number, 0, true, Object()});
    page_numbers_.insert(number);
  }
  if (pages_.empty()) {
    throw Error(ErrorCode::kNoPages, "no page can be found");
  }
  document_->findings().Add(FindingCode::kPagesSalvaged);
}

Object PageTree::Load(const Page& page, Arena& arena) const {
  return page.number == 0 ? page.direct : document_->Resolve(Object::Ref({page.number, 0}), arena);
}

bool PageTree::IsAbsent(const Object& value) const {
  if (!value.IsReference()) {
    return value.IsNull();
  }
  Arena scratch;
  return document_->Resolve(value, scratch).IsNull();
}

Object PageTree::Attribute(const Page& page, InheritableKey key, Arena& arena) const {
  return Attribute(page, Load(page, arena), key, arena);
}

Object PageTree::Attribute(const Page& page, const Object& dictionary, InheritableKey key,
                           Arena& arena) const {
  const auto i = static_cast<std::size_t>(key);
  const Object own = document_->Resolve(dictionary.Get(kInheritablePageKeys[i]), arena);
  return own.IsNull() ? document_->Resolve(nodes_[page.node].attributes[i].value, arena) : own;
}

PageTree::Given PageTree::FindAttribute(const Page& page, const Object& dictionary,
                                        InheritableKey key) const {
  const auto i = static_cast<std::size_t>(key);
  const Object own = dictionary.Get(kInheritablePageKeys[i]);
  return IsAbsent(own) ? nodes_[page.node].attributes[i] : Given{own, 0};
}

}  // namespace TarnixTools::pdf
