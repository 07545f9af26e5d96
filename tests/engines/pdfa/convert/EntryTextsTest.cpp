// What becomes of entries, layers, attachments, boxes, metadata and annotations, whole.
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/StepText.h"
#include "engines/pdfa/convert/annotations/Annotations.h"
#include "engines/pdfa/convert/metadata/Metadata.h"
#include "engines/pdfa/convert/structure/Attachments.h"
#include "engines/pdfa/convert/structure/ForbiddenEntries.h"
#include "engines/pdfa/convert/structure/Layers.h"
#include "engines/pdfa/convert/structure/MissingResources.h"
#include "engines/pdfa/convert/structure/PageBoxes.h"
#include "support/ArchiveFile.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;
using testing::RawPdf;

using EntryTextsTest = StepTextTest;

// Every entry that there is a rule about, in a place where it holds and in one where it does not.
RawPdf ManyEntries() {
  RawPdf file;
  file.Object(
      1,
      "<</Type/Catalog/Pages 2 0 R/AA<</WC 20 0 R>>/OpenAction 20 0 R/Version/1.7/Perms<<>>"
      "/Requirements[]/NeedsRendering true/Lang(de_DE)/AcroForm<</Fields[]/XFA(x)"
      "/NeedAppearances true>>/Names<</JavaScript<</Names[(a)20 0 R]>>/EmbeddedFiles<<"
      "/Names[(a)26 0 R]>>/AlternatePresentations<<>>/Dests<</Names[]>>>>/Own<</XFA(x)"
      "/NeedAppearances true/NeedsRendering true/Requirements[]/Perms<<>>/Version/1.7/Lang(de)"
      "/JavaScript(x)/EmbeddedFiles(x)/PresSteps<<>>>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/PresSteps<<>>/AA<</O 20 0 R>>"
              "/Metadata 27 0 R/Group<</S/Transparency>>/Lang(de-1901)/Resources<</XObject<</AA<<"
              "/Type/XObject>>/I 21 0 R/F 22 0 R>>/ExtGState<</A 23 0 R/B 24 0 R/C<</CA 0.5/ca 1/BM"
              "/Normal/OPM 1/TR 25 0 R>>>>>>/Annots[30 0 R 31 0 R 32 0 R 33 0 R]>>");
  file.Object(20, "<</S/JavaScript/JS(x)/Next<</S/GoTo/D[3 0 R/Fit]>>>>");
  file.Stream(
      21,
      "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray"
      "/Alternates[]/OPI<<>>/Interpolate true/Intent/Odd/Metadata 27 0 R/F(x)/FFilter/A"
      "/FDecodeParms<<>>",
      "x");
  file.Stream(22,
              "/Type/XObject/Subtype/Form/BBox[0 0 9 9]/PS 21 0 R/Subtype2/PS/Ref<<>>/OPI<<>>"
              "/Interpolate true/Alternates[]/Intent/Odd/Group<</S/Transparency/CS/DeviceRGB>>",
              "");
  file.Object(
      23,
      "<</Type/ExtGState/CA .5/ca .25/BM/Multiply/SMask<</S/Alpha/G 22 0 R>>/TR/Identity/TR2"
      "/Identity/HTP[1 1]/HT/Default/OPM 1/RI/Odd>>");
  file.Object(24,
              "<</Type/ExtGState/CA 1/ca 1.0/BM[/Odd/Screen]/SMask/None/TR2/Default/HT<<"
              "/HalftoneType 1>>/OPM 0/RI/Perceptual/HTP 1>>");
  file.Object(25, "<</FunctionType 2/Domain[0 1]/N 1>>");
  file.Object(26, "<</Type/Filespec/F(a)/EF<</F 28 0 R>>>>");
  file.Stream(27, "/Type/Metadata/Subtype/XML", "x");
  file.Stream(28, "/Type/EmbeddedFile", "text");
  file.Object(29,
              "[<</A 20 0 R>><</S/Named/N/NextPage>><</S/Named/N/Print>><</S/GoToE>>40000.5 1.5]");
  file.Object(30,
              "<</Type/Annot/Subtype/Widget/Rect[0 0 9 9]/A<</S/URI/URI(a)>>/AA<</E 20 0 R>>>>");
  file.Object(31,
              "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(a)/Next[<</S/Launch>>]>>/PA<<"
              "/S/Launch>>/CA .5>>");
  file.Object(32, "<</Type/Annot/Subtype/Link/Rect[0 0 9 40000.25]/A<</S/GoToE>>/CA 1>>");
  file.Object(
      33, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest[3 0 R/Fit]/FT/Tx/OPM 1/Next[20 0 R]>>");
  return file;
}

TEST_F(EntryTextsTest, LoseWhatIsForbidden) {
  EXPECT_TRUE(IsAsExpected(
      "pdfa/convert/entries.txt",
      Text(ManyEntries(), {Level::k1b, Level::k2a, Level::k3u}, &RemoveForbiddenEntries)));
}

TEST_F(EntryTextsTest, NameTheirLayers) {
  RawPdf file = OnePage("", "/OCProperties 10 0 R");
  file.Object(4, "<</Type/OCG/Name(a)>>").Object(5, "<</Type/OCG/Name(b)>>");
  file.Object(6, "<</Type/OCG/Name(c)>>").Object(7, "[5 0 R]").Object(8, "[(label)[4 0 R]7 0 R]");
  file.Object(9, "<</AS[<<>>]/Name(Default)/BaseState/OFF>>");
  file.Object(10,
              "<</OCGs[4 0 R 5 0 R 6 0 R null]/Own(x)/D<</ON[4 0 R]/Order 8 0 R/AS[]>>/Configs[<<"
              "/Order[[6 0 R]]>>9 0 R<</Name()>><</Name(Default)/Creator(x)>>]>>");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/layers.txt",
                           Text(file, {Level::k1a, Level::k2b, Level::k3b}, &MendLayers)));
}

