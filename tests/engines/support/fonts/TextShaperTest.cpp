#include <gtest/gtest.h>

#include "engines/support/fonts/BidiLevels.h"
#include "engines/support/fonts/TextShaper.h"

namespace TarnixTools::engines::fonts {
namespace {

using Levels = std::vector<std::uint8_t>;
using Order = std::vector<std::size_t>;

TEST(BidiLevels, AreZeroForWhatIsWrittenFromTheLeft) {
  EXPECT_EQ(BidiLevels(U"ab 12"), Levels(5, 0));
  EXPECT_EQ(BidiLevels(U""), Levels());
}

TEST(BidiLevels, FollowDirectionsOfLetters) {
  EXPECT_EQ(BidiLevels(U"a \u05d0\u05d1 b"), (Levels{0, 0, 1, 1, 0, 0}));
  EXPECT_EQ(BidiLevels(U"\u05d0 12 "), (Levels{1, 1, 2, 2, 1}));
  EXPECT_EQ(BidiLevels(U"a\u05d0 "), (Levels{0, 1, 0}));
}

TEST(VisualOrder, ReversesRunsFromTheRight) {
  EXPECT_EQ(VisualOrder({0, 1, 0}), (Order{0, 1, 2}));
  EXPECT_EQ(VisualOrder({1, 2, 1}), (Order{2, 1, 0}));
  EXPECT_EQ(VisualOrder({0, 1, 2, 1, 0}), (Order{0, 3, 2, 1, 4}));
  EXPECT_EQ(VisualOrder({}), Order());
}

class Shaper : public ::testing::Test {
 protected:
  void SetUp() override {
    face_ = FontCatalog::Get().Find("Liberation Sans", "");
    if (face_ == nullptr) {
      GTEST_SKIP() << "needs the fonts Liberation";
    }
  }

  ShapedLine Shape(const std::u32string& text) { return ShapeLine(faces_, *face_, text); }

  FaceStore faces_;
  const InstalledFace* face_ = nullptr;
};

TEST_F(Shaper, GivesGlyphsWithTheirCharacters) {
  const ShapedLine line = Shape(U"Ab c");
  ASSERT_EQ(line.runs.size(), 1U);
  EXPECT_EQ(line.runs[0].glyphs.size(), 4U);
  ASSERT_EQ(line.runs[0].clusters.size(), 4U);
  EXPECT_EQ(line.runs[0].clusters[3].first_character, 3U);
  EXPECT_EQ(line.runs[0].clusters[3].character_count, 1U);
  EXPECT_EQ(line.missing, 0U);
  EXPECT_NEAR(line.width, (1366 + 1139 + 569 + 1024) / 2048.0, 0.01);
}

TEST_F(Shaper, PutsEveryCharacterIntoOneCluster) {
  for (const std::u32string& text :
       {std::u32string(U"office e\u0301 q\u0323\u0307"),
        std::u32string(U"\u0645\u064f\u062d\u064e\u0645\u064e\u0651\u062f \u0644\u0627 12 ab"),
        std::u32string(U"\u0e19\u0e49\u0e33"),
        std::u32string(U"\u200eab\u0939\u093f\u200d\u0928\u094d"),
        std::u32string(U"a\u200b\u200e\u00adb\ufe0f"), std::u32string(U"\u0301")}) {
    const ShapedLine line = Shape(text);
    if (line.missing != 0) {
      continue;  // no font for it here
    }
    std::vector<int> covered(line.text.size(), 0);
    for (const GlyphRun& run : line.runs) {
      for (const GlyphCluster& cluster : run.clusters) {
        for (std::size_t i = 0; i < cluster.character_count; ++i) {
          ++covered[cluster.first_character + i];
        }
      }
    }
    EXPECT_EQ(covered, std::vector<int>(line.text.size(), 1));
  }
}

TEST_F(Shaper, NamesTheFirstCharacterThatNoFaceHas) {
  const ShapedLine line = Shape(U"ab\U0010FFFDcd\U0010FFFE");
  EXPECT_EQ(line.missing, U'\U0010FFFD');
  EXPECT_NEAR(line.width, Shape(U"abcd").width, 0.01);
}

TEST_F(Shaper, LeavesControlCharactersOut) {
  EXPECT_EQ(Shape(U"a\r\n\u0085\u2028").text, U"a");
  EXPECT_EQ(Shape(U"a\tb").text, U"a b");
}

TEST_F(Shaper, SetsNumbersBetweenWordsFromTheRight) {
  const ShapedLine line = Shape(U"\u05d0 12 \u05d1");
  if (line.missing != 0) {
    GTEST_SKIP() << "needs a font with Hebrew letters";
  }
  std::u32string seen;
  for (const GlyphRun& run : line.runs) {
    for (const GlyphCluster& cluster : run.clusters) {
      seen += line.text.substr(cluster.first_character, cluster.character_count);
    }
  }
  EXPECT_EQ(seen, U"\u05d1 12 \u05d0");
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
