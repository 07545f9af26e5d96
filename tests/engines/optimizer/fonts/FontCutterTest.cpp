#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/FontCutter.h"
#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/RewriteFixture.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::optimizer {
namespace {

using fonts::DocumentFont;
using fonts::FontProgram;

// A font with these entries that shows the codes, as the only user of a program of any size.
FontJob Job(const std::string& entries, std::vector<std::uint32_t> codes) {
  const std::string bytes = testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                                .Object(5, "<<" + entries + ">>")
                                .Table();
  const auto document = testing::OpenBytes(bytes);
  FontJob job;
  job.encoded_bytes = std::uint64_t{1} << 30;
  job.uses.push_back({std::make_shared<const DocumentFont>(*document, pdf::Object::Ref({5, 0})),
                      std::move(codes)});
  return job;
}

std::string BytesOf(const CutResult& result) {
  return result.cut ? pdf::Decode({{.kind = pdf::FilterKind::kFlate, .parameters = {}}},
                                  result.cut->data, std::size_t{1} << 24)
                          .data
                    : std::string();
}

// The file of an installed TrueType face with hints; empty where there is none.
std::string HintedFace() {
  const fonts::InstalledFace* face = fonts::FontCatalog::Get().Find("Liberation Sans", "Regular");
  return face != nullptr && face->family == "Liberation Sans" ? testing::ReadBytes(face->file)
                                                              : std::string();
}

TEST(FontCutter, KeepsCodesTheirGlyphsAndOutlines) {
  const std::string face = HintedFace();
  if (face.empty()) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  const FontJob job = Job("/Subtype/TrueType/Encoding/WinAnsiEncoding", {'A', 0xE9});
  const std::string bytes = BytesOf(CutFont(face, job));
  const auto before = FontProgram::Open(face);
  const auto after = FontProgram::Open(bytes);
  ASSERT_NE(after, nullptr);
  EXPECT_LT(bytes.size(), face.size() / 4);
  for (const std::uint32_t code : job.uses[0].codes) {
    const auto glyphs = fonts::GlyphFinder(*job.uses[0].font, *before).GlyphsOf(code);
    ASSERT_FALSE(glyphs.empty());
    EXPECT_EQ(fonts::GlyphFinder(*job.uses[0].font, *after).GlyphsOf(code), glyphs);
    EXPECT_EQ(after->ShapeOf(glyphs[0]), before->ShapeOf(glyphs[0]));
  }
  EXPECT_EQ(after->GlyphNamed("eacute"), before->GlyphNamed("eacute"));
  const std::uint32_t other = before->GlyphNamed("B");
  EXPECT_TRUE(after->ShapeOf(other)->points.empty());
}

TEST(FontCutter, DropsHintsWhereAsked) {
  const std::string face = HintedFace();
  if (face.empty()) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  constexpr std::uint32_t kHints = 0x6670676D;  // "fpgm"
  FontJob job = Job("/Subtype/TrueType/Encoding/WinAnsiEncoding", {'A'});
  const std::string hinted = BytesOf(CutFont(face, job));
  job.drops_hints = true;
  const std::string plain = BytesOf(CutFont(face, job));
  EXPECT_NE(FontProgram::Open(hinted)->Table(kHints), "");
  EXPECT_EQ(FontProgram::Open(plain)->Table(kHints), "");
  EXPECT_LT(plain.size(), hinted.size());
}

TEST(FontCutter, LeavesWhatIsNoSmaller) {
  const std::string program = testing::CffProgram({"A", "B"});
  FontJob job = Job("/Subtype/Type1", {'A'});
  EXPECT_TRUE(CutFont(program, job).cut);
  job.encoded_bytes = 10;
  EXPECT_EQ(CutFont(program, job).left_alone, FontLeftAlone::kSmallest);
  EXPECT_EQ(CutFont("", job).left_alone, FontLeftAlone::kUnreadable);
}

TEST(FontCutter, LeavesWhatCannotBeCut) {
  std::string program = testing::Type1ProgramText({"A", "B"});
  ASSERT_TRUE(CutFont(program, Job("/Subtype/Type1", {'A'})).cut);
  program.insert(program.find('\n') + 1, "%/WeightVector\n");
  ASSERT_NE(FontProgram::Open(program), nullptr);
  const CutResult result = CutFont(program, Job("/Subtype/Type1", {'A'}));
  EXPECT_FALSE(result.cut);
  EXPECT_EQ(result.left_alone, FontLeftAlone::kUnsure);
}

TEST(FontCutter, GivesTheSameOnEveryThread) {
  const std::string type1 = testing::Type1ProgramText({"A", "B", "C"});
  const std::string cff = testing::CffProgram({"A", "B", "C"});
  const FontJob job = Job("/Subtype/Type1/Encoding<</Differences[1/A/uni0042]>>", {1, 2, 'C'});
  std::vector<std::string> cut(8);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < cut.size(); ++i) {
    threads.emplace_back([&, i] { cut[i] = BytesOf(CutFont(i % 2 == 0 ? type1 : cff, job)); });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (std::size_t i = 0; i < cut.size(); ++i) {
    EXPECT_NE(cut[i], "");
    EXPECT_EQ(cut[i], cut[i % 2]);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
