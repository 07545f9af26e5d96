#include <string>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/contents/Contents.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/tags/Tags.h"
#include "support/PageViews.h"
#include "support/Readers.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::QpdfDocument;
using testing::RawPdf;
using testing::RunProgram;

using Json = QpdfDocument::Json;

constexpr const char* kFont = "/Resources<</Font<</F 5 0 R>>/XObject<</I 6 0 R>>>>";

class TagsTest : public ConversionTest {
 protected:
  static RawPdf WithContent(const std::string& content, const std::string& page = "",
                            const std::string& catalog = "") {
    RawPdf file = OnePage("/Contents 4 0 R" + (kFont + page), catalog);
    file.Stream(4, "", content);
    file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
    file.Stream(6, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x");
    return file;
  }

  // A page of 600 by 800 points.
  static RawPdf WithLargePage(const std::string& content) {
    RawPdf file = WithContent(content);
    file.Object(3, std::string("<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R") +
                       kFont + ">>");
    return file;
  }

  // Types of the elements that an element consists of, in brackets behind its own type.
  static std::string Outline(const QpdfDocument& written, const Json& element) {
    std::string text = element["/S"].get<std::string>().substr(1);
    std::string kids;
    for (const Json& kid : element.value("/K", Json::array())) {
      const Json child = written.Follow(kid);
      kids += child.is_object() ? Outline(written, child) : "";
    }
    return kids.empty() ? text + " " : text + "(" + kids + ")";
  }

  static std::string Outline(const QpdfDocument& written) {
    std::string text;
    for (const Json& element : Elements(written)) {
      text += Outline(written, element);
    }
    return text;
  }

  // The document with tags; its content, decoded, is in content_.
  QpdfDocument Tagged(const RawPdf& file, Level level = Level::k2a) {
    QpdfDocument written = Run(file, level, [](Conversion& conversion) {
      MendTags(conversion);
      WriteEditedContents(conversion);
    });
    content_ = RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output;
    return written;
  }

  // The elements of the document.
  static std::vector<Json> Elements(const QpdfDocument& written) {
    const Json root = written.Follow(written.Catalog()["/StructTreeRoot"]);
    const Json document = written.Follow(root["/K"]);
    std::vector<Json> elements;
    for (const Json& kid : document["/K"]) {
      elements.push_back(written.Follow(kid));
    }
    return elements;
  }

  std::string content_;
};

TEST_F(TagsTest, AreMadeOfParagraphsHeadingsAndPictures) {
  const QpdfDocument written = Tagged(WithContent(
      "BT /F 20 Tf 10 80 Td (Title) Tj ET "
      "BT /F 8 Tf 10 60 Td (A paragraph of text) Tj 0 -9 Td (and its second line) Tj ET "
      "0 0 9 9 re f q 10 0 0 10 100 10 cm /I Do Q"));
  const std::vector<Json> elements = Elements(written);
  ASSERT_EQ(elements.size(), 3U);
  EXPECT_EQ(elements[0]["/S"], "/H1");
  EXPECT_EQ(elements[1]["/S"], "/P");
  EXPECT_EQ(elements[1]["/K"], Json::array({1}));
  EXPECT_EQ(elements[2]["/S"], "/Figure");
  EXPECT_TRUE(elements[2].contains("/Alt"));
  EXPECT_EQ(elements[2]["/A"]["/BBox"], Json::array({100, 10, 110, 20}));
  EXPECT_THAT(content_, HasSubstr("/H1<</MCID 0>>BDC\nBT"));
  EXPECT_THAT(content_, HasSubstr("/Artifact BMC\n0 0 9 9 re f\nEMC"));
  EXPECT_THAT(content_, HasSubstr("/Figure<</MCID 2>>BDC\n/I Do\nEMC"));
}

TEST_F(TagsTest, AreInTheOrderOfColumns) {
  std::string content = "BT /F 10 Tf ";
  for (int line = 0; line < 8; ++line) {
    const std::string y = std::to_string(700 - 12 * line);
    content += "1 0 0 1 50 " + y + " Tm (words of the left column that go on and on) Tj ";
    content += "1 0 0 1 320 " + y + " Tm (words of the right column that go on and) Tj ";
  }
  const std::vector<Json> elements = Elements(Tagged(WithLargePage(content + "ET")));
  ASSERT_EQ(elements.size(), 2U);
  EXPECT_EQ(elements[0]["/K"], Json::array({0, 2, 4, 6, 8, 10, 12, 14}));
  EXPECT_EQ(elements[1]["/K"], Json::array({1, 3, 5, 7, 9, 11, 13, 15}));
}

TEST_F(TagsTest, TellListsTheirItemsAndLabels) {
  const QpdfDocument written = Tagged(WithLargePage(
      "BT /F 10 Tf 50 700 Td (Some words that come before the list of all the things) Tj "
      "0 -30 Td (1.) Tj 20 0 Td (The first of the items) Tj "
      "-20 -14 Td (2.) Tj 20 0 Td (The second of the items) Tj "
      "-20 -14 Td (3. The third, all in one) Tj ET"));
  EXPECT_EQ(Outline(written), "P L(LI(Lbl LBody )LI(Lbl LBody )LI(LBody ))");
  EXPECT_EQ(Elements(written)[1]["/A"]["/ListNumbering"], "/Decimal");
  EXPECT_THAT(content_, HasSubstr("/Lbl<</MCID 1>>BDC\n(1.) Tj"));
  EXPECT_THAT(content_, HasSubstr("/LBody<</MCID 5>>BDC\n(3. The third, all in one) Tj"));
}

TEST_F(TagsTest, TellRuledTablesTheirRowsAndCells) {
  std::string content;
  for (int i = 0; i <= 3; ++i) {
    const std::string x = std::to_string(100 + 100 * i);
    const std::string y = std::to_string(600 + 20 * i);
    content += x + " 600 m " + x + " 660 l S 100 " + y + " m 400 " + y + " l S ";
  }
  content += "BT /F 10 Tf ";
  for (int cell = 0; cell < 9; ++cell) {
    content += "1 0 0 1 " + std::to_string(105 + 100 * (cell % 3)) + " " +
               std::to_string(645 - 20 * (cell / 3)) + " Tm (cell " + std::to_string(cell) +
               ") Tj ";
  }
  const QpdfDocument written = Tagged(WithLargePage(content + "ET"));
  const std::string outline = Outline(written);
  EXPECT_THAT(outline, ::testing::MatchesRegex("Table\\((TR\\((T[HD] ){3}\\)){3}\\)"));
  EXPECT_THAT(content_, HasSubstr("/TD<</MCID 8>>BDC\n(cell 8) Tj"));
}

TEST_F(TagsTest, CutAnOperatorThatShowsSeveralCells) {
  std::string content;
  for (int i = 0; i <= 3; ++i) {
    const std::string x = std::to_string(100 + 100 * i);
    const std::string y = std::to_string(600 + 20 * i);
    content += x + " 600 m " + x + " 660 l S 100 " + y + " m 400 " + y + " l S ";
  }
  content += "BT /F 10 Tf ";
  for (const char* y : {"645", "625", "605"}) {
    content += "1 0 0 1 105 " + std::string(y) + " Tm [(HH) 10 (HH)-7112(HHHH)-7112(H)]TJ ";
  }
  const RawPdf file = WithLargePage(content + "ET");
  const QpdfDocument written = Tagged(file);
  EXPECT_THAT(Outline(written), ::testing::MatchesRegex("Table\\((TR\\((T[HD] ){3}\\)){3}\\)"));
  EXPECT_THAT(content_, HasSubstr("[(HH) 10 (HH)-7112]TJ\nEMC\n\n/TD<</MCID 7>>BDC\n"
                                  "[(HHHH)-7112]TJ\nEMC\n\n/TD<</MCID 8>>BDC\n[(H)]TJ"));
  EXPECT_EQ(testing::Pictures(Path("in.pdf"), 72), testing::Pictures(Path("out.pdf"), 72));
}

TEST_F(TagsTest, AreFoundFromPages) {
  const QpdfDocument written =
      Tagged(WithContent("BT /F 8 Tf 10 80 Td (A) Tj ET BT 10 20 Td (B) Tj 9 0 Td (C) Tj ET"));
  EXPECT_EQ(written.Catalog()["/MarkInfo"]["/Marked"], true);
  EXPECT_EQ(written.Catalog()["/Lang"], "u:und");
  EXPECT_EQ(written.Follow(written.Page(1))["/StructParents"], 0);
  const Json root = written.Follow(written.Catalog()["/StructTreeRoot"]);
  const Json leaf = written.Follow(written.Follow(root["/ParentTree"])["/Kids"][0]);
  EXPECT_EQ(leaf["/Limits"], Json::array({0, 0}));
  EXPECT_EQ(leaf["/Nums"][1].size(), 2U);
  EXPECT_EQ(written.Follow(leaf["/Nums"][1][1])["/S"], "/P");
  EXPECT_THAT(content_, HasSubstr("/P<</MCID 1>>BDC\nBT 10 20 Td (B) Tj 9 0 Td (C) Tj ET\nEMC"));
}

TEST_F(TagsTest, HaveLinksWithinTheirText) {
  RawPdf file = WithContent("BT /F 8 Tf 10 80 Td (A link) Tj ET", "/Annots[7 0 R 8 0 R]");
  file.Object(7, "<</Type/Annot/Subtype/Link/Rect[12 80 20 88]>>");
  file.Object(8, "<</Type/Annot/Subtype/Square/Rect[100 10 120 20]>>");
  const QpdfDocument written = Tagged(file);
  const std::vector<Json> elements = Elements(written);
  ASSERT_EQ(elements.size(), 2U);
  const Json link = written.Follow(elements[0]["/K"][1]);
  EXPECT_EQ(link["/S"], "/Link");
  EXPECT_EQ(link["/K"]["/Type"], "/OBJR");
  EXPECT_EQ(written.Follow(link["/K"]["/Obj"])["/StructParent"], 1);
  EXPECT_EQ(elements[1]["/S"], "/Annot");
}

TEST_F(TagsTest, ReplaceAStructureWithoutContent) {
  const QpdfDocument written =
      Tagged(WithContent("/Span<</MCID 7>>BDC BT /F 8 Tf 10 80 Td (A) Tj ET EMC "
                         "/Artifact BMC 0 0 5 5 re f EMC",
                         "/StructParents 5", "/MarkInfo<</Marked true>>/StructTreeRoot<<>>"));
  EXPECT_EQ(Elements(written).size(), 1U);
  EXPECT_THAT(content_, Not(HasSubstr("MCID 7")));
  EXPECT_THAT(content_, HasSubstr("/Artifact BMC 0 0 5 5 re f EMC"));
}

TEST_F(TagsTest, AreNotMadeWhereTooManyMarksHaveToGo) {
  std::string content;
  for (std::size_t i = 0; i <= limits::kMaxMarkedParts / 2; ++i) {
    content += "/P<</MCID 7>>BDC EMC\n";
  }
  Tagged(WithContent(content));
  EXPECT_THAT(Report(), HasSubstr("not mended: there is too much content to be tagged"));
}

TEST_F(TagsTest, KeepWhatTheTextMeans) {
  Tagged(WithContent("/Span<</MCID 7/ActualText(x)>>BDC BT /F 8 Tf 10 80 Td (A) Tj ET EMC"));
  EXPECT_THAT(content_, HasSubstr("/Span<</ActualText(x)>>BDC"));
}

// A paragraph is marked in parts where another mark begins or ends within it.
TEST_F(TagsTest, StandApartFromMarksThatStay) {
  const QpdfDocument written = Tagged(WithLargePage(
      "BT /F 10 Tf 50 600 Td (words of a first line) Tj ET /Span<</Lang(de)>>BDC BT /F 10 Tf 50 "
      "588 "
      "Td (words of a second) Tj ET EMC BT /F 10 Tf 50 576 Td (words of a third one) Tj ET"));
  const std::vector<Json> elements = Elements(written);
  ASSERT_EQ(elements.size(), 1U);
  EXPECT_EQ(elements[0]["/K"], Json::array({0, 1, 2}));
  EXPECT_THAT(content_, HasSubstr("first line) Tj ET\nEMC\n /Span<</Lang(de)>>BDC \n"));
  EXPECT_THAT(content_, HasSubstr("second) Tj ET\nEMC\n EMC \n"));
}

TEST_F(TagsTest, LeaveDecorationMarkedThatElementsHave) {
  Tagged(WithContent("/Artifact<</MCID 3>>BDC 0 0 5 5 re f EMC BT /F 8 Tf 10 80 Td (A) Tj ET"));
  EXPECT_THAT(content_, HasSubstr("/Artifact BMC 0 0 5 5 re f EMC"));
}

TEST_F(TagsTest, LeaveDecorationWithinDecorationAlone) {
  const QpdfDocument written =
      Tagged(WithContent("/Artifact BMC /Artifact BMC EMC BT /F 8 Tf 10 80 Td (A) Tj ET EMC "
                         "BT /F 8 Tf 10 20 Td (B) Tj ET"));
  EXPECT_EQ(Elements(written).size(), 1U);
  EXPECT_THAT(content_, HasSubstr("<</MCID 0>>BDC\nBT /F 8 Tf 10 20 Td (B) Tj ET"));
}

TEST_F(TagsTest, AreMadeForAPageThatStandsTwice) {
  RawPdf file = WithContent("7 what BT /F 8 Tf 10 80 Td (A) Tj ET");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2>>");
  Run(file, Level::k2a, [](Conversion& conversion, const ContentSurvey& survey) {
    MendContents(conversion, survey);
    MendTags(conversion);
    EXPECT_EQ(conversion.page_edits.size(), 1U);
    WriteEditedContents(conversion);
  });
  const std::string content = RunProgram({"qpdf", "--qdf", Path("out.pdf"), "-"}).output;
  EXPECT_THAT(content, HasSubstr("/P<</MCID 0>>BDC"));
  EXPECT_THAT(content, Not(HasSubstr("what")));
}

TEST_F(TagsTest, StayWhereTheyAreSound) {
  RawPdf file = WithContent("/Odd<</MCID 0>>BDC BT /F 8 Tf 10 80 Td (A) Tj ET EMC",
                            "/StructParents 0", "/StructTreeRoot 7 0 R/Lang(de-CH)");
  file.Object(7, "<</Type/StructTreeRoot/K 8 0 R/ParentTree<</Nums[0[8 0 R]]>>>>");
  file.Object(8, "<</Type/StructElem/S/Odd/P 7 0 R/Pg 3 0 R/K 0>>");
  const QpdfDocument written = Tagged(file);
  const Json root = written.Follow(written.Catalog()["/StructTreeRoot"]);
  EXPECT_EQ(written.Follow(root["/K"])["/S"], "/Odd");
  EXPECT_EQ(root["/RoleMap"]["/Odd"], "/Div");
  EXPECT_EQ(written.Catalog()["/Lang"], "u:de-CH");
  EXPECT_EQ(written.Catalog()["/MarkInfo"]["/Marked"], true);
  EXPECT_THAT(Report(), HasSubstr("types of structure elements that are not known"));
}

TEST_F(TagsTest, LoseRolesOfStandardTypesThatLeadNowhere) {
  RawPdf file = WithContent("/P<</MCID 0>>BDC EMC", "/StructParents 0",
                            "/MarkInfo<</Marked true>>/StructTreeRoot 7 0 R");
  file.Object(7, "<</Type/StructTreeRoot/K 8 0 R/RoleMap<</P/Odd>>>>");
  file.Object(8, "<</Type/StructElem/S/P/P 7 0 R/Pg 3 0 R/K[0]>>");
  const QpdfDocument written = Tagged(file);
  EXPECT_TRUE(written.Follow(written.Catalog()["/StructTreeRoot"])["/RoleMap"].empty());
}

TEST_F(TagsTest, AreNotMadeForOtherLevels) {
  const RawPdf file = WithContent("BT /F 8 Tf 10 80 Td (A) Tj ET");
  EXPECT_FALSE(Tagged(file, Level::k2u).Catalog().contains("/StructTreeRoot"));
  EXPECT_EQ(Report(), "");
}

TEST_F(TagsTest, TakeADrawingAsAFigure) {
  const QpdfDocument written = Tagged(WithContent("0 0 9 9 re f q 20 20 50 50 re f Q"));
  const std::vector<Json> elements = Elements(written);
  ASSERT_EQ(elements.size(), 1U);
  EXPECT_EQ(elements[0]["/S"], "/Figure");
  EXPECT_EQ(elements[0]["/A"]["/BBox"], Json::array({0, 0, 70, 70}));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
