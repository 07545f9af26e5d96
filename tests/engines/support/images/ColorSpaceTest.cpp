#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ColorSpace.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using testing::RawPdf;

using Color = std::array<std::uint8_t, 3>;

// A colour space as the catalog of a document has it; objects from 11 on are what it refers to.
std::optional<ColorSpace> SpaceOf(const std::string& value, RawPdf file = RawPdf()) {
  const std::string bytes =
      file.Object(1, "<</Type/Catalog/Pages<</Kids[]>>/Space " + value + ">>").Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  const pdf::Object space = document->Resolve(document->Catalog(arena).Get("Space"), arena);
  return ColorSpaceOf(*document, space, arena);
}

RawPdf Profile(const std::string& entries, const std::string& data = "") {
  return RawPdf().Stream(11, entries, data);
}

Color RgbOf(const ColorSpace& space, std::vector<std::uint8_t> components) {
  Color rgb{};
  ToRgb(space, components.data(), rgb.data(), 1);
  return rgb;
}

TEST(ColorSpace, IsKnownByItsName) {
  for (const char* name : {"/DeviceGray", "/G", "[/DeviceGray]", "[/CalGray<<>>]", "null"}) {
    EXPECT_EQ(SpaceOf(name)->kind, ColorKind::kGray) << name;
  }
  for (const char* name : {"/DeviceRGB", "/RGB", "[/DeviceRGB]", "[/CalRGB<<>>]"}) {
    EXPECT_EQ(SpaceOf(name)->kind, ColorKind::kRgb) << name;
  }
  for (const char* name : {"/DeviceCMYK", "/CMYK"}) {
    EXPECT_EQ(SpaceOf(name)->components, 4) << name;
  }
}

TEST(ColorSpace, OfInksIsNotComputed) {
  EXPECT_EQ(SpaceOf("[/Separation/All/DeviceCMYK null]")->components, 1);
  EXPECT_EQ(SpaceOf("[/DeviceN[/A/B/C]/DeviceCMYK null]")->components, 3);
  EXPECT_FALSE(SpaceOf("[/DeviceN[/A/B/C]/DeviceCMYK null]")->is_computed());
  EXPECT_TRUE(SpaceOf("/DeviceRGB")->is_computed());
  const auto indexed = SpaceOf("[/Indexed[/Separation/A/DeviceGray null]1<0080>]");
  EXPECT_EQ(indexed->components, 1);
  EXPECT_TRUE(indexed->palette.empty());
  EXPECT_FALSE(indexed->is_computed());
}

TEST(ColorSpace, OfInksHasAtMostThirtyTwo) {
  std::string names;
  for (int i = 0; i < 33; ++i) {
    names += "/A" + std::to_string(i);
  }
  EXPECT_FALSE(SpaceOf("[/DeviceN[" + names + "]/DeviceCMYK null]"));
  EXPECT_FALSE(SpaceOf("[/DeviceN[]/DeviceCMYK null]"));
}

TEST(ColorSpace, IsNoneForWhatImagesCannotHave) {
  for (const char* value : {"/Pattern", "[/Pattern]", "[]", "7", "(DeviceGray)", "[7]",
                            "[/Indexed[/Indexed/DeviceGray 1<00FF>]1<>]", "[/Indexed/Pattern 1<>]",
                            "[/ICCBased]", "[/ICCBased 99 0 R]"}) {
    EXPECT_FALSE(SpaceOf(value)) << value;
  }
}

TEST(ColorSpace, OfAProfileIsConverted) {
  const std::string swapped = testing::TestRgbProfile(2.2, true);
  const auto space = SpaceOf("[/ICCBased 11 0 R]", Profile("/N 3", swapped));
  ASSERT_EQ(space->kind, ColorKind::kIcc);
  const Color color = RgbOf(*space, {255, 0, 0});
  EXPECT_LT(color[0], 12);
  EXPECT_GT(color[2], 240);
}

