#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::fonts {
namespace {

using testing::CffProgram;
using testing::CidProgram;
using testing::TestFont;
using testing::Type1ProgramText;

long WidthOf(FontProgram& program, std::uint32_t glyph) {
  const auto shape = program.ShapeOf(glyph);
  long width = -1;
  for (std::size_t i = 0; shape && i < shape->points.size(); ++i) {
    width = std::max(width, shape->points[i].x);
  }
  return width;
}

TEST(FontProgram, ReadsTrueType) {
  const std::string bytes = TestFont{.width = 300}.Bytes();
  const auto program = FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  EXPECT_EQ(program->kind(), ProgramKind::kTrueType);
  EXPECT_EQ(program->glyph_count(), 3U);
  EXPECT_EQ(program->units_per_em(), 1000);
  ASSERT_EQ(program->maps().size(), 1U);
  EXPECT_TRUE(program->maps()[0].is_unicode());
  EXPECT_EQ(program->GlyphOf(0, 'A'), 1U);
  EXPECT_EQ(program->GlyphOf(0, 'B'), 0U);
  EXPECT_EQ(program->Mappings(0, 100), (std::vector<CodeGlyph>{{' ', 2}, {'A', 1}}));
  EXPECT_EQ(program->Mappings(0, 1).size(), 1U);
  EXPECT_EQ(WidthOf(*program, 1), 300);
  EXPECT_EQ(program->ShapeOf(1)->advance, 400);
  EXPECT_EQ(program->AdvanceOf(1), 400);
  EXPECT_EQ(program->AdvanceOf(3), std::nullopt);
  EXPECT_TRUE(program->ShapeOf(2)->points.empty());
  EXPECT_EQ(program->ShapeOf(3), std::nullopt);
  EXPECT_EQ(program->Table(0x68656164).size(), 54U);
}

TEST(FontProgram, TellsItsStyle) {
  constexpr std::uint32_t kOs2 = 0x4F532F32;
  constexpr std::size_t kSelection = 62;  // its place in that table
  constexpr char kBold = 1 << 5;
  const std::string plain = TestFont{}.Bytes();
  std::string bytes = plain;
  bytes[bytes.find(FontProgram::Open(plain)->Table(kOs2)) + kSelection + 1] |= kBold;
  EXPECT_FALSE(FontProgram::Open(plain)->is_bold());
  EXPECT_TRUE(FontProgram::Open(bytes)->is_bold());
  EXPECT_FALSE(FontProgram::Open(bytes)->is_italic());
}

TEST(FontProgram, ReadsBareCff) {
  const std::string bytes = CffProgram({"A", "eacute", "odd"});
  const auto program = FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  EXPECT_EQ(program->kind(), ProgramKind::kCff);
  EXPECT_FALSE(program->is_cid_keyed());
  EXPECT_EQ(program->glyph_count(), 4U);
  EXPECT_EQ(program->GlyphNamed("odd"), 3U);
  EXPECT_EQ(program->GlyphNamed("even"), 0U);
  EXPECT_EQ(program->NameOf(2), "eacute");
  EXPECT_EQ(WidthOf(*program, 3), 300);
  EXPECT_EQ(program->Table(0x68656164), "");
}

TEST(FontProgram, KnowsGlyphsByTheirIdentifiers) {
  const std::string bytes = CidProgram({7, 3, 500});
  const auto program = FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  EXPECT_TRUE(program->is_cid_keyed());
  EXPECT_FALSE(program->has_glyph_names());
  EXPECT_EQ(program->glyph_count(), 4U);
  EXPECT_EQ(program->GlyphOfCid(3), 2U);
  EXPECT_EQ(program->GlyphOfCid(500), 3U);
  EXPECT_EQ(program->GlyphOfCid(4), 0U);
  EXPECT_EQ(WidthOf(*program, 3), 300);
  EXPECT_EQ(WidthOf(*program, 1), 100);
}

TEST(FontProgram, ReadsType1) {
  const std::string bytes = Type1ProgramText({"A", "B"});
  const auto program = FontProgram::Open(bytes);
  ASSERT_NE(program, nullptr);
  EXPECT_EQ(program->kind(), ProgramKind::kType1);
  EXPECT_EQ(program->glyph_count(), 4U);
  const std::uint32_t glyph = program->GlyphNamed("B");
  EXPECT_EQ(WidthOf(*program, glyph), 200);
  EXPECT_EQ(program->ShapeOf(glyph)->advance, 250);
  EXPECT_EQ(program->ShapeOf(program->GlyphNamed("eacute"))->points.size(), 8U);
}

TEST(FontProgram, IsNoneOfOtherBytes) {
  for (const std::string& bytes :
       {std::string(), std::string("x"), std::string("ttcf"), std::string("\0\1\0\0", 4),
        std::string("%!"), std::string("\1\0\4\1", 4), std::string("OTTO")}) {
    EXPECT_EQ(FontProgram::Open(bytes), nullptr) << bytes;
  }
}

TEST(FontProgram, OfCutBytesDoesNoHarm) {
  for (const std::string& whole :
       {CffProgram({"A"}), CidProgram({9}), Type1ProgramText({"A"}), TestFont().Bytes()}) {
    for (std::size_t size = 0; size < whole.size(); size += 3) {
      const std::string bytes = whole.substr(0, size);
      const auto program = FontProgram::Open(bytes);
      for (std::uint32_t glyph = 0; program != nullptr && glyph < 4; ++glyph) {
        program->ShapeOf(glyph);
        program->NameOf(glyph);
      }
    }
  }
}

TEST(FontProgram, HasNoGlyphBeyondItsLast) {
  const std::string bytes = CffProgram({"A", "B"});
  const auto plain = FontProgram::Open(bytes);
  EXPECT_EQ(plain->glyph_count(), 3U);
  EXPECT_EQ(plain->GlyphOfCid(0), 0U);
  EXPECT_EQ(plain->GlyphOfCid(2), 2U);
  EXPECT_EQ(plain->GlyphOfCid(3), 0U);
  const std::string keyed = CidProgram({7, 3});
  const auto by_cid = FontProgram::Open(keyed);
  EXPECT_EQ(by_cid->GlyphOfCid(7), 1U);
  EXPECT_EQ(by_cid->GlyphOfCid(3), 2U);
  EXPECT_EQ(by_cid->GlyphOfCid(1), 0U);
  EXPECT_EQ(plain->GlyphNamed("A"), 1U);
  EXPECT_EQ(plain->GlyphNamed("C"), 0U);
  EXPECT_EQ(plain->GlyphNamed(""), 0U);
}

TEST(FontProgram, HasNoCodesInAMapThatIsNotThere) {
  const std::string bytes = TestFont().Bytes();
  const auto program = FontProgram::Open(bytes);
  const std::size_t count = program->maps().size();
  ASSERT_GT(count, 0U);
  EXPECT_EQ(program->GlyphOf(0, 'A'), 1U);
  EXPECT_EQ(program->GlyphOf(0, 'B'), 0U);
  EXPECT_EQ(program->GlyphOf(count, 'A'), 0U);
  EXPECT_TRUE(program->Mappings(count, 9).empty());
  EXPECT_EQ(program->Mappings(0, 9).size(), 2U);
  EXPECT_EQ(program->Mappings(0, 1).size(), 1U);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
