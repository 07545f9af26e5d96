// What a survey knows of the images of documents, by a table of pages and of what they draw.
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/survey/DocumentSurvey.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::RawPdf;

double Rounded(double value) {
  return std::round(value * 1000) / 1000 + 0.0;
}

std::string PlacementText(const ImagePlacement& placement) {
  std::ostringstream text;
  text << Rounded(placement.width_points) << " x " << Rounded(placement.height_points) << ", shown "
       << Rounded(placement.shown.left) << ' ' << Rounded(placement.shown.bottom) << ' '
       << Rounded(placement.shown.right) << ' ' << Rounded(placement.shown.top)
       << (placement.is_known ? "" : ", unknown") << (placement.is_page_picture ? ", page" : "")
       << (placement.has_default_spaces ? ", default spaces" : "");
  return text.str();
}

// Two pages of 100 by 200 points with these contents; images 8 and 9, /I and /J.
std::string SurveyText(const std::string& first, const std::string& second,
                       const std::string& entries) {
  const std::string image =
      "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray";
  const std::string images = "<</I 8 0 R/J 9 0 R>>";
  const std::string inner = "/Resources<</XObject" + images + ">>";
  const std::string form = "/Type/XObject/Subtype/Form/BBox[0 0 100 200]" + inner;
  // What is not drawn by name is looked at, too: there is none of it.
  std::string objects = "/I 8 0 R/J 9 0 R";
  std::string others;
  std::string states =
      "/A<</ca 0.5>>/B<</BM/Multiply>>/N<</BM/Normal>>/O<</OP true/op true>>/U<</SMask/None>>"
      "/C<</CA 0.5>>";
  const auto add_if = [&](const std::string& use, std::string& to, const std::string& named) {
    to += (first + second).find(use) != std::string::npos ? named : "";
  };
  add_if("/F Do", objects, "/F 10 0 R");
  add_if("/G Do", objects, "/G 11 0 R");
  add_if("/P scn", others, "/Pattern<</P 12 0 R>>");
  add_if("/Q scn", others, "/Pattern<</Q 16 0 R>>");
  add_if("/T 9 Tf", others, "/Font<</T 13 0 R>>");
  add_if("/M gs", states, "/M<</SMask<</S/Alpha/G 15 0 R>>>>");
  const std::string resources =
      "/Resources<</XObject<<" + objects + ">>" + others + "/ExtGState<<" + states + ">>>>";
  const std::string bytes =
      RawPdf()
          .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
          .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 100 200]>>")
          .Object(3, "<</Type/Page/Parent 2 0 R/Contents 5 0 R" + resources + entries + ">>")
          .Object(4, "<</Type/Page/Parent 2 0 R/Contents[6 0 R 7 0 R]" + resources + ">>")
          .Stream(5, "", first)
          .Stream(6, "", "q")
          .Stream(7, "", second + " Q")
          .Stream(8, image, "x")
          .Stream(9, image, "x")
          .Stream(10, form, "90 0 0 150 0 0 cm /I Do")
          .Stream(11, form + "/Matrix[0.5 0 0 0.5 0 0]",
                  "90 0 0 150 0 0 cm BI/W 1/H 1/BPC 8/CS/G ID x EI")
          .Stream(12,
                  "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9" + inner,
                  "9 0 0 9 0 0 cm /J Do")
          .Object(13,
                  "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/CharProcs<<"
                  "/a 14 0 R>>/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97/Widths[1]" +
                      inner + ">>")
          .Stream(14, "", "1 0 d0 /J Do")
          .Stream(
              16,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9/Resources<<>>",
              "0 0 5 5 re f")
          .Stream(15, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f")
          .Table();
  const auto document = testing::OpenBytes(bytes);
  const pdf::PageTree pages(*document);
  const DocumentSurvey survey(*document, pages);
  std::string text;
  for (const std::uint32_t number : survey.Images()) {
    text +=
        "  " + std::to_string(number) + ": " + PlacementText(*survey.PlacementOf(number)) + "\n";
  }
  for (const std::uint32_t number : survey.ContentsWithImages()) {
    text += "  images in " + std::to_string(number) + "\n";
  }
  return text;
}

TEST(SurveyTables, OfImages) {
  struct Row {
    std::string first;
    std::string second;
    std::string entries;
  };

  const std::string whole = "100 0 0 200 0 0 cm /I Do";
  const std::string other = "q 9 0 0 9 0 0 cm /J Do Q ";
  const std::vector<Row> rows = {
      {whole, "", ""},
      {whole, whole, ""},
      {whole, "10 0 0 20 5 5 cm /I Do", ""},
      {other + whole, "", ""},
      {"q " + whole + " Q " + other, "", ""},
      {whole, other, ""},
      {"q 9 0 0 9 0 0 cm BI/W 1/H 1/BPC 8/CS/G ID x EI Q " + whole, "", ""},
      {"/Pattern cs /P scn 0 0 9 9 re f " + whole, "", ""},
      {"BT /T 9 Tf (a) Tj ET " + whole, "", ""},
      {"/Pattern cs /Q scn 0 0 9 9 re f " + whole, "", ""},
      {"/F Do", "", ""},
      {"/G Do " + whole, "/G Do", ""},
      {"100 0 0 99.9 0 0 cm /I Do", "", ""},
      {"100 0 0 100 0 0 cm /I Do", "", ""},
      {"0 100 -200 0 100 0 cm /I Do", "", ""},
      {"0 100 -200 0 100 0 cm /I Do", "", "/Rotate 90"},
      {"100 0 0 -200 0 200 cm /I Do", "", ""},
      {"70 70 -70 70 50 0 cm /I Do", "", ""},
      {"0 0 0 200 0 0 cm /I Do", "", ""},
      {"0.0000001 0 0 0.000001 0 0 cm /I Do", "", ""},
      {"/A gs " + whole, "", ""},
      {"/B gs " + whole, "", ""},
      {"/N gs " + whole, "", ""},
      {"/O gs " + whole, "", ""},
      {"/M gs " + whole, "", ""},
      {"/M gs /U gs " + whole, "", ""},
      {"/C gs " + whole, "", ""},
      {"25 50 50 100 re W n " + whole, "", ""},
      {"25 50 50 100 re W n " + whole, "0 0 10 10 re W n " + whole, ""},
      {"300 300 9 9 re W n " + whole, "", ""},
      {"200 0 0 400 -50 -100 cm /I Do", "", ""},
      {"200 0 0 400 -50 -100 cm /I Do", "", "/CropBox[20 40 60 80]"},
      {"200 0 0 400 0 0 cm /I Do", "", "/UserUnit 2"},
      {"", "", "/Annots[<</Subtype/Stamp/Rect[0 0 50 100]/AP<</N 10 0 R>>>>]"},
  };
  std::string text;
  for (const Row& row : rows) {
    text += row.first + " | " + row.second + " | " + row.entries + "\n" +
            SurveyText(row.first, row.second, row.entries);
  }
  EXPECT_TRUE(testing::IsAsExpected("optimizer/survey.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
