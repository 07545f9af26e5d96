// Words of style names, with fontconfig as a judge of what they stand for.
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/FontStyle.h"
#include "support/Readers.h"

namespace TarnixTools::engines::fonts {
namespace {

// The number that fontconfig has for a property of a pattern that is nothing but a word; -1 for none.
int NumberOf(const std::string& word, const std::string& property) {
  const std::string output = testing::RunProgram({"fc-pattern", ":" + word}).output;
  std::smatch found;
  return std::regex_search(output, found, std::regex(property + R"(: ([0-9]+))"))
             ? std::stoi(found[1])
             : -1;
}

TEST(FontStyle, KnowsTheWordsThatFontconfigHas) {
  TARNIX_NEED_PROGRAM("fc-pattern");
  for (const char* word :
       {"extralight", "ultralight", "semilight", "demilight", "semibold", "demibold", "extrabold",
        "ultrabold", "thin", "light", "book", "medium", "bold", "black", "heavy", "regular"}) {
    const FontStyle style = ParseFontStyle(word);
    EXPECT_EQ(style.weight, NumberOf(word, "weight")) << word;
    EXPECT_TRUE(style.is_known) << word;
    EXPECT_EQ(style.slant, 0) << word;
    EXPECT_EQ(style.width, 100) << word;
  }
  for (const char* word : {"italic", "oblique"}) {
    EXPECT_EQ(ParseFontStyle(word).slant, NumberOf(word, "slant")) << word;
  }
  for (const char* word : {"ultracondensed", "extracondensed", "semicondensed", "condensed",
                           "semiexpanded", "extraexpanded", "ultraexpanded", "expanded"}) {
    EXPECT_EQ(ParseFontStyle(word).width, NumberOf(word, "width")) << word;
    EXPECT_TRUE(ParseFontStyle(word).is_known) << word;
  }
}

TEST(FontStyle, KnowsOtherWordsForThem) {
  EXPECT_EQ(ParseFontStyle("narrow").width, ParseFontStyle("condensed").width);
  EXPECT_EQ(ParseFontStyle("demi").weight, ParseFontStyle("semibold").weight);
  for (const char* word : {"extrablack", "ultrablack"}) {
    EXPECT_EQ(ParseFontStyle(word).weight, 215) << word;
  }
  for (const char* word : {"regular", "roman", "normal", "upright", "plain", ""}) {
    const FontStyle style = ParseFontStyle(word);
    EXPECT_EQ(style.weight, 80) << word;
    EXPECT_TRUE(style.is_known) << word;
  }
}

TEST(FontStyle, PutsWordsTogetherHoweverTheyAreWritten) {
  const FontStyle style = ParseFontStyle("Semi-Bold Condensed ITALIC");
  EXPECT_EQ(style.weight, 180);
  EXPECT_EQ(style.slant, 100);
  EXPECT_EQ(style.width, 75);
  EXPECT_TRUE(style.is_known);
  EXPECT_EQ(ParseFontStyle("SemiExpanded Extra_Light Oblique").width, 113);
  EXPECT_EQ(ParseFontStyle("SemiExpanded Extra_Light Oblique").weight, 40);
  EXPECT_FALSE(ParseFontStyle("Bold Wobbly").is_known);
  EXPECT_EQ(ParseFontStyle("Bold Wobbly").weight, 200);
}

TEST(FontStyle, IsTheSameWithinALittle) {
  const FontStyle regular;
  EXPECT_TRUE(IsOfStyle(regular, {.weight = 85, .width = 95}));
  EXPECT_TRUE(IsOfStyle(regular, {.weight = 75, .width = 105}));
  EXPECT_FALSE(IsOfStyle(regular, {.weight = 86}));
  EXPECT_FALSE(IsOfStyle(regular, {.width = 94}));
  EXPECT_FALSE(IsOfStyle(regular, {.slant = 100}));
  EXPECT_TRUE(IsOfStyle({.slant = 110}, {.slant = 100}));
  EXPECT_FALSE(IsOfStyle({.is_known = false}, regular));
}

TEST(FontStyle, IsFurtherByItsSlantThanByItsWidthAndByThatThanByItsWeight) {
  const FontStyle regular;
  EXPECT_EQ(StyleDistance(regular, regular), 0);
  const int heavier = StyleDistance(regular, {.weight = 210});
  const int wider = StyleDistance(regular, {.width = 101});
  const int slanted = StyleDistance(regular, {.slant = 100});
  EXPECT_GT(heavier, 0);
  EXPECT_GT(StyleDistance({.slant = 110}, {.slant = 100}), 0);
  EXPECT_LT(StyleDistance({.slant = 110}, {.slant = 100}), heavier);
  EXPECT_GT(wider, heavier);
  EXPECT_GT(slanted, StyleDistance(regular, {.weight = 210, .width = 200}));
  EXPECT_EQ(StyleDistance(regular, {.weight = 60}), StyleDistance(regular, {.weight = 100}));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
