// Tasks check their options before they touch a file, and work on copies of their documents: what
// becomes of a run leaves no trace in the documents themselves.
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfProtectTask.h"
#include "PdfRemovePagesTask.h"
#include "PdfRotateTask.h"
#include "PdfSetMetaDataTask.h"
#include "PdfSplitTask.h"
#include "PdfStampImageTask.h"
#include "PdfStampTextTask.h"
#include "PdfTransformTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using testing::Failure;
using testing::FailureOf;

class InputCopiesTest : public testing::DocumentTest {
 protected:
  InputCopiesTest() {
    MakePdf("doc.pdf", 2);
    Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
    testing::WriteBytes(Path("image.png"), testing::PngOf(20, 10, {0, 0, 255}));
  }

  PdfDoc Missing() const { return {Path("missing.pdf"), "", false}; }

  template <typename Task>
  static Failure FailureToRun(Task task) {
    return FailureOf([&] { task.Execute(); });
  }

  // Runs the task with a wrong password of its document, and then with the right one.
  template <typename Task>
  void ExpectGoesOn(Task task) {
    task.SetOutputPath(directory_.MakeDir("out"));
    task.GetPdfDocs().front().SetPassword("wrong");
    EXPECT_EQ(
        FailureOf([&] { task.Execute(); }),
        Failure(PdfExceptionCode::PasswordError,
                "Invalid password for PDF [" + testing::Backslashes(Path("locked.pdf")) + "]", 17));
    EXPECT_EQ(task.GetPdfDocs().front().GetPassword(), "wrong");
    task.GetPdfDocs().front().SetPassword("pw");
    for (int run = 0; run < 2; ++run) {
      EXPECT_EQ(FailureOf([&] { task.Execute(); }), Failure());
      EXPECT_EQ(task.GetPdfDocsNum(), 1);
      EXPECT_EQ(task.GetPdfDocs().front().GetPassword(), "pw");
      EXPECT_TRUE(task.GetPdfDocs().front().GetReport().GetEntries().empty());
    }
  }
};

TEST_F(InputCopiesTest, LeaveADocumentAsItWasAfterAFailure) {
  const PdfDoc locked = Doc("locked.pdf", "pw");
  ExpectGoesOn(PdfSplitTask(locked));
  PdfSplitTask ranges(locked);
  ranges.SetSplitMode(PdfSplitMode::Ranges);
  ranges.AddSplitRange(PdfPageRange(1, 2));
  ExpectGoesOn(ranges);
  ExpectGoesOn(PdfRotateTask(locked));
  PdfRemovePagesTask remove(locked);
  remove.AddRemovedPage(1);
  ExpectGoesOn(remove);
  PdfSetMetaDataTask metadata(locked);
  metadata.SetMetaParam(PdfMetadataParam::Author, "Ada");
  ExpectGoesOn(metadata);
  ExpectGoesOn(PdfProtectTask(locked, "new"));
  ExpectGoesOn(PdfUnlockTask(locked, "pw"));
  ExpectGoesOn(PdfPageNumberTask(locked));
  PdfStampTextTask text(locked);
  text.SetInputText("Draft");
  ExpectGoesOn(text);
  PdfStampImageTask image(locked);
  image.SetInputImage(Path("image.png"));
  ExpectGoesOn(image);
  ExpectGoesOn(PdfTransformTask(locked, {PdfTransformation(PdfTransformType::AddPageNumber)}));
}

TEST_F(InputCopiesTest, AreNotOpenedBeforeTheOptionsAreChecked) {
  using Code = PdfExceptionCode;
  PdfSplitTask split(Missing());
  split.SetSplitMode(PdfSplitMode::Ranges);
  EXPECT_EQ(FailureToRun(split),
            Failure(Code::InvalidParameter, "None range defined to split the document"));
  split.SetSplitMode(static_cast<PdfSplitMode>(-1));
  EXPECT_EQ(FailureToRun(split), Failure(Code::InvalidParameter, "Invalid PDF split mode [-1]"));
  PdfRotateTask rotate(Missing());
  rotate.SetRotationAngle(static_cast<PdfRotationAngle>(91));
  EXPECT_EQ(FailureToRun(rotate),
            Failure(Code::InvalidParameter, "Invalid rotation angle value configured [91]"));
  EXPECT_EQ(
      FailureToRun(PdfRemovePagesTask(Missing())),
      Failure(Code::InvalidParameter, "None page configured to be removed at input document"));
  EXPECT_EQ(FailureToRun(PdfProtectTask(Missing())),
            Failure(Code::PasswordError, "No password provided to protect PDF doc"));
  EXPECT_EQ(FailureToRun(PdfTransformTask(Missing())),
            Failure(Code::InvalidParameter,
                    "Unexpected PDF transformations number [0], expected at least one"));
  EXPECT_EQ(FailureToRun(PdfMergeTask(Missing())).code, Code::InvalidParameter);
  PdfUnlockTask unlock(Missing(), "");
  unlock.AddPdfDoc(Missing());
  EXPECT_EQ(FailureToRun(unlock),
            Failure(Code::InvalidParameter, "Invalid number of PDF docs [2] (1 expected)"));
}

TEST_F(InputCopiesTest, MayBeGoneWhenTheOptionsOfAStampAreChecked) {
  PdfStampTextTask text(Doc("doc.pdf"));
  PdfStampImageTask image(Doc("doc.pdf"));
  PdfDoc document = Doc("doc.pdf");
  PdfDoc::Delete(document);
  EXPECT_EQ(FailureToRun(text).message, "Missing input text at task");
  EXPECT_EQ(FailureToRun(image).message, "Missing input image path at task");
  image.SetInputImage(Path("no.png"));
  EXPECT_EQ(FailureToRun(image).message, "Image file not found: " + Path("no.png"));
  text.SetInputText("Draft");
  EXPECT_EQ(FailureToRun(text).message,
            "Unable to open file " + testing::Backslashes(Path("doc.pdf")));
}

}  // namespace
}  // namespace TarnixTools
