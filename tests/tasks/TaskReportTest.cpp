// What every job reports.
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
#include "PdfStampTextTask.h"
#include "PdfTransformTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::FailureOf;
using testing::TestPdf;

class TaskReportTest : public testing::DocumentTest {
 protected:
  // Three pages, each with a thumbnail, which no copy brings along.
  TaskReportTest() {
    TestPdf pdf;
    pdf.Object("thumb", "<</Width 1 /Height 1>>");
    for (int i = 0; i < 3; ++i) {
      pdf.Page("a").PageEntry("/Thumb {{thumb}}");
    }
    pdf.Write(Path("doc.pdf"));
    directory_.MakeDir("out");
  }

  static std::int64_t CountOf(const PdfReport& report, PdfReportKind kind,
                              PdfReportOutcome outcome) {
    std::int64_t count = 0;
    for (const PdfReportEntry& entry : report.GetEntries()) {
      count += entry.kind == kind && entry.outcome == outcome ? entry.count : 0;
    }
    return count;
  }

  static std::int64_t DroppedThumbs(const PdfReport& report) {
    return CountOf(report, PdfReportKind::Thumbnail, PdfReportOutcome::Dropped);
  }

  // Runs the task twice and expects the same report of each run.
  template <typename Task>
  void ExpectThumbs(Task task, std::int64_t count) {
    EXPECT_TRUE(task.GetReport().GetEntries().empty());
    task.SetOutputPath(Path("out"));
    for (int run = 0; run < 2; ++run) {
      task.Execute();
      EXPECT_EQ(DroppedThumbs(task.GetReport()), count);
    }
    const Task copy(task);
    EXPECT_EQ(DroppedThumbs(copy.GetReport()), count);
    task.ClearPdfDocs();
    EXPECT_NE(FailureOf([&] { task.Execute(); }), testing::Failure());
    EXPECT_TRUE(task.GetReport().GetEntries().empty());
  }
};

TEST_F(TaskReportTest, IsThatOfTheLastRun) {
  const PdfDoc document = Doc("doc.pdf");
  ExpectThumbs(PdfMergeTask(std::list<PdfDoc>{document, document}), 6);
  ExpectThumbs(PdfSplitTask(document), 3);
  ExpectThumbs(PdfRotateTask(document), 3);
  ExpectThumbs(PdfProtectTask(document, "pw"), 3);
  ExpectThumbs(PdfUnlockTask(document), 3);
  PdfSetMetaDataTask metadata(document);
  metadata.SetMetaParam(PdfMetadataParam::Author, "Ada");
  ExpectThumbs(metadata, 3);
  ExpectThumbs(PdfPageNumberTask(document), 3);
  PdfStampTextTask stamp(document);
  stamp.SetInputText("Draft");
  ExpectThumbs(stamp, 3);
  ExpectThumbs(PdfTransformTask(document, {PdfTransformation(PdfTransformType::AddPageNumber)}), 3);
  PdfSplitTask ranges(document);
  ranges.SetSplitMode(PdfSplitMode::Ranges);
  ranges.AddSplitRange(PdfPageRange(2, 3));
  ExpectThumbs(ranges, 2);
  ranges.SetMergeAfter(true);
  ExpectThumbs(ranges, 2);
}

TEST_F(TaskReportTest, OfRemovedPagesIsAboutTheOnesKept) {
  PdfRemovePagesTask task(Doc("doc.pdf"));
  task.SetOutputPath(Path("out"));
  task.AddRemovedPage(2);
  task.Execute();
  EXPECT_EQ(DroppedThumbs(task.GetReport()), 2);
}

TEST_F(TaskReportTest, OfADocumentIsThatOfItsLastOutput) {
  PdfDoc document = Doc("doc.pdf");
  EXPECT_TRUE(document.GetReport().GetEntries().empty());
  document.Lock("pw", Path("out/a.pdf"));
  EXPECT_EQ(DroppedThumbs(document.GetReport()), 3);
  document.GetPagesNum();
  EXPECT_EQ(DroppedThumbs(document.GetReport()), 3);
  EXPECT_NE(FailureOf([&] { document.Lock("pw", Path("no/a.pdf")); }), testing::Failure());
  EXPECT_TRUE(document.GetReport().GetEntries().empty());

  PdfDoc made(Path("out/b.pdf"), "", false);
  made.Create(false);
  made.Append(document);
  EXPECT_EQ(DroppedThumbs(made.GetReport()), 3);
}

