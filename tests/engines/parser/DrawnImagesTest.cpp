// Which images a page draws, how often and which way up.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"
#include "engines/parser/Limits.h"
#include "support/Readers.h"

namespace TarnixTools::engines::parser {
namespace {

using ::testing::ElementsAre;
using testing::ReadBytes;

TEST_F(Images, AreMadeUpright) {
  // Left half red, right half blue: where each must be after turning.
  struct Case {
    const char* matrix;
    int orientation;
    int width;
    int red_x;
    int red_y;
  };

  for (const Case& c : {Case{"9 0 0 9 0 0", 1, 16, 2, 3}, Case{"-9 0 0 9 0 0", 2, 16, 13, 3},
                        Case{"-9 0 0 -9 0 0", 3, 16, 13, 3}, Case{"9 0 0 -9 0 0", 4, 16, 2, 3},
                        Case{"0 -9 -9 0 0 0", 5, 8, 3, 2}, Case{"0 -9 9 0 0 0", 6, 8, 3, 2},
                        Case{"0 9 9 0 0 0", 7, 8, 3, 13}, Case{"0 9 -9 0 0 0", 8, 8, 3, 13},
                        Case{"9 1 -1 9 0 0", 1, 16, 2, 3}, Case{"0 0 0 0 0 0", 1, 16, 2, 3}}) {
    const JpegImage image = ExtractOne(Page(RedBlue(), std::string(c.matrix) + " cm /I Do"));
    EXPECT_THAT(orientations_, ElementsAre(c.orientation)) << c.matrix;
    EXPECT_EQ(image.width, c.width) << c.matrix;
    EXPECT_TRUE(image.IsNear(c.red_x, c.red_y, kRed)) << c.matrix;
  }
}

TEST_F(Images, AreUprightOnTurnedPages) {
  TestPdf file = Page(RedBlue(), "9 0 0 9 0 0 cm /I Do");
  file.Rotate(90);
  const JpegImage image = ExtractOne(file);
  EXPECT_THAT(orientations_, ElementsAre(6));
  EXPECT_TRUE(image.IsNear(3, 2, kRed));
  EXPECT_TRUE(image.IsNear(3, 13, kBlue));
}

TEST_F(Images, TurnWithOddAnglesOfThePage) {
  for (const auto& [angle, orientation] :
       {std::pair{100, 6}, std::pair{45, 1}, std::pair{-90, 8}, std::pair{450, 6}}) {
    TestPdf file = Page(RedBlue(), "9 0 0 9 0 0 cm /I Do");
    file.Rotate(angle);
    ExtractOne(file);
    EXPECT_THAT(orientations_, ElementsAre(orientation)) << angle;
  }
}

TEST_F(Images, KeepTheirUpperEdgeWhenTurned) {
  const std::string image = HexImage(8, 16, "/ColorSpace/DeviceRGB/BitsPerComponent 8",
                                     Repeat("00FF00", 64) + Repeat("0000FF", 64));
  EXPECT_TRUE(ExtractOne(Page(image, "0 -9 9 0 0 0 cm /I Do")).IsNear(13, 3, kGreen));
  EXPECT_TRUE(ExtractOne(Page(image, "0 9 -9 0 0 0 cm /I Do")).IsNear(2, 3, kGreen));
  EXPECT_TRUE(ExtractOne(Page(image, "9 0 0 -9 0 0 cm /I Do")).IsNear(3, 13, kGreen));
}

TEST_F(Images, CountEachTimeTheyAreDrawn) {
  ASSERT_TRUE(Open(Page(RedBlue(), "/I Do q -1 0 0 1 0 0 cm /I Do Q /I Do")));
  const auto files = Extract();
  ASSERT_EQ(files.size(), 3U);
  EXPECT_THAT(orientations_, ElementsAre(1, 2, 1));
  EXPECT_EQ(ReadBytes(files[0]), ReadBytes(files[2]));
  EXPECT_TRUE(ReadJpeg(files[1]).IsNear(3, 3, kBlue));
}

// Small ones are kept in memory, large ones when they come again, and both turned or not.
TEST_F(Images, AreAlikeHoweverOftenTheyAreDrawn) {
  constexpr int kSide = 640;
  std::string noise;
  std::uint32_t state = 1;
  for (int i = 0; i < kSide * kSide; ++i) {
    state = state * 1664525 + 1013904223;
    noise += static_cast<char>(state >> 24 | 0x80U);  // no braces, which stand for names
  }
  TestPdf file;
  const std::string size = "/Width 640/Height 640/ColorSpace/DeviceGray/BitsPerComponent 8";
  file.Page()
      .Content("/L Do /S Do /L Do q 0 9 -9 0 0 0 cm /L Do Q /S Do /L Do /S Do")
      .Object("large", Stream("/Type/XObject/Subtype/Image" + size, noise))
      .Object("small", RedBlue())
      .PageEntry("/Resources <</XObject <</L {{large}}/S {{small}}>>>>");
  ASSERT_TRUE(Open(file));
  const std::vector<std::string> files = Extract();
  ASSERT_EQ(files.size(), 7U);
  const std::string large = ReadBytes(files[0]);
  EXPECT_GT(large.size(), limits::kMaxKeptOnce);
  EXPECT_EQ(ReadBytes(files[2]), large);
  EXPECT_NE(ReadBytes(files[3]), large);
  EXPECT_EQ(ReadBytes(files[5]), large);
  const std::string small = ReadBytes(files[1]);
  EXPECT_EQ(ReadBytes(files[4]), small);
  EXPECT_EQ(ReadBytes(files[6]), small);
}

TEST_F(Images, AreFoundInForms) {
  TestPdf file =
      Page(Stream("/Subtype/Form/BBox[0 0 9 9]/Matrix[-1 0 0 1 0 0]/Resources<</XObject"
                  "<</J {{inner}}>>>>",
                  "/J Do"));
  file.Object("inner", Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</K {{red}}>>>>",
                              "/K Do /K Do"));
  file.Object("red", RedBlue());
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
  EXPECT_THAT(orientations_, ElementsAre(2, 2));
  EXPECT_EQ(Extract(1, 0).size(), 0U);
}

TEST_F(Images, AreFoundInFormsThatTakeThePagesResources) {
  TestPdf file;
  file.Page()
      .Content("/F Do")
      .Object("form", Stream("/Subtype/Form/BBox[0 0 9 9]", "/I Do"))
      .Object("image", RedBlue())
      .PageEntry("/Resources <</XObject <</F {{form}}/I {{image}}>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kRed));
}

TEST_F(Images, AreNotLookedForInFormsThatDrawThemselves) {
  TestPdf file =
      Page(Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</I {{image}}/J "
                  "{{red}}>>>>",
                  "/J Do /I Do /J Do"));
  file.Object("red", RedBlue());
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, AreFoundInPatternsThatPaint) {
  TestPdf file;
  file.Page()
      .Content("/Pattern cs /P scn 0 0 9 9 re f 0 g 0 0 9 9 re f /Pattern cs /P scn")
      .Object("tile", Stream("/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9"
                             "/Resources<</XObject<</J {{red}}>>>>",
                             "/J Do"))
      .Object("red", RedBlue())
      .PageEntry("/Resources <</Pattern <</P {{tile}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 1U);
}

TEST_F(Images, AreFoundInlineWithAbbreviations) {
  const JpegImage image =
      ExtractOne(Page(RedBlue(), "BI /W 16 /H 8 /BPC 1 /CS [/I /RGB 1 <00FF000000FF>] /F /AHx ID " +
                                     Repeat("00FF", 8) + "> EI"));
  EXPECT_TRUE(image.IsNear(3, 3, kGreen));
  EXPECT_TRUE(image.IsNear(12, 3, kBlue));
}

TEST_F(Images, AreFoundInlineWithColorSpacesOfTheResources) {
  TestPdf file;
  file.Page()
      .Content("BI /W 8 /H 8 /BPC 8 /CS /X /F /AHx ID " + Repeat("00", 64) + "> EI")
      .PageEntry("/Resources <</ColorSpace <</X [/Indexed /DeviceRGB 0 <0000FF>]>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kBlue));
}

TEST_F(Images, AreFoundInAnnotationsThatAreSeen) {
  TestPdf file;
  file.Page()
      .Content("")
      .Object("red", RedBlue())
      .Object("form", Stream("/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</J {{red}}>>>>",
                             "9 0 0 9 0 0 cm /J Do"))
      .Annotation("/Subtype/Stamp/Rect[0 0 9 9]/AP<</N {{form}}>>")
      .Annotation("/Subtype/Stamp/F 2/Rect[0 0 9 9]/AP<</N {{form}}>>")
      .Annotation("/Subtype/Widget/Rect[0 0 9 9]/AS/On/AP<</N<</On {{form}}/Off {{form}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, AreNotFoundInLayersThatAreHidden) {
  TestPdf file = Page(RedBlue(), "/OC /L BDC /I Do EMC /OC /M BDC /I Do EMC /I Do");
  file.Object("hidden", "<</Type/OCG/Name(a)>>")
      .Object("seen", "<</Type/OCG/Name(b)>>")
      .PageEntry("/Resources <</XObject <</I {{image}}>>/Properties<</L {{hidden}}/M {{seen}}>>>>")
      .CatalogEntry("/OCProperties<</OCGs[{{hidden}} {{seen}}]/D<</OFF[{{hidden}}]>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 2U);
}

TEST_F(Images, GoOnInManyContentStreams) {
  TestPdf file;
  file.Page()
      .Object("one", Stream("", "q 9 0 0 9 0 0 cm"))
      .Object("two", Stream("", "/I Do Q"))
      .Object("image", RedBlue())
      .PageEntry("/Contents [{{one}} {{two}}] /Resources <</XObject <</I {{image}}>>>>");
  EXPECT_EQ(ExtractOne(file).width, 16);
}

TEST_F(Images, AreManyOnAPage) {
  std::string content;
  for (int i = 0; i < 10'000; ++i) {
    content += "/I Do ";
  }
  ASSERT_TRUE(Open(Page(RedBlue(), content)));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* all = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(all, 1);
  int count = 0;
  while (ExpaContentGetNextImage(all) != 0) {
    ++count;
  }
  EXPECT_EQ(count, 10'000);
}

TEST_F(Images, EndWhenFormsMultiply) {
  // Each form draws the next ten times: ten to the ninth images in the end, were there no bound.
  TestPdf file = Page(RedBlue(), "/F0 Do");
  std::string names;
  for (int i = 0; i < 9; ++i) {
    const std::string next = i < 8 ? "/F" + std::to_string(i + 1) : "/None";
    file.Object("f" + std::to_string(i),
                Stream("/Subtype/Form/BBox[0 0 9 9]", Repeat(next + " Do ", 10)));
    names += "/F" + std::to_string(i) + " {{f" + std::to_string(i) + "}}";
  }
  file.PageEntry("/Resources <</XObject <<" + names + "/I {{image}}>>>>");
  ASSERT_TRUE(Open(file));
  EXPECT_EQ(Extract().size(), 0U);
}

TEST_F(Images, ThatCannotBeReadArePassedOver) {
  TestPdf file;
  file.Page()
      .Content("/A Do /B Do /C Do /D Do /E Do /I Do")
      .Object("a", HexImage(0, 8, "/ColorSpace/DeviceGray/BitsPerComponent 8", ""))
      .Object("b", HexImage(8, -1, "/ColorSpace/DeviceGray/BitsPerComponent 8", ""))
      .Object("c", Stream("/Subtype/Image/Width 8/Height 8/Filter/Unknown", "x"))
      .Object("d", JpegImageObject("no picture", "/ColorSpace/DeviceRGB"))
      .Object("e", HexImage(70000, 1, "/ColorSpace/DeviceGray/BitsPerComponent 8", "00"))
      .Object("i", RedBlue())
      .PageEntry("/Resources <</XObject <</A {{a}}/B {{b}}/C {{c}}/D {{d}}/E {{e}}/I {{i}}>>>>");
  EXPECT_TRUE(ExtractOne(file).IsNear(3, 3, kRed));
  EXPECT_EQ(troubles_.size(), 5U);
}

}  // namespace
}  // namespace TarnixTools::engines::parser
