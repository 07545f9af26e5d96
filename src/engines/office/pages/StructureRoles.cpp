#include "engines/office/pages/StructureRoles.h"

#include <algorithm>
#include <tuple>

#include "engines/office/Limits.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::office {

using pdf::Document;
using pdf::Object;

namespace {

constexpr int kMaxRoleSteps = 32;
constexpr std::int64_t kMaxMark = 1'000'000;

std::string TextOf(Document& document, const Object& value, pdf::Arena& arena) {
  const Object text = document.Resolve(value, arena);
  const bool is_usable = text.IsString() && text.Text().size() <= limits::kMaxEntryText;
  return is_usable ? pdf::TextStringToUtf8(text.Text()) : std::string();
}

// The element is around those that were taken before it.
void SetPlaceInTable(std::string_view type, std::uint32_t element, StructureRole& role) {
  if (role.table != 0) {
    return;
  }
  if (type == "Table") {
    role.table = element;
  } else if (type == "TR" && role.row == 0) {
    role.row = element;
  } else if ((type == "TD" || type == "TH") && role.row == 0 && role.cell == 0) {
    role.cell = element;
  }
}

}  // namespace

StructureRoles::StructureRoles(Document& document, const Destinations& destinations)
    : destinations_(&destinations) {
  TextNumber("");
  const Object root = document.Resolve(document.Catalog(arena_).Get("StructTreeRoot"), arena_);
  if (root.IsDictionary()) {
    Read(document, root);
  }
  std::sort(items_.begin(), items_.end(), [](const Item& a, const Item& b) {
    return std::tie(a.page, a.mark, a.order) < std::tie(b.page, b.mark, b.order);
  });
  waiting_ = {};
  destinations_ = nullptr;
  seen_ = {};
  arena_.Reset();
}

void StructureRoles::Read(Document& document, const Object& root) {
  seen_.resize(document.object_limit());
  ReadRoles(document, root.Get("RoleMap"));
  elements_.push_back({});
  AddKids(document, 0, root.Get("K"));
  while (!waiting_.empty() && elements_.size() + items_.size() < limits::kMaxStructureItems) {
    const Kid kid = waiting_.back();
    waiting_.pop_back();
    ReadKid(document, kid);
  }
}

void StructureRoles::ReadRoles(Document& document, const Object& map) {
  for (const pdf::DictionaryEntry& entry : document.Resolve(map, arena_).Entries()) {
    const Object role = document.Resolve(entry.value, arena_);
    if (role.IsName()) {
      role_map_.try_emplace(std::string(entry.Key()), role.Text());
    }
  }
}

void StructureRoles::ReadKid(Document& document, const Kid& kid) {
  const std::uint32_t number = kid.value.AsReference().number;
  if (number != 0) {
    if (number >= seen_.size() || seen_[number]) {
      return;
    }
    seen_[number] = true;
  }
  const Object value = document.Resolve(kid.value, arena_);
  const Object type = document.Resolve(value.Get("Type"), arena_);
  if (value.IsArray()) {
    AddKids(document, kid.parent, value);
  } else if (value.IsDictionary() && !type.IsName("MCR") && !type.IsName("OBJR") &&
             value.Has("S")) {
    AddElement(document, kid, value);
  } else {
    AddItem(kid.parent, value);
  }
}

void StructureRoles::AddElement(Document& document, const Kid& kid, const Object& dictionary) {
  const Element& parent = elements_[kid.parent];
  if (parent.depth >= limits::kMaxStructureDepth) {
    return;
  }
  Element element{.parent = kid.parent, .depth = parent.depth + 1, .page = parent.page};
  element.type = TextNumber(MeaningOf(document.Resolve(dictionary.Get("S"), arena_).Text()));
  element.alternate = TextNumber(TextOf(document, dictionary.Get("Alt"), arena_));
  element.language = TextNumber(TextOf(document, dictionary.Get("Lang"), arena_));
  if (const auto page = destinations_->IndexOf(dictionary.Get("Pg").AsReference().number)) {
    element.page = page;
  }
  has_tables_ = has_tables_ || texts_[element.type] == "TR";
  const auto index = static_cast<std::uint32_t>(elements_.size());
  elements_.push_back(element);
  AddKids(document, index, dictionary.Get("K"));
}

// The last of them first, so that the first is taken first.
void StructureRoles::AddKids(Document& document, std::uint32_t parent, const Object& kids) {
  const Object value = kids.IsReference() ? kids : document.Resolve(kids, arena_);
  if (!value.IsArray()) {
    if (!value.IsNull()) {
      waiting_.push_back({parent, value});
    }
    return;
  }
  const auto items = value.Items();
  for (auto item = items.rbegin(); item != items.rend(); ++item) {
    waiting_.push_back({parent, *item});
  }
}

// Content of a form has marks of its own, which say nothing of the page's.
void StructureRoles::AddItem(std::uint32_t parent, const Object& kid) {
  const Element& element = elements_[parent];
  std::optional<std::uint32_t> page = element.page;
  std::int64_t mark = kid.IntegerOr(-1);
  if (kid.IsDictionary()) {
    if (kid.Has("Stm")) {
      return;
    }
    mark = kid.Get("MCID").IntegerOr(-1);
    if (const auto own = destinations_->IndexOf(kid.Get("Pg").AsReference().number)) {
      page = own;
    }
  }
  if (page && parent != 0 && mark >= 0 && mark <= kMaxMark) {
    items_.push_back({*page, static_cast<std::uint32_t>(mark), parent,
                      static_cast<std::uint32_t>(items_.size())});
  }
}

std::string_view StructureRoles::MeaningOf(std::string_view type) const {
  for (int i = 0; i < kMaxRoleSteps; ++i) {
    const auto found = role_map_.find(type);
    if (found == role_map_.end() || found->second == type) {
      break;
    }
    type = found->second;
  }
  return type;
}

std::uint32_t StructureRoles::TextNumber(std::string_view text) {
  const auto found = text_numbers_.find(text);
  if (found != text_numbers_.end()) {
    return found->second;
  }
  const auto number = static_cast<std::uint32_t>(texts_.size());
  texts_.emplace_back(text);
  text_numbers_.emplace(text, number);
  return number;
}

std::vector<StructureRole> StructureRoles::OfPage(std::uint32_t page_index) const {
  const auto first = std::partition_point(items_.begin(), items_.end(),
                                          [&](const Item& item) { return item.page < page_index; });
  const auto last = std::partition_point(first, items_.end(),
                                         [&](const Item& item) { return item.page <= page_index; });
  std::vector<StructureRole> roles;
  if (first == last || std::prev(last)->mark >= limits::kMaxMarksOfPage) {
    return roles;
  }
  roles.resize(std::prev(last)->mark + std::size_t{1});
  for (auto item = first; item != last; ++item) {
    StructureRole& role = roles[item->mark];
    if (!role.path.empty()) {
      continue;
    }
    role.element = item->element;
    role.order = item->order;
    for (std::uint32_t at = item->element; at != 0; at = elements_[at].parent) {
      const Element& element = elements_[at];
      role.path.push_back(texts_[element.type]);
      SetPlaceInTable(texts_[element.type], at, role);
      role.description = role.description.empty() ? texts_[element.alternate] : role.description;
      role.language = role.language.empty() ? texts_[element.language] : role.language;
    }
    std::reverse(role.path.begin(), role.path.end());
  }
  return roles;
}

}  // namespace TarnixTools::engines::office
