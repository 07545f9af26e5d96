#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/JpxDecoder.h"
#include "support/TestImages.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::Big32;

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// The code stream of a file, without its boxes.
std::string CodeStream(const std::string& file) {
  return file.substr(file.find("\xFF\x4F\xFF\x51"));
}

// A file whose colour space is another of those that are numbered.
std::string WithSpace(std::string file, std::uint32_t space) {
  const std::size_t box = file.find("colr");
  return file.replace(box + 7, 4, Big32(space));
}

std::optional<JpxSamples> DecodeHex(const char* hex, JpxDepth depth = JpxDepth::kScaled) {
  return DecodeJpx(FromHex(hex), depth);
}

TEST(JpxDecoder, DecodesColors) {
  const auto samples = DecodeHex(testing::kRedBlueJpx);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->width, 16U);
  EXPECT_EQ(samples->height, 8U);
  EXPECT_EQ(samples->components, 3U);
  EXPECT_EQ(samples->colors, 3U);
  EXPECT_TRUE(samples->alpha.empty());
  ASSERT_EQ(samples->samples.size(), 16U * 8 * 3);
  EXPECT_EQ(samples->samples[0], 255);
  EXPECT_EQ(samples->samples[2], 0);
  EXPECT_EQ(samples->samples[3 * 15], 0);
  EXPECT_EQ(samples->samples[3 * 15 + 2], 255);
}

TEST(JpxDecoder, TellsAlphaFromColors) {
  const auto samples = DecodeHex(testing::kGrayAlphaJpx);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->components, 1U);
  EXPECT_EQ(samples->samples[12], 80);
  EXPECT_EQ(samples->alpha[3], 255);
  EXPECT_NEAR(samples->alpha[12], 128, 1);
  EXPECT_FALSE(samples->is_alpha_mixed_in);
  std::string mixed = FromHex(testing::kGrayAlphaJpx);
  // The channel's type: opacity that the colours have been multiplied with.
  mixed.replace(mixed.find("cdef") + 4 + 2 + 6 + 2, 2, Big16(2));
  EXPECT_TRUE(DecodeJpx(mixed, JpxDepth::kScaled)->is_alpha_mixed_in);
}

TEST(JpxDecoder, DecodesCodeStreamsWithoutBoxes) {
  const auto samples = DecodeJpx(CodeStream(FromHex(testing::kRedBlueJpx)), JpxDepth::kScaled);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->components, 3U);
  EXPECT_EQ(samples->colors, 0U);
  EXPECT_EQ(samples->samples[3 * 15 + 2], 255);
}

TEST(JpxDecoder, ConvertsLuminanceAndChrominance) {
  const auto samples = DecodeJpx(WithSpace(FromHex(testing::kRedBlueJpx), 18), JpxDepth::kScaled);
  ASSERT_TRUE(samples);
  // Y 255, Cb and Cr 0.
  EXPECT_EQ(samples->samples[0], 76);
  EXPECT_EQ(samples->samples[1], 255);
  EXPECT_EQ(samples->samples[2], 28);
}

TEST(JpxDecoder, GivesIndicesAsTheyAre) {
  const auto samples = DecodeHex(testing::kGrayAlphaJpx, JpxDepth::kIndex);
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->samples[samples->components * 12], 80);
}

TEST(JpxDecoder, GivesWhatIsThereOfDataThatIsCut) {
  const std::string whole = FromHex(testing::kRedBlueJpx);
  bool was_decoded = false;
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const auto samples = DecodeJpx(whole.substr(0, size), JpxDepth::kScaled);
    if (samples) {
      was_decoded = true;
      EXPECT_EQ(samples->samples.size(), samples->components * samples->width * samples->height);
    }
  }
  EXPECT_TRUE(was_decoded);
}

TEST(JpxDecoder, RefusesWhatCannotBe) {
  EXPECT_FALSE(DecodeJpx("", JpxDepth::kScaled));
  EXPECT_FALSE(DecodeJpx("no JPEG 2000 data", JpxDepth::kScaled));
  const std::string stream = CodeStream(FromHex(testing::kRedBlueJpx));
  // Xsiz and Ysiz of the code stream's size marker.
  std::string huge = stream;
  huge.replace(8, 8, Big32(0x7FFFFFFF) + Big32(0x7FFFFFFF));
  EXPECT_FALSE(DecodeJpx(huge, JpxDepth::kScaled));
  std::string many = stream;
  many.replace(40, 2, Big16(16'384));
  EXPECT_FALSE(DecodeJpx(many, JpxDepth::kScaled));
}

}  // namespace
}  // namespace TarnixTools::engines
