// Where tasks write to that have been given no output directory: beside their first document, or,
// those that say so, to the current directory; and what of that they keep.
#include <filesystem>

#include "Pdf2ImgTask.h"
#include "Pdf2OfficeTask.h"
#include "Pdf2PdfATask.h"
#include "PdfCompressTask.h"
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRepairTask.h"
#include "PdfRotateTask.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSplitTask.h"
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "PdfTransformTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class OutputPathTest : public testing::DocumentTest {
 protected:
  OutputPathTest() {
    MakePdf("doc.pdf", 2);
    testing::WriteBytes(Path("not.pdf"), "hello");
  }

  PdfDoc Missing() const { return {Path("missing.pdf"), "", false}; }

  // Runs a task that fails, and returns its output path.
  template <typename Task>
  static std::string PathAfterFailure(Task task) {
    EXPECT_NE(FailureOf([&] { task.Execute(); }), Failure());
    return task.GetOutputPath();
  }

  // The files that a task writes when it runs in an empty directory.
  template <typename Task>
  std::vector<std::string> WrittenToTheCurrentDirectory(Task task) const {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::remove_all(Path("here"));
    std::filesystem::current_path(directory_.MakeDir("here"));
    const Failure failure = FailureOf([&] { task.Execute(); });
    std::filesystem::current_path(before);
    EXPECT_EQ(failure, Failure());
    EXPECT_EQ(task.GetOutputPath(), "");
    return directory_.Names("here");
  }
};

TEST_F(OutputPathTest, FilledInStaysAfterAFailure) {
  const std::string beside = Backslashes(directory_.Path() + "/");
  EXPECT_EQ(PathAfterFailure(PdfMergeTask(std::list<PdfDoc>{Missing(), Missing()})), beside);

  PdfSplitTask parts(Doc("doc.pdf"));
  parts.SetFixedSplitInterval(3);
  EXPECT_EQ(PathAfterFailure(parts), beside);
  PdfSplitTask ranges(Doc("doc.pdf"));
  ranges.SetSplitMode(PdfSplitMode::Ranges);
  ranges.AddSplitRange(PdfPageRange(3, 3));
  EXPECT_EQ(PathAfterFailure(ranges), beside);

  PdfSetMetaDataTask metadata(Missing());
  metadata.SetMetaParam(PdfMetadataParam::Author, "Ada");
  EXPECT_EQ(PathAfterFailure(metadata), beside);

  PdfPageNumberTask number(Doc("doc.pdf"));
  number.SetFontSize(0);
  EXPECT_EQ(PathAfterFailure(number), beside);
  PdfStampImageTask image(Doc("doc.pdf"));
  image.SetInputImage(Path("not.pdf"));
  EXPECT_EQ(PathAfterFailure(image), beside);
  EXPECT_EQ(PathAfterFailure(PdfTransformTask(
                Doc("not.pdf"), {PdfTransformation(PdfTransformType::AddPageNumber)})),
            beside);

  EXPECT_EQ(PathAfterFailure(Pdf2PdfATask(Doc("not.pdf"))), beside);
  EXPECT_EQ(PathAfterFailure(PdfRepairTask(Missing())), beside);
  EXPECT_EQ(PathAfterFailure(Pdf2OfficeTask(Doc("not.pdf"))), beside);
}

TEST_F(OutputPathTest, FilledInHoldsForLaterRuns) {
  directory_.MakeDir("first");
  directory_.MakeDir("second");
  MakePdf("first/a.pdf", 2);
  MakePdf("second/b.pdf", 2);
  PdfSetMetaDataTask metadata(Doc("first/a.pdf"));
  metadata.SetMetaParam(PdfMetadataParam::Author, "Ada");
  metadata.Execute();
  metadata.SetInputDoc(Doc("second/b.pdf"));
  metadata.SetOutName("later.pdf");
  metadata.Execute();
  PdfStampTextTask stamp(Doc("first/a.pdf"));
  stamp.SetInputText("Draft");
  stamp.Execute();
  stamp.SetPdfDocs({Doc("second/b.pdf")});
  stamp.SetOutName("stamped.pdf");
  stamp.Execute();
  PdfSplitTask split(Doc("first/a.pdf"));
  split.Execute();
  split.SetPdfDocs({Doc("second/b.pdf")});
  split.Execute();
  PdfMergeTask merge(std::list<PdfDoc>{Doc("first/a.pdf"), Doc("second/b.pdf")});
  merge.Execute();
  merge.SetPdfDocs({Doc("second/b.pdf"), Doc("first/a.pdf")});
  merge.SetOutDocName("merged.pdf");
  merge.Execute();
  EXPECT_THAT(directory_.Names("first"),
              ElementsAre("a-01.pdf", "a-02.pdf", "a.pdf", "b-01.pdf", "b-02.pdf",
                          "document_after_text_stamp.pdf", "document_with_meta_params_set.pdf",
                          "later.pdf", "merged.pdf", "merged_doc.pdf", "stamped.pdf"));
  EXPECT_THAT(directory_.Names("second"), ElementsAre("b.pdf"));
}

