// Pdf2ImgTask: images that pages hold.
#include <tuple>

#include "Img2PdfTask.h"
#include "conversions/Pdf2ImgFixture.h"
#include "support/ByteText.h"
#include "support/JpegImage.h"
#include "support/RawPdf.h"
#include "support/TestJpx.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::ReadJpeg;
using testing::TestPdf;

class ExtractedImagesTest : public Pdf2ImgFixture {};

TEST_F(ExtractedImagesTest, TakesImagesOutAsTheyAreStored) {
  const CapturedOutput quiet;
  const std::string jpeg = testing::MakeJpeg(8, 8, {10, 20, 30});
  const std::string fax("\xC0\x04\x00\x40", 4);  // two white rows of group 4
  const auto stream = [](const std::string& entries, const std::string& data) {
    return "<</Type/XObject/Subtype/Image" + entries + "/Length " + std::to_string(data.size()) +
           ">>\nstream\n" + data + "\nendstream";
  };
  TestPdf()
      .Page("")
      .Content("q 0 1 -1 0 9 9 cm /J Do Q q 1 0 0 1 0 0 cm /F Do Q q /P Do Q")
      .PageEntry("/Resources <</XObject <</J {{j}} /F {{f}} /P {{p}}>>>>")
      .Object("j",
              stream("/Width 8/Height 8/BitsPerComponent 8/ColorSpace/DeviceRGB/Filter/DCTDecode",
                     jpeg))
      .Object("f", stream("/Width 8/Height 2/BitsPerComponent 1/ColorSpace/DeviceGray"
                          "/Filter/CCITTFaxDecode/DecodeParms<</K -1/Columns 8>>",
                          fax))
      .Object("p", stream("/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "a"))
      .Write(Path("doc.pdf"));
  Pdf2ImgTask task = TaskFor("doc.pdf", Pdf2ImgExtractImages);
  task.SetStoreOriginal(true);
  task.SetNamePattern("{stem}-{n}.img");
  task.Execute();
  ASSERT_THAT(Outputs(), ElementsAre("doc-0001.jpg", "doc-0002.tif", "doc-0003.png"));
  EXPECT_EQ(testing::ReadBytes(Path("out/doc-0001.jpg")), jpeg);
  const std::string tiff = testing::ReadBytes(Path("out/doc-0002.tif"));
  EXPECT_EQ(tiff.substr(0, 4), std::string("II*\0", 4));
  EXPECT_EQ(tiff.substr(8, fax.size()), fax);
  Img2PdfTask back(Path("out/doc-0002.tif"));
  back.SetOutputPath(Path("out"));
  back.Execute();
  EXPECT_EQ(testing::ReadBytes(Path("out/doc-0003.png")).substr(1, 3), "PNG");
}

TEST_F(ExtractedImagesTest, NamesImagesAsTheyAreStoredByTheirFormat) {
  const CapturedOutput quiet;
  const auto image = [](const std::string& entries, const std::string& hex) {
    return "<</Type/XObject/Subtype/Image/Width 8/Height 2" + entries + "/Length " +
           std::to_string(hex.size() + 1) + ">>\nstream\n" + hex + ">\nendstream";
  };
  const std::string gray = "/ColorSpace/DeviceGray/BitsPerComponent ";
  TestPdf()
      .Page("")
      .Content("/J Do /X Do /F Do /P Do")
      .PageEntry("/Resources <</XObject <</J {{j}} /X {{x}} /F {{f}} /P {{p}}>>>>")
      .Object("j", image(gray + "8/Filter[/ASCIIHexDecode/DCTDecode]",
                         testing::HexOf(testing::MakeJpeg(8, 2, {90}))))
      .Object("x", image("/Filter[/ASCIIHexDecode/JPXDecode]", testing::kRedBlueJpx))
      .Object("f", image(gray + "1/Filter[/ASCIIHexDecode/CCITTFaxDecode]"
                                "/DecodeParms[null<</K -1/Columns 8>>]",
                         "C0040040"))
      .Object("p", image(gray + "8/Filter/ASCIIHexDecode", std::string(32, '8')))
      .Write(Path("doc.pdf"));
  Pdf2ImgTask task = TaskFor("doc.pdf", Pdf2ImgExtractImages);
  task.SetStoreOriginal(true);
  for (const auto& [directory, pattern, start] :
       {std::tuple("a", "", "img"), std::tuple("b.c", "{n}", ""),
        std::tuple("d", "{n}.{stem}.img", "")}) {
    const std::string end = std::string(pattern).ends_with(".img") ? ".doc" : "";
    task.SetOutputPath(directory_.MakeDir(directory));
    task.SetNamePattern(pattern);
    task.Execute();
    EXPECT_THAT(directory_.Names(directory),
                ElementsAre(start + ("0001" + end + ".jpg"), start + ("0002" + end + ".jp2"),
                            start + ("0003" + end + ".tif"), start + ("0004" + end + ".png")));
  }
}

TEST_F(ExtractedImagesTest, ExtractsImages) {
  MakeWithImages("a.pdf", 2);
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  task.SetImgPrefix("ignored");
  const CapturedOutput output;
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("img0001.jpg", "img0002.jpg", "img0003.jpg", "img0004.jpg"));
  std::string expected;
  for (int i = 1; i <= 4; ++i) {
    expected +=
        "Generating image: " + Backslashes(Path("out")) + "\\img000" + std::to_string(i) + ".jpg";
  }
  EXPECT_EQ(output.Text(), expected);
  EXPECT_EQ(task.GetImages().size(), 4U);
  EXPECT_EQ(ReadJpeg(Path("out/img0001.jpg")).width, 8);
}

TEST_F(ExtractedImagesTest, ExtractsFromTheExportedPagesOnly) {
  MakeWithImages("a.pdf", 2);
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  task.SetPagesToExport({2, 7});
  const CapturedOutput output;
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("img0001.jpg", "img0002.jpg"));
}

TEST_F(ExtractedImagesTest, FindsNoImagesBeyondTheEnd) {
  MakeWithImages("a.pdf", 2);
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  task.SetPagesToExport({3, 7});
  const CapturedOutput output;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::NoImagesFound);
  EXPECT_EQ(output.Text(), "");
}

TEST_F(ExtractedImagesTest, ExtractsImagesOfForms) {
  const std::string image = "BI /W 8 /H 8 /BPC 1 /CS /G /F /AHx ID 00FF00FF00FF00FF> EI";
  const std::string page =
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Resources<</XObject<</F 5 0 R>>>>"
      "/Contents 4 0 R>>";
  testing::WriteBytes(Path("a.pdf"), testing::RawPdf()
                                         .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                                         .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                                         .Object(3, page)
                                         .Stream(4, "", "/F Do")
                                         .Stream(5, "/Subtype/Form/BBox[0 0 9 9]", image)
                                         .Table());
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  const CapturedOutput output;
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("img0001.jpg"));
}

TEST_F(ExtractedImagesTest, ExtractsImagesUprightAsTheyAreDrawn) {
  // Its left half is black. Turned to the left by a quarter, that is the lower one.
  const std::string image = "BI /W 16 /H 8 /BPC 8 /CS /G /F [/AHx /RL] ID " + [] {
    std::string rows;
    for (int i = 0; i < 8; ++i) {
      rows += "F900F9FF";  // eight samples of 0, eight of 255
    }
    return rows;
  }() + "80> EI";
  TestPdf().Page().Content("q 0 16 -8 0 50 50 cm " + image + " Q").Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  const CapturedOutput output;
  task.Execute();
  const testing::JpegImage upright = ReadJpeg(Path("out/img0001.jpg"));
  EXPECT_EQ(upright.width, 8);
  EXPECT_EQ(upright.height, 16);
  EXPECT_TRUE(upright.IsNear(4, 2, {255, 255, 255}));
  EXPECT_TRUE(upright.IsNear(4, 13, {0, 0, 0}));
}

