#include <memory>
#include <optional>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ColorSpace.h"
#include "pdf/file/ByteSource.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::optional<ColorSpace> SpaceOf(const std::string& text) {
  testing::RawPdf file;
  const std::string bytes =
      file.Pages(1).Object(5, text).Stream(6, "/N 2/Alternate[/Lab<<>>]", "").Table();
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  pdf::Arena arena;
  return ColorSpaceOf(*document, document->Load({.number = 5, .generation = 0}, arena), arena);
}

TEST(ColorSpace, HasTheComponentsOfItsFamily) {
  EXPECT_EQ(SpaceOf("null")->kind, ColorKind::kGray);
  EXPECT_EQ(SpaceOf("/DeviceCMYK")->components, 4);
  EXPECT_EQ(SpaceOf("[/CalRGB<<>>]")->kind, ColorKind::kRgb);
  EXPECT_EQ(SpaceOf("[/Lab<</Range[-1 2 -3 4]>>]")->lab_range[3], 4);
  EXPECT_EQ(SpaceOf("[/ICCBased 6 0 R]")->kind, ColorKind::kLab);
}

TEST(ColorSpace, OfInksIsNotComputed) {
  EXPECT_EQ(SpaceOf("[/Separation/All/DeviceCMYK null]")->components, 1);
  EXPECT_EQ(SpaceOf("[/DeviceN[/A/B/C]/DeviceCMYK null]")->components, 3);
  EXPECT_FALSE(SpaceOf("[/DeviceN[/A/B/C]/DeviceCMYK null]")->is_computed());
  EXPECT_TRUE(SpaceOf("/DeviceRGB")->is_computed());
}

TEST(ColorSpace, OfAPaletteHasItsColors) {
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceGray 1<0080>]")->palette,
              ElementsAre(0, 0, 0, 128, 128, 128));
  EXPECT_THAT(SpaceOf("[/Indexed/DeviceRGB 1<010203>]")->palette, ElementsAre(1, 2, 3, 0, 0, 0));
  const auto indexed = SpaceOf("[/Indexed[/Separation/A/DeviceGray null]1<0080>]");
  EXPECT_EQ(indexed->components, 1);
  EXPECT_THAT(indexed->palette, IsEmpty());
  EXPECT_FALSE(indexed->is_computed());
}

TEST(ColorSpace, IsNoneForWhatImagesCannotHave) {
  EXPECT_FALSE(SpaceOf("/Pattern"));
  EXPECT_FALSE(SpaceOf("[/DeviceN[]/DeviceCMYK null]"));
  std::string names;
  for (int i = 0; i < 33; ++i) {
    names += "/A" + std::to_string(i);
  }
  EXPECT_FALSE(SpaceOf("[/DeviceN[" + names + "]/DeviceCMYK null]"));
  EXPECT_FALSE(SpaceOf("[/Indexed[/Indexed/DeviceGray 0<00>]0<00>]"));
}

}  // namespace
}  // namespace TarnixTools::engines
