#include <optional>
#include <string>

#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/annotations/Annotations.h"
#include "support/PageViews.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::Picture;
using testing::QpdfDocument;
using testing::RawPdf;

constexpr int kDpi = 144;
constexpr const char* kRed = "/DA(/Helv 12 Tf 1 0 0 rg)";

// What is seen of fields and free text that had no appearance, in a place from (20, 20) to (180, 60).
class MadeAppearancesTest : public ConversionTest {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("pdftoppm"); }

  QpdfDocument Convert(const std::string& entries, Level level = Level::k2b) {
    RawPdf file = OnePage("/Annots[4 0 R]", "/AcroForm<</Fields[4 0 R]>>");
    file.Object(4, "<</Type/Annot/T(a)/Rect[20 20 180 60]" + entries + ">>");
    return Run(file, level, &MendAnnotations);
  }

  // What was written, with streams that can be read.
  std::string Unpacked() const {
    return testing::RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output;
  }

  // Around all that is red.
  std::optional<testing::Box> RedOf(const std::string& entries) {
    Convert(entries + kRed);
    const Picture picture = testing::Pictures(Path("out.pdf"), kDpi).at(0);
    return testing::BoxOf(picture, kDpi, [&picture](int x, int y) {
      const testing::Pixel pixel = picture.At(x, y);
      return pixel[0] > 200 && pixel[1] < 100 && pixel[2] < 100;
    });
  }
};

TEST_F(MadeAppearancesTest, ShowTextOfFieldsInItsSizeAndColor) {
  const auto red = RedOf("/Subtype/Widget/FT/Tx/V(HHHH)");
  ASSERT_TRUE(red);
  EXPECT_NEAR(red->left, 23, 1);
  EXPECT_NEAR((red->right - red->left), 4 * 0.722 * 12, 3);
  EXPECT_NEAR(red->top - red->bottom, 0.72 * 12, 1.5);
  EXPECT_NEAR((red->top + red->bottom) / 2, 40, 2);
}

TEST_F(MadeAppearancesTest, ShowTextOnItsSide) {
  const auto right = RedOf("/Subtype/Widget/FT/Tx/V(HHHH)/Q 2");
  ASSERT_TRUE(right);
  EXPECT_NEAR(right->right, 177, 1);
  const auto middle = RedOf("/Subtype/Widget/FT/Tx/V(HHHH)/Q 1");
  ASSERT_TRUE(middle);
  EXPECT_NEAR((middle->left + middle->right) / 2, 100, 1);
}

TEST_F(MadeAppearancesTest, ShowTextInLines) {
  const std::string text = "(HHHHHHHH HHHHHHHH HHHHHHHH HHHHHHHH)";
  const auto field = RedOf("/Subtype/Widget/FT/Tx/Ff 4096/V" + text);
  ASSERT_TRUE(field);
  EXPECT_NEAR(field->top, 55, 3);
  EXPECT_GT(field->top - field->bottom, 20);
  const auto free = RedOf("/Subtype/FreeText/BS<</W 0>>/Contents" + text);
  ASSERT_TRUE(free);
  EXPECT_GT(free->top - free->bottom, 20);
  const auto one = RedOf("/Subtype/Widget/FT/Tx/V(H\\nH)");
  ASSERT_TRUE(one);
  EXPECT_LT(one->top - one->bottom, 12);
}

TEST_F(MadeAppearancesTest, ShowACombInCells) {
  const auto red = RedOf("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(HHHH)");
  ASSERT_TRUE(red);
  EXPECT_NEAR(red->left, 36, 2);
  EXPECT_NEAR(red->right, 164, 2);
}

TEST_F(MadeAppearancesTest, FitTextThatHasNoSize) {
  Convert("/Subtype/Widget/FT/Tx/V(HHHH)/DA(/Helv 0 Tf 0 g)");
  const Picture picture = testing::Pictures(Path("out.pdf"), kDpi).at(0);
  const auto dark =
      testing::BoxOf(picture, kDpi, [&](int x, int y) { return picture.At(x, y)[0] < 100; });
  ASSERT_TRUE(dark);
  EXPECT_NEAR(dark->top - dark->bottom, 0.72 * 0.67 * 40, 3);
}

TEST_F(MadeAppearancesTest, ShowWhatIsChosen) {
  const std::string options = "/Opt[[(x)(HHHH)][(y)(HH)]]";
  const auto combo = RedOf("/Subtype/Widget/FT/Ch/Ff 131072/V(y)" + options);
  ASSERT_TRUE(combo);
  EXPECT_NEAR((combo->right - combo->left), 2 * 0.722 * 12, 3);
  const auto list = RedOf("/Subtype/Widget/FT/Ch/V(y)" + options);
  ASSERT_TRUE(list);
  EXPECT_NEAR((list->right - list->left), 4 * 0.722 * 12, 3);
}

TEST_F(MadeAppearancesTest, ShowAllThatIsChosenInAList) {
  Convert("/Subtype/Widget/FT/Ch/V[(x)(z)]/TI 1/Opt[(a)(x)(y)[(z)(Z)]]/DA(/Helv 6 Tf 0 g)");
  const std::string content = Unpacked();
  const auto count = [&](const std::string& what) {
    std::size_t found = 0;
    for (std::size_t at = content.find(what); at != std::string::npos;
         at = content.find(what, at + 1)) {
      ++found;
    }
    return found;
  };
  EXPECT_EQ(count(" Tj"), 3U);
  EXPECT_EQ(count("re f"), 2U);
}