TEST_F(EntryTextsTest, SayWhatIsAttached) {
  const std::string archive = testing::ArchiveFile("2b").Bytes();
  RawPdf file =
      OnePage("/Annots[20 0 R 21 0 R 22 0 R]",
              "/AF[11 0 R]/Names<</Dests<</Names[]>>/EmbeddedFiles<</Kids[<</Names[(a)10 0 R"
              "(b)<</Type/Filespec/UF(b.txt)/EF<</F 14 0 R>>>>(c)12 0 R]>>]>>>>");
  file.Object(10, "<</Type/Filespec/F(a.pdf)/EF<</F 15 0 R>>>>");
  file.Object(11, "<</Type/Filespec/UF(b.txt)/AFRelationship/Data/EF 16 0 R>>");
  file.Object(12, "<</Type/Filespec/F(c.txt)>>");
  file.Stream(14, "/Type/EmbeddedFile/Subtype/text#2Fplain", "text");
  file.Stream(15, "/Type/EmbeddedFile/Subtype/application", archive);
  file.Object(16, "<</F 17 0 R>>");
  file.Stream(17, "/Type/EmbeddedFile/Subtype/a#2Fb#20c", "text");
  file.Object(
      20, "<</Type/Annot/Subtype/FileAttachment/Rect[0 0 9 9]/FS<</F(d.pdf)/EF<</F 15 0 R>>>>>>");
  file.Object(21, "<</Type/Annot/Subtype/FileAttachment/Rect[0 0 9 9]/FS 10 0 R>>");
  file.Object(22, "<</Type/Annot/Subtype/FileAttachment/Rect[0 0 9 9]/FS<</F(e.pdf)>>>>");
  EXPECT_TRUE(
      IsAsExpected("pdfa/convert/attachments.txt",
                   Text(file, {Level::k1b, Level::k2u, Level::k3b}, [](Conversion& conversion) {
                     RemoveForbiddenEntries(conversion);
                     MendAttachments(conversion);
                   })));
}