TEST_F(ExtractedImagesTest, StopsAtTheFirstDocumentWithoutImages) {
  MakeWithImages("a.pdf", 1);
  MakePdf("b.pdf", 1);
  MakeWithImages("c.pdf", 5);
  Pdf2ImgTask task({Doc("a.pdf"), Doc("b.pdf"), Doc("c.pdf")}, Pdf2ImgExtractImages);
  task.SetOutputPath(Path("out"));
  const CapturedOutput output;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::NoImagesFound,
                    "No images found at PDF file [" + Backslashes(Path("b.pdf")) + "]"));
  EXPECT_THAT(Outputs(), ElementsAre("img0001.jpg", "img0002.jpg"));
}

TEST_F(ExtractedImagesTest, ExtractsBesideTheFirstDocumentWithoutAnOutputPath) {
  directory_.MakeDir("first");
  MakeWithImages("first/a.pdf", 1);
  MakeWithImages("b.pdf", 2);
  Pdf2ImgTask task({Doc("first/a.pdf"), Doc("b.pdf")}, Pdf2ImgExtractImages);
  const CapturedOutput output;
  task.Execute();
  EXPECT_EQ(task.GetOutputPath(), Backslashes(Path("first")) + "\\");
  EXPECT_THAT(directory_.Names("first"),  // each document starts anew
              ElementsAre("a.pdf", "img0001.jpg", "img0002.jpg", "img0003.jpg", "img0004.jpg"));
}

TEST_F(ExtractedImagesTest, TellsWhereAnImageCannotBeSaved) {
  MakeWithImages("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  task.SetOutputPath(Path("missing"));
  const CapturedOutput output;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to save img from PDF [" + Backslashes(Path("a.pdf")) + "] into [" +
                        Backslashes(Path("missing")) + "\\img0001.jpg]",
                    10));
}

TEST_F(ExtractedImagesTest, ReportsImagesThatAreNotAllThere) {
  TestPdf().Page().Content("BI /W 8 /H 8 /BPC 8 /CS /G /F /AHx ID 0000> EI").Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  const CapturedOutput output;
  task.Execute();
  ASSERT_EQ(task.GetReport().GetEntries().size(), 1U);
  EXPECT_EQ(task.GetReport().GetEntries()[0].reason,
            "part of an image cannot be read and is white");
  EXPECT_EQ(task.GetReport().GetEntries()[0].kind, PdfReportKind::Damage);
  EXPECT_EQ(task.GetReport().GetEntries()[0].outcome, PdfReportOutcome::Kept);
  EXPECT_EQ(task.GetReport().GetEntries()[0].count, 1);
  EXPECT_EQ(task.GetReport().GetEntries()[0].page, 1);
  EXPECT_EQ(task.GetReport().GetEntries()[0].source, Backslashes(Path("a.pdf")));
}

TEST_F(ExtractedImagesTest, ReportsImagesOfWhichNothingIsThere) {
  TestPdf()
      .Page()
      .Content("BI /W 1 /H 1 /BPC 8 /CS /G /F /AHx ID 80> EI")
      .Page()
      .Content("/X Do")
      .PageEntry("/Resources<</XObject<</X {{x}}>>>>")
      .Object("x",
              "<</Type/XObject/Subtype/Image/Width 8/Height 8/BitsPerComponent 8"
              "/ColorSpace/DeviceRGB/Filter/DCTDecode/Length 4>>\nstream\nabcd\nendstream")
      .Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf", Pdf2ImgExtractImages);
  const CapturedOutput output;
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("img0001.jpg"));
  EXPECT_THAT(task.GetReport().GetEntries(),
              ElementsAre(PdfReportEntry{.kind = PdfReportKind::Damage,
                                         .outcome = PdfReportOutcome::Dropped,
                                         .count = 1,
                                         .page = 2,
                                         .reason = "nothing of an image can be read",
                                         .source = Backslashes(Path("a.pdf"))}));
}

}  // namespace
}  // namespace TarnixTools
