#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/images/SamplePicture.h"
#include "engines/optimizer/images/ScenePicture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using Samples = std::vector<std::uint8_t>;

// Rows of packed samples; there are none behind the data.
class GivenSamples : public SampleRows {
 public:
  GivenSamples(const SampleFormat& format, std::string data)
      : SampleRows(format), data_(std::move(data)) {}

  std::span<const std::uint8_t> ReadRow() override {
    const std::size_t start = std::min(next_, data_.size());
    next_ += format().row_bytes();
    return {reinterpret_cast<const std::uint8_t*>(data_.data()) + start,
            std::min(next_, data_.size()) - start};
  }

  std::uint64_t held_bytes() const override { return 77; }

 private:
  std::string data_;
  std::size_t next_ = 0;
};

SampleRowsPtr Given(std::uint32_t width, std::uint32_t height, int components, int bits,
                    const std::string& data) {
  return std::make_unique<GivenSamples>(
      SampleFormat{.width = width, .height = height, .components = components, .bits = bits}, data);
}

TEST(OwnSamples, AreStretchedToBytes) {
  const auto read = [](int bits, const std::string& data) {
    return ReadPicture(*OwnSamples(Given(4, 1, 1, bits, data))).samples;
  };
  EXPECT_EQ(read(1, "\x50"), (Samples{0, 255, 0, 255}));
  EXPECT_EQ(read(2, "\x1B"), (Samples{0, 85, 170, 255}));
  EXPECT_EQ(read(4, std::string("\x1F\x80", 2)), (Samples{17, 255, 136, 0}));
  EXPECT_EQ(read(8, "\x01\x7F\x80\xFF"), (Samples{1, 127, 128, 255}));
  EXPECT_EQ(read(16, std::string("\x01\xFF\x7F\x00\x80\x80\xFF\x00", 8)),
            (Samples{1, 127, 128, 255}));
}

TEST(OwnSamples, EndWithTheData) {
  const SamplePicture whole = ReadPicture(*OwnSamples(Given(2, 2, 1, 8, "abcd")));
  EXPECT_TRUE(whole.is_whole);
  EXPECT_EQ(whole.samples, (Samples{'a', 'b', 'c', 'd'}));
  const SamplePicture cut = ReadPicture(*OwnSamples(Given(2, 2, 1, 8, "abc")));
  EXPECT_FALSE(cut.is_whole);
  EXPECT_EQ(cut.samples, (Samples{'a', 'b', 'c', 255}));
  const SamplePicture gap = ReadPicture(*OwnSamples(Given(2, 2, 1, 8, "")));
  EXPECT_FALSE(gap.is_whole);
  EXPECT_EQ(OwnSamples(Given(2, 2, 1, 8, ""))->held_bytes(), 77U);
}

TEST(OwnSamples, HaveOneThreeOrFourComponents) {
  for (const int components : {1, 3, 4}) {
    const SamplePicture picture = ReadPicture(*OwnSamples(Given(1, 1, components, 8, "wxyz")));
    EXPECT_EQ(picture.components, components);
    EXPECT_EQ(picture.samples.size(), static_cast<std::size_t>(components));
    EXPECT_EQ(picture.samples.back(), "wxyz"[components - 1]);
    EXPECT_TRUE(IsPictureOf(components));
  }
  EXPECT_FALSE(IsPictureOf(0) || IsPictureOf(2) || IsPictureOf(5));
}

