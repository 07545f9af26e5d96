#include "pdf/tree/PageTree.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {

PageTree::PageTree(Document& document)
    : document_(&document), is_xref_known_(!document.is_rebuilt()) {
  Walk();
  if (!document.is_rebuilt() && IsWorthRebuilding()) {
    document.Rebuild();
    Walk();
  }
  if (pages_.empty() && (has_holes_ || document.findings().count() > 0)) {
    Salvage();
  } else if (LostCount() > 0 ||
             (pages_.size() < claimed_count_ && (!holes_.empty() || document.is_rebuilt()))) {
    FillHoles();
  }
}

// A kid that is null, or an object that the cross-reference knows nothing of, is no page, unless
// the tree claims to have one more.
bool PageTree::IsWorthRebuilding() const {
  return !has_root_ || LostCount() > 0 || (has_holes_ && pages_.size() < claimed_count_) ||
         (pages_.empty() && document_->findings().count() > 0);
}

std::size_t PageTree::LostCount() const {
  return static_cast<std::size_t>(std::count_if(
      holes_.begin(), holes_.end(), [](const Hole& hole) { return hole.loss == Loss::kCertain; }));
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
  kid_lists_.clear();
  holes_.clear();
  claimed_count_ = 0;
  has_root_ = true;
  has_holes_ = false;
  nodes_.emplace_back();  // node 0: above the root
  Arena scratch;
  const Object root_value = document_->Catalog(scratch).Get("Pages");
  const Object root = document_->Resolve(root_value, scratch);
  if (!root.IsDictionary()) {
    has_root_ = false;
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
      AddHole({pages_.size(), level.node, LossOf(kid)}, number);
    } else if (dictionary.Has("Kids")) {
      if (number != 0 && !node_numbers_.insert(number).second) {
        document_->findings().Add(FindingCode::kPageTreeLoop, number);
        holes_.push_back({pages_.size(), level.node, Loss::kPossible});
      } else {
        levels.push_back(OpenNode(dictionary, level.node, number));
      }
    } else if (!dictionary.Get("Type").IsName("Pages")) {
      AddPage(dictionary, level.node, number);
    } else if (document_->Resolve(dictionary.Get("Count"), scratch).IntegerOr(0) > 0) {
      levels.push_back(OpenNode(dictionary, level.node, number));  // a node without its kids
      AddHole({pages_.size(), levels.back().node, Loss::kNone, true}, number);
    }
  }
}

// Of a kid that is no dictionary. One that is null is no page, and neither is one that a readable
// cross-reference does not know.
PageTree::Loss PageTree::LossOf(const Object& kid) {
  const std::uint32_t number = kid.AsReference().number;
  if (number == 0) {
    return Loss::kNone;
  }
  if (const std::optional<RawObject> raw = document_->Locate(number)) {
    BlockReader& blocks = document_->reader().blocks();
    const std::string_view text =
        raw->holder != nullptr ? raw->text : blocks.Window(raw->offset, limits::kMaxNullBytes);
    const Token first = Lexer(text, true).Next();
    const bool is_null =
        first.kind == Token::Kind::kKeyword && (first.text == "null" || first.text == "endobj");
    return is_null ? Loss::kNone : Loss::kCertain;
  }
  if (document_->IsLost(number)) {
    return Loss::kCertain;
  }
  return is_xref_known_ ? Loss::kNone : Loss::kPossible;
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
  const Followed kids = document_->Follow(dictionary.Get("Kids"), scratch);
  if (kids.number != 0 && !kid_lists_.insert(kids.number).second) {
    document_->findings().Add(FindingCode::kPageTreeLoop, number);
    return level;
  }
  for (const Object& kid : kids.value.Items()) {
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

void PageTree::AddHole(const Hole& hole, std::uint32_t number) {
  if (hole.loss != Loss::kCertain) {  // else the page that stands for it is the finding
    document_->findings().Add(FindingCode::kPageTreeDamaged, number);
  }
  has_holes_ = true;
  holes_.push_back(hole);
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

// Of those as many as are missing.
std::vector<PageTree::Page> PageTree::AdoptLostPages(std::size_t missing) {
  std::vector<Page> lost = missing > 0 ? FindLostPages() : std::vector<Page>();
  lost.resize(std::min(lost.size(), missing));
  for (const Page& page : lost) {
    page_numbers_.insert(page.number);
    document_->findings().Add(FindingCode::kPageAdopted, page.number);
  }
  return lost;
}

// Puts pages in the places of kids that could not be used: lost ones that are found as long as more
// are claimed, empty ones for those that are certainly lost, and, if still more are claimed, for
// those that may be.
void PageTree::FillHoles() {
  const std::size_t missing = claimed_count_ - std::min(claimed_count_, pages_.size());
  const std::vector<Page> lost = AdoptLostPages(missing);
  const std::size_t certain = LostCount();
  const std::size_t unfound = missing - lost.size();
  Filling filling{lost, unfound - std::min(unfound, certain - std::min(certain, lost.size())),
                  limits::kMaxBlankPages};
  const std::vector<Page> walked = std::move(pages_);
  pages_.clear();
  auto hole = holes_.begin();
  for (std::size_t i = 0; i <= walked.size(); ++i) {
    for (; hole != holes_.end() && hole->position == i; ++hole) {
      FillHole(*hole, filling);
    }
    if (i < walked.size()) {
      pages_.push_back(walked[i]);
    }
  }
  pages_.insert(pages_.end(), filling.adopted.begin(), filling.adopted.end());  // no known place
  if (!holes_.empty() && pages_.size() < claimed_count_) {
    document_->findings().Add(FindingCode::kPagesMissing);
  }
}

void PageTree::FillHole(const Hole& hole, Filling& filling) {
  bool is_filled = false;
  while (!filling.adopted.empty() && filling.adopted.front().node == hole.node &&
         (hole.is_node || !is_filled)) {
    pages_.push_back(filling.adopted.front());
    filling.adopted = filling.adopted.subspan(1);
    is_filled = true;
  }
  const bool is_possible = hole.loss == Loss::kPossible && filling.possible > 0;
  if (!is_filled && filling.blanks > 0 && (hole.loss == Loss::kCertain || is_possible)) {
    --filling.blanks;
    filling.possible -= is_possible ? 1 : 0;
    pages_.push_back({0, hole.node, false, Object::Dictionary({})});
    document_->findings().Add(FindingCode::kPageBlank);
  }
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
  if (pages_.size() < claimed_count_) {
    document_->findings().Add(FindingCode::kPagesMissing);
  }
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
