#include <algorithm>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/OptimizerSettings.h"
#include "engines/optimizer/images/BitonalImage.h"
#include "support/PnmImage.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::PackedSamples;
using testing::SceneSize;

constexpr std::uint64_t kMuch = 1'000'000;

// Rows of one bit a pixel; there are none behind the data.
class GivenBits : public SampleRows {
 public:
  GivenBits(const SceneSize& size, std::string data)
      : SampleRows({.width = static_cast<std::uint32_t>(size.width),
                    .height = static_cast<std::uint32_t>(size.height),
                    .components = 1,
                    .bits = 1}),
        data_(std::move(data)) {}

  std::span<const std::uint8_t> ReadRow() override {
    const std::size_t start = std::min(next_, data_.size());
    next_ += format().row_bytes();
    return {reinterpret_cast<const std::uint8_t*>(data_.data()) + start,
            std::min(next_, data_.size()) - start};
  }

  std::uint64_t held_bytes() const override { return 0; }

 private:
  std::string data_;
  std::size_t next_ = 0;
};

std::optional<CodedPicture> Code(const SceneSize& size, const std::string& data,
                                 std::uint32_t codecs, std::uint64_t bytes_now = kMuch) {
  GivenBits samples(size, data);
  auto coded = CodeBitonal(samples, codecs, bytes_now);
  const auto* picture = std::get_if<CodedPicture>(&coded);
  return picture != nullptr ? std::optional(*picture) : std::nullopt;
}

// Why it is not coded.
LeftAlone ReasonOf(const std::string& data, std::uint32_t codecs, std::uint64_t bytes_now = kMuch) {
  GivenBits samples({}, data);
  return std::get<LeftAlone>(CodeBitonal(samples, codecs, bytes_now));
}

// What an independent reader makes of a coded picture.
testing::PnmImage Decoded(const CodedPicture& coded) {
  return testing::ImageByPoppler(
      testing::RawPdf()
          .Pages(1, "/MediaBox[0 0 9 9]/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>")
          .Stream(9, "", "9 0 0 9 0 0 cm /I Do")
          .Stream(10,
                  "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray/Width " +
                      std::to_string(coded.width) + "/Height " + std::to_string(coded.height) +
                      "/BitsPerComponent " + std::to_string(coded.bits) + "/Filter/" +
                      coded.filter + "/DecodeParms<<" + coded.parameters + ">>",
                  coded.data)
          .Table());
}

std::string Bits(const SceneSize& size, const std::function<bool(int x, int y)>& is_white) {
  return PackedSamples(size, 1, 1, [&](int x, int y, int) { return is_white(x, y) ? 1.0 : 0.0; });
}

// By both codecs, pixel by pixel.
void ExpectKept(const SceneSize& size, const std::function<bool(int x, int y)>& is_white,
                const std::string& data) {
  for (const std::uint32_t codecs : {0U, kBitonalJbig2}) {
    const std::optional<CodedPicture> coded = Code(size, data, codecs);
    ASSERT_TRUE(coded);
    EXPECT_TRUE(coded->color_space.empty());
    EXPECT_FALSE(coded->decode.has_value());
    const testing::PnmImage image = Decoded(*coded);
    ASSERT_EQ(image.width, size.width);
    ASSERT_EQ(image.height, size.height);
    int wrong = 0;
    for (int y = 0; y < size.height; ++y) {
      for (int x = 0; x < size.width; ++x) {
        wrong += (image.At(x, y)[0] == 255) == is_white(x, y) ? 0 : 1;
      }
    }
    EXPECT_EQ(wrong, 0) << coded->filter;
  }
}

bool IsWhite(int x, int y) {
  return !testing::IsSceneStroke(x, y);
}

bool IsBlack(int x, int y) {
  return testing::IsSceneStroke(x, y);
}

TEST(BitonalImage, KeepsEveryPixel) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const SceneSize size = {480, 240};
  ExpectKept(size, IsWhite, Bits(size, IsWhite));
}

TEST(BitonalImage, KeepsPicturesThatAreMostlyBlack) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const SceneSize size = {480, 240};
  ExpectKept(size, IsBlack, Bits(size, IsBlack));
}

// What lies behind the last pixel of a row means nothing.
TEST(BitonalImage, KeepsRowsThatEndWithinAByte) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const SceneSize size = {149, 240};
  std::string data = Bits(size, IsWhite);
  for (std::size_t i = 18; i < data.size(); i += 19) {
    data[i] = static_cast<char>(data[i] | 7);
  }
  ExpectKept(size, IsWhite, data);
}

TEST(BitonalImage, KeepsOnePixel) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const auto black = [](int, int) { return false; };
  ExpectKept({1, 1}, black, std::string(1, '\0'));
}

TEST(BitonalImage, KeepsScreens) {
  TARNIX_NEED_PROGRAM("pdfimages");
  const auto dots = [](int x, int y) { return x % 3 == 0 || (x + y) % 2 == 0; };
  ExpectKept({200, 100}, dots, Bits({200, 100}, dots));
}

TEST(BitonalImage, IsCodedAsWhatIsAllowedAndSmaller) {
  const std::string data = Bits({}, IsWhite);
  const std::optional<CodedPicture> fax = Code({}, data, 0);
  const std::optional<CodedPicture> jbig2 = Code({}, data, kBitonalJbig2);
  ASSERT_TRUE(fax && jbig2);
  EXPECT_EQ(fax->filter, "CCITTFaxDecode");
  EXPECT_EQ(jbig2->filter, "JBIG2Decode");
  EXPECT_LT(jbig2->data.size(), fax->data.size());
  EXPECT_EQ(Code({}, data, ~kBitonalJbig2)->filter, "CCITTFaxDecode");
  EXPECT_EQ(jbig2->bits, 1);
}

TEST(BitonalImage, IsLeftAloneUnlessItBecomesSmaller) {
  const std::string data = Bits({}, IsWhite);
  for (const std::uint32_t codecs : {0U, kBitonalJbig2}) {
    const std::uint64_t size = Code({}, data, codecs)->data.size();
    EXPECT_EQ(ReasonOf(data, codecs, size), LeftAlone::kSmallest) << codecs;
    EXPECT_EQ(ReasonOf(data, codecs, 0), LeftAlone::kSmallest) << codecs;
    EXPECT_TRUE(Code({}, data, codecs, size + 1)) << codecs;
  }
}

TEST(BitonalImage, IsLeftAloneWhereItsDataEndsEarly) {
  const std::string data = Bits({}, IsWhite);
  EXPECT_EQ(ReasonOf(data.substr(0, data.size() - 1), kBitonalJbig2), LeftAlone::kUnreadable);
  EXPECT_EQ(ReasonOf(data.substr(0, data.size() / 2), 0), LeftAlone::kUnreadable);
  EXPECT_EQ(ReasonOf("", 0, 0), LeftAlone::kUnreadable);
}

TEST(BitonalImage, IsAlwaysCodedInTheSameBytes) {
  const std::string data = Bits({}, IsWhite);
  EXPECT_EQ(Code({}, data, kBitonalJbig2)->data, Code({}, data, kBitonalJbig2)->data);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
