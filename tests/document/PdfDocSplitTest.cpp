// PdfDoc::Split, by ranges and into parts.
#include <unistd.h>

#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using testing::PageTexts;
using testing::QpdfComplaints;
using testing::QpdfNeedsPassword;

class PdfDocSplitTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_PROGRAM("pdftotext");
    out_dir_ = directory_.MakeDir("out") + "/";
  }

  void SplitRanges(PdfDoc doc, const std::vector<PdfPageRange>& ranges, bool merge_after = false,
                   const std::string& merged_name = "", const std::string& password = "") {
    doc.Split(ranges, out_dir_, "ignored", merge_after, merged_name, password);
  }

  std::string out_dir_;
};

TEST_F(PdfDocSplitTest, WritesAFileForEachRange) {
  SplitRanges(PdfDoc(MakePdf("report.pdf", 5), "", true), {{1, 3}, {5, 5}});
  EXPECT_THAT(directory_.Names("out"), ElementsAre("report-1-3.pdf", "report-5.pdf"));
  EXPECT_EQ(Texts("out/report-1-3.pdf"), Labels(1, 3));
  EXPECT_EQ(Texts("out/report-5.pdf"), Labels(5, 5));
  EXPECT_EQ(QpdfComplaints(Path("out/report-1-3.pdf")), "");
  EXPECT_EQ(QpdfComplaints(Path("out/report-5.pdf")), "");
}

TEST_F(PdfDocSplitTest, NamesARangeByItsOrderedEnds) {
  SplitRanges(PdfDoc(MakePdf("a.b.pdf", 6), "", true), {{6, 2}, {4, 4}});
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.b-2-6.pdf", "a.b-4.pdf"));
}

TEST_F(PdfDocSplitTest, RejectsARangeBeforeAFileIsMadeForIt) {
  PdfDoc doc(MakePdf("a.pdf", 5), "", true);
  EXPECT_EQ(FailureOf([&] {
              SplitRanges(doc, {{3, 9}});
            }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Could not split file, invalid range [3-9] ([5] pages available)"));
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
}

TEST_F(PdfDocSplitTest, KeepsTheFilesOfRangesBeforeAnInvalidOne) {
  PdfDoc doc(MakePdf("a.pdf", 5), "", true);
  EXPECT_EQ(FailureOf([&] {
              SplitRanges(doc, {{1, 2}, {6, 6}, {3, 3}});
            }).message,
            "Could not split file, invalid range [6-6] ([5] pages available)");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a-1-2.pdf"));
  EXPECT_EQ(Texts("out/a-1-2.pdf"), Labels(1, 2));
}

TEST_F(PdfDocSplitTest, KeepsThePartsBeforeOneThatFails) {
  directory_.MakeDir("out/a-02.pdf");
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_EQ(FailureOf([&] { doc.Split(1, out_dir_, "", ""); }).code,
            PdfExceptionCode::FileNotFound);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a-01.pdf", "a-02.pdf"));
  EXPECT_EQ(Texts("out/a-01.pdf"), Labels(1, 1));
  EXPECT_THAT(directory_.Names("out/a-02.pdf"), IsEmpty());
}

TEST_F(PdfDocSplitTest, OfNoRangeWritesNothing) {
  SplitRanges(PdfDoc(MakePdf("a.pdf", 5), "", true), {});
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
}

TEST_F(PdfDocSplitTest, JoinsTheDirectoryAsItStands) {
  PdfDoc doc(MakePdf("a.pdf", 2), "", true);
  doc.Split({PdfPageRange(1, 1)}, Path("out/x"), "", false, "", "");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("xa-1.pdf"));
}

TEST_F(PdfDocSplitTest, MergeAfterLeavesOnlyTheMergedFile) {
  SplitRanges(PdfDoc(MakePdf("report.pdf", 6), "", true), {{5, 6}, {1, 1}, {1, 2}}, true);
  EXPECT_THAT(directory_.Names("out"), ElementsAre("report_split-merge_.pdf"));
  EXPECT_THAT(Texts("out/report_split-merge_.pdf"),
              ElementsAre("Page 5", "Page 6", "Page 1", "Page 1", "Page 2"));
  EXPECT_EQ(QpdfComplaints(Path("out/report_split-merge_.pdf")), "");
}

TEST_F(PdfDocSplitTest, MergeAfterTakesANameAsItStands) {
  SplitRanges(PdfDoc(MakePdf("report.pdf", 6), "", true), {{2, 3}}, true, "kept");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("kept"));
  EXPECT_EQ(Texts("out/kept"), Labels(2, 3));
}

