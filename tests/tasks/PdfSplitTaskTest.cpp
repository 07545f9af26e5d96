#include "PdfSplitTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class PdfSplitTaskTest : public testing::DocumentTest {
 protected:
  // A task on a document of five pages, which writes to out/.
  PdfSplitTask Task() const {
    PdfSplitTask task(PdfDoc(MakePdf("doc.pdf", 5), "", true));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }
};

TEST_F(PdfSplitTaskTest, HasDefaults) {
  PdfSplitTask task;
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  EXPECT_EQ(task.GetSplitMode(), PdfSplitMode::FixedInterval);
  EXPECT_EQ(static_cast<int>(task.GetSplitMode()), 1);
  EXPECT_FALSE(task.GetMergeAfter());
  EXPECT_EQ(task.GetFixedSplitInterval(), 1);
  EXPECT_EQ(task.GetOutPrefix(), "p");
}

TEST_F(PdfSplitTaskTest, IgnoresAnEmptyPrefix) {
  PdfSplitTask task;
  task.SetOutPrefix("");
  EXPECT_EQ(task.GetOutPrefix(), "p");
  task.SetOutPrefix("part");
  EXPECT_EQ(task.GetOutPrefix(), "part");
}

TEST_F(PdfSplitTaskTest, WritesOneFilePerPageByDefault) {
  Task().Execute();
  EXPECT_THAT(directory_.Names("out"),
              ElementsAre("doc-01.pdf", "doc-02.pdf", "doc-03.pdf", "doc-04.pdf", "doc-05.pdf"));
  EXPECT_EQ(Doc("out/doc-05.pdf").GetPagesNum(), 1);
}

TEST_F(PdfSplitTaskTest, WritesPiecesOfTheInterval) {
  PdfSplitTask task = Task();
  task.SetFixedSplitInterval(3);
  task.SetOutPrefix("no effect");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc-01.pdf", "doc-02.pdf"));
  EXPECT_EQ(Doc("out/doc-01.pdf").GetPagesNum(), 3);
  EXPECT_EQ(Doc("out/doc-02.pdf").GetPagesNum(), 2);
}

TEST_F(PdfSplitTaskTest, NamesPiecesByAPattern) {
  PdfSplitTask task = Task();
  task.SetFixedSplitInterval(3);
  task.SetNamePattern("{n} of {stem}.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("01 of doc.pdf", "02 of doc.pdf"));
  EXPECT_THAT(task.GetPieces(), ElementsAre(Backslashes(Path("out/01 of doc.pdf")),
                                            Backslashes(Path("out/02 of doc.pdf"))));
}

TEST_F(PdfSplitTaskTest, TellsThePiecesThatWereWrittenBeforeAFailure) {
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.AddSplitRange(PdfPageRange(1, 2));
  task.AddSplitRange(PdfPageRange(5, 6));
  EXPECT_NE(FailureOf([&] { task.Execute(); }), Failure());
  EXPECT_THAT(task.GetPieces(), ElementsAre(Backslashes(Path("out/doc-1-2.pdf"))));
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc-1-2.pdf"));
  task.ClearPdfDocs();
  EXPECT_NE(FailureOf([&] { task.Execute(); }), Failure());
  EXPECT_THAT(task.GetPieces(), ElementsAre());
}

TEST_F(PdfSplitTaskTest, NamesTheOneFileOfAllRanges) {
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.SetMergeAfter(true);
  task.SetMergedName("parts.pdf");
  task.AddSplitRange(PdfPageRange(4, 5));
  task.AddSplitRange(PdfPageRange(1, 1));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("parts.pdf"));
  EXPECT_THAT(task.GetPieces(), ElementsAre(Backslashes(Path("out/parts.pdf"))));
}

TEST_F(PdfSplitTaskTest, LeavesTheIntervalToTheDocument) {
  PdfSplitTask task = Task();
  task.SetFixedSplitInterval(6);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid split size [6] for PDF [doc] ([5] pages available)"));
}

