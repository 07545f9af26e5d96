#include "PdfMergeTask.h"
#include "support/DocumentTest.h"
#include "support/QpdfDocument.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class PdfMergeTaskTest : public testing::DocumentTest {
 protected:
  // Two inputs, of two pages and of one.
  std::list<PdfDoc> Inputs() const {
    return {PdfDoc(MakePdf("a.pdf", 2, "Alpha"), "", true),
            PdfDoc(MakePdf("b.pdf", 1, "Beta"), "", true)};
  }
};

TEST_F(PdfMergeTaskTest, HasDefaults) {
  PdfMergeTask task;
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  EXPECT_EQ(task.GetOutDocName(), "merged_doc.pdf");
  EXPECT_EQ(task.GetMergedDocPath(), "");
  EXPECT_EQ(PdfMergeTask(PdfDoc("a.pdf", "", false)).GetPdfDocsNum(), 1);
  EXPECT_EQ(PdfMergeTask(Inputs()).GetPdfDocsNum(), 2);
}

TEST_F(PdfMergeTaskTest, IgnoresAnEmptyName) {
  PdfMergeTask task;
  task.SetOutDocName("");
  EXPECT_EQ(task.GetOutDocName(), "merged_doc.pdf");
  task.SetOutDocName("all.pdf");
  task.SetOutDocName("");
  EXPECT_EQ(task.GetOutDocName(), "all.pdf");
}

TEST_F(PdfMergeTaskTest, NeedsTwoDocuments) {
  PdfMergeTask none;
  EXPECT_EQ(FailureOf([&] { none.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "At least 2 PDF docs required to execute merge (defined only [0])"));
  PdfMergeTask one(PdfDoc("a.pdf", "", false));
  EXPECT_EQ(FailureOf([&] { one.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "At least 2 PDF docs required to execute merge (defined only [1])"));
}

TEST_F(PdfMergeTaskTest, WritesBesideTheFirstDocument) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfMergeTask task(Inputs());
  task.Execute();
  EXPECT_EQ(task.GetOutputPath(), Backslashes(directory_.Path() + "/"));
  EXPECT_EQ(task.GetMergedDocPath(), Backslashes(Path("merged_doc.pdf")));
  EXPECT_THAT(Texts("merged_doc.pdf"), ElementsAre("Alpha 1", "Alpha 2", "Beta 1"));
}

TEST_F(PdfMergeTaskTest, WritesToTheDirectoryAndNameThatWereSet) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfMergeTask task(Inputs());
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetOutDocName("all.pdf");
  task.Execute();
  EXPECT_EQ(task.GetMergedDocPath(), Backslashes(Path("out/all.pdf")));
  EXPECT_THAT(directory_.Names("out"), ElementsAre("all.pdf"));
  EXPECT_THAT(Texts("out/all.pdf"), ElementsAre("Alpha 1", "Alpha 2", "Beta 1"));
}

TEST_F(PdfMergeTaskTest, WritesRangesWhereItIsToldTo) {
  TARNIX_NEED_PROGRAM("pdftotext");
  std::list<PdfDoc> inputs = Inputs();
  inputs.front().AddRange(PdfPageRange(2, 2));
  inputs.front().AddRange(PdfPageRange(1, 2));
  PdfMergeTask task(inputs);
  task.Execute();
  EXPECT_THAT(Texts("merged_doc.pdf"), ElementsAre("Alpha 1", "Alpha 2", "Beta 1"));
  task.SetUseRanges(true);
  task.Execute();
  EXPECT_THAT(Texts("merged_doc.pdf"), ElementsAre("Alpha 2", "Alpha 1", "Alpha 2", "Beta 1"));
}

TEST_F(PdfMergeTaskTest, AddsAnOutlineItemForEachDocument) {
  TARNIX_NEED_PROGRAM("qpdf");
  testing::TestPdf()
      .Pages(2)
      .Object("outlines", "<</First {{one}} /Last {{two}}>>")
      .Object("one", "<</Title (One) /Dest [{{page 1}} /Fit] /Next {{two}}>>")
      .Object("two", "<</Title (Two) /Dest [{{page 2}} /Fit] /Prev {{one}}>>")
      .CatalogEntry("/Outlines {{outlines}}")
      .Write(Path("outlined.pdf"));
  std::list<PdfDoc> inputs = Inputs();
  inputs.emplace_back(Path("outlined.pdf"), "", true);
  PdfMergeTask task(inputs);
  task.SetAddOutlineItems(true);
  task.Execute();
  const testing::QpdfDocument merged(Path("merged_doc.pdf"));
  EXPECT_EQ(testing::QpdfComplaints(Path("merged_doc.pdf")), "");
  const auto root = merged.Follow(merged.Catalog()["/Outlines"]);
  EXPECT_EQ(root["/Count"], 3);
  const auto a = merged.Follow(root["/First"]);
  const auto b = merged.Follow(a["/Next"]);
  const auto outlined = merged.Follow(root["/Last"]);
  EXPECT_EQ(a["/Title"], "u:a");
  EXPECT_EQ(a["/Dest"][0], merged.Page(1));
  EXPECT_FALSE(a.contains("/First"));
  EXPECT_EQ(b["/Title"], "u:b");
  EXPECT_EQ(b["/Dest"][0], merged.Page(3));
  EXPECT_EQ(merged.Follow(b["/Next"]), outlined);
  EXPECT_EQ(outlined["/Title"], "u:outlined");
  EXPECT_EQ(outlined["/Count"], -2);
  const auto one = merged.Follow(outlined["/First"]);
  EXPECT_EQ(one["/Title"], "u:One");
  EXPECT_EQ(merged.Follow(one["/Parent"]), outlined);
  EXPECT_EQ(one["/Next"], outlined["/Last"]);
}