TEST_F(PdfDocSplitTest, MergeAfterLeavesNothingWhenARangeIsInvalid) {
  PdfDoc doc(MakePdf("a.pdf", 5), "", true);
  EXPECT_EQ(FailureOf([&] {
              SplitRanges(doc, {{1, 2}, {5, 6}}, true);
            }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Could not split file, invalid range [5-6] ([5] pages available)"));
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
}

TEST_F(PdfDocSplitTest, MergeAfterOfNoRangeWritesADocumentWithoutPages) {
  SplitRanges(PdfDoc(MakePdf("a.pdf", 5), "", true), {}, true);
  EXPECT_EQ(PdfDoc(Path("out/a_split-merge_.pdf"), "", true).GetPagesNum(), 0);
}

TEST_F(PdfDocSplitTest, ProtectsEveryFileWhenAPasswordIsGiven) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  SplitRanges(doc, {{1, 1}, {2, 3}}, false, "", "pw");
  SplitRanges(doc, {{1, 1}, {2, 3}}, true, "merged.pdf", "pw");
  doc.Split(2, out_dir_, "", "pw");
  EXPECT_THAT(directory_.Names("out"),
              ElementsAre("a-01.pdf", "a-02.pdf", "a-1.pdf", "a-2-3.pdf", "merged.pdf"));
  for (const std::string& name : directory_.Names("out")) {
    EXPECT_TRUE(QpdfNeedsPassword(out_dir_ + name)) << name;
    EXPECT_EQ(QpdfComplaints(out_dir_ + name, "pw"), "") << name;
  }
  EXPECT_EQ(Texts("out/merged.pdf", "pw"), Labels(1, 3));
}

TEST_F(PdfDocSplitTest, WritesPartsOfEqualSize) {
  PdfDoc doc(MakePdf("name.pdf", 25), "", true);
  doc.Split(10, out_dir_, "ignored", "");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("name-001.pdf", "name-002.pdf", "name-003.pdf"));
  EXPECT_EQ(Texts("out/name-001.pdf"), Labels(1, 10));
  EXPECT_EQ(Texts("out/name-002.pdf"), Labels(11, 20));
  EXPECT_EQ(Texts("out/name-003.pdf"), Labels(21, 25));
}

TEST_F(PdfDocSplitTest, OfAllPagesWritesOnePart) {
  PdfDoc doc(MakePdf("name.pdf", 9), "", true);
  doc.Split(9, out_dir_, "", "");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("name-01.pdf"));
  EXPECT_EQ(Texts("out/name-01.pdf"), Labels(1, 9));
}

TEST_F(PdfDocSplitTest, NumbersHaveOneDigitMoreThanThePageCount) {
  PdfDoc ten(MakePdf("ten.pdf", 10), "", true);
  ten.Split(4, out_dir_, "", "");
  EXPECT_THAT(directory_.Names("out"), ElementsAre("ten-001.pdf", "ten-002.pdf", "ten-003.pdf"));
  EXPECT_EQ(Texts("out/ten-003.pdf"), Labels(9, 10));
  PdfDoc(MakePdf("one.pdf", 1), "", true).Split(1, out_dir_, "", "");
  EXPECT_TRUE(testing::Exists(Path("out/one-01.pdf")));
  PdfDoc(MakePdf("100.x.pdf", 100), "", true).Split(99, out_dir_, "", "");
  EXPECT_EQ(Texts("out/100.x-0001.pdf"), Labels(1, 99));
  EXPECT_EQ(Texts("out/100.x-0002.pdf"), Labels(100, 100));
}

