#include <cmath>
#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

#include "Img2PdfTask.h"
#include "conversions/Pdf2ImgFixture.h"
#include "support/FileSizeLimit.h"
#include "support/JpegImage.h"
#include "support/NoThreads.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::ReadJpeg;
using testing::TestPdf;

class Pdf2ImgTaskTest : public Pdf2ImgFixture {};

TEST_F(Pdf2ImgTaskTest, HasDefaults) {
  Pdf2ImgTask task;
  EXPECT_EQ(task.GetMode(), Pdf2ImgRenderPages);
  EXPECT_EQ(task.GetDpi(), 100.0F);
  EXPECT_EQ(task.GetImgPrefix(), "");
  EXPECT_EQ(task.GetImgSizeUnits(), Pdf2ImgPixels);
  EXPECT_EQ(task.GetOutputPath(), "");
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  MakePdf("a.pdf", 1);
  EXPECT_EQ(Pdf2ImgTask(Doc("a.pdf")).GetDpi(), 100.0F);
  EXPECT_EQ(Pdf2ImgTask(Doc("a.pdf")).GetPdfDocsNum(), 1);
  EXPECT_EQ(Pdf2ImgTask(std::list<PdfDoc>{Doc("a.pdf"), Doc("a.pdf")}).GetDpi(), 100.0F);
  EXPECT_EQ(Pdf2ImgTask(std::list<PdfDoc>{Doc("a.pdf"), Doc("a.pdf")}).GetPdfDocsNum(), 2);
  EXPECT_EQ(Pdf2ImgTask({Doc("a.pdf")}, Pdf2ImgExtractImages).GetDpi(), 100.0F);
}

TEST_F(Pdf2ImgTaskTest, RefusesUnknownModes) {
  const Failure refused(PdfExceptionCode::InvalidParameter,
                        "Invalid pdf2img mode [2] (expected [0] or [1])");
  Pdf2ImgTask task;
  task.SetMode(Pdf2ImgExtractImages);
  EXPECT_EQ(FailureOf([&] { task.SetMode(static_cast<Pdf2ImgMode>(2)); }), refused);
  EXPECT_EQ(task.GetMode(), Pdf2ImgExtractImages);
  EXPECT_EQ(FailureOf([] { Pdf2ImgTask(std::list<PdfDoc>(), static_cast<Pdf2ImgMode>(2)); }),
            refused);
}

TEST_F(Pdf2ImgTaskTest, NamesImagesOfBothModesByAPattern) {
  const CapturedOutput quiet;
  MakeWithImages("doc.pdf", 1);
  for (const Pdf2ImgMode mode : {Pdf2ImgRenderPages, Pdf2ImgExtractImages}) {
    Pdf2ImgTask task = TaskFor("doc.pdf", mode);
    task.SetNamePattern("{stem}-" + std::to_string(mode) + "-{n}.jpg");
    task.Execute();
  }
  EXPECT_THAT(Outputs(),
              ElementsAre("doc-0-0001.jpg", "doc-0-0002.jpg", "doc-1-0001.jpg", "doc-1-0002.jpg"));
}

TEST_F(Pdf2ImgTaskTest, KeepsItsOptionsWhenCopiedAndMoved) {
  Pdf2ImgTask task;
  task.SetDpi(33);
  task.SetImgPrefix("scan");
  task.SetImgPrefix("");  // ignored
  const Pdf2ImgTask copy(task);
  EXPECT_EQ(copy.GetDpi(), 33.0F);
  Pdf2ImgTask moved(std::move(task));
  EXPECT_EQ(moved.GetImgPrefix(), "scan");
}

TEST_F(Pdf2ImgTaskTest, HasItsOptionsInCopiesToo) {
  MakePdf("a.pdf", 3);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(33);
  task.SetImgPrefix("scan");
  task.SetDocNameInImg(false);
  task.SetPagesToExport({2});
  task.SetImgSizeUnits(Pdf2ImgPageUnits);
  task.SetOutImgSize(72, 144);
  const auto expect_alike = [&](Pdf2ImgTask copy) {
    EXPECT_EQ(copy.GetMode(), Pdf2ImgRenderPages);
    EXPECT_EQ(copy.GetDpi(), 33.0F);
    EXPECT_EQ(copy.GetImgSizeUnits(), Pdf2ImgPageUnits);
    copy.Execute();
    EXPECT_THAT(Outputs(), ElementsAre("scan-page-0002.jpg"));
    const auto image = ReadJpeg(Path("out/scan-page-0002.jpg"));
    EXPECT_EQ(image.width, 33);
    EXPECT_EQ(image.height, 66);
    std::filesystem::remove(Path("out/scan-page-0002.jpg"));
  };
  Pdf2ImgTask other;
  other = task;
  expect_alike(task);
  expect_alike(other);
  other = Pdf2ImgTask({Doc("a.pdf")}, Pdf2ImgExtractImages);
  EXPECT_EQ(other.GetMode(), Pdf2ImgExtractImages);
  other = Pdf2ImgTask(task);
  expect_alike(other);
  expect_alike(Pdf2ImgTask(std::move(other)));
}

