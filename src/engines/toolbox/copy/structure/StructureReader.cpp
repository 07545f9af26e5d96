#include "engines/toolbox/copy/structure/StructureReader.h"

#include <algorithm>
#include <limits>
#include <tuple>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/SourceDocument.h"
#include "pdf/tree/KeyedTree.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// From here on an element's kids are kept in memory.
constexpr std::size_t kManyKids = 128;
constexpr std::int64_t kMaxKey = std::numeric_limits<std::int32_t>::max();

bool IsElement(const Object& value) {
  const Object type = value.Get("Type");
  return value.IsDictionary() &&
         (type.IsName("StructElem") || (!type.IsName() && value.Get("S").IsName()));
}

}  // namespace

std::span<const Object> KidsOf(const Object& dictionary, pdf::Arena& arena) {
  const Object kids = dictionary.Get("K");
  if (kids.IsArray()) {
    return kids.Items();
  }
  return kids.IsNull() ? std::span<const Object>()
                       : arena.CopyItems(std::span<const Object>(&kids, 1));
}

bool IsMarkedContent(const Object& kid) {
  const Object type = kid.Get("Type");
  return type.IsName("MCR") || (!type.IsName() && kid.Has("MCID"));
}

bool IsObjectReference(const Object& kid) {
  const Object type = kid.Get("Type");
  return type.IsName("OBJR") || (!type.IsName() && kid.Has("Obj") && !IsElement(kid));
}

void StructureReader::Read(const Object& root) {
  pdf::Arena& held_arena = structure_->held_arena_;
  const Object dictionary = document_->Resolve(root, held_arena);
  if (!dictionary.IsDictionary()) {
    return;
  }
  seen_.resize(document_->object_limit());
  if (const std::uint32_t number = root.AsReference().number; number < seen_.size()) {
    seen_[number] = true;
  }
  ReadNames(dictionary);
  ReadParentTreeKeys(dictionary.Get("ParentTree"));
  structure_->elements_.push_back({root.AsReference().number});
  pages_.push_back({});
  const auto kids = KidsOf(dictionary, held_arena);
  structure_->held_.push_back({0, {dictionary, kids}});
  AddKids(0, kids, dictionary.Get("K").IsReference());
  while (!waiting_.empty()) {
    const Kid kid = waiting_.back();
    waiting_.pop_back();
    ReadKid(kid);
  }
  Sum();
  Sort();
}

void StructureReader::ReadNames(const Object& root) {
  pdf::Arena& held_arena = structure_->held_arena_;
  structure_->roles_ = NamedValues(document_->Resolve(root.Get("RoleMap"), held_arena));
  structure_->classes_ = NamedValues(document_->Resolve(root.Get("ClassMap"), held_arena));
  rows_.insert("TR");
  for (const std::string_view name : structure_->roles_.names()) {
    if (MeaningOf(structure_->roles_, name) == "TR") {
      rows_.insert(name);
    }
  }
}

// Only how far the keys go: what they lead to, the tree itself says better.
void StructureReader::ReadParentTreeKeys(const Object& root) {
  pdf::ForEachInTree(*document_, root, "Nums", [this](const Object& key, const Object&) {
    if (const std::int64_t value = key.IntegerOr(-1); value < kMaxKey) {
      structure_->key_count_ = std::max(structure_->key_count_, value + 1);
    }
  });
}

void StructureReader::ReadKid(const Kid& kid) {
  const std::uint32_t number = kid.value.AsReference().number;
  if (number == 0) {
    AddElement(kid, kid.value);
    return;
  }
  if (number >= seen_.size() || seen_[number]) {
    return;
  }
  seen_[number] = true;
  arena_.Reset();
  const Object value = document_->Load({number, 0}, arena_);
  if (value.IsArray()) {
    if (kid.is_all) {
      AddKidsApart(kid.parent, number);
    }
  } else if (IsElement(value) && !source_->pages().IsPage(number)) {
    AddElement(kid, value);
  } else {
    AddItem(kid.parent, kid.position, value);
  }
}

