#include <initializer_list>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/pictures/ColorCount.h"
#include "engines/support/pictures/PlaneBytes.h"

namespace TarnixTools::engines {
namespace {

Raster GrayRaster(const Bytes& row) {
  Raster raster;
  raster.color = PlaneOf(static_cast<std::uint32_t>(row.size()), 1, 8, {row});
  return raster;
}

Raster RgbRaster(const Bytes& row) {
  Raster raster;
  raster.space = PictureSpace::kRgb;
  raster.color = PlaneOf(static_cast<std::uint32_t>(row.size() / 3), 3, 8, {row});
  return raster;
}

// Gray from 0 on in steps, as one row.
Bytes Steps(unsigned count, unsigned step) {
  Bytes row;
  for (unsigned i = 0; i < count; ++i) {
    row.push_back(static_cast<unsigned char>(i * step));
  }
  return row;
}

TEST(ColorCount, StoresGrayInFewBits) {
  Raster black_and_white = GrayRaster({0, 255, 255, 0, 0, 0, 0, 255, 255});
  ReduceGray(black_and_white);
  EXPECT_EQ(black_and_white.color.bits(), 1);
  EXPECT_EQ(RowOf(black_and_white.color), (Bytes{0x61, 0x80}));
  Raster four = GrayRaster({0, 85, 170, 255, 85});
  ReduceGray(four);
  EXPECT_EQ(four.color.bits(), 2);
  EXPECT_EQ(RowOf(four.color), (Bytes{0x1B, 0x40}));
  Raster sixteen = GrayRaster({0, 17, 34, 255});
  ReduceGray(sixteen);
  EXPECT_EQ(sixteen.color.bits(), 4);
  EXPECT_EQ(RowOf(sixteen.color), (Bytes{0x01, 0x2F}));
  Raster more = GrayRaster({0, 18});
  ReduceGray(more);
  EXPECT_EQ(more.color.bits(), 8);
}

TEST(ColorCount, LeavesAlone) {
  Raster keyed = GrayRaster({0, 255});
  keyed.color_key = "0 0";
  ReduceGray(keyed);
  ReduceColors(keyed);
  EXPECT_EQ(keyed.color.bits(), 8);
  Raster inks;
  inks.space = PictureSpace::kCmyk;
  inks.color = PlaneOf(1, 4, 8, {{0, 0, 0, 0}});
  ReduceColors(inks);
  EXPECT_EQ(inks.color.channels(), 4);
  Raster rgb = RgbRaster({0, 0, 0});
  ReduceGray(rgb);
  EXPECT_EQ(rgb.color.channels(), 3);
}

TEST(ColorCount, MakesRgbWithoutColorGray) {
  Raster raster = RgbRaster({0, 0, 0, 255, 255, 255});
  ReduceColors(raster);
  EXPECT_EQ(raster.space, PictureSpace::kGray);
  EXPECT_EQ(RowOf(raster.color), Bytes{0x40});
}

TEST(ColorCount, KeepsRgbWhereAProfileSpeaksOfIt) {
  Raster raster = RgbRaster({9, 9, 9, 70, 70, 70});
  raster.profile = "profile";
  ReduceColors(raster);
  EXPECT_EQ(raster.space, PictureSpace::kIndexed);
  EXPECT_EQ(raster.palette, "\x09\x09\x09\x46\x46\x46");
}

TEST(ColorCount, GivesFewColorsAPalette) {
  Raster raster = RgbRaster({1, 2, 3, 4, 5, 6, 1, 2, 3, 7, 8, 9});
  ReduceColors(raster);
  EXPECT_EQ(raster.space, PictureSpace::kIndexed);
  EXPECT_EQ(raster.palette, "\1\2\3\4\5\6\7\x8\x9");
  EXPECT_EQ(raster.color.bits(), 2);
  EXPECT_EQ(RowOf(raster.color), Bytes{0x12});
}

TEST(ColorCount, GivesUpTo256ColorsAPalette) {
  Bytes row;
  for (unsigned i = 0; i < 256; ++i) {
    row.insert(row.end(), {static_cast<unsigned char>(i), 0, 1});
  }
  Raster most = RgbRaster(row);
  ReduceColors(most);
  EXPECT_EQ(most.palette.size(), 768U);
  EXPECT_EQ(most.color.bits(), 8);
  EXPECT_EQ(RowOf(most.color), Steps(256, 1));
  row.insert(row.end(), {0, 9, 9});
  Raster more = RgbRaster(row);
  ReduceColors(more);
  EXPECT_EQ(more.space, PictureSpace::kRgb);
}

TEST(ColorCount, GivesUpTo16GraysAPalette) {
  Raster few = GrayRaster({3, 9, 200, 3});
  ReduceColors(few);
  EXPECT_EQ(few.space, PictureSpace::kIndexed);
  EXPECT_EQ(few.palette, "\x03\x03\x03\x09\x09\x09\xC8\xC8\xC8");
  EXPECT_EQ(RowOf(few.color), Bytes{0x18});
  Raster inverted = GrayRaster({3, 9});
  inverted.is_inverted = true;
  ReduceColors(inverted);
  EXPECT_FALSE(inverted.is_inverted);
  EXPECT_EQ(inverted.palette, "\xFC\xFC\xFC\xF6\xF6\xF6");
  Raster many = GrayRaster(Steps(17, 3));
  ReduceColors(many);
  EXPECT_EQ(many.space, PictureSpace::kGray);
  Raster profiled = GrayRaster({3, 9});
  profiled.profile = "profile";
  ReduceColors(profiled);
  EXPECT_EQ(profiled.space, PictureSpace::kGray);
}

Raster WithPalette(const Bytes& indices, int bits, const std::string& palette,
                   int transparent = -1) {
  Raster raster;
  const auto width = static_cast<std::uint32_t>(indices.size() * 8 / static_cast<unsigned>(bits));
  ApplyPalette(raster, PlaneOf(width, 1, bits, {indices}), palette, transparent);
  return raster;
}

std::string GrayPalette(std::initializer_list<int> values) {
  std::string palette;
  for (const int value : values) {
    palette.append(3, static_cast<char>(value));
  }
  return palette;
}

TEST(Palette, HasAnEntryForEveryIndex) {
  const Raster raster = WithPalette({0, 1, 2, 1}, 8, "abcdefghi");
  EXPECT_EQ(raster.space, PictureSpace::kIndexed);
  EXPECT_EQ(raster.color.bits(), 2);
  EXPECT_EQ(RowOf(raster.color), Bytes{0x19});
  EXPECT_EQ(raster.palette, std::string("abcdefghi\0\0\0", 12));
  EXPECT_EQ(WithPalette({0x19}, 2, "abcdefghi").palette.size(), 12U);
  EXPECT_EQ(WithPalette({0}, 8, "ab").palette.size(), 6U);
  std::string too_many;
  for (int i = 0; i < 1000; ++i) {
    too_many += "abc";
  }
  EXPECT_EQ(WithPalette({0}, 8, too_many).palette.size(), 768U);
}

TEST(Palette, IsNoneForGray) {
  const Raster ascending = WithPalette({0, 1}, 8, GrayPalette({0, 255}));
  EXPECT_EQ(ascending.space, PictureSpace::kGray);
  EXPECT_TRUE(ascending.palette.empty());
  EXPECT_FALSE(ascending.is_inverted);
  const Raster descending = WithPalette({0, 1}, 8, GrayPalette({255, 170, 85, 0}));
  EXPECT_EQ(descending.space, PictureSpace::kGray);
  EXPECT_TRUE(descending.is_inverted);
  EXPECT_EQ(WithPalette({0, 1}, 8, GrayPalette({0, 7})).space, PictureSpace::kIndexed);
  EXPECT_EQ(WithPalette({0, 1}, 8, "abcdef").space, PictureSpace::kIndexed);
}

TEST(Palette, OfAnyGraysBecomesSamples) {
  std::string palette;
  for (unsigned i = 0; i < 256; ++i) {
    palette.append(3, static_cast<char>(i * 3));
  }
  const Raster raster = WithPalette({0, 1, 2, 255}, 8, palette);
  EXPECT_EQ(raster.space, PictureSpace::kGray);
  EXPECT_EQ(RowOf(raster.color), (Bytes{0, 3, 6, 253}));
}

TEST(Palette, StaysWhereAnIndexIsNotPainted) {
  const Raster raster = WithPalette({0, 1}, 8, GrayPalette({0, 255}), 1);
  EXPECT_EQ(raster.space, PictureSpace::kIndexed);
  EXPECT_EQ(raster.color_key, "1 1");
}

}  // namespace
}  // namespace TarnixTools::engines
