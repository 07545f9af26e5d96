// The setting by which every job on one document keeps what that says of itself.
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRotateTask.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSplitTask.h"
#include "PdfStampTextTask.h"
#include "PdfTransformTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"
#include "support/QpdfDocument.h"

namespace TarnixTools {
namespace {

using testing::QpdfDocument;
using testing::TestPdf;

class KeepMetadataTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("qpdf");
    TestPdf().Pages(3).InfoEntry("/Title(A title)").Write(Path("doc.pdf"));
    directory_.MakeDir("out");
  }

  std::string TitleIn(const std::string& name, const std::string& password) const {
    const QpdfDocument document(Path("out/" + name), password);
    const auto info = document.Follow(document.Trailer().value("/Info", QpdfDocument::Json()));
    return info.is_object() ? info.value("/Title", "") : "";
  }

  // Runs the task with and without the setting.
  template <typename Task>
  void ExpectTitle(Task task, const std::string& output, const std::string& password = "") {
    EXPECT_FALSE(task.GetKeepMetadata());
    task.SetOutputPath(Path("out"));
    task.Execute();
    EXPECT_EQ(TitleIn(output, password), "") << output;
    task.SetKeepMetadata(true);
    Task copy(task);
    copy.Execute();
    EXPECT_EQ(TitleIn(output, password), "u:A title") << output;
  }
};

TEST_F(KeepMetadataTest, WorksInEveryJobOnOneDocument) {
  ExpectTitle(PdfRotateTask(Doc("doc.pdf")), "rotated_file.pdf");
  ExpectTitle(PdfSplitTask(Doc("doc.pdf")), "doc-03.pdf");
  ExpectTitle(PdfProtectTask(Doc("doc.pdf"), "pw"), "locked_doc.pdf", "pw");
  ExpectTitle(PdfUnlockTask(Doc("doc.pdf")), "unlocked_doc.pdf");
  PdfRemovePagesTask removal(Doc("doc.pdf"));
  removal.AddRemovedPage(2);
  ExpectTitle(removal, "truncated.pdf");
  PdfSetMetaDataTask metadata(Doc("doc.pdf"));
  metadata.SetMetaParam(PdfMetadataParam::Author, "Ada");
  ExpectTitle(metadata, metadata.GetOutName());
}

TEST_F(KeepMetadataTest, WorksInEveryDecoration) {
  PdfPageNumberTask numbers(Doc("doc.pdf"));
  ExpectTitle(numbers, numbers.GetOutName());
  PdfStampTextTask stamp(Doc("doc.pdf"));
  stamp.SetInputText("x");
  ExpectTitle(stamp, stamp.GetOutName());
  PdfTransformTask several(Doc("doc.pdf"), {PdfTransformation(PdfTransformType::AddPageNumber)});
  several.SetOutName("several.pdf");
  ExpectTitle(several, several.GetOutName());
}

TEST_F(KeepMetadataTest, IsMovedWithTheTask) {
  PdfRotateTask task(Doc("doc.pdf"));
  task.SetKeepMetadata(true);
  const PdfRotateTask moved(std::move(task));
  EXPECT_TRUE(moved.GetKeepMetadata());
}

TEST_F(KeepMetadataTest, IsTheDocumentsOwnWhereTheTaskHasNone) {
  PdfDoc document = Doc("doc.pdf");
  document.SetKeepMetadata(true);
  PdfRotateTask task(document);
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_EQ(TitleIn("rotated_file.pdf", ""), "u:A title");
}

}  // namespace
}  // namespace TarnixTools