TEST_F(Pdf2ImgTaskTest, LooksAtOptionsWhenItExecutesOnly) {
  Pdf2ImgTask task;
  task.SetDpi(-1);
  EXPECT_EQ(task.GetDpi(), -1.0F);
  task.SetImgSizeUnits(static_cast<Pdf2ImgSizeUnits>(7));
  EXPECT_EQ(static_cast<int>(task.GetImgSizeUnits()), 7);
}

TEST_F(Pdf2ImgTaskTest, NeedsADocument) {
  EXPECT_EQ(FailureOf([] { Pdf2ImgTask().Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "None file defined at task"));
}

TEST_F(Pdf2ImgTaskTest, DrawsEveryPage) {
  MakePdf("report.pdf", 3);
  Pdf2ImgTask task = TaskFor("report.pdf");
  task.SetDpi(36);
  task.Execute();
  EXPECT_THAT(Outputs(),
              ElementsAre("report-page-0001.jpg", "report-page-0002.jpg", "report-page-0003.jpg"));
  EXPECT_THAT(task.GetImages(), ElementsAre(Backslashes(Path("out")) + "\\\\report-page-0001.jpg",
                                            Backslashes(Path("out")) + "\\\\report-page-0002.jpg",
                                            Backslashes(Path("out")) + "\\\\report-page-0003.jpg"));
  EXPECT_EQ(task.GetWrittenFiles(),
            std::vector<std::string>(task.GetImages().begin(), task.GetImages().end()));
  const auto image = ReadJpeg(Path("out/report-page-0002.jpg"));
  EXPECT_EQ(image.width, 306);
  EXPECT_EQ(image.density_x, 36);
  EXPECT_TRUE(task.GetReport().GetEntries().empty());
}

TEST_F(Pdf2ImgTaskTest, DrawsPagesInGray) {
  TestPdf().Page("").Content("1 0 0 rg 0 0 612 792 re f").Write(Path("report.pdf"));
  Pdf2ImgTask task = TaskFor("report.pdf");
  task.SetDpi(36);
  task.SetGray(true);
  task.Execute();
  const auto image = ReadJpeg(Path("out/report-page-0001.jpg"));
  EXPECT_EQ(image.components, 1);
  EXPECT_TRUE(image.IsNear(100, 100, {76, 76, 76}, 2));
}

TEST_F(Pdf2ImgTaskTest, DrawsPagesToPng) {
  TestPdf()
      .Page("")
      .Content("1 0 0 rg 0 0 306 792 re f 0 0.5 0 rg 306 0 306 396 re f")
      .Write(Path("report.pdf"));
  for (const bool is_gray : {false, true}) {
    Pdf2ImgTask task = TaskFor("report.pdf");
    task.SetDpi(72);
    task.SetImgFormat(Pdf2ImgPng);
    task.SetGray(is_gray);
    task.Execute();
    ASSERT_THAT(Outputs(), ElementsAre("report-page-0001.png"));
    const std::string png = testing::ReadBytes(Path("out/report-page-0001.png"));
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
    EXPECT_EQ(png[25], is_gray ? 0 : 2);
    Img2PdfTask back(Path("out/report-page-0001.png"));
    back.SetOutputPath(Path("out"));
    back.SetOutPdfName("back.pdf");
    back.Execute();
    const PdfSize size = Doc("out/back.pdf").GetPageSizes().front();
    EXPECT_NEAR(size.GetWidth(), 612, 0.5);
    Pdf2ImgTask again = TaskFor("out/back.pdf");
    again.SetDpi(72);
    again.Execute();
    const auto image = ReadJpeg(Path("out/back-page-0001.jpg"));
    const int red = is_gray ? 76 : 255;
    EXPECT_TRUE(image.IsNear(100, 100, {red, is_gray ? 76 : 0, is_gray ? 76 : 0}, 3));
    EXPECT_TRUE(image.IsNear(500, 100, {255, 255, 255}, 3));
    EXPECT_TRUE(
        image.IsNear(500, 700, {is_gray ? 75 : 0, is_gray ? 75 : 128, is_gray ? 75 : 0}, 3));
    for (const char* name :
         {"out/back.pdf", "out/back-page-0001.jpg", "out/report-page-0001.png"}) {
      PdfDoc written(Path(name), "", false);
      PdfDoc::Delete(written);
    }
  }
}

TEST_F(Pdf2ImgTaskTest, GivesJpegImagesTheQualityThatIsSet) {
  MakePdf("report.pdf", 1);
  std::vector<std::size_t> sizes;
  for (const int quality : {100, 30}) {
    Pdf2ImgTask task = TaskFor("report.pdf");
    task.SetQuality(quality);
    task.Execute();
    sizes.push_back(testing::ReadBytes(Path("out/report-page-0001.jpg")).size());
  }
  EXPECT_LT(sizes[1], sizes[0]);
}

TEST_F(Pdf2ImgTaskTest, RefusesFormatsAndQualitiesThatAreNone) {
  Pdf2ImgTask task;
  for (const int quality : {0, 101, -1}) {
    EXPECT_EQ(
        FailureOf([&] { task.SetQuality(quality); }),
        Failure(PdfExceptionCode::InvalidParameter,
                "Invalid img quality [" + std::to_string(quality) + "] (expected [1-100] value)"));
  }
  EXPECT_EQ(
      FailureOf([&] { task.SetImgFormat(static_cast<Pdf2ImgFormat>(2)); }),
      Failure(PdfExceptionCode::InvalidParameter, "Invalid img format [2] (expected [0] or [1])"));
  EXPECT_EQ(task.GetQuality(), 100);
  EXPECT_EQ(task.GetImgFormat(), Pdf2ImgJpeg);
}

TEST_F(Pdf2ImgTaskTest, NamesImages) {
  MakePdf("a.b.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.b.pdf");
  task.SetDpi(9);
  task.SetImgPrefix("scan");
  task.Execute();
  task.SetDocNameInImg(false);
  task.Execute();
  Pdf2ImgTask plain = TaskFor("a.b.pdf");
  plain.SetDpi(9);
  plain.SetDocNameInImg(false);
  plain.Execute();
  EXPECT_THAT(Outputs(),
              ElementsAre("page-0001.jpg", "scan-a.b-page-0001.jpg", "scan-page-0001.jpg"));
}

TEST_F(Pdf2ImgTaskTest, PassesOverPagesThatADocumentLacks) {
  MakePdf("report.pdf", 3);
  Pdf2ImgTask task = TaskFor("report.pdf");
  task.SetDpi(9);
  task.SetPagesToExport({2, 50, -1, 0});
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("report-page-0002.jpg"));
}

