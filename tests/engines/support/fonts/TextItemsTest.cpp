#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/BidiLevels.h"
#include "engines/support/fonts/TextItems.h"
#include "engines/support/fonts/TextShaper.h"

namespace TarnixTools::engines::fonts {
namespace {

class Items : public ::testing::Test {
 protected:
  void SetUp() override {
    face_ = FontCatalog::Get().Find("Liberation Sans", "");
    if (face_ == nullptr) {
      GTEST_SKIP() << "needs the fonts Liberation";
    }
  }

  TextItems Cut(const std::u32string& text) {
    return CutIntoItems(faces_, *face_, text, BidiLevels(text));
  }

  // The name of the face that a text without missing characters is set in first.
  std::string FaceOf(const std::u32string& text) {
    const TextItems cut = Cut(text);
    return cut.missing != 0 || cut.items.empty() ? "" : cut.items[0].face->name();
  }

  FaceStore faces_;
  const InstalledFace* face_ = nullptr;
};

TEST_F(Items, AreOneWhereFaceScriptAndDirectionStay) {
  const TextItems cut = Cut(U"Page 12, of \u00e9t\u00e9");
  ASSERT_EQ(cut.items.size(), 1U);
  EXPECT_EQ(cut.items[0].first, 0U);
  EXPECT_EQ(cut.items[0].count, 15U);
  EXPECT_EQ(cut.items[0].face->name(), "LiberationSans");
  EXPECT_EQ(cut.missing, 0U);
  EXPECT_TRUE(Cut(U"").items.empty());
}

TEST_F(Items, AreCutWhereTheScriptChanges) {
  const TextItems cut = Cut(U"1 ab \u03b1\u03b2");
  ASSERT_EQ(cut.items.size(), 2U);
  EXPECT_EQ(cut.items[0].count, 5U);  // digits and spaces go with the letters
  EXPECT_NE(cut.items[0].script, cut.items[1].script);
}

TEST_F(Items, AreCutWhereTheDirectionChanges) {
  const TextItems cut = Cut(U"ab \u05d0\u05d1");
  if (cut.missing != 0) {
    GTEST_SKIP() << "needs a font with Hebrew letters";
  }
  EXPECT_EQ(cut.items.back().level, 1);
  EXPECT_EQ(cut.items.back().count, 2U);
}

TEST_F(Items, KeepWordsOfAnotherFaceTogether) {
  const TextItems cut = Cut(U"a \u4e2d \u6587 b");
  if (cut.missing != 0) {
    GTEST_SKIP() << "needs a font with ideographs";
  }
  ASSERT_EQ(cut.items.size(), 3U);
  EXPECT_EQ(cut.items[1].first, 2U);
  EXPECT_EQ(cut.items[1].count, 4U);  // with the spaces
  EXPECT_NE(cut.items[1].face, cut.items[0].face);
  EXPECT_EQ(cut.items[2].face, cut.items[0].face);
}

// Ideographs look different in each of these.
TEST_F(Items, TakeIdeographsOfTheTextsLanguage) {
  if (FontCatalog::Get().Find("Noto Sans CJK JP", "") == nullptr) {
    GTEST_SKIP() << "needs the fonts Noto Sans CJK";
  }
  for (const auto& [text, language] : {std::pair(std::u32string(U"\u76f4\u3042"), "jp-"),
                                       std::pair(std::u32string(U"\u76f4\u30a2"), "jp-"),
                                       std::pair(std::u32string(U"\u76f4\uac00"), "kr-"),
                                       std::pair(std::u32string(U"\u76f4\u3105"), "tc-"),
                                       std::pair(std::u32string(U"\u76f4"), "sc-")}) {
    const std::string name = FaceOf(text);
    EXPECT_NE(name.find(language), std::string::npos) << name << ", not of " << language;
  }
}

TEST_F(Items, KeepMarksWithWhatTheyStandOn) {
  for (const std::u32string& text :
       {std::u32string(U"e\u0301"), std::u32string(U"q\u0323\u0307"), std::u32string(U"a\ufe0f"),
        std::u32string(U"\u0301"), std::u32string(U"x\u200d")}) {
    const TextItems cut = Cut(text);
    ASSERT_EQ(cut.missing, 0U);
    ASSERT_EQ(cut.items.size(), 1U);
    EXPECT_EQ(cut.items[0].count, text.size());
  }
}

TEST_F(Items, AreSetInAFaceThatHasTheParts) {
  // Not in the face themselves: made of a letter and a mark, or of another space or hyphen.
  EXPECT_EQ(FaceOf(U"\u212b"), "LiberationSans");  // the sign for angstrom is a letter with a ring
  EXPECT_EQ(FaceOf(U"\u2002"), "LiberationSans");
  EXPECT_EQ(FaceOf(U"\u2011"), "LiberationSans");
  EXPECT_EQ(FaceOf(U"\u200b\u00ad"), "LiberationSans");
  EXPECT_EQ(FaceOf(U"\t\n"), "LiberationSans");
}

TEST_F(Items, NameTheFirstCharacterThatIsMissing) {
  const TextItems cut = Cut(U"a\U0010FFFDb\U0010FFFE");
  EXPECT_EQ(cut.missing, U'\U0010FFFD');
  ASSERT_EQ(cut.items.size(), 2U);
  EXPECT_EQ(cut.items[1].first, 2U);
  // What stands on it stays.
  const TextItems marked = Cut(U"\U0010FFFD\u0301");
  EXPECT_EQ(marked.missing, U'\U0010FFFD');
  ASSERT_EQ(marked.items.size(), 1U);
  EXPECT_EQ(marked.items[0].first, 1U);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