// What says nothing of its name is a file that is attached, too.
TEST_F(EntryTextsTest, AttachFilesWithoutNames) {
  RawPdf file = OnePage("", "/Names<</EmbeddedFiles<</Names[(a)4 0 R]>>>>");
  file.Object(4, "<</Type/Filespec/EF<</F 5 0 R/UF 5 0 R>>>>");
  file.Stream(5, "/Type/EmbeddedFile/Subtype/text#2Fplain", "text");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/attachments-without-names.txt",
                           Text(file, {Level::k2u, Level::k3b}, [](Conversion& conversion) {
                             RemoveForbiddenEntries(conversion);
                             MendAttachments(conversion);
                           })));
}

TEST_F(EntryTextsTest, HaveBoxesOfTheirSizes) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R]/Count 4/MediaBox[0 0 3 14400]>>");
  file.Object(
      3, "<</Type/Page/Parent 2 0 R/TrimBox[0 0 2.9 9]/BleedBox[0 0 3 14400]/ArtBox[0 0 9 2.9]>>");
  file.Object(
      4,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 2.9 9]/TrimBox[0 0 14401 9]/BleedBox[0]/ArtBox[0 "
      "0 9 14401]>>");
  file.Object(5, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 14401 9]>>");
  file.Object(6, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 14401]>>");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/boxes.txt",
                           Text(file, {Level::k1b, Level::k2b, Level::k3a}, &MendPageBoxes)));
}

TEST_F(EntryTextsTest, SayTheSameAsTheirInformation) {
  RawPdf file = OnePage("", "/Metadata 5 0 R");
  file.Object(
      4,
      "<</Title(A title)/Author(\xFE\xFF\x20\xAC)/Keywords 1/Producer(P)/CreationDate(D:2020)"
      "/ModDate(yesterday)/Own(x)>>");
  file.Stream(
      5, "/Type/Metadata/Subtype/XML",
      testing::TestPacket(testing::ClaimOf("1") +
                          "<rdf:Description rdf:about='' xmlns:s='http://s/'><s:a>1</s:a><s:b "
                          "rdf:parseType='Resource'><s:c>1</s:c></s:b></rdf:Description>"));
  trailer_ = "/Root 1 0 R/Info 4 0 R";
  EXPECT_TRUE(IsAsExpected("pdfa/convert/metadata.txt",
                           Text(file, {Level::k1a, Level::k2u, Level::k3b}, &MendMetadata)));
}

TEST_F(EntryTextsTest, HaveResourcesOfTheirOwn) {
  RawPdf file = OnePage("/Contents 4 0 R/Resources<</XObject<</F 5 0 R/G 6 0 R/H 7 0 R>>>>");
  const std::string form = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
  file.Stream(4, "", "/F Do /G Do /H Do");
  file.Stream(5, form, "/G Do");
  file.Stream(6, form + "/Resources<</XObject<</H 7 0 R>>>>", "/H Do");
  file.Stream(7, form, "0 0 9 9 re f");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/resources.txt",
                           SurveyText(file, {Level::k2b}, &AddMissingResources)));
}