TEST_F(PdfDocSplitTest, NamesPiecesOfAHiddenFileByTheirLabelsAlone) {
  PdfDoc doc(MakePdf(".pdf", 3), "", true);
  SplitRanges(doc, {{2, 3}});
  doc.Split(2, out_dir_, "", "");
  SplitRanges(doc, {{3, 3}}, true);
  EXPECT_THAT(directory_.Names("out"),
              ElementsAre("-01.pdf", "-02.pdf", "-2-3.pdf", "_split-merge_.pdf"));
}

TEST_F(PdfDocSplitTest, WritesARangeAgainThatComesTwice) {
  SplitRanges(PdfDoc(MakePdf("a.pdf", 3), "", true), {{2, 3}, {1, 1}, {3, 2}});
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a-1.pdf", "a-2-3.pdf"));
  EXPECT_EQ(Texts("out/a-2-3.pdf"), Labels(2, 3));
}

TEST_F(PdfDocSplitTest, RejectsASizeThatDoesNotFit) {
  PdfDoc doc(MakePdf("name.pdf", 9), "", true);
  EXPECT_EQ(FailureOf([&] { doc.Split(0, out_dir_, "", ""); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid split size [0] for PDF [name] ([9] pages available)"));
  EXPECT_EQ(FailureOf([&] { doc.Split(10, out_dir_, "", ""); }).message,
            "Invalid split size [10] for PDF [name] ([9] pages available)");
  EXPECT_EQ(FailureOf([&] { doc.Split(-1, out_dir_, "", ""); }).message,
            "Invalid split size [-1] for PDF [name] ([9] pages available)");
  PdfDoc no_pages(MakePdf("none.pdf", 0), "", true);
  EXPECT_EQ(FailureOf([&] { no_pages.Split(1, out_dir_, "", ""); }).message,
            "Invalid split size [1] for PDF [none] ([0] pages available)");
  EXPECT_THAT(directory_.Names("out"), IsEmpty());
}

TEST_F(PdfDocSplitTest, ClosesTheDocumentAlsoWhenItFails) {
  PdfDoc doc(MakePdf("a.pdf", 5), "", true);
  FailureOf([&] { doc.Split(0, out_dir_, "", ""); });
  doc.SetPath("b.pdf");
  EXPECT_EQ(doc.GetPath(), "b.pdf");
  doc.SetPath(Path("a.pdf"));
  FailureOf([&] { doc.Split({PdfPageRange(9, 9)}, out_dir_, "", false, "", ""); });
  doc.SetPath("b.pdf");
  EXPECT_EQ(doc.GetPath(), "b.pdf");
}

TEST_F(PdfDocSplitTest, IntoAMissingDirectoryFails) {
  PdfDoc doc(MakePdf("a.pdf", 5), "", true);
  EXPECT_EQ(FailureOf([&] { doc.Split(1, Path("missing/"), "", ""); }),
            Failure(PdfExceptionCode::FileNotFound, "Unable to create new file [" +
                                                        Backslashes(Path("missing/a-01.pdf")) +
                                                        "] (No such file or directory)"));
}

// The first piece takes the place of the source, which nevertheless is read to its end: it is
// opened only once.
TEST_F(PdfDocSplitTest, ReadsTheSourceThatItsFirstPieceReplaces) {
  const std::string source = MakePdf("a.pdf", 3);
  ASSERT_EQ(symlink(source.c_str(), (out_dir_ + "a-01.pdf").c_str()), 0);
  PdfDoc doc(source, "", true);
  doc.Split(1, out_dir_, "", "");
  EXPECT_EQ(PageTexts(source), Labels(1, 1));
  EXPECT_EQ(Texts("out/a-02.pdf"), Labels(2, 2));
  EXPECT_EQ(Texts("out/a-03.pdf"), Labels(3, 3));
}

}  // namespace
}  // namespace TarnixTools
