// PdfDoc: what an object tells of its last operation, and of that alone.
#include "document/WritingOperations.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::TestPdf;

constexpr const char* kProtectionDropped =
    "protection dropped: the input is protected, the output is not";

class PdfDocReportTest : public testing::DocumentTest {
 protected:
  // Of three pages, with information and thumbnails, which stay behind.
  std::string Make(const std::string& name) const {
    TestPdf pdf;
    pdf.InfoEntry("/Author(Ada)/Title(Notes)").Object("thumb", "<</Length 0>>\nstream\nendstream");
    for (int i = 0; i < 3; ++i) {
      pdf.Page("a").PageEntry("/Thumb {{thumb}}");
    }
    return pdf.Write(Path(name));
  }

  // All that write, whatever they name what they write.
  std::vector<Operation> Operations() const {
    const std::string directory = directory_.MakeDir("pieces") + "/";
    std::vector<Operation> operations = WritingOperations();
    operations.push_back({"UnLock", [](PdfDoc& document, const std::string& output, auto&&...) {
                            document.UnLock("", output);
                          }});
    operations.push_back({"Split into parts",
                          [=](PdfDoc& document, const std::string&, const std::string& password) {
                            document.Split(2, directory, "", password);
                          }});
    operations.push_back(
        {"Split by ranges", [=](PdfDoc& document, const std::string&, const std::string& password) {
           document.Split({PdfPageRange(1, 2)}, directory, "", false, "", password);
         }});
    operations.push_back({"Split and merged",
                          [=](PdfDoc& document, const std::string&, const std::string& password) {
                            document.Split({PdfPageRange(1, 2)}, directory, "", true, "", password);
                          }});
    return operations;
  }

  static std::vector<std::string> Lines(const PdfReport& report) {
    std::vector<std::string> lines;
    for (const PdfReportEntry& entry : report.GetEntries()) {
      lines.push_back(PdfReport::GetText(entry));
    }
    return lines;
  }
};

TEST_F(PdfDocReportTest, IsThatOfTheLastOperation) {
  Make("doc.pdf");
  for (const Operation& operation : Operations()) {
    PdfDoc document = Doc("doc.pdf");
    operation.run(document, Path("out.pdf"), "");
    const std::vector<std::string> first = Lines(document.GetReport());
    EXPECT_THAT(first, Not(IsEmpty())) << operation.name;
    operation.run(document, Path("out.pdf"), "");
    EXPECT_EQ(Lines(document.GetReport()), first) << operation.name;
    document.SetPath(Path("missing.pdf"));
    EXPECT_NE(FailureOf([&] { operation.run(document, Path("out.pdf"), ""); }), Failure());
    EXPECT_THAT(Lines(document.GetReport()), IsEmpty()) << operation.name;
  }
  PdfDoc document = Doc("doc.pdf");
  document.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "");
  document.GetXmpMetaData(Path("a.xmp"));
  EXPECT_THAT(Lines(document.GetReport()), IsEmpty()) << "there is nothing to tell of it";
}

TEST_F(PdfDocReportTest, TellsOfProtectionThatTheOutputLacks) {
  PdfDoc(Make("doc.pdf"), "", true).Lock("pw", Path("locked.pdf"));
  for (const Operation& operation : Operations()) {
    const std::string name = operation.name;
    PdfDoc document = Doc("locked.pdf", "pw");
    operation.run(document, Path("out.pdf"), "");
    std::string line = kProtectionDropped;
    line += name == "Split into parts" ? " (2 times)" : "";
    const bool is_told = name != "Lock" && name != "UnLock";
    EXPECT_EQ(::testing::Matches(Contains(line))(Lines(document.GetReport())), is_told) << name;
    operation.run(document, Path("out.pdf"), "new");
    EXPECT_THAT(Lines(document.GetReport()), Not(Contains(kProtectionDropped))) << name;
  }
}

TEST_F(PdfDocReportTest, TellsOfEveryProtectedInputOfAMerge) {
  PdfDoc(Make("doc.pdf"), "", true).Lock("pw", Path("locked.pdf"));
  const PdfDoc locked = Doc("locked.pdf", "pw");
  PdfReport report;
  PdfDoc::Merge({locked, Doc("doc.pdf"), locked}, Path("out.pdf"), "", &report);
  EXPECT_THAT(Lines(report), Contains(std::string(kProtectionDropped) + " (2 times)"));
  EXPECT_EQ(report.GetEntries().front().source, testing::Backslashes(Path("locked.pdf")));
  PdfDoc::Merge({locked}, Path("out.pdf"), "new", &report);
  EXPECT_THAT(Lines(report), Not(Contains(kProtectionDropped)));
  PdfDoc created(Path("out.pdf"), "", false);
  created.Create(false);
  created.Append(locked);
  EXPECT_THAT(Lines(created.GetReport()), Contains(kProtectionDropped));
}

TEST_F(PdfDocReportTest, HasThePiecesOfTheLastSplit) {
  PdfDoc document(Make("doc.pdf"), "", true);
  EXPECT_THAT(document.GetPieces(), IsEmpty());
  document.Split(2, Path(""), "", "");
  EXPECT_THAT(document.GetPieces(), ElementsAre(Path("doc-01.pdf"), Path("doc-02.pdf")));
  document.Split({PdfPageRange(3, 3), PdfPageRange(1, 2)}, Path(""), "", false, "", "");
  EXPECT_THAT(document.GetPieces(), ElementsAre(Path("doc-3.pdf"), Path("doc-1-2.pdf")));
  document.Split({PdfPageRange(3, 3), PdfPageRange(1, 2)}, Path(""), "", true, "all.pdf", "");
  EXPECT_THAT(document.GetPieces(), ElementsAre(Path("all.pdf")));
  FailureOf([&] {
    document.Split({PdfPageRange(1, 1), PdfPageRange(4, 4)}, Path(""), "", false, "", "");
  });
  EXPECT_THAT(document.GetPieces(), ElementsAre(Path("doc-1.pdf")));
  FailureOf([&] { document.Split(0, Path(""), "", ""); });
  EXPECT_THAT(document.GetPieces(), IsEmpty());
  document.Split(3, Path(""), "", "");
  FailureOf([&] { document.Split({PdfPageRange(4, 4)}, Path(""), "", true, "", ""); });
  EXPECT_THAT(document.GetPieces(), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools
