#include "engines/pdfa/convert/tags/PageElements.h"

#include <array>
#include <utility>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

namespace {

using Kind = PageBlock::Kind;

constexpr std::array<std::string_view, 7> kTextTypes = {"P", "H1", "H2", "H3", "H4", "H5", "H6"};

std::string_view TypeOf(const PageBlock& block) {
  switch (block.kind) {
    case Kind::kText:
    case Kind::kLabel:
      return kTextTypes[block.heading_level < kTextTypes.size() ? block.heading_level : 0];
    case Kind::kForm:
      return "Div";
    case Kind::kFigure:
      return "Figure";
    case Kind::kTable:
      return "Table";
    case Kind::kRow:
      return "TR";
    case Kind::kHeaderCell:
      return "TH";
    case Kind::kCell:
      return "TD";
  }
  return "P";
}

// Values of /ListNumbering (ISO 32000-2, table 382).
std::string_view NumberingOf(ListKind kind) {
  switch (kind) {
    case ListKind::kBullet:
      return "Disc";
    case ListKind::kDecimal:
      return "Decimal";
    case ListKind::kLowerLetter:
      return "LowerAlpha";
    case ListKind::kUpperLetter:
      return "UpperAlpha";
    case ListKind::kLowerRoman:
      return "LowerRoman";
    case ListKind::kUpperRoman:
      return "UpperRoman";
  }
  return "None";
}

std::string AttributesOf(const PageBlock& block) {
  if (block.kind == Kind::kFigure) {
    std::string text = "/Alt(A picture without a description)/A<</O/Layout/BBox";
    pdf::AppendBox(text, block.box);
    return text + ">>";
  }
  std::string text = block.kind == Kind::kHeaderCell ? "/Scope/Column" : "";
  for (const auto& [key, span] :
       {std::pair("/RowSpan ", block.row_span), std::pair("/ColSpan ", block.column_span)}) {
    text += span > 1 ? key + std::to_string(span) : std::string();
  }
  return text.empty() ? text : "/A<</O/Table" + text + ">>";
}

bool IsItem(const PageBlock& block) {
  return block.list != 0 && block.heading_level == 0;
}

}  // namespace

PageElements::PageElements(const std::vector<PageBlock>& blocks) : blocks_(&blocks) {
  for (const PageBlock& block : blocks) {
    AddBlock(block);
  }
}

void PageElements::AddBlock(const PageBlock& block) {
  if (block.kind == Kind::kLabel) {
    of_block_.push_back(AddLabel(block));
    return;
  }
  if (block.parent == PageBlock::kNoParent && !IsItem(block)) {
    lists_.clear();
  }
  if (IsItem(block)) {
    of_block_.push_back(AddItem(block));
    return;
  }
  const std::uint32_t parent =
      block.parent == PageBlock::kNoParent ? kNoParent : of_block_[block.parent];
  of_block_.push_back(Add(TypeOf(block), parent, AttributesOf(block)));
}

// The number of what an item consists of besides its label.
std::uint32_t PageElements::AddItem(const PageBlock& block) {
  const std::uint32_t item = Add("LI", ListFor(block));
  Add("Lbl", item);  // is not used where the item has none of its own
  lists_.back().last_body = Add("LBody", item);
  return lists_.back().last_body;
}

std::uint32_t PageElements::ListFor(const PageBlock& block) {
  while (!lists_.empty() &&
         (lists_.back().level > block.list_level ||
          (lists_.back().level == block.list_level && lists_.back().list != block.list))) {
    lists_.pop_back();
  }
  if (lists_.empty() || lists_.back().level < block.list_level) {
    const std::uint32_t parent = lists_.empty() ? kNoParent : lists_.back().last_body;
    const std::string attributes =
        "/A<</O/List/ListNumbering/" + std::string(NumberingOf(block.numbering)) + ">>";
    lists_.push_back({block.list, block.list_level, Add("L", parent, attributes), 0});
  }
  return lists_.back().element;
}

// That of its item stands before what else the item consists of. One of no item is text.
std::uint32_t PageElements::AddLabel(const PageBlock& block) {
  const std::uint32_t body = of_block_[block.parent];
  return elements_[body].type == "LBody" ? body - 1 : body;
}

std::uint32_t PageElements::Add(std::string_view type, std::uint32_t parent,
                                std::string attributes) {
  elements_.push_back(
      {.type = type, .parent = parent, .attributes = std::move(attributes), .kids = {}});
  return static_cast<std::uint32_t>(elements_.size() - 1);
}

void PageElements::Use(std::uint32_t element) {
  while (element != kNoParent && !elements_[element].is_used) {
    elements_[element].is_used = true;
    element = elements_[element].parent;
  }
}

// Rows and cells without content keep the others in their places.
void PageElements::UseWholeTables() {
  for (Element& element : elements_) {
    const Element* parent = element.parent != kNoParent ? &elements_[element.parent] : nullptr;
    const bool is_in_table = parent != nullptr && (parent->type == "Table" || parent->type == "TR");
    element.is_used = element.is_used || (is_in_table && parent->is_used);
  }
}

}  // namespace TarnixTools::engines::pdfa
