#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/layout/tables/ContinuedTables.h"

namespace TarnixTools::engines::office {
namespace {

Table TableAt(double upper, double lower, std::vector<double> columns) {
  Table table;
  table.box = {columns.front(), upper, columns.back(), lower};
  table.columns = std::move(columns);
  table.rows = {upper, lower};
  return table;
}

OfficePage PageOf(std::uint32_t number, std::vector<Block> blocks) {
  OfficePage page;
  page.model.number = number;
  page.layout.width = 600;
  page.layout.height = 800;
  Column column;
  column.blocks = std::move(blocks);
  Band band;
  band.columns = {column};
  page.layout.bands = {band};
  return page;
}

// Whether the table of the second page goes on.
bool GoesOn(std::vector<Block> first, std::vector<Block> second, std::uint32_t number = 1) {
  OfficeDocument document;
  document.pages.push_back(PageOf(0, std::move(first)));
  document.pages.push_back(PageOf(number, std::move(second)));
  MarkContinuedTables(document);
  for (const Block& block : document.pages[1].layout.bands[0].columns[0].blocks) {
    if (const auto* table = std::get_if<Table>(&block.content)) {
      return table->goes_on;
    }
  }
  return false;
}

TEST(ContinuedTables, GoOnWhereTheColumnsAreTheSame) {
  const Table first = TableAt(300, 740, {100, 200, 300});
  EXPECT_TRUE(GoesOn({{first}}, {{TableAt(60, 200, {100, 200, 300})}}));
  EXPECT_TRUE(GoesOn({{first}}, {{TableAt(60, 200, {130, 231, 331})}}));
  EXPECT_FALSE(GoesOn({{first}}, {{TableAt(60, 200, {100, 220, 300})}}));
  EXPECT_FALSE(GoesOn({{first}}, {{TableAt(60, 200, {100, 150, 200, 300})}}));
}

TEST(ContinuedTables, AreCutByTheEndOfThePageAlone) {
  const Table first = TableAt(300, 740, {100, 200, 300});
  const Table next = TableAt(60, 200, {100, 200, 300});
  EXPECT_FALSE(GoesOn({{first}, {Paragraph()}}, {{next}}));
  EXPECT_FALSE(GoesOn({{first}}, {{Paragraph()}, {next}}));
  EXPECT_FALSE(GoesOn({{TableAt(100, 300, {100, 200, 300})}}, {{next}}));
  EXPECT_FALSE(GoesOn({{first}}, {{TableAt(400, 500, {100, 200, 300})}}));
  EXPECT_FALSE(GoesOn({{first}}, {{next}}, 2));
}

}  // namespace
}  // namespace TarnixTools::engines::office