TEST_F(Pdf2ImgTaskTest, DrawsTheChosenPagesOnceAndInTheirOrder) {
  MakePdf("a.pdf", 3);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(9);
  const auto images_of = [&](const std::list<int>& pages) {
    task.SetPagesToExport(pages);
    task.Execute();
    std::string numbers;
    for (const std::string& image : task.GetImages()) {
      numbers += image.at(image.size() - 5);
    }
    return numbers;
  };
  EXPECT_EQ(images_of({3, 1, 3}), "13");
  EXPECT_EQ(images_of({2}), "2") << "in place of those before";
  EXPECT_EQ(images_of({}), "123");
}

TEST_F(Pdf2ImgTaskTest, KeepsTheImagesOfDocumentsBeforeAFailure) {
  MakePdf("a.pdf", 2);
  TestPdf().Write(Path("empty.pdf"));
  MakePdf("c.pdf", 1);
  Pdf2ImgTask task({Doc("a.pdf"), Doc("empty.pdf"), Doc("c.pdf")});
  task.SetOutputPath(Path("out"));
  task.SetDpi(9);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::NoPages, "None page found at PDF"));
  EXPECT_THAT(Outputs(), ElementsAre("a-page-0001.jpg", "a-page-0002.jpg"));
}

TEST_F(Pdf2ImgTaskTest, DrawsTheSameWithoutAThread) {
  MakePdf("a.pdf", 2);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(36);
  task.Execute();
  std::vector<std::string> images;
  for (const std::string& name : Outputs()) {
    images.push_back(testing::ReadBytes(Path("out/" + name)));
    std::filesystem::remove(Path("out/" + name));
  }
  const testing::NoThreads none;
  task.Execute();
  ASSERT_THAT(Outputs(), ElementsAre("a-page-0001.jpg", "a-page-0002.jpg"));
  EXPECT_TRUE(testing::ReadBytes(Path("out/a-page-0001.jpg")) == images.at(0));
  EXPECT_TRUE(testing::ReadBytes(Path("out/a-page-0002.jpg")) == images.at(1));
}

