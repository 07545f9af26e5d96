#include <cstdint>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontFace.h"
#include "engines/support/fonts/FontStyle.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::fonts {
namespace {

// Null where the family is not installed.
std::unique_ptr<FontFace> FaceOf(const char* family, const char* style = "") {
  const InstalledFace* installed = FontCatalog::Get().Find(family, style);
  return installed != nullptr ? FontFace::Load(installed->file, installed->index) : nullptr;
}

TEST(FontFace, IsMeasured) {
  const auto regular = FaceOf("Liberation Sans");
  const auto italic = FaceOf("Liberation Mono", "Bold Italic");
  if (regular == nullptr || italic == nullptr) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  EXPECT_EQ(regular->weight_class(), 400);
  EXPECT_EQ(regular->italic_angle(), 0);
  EXPECT_FALSE(regular->is_fixed_pitch());
  EXPECT_GT(regular->ascent(), regular->cap_height());
  EXPECT_GT(regular->cap_height(), 1000);
  EXPECT_LT(regular->descent(), 0);
  EXPECT_GE(regular->bounds().top, regular->cap_height());
  EXPECT_GT(regular->glyph_count(), 500U);
  EXPECT_EQ(regular->CidOf(7), 7U);
  EXPECT_EQ(italic->weight_class(), 700);
  EXPECT_LT(italic->italic_angle(), 0);
  EXPECT_TRUE(italic->is_fixed_pitch());
  EXPECT_EQ(italic->name(), "LiberationMono-BoldItalic");
}

TEST(FontFace, OffersAGlyphThatShowsNothing) {
  const auto face = FaceOf("DejaVu Sans");
  if (face == nullptr) {
    GTEST_SKIP() << "needs the fonts DejaVu";
  }
  const std::uint32_t blank = face->BlankGlyph();
  EXPECT_EQ(face->BlankGlyph(), blank);
  if (blank != 0) {
    EXPECT_EQ(face->Advance(blank), 0);
  }
}

TEST(FontFace, OfPostScriptOutlinesIsCutDownToBareCff) {
  const auto face = FaceOf("Nimbus Sans");
  if (face == nullptr || face->outline_kind() != OutlineKind::kCff) {
    GTEST_SKIP() << "needs the OpenType fonts URW Base 35";
  }
  const std::uint32_t glyph = face->GlyphOf(U'A');
  ASSERT_NE(glyph, 0U);
  EXPECT_EQ(face->CidOf(glyph), glyph);
  const std::string program = face->Subset({glyph});
  EXPECT_EQ(program.substr(0, 2), std::string("\1\0", 2));
  EXPECT_LT(program.size(), 20'000U);
}

TEST(FontFace, OfCharacterIdentifiersKeepsThem) {
  const auto face = FaceOf("Noto Sans CJK JP");
  if (face == nullptr || face->outline_kind() != OutlineKind::kCffByCid) {
    GTEST_SKIP() << "needs the fonts Noto Sans CJK";
  }
  const std::uint32_t glyph = face->GlyphOf(U'\u4e2d');
  ASSERT_NE(glyph, 0U);
  EXPECT_NE(face->CidOf(glyph), 0U);
  EXPECT_EQ(face->CidOf(0xFFFFFF), 0xFFFFFFU);
  const std::string program = face->Subset({glyph});
  EXPECT_EQ(program.substr(0, 2), std::string("\1\0", 2));
  EXPECT_LT(program.size(), 50'000U);
}

// The tables of a TrueType font that are damaged one after the other.
TEST(FontFace, SurvivesDamagedTables) {
  const InstalledFace* installed = FontCatalog::Get().Find("Liberation Sans", "");
  if (installed == nullptr) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  const std::string whole = TarnixTools::testing::ReadBytes(installed->file);
  const TarnixTools::testing::TempDir directory;
  for (const char* table : {"head", "glyf", "maxp", "OS/2", "post", "hhea", "name", "cmap"}) {
    std::string bytes = whole;
    const std::size_t entry = bytes.find(table);
    ASSERT_NE(entry, std::string::npos);
    bytes.replace(entry, 4, "xxxx");
    const auto face = FontFace::Load(
        TarnixTools::testing::WriteBytes(directory.Path(std::string("without")), bytes), 0);
    const std::string name = table;
    const bool needs_it = name == "head" || name == "glyf" || name == "maxp";
    EXPECT_EQ(face == nullptr, needs_it) << table;
    if (face != nullptr) {
      EXPECT_EQ(face->weight_class(), 400);
      EXPECT_EQ(face->name(), name == "name" ? "Font" : "LiberationSans");
    }
  }
}

TEST(FontFace, IsEmbeddedWholeWhereItsLicenceSaysSo) {
  const InstalledFace* installed = FontCatalog::Get().Find("Liberation Sans", "");
  if (installed == nullptr) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  std::string bytes = TarnixTools::testing::ReadBytes(installed->file);
  const std::size_t entry = bytes.find("OS/2");
  std::size_t table = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    table = table << 8 | static_cast<unsigned char>(bytes[entry + 8 + i]);
  }
  bytes[table + 8] = 1;
  const TarnixTools::testing::TempDir directory;
  const auto face =
      FontFace::Load(TarnixTools::testing::WriteBytes(directory.Path("whole.ttf"), bytes), 0);
  ASSERT_EQ(face->embedding_right(), EmbeddingRight::kWholeOnly);
  const auto free = FontFace::Load(installed->file, installed->index);
  EXPECT_GT(face->Subset({1}).size(), 10 * free->Subset({1}).size());
}

TEST(FontStyle, IsCompared) {
  const FontStyle regular;
  const FontStyle bold = ParseFontStyle("Bold");
  const FontStyle italic = ParseFontStyle("Italic");
  const FontStyle oblique = ParseFontStyle("Oblique");
  const FontStyle narrow = ParseFontStyle("Condensed");
  EXPECT_EQ(StyleDistance(regular, regular), 0);
  EXPECT_LT(StyleDistance(regular, bold), StyleDistance(regular, narrow));
  EXPECT_LT(StyleDistance(regular, narrow), StyleDistance(regular, italic));
  EXPECT_LT(StyleDistance(italic, oblique), StyleDistance(italic, regular));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
