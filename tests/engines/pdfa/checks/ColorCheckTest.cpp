#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/checks/PaintedPage.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::PaintedPage;
using testing::ProfileHeader;

// Whether DeviceGray, DeviceRGB and DeviceCMYK are found where the content paints.
struct DeviceCase {
  const char* content;
  const char* output;  // none where it is empty
  const char* rules;
};

PaintedPage PageOf(const std::string& content, const std::string& spaces) {
  PaintedPage page(content);
  page.Resources("/ColorSpace<<" + spaces +
                 ">>/ExtGState<</Over<</OP true/op true/OPM 1>>"
                 "/Fill<</op true/OPM 0>>>>/Pattern<</Axial 20 0 R>>/Shading<</Sh 21 0 R>>"
                 "/XObject<</Image 22 0 R>>");
  page.pdf()
      .Object(20, "<</PatternType 2/Shading 21 0 R>>")
      .Object(21, "<</ShadingType 2/ColorSpace/DeviceCMYK/Coords[0 0 1 1]>>")
      .Stream(22, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB", "xxx");
  return page;
}

TEST(ColorCheck, WantsAnOutputIntentForColorsOfDevices) {
  const DeviceCase cases[] = {
      {"1 0 0 rg", "", "6.2.4.3-2"},
      {"/DeviceRGB cs", "", ""},
      {"/DeviceRGB cs 1 0 0 sc", "", "6.2.4.3-2"},
      {"1 SC", "", "6.2.4.3-4"},
      {"/Spot CS 1 SCN", "RGB ", "6.2.4.3-3"},
      {"1 0 0 rg 0 0 9 9 re f", "", "6.2.4.3-2"},
      {"1 0 0 rg 0 0 9 9 re f", "CMYK", "6.2.4.3-2"},
      {"1 0 0 rg 0 0 9 9 re f", "RGB ", ""},
      {"/DeviceRGB cs 0 0 9 9 re S", "CMYK", ""},
      {"1 0 0 0 K 0 0 9 9 re S", "RGB ", "6.2.4.3-3"},
      {"1 0 0 0 K 0 0 9 9 re S", "CMYK", ""},
      {"0 0 9 9 re f", "", "6.2.4.3-4"},
      {"0 0 9 9 re f", "GRAY", ""},
      {"0 0 9 9 re n", "", ""},
      {"/Image Do", "", "6.2.4.3-2"},
      {"/Sh sh", "RGB ", "6.2.4.3-3"},
      {"/Pattern cs /Axial scn 0 0 9 9 re f", "RGB ", "6.2.4.3-3"},
      {"BI/W 1/H 1/CS/RGB/BPC 8 ID xxx EI", "CMYK", "6.2.4.3-2"},
      {"/Named cs 0 0 9 9 re f", "RGB ", "6.2.4.3-3"},
      {"/Spot cs 0 0 9 9 re f", "RGB ", "6.2.4.3-3"},
      {"/Table cs 0 0 9 9 re f", "RGB ", "6.2.4.3-3"},
      {"/Inks cs 0 0 9 9 re f", "RGB ", "6.2.4.3-3"},
  };
  std::string text;
  for (const DeviceCase& row : cases) {
    PaintedPage page = PageOf(row.content,
                              "/Named[/DeviceCMYK]/Spot[/Separation/Gold/DeviceCMYK 9 0 R]"
                              "/Table[/Indexed/DeviceCMYK 0<00000000>]"
                              "/Inks[/DeviceN[/Cyan]/DeviceCMYK 9 0 R]");
    if (*row.output != '\0') {
      page.Output(row.output);
    }
    EXPECT_EQ(page.BrokenRules(Level::k2b), row.rules) << row.content << row.output;
    text += std::string(row.content) + " on " + row.output + "\n" + page.FindingsText();
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/findings/device-colors.txt", text));
  EXPECT_EQ(PageOf("1 0 0 rg 0 0 9 9 re f", "").BrokenRules(Level::k1b), "6.2.3.3-1");
  EXPECT_EQ(PageOf("1 0 0 0 k 0 0 9 9 re f", "").BrokenRules(Level::k1b), "6.2.3.3-2");
  EXPECT_EQ(PageOf("1 g 0 0 9 9 re f", "").BrokenRules(Level::k1b), "6.2.3.3-3");
}

TEST(ColorCheck, TakesDefaultsForColorsOfDevices) {
  const std::string content = "1 0 0 rg 0 0 9 9 re f";
  EXPECT_EQ(PageOf(content, "/DefaultRGB[/CalRGB<<>>]").BrokenRules(Level::k2b), "");
  EXPECT_EQ(PageOf(content, "/DefaultRGB/DeviceRGB").BrokenRules(Level::k2b), "6.2.4.3-2");
  EXPECT_EQ(PageOf(content, "/DefaultGray[/CalGray<<>>]").BrokenRules(Level::k2b), "6.2.4.3-2");
  const std::string inks = "/DefaultCMYK[/Lab<<>>]";
  EXPECT_EQ(PageOf("/Sh sh", inks).BrokenRules(Level::k2b), "");
  EXPECT_EQ(PageOf("/Pattern cs /Axial scn 0 0 9 9 re f", inks).BrokenRules(Level::k2b),
            "6.2.4.3-3")
      << "a pattern of shadings has no resources";
}

TEST(ColorCheck, WantsProfilesThatAreAllowed) {
  const auto rules = [](Level level, const std::string& profile, const std::string& entries) {
    PaintedPage page("/C cs 0 0 9 9 re f");
    page.Resources("/ColorSpace<</C[/ICCBased 20 0 R]>>");
    page.pdf().Stream(20, entries, profile);
    return page.BrokenRules(level);
  };
  EXPECT_EQ(rules(Level::k1b, ProfileHeader("RGB "), "/N 3"), "");
  EXPECT_EQ(rules(Level::k1b, ProfileHeader("Lab ", 2, "scnr"), "/N 3"), "");
  EXPECT_EQ(rules(Level::k1b, ProfileHeader("RGB ", 4), "/N 3"), "6.2.3.2-1");
  EXPECT_EQ(rules(Level::k2b, ProfileHeader("RGB ", 4), "/N 3"), "");
  EXPECT_EQ(rules(Level::k2b, ProfileHeader("RGB ", 5), "/N 3"), "6.2.4.2-1");
  EXPECT_EQ(rules(Level::k2b, ProfileHeader("RGB ", 2, "link"), "/N 3"), "6.2.4.2-1");
  EXPECT_EQ(rules(Level::k2b, ProfileHeader("HSV "), "/N 3"), "6.2.4.2-1");
  EXPECT_EQ(rules(Level::k2b, "short", "/N 3"), "6.2.4.2-1");
  EXPECT_EQ(rules(Level::k1b, ProfileHeader("RGB "), "/N 4"), "6.2.3.2-2");
  EXPECT_EQ(rules(Level::k1b, ProfileHeader("GRAY"), ""), "6.2.3.2-2");
  EXPECT_EQ(rules(Level::k2b, ProfileHeader("CMYK"), "/N 4"), "");
}

TEST(ColorCheck, DoesNotLetIccCmykOverprintWithModeOne) {
  const auto rules = [](const std::string& content) {
    PaintedPage page = PageOf(content, "/C[/ICCBased 23 0 R]");
    page.Output("RGB ").pdf().Stream(23, "/N 4", ProfileHeader("CMYK"));
    return page.BrokenRules(Level::k2b);
  };
  EXPECT_EQ(rules("/C cs 0 0 9 9 re f /Over gs 0 0 9 9 re f"), "6.2.4.2-2");
  EXPECT_EQ(rules("/C CS /Over gs 0 0 9 9 re S"), "6.2.4.2-2");
  EXPECT_EQ(rules("/C cs /Fill gs 0 0 9 9 re f"), "");
  EXPECT_EQ(rules("/C cs 0 0 9 9 re f"), "");
}

TEST(ColorCheck, WantsSpotColorsToBeDescribedOnce) {
  const auto rules = [](const std::string& other) {
    PaintedPage page = PageOf("/A cs 0 0 9 9 re f /B cs 0 0 9 9 re f",
                              "/A[/Separation/Gold/DeviceRGB 23 0 R]/B" + other);
    page.Output("RGB ")
        .pdf()
        .Stream(23, "/FunctionType 4/Domain[0 1]/Range[0 1]", "{}")
        .Stream(24, "/Range[0 1]/Domain[0 1]/FunctionType 4/Filter/ASCIIHexDecode", "7B7D>")
        .Stream(25, "/FunctionType 4/Domain[0 1]/Range[0 1]", "{ }")
        .Object(26, "/DeviceRGB");
    return page.BrokenRules(Level::k2b);
  };
  EXPECT_EQ(rules("[/Separation/Gold/DeviceRGB 23 0 R]"), "");
  EXPECT_EQ(rules("[/Separation/Gold 26 0 R 24 0 R]"), "");
  EXPECT_EQ(rules("[/Separation/Gold/DeviceRGB 25 0 R]"), "6.2.4.4-2");
  EXPECT_EQ(rules("[/Separation/Gold/DeviceGray 23 0 R]"), "6.2.4.4-2");
  EXPECT_EQ(rules("[/Separation/Silver/DeviceGray 25 0 R]"), "");
}

TEST(ColorCheck, WantsColorantsOfDeviceN) {
  const auto rules = [](Level level, const std::string& names, const std::string& attributes) {
    PaintedPage page = PageOf("/N cs 0 0 9 9 re f",
                              "/N[/DeviceN[" + names + "]/DeviceRGB 9 0 R" + attributes + "]");
    page.Output("RGB ");
    return page.BrokenRules(level);
  };
  EXPECT_EQ(rules(Level::k2b, "/Cyan/None", ""), "");
  EXPECT_EQ(rules(Level::k2b, "/Cyan/Gold", ""), "6.2.4.4-1");
  EXPECT_EQ(rules(Level::k2b, "/Gold", "<</Colorants<</Gold[/Separation/Gold/DeviceRGB 9 0 R]>>>>"),
            "");
  EXPECT_EQ(rules(Level::k2b, "/Red", "<</Process<</Components[/Red]>>>>"), "");
  EXPECT_EQ(rules(Level::k2b, "/None/#FF", "<</Colorants<</#FF[/CalGray<<>>]>>>>"), "6.1.8-1");
  std::string names = "/None/None/None/None/None/None/None/None";
  EXPECT_EQ(rules(Level::k1b, names, ""), "");
  EXPECT_EQ(rules(Level::k1b, names + "/None", ""), "6.1.12-9");
  names += names + names + names;
  EXPECT_EQ(rules(Level::k2b, names, ""), "");
  EXPECT_EQ(rules(Level::k2b, names + "/None", ""), "6.1.13-9");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