TEST(ColorSpace, OfAProfileIsTheDevicesWhereTheProfileSaysNothing) {
  EXPECT_EQ(SpaceOf("[/ICCBased 11 0 R]", Profile("/N 3", "no profile"))->kind, ColorKind::kRgb);
  EXPECT_EQ(SpaceOf("[/ICCBased 11 0 R]", Profile("/N 4"))->kind, ColorKind::kCmyk);
  EXPECT_EQ(SpaceOf("[/ICCBased 11 0 R]", Profile("/N 1", "no profile"))->kind, ColorKind::kGray);
  EXPECT_EQ(SpaceOf("[/ICCBased 11 0 R]", Profile("/N 3", "desc sRGB IEC61966-2.1"))->kind,
            ColorKind::kRgb);
}

TEST(ColorSpace, OfAProfileWithoutComponentsIsItsAlternate) {
  EXPECT_EQ(SpaceOf("[/ICCBased 11 0 R]", Profile("/Alternate/DeviceCMYK"))->kind,
            ColorKind::kCmyk);
  EXPECT_FALSE(SpaceOf("[/ICCBased 11 0 R]", Profile("/N 2")));
  // An alternate that leads back to itself.
  EXPECT_FALSE(SpaceOf("12 0 R", Profile("/Alternate 12 0 R").Object(12, "[/ICCBased 11 0 R]")));
}

TEST(ColorSpace, OfIndicesHasThePaletteOfItsBase) {
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceRGB 1<0102030A0B0C>]")->palette,
              ElementsAre(1, 2, 3, 10, 11, 12));
  EXPECT_THAT(SpaceOf("[/I/G 1<40C0>]")->palette, ElementsAre(64, 64, 64, 192, 192, 192));
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceCMYK 1<00000000FFFFFFFF>]")->palette,
              ElementsAre(255, 255, 255, 0, 0, 0));
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceGray 1 11 0 R]", Profile("", "@\xC0"))->palette,
              ElementsAre(64, 64, 64, 192, 192, 192));
  EXPECT_THAT(SpaceOf("[/Indexed[/Lab<</Range[-128 127 -128 127]>>]1<FF8080008080>]")->palette,
              ElementsAre(255, 255, 255, 0, 0, 0));
  const auto lab = SpaceOf("[/Indexed[/Lab<</Range[-128 127 -100 100]>>]2<FF80803380FF8F0040>]");
  const auto expect_entry = [&](std::size_t entry, const Color& color) {
    for (std::size_t c = 0; c < 3; ++c) {
      EXPECT_EQ(lab->palette[3 * entry + c], color[c]) << entry;
    }
  };
  expect_entry(0, LabToRgb(100, 0, 100 * (2 * 128.0 / 255 - 1)));
  expect_entry(1, LabToRgb(20, 0, 100));
  expect_entry(2, LabToRgb(143 / 2.55, -128, 100 * (2 * 64.0 / 255 - 1)));
}

TEST(ColorSpace, OfIndicesFillsUpWhatItsTableLacks) {
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceRGB 1<010203>]")->palette, ElementsAre(1, 2, 3, 0, 0, 0));
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceRGB 0]")->palette, ElementsAre(0, 0, 0));
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceRGB 0 99 0 R]")->palette, ElementsAre(0, 0, 0));
  EXPECT_EQ(SpaceOf("[/Indexed/DeviceRGB 999999<>]")->palette.size(), 256U * 3);
  EXPECT_EQ(SpaceOf("[/Indexed/DeviceRGB -7<>]")->palette.size(), 3U);
}

TEST(ColorSpace, OfLabHasItsRange) {
  EXPECT_THAT(SpaceOf("[/Lab<</Range[-1 2 -3 4]>>]")->lab_range, ElementsAre(-1, 2, -3, 4));
  EXPECT_THAT(SpaceOf("[/Lab<<>>]")->lab_range, ElementsAre(-100, 100, -100, 100));
  EXPECT_THAT(SpaceOf("[/Lab<</Range[-1 2]>>]")->lab_range, ElementsAre(-100, 100, -100, 100));
  EXPECT_THAT(SpaceOf("[/Lab<</Range[-1/x -3 4]>>]")->lab_range, ElementsAre(-1, 100, -3, 4));
}