// Those behind so many are not looked at: the value stands for itself.
TEST_F(MadeAppearancesTest, LookAtSoManyOptionsOnly) {
  std::string options = "/Opt[";
  for (int i = 0; i < 20'000; ++i) {
    options += "[(" + std::to_string(i) + ")(HHHH)]";
  }
  options += "[(HH)(HHHHHH)]]";
  const auto last = RedOf("/Subtype/Widget/FT/Ch/Ff 131072/V(HH)" + options);
  ASSERT_TRUE(last);
  EXPECT_NEAR(last->right - last->left, 2 * 0.722 * 12, 3);
  const auto early = RedOf("/Subtype/Widget/FT/Ch/Ff 131072/V(77)" + options);
  ASSERT_TRUE(early);
  EXPECT_NEAR(early->right - early->left, 4 * 0.722 * 12, 3);
}

TEST_F(MadeAppearancesTest, DrawBordersOfFreeTextInTheColorOfItsText) {
  Convert("/Subtype/FreeText/Contents(H)/BS<</W 2>>/DA(/Helv 12 Tf 0 1 1 0 k)");
  EXPECT_THAT(Unpacked(), ::testing::HasSubstr("1 0 0 RG\n"));
  EXPECT_THAT(Unpacked(), ::testing::HasSubstr("1 0 0 rg\n"));
}

TEST_F(MadeAppearancesTest, ShowTheStateOfButtons) {
  for (const std::string& kind : {std::string("/FT/Btn"), std::string("/FT/Btn/Ff 32768"),
                                  std::string("/FT/Btn/MK<</CA(8)>>")}) {
    const auto on = RedOf("/Subtype/Widget/AS/Ja" + kind);
    ASSERT_TRUE(on) << kind;
    EXPECT_NEAR((on->left + on->right) / 2, 100, 3);
    EXPECT_FALSE(RedOf("/Subtype/Widget/AS/Off" + kind)) << kind;
  }
  const QpdfDocument written = Convert("/Subtype/Widget/FT/Btn/V/Ja");
  const auto widget = written.Follow(written.Follow(written.Page(1))["/Annots"][0]);
  EXPECT_EQ(widget["/AS"], "/Ja");
  EXPECT_TRUE(widget["/AP"]["/N"].contains("/Off"));
}

TEST_F(MadeAppearancesTest, ShowCaptionsGroundsAndBorders) {
  const auto caption = RedOf("/Subtype/Widget/FT/Btn/Ff 65536/MK<</CA(HH)>>");
  ASSERT_TRUE(caption);
  EXPECT_NEAR((caption->left + caption->right) / 2, 100, 1);
  const auto ground = RedOf("/Subtype/Widget/FT/Tx/MK<</BG[1 0 0]>>");
  ASSERT_TRUE(ground);
  EXPECT_NEAR((ground->right - ground->left), 160, 1);
  const auto border = RedOf("/Subtype/Widget/FT/Tx/MK<</BC[1 0 0]/R 90>>");
  ASSERT_TRUE(border);
  EXPECT_NEAR((border->right - border->left), 160, 1);
}

TEST_F(MadeAppearancesTest, TakeWhatFieldsAboveAndTheFormSay) {
  RawPdf file = OnePage("/Annots[4 0 R]",
                        "/AcroForm<</Fields[5 0 R]/DA(/Big 12 Tf 1 0 0 rg)"
                        "/DR<</Font<</Big<</Type/Font/BaseFont/Courier-Bold>>>>>>>>");
  file.Object(4, "<</Type/Annot/Subtype/Widget/Rect[20 20 180 60]/Parent 5 0 R>>");
  file.Object(5, "<</FT/Tx/T(a)/V(\\376\\377\\000H)/Kids[4 0 R]>>");
  const QpdfDocument written = Run(file, Level::k1b, &MendAnnotations);
  const auto widget = written.Follow(written.Follow(written.Page(1))["/Annots"][0]);
  const auto form = written.Follow(widget["/AP"]["/N"]);
  const auto font = written.Follow(form["/Resources"]["/Font"]["/F"]);
  const auto inner = written.Follow(written.Follow(font["/DescendantFonts"])[0]);
  const auto descriptor = written.Follow(inner["/FontDescriptor"]);
  EXPECT_TRUE(descriptor.contains("/FontFile2") || descriptor.contains("/FontFile3"));
  EXPECT_TRUE(descriptor.contains("/CIDSet"));
  EXPECT_NE(font["/BaseFont"].get<std::string>().find("Bold"), std::string::npos);
}

TEST_F(MadeAppearancesTest, ShowNothingWhereThereIsNothing) {
  EXPECT_FALSE(RedOf("/Subtype/Widget/FT/Tx"));
  EXPECT_FALSE(RedOf("/Subtype/Widget/FT/Ch/Opt[(a)]/Ff 131072"));
  EXPECT_EQ(Report(), "");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
