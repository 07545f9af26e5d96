#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/word/FlowChoice.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(FlowChoice, LeavesWhatFollowsEachOther) {
  const std::vector<Block> above = {Block{TextAt(72, 100, {"One", "two"})},
                                    Block{TextAt(72, 130, {"three"})}};
  const std::vector<Block> below = {Block{TableAt(72, 140, {"a", "b", "c", "d"})},
                                    Block{TextAt(72, 300, {"four"})}};
  EXPECT_THAT(BlocksApart({&above, &below}), IsEmpty());
  EXPECT_THAT(BlocksApart({}), IsEmpty());
}

TEST(FlowChoice, SetsApartTheLesserTextOfWhatLiesBesideEachOther) {
  const std::vector<Block> blocks = {Block{TextAt(72, 100, {"Short"})},
                                     Block{TextAt(300, 100, {"A line that is much longer"})},
                                     Block{TextAt(72, 120, {"Next"})}};
  EXPECT_THAT(BlocksApart({&blocks}), ElementsAre(&blocks[0]));
}

TEST(FlowChoice, SetsApartWhatComesTooHighUp) {
  const std::vector<Block> blocks = {Block{TextAt(72, 500, {"A line far down on the page"})},
                                     Block{TextAt(72, 100, {"A word"})},
                                     Block{TextAt(72, 520, {"The line that goes on there"})}};
  EXPECT_THAT(BlocksApart({&blocks}), ElementsAre(&blocks[1]));
}

TEST(FlowChoice, LetsTextFlowThatRefersToANote) {
  Paragraph noted = TextAt(72, 100, {"x"});
  noted.lines[0].pieces[0].kind = PieceKind::kNoteMark;
  const std::vector<Block> blocks = {Block{noted}, Block{TextAt(300, 100, {"Much more text"})}};
  EXPECT_THAT(BlocksApart({&blocks}), ElementsAre(&blocks[1]));
  EXPECT_TRUE(HasNoteMark(blocks[0]));
  EXPECT_FALSE(HasNoteMark(blocks[1]));
}

TEST(FlowChoice, LetsAllTextFlowThatRefersToNotes) {
  Paragraph noted = TextAt(72, 100, {"x"});
  noted.lines[0].pieces[0].kind = PieceKind::kNoteMark;
  Table table = TableAt(300, 90, {"a", "b", "c", "d"});
  table.cells[0].blocks = {Block{noted}};
  const std::vector<Block> blocks = {Block{noted}, Block{noted}, Block{table},
                                     Block{TextAt(400, 100, {"Text"})}};
  EXPECT_THAT(BlocksApart({&blocks}), ElementsAre(&blocks[3]));
}

}  // namespace
}  // namespace TarnixTools::engines::office