TEST_F(Pdf2ImgTaskTest, DrawsAHundredPixelsPerInchAtFirst) {
  TestPdf().Page().Size(72, 144).Write(Path("a.pdf"));
  TaskFor("a.pdf").Execute();
  const auto image = ReadJpeg(Path("out/a-page-0001.jpg"));
  EXPECT_EQ(image.width, 100);
  EXPECT_EQ(image.height, 200);
  EXPECT_EQ(image.density_x, 100);
}

TEST_F(Pdf2ImgTaskTest, WritesBesideTheFirstDocumentWithoutAnOutputPath) {
  directory_.MakeDir("first");
  directory_.MakeDir("second");
  MakePdf("first/a.pdf", 1);
  MakePdf("second/b.pdf", 1);
  Pdf2ImgTask task({Doc("first/a.pdf"), Doc("second/b.pdf")});
  task.SetDpi(9);
  task.Execute();
  EXPECT_EQ(task.GetOutputPath(), Backslashes(Path("first")) + "\\");
  EXPECT_THAT(directory_.Names("first"),
              ElementsAre("a-page-0001.jpg", "a.pdf", "b-page-0001.jpg"));
}

TEST_F(Pdf2ImgTaskTest, LetsDocumentsWithTheSameNamesOverwriteEachOther) {
  MakePdf("a.pdf", 2);
  TestPdf().Page().Size(72, 72).Write(Path("b.pdf"));
  Pdf2ImgTask task({Doc("a.pdf"), Doc("b.pdf")});
  task.SetOutputPath(Path("out"));
  task.SetDpi(72);
  task.SetDocNameInImg(false);
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("page-0001.jpg", "page-0002.jpg"));
  EXPECT_EQ(ReadJpeg(Path("out/page-0001.jpg")).width, 72);
  EXPECT_EQ(task.GetImages().size(), 3U);
}

TEST_F(Pdf2ImgTaskTest, ScalesPagesIntoTheGivenSize) {
  MakePdf("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetOutImgSize(200, 100);
  task.Execute();
  EXPECT_EQ(ReadJpeg(Path("out/a-page-0001.jpg")).width, 200);
  task.SetImgSizeUnits(Pdf2ImgPageUnits);
  task.SetDpi(36);
  task.Execute();
  EXPECT_EQ(ReadJpeg(Path("out/a-page-0001.jpg")).width, 100);
  EXPECT_EQ(ReadJpeg(Path("out/a-page-0001.jpg")).height, 50);
}

TEST_F(Pdf2ImgTaskTest, MakesImagesOfOnePixel) {
  MakePdf("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetOutImgSize(1, 1);
  task.Execute();
  EXPECT_EQ(ReadJpeg(Path("out/a-page-0001.jpg")).width, 1);
  EXPECT_EQ(ReadJpeg(Path("out/a-page-0001.jpg")).height, 1);
}

TEST_F(Pdf2ImgTaskTest, KeepsTheProportionsOfPagesInTheGivenSize) {
  TestPdf().Page().Size(100, 200).Content("0 0 100 200 re f").Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf");
  for (const Pdf2ImgSizeUnits units : {Pdf2ImgPixels, Pdf2ImgPageUnits}) {
    task.SetImgSizeUnits(units);
    task.SetOutImgSize(100, 100);
    task.SetDpi(72);
    task.Execute();
    const testing::JpegImage image = ReadJpeg(Path("out/a-page-0001.jpg"));
    EXPECT_EQ(image.width, 100);
    EXPECT_THAT(image.Ink(), ElementsAre(25, 0, 75, 100));
  }
}

TEST_F(Pdf2ImgTaskTest, WritesImagesOfTheBestQuality) {
  MakePdf("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(9);
  task.Execute();
  const std::string bytes = testing::ReadBytes(Path("out/a-page-0001.jpg"));
  const std::size_t table = bytes.find("\xFF\xDB");
  ASSERT_NE(table, std::string::npos);
  EXPECT_EQ(bytes.substr(table + 5, 64), std::string(64, '\x01'));  // behind length and number
}

TEST_F(Pdf2ImgTaskTest, RefusesSizesWhenItExecutes) {
  MakePdf("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetOutImgSize(0, 600);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid img dimensions [0 x 600]"));
  task.SetOutImgSize(10, -1);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid img dimensions [10 x -1]"));
  task.SetOutImgSize(600, 0);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid img dimensions [600 x 0]"));
  task.SetOutImgSize(-2, 1);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid img dimensions [-2 x 1]"));
  task.SetOutImgSize(10, 10);
  task.SetImgSizeUnits(static_cast<Pdf2ImgSizeUnits>(7));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InternalError, "Invalid img size units [7]"));
  EXPECT_THAT(Outputs(), ElementsAre());
}