TEST_F(TaskReportTest, OfAMergeIsSetOnceItIsDone) {
  PdfReport report;
  PdfDoc::Merge({Doc("doc.pdf")}, Path("out/a.pdf"), "", &report);
  EXPECT_EQ(DroppedThumbs(report), 3);
  EXPECT_NE(FailureOf([&] { PdfDoc::Merge({Doc("doc.pdf")}, Path("no/a.pdf"), "", &report); }),
            testing::Failure());
  EXPECT_TRUE(report.GetEntries().empty());
}

TEST_F(TaskReportTest, CountsTheDamageOfAnInputOnceForAllPieces) {
  const std::string bytes = TestPdf().Pages(4).Bytes();
  testing::WriteBytes(Path("cut.pdf"), bytes.substr(0, bytes.rfind("startxref")));
  PdfSplitTask task(Doc("cut.pdf"));
  task.SetOutputPath(Path("out"));
  task.Execute();
  std::int64_t count = 0;
  for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
    count += entry.reason == "start of the cross-reference not found" ? entry.count : 0;
  }
  EXPECT_EQ(count, 1);
  task.SetPdfDocs({Doc("doc.pdf")});
  task.Execute();
  EXPECT_EQ(CountOf(task.GetReport(), PdfReportKind::Damage, PdfReportOutcome::Kept), 0);
}

class ProtectionReportTest : public TaskReportTest {
 protected:
  ProtectionReportTest() {
    PdfProtectTask protect(Doc("doc.pdf"), "pw");
    protect.SetOutPdfName("locked.pdf");
    protect.SetOutputPath(directory_.Path());
    protect.Execute();
  }

  // How often it is told that the protection is gone.
  template <typename Task>
  std::int64_t Told(Task task, const std::string& out_password = "") const {
    task.SetOutputPath(Path("out"));
    task.SetOutPassword(out_password);
    task.Execute();
    return CountOf(task.GetReport(), PdfReportKind::Protection, PdfReportOutcome::Dropped);
  }

  PdfDoc Locked() const { return Doc("locked.pdf", "pw"); }
};

TEST_F(ProtectionReportTest, TellsOfProtectionThatTheOutputLacks) {
  EXPECT_EQ(Told(PdfRotateTask(Locked())), 1);
  EXPECT_EQ(Told(PdfCompressTask({Locked(), Locked()})), 2);
  EXPECT_EQ(Told(PdfRepairTask(Locked())), 1);
  EXPECT_EQ(Told(Pdf2PdfATask(Locked())), 1);
}

TEST_F(ProtectionReportTest, TellsNothingWhereTheOutputIsProtected) {
  EXPECT_EQ(Told(PdfRotateTask(Locked()), "new"), 0);
  EXPECT_EQ(Told(PdfCompressTask(Locked()), "new"), 0);
  EXPECT_EQ(Told(PdfRepairTask(Locked()), "new"), 0);
  EXPECT_EQ(Told(Pdf2PdfATask(Locked()), "new"), 0);
}

TEST_F(ProtectionReportTest, TellsNothingWhereTheInputIsNotProtected) {
  EXPECT_EQ(Told(PdfCompressTask(Doc("doc.pdf"))), 0);
  EXPECT_EQ(Told(PdfRepairTask(Doc("doc.pdf"))), 0);
  EXPECT_EQ(Told(Pdf2PdfATask(Doc("doc.pdf"))), 0);
}

TEST_F(ProtectionReportTest, TellsNothingWhereTheJobIsToTakeItOff) {
  EXPECT_EQ(Told(PdfUnlockTask(Locked(), "pw")), 0);
}

TEST_F(ProtectionReportTest, TellsWhatTheInputWasWhereTheOutputTakesItsPlace) {
  PdfRepairTask task(Locked(), "locked.pdf");
  task.SetOutputPath(directory_.Path());
  task.Execute();
  ASSERT_EQ(task.GetReport().GetEntries().size(), 1U);
  EXPECT_EQ(PdfReport::GetText(task.GetReport().GetEntries().front()),
            "protection dropped: the input is protected, the output is not");
  EXPECT_FALSE(Doc("locked.pdf").IsEncrypted());
}

}  // namespace
}  // namespace TarnixTools
