// The document into which Img2PdfTask joins those of the images, and what becomes of these.
#include <filesystem>

#include "conversions/Img2PdfFixture.h"
#include "support/PageViews.h"
#include "support/Readers.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::ExifJpegSegment;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using testing::QpdfComplaints;
using testing::TestJpeg;
using testing::WriteBytes;

class JoinedImagesTest : public Img2PdfFixture {};

TEST_F(JoinedImagesTest, JoinsAndRemovesTheDocumentsOfTheImages) {
  Img2PdfTask task(std::list<std::string>{MakeImage("a.jpg"), MakeImage("b.jpg", 1)});
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("_merged_images.pdf", "a.jpg", "b.jpg"));
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 2);
  EXPECT_EQ(QpdfComplaints(Path("_merged_images.pdf")), "");
}

TEST_F(JoinedImagesTest, JoinsThePagesThatSingleDocumentsHave) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  const std::list<std::string> images = {MakeImage("a.jpg"),
                                         MakeImage("b.jpg", 1, ExifJpegSegment(6))};
  Img2PdfTask task(images);
  task.SetMakeUpright(true);
  task.SetMargin(5);
  Img2PdfTask single = task;
  single.SetMergeAfter(false);
  single.Execute();
  PdfDoc::Merge({Doc("a.jpg.pdf"), Doc("b.jpg.pdf")}, Path("of singles.pdf"), "");
  task.Execute();
  const auto pages = testing::Pictures(Path("_merged_images.pdf"), 72);
  EXPECT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages, testing::Pictures(Path("of singles.pdf"), 72));
  EXPECT_NE(testing::ReadBytes(Path("_merged_images.pdf")).find(TestJpeg(3)), std::string::npos);
}

TEST_F(JoinedImagesTest, NeedsNoNamesForSingleDocumentsToJoinThem) {
  const std::string image = MakeImage(std::string(253, 'a'));  // too long for ".pdf" behind it
  Img2PdfTask task(image);
  task.SetOutPrefix("joined");
  task.Execute();
  EXPECT_EQ(PagesOf("joined.pdf"), 1);
  EXPECT_EQ(task.GetWrittenDocuments(), std::list<std::string>{Stored(Path("joined.pdf"))});
  task.SetMergeAfter(false);
  EXPECT_THROW(task.Execute(), PdfException);
}

TEST_F(JoinedImagesTest, NamesTheJoinedDocument) {
  const std::string image = MakeImage("a.jpg");
  const auto run = [&](const std::string& prefix, const std::string& name) {
    Img2PdfTask task(image);
    task.SetOutputPath(directory_.MakeDir("out"));
    task.SetOutPrefix(prefix);
    task.SetOutPrefix("");  // ignored
    task.SetOutPdfName(name);
    task.Execute();
  };
  run("", "");
  run("x", "");
  run("x", "all");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("_merged_images.pdf", "all", "x.pdf"));
}

TEST_F(JoinedImagesTest, TakesTheNameOfTheJoinedDocumentBack) {
  Img2PdfTask task(MakeImage("a.jpg"));
  task.SetOutPdfName("all");
  EXPECT_EQ(task.GetOutPdfName(), "all");
  task.SetOutPdfName("");
  EXPECT_EQ(task.GetOutPdfName(), "");
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("_merged_images.pdf", "a.jpg"));
}

TEST_F(JoinedImagesTest, JoinsBesideTheFirstImage) {
  directory_.MakeDir("x");
  directory_.MakeDir("y");
  Img2PdfTask task(std::list<std::string>{MakeImage("y/b.jpg"), MakeImage("x/a.jpg")});
  task.Execute();
  EXPECT_THAT(directory_.Names("y"), ElementsAre("_merged_images.pdf", "b.jpg"));
  EXPECT_THAT(directory_.Names("x"), ElementsAre("a.jpg"));
  EXPECT_EQ(task.GetOutputPath(), "") << "it is nobody's setting";
}

TEST_F(JoinedImagesTest, DocumentsThatAreDeletedSpareOthers) {
  const std::string image = MakeImage("a.jpg");
  directory_.MakeDir("out");
  WriteBytes(Path("out/a.pdf"), "somebody's");
  Img2PdfTask task(image);
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("_merged_images.pdf", "a.pdf"));
  EXPECT_EQ(testing::ReadBytes(Path("out/a.pdf")), "somebody's");
  task.Execute();  // joins what the first run has converted, too
  EXPECT_THAT(directory_.Names("out"), ElementsAre("_merged_images.pdf", "a.pdf"));
  EXPECT_EQ(testing::ReadBytes(Path("out/a.pdf")), "somebody's");
  EXPECT_EQ(PagesOf("out/_merged_images.pdf"), 2);
}

