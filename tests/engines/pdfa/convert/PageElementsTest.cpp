// The elements that the blocks of a page become, of every kind and with every attribute.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/tags/PageElements.h"

namespace TarnixTools::engines::pdfa {
namespace {

using Kind = PageBlock::Kind;

PageBlock BlockOf(Kind kind, std::uint32_t parent = PageBlock::kNoParent) {
  return {.kind = kind, .parent = parent, .look = {}, .box = {1, 2, 3.5, 4}};
}

PageBlock Heading(std::uint8_t level) {
  PageBlock block = BlockOf(Kind::kText);
  block.heading_level = level;
  return block;
}

PageBlock Item(std::uint32_t list, std::uint8_t level, ListKind numbering = ListKind::kDecimal) {
  PageBlock block = BlockOf(Kind::kText);
  block.list = list;
  block.list_level = level;
  block.numbering = numbering;
  return block;
}

PageBlock Cell(Kind kind, std::uint32_t row, std::uint32_t row_span, std::uint32_t column_span) {
  PageBlock block = BlockOf(kind, row);
  block.row_span = row_span;
  block.column_span = column_span;
  return block;
}

// "3 LI in 2", a line for each, with a star behind those that are used, and what they say.
std::string TextOf(PageElements& elements) {
  std::string text;
  for (std::size_t i = 0; i < elements.all().size(); ++i) {
    const PageElements::Element& element = elements.all()[i];
    text += std::to_string(i) + " " + std::string(element.type);
    text +=
        element.parent == PageElements::kNoParent ? "" : " in " + std::to_string(element.parent);
    text += element.is_used ? "*" : "";
    text += element.attributes.empty() ? "\n" : " " + element.attributes + "\n";
  }
  return text;
}

std::string TextOf(const std::vector<PageBlock>& blocks) {
  PageElements elements(blocks);
  std::string text = TextOf(elements);
  for (std::uint32_t i = 0; i < blocks.size(); ++i) {
    text += std::to_string(elements.OfBlock(i)) + " ";
  }
  return text;
}

TEST(PageElements, AreOfTheTypesOfTheirBlocks) {
  std::vector<PageBlock> blocks;
  for (std::uint8_t level = 0; level <= 7; ++level) {
    blocks.push_back(Heading(level));
  }
  for (const Kind kind : {Kind::kForm, Kind::kFigure, Kind::kTable, Kind::kRow, Kind::kHeaderCell,
                          Kind::kCell, static_cast<Kind>(99)}) {
    blocks.push_back(BlockOf(kind));
  }
  EXPECT_EQ(TextOf(blocks),
            "0 P\n1 H1\n2 H2\n3 H3\n4 H4\n5 H5\n6 H6\n7 P\n8 Div\n"
            "9 Figure /Alt(A picture without a description)/A<</O/Layout/BBox[1 2 3.5 4]>>\n"
            "10 Table\n11 TR\n12 TH /A<</O/Table/Scope/Column>>\n13 TD\n14 P\n"
            "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 ");
}

TEST(PageElements, TellHowTheirListsCount) {
  std::vector<PageBlock> blocks;
  std::uint32_t list = 0;
  for (const ListKind kind :
       {ListKind::kBullet, ListKind::kDecimal, ListKind::kLowerLetter, ListKind::kUpperLetter,
        ListKind::kLowerRoman, ListKind::kUpperRoman, static_cast<ListKind>(99)}) {
    blocks.push_back(Item(++list, 0, kind));
  }
  PageElements elements(blocks);
  std::string text;
  for (const PageElements::Element& element : elements.all()) {
    text += element.type == "L" ? element.attributes + "\n" : std::string();
  }
  EXPECT_EQ(text,
            "/A<</O/List/ListNumbering/Disc>>\n/A<</O/List/ListNumbering/Decimal>>\n"
            "/A<</O/List/ListNumbering/LowerAlpha>>\n/A<</O/List/ListNumbering/UpperAlpha>>\n"
            "/A<</O/List/ListNumbering/LowerRoman>>\n/A<</O/List/ListNumbering/UpperRoman>>\n"
            "/A<</O/List/ListNumbering/None>>\n");
}

// A list goes on until something stands between its items, one above it does, or another of its
// level comes.
TEST(PageElements, AreListsInTheItemsOfOthers) {
  const std::string list = " /A<</O/List/ListNumbering/Decimal>>\n";
  EXPECT_EQ(TextOf({Item(1, 0), BlockOf(Kind::kLabel, 0), Item(2, 1), Item(2, 1), Item(3, 1),
                    Item(1, 0), Item(4, 2), Item(1, 0), Heading(1), Item(1, 0)}),
            "0 L" + list + "1 LI in 0\n2 Lbl in 1\n3 LBody in 1\n4 L in 3" + list +
                "5 LI in 4\n6 Lbl in 5\n7 LBody in 5\n8 LI in 4\n9 Lbl in 8\n10 LBody in 8\n"
                "11 L in 3" +
                list +
                "12 LI in 11\n13 Lbl in 12\n14 LBody in 12\n15 LI in 0\n16 Lbl in 15\n"
                "17 LBody in 15\n18 L in 17" +
                list +
                "19 LI in 18\n20 Lbl in 19\n21 LBody in 19\n22 LI in 0\n23 Lbl in 22\n"
                "24 LBody in 22\n25 H1\n26 L" +
                list + "27 LI in 26\n28 Lbl in 27\n29 LBody in 27\n3 2 7 10 14 17 21 24 25 29 ");
}

// What lies in another block does not end a list; the label of a heading is its text.
TEST(PageElements, AreItemsOnlyOfText) {
  PageBlock heading = Item(1, 0);
  heading.heading_level = 2;
  EXPECT_EQ(TextOf({Item(1, 0), BlockOf(Kind::kText, 0), Item(1, 0), heading,
                    BlockOf(Kind::kLabel, 3), Item(1, 0)}),
            "0 L /A<</O/List/ListNumbering/Decimal>>\n1 LI in 0\n2 Lbl in 1\n3 LBody in 1\n"
            "4 P in 3\n5 LI in 0\n6 Lbl in 5\n7 LBody in 5\n8 H2\n"
            "9 L /A<</O/List/ListNumbering/Decimal>>\n10 LI in 9\n11 Lbl in 10\n12 LBody in 10\n"
            "3 4 7 8 8 12 ");
}

TEST(PageElements, AreCellsOverOthers) {
  EXPECT_EQ(TextOf({BlockOf(Kind::kTable), BlockOf(Kind::kRow, 0), Cell(Kind::kHeaderCell, 1, 1, 2),
                    Cell(Kind::kHeaderCell, 1, 2, 1), Cell(Kind::kCell, 1, 3, 4),
                    Cell(Kind::kCell, 1, 0, 0)}),
            "0 Table\n1 TR in 0\n2 TH in 1 /A<</O/Table/Scope/Column/ColSpan 2>>\n"
            "3 TH in 1 /A<</O/Table/Scope/Column/RowSpan 2>>\n"
            "4 TD in 1 /A<</O/Table/RowSpan 3/ColSpan 4>>\n5 TD in 1\n0 1 2 3 4 5 ");
}

TEST(PageElements, AreUsedWithThoseAroundThemAndWithWholeTables) {
  const std::vector<PageBlock> blocks = {
      BlockOf(Kind::kTable),   BlockOf(Kind::kRow, 0),  BlockOf(Kind::kCell, 1),
      BlockOf(Kind::kRow, 0),  BlockOf(Kind::kCell, 3), BlockOf(Kind::kText, 4),
      BlockOf(Kind::kTable),   BlockOf(Kind::kRow, 6),  Item(1, 0),
      BlockOf(Kind::kLabel, 8)};
  PageElements elements(blocks);
  elements.Use(elements.OfBlock(2));
  elements.Use(elements.OfBlock(8));
  EXPECT_EQ(TextOf(elements),
            "0 Table*\n1 TR in 0*\n2 TD in 1*\n3 TR in 0\n4 TD in 3\n5 P in 4\n6 Table\n"
            "7 TR in 6\n8 L* /A<</O/List/ListNumbering/Decimal>>\n9 LI in 8*\n10 Lbl in 9\n"
            "11 LBody in 9*\n");
  elements.UseWholeTables();
  EXPECT_EQ(TextOf(elements),
            "0 Table*\n1 TR in 0*\n2 TD in 1*\n3 TR in 0*\n4 TD in 3*\n5 P in 4\n6 Table\n"
            "7 TR in 6\n8 L* /A<</O/List/ListNumbering/Decimal>>\n9 LI in 8*\n10 Lbl in 9\n"
            "11 LBody in 9*\n");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
