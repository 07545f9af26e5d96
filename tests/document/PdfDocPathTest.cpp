// PdfDoc at rest: its path, its password, its ranges.
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Failure;
using testing::FailureOf;

class PdfDocPathTest : public testing::DocumentTest {};

TEST_F(PdfDocPathTest, IsSplitIntoDirectoryNameAndExtension) {
  PdfDoc doc;
  doc.SetPath("C:/a/b/report.final.pdf");
  EXPECT_EQ(doc.GetPath(), "C:\\a\\b\\report.final.pdf");
  EXPECT_EQ(doc.GetDocDirectory(), "C:\\a\\b\\");
  EXPECT_EQ(doc.GetDocName(true), "report.final.pdf");
  EXPECT_EQ(doc.GetDocName(false), "report.final");
}

TEST_F(PdfDocPathTest, WithoutDirectoryAndExtension) {
  PdfDoc doc;
  doc.SetPath("doc");
  EXPECT_EQ(doc.GetDocDirectory(), "");
  EXPECT_EQ(doc.GetDocName(true), "doc");
  EXPECT_EQ(doc.GetDocName(false), "doc");
}

TEST_F(PdfDocPathTest, FullStopsInDirectoriesAreNoExtension) {
  PdfDoc doc;
  doc.SetPath("/a.b/doc");
  EXPECT_EQ(doc.GetDocDirectory(), "\\a.b\\");
  EXPECT_EQ(doc.GetDocName(false), "doc");
}

TEST_F(PdfDocPathTest, NameOfAHiddenFileIsEmpty) {
  PdfDoc doc;
  doc.SetPath("/a/.hidden");
  EXPECT_EQ(doc.GetDocName(true), ".hidden");
  EXPECT_EQ(doc.GetDocName(false), "");
}

TEST_F(PdfDocPathTest, IsSplitAtTheLastSeparatorAndTheLastFullStop) {
  struct Case {
    const char* path;
    const char* kept;
    const char* directory;
    const char* name;
    const char* stem;
  };

  for (const Case& one : {
           Case{"/a/b/", "\\a\\b\\", "\\a\\b\\", "", ""},
           Case{"a\\b/c.pdf", "a\\b\\c.pdf", "a\\b\\", "c.pdf", "c"},
           Case{"a/b\\c.d/e", "a\\b\\c.d\\e", "a\\b\\c.d\\", "e", "e"},
           Case{"/", "\\", "\\", "", ""},
           Case{"//a//b", "\\\\a\\\\b", "\\\\a\\\\", "b", "b"},
           Case{"a.", "a.", "", "a.", "a"},
           Case{"x/..", "x\\..", "x\\", "..", "."},
           Case{"x/.tar.gz", "x\\.tar.gz", "x\\", ".tar.gz", ".tar"},
           Case{"caf\xC3\xA9 \xFF.pdf", "caf\xC3\xA9 \xFF.pdf", "", "caf\xC3\xA9 \xFF.pdf",
                "caf\xC3\xA9 \xFF"},
       }) {
    const PdfDoc doc(one.path, "", false);
    EXPECT_EQ(doc.GetPath(), one.kept) << one.path;
    EXPECT_EQ(doc.GetDocDirectory(), one.directory) << one.path;
    EXPECT_EQ(doc.GetDocName(true), one.name) << one.path;
    EXPECT_EQ(doc.GetDocName(false), one.stem) << one.path;
  }
}

TEST_F(PdfDocPathTest, IsSplitAnewByEverySetPath) {
  PdfDoc doc;
  doc.SetPath("/a/b.pdf");
  doc.SetPath("c");
  EXPECT_EQ(doc.GetPath(), "c");
  EXPECT_EQ(doc.GetDocDirectory(), "");
  EXPECT_EQ(doc.GetDocName(true), "c");
}

TEST_F(PdfDocPathTest, DefaultDocumentIsEmpty) {
  const PdfDoc doc;
  EXPECT_EQ(doc.GetPath(), "");
  EXPECT_EQ(doc.GetDocName(true), "");
  EXPECT_EQ(doc.GetDocName(false), "");
  EXPECT_EQ(doc.GetDocDirectory(), "");
  EXPECT_EQ(doc.GetPassword(), "");
  EXPECT_EQ(doc.GetLastError(), 0);
  EXPECT_EQ(doc.GetRangesNum(), 0);
}

TEST_F(PdfDocPathTest, MustNotBeEmpty) {
  const Failure expected(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc");
  EXPECT_EQ(FailureOf([] { PdfDoc("", "", true); }), expected);
  EXPECT_EQ(FailureOf([] { PdfDoc("", "", false); }), expected);
}

TEST_F(PdfDocPathTest, OfAMissingFileIsRefusedWhenItMustExist) {
  const std::string path = Path("missing.pdf");
  EXPECT_EQ(
      FailureOf([&] { PdfDoc(path, "", true); }),
      Failure(PdfExceptionCode::FileNotFound, "File not found or invalid content: [" + path + "]"));
}

TEST_F(PdfDocPathTest, OfAMissingFileFailsAtFirstUseOtherwise) {
  PdfDoc doc(Path("missing.pdf"), "", false);
  EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }),
            Failure(PdfExceptionCode::FileNotFound,
                    "Unable to open file " + testing::Backslashes(Path("missing.pdf"))));
}

TEST_F(PdfDocPathTest, OfADirectoryIsNoDocument) {
  EXPECT_EQ(FailureOf([&] { PdfDoc(directory_.Path(), "", true); }).code,
            PdfExceptionCode::FileNotFound);
  PdfDoc doc(directory_.Path(), "", false);
  EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }),
            Failure(PdfExceptionCode::FileNotFound,
                    "Unable to open file " + testing::Backslashes(directory_.Path())));
}

TEST_F(PdfDocPathTest, AndPasswordDoNotChangeWhileTheDocumentIsOpen) {
  PdfDoc doc(Path("new.pdf"), "first", false);
  doc.Create(true);
  doc.SetPath(Path("other.pdf"));
  doc.SetPassword("second");
  EXPECT_EQ(doc.GetPath(), testing::Backslashes(Path("new.pdf")));
  EXPECT_EQ(doc.GetPassword(), "first");
}

TEST_F(PdfDocPathTest, AndPasswordChangeWhileItIsClosed) {
  PdfDoc doc(Path("new.pdf"), "first", false);
  doc.SetPassword("second");
  doc.SetPath("other.pdf");
  EXPECT_EQ(doc.GetPassword(), "second");
  EXPECT_EQ(doc.GetPath(), "other.pdf");
}

TEST_F(PdfDocPathTest, CopiesHoldTheSame) {
  PdfDoc doc("/a/b.pdf", "secret", false);
  doc.AddRange(PdfPageRange(1, 2));
  const PdfDoc copy(doc);
  PdfDoc assigned;
  assigned = doc;
  doc.SetPath("c.pdf");
  doc.ClearRanges();
  EXPECT_EQ(doc.GetRangesNum(), 0);
  for (const PdfDoc* same : {&copy, static_cast<const PdfDoc*>(&assigned)}) {
    EXPECT_EQ(same->GetPath(), "\\a\\b.pdf");
    EXPECT_EQ(same->GetDocName(false), "b");
    EXPECT_EQ(same->GetPassword(), "secret");
    EXPECT_EQ(same->GetRangesNum(), 1);
  }
}

}  // namespace
}  // namespace TarnixTools
