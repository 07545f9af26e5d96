// Generic regions of all four templates (ISO/IEC 14492, figures 3 to 11), their adaptive pixels where
// they nominally are and elsewhere, with and without typical prediction; poppler is a judge.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/Jbig2Coder.h"
#include "support/Readers.h"

namespace TarnixTools::engines {
namespace {

using namespace testing::jbig2;

using Place = std::pair<int, int>;

struct Template {
  std::vector<Place> pixels;  // from the lowest bit of a context on, as it is numbered there
  std::vector<std::size_t> adaptive_at;  // which of them are adaptive
  int typical_context = 0;               // of the decision that a row is like the one above
};

const std::vector<Template> kTemplates = {
    {{{-1, 0},
      {-2, 0},
      {-3, 0},
      {-4, 0},
      {3, -1},
      {2, -1},
      {1, -1},
      {0, -1},
      {-1, -1},
      {-2, -1},
      {-3, -1},
      {2, -2},
      {1, -2},
      {0, -2},
      {-1, -2},
      {-2, -2}},
     {4, 10, 11, 15},
     0x9B25},
    {{{-1, 0},
      {-2, 0},
      {-3, 0},
      {3, -1},
      {2, -1},
      {1, -1},
      {0, -1},
      {-1, -1},
      {-2, -1},
      {2, -2},
      {1, -2},
      {0, -2},
      {-1, -2}},
     {3},
     0x0795},
    {{{-1, 0}, {-2, 0}, {2, -1}, {1, -1}, {0, -1}, {-1, -1}, {-2, -1}, {1, -2}, {0, -2}, {-1, -2}},
     {2},
     0x00E5},
    {{{-1, 0}, {-2, 0}, {-3, 0}, {-4, 0}, {2, -1}, {1, -1}, {0, -1}, {-1, -1}, {-2, -1}, {-3, -1}},
     {4},
     0x0195}};

std::string Coded(const Picture& picture, const Template& of, bool typical_prediction) {
  Coder coder;
  bool was_typical = false;
  const Picture white(1, std::string(picture[0].size(), '.'));
  for (std::size_t y = 0; y < picture.size(); ++y) {
    const bool is_typical = typical_prediction && picture[y] == (y > 0 ? picture[y - 1] : white[0]);
    if (typical_prediction) {
      coder.Put(std::to_string(of.typical_context), is_typical != was_typical ? 1 : 0);
      was_typical = is_typical;
    }
    for (std::size_t x = 0; !is_typical && x < picture[y].size(); ++x) {
      int context = 0;
      for (std::size_t bit = 0; bit < of.pixels.size(); ++bit) {
        const auto [dx, dy] = of.pixels[bit];
        const bool is_black = IsBlack(picture, static_cast<int>(x) + dx, static_cast<int>(y) + dy);
        context |= is_black ? 1 << bit : 0;
      }
      coder.Put(std::to_string(context), picture[y][x] == '#' ? 1 : 0);
    }
  }
  return coder.Finish();
}

// moved: how far the adaptive pixels are moved, each a little further than the one before.
std::string Region(const Picture& picture, std::size_t number, bool typical_prediction,
                   const Place& moved) {
  Template of = kTemplates[number];
  std::string adaptive;
  for (std::size_t i = 0; i < of.adaptive_at.size(); ++i) {
    auto& [x, y] = of.pixels[of.adaptive_at[i]];
    const int times = static_cast<int>(i) + 1;
    x += moved.first * times;
    y += moved.second * times;
    adaptive += {static_cast<char>(x), static_cast<char>(y)};
  }
  const int width = static_cast<int>(picture[0].size());
  const int height = static_cast<int>(picture.size());
  return Page(width, height) +
         Segment(1, 38,
                 RegionInformation(width, height) +
                     static_cast<char>(number << 1U | (typical_prediction ? 8U : 0U)) + adaptive +
                     Coded(picture, of, typical_prediction));
}

// Noise between bars that repeat, so that some rows are like the one above.
Picture Sample(int width, int height) {
  unsigned state = 5;
  return Painted(width, height, [&](int x, int y) {
    state = state * 1664525U + 1013904223U;
    return y % 7 < 3 ? x / 5 % 2 == 0 && y > 6 : state >> 30U == 0 || (x + y) % 11 == 0;
  });
}

TEST(Jbig2Templates, AreDecoded) {
  for (std::size_t number = 0; number < kTemplates.size(); ++number) {
    for (const bool typical_prediction : {false, true}) {
      for (const Place& moved : {Place(0, 0), Place(2, -3), Place(-9, -1), Place(30, -20)}) {
        for (const auto& [width, height] : {std::pair(41, 25), std::pair(5, 9), std::pair(1, 3)}) {
          SCOPED_TRACE(std::to_string(number) + (typical_prediction ? " typical " : " ") +
                       std::to_string(moved.first) + " " + std::to_string(width));
          const Picture picture = Sample(width, height);
          const std::string data = Region(picture, number, typical_prediction, moved);
          EXPECT_EQ(Decoded(data, width, height), picture);
        }
      }
    }
  }
}

TEST(Jbig2Templates, AreDecodedByPopplerAlike) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const Picture picture = Sample(41, 25);
  for (std::size_t number = 0; number < kTemplates.size(); ++number) {
    EXPECT_EQ(DecodedByPoppler(Region(picture, number, true, {2, -3}), 41, 25), picture) << number;
    EXPECT_EQ(DecodedByPoppler(Region(picture, number, false, {0, 0}), 41, 25), picture) << number;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
