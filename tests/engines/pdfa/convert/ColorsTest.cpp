#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/colors/Colors.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::QpdfDocument;
using testing::RawPdf;

using Json = QpdfDocument::Json;

class ColorsTest : public ConversionTest {
 protected:
  // The resources of a page with this content.
  Json ResourcesOf(const std::string& content, const std::string& resources) {
    RawPdf file = OnePage("/Contents 4 0 R/Resources" + resources);
    file.Stream(4, "", content);
    written_.emplace(Run(file, Level::k2b, &MendColors));
    return written_->Follow(written_->Follow(written_->Page(1))["/Resources"]);
  }

  std::optional<QpdfDocument> written_;
};

TEST_F(ColorsTest, HaveAnOutputIntent) {
  ResourcesOf("1 0 0 rg", "<<>>");
  const Json intent = written_->Follow(written_->Catalog()["/OutputIntents"][0]);
  EXPECT_EQ(intent["/S"], "/GTS_PDFA1");
  EXPECT_EQ(written_->Follow(intent["/DestOutputProfile"])["/N"], 3);
}

TEST_F(ColorsTest, LeaveResourcesAloneWithoutInks) {
  EXPECT_FALSE(ResourcesOf("1 0 0 rg", "<<>>").contains("/ColorSpace"));
}

TEST_F(ColorsTest, GiveInksAProfile) {
  const Json space = ResourcesOf("1 0 0 0 k", "<<>>")["/ColorSpace"]["/DefaultCMYK"];
  const Json value = written_->Follow(space);
  EXPECT_EQ(value[0], "/ICCBased");
  EXPECT_EQ(written_->Follow(value[1])["/N"], 4);
}

TEST_F(ColorsTest, KeepOtherSpacesAndDefaults) {
  const Json spaces = ResourcesOf(
      "1 0 0 0 k", "<</ColorSpace<</DefaultCMYK[/Lab<<>>]/A/DeviceRGB>>>>")["/ColorSpace"];
  EXPECT_EQ(spaces["/A"], "/DeviceRGB");
  EXPECT_EQ(spaces["/DefaultCMYK"][0], "/Lab");
}

// Patterns of shadings have no resources that could say what inks are.
TEST_F(ColorsTest, GiveInksOfShadingsAProfile) {
  RawPdf file = OnePage("/Resources<</Pattern<</P 4 0 R/Q 6 0 R>>>>");
  file.Object(4, "<</PatternType 2/Shading 5 0 R>>");
  file.Object(5, "<</ShadingType 2/ColorSpace/DeviceCMYK>>");
  file.Object(6, "<</PatternType 2/Shading 7 0 R>>");
  file.Object(7, "<</ShadingType 2/ColorSpace 8 0 R>>");
  file.Object(8, "[/DeviceN[/Gold]/DeviceCMYK<</FunctionType 4>>]");
  const QpdfDocument written = Run(file, Level::k2b, &MendColors);
  const Json patterns = written.Follow(written.Follow(written.Page(1))["/Resources"])["/Pattern"];
  const auto space_of = [&](const char* name) {
    const Json shading = written.Follow(written.Follow(patterns[name])["/Shading"]);
    return written.Follow(shading["/ColorSpace"]);
  };
  EXPECT_EQ(space_of("/P")[0], "/ICCBased");
  EXPECT_EQ(written.Follow(space_of("/Q")[2])[0], "/ICCBased");
}

TEST_F(ColorsTest, DescribeSpotColours) {
  RawPdf file = OnePage("/Resources<</ColorSpace<</A 4 0 R>>>>");
  file.Object(4, "[/DeviceN[/Gold/Black]/DeviceRGB<</FunctionType 4>>]");
  const QpdfDocument written = Run(file, Level::k2b, &MendColors);
  const Json space =
      written.Follow(written.Follow(written.Page(1))["/Resources"]["/ColorSpace"]["/A"]);
  ASSERT_EQ(space.size(), 5U);
  EXPECT_EQ(written.Follow(space[4]["/Colorants"]["/Gold"])[1], "/Gold");
  EXPECT_FALSE(space[4]["/Colorants"].contains("/Black"));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
