#include "PdfRemovePagesTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class PdfRemovePagesTaskTest : public testing::DocumentTest {
 protected:
  PdfRemovePagesTaskTest() : task_(PdfDoc(MakePdf("doc.pdf", 10), "", true)) {
    task_.SetOutputPath(directory_.MakeDir("out"));
  }

  // The texts of the pages that are left after the pattern's are removed.
  std::vector<std::string> Left(const std::string& pattern) {
    task_.ClearPages();
    task_.AddRemovedPattern(pattern);
    task_.Execute();
    return Texts("out/truncated.pdf");
  }

  Failure FailureOfPattern(const std::string& pattern) {
    return FailureOf([&] { task_.AddRemovedPattern(pattern); });
  }

  static Failure BadPattern(const std::string& pattern) {
    return {PdfExceptionCode::InvalidParameter, "Invalid remove pages pattern [" + pattern + "]"};
  }

  Failure BadRange(const std::string& range) const {
    return {PdfExceptionCode::InvalidParameter,
            "Invalid range [" + range + "] for document [" + Backslashes(Path("doc.pdf")) + "]"};
  }

  static Failure NothingToRemove() {
    return {PdfExceptionCode::InvalidParameter,
            "None page configured to be removed at input document"};
  }

  PdfRemovePagesTask task_;
};

TEST_F(PdfRemovePagesTaskTest, HasDefaults) {
  EXPECT_EQ(task_.GetPdfDocsNum(), 1);
  EXPECT_EQ(task_.GetOutPrefix(), "truncated");
  EXPECT_EQ(task_.GetOutPdfName(), "");
}

TEST_F(PdfRemovePagesTaskTest, WritesTheOtherPages) {
  TARNIX_NEED_PROGRAM("pdftotext");
  EXPECT_THAT(Left("1,3-5,10"), ElementsAre("Page 2", "Page 6", "Page 7", "Page 8", "Page 9"));
  EXPECT_THAT(directory_.Names("out"), ElementsAre("truncated.pdf"));
}

TEST_F(PdfRemovePagesTaskTest, TakesOverlappingAndReversedRanges) {
  TARNIX_NEED_PROGRAM("pdftotext");
  EXPECT_EQ(Left("1-2,2-3"), Labels(4, 10));
  EXPECT_EQ(Left("10-7,3-2,2-3"),
            (std::vector<std::string>{"Page 1", "Page 4", "Page 5", "Page 6"}));
  EXPECT_EQ(Left("1-9"), Labels(10, 10));
  EXPECT_EQ(Left("2-10"), Labels(1, 1));
}

TEST_F(PdfRemovePagesTaskTest, RemovesSinglePagesAndRanges) {
  TARNIX_NEED_PROGRAM("pdftotext");
  task_.AddRemovedPage(1);
  task_.AddRemovedRange(PdfPageRange(9, 3));
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 2", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, LeavesAtLeastOnePage) {
  task_.AddRemovedPattern("1-10");
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }),
            Failure(PdfExceptionCode::NoPages, "All the pages will be removed from current PDF"));
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
}

TEST_F(PdfRemovePagesTaskTest, NeedsSomethingToRemove) {
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NothingToRemove());
  task_.AddRemovedPattern("");
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NothingToRemove());
  task_.AddRemovedPage(1);
  task_.ClearPages();
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NothingToRemove());
}

TEST_F(PdfRemovePagesTaskTest, ChecksRangesWhenTheyAreAdded) {
  EXPECT_EQ(FailureOfPattern("1-11"), BadRange("1-11"));
  EXPECT_EQ(FailureOfPattern("11"), BadRange("11-11"));
  EXPECT_EQ(FailureOf([&] { task_.AddRemovedPage(12); }), BadRange("12-12"));
  EXPECT_EQ(FailureOf([&] { task_.AddRemovedRange(PdfPageRange(4, 11)); }), BadRange("4-11"));
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NothingToRemove());
}

TEST_F(PdfRemovePagesTaskTest, KnowsNoPageZero) {
  for (const std::string pattern : {"0", "0-3", "00"}) {
    EXPECT_EQ(FailureOfPattern(pattern),
              Failure(PdfExceptionCode::InvalidParameter,
                      "Invalid PDF page range start value [0], expected positive integer"));
  }
  EXPECT_EQ(FailureOf([&] { task_.AddRemovedPage(-1); }).code, PdfExceptionCode::InvalidParameter);
}

TEST_F(PdfRemovePagesTaskTest, KnowsNoDocumentThatLarge) {
  EXPECT_EQ(FailureOfPattern("99999999999999999999"), BadRange("2147483647-2147483647"));
  EXPECT_EQ(FailureOfPattern("1-2147483648"), BadRange("1-2147483647"));
}

TEST_F(PdfRemovePagesTaskTest, NamesTheWholePatternForWhatIsNoItem) {
  for (const std::string pattern : {"2,,3", ",2", ",", "2,3,,", "2 - 3", " 2", "2;3", "a", "2\n"}) {
    EXPECT_EQ(FailureOfPattern(pattern), BadPattern(pattern));
  }
}

TEST_F(PdfRemovePagesTaskTest, NamesTheItemThatIsNoRange) {
  for (const std::string item : {"5-", "-5", "-", "1-2-3", "1--2", "--", "1-2-"}) {
    EXPECT_EQ(FailureOfPattern("2," + item + ",4"), BadPattern(item));
  }
}