// CIE L*a*b* of sRGB's colours (D65).
TEST(ColorSpace, OfLabIsComputed) {
  const auto near = [](const Color& found, const Color& wanted) {
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(found[i], wanted[i], 1);
    }
  };
  near(LabToRgb(100, 0, 0), {255, 255, 255});
  near(LabToRgb(0, 0, 0), {0, 0, 0});
  near(LabToRgb(53.24, 80.09, 67.20), {255, 0, 0});
  near(LabToRgb(87.73, -86.18, 83.18), {0, 255, 0});
  near(LabToRgb(32.30, 79.19, -107.86), {0, 0, 255});
  near(LabToRgb(3, 0, 0), {11, 11, 11});
}

TEST(ColorSpace, OfInksLooksLikePrint) {
  const ColorSpace cmyk = DeviceSpace(4);
  EXPECT_EQ(RgbOf(cmyk, {0, 0, 0, 0}), (Color{255, 255, 255}));
  EXPECT_EQ(RgbOf(cmyk, {255, 0, 0, 0}), (Color{0, 174, 239}));
  EXPECT_EQ(RgbOf(cmyk, {0, 255, 255, 0}), (Color{237, 28, 36}));
  EXPECT_EQ(RgbOf(cmyk, {255, 255, 255, 255}), (Color{0, 0, 0}));
  // More ink is never lighter.
  int last = 256;
  for (int ink = 0; ink < 256; ink += 5) {
    const Color gray = RgbOf(cmyk, {0, 0, 0, static_cast<std::uint8_t>(ink)});
    EXPECT_LT(gray[0], last);
    last = gray[0];
  }
}

TEST(ColorSpace, OfInksIsDarkerWithEveryInkThatIsAdded) {
  const ColorSpace cmyk = DeviceSpace(4);
  const auto color_of = [&](unsigned inks) {
    std::vector<std::uint8_t> amounts;
    for (unsigned ink = 0; ink < 4; ++ink) {
      amounts.push_back((inks >> ink & 1U) != 0 ? 255 : 0);
    }
    return RgbOf(cmyk, amounts);
  };
  for (unsigned inks = 0; inks < 16; ++inks) {
    const Color color = color_of(inks);
    for (unsigned ink = 1; ink < 16; ink *= 2) {
      const Color more = color_of(inks | ink);
      EXPECT_LE(more[0] + more[1] + more[2], color[0] + color[1] + color[2]) << inks << " " << ink;
    }
    // Black leaves next to nothing of any other ink.
    if ((inks & 8U) != 0) {
      EXPECT_LE(*std::max_element(color.begin(), color.end()), 35) << inks;
    }
  }
  // Each ink takes its own part of the light.
  EXPECT_EQ(color_of(1)[0], 0);
  EXPECT_EQ(color_of(2)[1], 0);
  EXPECT_EQ(color_of(4)[2], 0);
  // Half of an ink is half way to it.
  EXPECT_EQ(RgbOf(cmyk, {0, 0, 0, 128}), (Color{145, 143, 143}));
}

TEST(ColorSpace, ConvertsManyPixels) {
  const std::vector<std::uint8_t> inks = {0, 0, 0, 0, 0, 0, 0, 0, 255, 0, 0, 0};
  std::array<std::uint8_t, 9> rgb{};
  ToRgb(DeviceSpace(4), inks.data(), rgb.data(), 3);
  EXPECT_THAT(rgb, ElementsAre(255, 255, 255, 255, 255, 255, 0, 174, 239));
  ToRgb(DeviceSpace(3), inks.data() + 3, rgb.data(), 3);
  EXPECT_THAT(rgb, ElementsAre(0, 0, 0, 0, 0, 255, 0, 0, 0));
  ToRgb(DeviceSpace(1), inks.data() + 7, rgb.data(), 2);
  EXPECT_THAT(std::vector<std::uint8_t>(rgb.begin(), rgb.begin() + 6),
              ElementsAre(0, 0, 0, 255, 255, 255));
}

}  // namespace
}  // namespace TarnixTools::engines