void StructureReader::AddElement(const Kid& kid, Object dictionary) {
  std::vector<Element>& elements = structure_->elements_;
  if (elements.size() + structure_->items_.size() >= limits::kMaxStructureItems) {
    return;
  }
  Element element;
  element.number = kid.value.AsReference().number;
  element.parent = kid.parent;
  element.position = kid.position;
  element.is_row = rows_.contains(dictionary.Get("S").Text());
  const auto index = static_cast<std::uint32_t>(elements.size());
  elements.push_back(element);
  const Object page = dictionary.Get("Pg");
  const bool has_page = IsPage(page);
  pages_.push_back({has_page ? page.AsReference().number : pages_[kid.parent].number, has_page});
  if (element.number != 0) {
    source_->Bar(element.number);
  }
  if (const Object id = dictionary.Get("ID"); id.IsString()) {
    structure_->ids_.emplace_back(index, id.Text());
  }
  auto kids = KidsOf(dictionary, arena_);
  if (element.number == 0 || kids.size() > kManyKids ||
      std::any_of(kids.begin(), kids.end(), IsElement)) {
    pdf::Arena& held_arena = structure_->held_arena_;
    if (element.number != 0) {
      dictionary = document_->Load({element.number, 0}, held_arena);
    }
    kids = KidsOf(dictionary, held_arena);
    structure_->held_.push_back({index, {dictionary, kids}});
  }
  AddKids(index, kids, dictionary.Get("K").IsReference());
}

void StructureReader::AddKids(std::uint32_t index, std::span<const Object> kids, bool is_all) {
  for (auto position = static_cast<std::uint32_t>(kids.size()); position-- > 0;) {
    const Object& kid = kids[position];
    if (kid.IsReference() || IsElement(kid)) {
      waiting_.push_back({index, position, kid, is_all});
    } else {
      AddItem(index, position, kid);
    }
  }
}

// An element whose /K is a reference to an array. It was the only kid so far and is the last
// element that was added, so the order in held_ stays right.
void StructureReader::AddKidsApart(std::uint32_t index, std::uint32_t array_number) {
  pdf::Arena& held_arena = structure_->held_arena_;
  std::vector<SourceStructure::Held>& held = structure_->held_;
  if (held.back().index != index) {
    const std::uint32_t number = structure_->elements_[index].number;
    held.push_back({index, {document_->Load({number, 0}, held_arena), {}}});
  }
  held.back().loaded.kids = document_->Load({array_number, 0}, held_arena).Items();
  AddKids(index, held.back().loaded.kids, false);
}

void StructureReader::AddItem(std::uint32_t index, std::uint32_t position, const Object& kid) {
  std::vector<Item>& items = structure_->items_;
  if (index == 0 || structure_->elements_.size() + items.size() >= limits::kMaxStructureItems) {
    return;  // the root holds elements only
  }
  Item item{pages_[index].number, index, position, 0, 0};
  if (const Object page = kid.Get("Pg"); IsPage(page)) {
    item.page = page.AsReference().number;
  } else if (!pages_[index].is_own && item.page != 0) {
    structure_->inherited_pages_.emplace_back(index, item.page);
  }
  if (IsObjectReference(kid)) {
    item.object = kid.Get("Obj").AsReference().number;
    item.mcid = SourceStructure::kWholeObject;
    if (item.object != 0) {
      items.push_back(item);
    }
    return;
  }
  const bool is_described = IsMarkedContent(kid);
  const std::int64_t mcid = (is_described ? kid.Get("MCID") : kid).IntegerOr(-1);
  if (mcid >= 0 && mcid <= std::numeric_limits<std::int32_t>::max()) {
    item.object = is_described ? kid.Get("Stm").AsReference().number : 0;
    item.mcid = static_cast<std::int32_t>(mcid);
    items.push_back(item);
  }
}

bool StructureReader::IsPage(const Object& value) const {
  return value.IsReference() && source_->pages().IsPage(value.AsReference().number);
}

void StructureReader::Sum() {
  std::vector<Element>& elements = structure_->elements_;
  for (const Item& item : structure_->items_) {
    ++elements[item.element].item_count;
  }
  for (auto i = static_cast<std::uint32_t>(elements.size()); i-- > 0;) {
    Element& element = elements[i];
    element.end = std::max(element.end, i + 1);
    if (i != 0) {
      Element& parent = elements[element.parent];
      parent.end = std::max(parent.end, element.end);
      parent.item_count += element.item_count;
    }
  }
}

void StructureReader::Sort() {
  std::vector<Item>& items = structure_->items_;
  std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
    return std::tie(a.page, a.element, a.position) < std::tie(b.page, b.element, b.position);
  });
  items.shrink_to_fit();
  auto& inherited = structure_->inherited_pages_;
  std::sort(inherited.begin(), inherited.end());
  inherited.erase(std::unique(inherited.begin(), inherited.end()), inherited.end());
  structure_->elements_.shrink_to_fit();
  std::vector<std::uint32_t>& by_object = structure_->by_object_;
  for (std::uint32_t i = 0; i < items.size(); ++i) {
    if (items[i].object != 0) {
      by_object.push_back(i);
    }
  }
  std::sort(by_object.begin(), by_object.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::tie(items[a].object, items[a].element, items[a].position) <
           std::tie(items[b].object, items[b].element, items[b].position);
  });
}

}  // namespace TarnixTools::engines::toolbox