TEST_F(PdfSplitTaskTest, WritesTheRanges) {
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.AddSplitRange(PdfPageRange(4, 4));
  task.AddSplitRange(PdfPageRange(2, 1));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc-1-2.pdf", "doc-4.pdf"));
}

TEST_F(PdfSplitTaskTest, MergesTheRanges) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.SetMergeAfter(true);
  task.AddSplitRange(PdfPageRange(4, 4));
  task.AddSplitRange(PdfPageRange(1, 2));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("doc_split-merge_.pdf"));
  EXPECT_THAT(Texts("out/doc_split-merge_.pdf"), ElementsAre("Page 4", "Page 1", "Page 2"));
}

TEST_F(PdfSplitTaskTest, NeedsARangeInRangeMode) {
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.AddSplitRange(PdfPageRange(1, 1));
  task.ClearSplitRanges();
  for (const bool merge_after : {false, true}) {
    task.SetMergeAfter(merge_after);
    EXPECT_EQ(
        FailureOf([&] { task.Execute(); }),
        Failure(PdfExceptionCode::InvalidParameter, "None range defined to split the document"));
  }
}

TEST_F(PdfSplitTaskTest, RejectsAnUnknownMode) {
  PdfSplitTask task = Task();
  task.SetSplitMode(static_cast<PdfSplitMode>(2));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid PDF split mode [2]"));
}

TEST_F(PdfSplitTaskTest, NeedsExactlyOneDocumentBeforeTheModeIsLookedAt) {
  PdfSplitTask task = Task();
  task.AddPdfDoc(Doc("doc.pdf"));
  task.SetSplitMode(static_cast<PdfSplitMode>(2));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [2], expected single doc"));
  EXPECT_EQ(FailureOf([] { PdfSplitTask().Execute(); }).message,
            "Unexpected PDF docs number [0], expected single doc");
}

TEST_F(PdfSplitTaskTest, WritesBesideTheDocumentWhenNoDirectoryIsSet) {
  PdfSplitTask task(PdfDoc(MakePdf("doc.pdf", 2), "", true));
  task.Execute();
  EXPECT_EQ(task.GetOutputPath(), Backslashes(directory_.Path() + "/"));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc-01.pdf", "doc-02.pdf", "doc.pdf"));
}

TEST_F(PdfSplitTaskTest, LeavesAMissingDirectoryToTheSave) {
  PdfSplitTask task(PdfDoc(MakePdf("doc.pdf", 2), "", true));
  task.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::FileNotFound, "Unable to create new file [" +
                                                        Backslashes(Path("nowhere/doc-01.pdf")) +
                                                        "] (No such file or directory)"));
}

TEST_F(PdfSplitTaskTest, PutsThePasswordOnEveryPiece) {
  PdfSplitTask task = Task();
  task.SetFixedSplitInterval(4);
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/doc-01.pdf")));
  EXPECT_EQ(Doc("out/doc-02.pdf", "pw").GetPagesNum(), 1);
}

TEST_F(PdfSplitTaskTest, IsCopiedAndMovedWithAllItHolds) {
  PdfSplitTask task = Task();
  task.SetSplitMode(PdfSplitMode::Ranges);
  task.SetMergeAfter(true);
  task.SetFixedSplitInterval(7);
  task.SetOutPrefix("x");
  task.AddSplitRange(PdfPageRange(1, 1));
  PdfSplitTask copy(task);
  PdfSplitTask moved(std::move(task));
  for (PdfSplitTask* same : {&copy, &moved}) {
    EXPECT_EQ(same->GetSplitMode(), PdfSplitMode::Ranges);
    EXPECT_TRUE(same->GetMergeAfter());
    EXPECT_EQ(same->GetFixedSplitInterval(), 7);
    EXPECT_EQ(same->GetOutPrefix(), "x");
    same->Execute();
    EXPECT_THAT(directory_.Names("out"), ElementsAre("doc_split-merge_.pdf"));
  }
}

}  // namespace
}  // namespace TarnixTools
