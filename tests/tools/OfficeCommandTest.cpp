// tarnix office and tarnix scan-check.
#include "tools/CliTest.h"

namespace TarnixTools::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class OfficeCommand : public CliTest {
 protected:
  static constexpr const char* kScan =
      "q 612 0 0 792 0 0 cm BI /W 1 /H 1 /CS /G /BPC 8 /F /AHx ID 80> EI Q";

  // Two pages, the second of which is an image.
  void WriteMixed(const std::string& name) const {
    TestPdf().Page(std::string(80, 'a')).Page().Content(kScan).Write(Path(name));
  }
};

TEST_F(OfficeCommand, WritesDocuments) {
  WritePdf("doc.pdf", 2);
  EXPECT_EQ(Run({"office", "doc.pdf"}).out, "doc.docx\n");
  EXPECT_THAT(ReadBytes(Path("doc.docx")), StartsWith("PK"));
  EXPECT_EQ(Run({"office", "doc.pdf", "--to", "pptx", "-o", "out", "--name", "a.pptx"}).out,
            "out/a.pptx\n");
  EXPECT_EQ(Run({"office", "doc.pdf", "-o", "out/b.docx"}).out, "out/b.docx\n");
  EXPECT_EQ(ReadBytes(Path("out/b.docx")), ReadBytes(Path("doc.docx")));
}

TEST_F(OfficeCommand, TellsThatThereAreNoTables) {
  WritePdf("doc.pdf", 1);
  ExpectFailure(Run({"office", "doc.pdf", "--to", "xlsx"}), 22,
                "NoTablesFound: PDF to office conversion failed, no tables to extract");
  EXPECT_FALSE(HasFile("doc.xlsx"));
}

TEST_F(OfficeCommand, KeepsTheTime) {
  WritePdf("doc.pdf", 30);
  EXPECT_EQ(Run({"office", "doc.pdf", "--timeout", "0"}).status, 21);
  EXPECT_FALSE(HasFile("doc.docx"));
  EXPECT_EQ(Run({"office", "doc.pdf", "--timeout", "-1"}).status, 2);
}

TEST_F(OfficeCommand, NeedsTheRightPassword) {
  WriteProtectedPdf("secret.pdf", "pw");
  EXPECT_EQ(Run({"office", "secret.pdf"}).status, 11);
  EXPECT_FALSE(HasFile("secret.docx"));
  const RunResult result = Run({"office", "secret.pdf", "--password", "pw"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.err,
              HasSubstr("protection dropped: the input is protected, the output is not"));
  EXPECT_EQ(Run({"scan-check", "secret.pdf"}).status, 11);
}

TEST_F(OfficeCommand, RefusesWhatIsScannedThroughoutWithoutRecognition) {
  TestPdf().Page().Content(kScan).Write(Path("scan.pdf"));
  ExpectFailure(Run({"office", "scan.pdf", "--no-ocr"}), 20,
                "AllPagesScanned: Input PDF [scan.pdf] has all its pages scanned");
  EXPECT_FALSE(HasFile("scan.docx"));
}

TEST_F(OfficeCommand, TellsScannedPages) {
  WriteMixed("mixed.pdf");
  const RunResult result = Run({"scan-check", "mixed.pdf"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "scanned pages: 2\n");
  EXPECT_EQ(RunJson({"office", "mixed.pdf", "--no-ocr"})["scannedPages"], Json({2}));
  WritePdf("doc.pdf", 1);
  EXPECT_EQ(Run({"scan-check", "doc.pdf"}).out, "no page is scanned\n");
  EXPECT_EQ(RunJson({"scan-check", "doc.pdf"})["scannedPages"], Json::array());
}

}  // namespace
}  // namespace TarnixTools::testing
