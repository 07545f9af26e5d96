#include "engines/pdfa/convert/tags/BlockFinder.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/Lists.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::pdfa {

namespace {

using Kind = PageBlock::Kind;
using Claim = PlacedBlocks::Claim;

// Makes blocks of a layout, and notes which operators paint them.
class BlockMaker {
 public:
  //   to_page - from lengths of the layout to those of the page
  BlockMaker(const PageModel& page, PageLayout& layout, const pdf::Matrix& to_page)
      : page_(&page), layout_(&layout), to_page_(to_page) {}

  PlacedBlocks Make();

 private:
  void ReadFlow();
  void AddBlock(const Block& block, const HeadingLook* look);
  void AddFloat(std::size_t index);
  template <typename Test>
  void AddFloatsIf(const Test& test);
  void AddBehind(const pdf::Box& part);
  void AddLabels(const pdf::Box& figure);
  void AddOtherFloats();
  void AddParagraph(const Paragraph& paragraph, const HeadingLook* look, std::uint32_t parent);
  void AddTable(const Table& table);
  void AddCell(const TableCell& cell, Kind kind, std::uint32_t row);
  std::uint32_t Add(Kind kind, const pdf::Box& box, std::uint32_t parent = PageBlock::kNoParent);

  void ClaimLine(const TextLine& line, std::uint32_t block);
  void ClaimText(const Paragraph& paragraph, std::uint32_t block);
  void Claim(std::uint32_t place, std::uint32_t block);

  const PageModel* page_;
  PageLayout* layout_;
  pdf::Matrix to_page_;
  std::vector<HeadingLook> looks_;  // of the paragraphs of the flow
  std::vector<bool> has_float_;     // a block by now, by place in PageLayout::floats
  std::size_t compared_ = 0;        // floats with other parts of the page
  std::vector<PageBlock> blocks_;
  std::vector<PlacedBlocks::Claim> claims_;
};

void BlockMaker::Claim(std::uint32_t place, std::uint32_t block) {
  if (place != kNoPlace) {
    claims_.push_back({place, block});
  }
}

std::uint32_t BlockMaker::Add(Kind kind, const pdf::Box& box, std::uint32_t parent) {
  blocks_.push_back({.kind = kind, .parent = parent, .look = {}, .box = box.Through(to_page_)});
  return static_cast<std::uint32_t>(blocks_.size() - 1);
}

void BlockMaker::ClaimLine(const TextLine& line, std::uint32_t block) {
  for (const TextPiece& piece : line.pieces) {
    for (const std::uint32_t place : piece.places) {
      Claim(place, block);
    }
  }
}

void BlockMaker::ClaimText(const Paragraph& paragraph, std::uint32_t block) {
  if (paragraph.initial) {
    ClaimLine(paragraph.initial->line, block);
  }
  for (const TextLine& line : paragraph.lines) {
    ClaimLine(line, block);
  }
}

// What paints a label and more than that is of the item's text.
void BlockMaker::AddParagraph(const Paragraph& paragraph, const HeadingLook* look,
                              std::uint32_t parent) {
  const std::uint32_t index = Add(Kind::kText, paragraph.box, parent);
  ClaimText(paragraph, index);
  blocks_[index].look = look != nullptr ? *look : HeadingLook{};
  if (!paragraph.label) {
    return;
  }
  blocks_[index].list = paragraph.label->list;
  blocks_[index].list_level = paragraph.level;
  blocks_[index].numbering = paragraph.label->kind;
  const std::uint32_t label = Add(Kind::kLabel, paragraph.box, index);
  for (const std::uint32_t place : paragraph.label->places) {
    Claim(place, label);
  }
}

// A single paragraph of a cell is the cell.
void BlockMaker::AddCell(const TableCell& cell, Kind kind, std::uint32_t row) {
  const std::uint32_t index = Add(kind, cell.box, row);
  blocks_[index].row_span = cell.row_span;
  blocks_[index].column_span = cell.column_span;
  for (const Block& block : cell.blocks) {
    const auto* paragraph = std::get_if<Paragraph>(&block.content);
    if (paragraph != nullptr && cell.blocks.size() == 1) {
      ClaimText(*paragraph, index);
    } else if (paragraph != nullptr) {
      AddParagraph(*paragraph, nullptr, index);
    }
  }
}

void BlockMaker::AddTable(const Table& table) {
  const std::uint32_t index = Add(Kind::kTable, table.box);
  std::uint32_t row = index;
  std::size_t rows = 0;
  for (const TableCell& cell : table.cells) {
    for (; rows <= cell.row; ++rows) {
      row = Add(Kind::kRow, table.box, index);
    }
    AddCell(cell, cell.row < table.header_rows ? Kind::kHeaderCell : Kind::kCell, row);
  }
}

// Plain shapes alone are decoration.
bool IsFigure(const Drawing& drawing) {
  return !drawing.is_simple || drawing.paths.size() > 1;
}

void BlockMaker::AddBlock(const Block& block, const HeadingLook* look) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    AddParagraph(*paragraph, look, PageBlock::kNoParent);
  } else if (const auto* table = std::get_if<Table>(&block.content)) {
    AddTable(*table);
  } else if (const auto* picture = std::get_if<Picture>(&block.content)) {
    const std::uint32_t index = Add(Kind::kFigure, picture->box);
    for (const std::uint32_t image : picture->images) {
      Claim(page_->images[image].place, index);
    }
    AddLabels(picture->box);
  } else if (const auto* drawing = std::get_if<Drawing>(&block.content)) {
    if (IsFigure(*drawing)) {
      const std::uint32_t index = Add(Kind::kFigure, drawing->box);
      for (const std::uint32_t path : drawing->paths) {
        Claim(page_->paths[path].place, index);
      }
    }
    AddLabels(drawing->box);
  }
}

