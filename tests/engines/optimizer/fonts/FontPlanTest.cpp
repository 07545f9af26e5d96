#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/FontFixture.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::optimizer {
namespace {

using fonts::FontProgram;
using testing::FontCase;
using testing::RawPdf;

std::size_t LeftAlone(const FontReport& report, FontLeftAlone why) {
  return report.left_alone[static_cast<std::size_t>(why)];
}

std::vector<std::string> ManyNames() {
  std::vector<std::string> names;
  for (char c = 'A'; c <= 'Z'; ++c) {
    names.emplace_back(1, c);
  }
  return names;
}

// A page that shows "C" in /F, whose program is object 9.
RawPdf Showing(const std::string& subtype, const std::string& entry) {
  return RawPdf()
      .Stream(4, "", "BT /F 9 Tf (C) Tj ET")
      .Object(5, "<</Type/Font/Subtype/" + subtype +
                     "/BaseFont/X/Encoding/WinAnsiEncoding/FontDescriptor 8 0 R>>")
      .Object(6, "null")
      .Object(8, "<</Type/FontDescriptor/Flags 32/CharSet(/A)/" + entry + " 9 0 R>>");
}

// Which of the letters still have a shape.
std::string LettersIn(const std::string& bytes) {
  const auto program = FontProgram::Open(bytes);
  std::string letters;
  for (const std::string& name : ManyNames()) {
    const std::uint32_t glyph = program == nullptr ? 0 : program->GlyphNamed(name);
    const auto shape = glyph == 0 ? std::nullopt : program->ShapeOf(glyph);
    letters += shape && !shape->points.empty() ? name : "";
  }
  return letters;
}

TEST(FontPlan, CutsBareCff) {
  FontCase test(Showing("Type1", "FontFile3")
                    .Stream(9, "/Subtype/Type1C/Length1 77", testing::CffProgram(ManyNames())));
  const FontReport report = test.Cut();
  EXPECT_EQ(report.programs, 1U);
  EXPECT_LT(report.bytes_after, report.bytes_before);
  const pdf::Followed program = test.ProgramOf("F", "FontFile3");
  EXPECT_EQ(LettersIn(test.BytesOf(program)), "C");
  EXPECT_TRUE(program.value.Get("Subtype").IsName("Type1C"));
  EXPECT_FALSE(program.value.Has("Length1"));
  EXPECT_TRUE(program.value.Get("Filter").IsName("FlateDecode"));
}

TEST(FontPlan, CutsType1AndTellsItsLengths) {
  FontCase test(
      Showing("Type1", "FontFile")
          .Stream(9, "/Length1 1/Length2 2/Length3 3", testing::Type1ProgramText(ManyNames())));
  const FontReport report = test.Cut();
  EXPECT_LT(report.bytes_after, report.bytes_before);
  const pdf::Followed program = test.ProgramOf("F", "FontFile");
  const std::string bytes = test.BytesOf(program);
  EXPECT_EQ(LettersIn(bytes), "C");
  const auto length = [&](const char* key) {
    return static_cast<std::size_t>(program.value.Get(key).IntegerOr(-1));
  };
  EXPECT_EQ(length("Length1"), bytes.find("eexec\n") + 6);
  EXPECT_EQ(length("Length1") + length("Length2") + length("Length3"), bytes.size());
}

TEST(FontPlan, CutsTrueTypeAndTellsItsLength) {
  const std::string font = testing::TestFont().Bytes();
  FontCase test(Showing("TrueType", "FontFile2").Stream(9, "/Length1 1", font));
  const FontReport report = test.Cut();
  EXPECT_LT(report.bytes_after, report.bytes_before);
  const pdf::Followed program = test.ProgramOf("F", "FontFile2");
  const std::string bytes = test.BytesOf(program);
  EXPECT_EQ(program.value.Get("Length1").IntegerOr(0), static_cast<std::int64_t>(bytes.size()));
  const auto cut = FontProgram::Open(bytes);
  ASSERT_NE(cut, nullptr);
  EXPECT_EQ(cut->glyph_count(), 1U);  // it has no C
  EXPECT_EQ(cut->maps().size(), 1U);
}

TEST(FontPlan, CutsByIdentifier) {
  FontCase test(RawPdf()
                    .Stream(4, "", "BT /F 9 Tf <0003> Tj ET")
                    .Object(5, "<</Subtype/Type0/Encoding/Identity-H/DescendantFonts[6 0 R]>>")
                    .Object(6, "<</Subtype/CIDFontType0/FontDescriptor 8 0 R>>")
                    .Object(8, "<</Flags 4/FontFile3 9 0 R/CIDSet 10 0 R>>")
                    .Stream(9, "/Subtype/CIDFontType0C",
                            testing::CidProgram({7, 3, 1, 500, 501, 502, 503, 504, 505, 506}))
                    .Stream(10, "", "bits"));
  test.Cut();
  pdf::Arena arena;
  pdf::Document& written = test.written();
  const pdf::Object descendant = written.Resolve(
      written.Resolve(test.WrittenFont("F").Get("DescendantFonts"), arena).Items()[0], arena);
  const pdf::Object descriptor = written.Resolve(descendant.Get("FontDescriptor"), arena);
  EXPECT_FALSE(descriptor.Has("CIDSet"));
  const std::string bytes = test.BytesOf(written.Follow(descriptor.Get("FontFile3"), arena));
  const auto cut = FontProgram::Open(bytes);
  ASSERT_NE(cut, nullptr);
  EXPECT_TRUE(cut->is_cid_keyed());
  EXPECT_EQ(cut->GlyphOfCid(3), 2U);
  EXPECT_EQ(cut->ShapeOf(2)->points.size(), 4U);
  EXPECT_TRUE(cut->ShapeOf(1)->points.empty());
}

TEST(FontPlan, KeepsWhatAnyFontOfAProgramShows) {
  FontCase test(Showing("Type1", "FontFile3")
                    .Stream(4, "", "BT /F 9 Tf (C) Tj /G 9 Tf (A) Tj ET")
                    .Object(6,
                            "<</Subtype/Type1/FontDescriptor 11 0 R"
                            "/Encoding<</Differences[65/Q]>>>>")
                    .Object(11, "<</Flags 32/FontFile3 9 0 R>>")
                    .Stream(9, "/Subtype/Type1C", testing::CffProgram(ManyNames())));
  test.Cut();
  EXPECT_EQ(LettersIn(test.BytesOf(test.ProgramOf("F", "FontFile3"))), "CQ");
}

TEST(FontPlan, MakesProgramsThatAreTheSameOne) {
  const std::string program = testing::CffProgram(ManyNames());
  FontCase test(Showing("Type1", "FontFile3")
                    .Stream(4, "", "BT /F 9 Tf (C) Tj /G 9 Tf (A) Tj ET")
                    .Object(6, "<</Subtype/Type1/FontDescriptor 11 0 R>>")
                    .Object(11, "<</Flags 32/FontFile3 12 0 R>>")
                    .Stream(9, "/Subtype/Type1C", program)
                    .Stream(12, "/Subtype/Type1C", program));
  const FontReport report = test.Cut();
  EXPECT_EQ(report.programs, 2U);
  EXPECT_EQ(report.merged, 1U);
  EXPECT_EQ(test.ProgramOf("F", "FontFile3").number, test.ProgramOf("G", "FontFile3").number);
  EXPECT_EQ(LettersIn(test.BytesOf(test.ProgramOf("G", "FontFile3"))), "AC");
}

TEST(FontPlan, GoesByWhatHasBeenMerged) {
  const std::string program = testing::CffProgram(ManyNames());
  FontCase test(Showing("Type1", "FontFile3")
                    .Stream(4, "", "BT /F 9 Tf (C) Tj /G 9 Tf (A) Tj ET")
                    .Object(6, "<</Subtype/Type1/FontDescriptor 11 0 R>>")
                    .Object(11, "<</Flags 32/FontFile3 12 0 R>>")
                    .Stream(9, "/Subtype/Type1C", program)
                    .Stream(12, "/Subtype/Type1C", program));
  const FontReport report = test.Cut({}, {9, 12});
  EXPECT_EQ(report.programs, 1U);
  EXPECT_LT(report.bytes_after, report.bytes_before);
  EXPECT_EQ(LettersIn(test.BytesOf(test.ProgramOf("F", "FontFile3"))), "AC");
}

TEST(FontPlan, KeepsProgramsWholeThatAreTheSameAsOneThatIs) {
  const std::string program = testing::CffProgram(ManyNames());
  FontCase test(Showing("Type1", "FontFile3")
                    .Object(6, "<</Subtype/Type1/FontDescriptor 11 0 R>>")
                    .Object(11, "<</Flags 32/FontFile3 12 0 R>>")
                    .Stream(9, "/Subtype/Type1C", program)
                    .Stream(12, "/Subtype/Type1C", program));
  test.use().KeepWhole(6);
  const FontReport report = test.Cut();
  EXPECT_EQ(report.merged, 0U);
  EXPECT_EQ(LeftAlone(report, FontLeftAlone::kAnyCode), 2U);
}

TEST(FontPlan, LeavesProgramsOfWhichAnyGlyphMayBeShown) {
  FontCase test(
      Showing("Type1", "FontFile3").Stream(9, "/Subtype/Type1C", testing::CffProgram(ManyNames())));
  test.use().KeepWhole(5);
  const FontReport report = test.Cut();
  EXPECT_EQ(LeftAlone(report, FontLeftAlone::kAnyCode), 1U);
  EXPECT_EQ(report.bytes_after, report.bytes_before);
  EXPECT_EQ(LettersIn(test.BytesOf(test.ProgramOf("F", "FontFile3"))).size(), 26U);
}

TEST(FontPlan, LeavesListedGlyphsWhereTheListsAreWanted) {
  FontCase test(
      Showing("Type1", "FontFile3").Stream(9, "/Subtype/Type1C", testing::CffProgram(ManyNames())));
  const FontReport report = test.Cut({.keeps_glyph_lists = true});
  EXPECT_EQ(LeftAlone(report, FontLeftAlone::kConformance), 1U);
}

TEST(FontPlan, LeavesWhatCannotBeReadOrIsSmallest) {
  FontCase damaged(Showing("TrueType", "FontFile2").Stream(9, "", "no font"));
  EXPECT_EQ(LeftAlone(damaged.Cut(), FontLeftAlone::kUnreadable), 1U);
  const std::string program = testing::CffProgram({"C"});
  std::string deflated;
  pdf::DeflateTo(deflated, program, 12);
  FontCase small(
      Showing("Type1", "FontFile3").Stream(9, "/Subtype/Type1C/Filter/FlateDecode", deflated));
  const FontReport report = small.Cut();
  EXPECT_EQ(LeftAlone(report, FontLeftAlone::kSmallest), 1U);
  EXPECT_EQ(report.bytes_after, deflated.size());
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