TEST(PaletteSamples, AreTheColorsOfTheirIndices) {
  const std::string table = "aaabbbccc";
  const SamplePicture picture = ReadPicture(*PaletteSamples(Given(4, 1, 1, 2, "\x1B"), table, 3));
  EXPECT_EQ(picture.components, 3);
  EXPECT_EQ(picture.samples, (Samples{'a', 'a', 'a', 'b', 'b', 'b', 'c', 'c', 'c', 0, 0, 0}));
  EXPECT_TRUE(picture.is_whole);
  const SamplePicture gray = ReadPicture(*PaletteSamples(Given(2, 1, 1, 8, "\x01"), "xy", 1));
  EXPECT_EQ(gray.samples, (Samples{'y', 'x'}));
  EXPECT_FALSE(gray.is_whole);
  const SamplePicture inks =
      ReadPicture(*PaletteSamples(Given(1, 2, 1, 8, std::string("\x01\xFF", 2)), "abcdefgh", 4));
  EXPECT_EQ(inks.samples, (Samples{'e', 'f', 'g', 'h', 0, 0, 0, 0}));
  EXPECT_EQ(PaletteSamples(Given(1, 1, 1, 8, ""), "", 1)->held_bytes(), 77U);
}

TEST(PartOf, IsARectangleOfRows) {
  const SamplePicture picture =
      PictureOf(5, 4, 3, [](int x, int y, int c) { return (50 * y + 5 * x + c) / 255.0; });
  const SamplePicture part = ReadPicture(*PartOf(RowsOf(picture), 1, 2, 2, 2));
  EXPECT_EQ(part.width, 2U);
  EXPECT_EQ(part.height, 2U);
  EXPECT_EQ(part.samples, (Samples{105, 106, 107, 110, 111, 112, 155, 156, 157, 160, 161, 162}));
  EXPECT_TRUE(part.is_whole);
  const auto cut = PartOf(OwnSamples(Given(2, 3, 1, 8, "abcde")), 0, 1, 1, 2);
  EXPECT_EQ(cut->held_bytes(), 77U);
  const SamplePicture read = ReadPicture(*cut);
  EXPECT_EQ(read.samples[0], 'c');
  EXPECT_FALSE(read.is_whole);
}

TEST(BandsOf, AreRowsFromAllOverThePicture) {
  const auto picture = [](int height) {
    return PictureOf(2, height, 1, [](int x, int y, int) { return (y / 8 + x) % 250 / 255.0; });
  };
  EXPECT_FALSE(BandsOf(picture(768)));
  for (const int height : {769, 1600}) {
    const SamplePicture whole = picture(height);
    const auto bands = BandsOf(whole);
    ASSERT_TRUE(bands);
    ASSERT_EQ(bands->height, 512U);
    EXPECT_EQ(bands->width, 2U);
    EXPECT_EQ(bands->components, 1);
    ASSERT_EQ(bands->samples.size(), 1024U);
    for (std::uint32_t row = 0; row < 512; ++row) {
      const std::uint32_t band = row / 64;
      const std::uint32_t from =
          (static_cast<std::uint32_t>(height) - 64) * (2 * band + 1) / 16 + row % 64;
      ASSERT_EQ(bands->row(row)[0], whole.row(from)[0]) << row;
      ASSERT_EQ(bands->row(row)[1], whole.row(from)[1]) << row;
    }
  }
}

TEST(Scaled, GoesBothWays) {
  SamplePicture picture =
      PictureOf(4, 2, 1, [](int x, int y, int) { return (10 * x + 100 * y) / 255.0; });
  EXPECT_EQ(Scaled(picture, 4, 2).samples, picture.samples);
  EXPECT_EQ(Scaled(picture, 2, 1).samples, (Samples{55, 75}));
  EXPECT_EQ(Scaled(picture, 1, 2).samples, (Samples{15, 115}));
  const SamplePicture larger = Scaled(picture, 8, 4);
  EXPECT_EQ(larger.width, 8U);
  EXPECT_EQ(larger.height, 4U);
  EXPECT_EQ(larger.samples.front(), 0);
  EXPECT_EQ(larger.samples.back(), 130);
  const SamplePicture mixed = Scaled(picture, 2, 4);
  EXPECT_EQ(mixed.width, 2U);
  EXPECT_EQ(mixed.samples.front(), 5);
  EXPECT_EQ(mixed.samples.back(), 125);
  EXPECT_TRUE(mixed.is_whole);
  picture.is_whole = false;
  EXPECT_FALSE(Scaled(picture, 2, 1).is_whole);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
