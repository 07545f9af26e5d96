#include <algorithm>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/images/InkImage.h"
#include "pdf/filters/Filters.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::PackedSamples;
using testing::SceneSize;

constexpr SceneSize kSize{40, 30};

// Rows in memory; there are none behind the data.
class GivenRows : public SampleRows {
 public:
  GivenRows(int components, int bits, std::string data)
      : SampleRows(
            {.width = kSize.width, .height = kSize.height, .components = components, .bits = bits}),
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

// Each ink grows by its own measure from left to right.
std::string Slopes(int components, int bits) {
  return PackedSamples(kSize, components, bits, [&](int x, int, int ink) {
    return static_cast<double>(x) / (kSize.width - 1) / (ink + 1);
  });
}

std::optional<CodedPicture> Code(int components, int bits, const std::string& data,
                                 PictureSize wanted, std::uint64_t bytes_now = 1'000'000) {
  InkTask task{.encoded_bytes = bytes_now,
               .wanted = wanted,
               .samples = std::make_unique<GivenRows>(components, bits, data)};
  return CodeInks(task);
}

std::string Decoded(const CodedPicture& coded, int components) {
  pdf::FilterStep step{};
  step.kind = pdf::FilterKind::kFlate;
  step.parameters.predictor = coded.parameters.empty() ? 1 : 15;
  step.parameters.colors = components;
  step.parameters.bits_per_component = coded.bits;
  step.parameters.columns = static_cast<int>(coded.width);
  return pdf::TryDecode({step}, coded.data, 1'000'000).data;
}

TEST(InkImage, KeepsEverySampleInItsSize) {
  for (const int components : {2, 3, 5, 8}) {
    for (const int bits : {4, 8}) {
      const std::string data = Slopes(components, bits);
      const auto coded = Code(components, bits, data, {kSize.width, kSize.height});
      ASSERT_TRUE(coded);
      EXPECT_EQ(coded->bits, bits);
      EXPECT_EQ(Decoded(*coded, components), data) << components << " inks of " << bits << " bits";
    }
  }
}

TEST(InkImage, MixesEachInkByItself) {
  for (const int bits : {8, 16}) {
    const auto coded = Code(5, bits, Slopes(5, bits), {20, 15});
    ASSERT_TRUE(coded);
    EXPECT_EQ(coded->width, 20U);
    EXPECT_EQ(coded->height, 15U);
    EXPECT_EQ(coded->bits, 8);
    const std::string samples = Decoded(*coded, 5);
    ASSERT_EQ(samples.size(), 20U * 15 * 5);
    for (std::size_t i = 0; i < samples.size(); ++i) {
      const double x = static_cast<double>(i / 5 % 20) * 2 + 0.5;
      const double ink = 255 * x / (kSize.width - 1) / (static_cast<double>(i % 5) + 1);
      EXPECT_NEAR(static_cast<unsigned char>(samples[i]), ink, 1.5) << i;
    }
  }
}

TEST(InkImage, LeavesWhatIsNotSmallerAndWhatIsNotThere) {
  const std::string data = Slopes(2, 8);
  EXPECT_FALSE(Code(2, 8, data, {kSize.width, kSize.height}, 10));
  for (const std::uint32_t width : {40U, 20U}) {
    EXPECT_FALSE(Code(2, 8, data.substr(0, data.size() - 1), {width, 15}));
  }
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