TEST_F(PdfRemovePagesTaskTest, KeepsTheItemsBeforeTheBadOne) {
  TARNIX_NEED_PROGRAM("pdftotext");
  EXPECT_EQ(FailureOfPattern("1-4,6,,7"), BadPattern("1-4,6,,7"));
  EXPECT_EQ(FailureOfPattern("7,12,8"), BadRange("12-12"));
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 5", "Page 8", "Page 9", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, NamesTheOutput) {
  task_.AddRemovedPage(1);
  task_.SetOutPrefix("short");
  task_.SetOutPrefix("");
  EXPECT_EQ(task_.GetOutPrefix(), "short");
  task_.SetOutPdfName("kept.pdf");
  task_.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("kept.pdf"));
  task_.SetOutPdfName("");
  task_.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("kept.pdf", "short.pdf"));
}

TEST_F(PdfRemovePagesTaskTest, WritesTheKeptPagesTwiceInASecondRun) {
  TARNIX_NEED_PROGRAM("pdftotext");
  task_.AddRemovedPattern("2-9");
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 1", "Page 10"));
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 1", "Page 10", "Page 1", "Page 10"));
  EXPECT_THAT(Left("2-9"), ElementsAre("Page 1", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, AddsTheKeptPagesOfARunThatFailed) {
  TARNIX_NEED_PROGRAM("pdftotext");
  task_.AddRemovedPattern("2-9");
  task_.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }).code, PdfExceptionCode::FileNotFound);
  task_.SetOutputPath(Path("out"));
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 1", "Page 10", "Page 1", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, WritesThePagesKeptBeforeWhenNoneIsLeft) {
  TARNIX_NEED_PROGRAM("pdftotext");
  task_.AddRemovedPattern("2-9");
  task_.Execute();
  task_.AddRemovedPattern("1-10");
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 1", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, WorksOnTheFirstOfSeveralDocuments) {
  TARNIX_NEED_PROGRAM("pdftotext");
  MakePdf("other.pdf", 2, "Other");
  task_.AddPdfDoc(Doc("other.pdf"));
  EXPECT_THAT(Left("1-8"), ElementsAre("Page 9", "Page 10"));
}

TEST_F(PdfRemovePagesTaskTest, TakesRangesAsFarAsTheDocumentGoes) {
  TARNIX_NEED_PROGRAM("pdftotext");
  task_.AddRemovedPattern("9-10,3-8");
  MakePdf("doc.pdf", 5);
  task_.Execute();
  EXPECT_THAT(Texts("out/truncated.pdf"), ElementsAre("Page 1", "Page 2"));
}

TEST_F(PdfRemovePagesTaskTest, ReadsThePatternBeforeTheDocument) {
  PdfRemovePagesTask task(PdfDoc(Path("missing.pdf"), "", false));
  for (const std::string pattern : {"a", ",1", "5-", "-5", "1-2-3"}) {
    EXPECT_EQ(FailureOf([&] { task.AddRemovedPattern(pattern); }), BadPattern(pattern));
  }
  EXPECT_EQ(FailureOf([&] { task.AddRemovedPattern("0"); }).code,
            PdfExceptionCode::InvalidParameter);
  EXPECT_EQ(FailureOf([&] { task.AddRemovedPattern("1"); }).code, PdfExceptionCode::FileNotFound);
}

TEST_F(PdfRemovePagesTaskTest, NeedsADocument) {
  task_.AddRemovedPage(1);
  task_.ClearPdfDocs();
  const Failure none{PdfExceptionCode::InvalidParameter,
                     "None PDF doc defined to remove pages from"};
  EXPECT_EQ(FailureOf([&] { task_.AddRemovedPage(1); }), none);
  EXPECT_EQ(FailureOfPattern("1"), none);
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), none);
}

TEST_F(PdfRemovePagesTaskTest, LeavesPasswordsToTheDocument) {
  PdfDoc(Path("doc.pdf"), "", true).Lock("pw", Path("locked.pdf"));
  PdfRemovePagesTask task(Doc("locked.pdf"));
  EXPECT_EQ(FailureOf([&] { task.AddRemovedPage(1); }),
            Failure(PdfExceptionCode::PasswordError,
                    "Invalid password for PDF [" + Backslashes(Path("locked.pdf")) + "]", 17));
}

TEST_F(PdfRemovePagesTaskTest, PutsThePasswordOnTheOutput) {
  task_.AddRemovedPage(1);
  task_.SetOutPassword("pw");
  task_.Execute();
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/truncated.pdf")));
  EXPECT_EQ(Doc("out/truncated.pdf", "pw").GetPagesNum(), 9);
}

TEST_F(PdfRemovePagesTaskTest, IsCopiedAndMovedWithAllItHolds) {
  task_.AddRemovedPattern("1-7");
  task_.SetOutPrefix("x");
  PdfRemovePagesTask copy(task_);
  PdfRemovePagesTask moved(std::move(task_));
  for (PdfRemovePagesTask* same : {&copy, &moved}) {
    same->Execute();
    EXPECT_THAT(directory_.Names("out"), ElementsAre("x.pdf"));
    EXPECT_EQ(Doc("out/x.pdf").GetPagesNum(), 3);
  }
}

}  // namespace
}  // namespace TarnixTools
