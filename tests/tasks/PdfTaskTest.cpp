#include <gtest/gtest.h>

#include "PdfTask.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

PdfDoc Document(const std::string& path) {
  return {path, "", false};
}

const std::list<PdfDoc>& ThreeDocuments() {
  static const std::list<PdfDoc> documents = {Document("a.pdf"), Document("b.pdf"),
                                              Document("c.pdf")};
  return documents;
}

std::string Paths(PdfTask& task) {
  std::string paths;
  for (const PdfDoc& document : task.GetPdfDocs()) {
    paths += document.GetPath() + " ";
  }
  return paths;
}

TEST(PdfTask, IsEmptyByDefault) {
  PdfTask task;
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  EXPECT_EQ(task.GetOutputPath(), "");
  EXPECT_EQ(task.GetOutPassword(), "");
}

TEST(PdfTask, HoldsTheDocumentsItIsMadeWith) {
  PdfTask one(Document("a.pdf"));
  EXPECT_EQ(Paths(one), "a.pdf ");
  EXPECT_EQ(one.GetOutputPath(), "");
  PdfTask one_with_path(Document("a.pdf"), "C:/out");
  EXPECT_EQ(Paths(one_with_path), "a.pdf ");
  EXPECT_EQ(one_with_path.GetOutputPath(), "C:\\out\\");
  PdfTask three(ThreeDocuments());
  EXPECT_EQ(three.GetPdfDocsNum(), 3);
  EXPECT_EQ(Paths(three), "a.pdf b.pdf c.pdf ");
  PdfTask three_with_path(ThreeDocuments(), "");
  EXPECT_EQ(Paths(three_with_path), "a.pdf b.pdf c.pdf ");
  EXPECT_EQ(three_with_path.GetOutputPath(), "\\");
}

TEST(PdfTask, NormalisesItsOutputPath) {
  PdfTask task;
  task.SetOutputPath("C:/out/dir");
  EXPECT_EQ(task.GetOutputPath(), "C:\\out\\dir\\");
  task.SetOutputPath("C:\\out\\");
  EXPECT_EQ(task.GetOutputPath(), "C:\\out\\");
  task.SetOutputPath("/tmp/");
  EXPECT_EQ(task.GetOutputPath(), "\\tmp\\");
  task.SetOutputPath("");
  EXPECT_EQ(task.GetOutputPath(), "\\");
}

TEST(PdfTask, AddsDocumentsAtTheEndAlsoTwice) {
  PdfTask task(Document("a.pdf"));
  const PdfDoc document = Document("b.pdf");
  task.AddPdfDoc(document);
  task.AddPdfDoc(document);
  EXPECT_EQ(Paths(task), "a.pdf b.pdf b.pdf ");
}

TEST(PdfTask, OwnsCopies) {
  PdfDoc document = Document("a.pdf");
  PdfTask task;
  task.AddPdfDoc(document);
  document.SetPath("changed.pdf");
  EXPECT_EQ(Paths(task), "a.pdf ");
}

TEST(PdfTask, ListMayBeChangedByTheHost) {
  PdfTask task(ThreeDocuments());
  task.GetPdfDocs().pop_front();
  EXPECT_EQ(Paths(task), "b.pdf c.pdf ");
}

TEST(PdfTask, ListIsReplacedAndCleared) {
  PdfTask task(Document("z.pdf"));
  task.SetPdfDocs(ThreeDocuments());
  EXPECT_EQ(Paths(task), "a.pdf b.pdf c.pdf ");
  task.SetPdfDocs(task.GetPdfDocs());
  EXPECT_EQ(Paths(task), "a.pdf b.pdf c.pdf ");
  task.ClearPdfDocs();
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
}

TEST(PdfTask, StoresThePasswordUnchanged) {
  PdfTask task;
  task.SetOutPassword("a/b\\c");
  EXPECT_EQ(task.GetOutPassword(), "a/b\\c");
}

TEST(PdfTask, GettersReferToTheTasksOwnFields) {
  PdfTask task;
  task.GetOutputPath() = "raw";
  task.GetOutPassword() = "pw";
  EXPECT_EQ(task.GetOutputPath(), "raw");
  EXPECT_EQ(task.GetOutPassword(), "pw");
}

TEST(PdfTask, IsCopiedAndAssignedWithAllItHolds) {
  PdfTask task(ThreeDocuments(), "/out");
  task.SetOutPassword("pw");
  PdfTask copy(task);
  PdfTask assigned;
  assigned = task;
  task.ClearPdfDocs();
  for (PdfTask* same : {&copy, &assigned}) {
    EXPECT_EQ(Paths(*same), "a.pdf b.pdf c.pdf ");
    EXPECT_EQ(same->GetOutputPath(), "\\out\\");
    EXPECT_EQ(same->GetOutPassword(), "pw");
  }
}

TEST(PdfTask, MovingLeavesTheSourceEmpty) {
  PdfTask task(ThreeDocuments(), "/a path that is longer than what a string holds in itself");
  task.SetOutPassword("pw");
  PdfTask moved(std::move(task));
  EXPECT_EQ(moved.GetPdfDocsNum(), 3);
  EXPECT_EQ(task.GetPdfDocsNum(), 0);  // NOLINT(bugprone-use-after-move): what is tested
  EXPECT_EQ(task.GetOutputPath(), "");
  EXPECT_EQ(task.GetOutPassword(), "");
  task = std::move(moved);
  EXPECT_EQ(task.GetOutPassword(), "pw");
  EXPECT_EQ(task.GetPdfDocsNum(), 3);
  EXPECT_EQ(moved.GetPdfDocsNum(), 0);  // NOLINT(bugprone-use-after-move)
  EXPECT_EQ(moved.GetOutputPath(), "");
  EXPECT_EQ(moved.GetOutPassword(), "");
}

TEST(PdfTask, ExecuteDoesNothing) {
  PdfTask task(Document("missing.pdf"));
  EXPECT_EQ(testing::FailureOf([&] { task.Execute(); }), testing::Failure());
}

}  // namespace
}  // namespace TarnixTools
