#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/OpenedImage.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::ImageCodeOf;
using testing::Little32;
using testing::OpenedImage;

// Bits as the lossless format has them: the lowest first (RFC 9649, 3).
class BitWriter {
 public:
  BitWriter& Put(unsigned value, unsigned count) {
    for (unsigned i = 0; i < count; ++i, ++filled_) {
      if (filled_ % 8 == 0) {
        bytes_ += '\0';
      }
      bytes_.back() = static_cast<char>(bytes_.back() | (value >> i & 1U) << filled_ % 8);
    }
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
  unsigned filled_ = 0;
};

struct Color {
  unsigned red, green, blue, alpha;
};

// A lossless picture whose pixels have one of two colours in turn, which differ in green only.
std::string Lossless(unsigned width, unsigned height, const Color& color, unsigned other_green,
                     bool has_alpha) {
  BitWriter bits;
  bits.Put(0x2F, 8).Put(width - 1, 14).Put(height - 1, 14).Put(has_alpha ? 1 : 0, 1).Put(0, 3);
  bits.Put(0, 1).Put(0, 1).Put(0, 1);  // no transform, no cache of colours, one group of codes
  // Codes of one bit for two values of green, of no bits for the only one of all others.
  bits.Put(1, 1).Put(1, 1).Put(1, 1).Put(color.green, 8).Put(other_green, 8);
  for (const unsigned value : {color.red, color.blue, color.alpha}) {
    bits.Put(1, 1).Put(0, 1).Put(1, 1).Put(value, 8);
  }
  bits.Put(1, 1).Put(0, 1).Put(0, 1).Put(0, 1);
  for (unsigned i = 0; i < width * height; ++i) {
    // Codes go by the order of their symbols.
    bits.Put((i % 2 == 0) == (color.green < other_green) ? 0 : 1, 1);
  }
  return bits.bytes();
}

std::string Chunk(const std::string& type, const std::string& content) {
  return type + Little32(static_cast<std::uint32_t>(content.size())) + content +
         std::string(content.size() % 2, '\0');
}

std::string Webp(const std::string& chunks) {
  return "RIFF" + Little32(static_cast<std::uint32_t>(4 + chunks.size())) + "WEBP" + chunks;
}

std::string Little24(std::uint32_t value) {
  return Little32(value).substr(0, 3);
}

std::string Canvas(std::uint32_t width, std::uint32_t height, char flags = 0) {
  return Chunk("VP8X", flags + std::string(3, '\0') + Little24(width - 1) + Little24(height - 1));
}

const Color kRed = {200, 10, 30, 255};

TEST(WebpFile, IsDecodedWithoutLoss) {
  OpenedImage image(Webp(Chunk("VP8L", Lossless(3, 2, kRed, 90, false))));
  EXPECT_EQ(image.frame().width, 3U);
  EXPECT_EQ(image.frame().height, 2U);
  const EncodedImage embedded = image.Embed();
  EXPECT_EQ(embedded.image.palette, "\xC8\x0A\x1E\xC8\x5A\x1E");
  EXPECT_EQ(image.SamplesOf(embedded.image), "\x40\xA0");  // 010 101
  EXPECT_FALSE(embedded.soft_mask);
}

TEST(WebpFile, HasAlpha) {
  Color half = kRed;
  half.alpha = 128;
  OpenedImage image(Webp(Chunk("VP8L", Lossless(3, 2, half, 90, true))));
  const EncodedImage embedded = image.Embed();
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(image.SamplesOf(*embedded.soft_mask), std::string(6, '\x80'));
}

TEST(WebpFile, TellsWhatOtherChunksSay) {
  const std::string profile = testing::TestProfile("RGB ");
  OpenedImage image(Webp(Canvas(3, 2) + Chunk("ICCP", profile) +
                         Chunk("VP8L", Lossless(3, 2, kRed, 90, false)) +
                         Chunk("EXIF", testing::TestExif(6, 300))));
  EXPECT_EQ(image.frame().orientation, 6);
  EXPECT_NEAR(image.frame().dpi_x, 300, 0.01);
  EXPECT_EQ(image.Embed().image.profile, profile);
}

// The first picture of an animation, where it stands on its canvas.
TEST(WebpFile, IsTheFirstPictureOfAnAnimation) {
  const auto frame = [](std::uint32_t left, std::uint32_t top, const Color& color) {
    return Chunk("ANMF", Little24(left / 2) + Little24(top / 2) + Little24(1) + Little24(0) +
                             Little24(100) + std::string(1, '\0') +
                             Chunk("VP8L", Lossless(2, 1, color, 90, false)));
  };
  const Color blue = {0, 0, 255, 255};
  OpenedImage image(Webp(Canvas(5, 3, 2) + Chunk("ANIM", std::string(6, '\0')) + frame(2, 2, kRed) +
                         frame(0, 0, blue)));
  EXPECT_EQ(image.frame().width, 5U);
  EXPECT_EQ(image.frame().height, 3U);
  const EncodedImage embedded = image.Embed();
  ASSERT_TRUE(embedded.soft_mask);
  EXPECT_EQ(embedded.soft_mask->bits, 1);
  EXPECT_NE(embedded.image.palette.find("\xC8\x0A\x1E"), std::string::npos);
  EXPECT_EQ(embedded.image.palette.find(std::string("\0\0\xFF", 3)), std::string::npos);
}

TEST(WebpFile, GivesWhatIsThereOfDataThatIsCut) {
  const std::string file = Webp(Chunk("VP8L", Lossless(60, 60, kRed, 90, false)));
  EXPECT_EQ(ImageCodeOf(file.substr(0, file.size() - 100)), std::nullopt);
  EXPECT_EQ(ImageCodeOf(file.substr(0, 14)), ImageErrorCode::kDamaged);
}

TEST(WebpFile, RejectsWhatIsNoPicture) {
  const std::string wrong = std::string("\x2F\x02\x40\0\0", 5) + std::string(40, '\xFF');
  EXPECT_EQ(ImageCodeOf(Webp(Chunk("VP8L", wrong))), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Webp(Canvas(5, 3))), ImageErrorCode::kDamaged);
  EXPECT_EQ(ImageCodeOf(Webp(Chunk("ANMF", "short"))), ImageErrorCode::kDamaged);
  // Animations within animations.
  std::string nested = Chunk("VP8L", Lossless(2, 1, kRed, 90, false));
  for (int i = 0; i < 3; ++i) {
    nested = Chunk("ANMF", std::string(16, '\0') + nested);
  }
  EXPECT_EQ(ImageCodeOf(Webp(nested)), ImageErrorCode::kDamaged);
}

}  // namespace
}  // namespace TarnixTools::engines
