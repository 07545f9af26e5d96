#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::QpdfComplaints;

class PdfUnlockTaskTest : public testing::DocumentTest {
 protected:
  PdfUnlockTaskTest() {
    MakePdf("plain.pdf", 2, "Secret");
    PdfDoc(Path("plain.pdf"), "", true).Lock("pw", Path("report.pdf"));
    directory_.MakeDir("out");
  }

  PdfUnlockTask Task(const PdfDoc& document, const std::string& password) const {
    PdfUnlockTask task(document, password);
    task.SetOutputPath(Path("out"));
    return task;
  }

  Failure WrongPassword() const {
    return {PdfExceptionCode::PasswordError,
            "Invalid password for PDF [" + Backslashes(Path("report.pdf")) + "]", 17};
  }
};

TEST_F(PdfUnlockTaskTest, HasDefaults) {
  PdfUnlockTask task(Doc("report.pdf"));
  EXPECT_EQ(task.GetPdfDocsNum(), 1);
  EXPECT_EQ(task.GetOutPrefix(), "unlocked");
  EXPECT_EQ(task.GetOutPdfName(), "");
  EXPECT_EQ(task.GetPassword(), "");
  EXPECT_EQ(PdfUnlockTask(Doc("report.pdf"), "pw").GetPassword(), "pw");
}

TEST_F(PdfUnlockTaskTest, WritesACopyWithoutPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  TARNIX_NEED_PROGRAM("pdftotext");
  Task(Doc("report.pdf", "pw"), "pw").Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("unlocked_report.pdf"));
  EXPECT_FALSE(Doc("out/unlocked_report.pdf").IsEncrypted());
  EXPECT_EQ(QpdfComplaints(Path("out/unlocked_report.pdf")), "");
  EXPECT_EQ(Texts("out/unlocked_report.pdf"), Labels(1, 2, "Secret"));
}

TEST_F(PdfUnlockTaskTest, CopiesADocumentWithoutPassword) {
  Task(Doc("plain.pdf"), "").Execute();
  Task(Doc("plain.pdf"), "needless").Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("unlocked_plain.pdf"));
  EXPECT_EQ(Doc("out/unlocked_plain.pdf").GetPagesNum(), 2);
}

TEST_F(PdfUnlockTaskTest, TakesTheEncryptionOffThatNeedsNoPassword) {
  PdfDoc(Path("plain.pdf"), "", true).Lock("", Path("open.pdf"));
  Task(Doc("open.pdf"), "").Execute();
  EXPECT_FALSE(Doc("out/unlocked_open.pdf").IsEncrypted());
}

TEST_F(PdfUnlockTaskTest, NeedsAPasswordForAProtectedDocument) {
  const Failure expected(PdfExceptionCode::PasswordError,
                         "PDF password required to unlock PDF doc");
  EXPECT_EQ(FailureOf([&] { Task(Doc("report.pdf"), "").Execute(); }), expected);
  EXPECT_EQ(FailureOf([&] { Task(Doc("report.pdf", "pw"), "").Execute(); }), expected);
  PdfUnlockTask task = Task(Doc("report.pdf", "pw"), "");
  task.SetOutPassword("pw");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected);
}

TEST_F(PdfUnlockTaskTest, OpensTheDocumentWithItsOwnPassword) {
  EXPECT_EQ(FailureOf([&] { Task(Doc("report.pdf"), "pw").Execute(); }), WrongPassword());
  EXPECT_EQ(FailureOf([&] { Task(Doc("report.pdf", "wrong"), "pw").Execute(); }), WrongPassword());
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
  Task(Doc("report.pdf", "pw"), "anything").Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("unlocked_report.pdf"));
}

TEST_F(PdfUnlockTaskTest, DoesNotUseTheOutputPassword) {
  PdfUnlockTask task = Task(Doc("report.pdf", "pw"), "pw");
  task.SetOutPassword("other");
  task.Execute();
  EXPECT_FALSE(Doc("out/unlocked_report.pdf").IsEncrypted());
  EXPECT_EQ(Doc("out/unlocked_report.pdf").GetPagesNum(), 2);
  EXPECT_EQ(task.GetOutPassword(), "other");
}

TEST_F(PdfUnlockTaskTest, NeedsExactlyOneDocument) {
  PdfUnlockTask task = Task(Doc("report.pdf"), "");
  task.AddPdfDoc(Doc("plain.pdf"));
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::InvalidParameter, "Invalid number of PDF docs [2] (1 expected)"));
  task.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).message,
            "Invalid number of PDF docs [0] (1 expected)");
}

TEST_F(PdfUnlockTaskTest, NamesTheOutput) {
  PdfUnlockTask task = Task(Doc("report.pdf", "pw"), "pw");
  task.SetOutPrefix("open");
  task.SetOutPrefix("");
  task.Execute();
  task.SetOutPdfName("x.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("open_report.pdf", "x.pdf"));
}

TEST_F(PdfUnlockTaskTest, ReportsAMissingFile) {
  PdfUnlockTask task = Task(PdfDoc(Path("missing.pdf"), "", false), "pw");
  // With a password, too, it asks whether the file has one.
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::FileNotFound, "File not found or invalid content: [" +
                                                        Backslashes(Path("missing.pdf")) + "]"));
}

TEST_F(PdfUnlockTaskTest, IsCopiedAndMovedWithAllItHolds) {
  PdfUnlockTask task = Task(Doc("report.pdf", "pw"), "pw");
  task.SetOutPrefix("p");
  task.SetOutPdfName("x.pdf");
  PdfUnlockTask copy(task);
  PdfUnlockTask moved(std::move(task));
  for (PdfUnlockTask* same : {&copy, &moved}) {
    EXPECT_EQ(same->GetPassword(), "pw");
    EXPECT_EQ(same->GetOutPrefix(), "p");
    EXPECT_EQ(same->GetOutPdfName(), "x.pdf");
    same->Execute();
  }
  EXPECT_THAT(directory_.Names("out"), ElementsAre("x.pdf"));
}

}  // namespace
}  // namespace TarnixTools
