#include <gtest/gtest.h>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontFace.h"
#include "engines/support/fonts/FontStyle.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::fonts {
namespace {

std::string Found(const char* family, const char* style = "") {
  const InstalledFace* face = FontCatalog::Get().Find(family, style);
  return face == nullptr ? "" : face->file.substr(face->file.rfind('/') + 1);
}

class Catalog : public ::testing::Test {
 protected:
  void SetUp() override {
    if (Found("Liberation Sans").empty()) {
      GTEST_SKIP() << "needs the fonts Liberation";
    }
  }
};

TEST_F(Catalog, FindsFamiliesAndStyles) {
  EXPECT_EQ(Found("Liberation Sans"), "LiberationSans-Regular.ttf");
  EXPECT_EQ(Found("liberation SANS", "Bold"), "LiberationSans-Bold.ttf");
  EXPECT_EQ(Found("Liberation Serif", "Italic"), "LiberationSerif-Italic.ttf");
  EXPECT_EQ(Found("Liberation Mono", "Bold Italic"), "LiberationMono-BoldItalic.ttf");
  EXPECT_EQ(Found("Liberation Mono", "bold oblique"), "LiberationMono-BoldItalic.ttf");
  EXPECT_EQ(Found("Liberation Sans", "Regular"), "LiberationSans-Regular.ttf");
  EXPECT_EQ(Found("Liberation Sans", "Semi-Bold"), "LiberationSans-Bold.ttf");
  EXPECT_EQ(Found("Liberation Sans", "no such words"), "LiberationSans-Regular.ttf");
}

TEST_F(Catalog, TellsWhetherAFaceHasAStyle) {
  const auto has = [](const char* wanted, const char* style) {
    return FontCatalog::HasStyle(*FontCatalog::Get().Find("Liberation Sans", wanted), style);
  };
  for (const char* style : {"", "Regular", "Book", "Roman", "normal"}) {
    EXPECT_TRUE(has(style, style)) << style;
  }
  for (const char* style :
       {"Bold", "bold", "Bold Italic", "Oblique", "Italic Bold", "Ultra-Bold"}) {
    EXPECT_TRUE(has(style, style)) << style;
    EXPECT_FALSE(has("", style)) << style;
  }
  for (const char* style :
       {"Light", "Semi-Bold", "Condensed", "Medium Italic", "Swash", "Bold Swash"}) {
    EXPECT_FALSE(has(style, style)) << style;
  }
}

TEST_F(Catalog, FindsFamiliesWithTheSameMetrics) {
  for (const char* name : {"Arial", "Times New Roman", "Courier New"}) {
    EXPECT_NE(Found(name), "") << name;
    EXPECT_NE(Found(name, "Bold"), Found(name)) << name;
  }
  EXPECT_NE(Found("Helvetica"), "");
}

TEST_F(Catalog, FindsGenericFamiliesAndWholeNames) {
  for (const char* generic :
       {"sans-serif", "sans", "serif", "monospace", "mono", "cursive", "fantasy", "system-ui"}) {
    EXPECT_NE(Found(generic), "") << generic;
  }
  EXPECT_EQ(Found("no such family"), "");
  EXPECT_NE(Found("monospace", "Bold"), "");
  EXPECT_EQ(Found("LiberationSans-Bold"), "LiberationSans-Bold.ttf");
  EXPECT_EQ(Found("Liberation Sans Bold Italic"), "LiberationSans-BoldItalic.ttf");
}

TEST_F(Catalog, TakesNamesLiterally) {
  for (const char* name : {"", "No Such Font", "Liberation Sans:bold", "Liberation Sans-12", "*",
                           "Liberation Sans,Arial", "Liberation\\ Sans", ":lang=ja", "\xff\xfe"}) {
    EXPECT_EQ(Found(name), "") << name;
  }
}

TEST_F(Catalog, OffersFacesForOtherCharacters) {
  const FontCatalog& catalog = FontCatalog::Get();
  const InstalledFace& face = *catalog.Find("Liberation Sans", "");
  EXPECT_TRUE(catalog.Has(face, U'A'));
  EXPECT_FALSE(catalog.Has(face, U'\u3042'));
  EXPECT_FALSE(catalog.Substitutes(face, "").empty());
}

TEST(FontStyle, ReadsWords) {
  const auto expect = [](const char* words, int weight, int slant, int width) {
    const FontStyle style = ParseFontStyle(words);
    EXPECT_EQ(style.weight, weight) << words;
    EXPECT_EQ(style.slant, slant) << words;
    EXPECT_EQ(style.width, width) << words;
  };
  expect("", 80, 0, 100);
  expect("Regular", 80, 0, 100);
  expect("Bold", 200, 0, 100);
  expect("bold italic", 200, 100, 100);
  expect("BoldOblique", 200, 110, 100);
  expect("Semi-Bold", 180, 0, 100);
  expect("ExtraLight Condensed", 40, 0, 75);
  expect("Light Semi Condensed Italic", 50, 100, 87);
  expect("nonsense", 80, 0, 100);
}

TEST(FontFace, IsNotMadeOfOtherFiles) {
  EXPECT_EQ(FontFace::Load("/no/such/file", 0), nullptr);
  EXPECT_EQ(FontFace::Load(testing::SourceDir() + "/README.md", 0), nullptr);
}

TEST_F(Catalog, GivesFacesThatCanBeMeasuredAndCutDown) {
  const InstalledFace& installed = *FontCatalog::Get().Find("Liberation Sans", "");
  EXPECT_EQ(FontFace::Load(installed.file, 1), nullptr);
  EXPECT_EQ(FontFace::Load(installed.file, -1), nullptr);
  const auto face = FontFace::Load(installed.file, installed.index);
  ASSERT_NE(face, nullptr);
  EXPECT_EQ(face->name(), "LiberationSans");
  EXPECT_EQ(face->outline_kind(), OutlineKind::kTrueType);
  EXPECT_EQ(face->embedding_right(), EmbeddingRight::kSubset);
  EXPECT_EQ(face->units_per_em(), 2048);
  EXPECT_EQ(face->Advance(face->GlyphOf(U'A')), 1366);
  EXPECT_EQ(face->GlyphOf(U'\u3042'), 0U);
  const std::string program = face->Subset({face->GlyphOf(U'A')});
  EXPECT_LT(program.size(), 2000U);
  EXPECT_EQ(program.substr(0, 4), std::string("\0\1\0\0", 4));
  EXPECT_EQ(program, face->Subset({face->GlyphOf(U'A')}));
}

// The face with other licence bits.
EmbeddingRight RightWith(int bits) {
  const InstalledFace& installed = *FontCatalog::Get().Find("Liberation Sans", "");
  std::string bytes = TarnixTools::testing::ReadBytes(installed.file);
  const std::size_t entry = bytes.find("OS/2");
  std::size_t table = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    table = table << 8 | static_cast<unsigned char>(bytes[entry + 8 + i]);
  }
  bytes[table + 8] = static_cast<char>(bits >> 8);
  bytes[table + 9] = static_cast<char>(bits);
  const TarnixTools::testing::TempDir directory;
  const auto face =
      FontFace::Load(TarnixTools::testing::WriteBytes(directory.Path("font.ttf"), bytes), 0);
  return face == nullptr ? EmbeddingRight::kNone : face->embedding_right();
}

TEST_F(Catalog, HeedsLicences) {
  EXPECT_EQ(RightWith(0), EmbeddingRight::kSubset);
  EXPECT_EQ(RightWith(0x0002), EmbeddingRight::kNone);
  EXPECT_EQ(RightWith(0x0004), EmbeddingRight::kSubset);
  EXPECT_EQ(RightWith(0x000A), EmbeddingRight::kSubset);  // the bit that allows most counts
  EXPECT_EQ(RightWith(0x0100), EmbeddingRight::kWholeOnly);
  EXPECT_EQ(RightWith(0x0200), EmbeddingRight::kNone);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