TEST_F(Pdf2ImgTaskTest, ChecksTheSizeBeforeItsUnitsAndAfterTheDocument) {
  MakePdf("a.pdf", 1);
  TestPdf().Write(Path("empty.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetImgSizeUnits(static_cast<Pdf2ImgSizeUnits>(7));
  task.Execute();  // no size, no units
  task.SetOutImgSize(0, 10);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid img dimensions [0 x 10]"));
  task.SetPdfDocs({Doc("empty.pdf")});
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::NoPages);
}

TEST_F(Pdf2ImgTaskTest, TellsAWrongPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  MakePdf("plain.pdf", 1);
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("secret.pdf"), "pw", "owner");
  Pdf2ImgTask task({Doc("secret.pdf", "wrong")});
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::PasswordError, "Invalid password [wrong] for PDF file [" +
                                                         Backslashes(Path("secret.pdf")) + "]"));
  task.SetMode(Pdf2ImgExtractImages);
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::EngineError, "Unable to open PDF file for images extraction", 17));
  Pdf2ImgTask right({Doc("secret.pdf", "pw")});
  right.SetDpi(9);
  right.Execute();
  EXPECT_EQ(right.GetImages().size(), 1U);
  right.SetMode(Pdf2ImgExtractImages);
  EXPECT_EQ(FailureOf([&] { right.Execute(); }).code, PdfExceptionCode::NoImagesFound);
}

TEST_F(Pdf2ImgTaskTest, TellsWhatCannotBeOpened) {
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(FailureOf([&] { TaskFor("text.pdf").Execute(); }),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to open PDF file [" + Backslashes(Path("text.pdf")) +
                        "] (error [0x80410111])",
                    static_cast<std::int32_t>(0x80410111)));
  EXPECT_EQ(
      FailureOf([&] { TaskFor("text.pdf", Pdf2ImgExtractImages).Execute(); }),
      Failure(PdfExceptionCode::EngineError, "Unable to open PDF file for images extraction", 3));
}

TEST_F(Pdf2ImgTaskTest, NeedsPages) {
  TestPdf().Write(Path("empty.pdf"));
  EXPECT_EQ(FailureOf([&] { TaskFor("empty.pdf").Execute(); }),
            Failure(PdfExceptionCode::NoPages, "None page found at PDF"));
}

TEST_F(Pdf2ImgTaskTest, TellsWhereAnImageCannotBeMade) {
  MakePdf("a.pdf", 1);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetOutputPath(Path("missing"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to create image at path [" + Backslashes(Path("missing")) +
                        "\\\\a-page-0001.jpg] object. Error: [0x80410130]",
                    static_cast<std::int32_t>(0x80410130)));
}

TEST_F(Pdf2ImgTaskTest, TellsWhichImageCannotBeWritten) {
  MakePdf("a.pdf", 3);
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(9);
  task.SetPagesToExport({2, 3});
  {
    const testing::FileSizeLimit limit(100);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }),
              Failure(PdfExceptionCode::EngineError,
                      "Unable to write image at path [" + Backslashes(Path("out")) +
                          "\\\\a-page-0002.jpg]. Error: [0x80410131]",
                      static_cast<std::int32_t>(0x80410131)));
  }
  EXPECT_THAT(Outputs(), ElementsAre());
  EXPECT_TRUE(task.GetWrittenFiles().empty());
  EXPECT_THAT(task.GetReport().GetEntries(),
              ElementsAre(PdfReportEntry{.kind = PdfReportKind::Damage,
                                         .outcome = PdfReportOutcome::Dropped,
                                         .count = 2,
                                         .page = 2,
                                         .reason = "a page cannot be drawn (error 0x80410131)",
                                         .source = Backslashes(Path("a.pdf"))}));
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("a-page-0002.jpg", "a-page-0003.jpg"));
  EXPECT_EQ(task.GetWrittenFiles().size(), 2U);
}

