#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/structure/Attachments.h"
#include "engines/pdfa/convert/structure/ForbiddenEntries.h"
#include "engines/pdfa/convert/structure/Layers.h"
#include "engines/pdfa/convert/structure/MissingResources.h"
#include "engines/pdfa/convert/structure/PageBoxes.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using testing::QpdfDocument;
using testing::RawPdf;

using Json = QpdfDocument::Json;

class ForbiddenEntriesTest : public ConversionTest {};

TEST_F(ForbiddenEntriesTest, TakesOutScriptsWhereverTheyStand) {
  RawPdf file = OnePage("/Annots[4 0 R]/AA<</O 5 0 R>>",
                        "/OpenAction 5 0 R/Names<</JavaScript<</Names[(a)5 0 R]>>>>");
  file.Object(4, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(x)/Next 5 0 R>>>>");
  file.Object(5, "<</S/JavaScript/JS(app.alert\\(1\\))>>");
  const QpdfDocument written = Run(file, Level::k2b, &RemoveForbiddenEntries);
  EXPECT_FALSE(written.Catalog().contains("/OpenAction"));
  EXPECT_FALSE(written.Catalog()["/Names"].contains("/JavaScript"));
  const Json page = written.Follow(written.Page(1));
  EXPECT_FALSE(page.contains("/AA"));
  const Json action = written.Follow(page["/Annots"][0])["/A"];
  EXPECT_EQ(action["/URI"], "u:x");
  EXPECT_FALSE(action.contains("/Next"));
  EXPECT_THAT(Report(), HasSubstr("left out: scripts"));
}

TEST_F(ForbiddenEntriesTest, KeepsActionsThatOnlyGoSomewhere) {
  RawPdf file = OnePage("/Annots[4 0 R]", "/OpenAction[3 0 R/Fit]");
  file.Object(4, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/GoTo/D[3 0 R/Fit]>>>>");
  const QpdfDocument written = Run(file, Level::k1b, &RemoveForbiddenEntries);
  EXPECT_TRUE(written.Catalog().contains("/OpenAction"));
  EXPECT_TRUE(written.Follow(written.Follow(written.Page(1))["/Annots"][0]).contains("/A"));
  EXPECT_EQ(Report(), "");
}

TEST_F(ForbiddenEntriesTest, TakesPrintingAndSwitchesOutOfGraphicsStates) {
  const RawPdf file = OnePage(
      "/Resources<</ExtGState<</TR<</Type/ExtGState/TR/Identity/TR2/Default/HTP[0 0]/BM/Odd/OPM 1"
      "/ca .5/SMask<</S/Alpha/TR/Identity/G 3 0 R>>>>>>>>");
  const QpdfDocument written = Run(file, Level::k2b, &RemoveForbiddenEntries);
  const Json state = written.Follow(written.Page(1))["/Resources"]["/ExtGState"]["/TR"];
  EXPECT_FALSE(state.contains("/TR"));
  EXPECT_EQ(state["/TR2"], "/Default");
  EXPECT_FALSE(state.contains("/HTP"));
  EXPECT_FALSE(state.contains("/BM"));
  EXPECT_FALSE(state.contains("/OPM"));
  EXPECT_EQ(state["/ca"], 0.5);
  EXPECT_EQ(state["/SMask"]["/TR"], "/Identity");  // which is a soft mask's own
}

TEST_F(ForbiddenEntriesTest, TakesEntriesOutOfStreams) {
  RawPdf file = OnePage("/Resources<</XObject<</I 4 0 R>>>>");
  file.Stream(4,
              "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8"
              "/Interpolate true/Alternates[]/OPI<<>>/Intent/Odd",
              "x");
  const QpdfDocument written = Run(file, Level::k2b, &RemoveForbiddenEntries);
  const Json image =
      written.Follow(written.Follow(written.Page(1))["/Resources"]["/XObject"]["/I"]);
  EXPECT_EQ(image["/Width"], 1);
  for (const char* key : {"/Interpolate", "/Alternates", "/OPI", "/Intent"}) {
    EXPECT_FALSE(image.contains(key)) << key;
  }
}

class AttachmentsTest : public ConversionTest {};

TEST_F(AttachmentsTest, SayWhatTheyAre) {
  RawPdf file = OnePage("", "/Names<</EmbeddedFiles<</Names[(a)4 0 R]>>>>");
  file.Object(4, "<</Type/Filespec/F(a.bin)/EF<</F 5 0 R>>>>");
  file.Stream(5, "/Type/EmbeddedFile", "x");
  const QpdfDocument written = Run(file, Level::k3b, &MendAttachments);
  ASSERT_EQ(written.Catalog()["/AF"].size(), 1U);
  const Json attachment = written.Follow(written.Catalog()["/AF"][0]);
  EXPECT_EQ(attachment["/AFRelationship"], "/Unspecified");
  EXPECT_EQ(attachment["/UF"], "u:a.bin");
  EXPECT_THAT(written.Follow(attachment["/EF"]["/F"])["/Subtype"].get<std::string>(),
              HasSubstr("octet-stream"));
}

TEST_F(AttachmentsTest, ThatAreNoPdfAStayInPart3Only) {
  RawPdf file = OnePage("", "/Names<</EmbeddedFiles<</Names[(a)4 0 R]>>/Dests<<>>>>");
  file.Object(4, "<</Type/Filespec/F(a)/EF<</F 5 0 R>>>>");
  file.Stream(5, "/Type/EmbeddedFile", "x");
  const auto mend = [](Conversion& conversion) {
    RemoveForbiddenEntries(conversion);
    MendAttachments(conversion);
  };
  for (const Level level : {Level::k1b, Level::k2b}) {
    const Json names = Run(file, level, mend).Catalog()["/Names"];
    EXPECT_FALSE(names.contains("/EmbeddedFiles"));
    EXPECT_TRUE(names.contains("/Dests"));
  }
  EXPECT_TRUE(Run(file, Level::k3b, mend).Catalog()["/Names"].contains("/EmbeddedFiles"));
}

TEST_F(AttachmentsTest, StayInPart2WhereTheirNameHoldsThem) {
  const RawPdf file =
      OnePage("", "/Names<</EmbeddedFiles<</Names[(a)<</Type/Filespec/F(a)/EF<<>>>>(b)<<>>]>>>>");
  const QpdfDocument written = Run(file, Level::k2b, &MendAttachments);
  const Json names = written.Catalog()["/Names"]["/EmbeddedFiles"]["/Names"];
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(written.Follow(names[1])["/AFRelationship"], "/Unspecified");
}

TEST_F(AttachmentsTest, ThatAreWrittenInPlaceBecomeObjectsInPart3) {
  RawPdf file =
      OnePage("/Annots[4 0 R]",
              "/Names<</EmbeddedFiles<</Names[(a)<</Type/Filespec/F(a)/EF<</F 5 0 R>>>>]>>>>");
  file.Object(4,
              "<</Subtype/FileAttachment/Rect[0 0 9 9]/FS<</Type/Filespec/F(b)/EF<</F 5 0 R>>>>>>");
  file.Stream(5, "/Type/EmbeddedFile", "x");
  const QpdfDocument written = Run(file, Level::k3b, &MendAttachments);
  ASSERT_EQ(written.Catalog()["/AF"].size(), 2U);
  const Json annotation = written.Follow(written.Follow(written.Page(1))["/Annots"][0]);
  EXPECT_TRUE(annotation["/FS"].is_string()) << "a reference";
  EXPECT_EQ(written.Follow(annotation["/FS"])["/AFRelationship"], "/Unspecified");
  EXPECT_EQ(written.Follow(written.Catalog()["/Names"]["/EmbeddedFiles"]["/Names"][1])["/UF"],
            "u:a");
}

class MendedLayersTest : public ConversionTest {};

TEST_F(MendedLayersTest, HaveNamesAndAreAllListed) {
  RawPdf file =
      OnePage("", "/OCProperties<</OCGs[4 0 R 5 0 R]/D<</Order[4 0 R]/AS[]>>/Configs[<<>> <<>>]>>");
  file.Object(4, "<</Type/OCG/Name(One)>>");
  file.Object(5, "<</Type/OCG/Name(Two)>>");
  const Json layers = Run(file, Level::k2b, &MendLayers).Catalog()["/OCProperties"];
  EXPECT_EQ(layers["/D"]["/Name"], "u:Default");
  EXPECT_EQ(layers["/D"]["/Order"].size(), 2U);
  EXPECT_FALSE(layers["/D"].contains("/AS"));
  EXPECT_NE(layers["/Configs"][0]["/Name"], layers["/Configs"][1]["/Name"]);
}

TEST_F(MendedLayersTest, GoInPart1) {
  const RawPdf file = OnePage("", "/OCProperties<</OCGs[]/D<<>>>>");
  EXPECT_FALSE(Run(file, Level::k1b, &MendLayers).Catalog().contains("/OCProperties"));
}

class MissingResourcesTest : public ConversionTest {};

TEST_F(MissingResourcesTest, ComeFromWhatDrawsTheContent) {
  RawPdf file = OnePage("/Resources<</XObject<</F 4 0 R>>/Font<<>>>>/Contents 5 0 R");
  file.Stream(4, "/Subtype/Form/BBox[0 0 9 9]", "0 g");
  file.Stream(5, "", "/F Do");
  const QpdfDocument written = Run(file, Level::k2b, &AddMissingResources);
  const Json form = written.Follow(written.Follow(written.Page(1))["/Resources"]["/XObject"]["/F"]);
  EXPECT_TRUE(form["/Resources"].contains("/Font"));
}

class PageBoxesTest : public ConversionTest {};

TEST_F(PageBoxesTest, GoWhereTheyAreTooSmall) {
  const RawPdf file = OnePage("/ArtBox[0 0 1 1]/TrimBox[0 0 50 50]");
  const QpdfDocument written = Run(file, Level::k2b, &MendPageBoxes);
  const Json page = written.Follow(written.Page(1));
  EXPECT_FALSE(page.contains("/ArtBox"));
  EXPECT_TRUE(page.contains("/TrimBox"));
  EXPECT_EQ(report_.BlockingCount(), 0U);
}

TEST_F(PageBoxesTest, StandInTheWayWhereThePageIsTooSmall) {
  Run(OnePage("/MediaBox[0 0 2 2]"), Level::k2b, &MendPageBoxes);
  EXPECT_EQ(report_.BlockingCount(), 1U);
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
