// Jobs on a document whose catalog stands in the trailer and is no object of its own give what they
// give where it is one.
#include "PdfMergeTask.h"
#include "PdfRotateTask.h"
#include "PdfSplitTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::HasSubstr;
using testing::TestPdf;

class CatalogInTrailerTest : public testing::DocumentTest {
 protected:
  CatalogInTrailerTest() {
    directory_.MakeDir("trailer");
    directory_.MakeDir("object");
    Book().Write(Path("object/doc.pdf"));
    Book().CatalogInTrailer().Write(Path("trailer/doc.pdf"));
  }

  static TestPdf Book() {
    return TestPdf()
        .Page("a")
        .Annotation("/Subtype/Link/Rect[0 0 9 9]/Dest(there)")
        .Page("b")
        .Object("item", "<</Title(Item)/Dest[{{page 1}}/Fit]>>")
        .CatalogEntry("/Outlines<</First {{item}}/Last {{item}}/Count 1>>")
        .CatalogEntry("/Names<</Dests<</Names[(there)[{{page 1}}/Fit]]>>>>")
        .CatalogEntry("/PageLabels<</Nums[0<</S/r>>]>>/Lang(de)/PageMode/UseOutlines");
  }

  // Runs the job on both documents; options of the task are set by `prepare`.
  template <typename Task, typename Prepare>
  void ExpectEqualOutcome(const std::string& out_name, Prepare prepare) const {
    for (const char* place : {"object", "trailer"}) {
      Task task = prepare(Doc(std::string(place) + "/doc.pdf"));
      task.SetOutputPath(Path(place));
      task.Execute();
    }
    const std::string json = testing::QpdfJson(Path("trailer/" + out_name));
    EXPECT_EQ(json, testing::QpdfJson(Path("object/" + out_name)));
    for (const char* part : {R"("title": "Item")", R"("/S": "/r")", R"("/Subtype": "/Link")"}) {
      EXPECT_THAT(json, HasSubstr(part));
    }
    EXPECT_EQ(testing::QpdfComplaints(Path("trailer/" + out_name)), "");
  }
};

TEST_F(CatalogInTrailerTest, KeepsWhatItLeadsToWhenPagesAreTurned) {
  TARNIX_NEED_PROGRAM("qpdf");
  ExpectEqualOutcome<PdfRotateTask>("rotated_file.pdf", [](const PdfDoc& doc) {
    PdfRotateTask task(doc);
    task.SetRotationAngle(PdfRotationAngle::Rotate90);
    return task;
  });
  const std::string json = testing::QpdfJson(Path("trailer/rotated_file.pdf"));
  EXPECT_THAT(json, HasSubstr(R"("/Lang": "u:de")"));
  EXPECT_THAT(json, HasSubstr(R"("/PageMode": "/UseOutlines")"));
}

TEST_F(CatalogInTrailerTest, KeepsWhatItLeadsToWhenDocumentsAreJoined) {
  TARNIX_NEED_PROGRAM("qpdf");
  MakePdf("other.pdf", 1);
  ExpectEqualOutcome<PdfMergeTask>("merged.pdf", [this](const PdfDoc& doc) {
    PdfMergeTask task({doc, Doc("other.pdf")});
    task.SetOutDocName("merged.pdf");
    return task;
  });
}

TEST_F(CatalogInTrailerTest, KeepsWhatItLeadsToInAPiece) {
  TARNIX_NEED_PROGRAM("qpdf");
  ExpectEqualOutcome<PdfSplitTask>("doc-1.pdf", [](const PdfDoc& doc) {
    PdfSplitTask task(doc);
    task.SetSplitMode(PdfSplitMode::Ranges);
    task.AddSplitRange(PdfPageRange(1, 1));
    return task;
  });
}

}  // namespace
}  // namespace TarnixTools
