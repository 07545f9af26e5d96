#include "pdf/content/ResourceGraph.h"

#include <algorithm>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/content/Appearances.h"

namespace TarnixTools::pdf {

namespace {

// What an object is looked at as stands above the bits of its number: its kind, or a category above
// the kinds. The owner of resources stands above that.
constexpr std::uint64_t kFirstCategory = 32;
constexpr int kRoleShift = 23;
constexpr int kOwnerShift = 29;
static_assert(limits::kMaxObjectNumber < (1U << kRoleShift));

// What cannot be but a stream, and so is an object of its own.
constexpr bool IsStream(ResourceKind kind) {
  return (HasContent(kind) && kind != ResourceKind::kPage) || kind == ResourceKind::kImage ||
         kind == ResourceKind::kImageMask || kind == ResourceKind::kAlternate;
}

constexpr bool HasScope(ResourceKind kind) {
  return HasContent(kind) || kind == ResourceKind::kType3Font;
}

}  // namespace

void ResourceGraph::AddPage(const PageTree& pages, std::size_t page_index) {
  pages_ = &pages;
  page_index_ = page_index;
  Begin({}, {.kind = ResourceKind::kPage, .category = {}}, {});
}

void ResourceGraph::AddResource(ResourceCategory category, const Object& entry,
                                const ResourceScope& user) {
  Begin(entry, {.kind = ResourceKind::kUnknown, .category = category}, user);
}

void ResourceGraph::AddContent(const ContentPlace& content, const ResourceScope& user) {
  Begin(Object::Ref({.number = content.number, .generation = 0}),
        {.kind = content.kind, .category = {}}, user);
}

void ResourceGraph::Begin(const Object& value, const Role& role, const ResourceScope& user) {
  waiting_.assign(1, {});
  Item& first = waiting_.back();
  first.value = value;
  first.role = role;
  first.scope = user;
  first.arena = std::make_shared<Arena>();
  first.scope_arena = first.arena;
  added_ = 0;
  is_expanded_ = true;
}

const ResourceNode* ResourceGraph::Next() {
  if (!std::exchange(is_expanded_, true)) {
    const std::size_t before = waiting_.size();
    Expand();
    std::reverse(waiting_.begin() + static_cast<std::ptrdiff_t>(before), waiting_.end());
  }
  while (!waiting_.empty()) {
    item_ = std::move(waiting_.back());
    waiting_.pop_back();
    if (item_.role.kind == ResourceKind::kPage) {
      TakePage();
    } else if (!Take()) {
      continue;
    }
    is_expanded_ = false;
    return &node_;
  }
  return nullptr;
}

void ResourceGraph::TakePage() {
  const PageTree::Page& page = pages_->pages()[page_index_];
  arena_ = std::make_shared<Arena>();
  scope_arena_ = arena_;
  has_resources_ = true;
  node_ = {};
  node_.kind = ResourceKind::kPage;
  node_.number = page.number;
  node_.value = pages_->Load(page, *arena_);
  node_.scope = ScopeOfPage(*document_, *pages_, page_index_, *arena_);
}

// False for what was told already, and for what readers pass over.
bool ResourceGraph::Take() {
  const std::uint32_t first = item_.value.AsReference().number;
  if (IsKnown(item_.role, first, item_.scope.owner)) {
    return false;
  }
  arena_ = first != 0 ? std::make_shared<Arena>() : item_.arena;
  const Followed found = document_->Follow(item_.value, *arena_);
  node_ = {};
  node_.kind = KindOfValue(found.value);
  node_.number = found.number;
  node_.user = item_.user;
  node_.name = item_.name;
  node_.value = found.value;
  FindScope();
  const bool is_known =
      found.number != first && IsKnown(item_.role, found.number, item_.scope.owner);
  Note(first);
  Note(found.number);
  return !is_known && node_.kind != ResourceKind::kUnknown &&
         !(IsStream(node_.kind) && found.number == 0);
}

void ResourceGraph::FindScope() {
  has_resources_ = HasScope(node_.kind) && Get("Resources").IsDictionary();
  node_.scope = has_resources_
                    ? ScopeOf(*document_, node_.value, node_.number, item_.scope, *arena_)
                    : item_.scope;
  scope_arena_ = has_resources_ ? arena_ : item_.scope_arena;
}

ResourceKind ResourceGraph::KindOfValue(const Object& value) const {
  const Role& role = item_.role;
  const bool is_color_space =
      role.kind == ResourceKind::kColorSpace || role.category == ResourceCategory::kColorSpace;
  if (is_color_space ? !value.IsArray() : !value.IsDictionary()) {
    return ResourceKind::kUnknown;
  }
  return role.category ? KindOf(*document_, *role.category, value) : role.kind;
}

std::uint64_t ResourceGraph::KeyOf(const Role& role, std::uint32_t number) {
  const std::uint64_t bits = role.category
                                 ? kFirstCategory + static_cast<std::uint64_t>(*role.category)
                                 : static_cast<std::uint64_t>(role.kind);
  return bits << kRoleShift | number;
}

// What is written in place is looked at with the object that it stands in.
bool ResourceGraph::IsKnown(const Role& role, std::uint32_t number, std::uint32_t owner) const {
  const auto known = seen_.find(KeyOf(role, number));
  return number != 0 && known != seen_.end() &&
         (!known->second ||
          seen_in_scope_.contains(known->first | std::uint64_t{owner} << kOwnerShift));
}

void ResourceGraph::Note(std::uint32_t number) {
  if (number == 0) {
    return;
  }
  const std::uint64_t key = KeyOf(item_.role, number);
  const bool is_dependent = HasScope(node_.kind) && !has_resources_;
  seen_[key] = is_dependent;
  if (is_dependent) {
    seen_in_scope_.insert(key | std::uint64_t{item_.scope.owner} << kOwnerShift);
  }
}

void ResourceGraph::Expand() {
  switch (node_.kind) {
    case ResourceKind::kPage:
    case ResourceKind::kForm:
    case ResourceKind::kTilingPattern:
    case ResourceKind::kSoftMaskGroup:
    case ResourceKind::kGlyph:
    case ResourceKind::kAppearance:
      ExpandContent();
      break;
    case ResourceKind::kType3Font:
      ExpandGlyphs();
      break;
    case ResourceKind::kImage:
    case ResourceKind::kImageMask:
    case ResourceKind::kAlternate:
      ExpandImage();
      break;
    case ResourceKind::kShading:
      Add(node_.value.Get("ColorSpace"), ResourceKind::kColorSpace);
      break;
    case ResourceKind::kShadingPattern:
      Add(node_.value.Get("Shading"), ResourceKind::kShading);
      Add(node_.value.Get("ExtGState"), ResourceKind::kGraphicsState);
      break;
    case ResourceKind::kColorSpace:
      ExpandColorSpace();
      break;
    case ResourceKind::kGraphicsState:
      ExpandGraphicsState();
      break;
    default:
      break;
  }
}

void ResourceGraph::ExpandContent() {
  ExpandResources();
  Add(Get("Group").Get("CS"), ResourceKind::kColorSpace);
  if (node_.kind == ResourceKind::kPage) {
    ExpandAnnotations();
  }
}

// Resources that several share are gone through once; without any of its own, something uses those
// that were gone through with its user.
void ResourceGraph::ExpandResources() {
  if (!has_resources_ || !seen_resources_.insert(node_.scope.owner).second) {
    return;
  }
  for (std::size_t i = 0; i < kResourceCategoryKeys.size(); ++i) {
    const Object named = Resolve(node_.scope.resources.Get(kResourceCategoryKeys[i]));
    for (const DictionaryEntry& entry : named.Entries()) {
      AddEntry(entry.value, static_cast<ResourceCategory>(i), entry.Key());
    }
  }
}

void ResourceGraph::ExpandAnnotations() {
  Arena scratch;
  for (const Object& annotation : Get("Annots").Items()) {
    scratch.Reset();
    const Object dictionary = document_->Resolve(annotation, scratch);
    for (const std::uint32_t number : AppearancesOf(*document_, dictionary)) {
      Add(Object::Ref({.number = number, .generation = 0}), ResourceKind::kAppearance);
    }
  }
}

void ResourceGraph::ExpandGlyphs() {
  ExpandResources();
  for (const DictionaryEntry& glyph : Get("CharProcs").Entries()) {
    Add(glyph.value, ResourceKind::kGlyph, glyph.Key());
  }
}

void ResourceGraph::ExpandImage() {
  Add(node_.value.Get("ColorSpace"), ResourceKind::kColorSpace);
  Add(node_.value.Get("SMask"), ResourceKind::kImageMask);
  Add(node_.value.Get("Mask"), ResourceKind::kImageMask);
  for (const Object& alternate : Get("Alternates").Items()) {
    Add(Resolve(alternate).Get("Image"), ResourceKind::kAlternate);
  }
}

void ResourceGraph::ExpandGraphicsState() {
  const ContentPlace group = SoftMaskOf(*document_, node_.value, *arena_);
  Add(Object::Ref({.number = group.number, .generation = 0}), group.kind);
  const Object font = Get("Font");
  if (!font.Items().empty()) {
    AddEntry(font.Items()[0], ResourceCategory::kFont);
  }
}

// Of the spaces within it (ISO 32000-2, 8.6.5.5 and 8.6.6).
void ResourceGraph::ExpandColorSpace() {
  const auto items = node_.value.Items();
  if (items.size() < 2) {
    return;
  }
  const Object family = Resolve(items[0]);
  if (family.IsName("Indexed") || family.IsName("Pattern")) {
    Add(items[1], ResourceKind::kColorSpace);
  } else if (family.IsName("ICCBased")) {
    Add(Resolve(items[1]).Get("Alternate"), ResourceKind::kColorSpace);
  } else if (items.size() > 2 && (family.IsName("Separation") || family.IsName("DeviceN"))) {
    Add(items[2], ResourceKind::kColorSpace);
    if (items.size() > 4) {
      ExpandColorants(Resolve(items[4]));
    }
  }
}

void ResourceGraph::ExpandColorants(const Object& attributes) {
  for (const DictionaryEntry& colorant : Resolve(attributes.Get("Colorants")).Entries()) {
    Add(colorant.value, ResourceKind::kColorSpace, colorant.Key());
  }
  Add(Resolve(attributes.Get("Process")).Get("ColorSpace"), ResourceKind::kColorSpace);
}

void ResourceGraph::Add(const Object& value, ResourceKind kind, std::string_view name) {
  AddItem(value, {.kind = kind, .category = {}}, name);
}

void ResourceGraph::AddEntry(const Object& value, ResourceCategory category,
                             std::string_view name) {
  AddItem(value, {.kind = ResourceKind::kUnknown, .category = category}, name);
}

void ResourceGraph::AddItem(const Object& value, const Role& role, std::string_view name) {
  const bool leads_somewhere = value.IsReference() || value.IsDictionary() || value.IsArray();
  if (!leads_somewhere || IsKnown(role, value.AsReference().number, node_.scope.owner)) {
    return;
  }
  if (item_.depth >= limits::kMaxResourceDepth || added_ >= limits::kMaxResourcesOfPage) {
    is_complete_ = false;
    return;
  }
  ++added_;
  waiting_.push_back({.value = value,
                      .role = role,
                      .depth = item_.depth + 1,
                      .user = node_.number != 0 ? node_.number : node_.user,
                      .name = name,
                      .scope = node_.scope,
                      .arena = arena_,
                      .scope_arena = scope_arena_});
}

}  // namespace TarnixTools::pdf
