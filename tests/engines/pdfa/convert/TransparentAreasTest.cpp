#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/transparency/TransparentAreas.h"

namespace TarnixTools::engines::pdfa {
namespace {

using Boxes = std::vector<pdf::Box>;

constexpr const char* kResources =
    "/ExtGState<</H<</ca .5>>/C<</CA .5>>/M<</BM/Multiply>>/N<</ca 1/CA 1/BM/Normal>>"
    "/O<</BM/Compatible>>/K<</SMask<</S/Alpha/G 7 0 R>>>>>>"
    "/XObject<</I 5 0 R/P 6 0 R/J 8 0 R/F 7 0 R>>"
    "/Shading<</S<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 1 0]/Function 9 0 R>>>>"
    "/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>";

TransparentPage Find(const std::string& content, const std::string& page = "") {
  const std::string image =
      "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8";
  testing::RawPdf file;
  file.Pages(1, "/MediaBox[0 0 200 100]/Contents 4 0 R/Resources<<" + std::string(kResources) +
                    ">>" + page);
  file.Stream(4, "", content)
      .Stream(5, image + "/SMask 6 0 R", "x")
      .Stream(6, image, "x")
      .Stream(7, "/Subtype/Form/BBox[0 0 9 9]/Group<</S/Transparency>>", "1 2 3 4 re f")
      .Stream(8, image + "/SMaskInData 1", "x")
      .Object(9, "<</FunctionType 2/Domain[0 1]/N 1>>")
      .Object(10, "<</Type/Annot/Subtype/Stamp/Rect[10 10 50 20]/AP<</N 11 0 R>>>>")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Resources<</ExtGState<</H<</ca .5>>>>>>",
              "/H gs 0 0 9 9 re f")
      .Object(12, "<</Type/Annot/Subtype/Stamp/Rect[60 10 90 20]/AP<</N 7 0 R>>>>");
  OpenedConversion opened(file, Level::k1b);
  TransparentAreas areas(opened.document(), opened.conversion().pages);
  areas.Find(0);
  return areas.Find(0);  // nothing is left of what was found before
}

std::string TextOf(const Boxes& boxes) {
  std::string text;
  for (const pdf::Box& box : boxes) {
    pdf::AppendBox(text, box);
  }
  return text;
}

TEST(TransparentAreas, AreAroundWhatIsPaintedHalfTransparent) {
  const struct {
    const char* content;
    const char* areas;
  } kRows[] = {
      {"10 20 30 10 re f", ""},
      {"/H gs 10 20 30 10 re f", "[10 20 40 30]"},
      {"/H gs /N gs 10 20 30 10 re f", ""},
      {"/O gs 10 20 30 10 re f", ""},
      {"/M gs 10 20 30 10 re f", "[10 20 40 30]"},
      {"/K gs 10 20 30 10 re f", "[10 20 40 30]"},
      {"/C gs 10 20 30 10 re f", "[10 20 40 30]"},
      {"/H gs 5 w 10 20 30 10 re f", "[10 20 40 30]"},
      {"/C gs 2 w 10 20 30 10 re S", "[8 18 42 32]"},
      {"/C gs 2 0 0 2 1 1 cm 3 w 10 20 30 10 re S", "[15 35 87 67]"},
      {"10 20 5 5 re W n /H gs 0 0 100 100 re f", "[10 20 15 25]"},
      {"10 20 5 5 re W n /H gs 50 50 100 100 re f", ""},
      {"10 20 5 5 re W n 50 50 5 5 re W n /H gs 0 0 100 100 re f", ""},
      {"/H gs BT /F 10 Tf 50 40 Td (AB) Tj ET", "[45 35 79 55]"},
      {"/H gs BT 3 Tr /F 10 Tf 50 40 Td (AB) Tj ET", ""},
      {"BT /F 10 Tf 50 40 Td (AB) Tj ET", ""},
      {"/H gs 10 20 5 5 re W n /S sh", "[10 20 15 25]"},
      {"10 20 5 5 re W n /S sh", ""},
      {"/H gs 9 0 0 9 50 50 cm /P Do", "[50 50 59 59]"},
      {"9 0 0 9 50 50 cm /P Do", ""},
      {"/H gs 9 0 0 9 50 50 cm BI/W 1/H 1/BPC 8/CS/G ID x EI", "[50 50 59 59]"},
      {"0 0 99 99 re f 9 0 0 9 50 50 cm BI/W 1/H 1/BPC 8/CS/G ID x EI", ""},
      {"/F Do", ""},
      {"/H gs /F Do", "[1 2 4 6]"},
      {"q /H gs /F Do Q /F Do 50 50 9 9 re f", "[1 2 4 6]"},
  };

  for (const auto& row : kRows) {
    const TransparentPage found = Find(row.content);
    EXPECT_EQ(TextOf(found.areas), row.areas) << row.content;
    EXPECT_TRUE(found.annotations.empty()) << row.content;
  }
}

TEST(TransparentAreas, AreAroundMaskedImagesOverOtherPaint) {
  const std::string image = " q 9 0 0 9 50 50 cm /I Do Q";
  const std::pair<const char*, const char*> rows[] = {
      {"", ""},
      {"1 g 0 0 99 99 re f", ""},
      {"1 1 1 rg 0 0 99 99 re f", ""},
      {"1 1 .9 rg 0 0 99 99 re f", "[50 50 59 59]"},
      {"0 0 0 0 k 0 0 99 99 re f", "[50 50 59 59]"},
      {"1 g 0 0 99 99 re B", "[50 50 59 59]"},
      {"0 g 0 0 50 50 re f", ""},
      {"0 g 0 0 51 51 re f", "[50 50 59 59]"},
      {"0 g 0 0 99 99 re n", ""},
      {"BT /F 10 Tf 50 40 Td (AB) Tj ET", "[50 50 59 59]"},
      {"9 0 0 9 50 50 cm /P Do 1 0 0 1 -9 -9 cm", ""}};
  for (const auto& [before, areas] : rows) {
    EXPECT_EQ(TextOf(Find(before + image).areas), areas) << before;
  }
  EXPECT_EQ(TextOf(Find("0 0 99 99 re f 9 0 0 9 50 50 cm /J Do").areas), "[50 50 59 59]");
  EXPECT_EQ(TextOf(Find("0 0 99 99 re f 9 0 0 9 50 50 cm /P Do").areas), "");
}

TEST(TransparentAreas, BecomeOneWhereTheyOverlap) {
  EXPECT_EQ(
      TextOf(Find("/H gs 0 0 20 20 re f 50 0 20 20 re f 10 10 45 5 re f 90 90 5 5 re f").areas),
      "[0 0 70 20][90 90 95 95]");
  EXPECT_EQ(TextOf(Find("/H gs 0 0 20 20 re f 20 0 20 20 re f").areas), "[0 0 20 20][20 0 40 20]");
  std::string content = "/H gs ";
  for (int i = 0; i < 16; ++i) {
    content += std::to_string(10 * i) + " 10 5 5 re f ";
  }
  EXPECT_EQ(Find(content).areas.size(), 16U);
  EXPECT_EQ(TextOf(Find(content + "10 90 5 5 re f").areas), "[0 10 155 95]");
}

TEST(TransparentAreas, AreNotThoseOfAnnotations) {
  const TransparentPage found = Find("/H gs 50 50 9 9 re f", "/Annots[10 0 R 12 0 R]");
  EXPECT_EQ(TextOf(found.areas), "[50 50 59 59]");
  EXPECT_EQ(found.annotations, std::set<std::uint32_t>{10});
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
