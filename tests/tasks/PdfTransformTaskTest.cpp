#include "PdfTransformTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class PdfTransformTaskTest : public testing::DocumentTest {
 protected:
  PdfTransformTaskTest() {
    MakePdf("doc.pdf", 3);
    stamp_.SetInputText("Draft");
    stamp_.SetVerticalPosition(PdfTransformVerticalPos::Top);
    stamp_.AddTargetPage(2);
  }

  static Failure NoTransformation(int index, int count) {
    return {PdfExceptionCode::InvalidParameter,
            "Unexpected transformation ID [" + std::to_string(index) + "], only [" +
                std::to_string(count) + "] transformations defined"};
  }

  PdfTransformation number_{PdfTransformType::AddPageNumber};
  PdfTransformation stamp_{PdfTransformType::StampText};
};

TEST_F(PdfTransformTaskTest, AppliesAllOfThem) {
  TARNIX_NEED_PROGRAM("pdftotext");
  PdfTransformTask task(Doc("doc.pdf"));
  task.AddTransformation(number_);
  task.AddTransformation(stamp_);
  task.SetOutputPath(directory_.MakeDir("out"));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("document_after_transformations.pdf"));
  EXPECT_THAT(Texts("out/document_after_transformations.pdf"),
              ElementsAre("Page 1\n\n1", "Draft\n\nPage 2\n\n2", "Page 3\n\n3"));
  task.SetOutName("");
  task.SetOutName("named.pdf");
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_EQ(Doc("out/named.pdf", "pw").GetPagesNum(), 3);
}

TEST_F(PdfTransformTaskTest, WritesBesideTheDocument) {
  PdfTransformTask task(Doc("doc.pdf"), {number_});
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "document_after_transformations.pdf"));
}

TEST_F(PdfTransformTaskTest, HoldsCopies) {
  PdfTransformTask task(Doc("doc.pdf"), {number_, stamp_});
  stamp_.SetInputText("changed");
  EXPECT_EQ(task.GetTransformationsNum(), 2);
  EXPECT_EQ(task.GetTransformation(0).GetType(), PdfTransformType::AddPageNumber);
  EXPECT_EQ(task.GetTransformation(1).GetInputText(), "Draft");
  task.GetTransformation(1).SetInputText("own");
  task.SetOutName("x.pdf");
  PdfTransformTask copy(task);
  PdfTransformTask assigned(Doc("doc.pdf"));
  assigned = copy;
  PdfTransformTask moved(std::move(task));
  for (PdfTransformTask* same : {&copy, &assigned, &moved}) {
    EXPECT_EQ(same->GetTransformation(1).GetInputText(), "own");
    EXPECT_EQ(same->GetOutName(), "x.pdf");
    EXPECT_EQ(same->GetPdfDocsNum(), 1);
  }
  copy.ResetTransformations();
  EXPECT_EQ(copy.GetTransformationsNum(), 0);
}

TEST_F(PdfTransformTaskTest, KnowsNoOtherTransformations) {
  PdfTransformTask task(Doc("doc.pdf"), {number_, stamp_});
  EXPECT_EQ(FailureOf([&] { task.GetTransformation(-1); }), NoTransformation(-1, 2));
  EXPECT_EQ(FailureOf([&] { task.GetTransformation(2); }), NoTransformation(2, 2));
  EXPECT_EQ(FailureOf([&] { task.GetTransformation(std::numeric_limits<int>::min()); }),
            NoTransformation(std::numeric_limits<int>::min(), 2));
  task.ResetTransformations();
  EXPECT_EQ(FailureOf([&] { task.GetTransformation(0); }), NoTransformation(0, 0));
  EXPECT_EQ(PdfTransformTask(Doc("doc.pdf")).GetTransformationsNum(), 0);
}

TEST_F(PdfTransformTaskTest, NeedsOneDocumentAndATransformation) {
  PdfTransformTask task(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF transformations number [0], expected at least one"));
  task.AddPdfDoc(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [2], expected single doc at task"));
}

TEST_F(PdfTransformTaskTest, KeepsWhatDrawingMakesOfThem) {
  stamp_.SetMosaic(true);
  stamp_.SetHorizontalAdjustment(3);
  number_.SetDoFacingPages(true);
  number_.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
  PdfTransformTask task(Doc("doc.pdf"), {number_, stamp_});
  task.Execute();
  EXPECT_EQ(task.GetTransformation(0).GetHorizontalPosition(), PdfTransformHorizontalPos::Left);
  EXPECT_EQ(task.GetTransformation(0).GetBaseHorizontalPosition(),
            PdfTransformHorizontalPos::Right);
  EXPECT_EQ(task.GetTransformation(1).GetVerticalPosition(), PdfTransformVerticalPos::Middle);
  EXPECT_EQ(task.GetTransformation(1).GetHorizontalPosition(), PdfTransformHorizontalPos::Right);
  EXPECT_EQ(task.GetTransformation(1).GetHorizontalAdjustment(), 0);
}

TEST_F(PdfTransformTaskTest, LeavesTextsToTheDocument) {
  TARNIX_NEED_PROGRAM("pdftotext");
  stamp_.SetInputText("");
  PdfTransformTask task(Doc("doc.pdf"), {stamp_, number_});
  task.Execute();
  EXPECT_THAT(Texts("document_after_transformations.pdf"),
              ElementsAre("Page 1\n\n1", "Page 2\n\n2", "Page 3\n\n3"));
}

TEST_F(PdfTransformTaskTest, LeavesImagesToTheDocument) {
  PdfTransformation image(PdfTransformType::StampImage);
  PdfTransformTask task(Doc("doc.pdf"), {image});
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::FileNotFound, "Unable to open image file []"));
}

}  // namespace
}  // namespace TarnixTools
