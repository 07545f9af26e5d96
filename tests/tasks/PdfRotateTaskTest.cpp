#include <filesystem>

#include "PdfRotateTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::PageFactsOf;
using testing::TestPdf;

class PdfRotateTaskTest : public testing::DocumentTest {
 protected:
  // A task on a document of three pages, of which the second is turned already; it writes to out/.
  PdfRotateTask Task() const {
    TestPdf().Page("a").Page("b").Rotate(270).Page("c").Write(Path("doc.pdf"));
    PdfRotateTask task(Doc("doc.pdf"));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }

  std::vector<int> Rotations(const std::string& name) const {
    std::vector<int> rotations;
    for (const testing::PageFacts& facts : PageFactsOf(Path(name))) {
      rotations.push_back(facts.rotation);
    }
    return rotations;
  }
};

TEST_F(PdfRotateTaskTest, HasDefaults) {
  PdfRotateTask task;
  EXPECT_EQ(task.GetPdfDocsNum(), 0);
  EXPECT_EQ(task.GetRotationAngle(), PdfRotationAngle::Rotate0);
  EXPECT_EQ(task.GetOutName(), "rotated_file.pdf");
}

TEST_F(PdfRotateTaskTest, TurnsEveryPage) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  PdfRotateTask task = Task();
  task.SetRotationAngle(PdfRotationAngle::Rotate90);
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("rotated_file.pdf"));
  EXPECT_THAT(Rotations("out/rotated_file.pdf"), ElementsAre(90, 0, 90));
}

TEST_F(PdfRotateTaskTest, TurnsByEveryAngle) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  PdfRotateTask task = Task();
  for (const int angle : {0, 90, 180, 270}) {
    task.SetRotationAngle(static_cast<PdfRotationAngle>(angle));
    task.Execute();
    EXPECT_THAT(Rotations("out/rotated_file.pdf"), ElementsAre(angle, (270 + angle) % 360, angle));
  }
}

TEST_F(PdfRotateTaskTest, TurnsOnlyThePagesThatAreNamed) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  PdfRotateTask task = Task();
  EXPECT_THAT(task.GetPages(), ElementsAre());
  task.SetRotationAngle(PdfRotationAngle::Rotate90);
  task.SetPages({3, 2});
  task.Execute();
  EXPECT_THAT(Rotations("out/rotated_file.pdf"), ElementsAre(0, 0, 90));
}

TEST_F(PdfRotateTaskTest, RefusesPagesThatTheDocumentLacks) {
  PdfRotateTask task = Task();
  task.SetRotationAngle(PdfRotationAngle::Rotate90);
  for (const int page : {0, 4, -1}) {
    task.SetPages({1, page});
    EXPECT_EQ(
        FailureOf([&] { task.Execute(); }),
        Failure(PdfExceptionCode::InvalidParameter,
                "Invalid page [" + std::to_string(page) + "] for PDF [doc] ([3] pages available)"));
  }
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
}

TEST_F(PdfRotateTaskTest, WritesAnUnrotatedCopyByDefault) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  PdfRotateTask task = Task();
  task.SetOutName("copy.pdf");
  task.SetOutName("");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("copy.pdf"));
  EXPECT_THAT(Rotations("out/copy.pdf"), ElementsAre(0, 270, 0));
}

TEST_F(PdfRotateTaskTest, RejectsAnAngleThatIsNone) {
  PdfRotateTask task = Task();
  for (const int angle : {45, 360, -90, 1}) {
    task.SetRotationAngle(static_cast<PdfRotationAngle>(angle));
    EXPECT_EQ(static_cast<int>(task.GetRotationAngle()), angle);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid rotation angle value configured [" + std::to_string(angle) + "]"));
  }
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
}

TEST_F(PdfRotateTaskTest, NeedsExactlyOneDocumentBeforeTheAngleIsLookedAt) {
  PdfRotateTask task = Task();
  task.AddPdfDoc(Doc("doc.pdf"));
  task.SetRotationAngle(static_cast<PdfRotationAngle>(45));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [2], expected single doc at task"));
  EXPECT_EQ(FailureOf([] { PdfRotateTask().Execute(); }).message,
            "Unexpected PDF docs number [0], expected single doc at task");
}

TEST_F(PdfRotateTaskTest, TakesOneInputAtATime) {
  PdfRotateTask task = Task();
  MakePdf("other.pdf", 1);
  task.SetInputDoc(Doc("other.pdf"));
  ASSERT_EQ(task.GetPdfDocsNum(), 1);
  EXPECT_EQ(task.GetPdfDocs().front().GetDocName(true), "other.pdf");
  task.SetInputDoc(task.GetPdfDocs().front());
  ASSERT_EQ(task.GetPdfDocsNum(), 1);
  EXPECT_EQ(task.GetPdfDocs().front().GetDocName(true), "other.pdf");
}

TEST_F(PdfRotateTaskTest, WritesToTheCurrentDirectoryWhenNoneIsSet) {
  MakePdf("doc.pdf", 1);
  directory_.MakeDir("here");
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(Path("here"));
  PdfRotateTask task(Doc("doc.pdf"));
  const Failure failure = FailureOf([&] { task.Execute(); });
  std::filesystem::current_path(before);
  EXPECT_EQ(failure, Failure());
  EXPECT_EQ(task.GetOutputPath(), "");
  EXPECT_THAT(directory_.Names("here"), ElementsAre("rotated_file.pdf"));
}

TEST_F(PdfRotateTaskTest, PutsThePasswordOnTheOutput) {
  PdfRotateTask task = Task();
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/rotated_file.pdf")));
  EXPECT_EQ(Doc("out/rotated_file.pdf", "pw").GetPagesNum(), 3);
}

TEST_F(PdfRotateTaskTest, IsCopiedAndMovedWithAllItHolds) {
  PdfRotateTask task = Task();
  task.SetRotationAngle(PdfRotationAngle::Rotate180);
  task.SetOutName("x.pdf");
  PdfRotateTask copy(task);
  PdfRotateTask moved(std::move(task));
  for (PdfRotateTask* same : {&copy, &moved}) {
    EXPECT_EQ(same->GetRotationAngle(), PdfRotationAngle::Rotate180);
    EXPECT_EQ(same->GetOutName(), "x.pdf");
    EXPECT_EQ(same->GetPdfDocsNum(), 1);
  }
}

}  // namespace
}  // namespace TarnixTools
