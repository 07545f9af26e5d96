// What becomes of words that were recognised on a picture of a page.
#include <atomic>
#include <cstdint>
#include <vector>

#include <gmock/gmock.h>

#include "engines/office/ocr/ScannedPage.h"
#include "engines/office/ocr/TesseractApi.h"
#include "engines/office/ocr/TextRecogniser.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(GrayPicture, TurnsToTheRight) {
  const GrayPicture picture{3, 2, {1, 2, 3, 4, 5, 6}};
  const auto turned = [&picture](int degrees) {
    const GrayPicture made = picture.Turned(degrees);
    EXPECT_EQ(made.width, degrees % 180 == 0 ? 3 : 2);
    EXPECT_EQ(made.height, degrees % 180 == 0 ? 2 : 3);
    return made.pixels;
  };
  EXPECT_THAT(turned(0), ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(turned(90), ElementsAre(4, 1, 5, 2, 6, 3));
  EXPECT_THAT(turned(180), ElementsAre(6, 5, 4, 3, 2, 1));
  EXPECT_THAT(turned(270), ElementsAre(3, 6, 2, 5, 1, 4));
}

// Eight words of two letters, on two lines, 28 pixels high over their baselines.
RecognisedText EightWords() {
  RecognisedText text;
  for (int i = 0; i < 8; ++i) {
    RecognisedWord word;
    word.text = "Ab";
    word.confidence = 55;
    word.left = 100 + 100 * (i % 4);
    word.right = word.left + 60;
    word.baseline = 200 + 100.0 * (i / 4);
    word.top = static_cast<int>(word.baseline) - 28;
    word.bottom = static_cast<int>(word.baseline) + 5;
    word.line = static_cast<std::uint32_t>(i / 4);
    text.words.push_back(word);
  }
  return text;
}

// On a picture of 1000 by 2000 pixels, a quarter of a point each.
PageModel PageOf(const RecognisedText& text) {
  PageModel page;
  page.images.resize(1);
  page.glyphs.resize(3);
  page.text = U"...";
  AddRecognisedText(text, 1000, 2000, 0.25, page);
  return page;
}

TEST(RecognisedText, StandsWhereItWasSeen) {
  const PageModel page = PageOf(EightWords());
  ASSERT_THAT(page.glyphs, SizeIs(16));
  EXPECT_THAT(page.images, IsEmpty());
  const Glyph& first = page.glyphs[0];
  EXPECT_EQ(page.text.substr(first.text, first.length), U"A");
  EXPECT_EQ(page.text.substr(page.glyphs[1].text, 1), U"b");
  EXPECT_DOUBLE_EQ(first.x, 25);
  EXPECT_DOUBLE_EQ(first.y, 50);
  EXPECT_DOUBLE_EQ(first.advance, 7.5);  // half of the word's width
  EXPECT_DOUBLE_EQ(page.glyphs[1].x, 32.5);
  EXPECT_DOUBLE_EQ(page.glyphs[8].y, 75);
  const TextStyle& style = page.styles.at(first.style);
  EXPECT_DOUBLE_EQ(style.size, 10);  // 28 pixels are seven tenths of 40
  EXPECT_EQ(style.face->family, "Times New Roman");
  EXPECT_TRUE(style.face->is_serif);
  EXPECT_DOUBLE_EQ(style.direction_x, 1);
  EXPECT_DOUBLE_EQ(style.direction_y, 0);
  EXPECT_THAT(page.styles, SizeIs(1));
}

TEST(RecognisedText, StandsAsThePageIsTurned) {
  const auto check = [](int turn, double x, double y, double direction_x, double direction_y) {
    RecognisedText text = EightWords();
    text.turn = turn;
    const PageModel page = PageOf(text);
    ASSERT_THAT(page.glyphs, SizeIs(16));
    EXPECT_DOUBLE_EQ(page.glyphs[0].x, x) << turn;
    EXPECT_DOUBLE_EQ(page.glyphs[0].y, y) << turn;
    EXPECT_DOUBLE_EQ(page.styles[0].direction_x, direction_x) << turn;
    EXPECT_DOUBLE_EQ(page.styles[0].direction_y, direction_y) << turn;
  };
  // The page is 250 by 500 points; the first letter, at 100 and 200 pixels of what is upright.
  check(90, 50, 475, 0, -1);
  check(180, 225, 450, -1, 0);
  check(270, 200, 25, 0, 1);
}

TEST(RecognisedText, HasOneSizeInALine) {
  RecognisedText text = EightWords();
  text.words[0].top -= 50;  // words that were seen too high
  text.words[1].top -= 1;
  text.words[3].top += 20;
  for (int i = 4; i < 8; ++i) {
    text.words[static_cast<std::size_t>(i)].text = "acegmnopqrsuvwxyz.,-:;'\"";
    text.words[static_cast<std::size_t>(i)].top = 300 - 24;
  }
  const PageModel page = PageOf(text);
  EXPECT_DOUBLE_EQ(page.styles.at(page.glyphs[0].style).size, 10.5);  // the third of four
  // Small letters alone: 24 pixels are 0.48 of 50.
  EXPECT_DOUBLE_EQ(page.styles.at(page.glyphs.back().style).size, 12.5);
  text = EightWords();
  for (RecognisedWord& word : text.words) {
    word.top = static_cast<int>(word.baseline) - (word.line == 0 ? 2 : 700);
  }
  const PageModel bounded = PageOf(text);
  EXPECT_DOUBLE_EQ(bounded.styles.at(bounded.glyphs[0].style).size, 4);
  EXPECT_DOUBLE_EQ(bounded.styles.at(bounded.glyphs.back().style).size, 200);
}

TEST(RecognisedText, IsNoneOfAPhotograph) {
  RecognisedText text = EightWords();
  text.words.pop_back();
  EXPECT_THAT(PageOf(text).glyphs, SizeIs(3));  // seven words are no text
  EXPECT_THAT(PageOf(text).images, SizeIs(1));
  text = EightWords();
  text.words[0].confidence = 54;
  EXPECT_THAT(PageOf(text).glyphs, SizeIs(3));
  text.words[1].confidence = 56;
  EXPECT_THAT(PageOf(text).glyphs, SizeIs(16));
  text.words.push_back(text.words[0]);
  text.words.back().confidence = 24;  // is not believed
  EXPECT_THAT(PageOf(text).glyphs, SizeIs(16));
  text.words.back().confidence = 25;
  text.words[1].confidence = 100;
  EXPECT_THAT(PageOf(text).glyphs, SizeIs(18));
}

// The limits of OpenMP are those of the thread, which may be the host's own.
TEST(TextRecogniser, LeavesTheThreadAsItWas) {
  const TesseractApi* api = LoadTesseract();
  if (api == nullptr || api->omp_get_max_active_levels == nullptr) {
    GTEST_SKIP() << "needs Tesseract with OpenMP";
  }
  const std::atomic<bool> is_cancelled = false;
  TextRecogniser recogniser(is_cancelled);
  const int before = api->omp_get_max_active_levels();
  recogniser.Recognise({100, 50, std::vector<std::uint8_t>(5000, 255)}, 300);
  EXPECT_EQ(api->omp_get_max_active_levels(), before);
  EXPECT_GT(before, 0);
}

}  // namespace
}  // namespace TarnixTools::engines::office