// Drawings that text runs over are decoration.
void BlockMaker::AddFloat(std::size_t index) {
  const Floating& floating = layout_->floats[index];
  has_float_[index] = true;
  for (const Block& block : floating.blocks) {
    if (!floating.is_behind || std::holds_alternative<Picture>(block.content)) {
      AddBlock(block, nullptr);
    }
  }
}

template <typename Test>
void BlockMaker::AddFloatsIf(const Test& test) {
  compared_ += layout_->floats.size();
  for (std::size_t i = 0; i < has_float_.size() && compared_ <= limits::kMaxBoxComparisons; ++i) {
    if (!has_float_[i] && test(layout_->floats[i])) {
      AddFloat(i);
    }
  }
}

// Pictures behind a part of the flow that begin above it.
void BlockMaker::AddBehind(const pdf::Box& part) {
  AddFloatsIf([&part](const Floating& floating) {
    return floating.is_behind && SharedWidth(floating.box, part) > 0 &&
           UpperEdge(floating.box) <= UpperEdge(part);
  });
}

void BlockMaker::AddLabels(const pdf::Box& figure) {
  AddFloatsIf([&figure](const Floating& floating) {
    return !floating.is_behind && Holds(figure, MiddleX(floating.box), MiddleY(floating.box));
  });
}

void BlockMaker::AddOtherFloats() {
  for (std::size_t i = 0; i < has_float_.size(); ++i) {
    if (!has_float_[i]) {
      AddFloat(i);
    }
  }
}

// Looks are those with labels.
void BlockMaker::ReadFlow() {
  for (const Paragraph* paragraph : FlowParagraphs(*layout_)) {
    looks_.push_back(LookOf(*layout_, *paragraph, TextOf(*paragraph)));
  }
  FindLists({layout_});
}

PlacedBlocks BlockMaker::Make() {
  ReadFlow();
  has_float_.assign(layout_->floats.size(), false);
  std::size_t paragraphs = 0;
  for (const Band& band : layout_->bands) {
    for (const Column& column : band.columns) {
      for (const Block& block : column.blocks) {
        const bool is_text = std::holds_alternative<Paragraph>(block.content);
        AddBehind(BoxOf(block));
        AddBlock(block, is_text ? &looks_[paragraphs++] : nullptr);
      }
    }
  }
  AddOtherFloats();
  return {std::move(blocks_), std::move(claims_)};
}

}  // namespace

PlacedBlocks::PlacedBlocks(std::vector<PageBlock> blocks, std::vector<Claim> claims)
    : blocks_(std::move(blocks)), claims_(std::move(claims)) {
  std::stable_sort(claims_.begin(), claims_.end(),
                   [](const Claim& a, const Claim& b) { return a.place < b.place; });
}

std::optional<std::uint32_t> PlacedBlocks::At(std::size_t begin, std::size_t end) const {
  const auto first =
      std::lower_bound(claims_.begin(), claims_.end(), begin,
                       [](const Claim& claim, std::size_t place) { return claim.place < place; });
  return first != claims_.end() && first->place < end ? std::optional(first->block) : std::nullopt;
}

BlockFinder::BlockFinder(pdf::Document& document, const pdf::PageTree& pages)
    : document_(&document),
      pages_(&pages),
      layers_(document),
      reader_(document, pages, layers_, PageReader::Parts::kContent) {}

PlacedBlocks BlockFinder::Find(std::size_t page_index) {
  const PageModel page = reader_.Read(page_index);
  PageLayout layout = AnalyzePage(page);
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(*document_, *pages_, pages_->pages()[page_index]);
  return BlockMaker(page, layout, Downwards(page.height) * geometry.FromSeenPoints()).Make();
}

}  // namespace TarnixTools::engines::pdfa
