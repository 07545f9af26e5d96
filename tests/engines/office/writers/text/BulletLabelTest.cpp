#include <gtest/gtest.h>

#include "engines/office/writers/text/BulletLabel.h"

namespace TarnixTools::engines::office {
namespace {

TEST(BulletLabels, OfSymbolFontsAreCharactersOfAnyFont) {
  std::string shown;
  for (const char* code : {"\uF0A7", "\uF06E", "\uF071", "\uF0A8", "\uF06C", "\uF0D8", "\uF0E0",
                           "\uF0E8", "\uF0FC", "\uF076", "\uF02D", "\uF0B0", "\uF0B7"}) {
    const BulletLabel label = BulletLabelOf(code);
    EXPECT_FALSE(label.is_own_face);
    shown += label.text + " ";
  }
  EXPECT_EQ(shown, "▪ ■ ❑ ◻ ● ➢ → ➔ ✓ ❖ - ° • ");
}

TEST(BulletLabels, OfOtherFontsStayWhatTheyAre) {
  for (const char* text : {"*", "–", "(a)", "\uD7FF", "\uF900"}) {
    EXPECT_EQ(BulletLabelOf(text).text, text);
    EXPECT_TRUE(BulletLabelOf(text).is_own_face);
  }
  for (const char* text : {"", "\uE000", "\uF8FF"}) {
    EXPECT_EQ(BulletLabelOf(text).text, "•");
    EXPECT_FALSE(BulletLabelOf(text).is_own_face);
  }
}

}  // namespace
}  // namespace TarnixTools::engines::office