TEST_F(Pdf2ImgTaskTest, TellsHowFarItIs) {
  const CapturedOutput quiet;
  MakeWithImages("a.pdf", 1);
  for (const Pdf2ImgMode mode : {Pdf2ImgRenderPages, Pdf2ImgExtractImages}) {
    for (const int documents : {1, 3}) {
      Pdf2ImgTask task = TaskFor("a.pdf", mode);
      task.SetDpi(9);
      task.SetPdfDocs(std::list<PdfDoc>(static_cast<std::size_t>(documents), Doc("a.pdf")));
      std::string told;
      task.SetProgress([&](const std::string& job, std::int64_t done, std::int64_t of) {
        told = job + " " + std::to_string(done) + "/" + std::to_string(of);
        return true;
      });
      task.Execute();
      EXPECT_EQ(told,
                std::string(mode == Pdf2ImgRenderPages ? "pages to images " : "extract images ") +
                    (documents == 1 ? "2/2" : "3/3"));
    }
  }
}

TEST_F(Pdf2ImgTaskTest, RefusesAResolutionThatIsNone) {
  MakePdf("a.pdf", 1);
  const std::vector<std::pair<float, std::string>> refused = {
      {0.0F, "0"}, {0.4F, "0.4"}, {-5.0F, "-5"}, {65536.0F, "65536"}, {std::nanf(""), "nan"}};
  for (const auto& [dpi, shown] : refused) {
    Pdf2ImgTask task = TaskFor("a.pdf");
    task.SetDpi(dpi);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid img resolution [" + shown + "] (expected [0.5-65535] value)"));
  }
  EXPECT_THAT(Outputs(), ElementsAre());
}

TEST_F(Pdf2ImgTaskTest, ReportsPagesThatAreTooLargeAndGoesOn) {
  TestPdf().Page().Size(14400, 14400).Page().Size(72, 72).Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.SetDpi(400);
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("a-page-0002.jpg"));
  EXPECT_EQ(task.GetImages().size(), 1U);
  EXPECT_THAT(task.GetReport().GetEntries(),
              ElementsAre(PdfReportEntry{.kind = PdfReportKind::Damage,
                                         .outcome = PdfReportOutcome::Dropped,
                                         .count = 1,
                                         .page = 1,
                                         .reason = "a page cannot be drawn (error 0x80410121)",
                                         .source = task.GetReport().GetEntries()[0].source}));
  EXPECT_THAT(task.GetReport().GetEntries()[0].source, ::testing::EndsWith("a.pdf"));
}

// A form that draws itself.
TEST_F(Pdf2ImgTaskTest, ReportsPagesOfWhichAPartCannotBeDrawn) {
  TestPdf()
      .Page("")
      .Page("")
      .Content("/F Do 1 0 0 rg 0 0 99 99 re f")
      .Object("form",
              "<</Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</F {{form}}>>>>/Length 5>>\n"
              "stream\n/F Do\nendstream")
      .PageEntry("/Resources<</XObject<</F {{form}}>>>>")
      .Write(Path("a.pdf"));
  Pdf2ImgTask task = TaskFor("a.pdf");
  task.Execute();
  EXPECT_THAT(Outputs(), ElementsAre("a-page-0001.jpg", "a-page-0002.jpg"));
  EXPECT_THAT(
      task.GetReport().GetEntries(),
      ElementsAre(PdfReportEntry{.kind = PdfReportKind::Damage,
                                 .outcome = PdfReportOutcome::Dropped,
                                 .count = 1,
                                 .page = 2,
                                 .reason = "a part of a page cannot be drawn (error 0x80410122)",
                                 .source = Backslashes(Path("a.pdf"))}));
}

TEST_F(Pdf2ImgTaskTest, HasNamesForFewerThanTenThousandPages) {
  TestPdf().Pages(10'000, "").Write(Path("long.pdf"));
  Pdf2ImgTask task = TaskFor("long.pdf");
  task.SetDpi(1);
  task.SetPagesToExport({9'999, 10'000});
  EXPECT_THROW(task.Execute(), std::length_error);
  EXPECT_THAT(Outputs(), ElementsAre("long-page-9999.jpg"));
}

}  // namespace
}  // namespace TarnixTools
