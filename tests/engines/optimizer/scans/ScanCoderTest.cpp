#include <cmath>

#include <gtest/gtest.h>

#include "engines/optimizer/images/ScenePicture.h"
#include "engines/optimizer/scans/ScanCoder.h"
#include "engines/optimizer/scans/ScanLayers.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

constexpr double kDpi = 300;
constexpr std::uint32_t kWidth = 400;
constexpr std::uint32_t kHeight = 300;
constexpr PictureSize kHalf = {kWidth / 2, kHeight / 2};

SamplePicture ScannedPage() {
  return PictureOf(kWidth, kHeight, 3, [](int x, int y, int component) {
    return testing::ScanColor(x, y).at(static_cast<std::size_t>(component));
  });
}

CodedScan Code(const std::vector<PictureSize>& sizes, std::uint32_t bitonal_codecs) {
  OptimizerSettings settings = *ProfileSettings(kImageProfile);
  settings.bitonal_codecs = bitonal_codecs;
  const SamplePicture page = ScannedPage();
  const std::optional<ScanLayers> layers = TakeApart(page, kDpi, kHalf);
  EXPECT_TRUE(layers);
  return CodeScan(*layers, Scaled(page, kHalf.width, kHalf.height),
                  Look(page, false, kHalf.width, kHalf.height), sizes, GoalsOf(settings, false));
}

TEST(ScanCoder, LooksLikeThePage) {
  const CodedScan scan = Code({kHalf}, kBitonalJbig2);
  EXPECT_GT(scan.similarity, 0.97);
  EXPECT_LT(scan.bytes(), kWidth * kHeight / 10);
  EXPECT_EQ(scan.background.width, kHalf.width);
}

TEST(ScanCoder, PaintsInksInTheirColors) {
  const CodedScan scan = Code({kHalf}, kBitonalJbig2);
  ASSERT_EQ(scan.inks.size(), 2U);
  constexpr std::array<std::array<double, 3>, 2> kColors = {
      {{0.14, 0.13, 0.15}, {0.75, 0.1, 0.12}}};
  for (std::size_t ink = 0; ink < 2; ++ink) {
    EXPECT_EQ(scan.inks[ink].stencil.width, kWidth);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(scan.inks[ink].color[i], kColors[ink][i], 0.03) << ink << ' ' << i;
    }
  }
}

TEST(ScanCoder, CodesStencilsByWhatIsAllowed) {
  EXPECT_EQ(Code({kHalf}, kBitonalJbig2).inks[0].stencil.filter, "JBIG2Decode");
  EXPECT_EQ(Code({kHalf}, 0).inks[0].stencil.filter, "CCITTFaxDecode");
}

// Paper has nothing that more pixels would show.
TEST(ScanCoder, TakesTheSmallestBackgroundThatWillDo) {
  EXPECT_EQ(Code({{50, 38}, kHalf}, kBitonalJbig2).background.width, 50U);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