TEST_F(OutputPathTest, IsNotFilledInWhenACheckFailsBefore) {
  const auto of_two = [this](auto task) {
    task.AddPdfDoc(Doc("doc.pdf"));
    return task;
  };
  EXPECT_EQ(PathAfterFailure(PdfMergeTask(Doc("doc.pdf"))), "");
  EXPECT_EQ(PathAfterFailure(of_two(PdfSplitTask(Doc("doc.pdf")))), "");
  PdfSplitTask split(Doc("doc.pdf"));
  split.SetSplitMode(PdfSplitMode::Ranges);
  EXPECT_EQ(PathAfterFailure(split), "");
  split.SetSplitMode(static_cast<PdfSplitMode>(2));
  EXPECT_EQ(PathAfterFailure(split), "");

  EXPECT_EQ(PathAfterFailure(of_two(PdfSetMetaDataTask(Doc("doc.pdf")))), "");
  EXPECT_EQ(PathAfterFailure(PdfSetMetaDataTask(Doc("doc.pdf"))), "");

  EXPECT_EQ(PathAfterFailure(of_two(PdfPageNumberTask(Doc("doc.pdf")))), "");
  EXPECT_EQ(PathAfterFailure(PdfStampTextTask(Doc("doc.pdf"))), "");
  PdfStampImageTask image(Doc("doc.pdf"));
  EXPECT_EQ(PathAfterFailure(image), "");
  image.SetInputImage(Path("missing.png"));
  EXPECT_EQ(PathAfterFailure(image), "");
  EXPECT_EQ(PathAfterFailure(PdfTransformTask(Doc("doc.pdf"))), "");

  EXPECT_EQ(PathAfterFailure(of_two(Pdf2PdfATask(Doc("doc.pdf")))), "");
  EXPECT_EQ(PathAfterFailure(of_two(PdfRepairTask(Doc("doc.pdf")))), "");
  EXPECT_EQ(PathAfterFailure(of_two(Pdf2OfficeTask(Doc("doc.pdf")))), "");
}

// Compressing, drawing and extracting ask for the directory when they have something to write.
TEST_F(OutputPathTest, IsNotFilledInBeforeTheDocumentIsLookedAt) {
  EXPECT_EQ(PathAfterFailure(PdfCompressTask(Doc("not.pdf"))), "");
  Pdf2ImgTask images(Doc("doc.pdf"));
  images.SetOutImgSize(0, 10);
  EXPECT_EQ(PathAfterFailure(images), "");
  images.SetMode(Pdf2ImgExtractImages);  // there are none
  EXPECT_EQ(PathAfterFailure(images), "");
}

TEST_F(OutputPathTest, IsTheCurrentDirectoryForTasksThatFillInNone) {
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  EXPECT_THAT(WrittenToTheCurrentDirectory(PdfRotateTask(Doc("doc.pdf"))),
              ElementsAre("rotated_file.pdf"));
  PdfRemovePagesTask remove(Doc("doc.pdf"));
  remove.AddRemovedPage(1);
  EXPECT_THAT(WrittenToTheCurrentDirectory(remove), ElementsAre("truncated.pdf"));
  EXPECT_THAT(WrittenToTheCurrentDirectory(PdfProtectTask(Doc("doc.pdf"), "pw")),
              ElementsAre("locked_doc.pdf"));
  EXPECT_THAT(WrittenToTheCurrentDirectory(PdfUnlockTask(Doc("locked.pdf", "pw"), "pw")),
              ElementsAre("unlocked_locked.pdf"));
}

}  // namespace
}  // namespace TarnixTools