TEST_F(JoinedImagesTest, TheMergedDocumentMayHaveTheNameOfASingleOne) {
  Img2PdfTask task(std::list<std::string>{MakeImage("a.jpg"), MakeImage("b.jpg")});
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetOutPdfName("a.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf"));
  EXPECT_EQ(PagesOf("out/a.pdf"), 2);
  EXPECT_THAT(task.GetWrittenDocuments(), ElementsAre(Stored(Path("out/a.pdf"))));
}

TEST_F(JoinedImagesTest, JoinsWhatAnEarlierRunConvertedToo) {
  Img2PdfTask task(MakeImage("a.jpg"));
  task.SetMergeAfter(false);
  task.Execute();
  task.SetInputImage(MakeImage("b.jpg"));
  task.SetMergeAfter(true);
  task.Execute();
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 2);
  EXPECT_FALSE(Exists(Path("a.jpg.pdf")));
}

TEST_F(JoinedImagesTest, ForgetsNoDocumentOfAnEarlierRun) {
  Img2PdfTask task(MakeImage("a.jpg"));
  task.Execute();
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 1);
  task.Execute();  // a.jpg.pdf is made again, and there twice
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 2);
  task.Execute();
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 3);
  EXPECT_THAT(directory_.Names(), ElementsAre("_merged_images.pdf", "a.jpg"));
  task.SetInputImage(MakeImage("b.jpg"));
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::FileNotFound, "Unable to open file " + Stored(Path("a.jpg.pdf"))));
  EXPECT_TRUE(Exists(Path("b.jpg.pdf"))) << "it was converted before";
}

TEST_F(JoinedImagesTest, KeepsWhatItHasConvertedBeforeAFailure) {
  const std::string a = MakeImage("a.jpg");
  WriteBytes(Path("text.jpg"), "not an image at all");
  Img2PdfTask task(std::list<std::string>{a, Path("text.jpg")});
  task.SetMergeAfter(false);
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_TRUE(Exists(Path("a.jpg.pdf")));
  task.SetInputImage(MakeImage("b.jpg", 1, ExifJpegSegment(6)));
  task.SetImgRotation(Img2PdfImgRotation::Img2PdfRot90);
  task.SetMergeAfter(true);
  task.Execute();
  EXPECT_THAT(SizeOf("_merged_images.pdf", 1), ElementsAre(12, 6));
  EXPECT_THAT(SizeOf("_merged_images.pdf", 2), ElementsAre(6, 12));
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 2);
  EXPECT_FALSE(Exists(Path("a.jpg.pdf")));
}

TEST_F(JoinedImagesTest, TakesBackWhatACancelledRunHasMadeForTheJoinedDocument) {
  Img2PdfTask task(MakeImage("a.jpg"));
  task.SetMergeAfter(false);
  task.Execute();
  task.SetInputImages({MakeImage("b.jpg"), MakeImage("c.jpg")});
  task.SetMergeAfter(true);
  bool was_there = false;
  task.SetProgress([&](const std::string&, std::int64_t done, std::int64_t) {
    was_there = was_there || Exists(Path("b.jpg.pdf"));
    return done == 0;
  });
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InternalError, "Cancelled by the host"));
  EXPECT_TRUE(was_there);
  EXPECT_THAT(directory_.Names(), ElementsAre("a.jpg", "a.jpg.pdf", "b.jpg", "c.jpg"));
  EXPECT_THAT(task.GetWrittenDocuments(), IsEmpty());
  EXPECT_THAT(task.GetWrittenFiles(), IsEmpty());
  task.SetProgress(nullptr);
  task.Execute();
  EXPECT_EQ(PagesOf("_merged_images.pdf"), 3);
  EXPECT_THAT(task.GetWrittenFiles(), ElementsAre(Stored(Path("_merged_images.pdf"))));
  EXPECT_THAT(directory_.Names(), ElementsAre("_merged_images.pdf", "a.jpg", "b.jpg", "c.jpg"));
}

TEST_F(JoinedImagesTest, LargePagesStayLargeWhenJoined) {
  testing::TestPng strip{.width = 60'000, .height = 1, .bits = 8, .color_type = 0};
  strip.rows.assign(60'001, '\0');
  WriteBytes(Path("strip.png"), strip.Bytes());
  Img2PdfTask task(Path("strip.png"));
  task.Execute();
  EXPECT_THAT(SizeOf("_merged_images.pdf"), ElementsAre(45'000, 0.75));
}

}  // namespace
}  // namespace TarnixTools