// Annotations of all types with and without appearances, in states, hidden, on layers and in place.
RawPdf ManyAnnotations() {
  RawPdf file;
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/OCProperties<</OCGs[8 0 R]/D<</OFF[8 0 R]>>>>/AcroForm<<"
              "/Fields[20 0 R 21 0 R 22 0 R 23 0 R 24 0 R]/DA(/Helv 0 Tf 1 0 0 rg)>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 9 0 R 11 0 R]/Count 4>>");
  file.Object(11, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots[null]>>");
  std::string annotations;
  for (int i = 20; i < 58; ++i) {
    annotations += std::to_string(i) + " 0 R ";
  }
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots[" + annotations + "]>>");
  file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots 10 0 R>>");
  file.Stream(5, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re f");
  file.Stream(6, "/Type/XObject/Subtype/Form/BBox[0 0 9 9]", "0 0 9 9 re S");
  file.Object(7, "<</On 5 0 R/Off 6 0 R/Resources 6 0 R>>");
  file.Object(8, "<</Type/OCG/Name(a)>>");
  file.Object(9, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots(none)>>");
  file.Object(10, "[<</Type/Annot/Subtype/Square/Rect[1 2 3 4]>>null 20 0 R 60 0 R]");
  const std::string widget = "<</Type/Annot/Subtype/Widget/T(a)/Rect[10 20 30 50]";
  file.Object(20, widget + "/FT/Btn/AS/On/MK<</BG[.5]/BC[1 0 0]/CA(8)>>>>");
  file.Object(21, widget + "/FT/Btn/Ff 32768/V/Off/MK<</R 90/CA(l)/BC[0 1 0]>>>>");
  file.Object(22, widget + "/FT/Btn/AP<</N 7 0 R/D 7 0 R>>/AS/On>>");
  file.Object(23, widget + "/FT/Btn/AP<</N 5 0 R>>/AS/On>>");
  file.Object(24, widget + "/FT/Tx/AP<</N 7 0 R>>/AS/Off>>");
  const std::string note = "<</Type/Annot/Rect[10 20 30 50]/Subtype";
  const std::string quads = "/QuadPoints[10 50 30 50 10 20 30 20]";
  const char* const bodies[] = {"/Text",
                                "/Text/AP<</N 5 0 R>>/F 6",
                                "/Text/AP<</N 5 0 R/R 5 0 R/D 6 0 R>>/F 4",
                                "/Link",
                                "/Link/AP<</N 5 0 R>>",
                                "/Link/F 290/AP<</N 5 0 R>>",
                                "/Popup/AP<</N 5 0 R>>/F 28",
                                "/Line/L[10 20 30 50]/C[1 0 0]/BS<</W 3>>/OC 8 0 R",
                                "/Square/IC[0 0 1 0]/C[0 1 0]/CA .5/RD[1 2 3 4]",
                                "/Circle/IC[]/C[.5]/Border[0 0 4]",
                                "/Polygon/Vertices[10 20 30 20 20 50]/IC[1 1 0]",
                                "/PolyLine/Vertices[10 20 30 20 20 50]",
                                "/Highlight",
                                "/Underline",
                                "/Squiggly",
                                "/StrikeOut",
                                "/Ink/InkList[[10 20 30 50][1]]/C[]",
                                "/Ink/InkList[[10 20 30 50]]",
                                "/Stamp/Name/Draft",
                                "/Caret",
                                "/Caret/AP<</N 5 0 R>>",
                                "/FileAttachment/AP<</N 5 0 R>>",
                                "/Sound/AP<</N 5 0 R>>",
                                "/Movie",
                                "/Screen/AP<</N 7 0 R>>/AS/On",
                                "/Redact/AP<</N 7 0 R>>/AS/Lost",
                                "/3D/F 1",
                                "/Widget/FT/Btn/MK<</R -90/BC[0]>>",
                                "/Widget/FT/Btn/MK<</R 450/BC[0]>>/BS<</W 100>>",
                                "/Widget/FT/Btn/MK<</R 45/BC[0 0 0 1]/BG[]/CA(u)>>/AS/Yes",
                                "/Widget/FT/Btn/MK<</R 180/BC[2 -1 0]/CA(H)>>/AS/On/BS<</S/U/W 3>>",
                                "/Widget/FT/Btn/MK<</R 270/BG[.1 .2]/CA(n)>>/AS/On/Border[0 0 5]"};
  int number = 25;
  for (const char* body : bodies) {
    file.Object(number++, note + body + quads + ">>");
  }
  file.Object(60, note + "/Text/AP<<>>>>");
  return file;
}

TEST_F(EntryTextsTest, DrawTheirAnnotations) {
  for (const Level level : {Level::k1b, Level::k2b}) {
    EXPECT_TRUE(
        IsAsExpected(std::string("pdfa/convert/annotations-") + (NameOf(level) + 6) + ".txt",
                     Text(ManyAnnotations(), {level}, &MendAnnotations)));
  }
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