TEST_F(PdfMergeTaskTest, TakesRangesOfOneDocument) {
  PdfDoc document(MakePdf("a.pdf", 3), "", true);
  document.AddRange(PdfPageRange(2, 3));
  PdfMergeTask task(document);
  task.SetUseRanges(true);
  task.Execute();
  EXPECT_EQ(Doc("merged_doc.pdf").GetPagesNum(), 2);
  task.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::InvalidParameter);
}

TEST_F(PdfMergeTaskTest, RefusesARangeThatTheDocumentLacks) {
  std::list<PdfDoc> inputs = Inputs();
  inputs.back().AddRange(PdfPageRange(1, 2));
  PdfMergeTask task(inputs);
  task.SetUseRanges(true);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid page [2] for PDF [b] ([1] pages available)"));
  EXPECT_THAT(directory_.Names(""), ElementsAre("a.pdf", "b.pdf"));
}

TEST_F(PdfMergeTaskTest, ChecksTheDirectoryBeforeAnyDocumentIsOpened) {
  const PdfDoc missing(Path("missing.pdf"), "", false);
  PdfMergeTask task(std::list<PdfDoc>{missing, missing});
  task.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::FileNotFound,
              "Output directory path [" + Backslashes(Path("nowhere/")) + "] does not exist"));
  EXPECT_EQ(task.GetMergedDocPath(), "");
}

TEST_F(PdfMergeTaskTest, CountsTheDocumentsBeforeItChecksTheDirectory) {
  PdfMergeTask task(PdfDoc(Path("missing.pdf"), "", false));
  task.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "At least 2 PDF docs required to execute merge (defined only [1])"));
}

TEST_F(PdfMergeTaskTest, KeepsTheLastMergedPathWhenACheckFails) {
  PdfMergeTask task(Inputs());
  task.Execute();
  task.SetOutDocName("other.pdf");
  task.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::FileNotFound);
  EXPECT_EQ(task.GetMergedDocPath(), Backslashes(Path("merged_doc.pdf")));
  task.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::InvalidParameter);
  EXPECT_EQ(task.GetMergedDocPath(), Backslashes(Path("merged_doc.pdf")));
}

TEST_F(PdfMergeTaskTest, NamesWhatWasToBeWrittenAfterAFailure) {
  const PdfDoc missing(Path("missing.pdf"), "", false);
  PdfMergeTask task(std::list<PdfDoc>{missing, missing});
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::FileNotFound);
  EXPECT_EQ(task.GetMergedDocPath(), Backslashes(Path("merged_doc.pdf")));
  EXPECT_EQ(directory_.Names().size(), 0U);
}

TEST_F(PdfMergeTaskTest, PutsThePasswordOnTheOutput) {
  PdfMergeTask task(Inputs());
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("merged_doc.pdf")));
  EXPECT_EQ(Doc("merged_doc.pdf", "pw").GetPagesNum(), 3);
}

TEST_F(PdfMergeTaskTest, RunsAgain) {
  PdfMergeTask task(Inputs());
  task.Execute();
  task.AddPdfDoc(Doc("b.pdf"));
  task.Execute();
  EXPECT_EQ(Doc("merged_doc.pdf").GetPagesNum(), 4);
  EXPECT_EQ(task.GetPdfDocsNum(), 3);
}

TEST_F(PdfMergeTaskTest, IsCopiedAndMovedWithAllItHolds) {
  PdfMergeTask task(Inputs());
  task.SetOutDocName("all.pdf");
  task.Execute();
  PdfMergeTask copy(task);
  PdfMergeTask moved(std::move(task));
  for (PdfMergeTask* same : {&copy, &moved}) {
    EXPECT_EQ(same->GetPdfDocsNum(), 2);
    EXPECT_EQ(same->GetOutDocName(), "all.pdf");
    EXPECT_EQ(same->GetMergedDocPath(), Backslashes(Path("all.pdf")));
  }
}

}  // namespace
}  // namespace TarnixTools
