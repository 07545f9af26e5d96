#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "Img2PdfTask.h"
#include "Pdf2ImgTask.h"
#include "Pdf2OfficeTask.h"
#include "support/DocumentTest.h"
#include "support/NoThreads.h"
#include "support/TestPdf.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using testing::TestPdf;

// An image that covers the page, and no text.
constexpr const char* kScan = "q 612 0 0 792 0 0 cm BI /W 1 /H 1 /CS /G /BPC 8 /F /AHx ID 80> EI Q";

class Pdf2OfficeTaskTest : public testing::DocumentTest {
 protected:
  // Small pages of text, those with these numbers scanned.
  PdfDoc MixedDocument(int page_count, const std::vector<int>& scanned) const {
    TestPdf pdf;
    for (int number = 1; number <= page_count; ++number) {
      pdf.Page(std::string(80, 'a')).Size(120, 80);
      if (std::find(scanned.begin(), scanned.end(), number) != scanned.end()) {
        pdf.Content(kScan);
      }
    }
    return {pdf.Write(Path("mixed.pdf")), "", true};
  }

  // Two pages, each with a table in ruled lines.
  PdfDoc TablesDocument() const {
    std::string content;
    for (int line = 0; line <= 3; ++line) {
      content += "100 " + std::to_string(700 - 20 * line) + " m 400 " +
                 std::to_string(700 - 20 * line) + " l S ";
      content += std::to_string(100 + 100 * line) + " 700 m " + std::to_string(100 + 100 * line) +
                 " 640 l S ";
    }
    for (int cell = 0; cell < 9; ++cell) {
      content += "BT /F1 10 Tf " + std::to_string(110 + 100 * (cell % 3)) + " " +
                 std::to_string(685 - 20 * (cell / 3)) + " Td (" + std::to_string(cell) +
                 ") Tj ET ";
    }
    TestPdf pdf;
    pdf.Page().Content(content).Page().Content(content);
    return {pdf.Write(Path("tables.pdf")), "", true};
  }

  bool IsThere(const std::string& name) const { return std::filesystem::exists(Path(name)); }

  // Whether the file is a package with this part.
  bool HasPart(const std::string& name, const std::string& part) const {
    return testing::ReadBytes(Path(name)).find(part) != std::string::npos;
  }
};

TEST_F(Pdf2OfficeTaskTest, HasDefaults) {
  Pdf2OfficeTask task;
  EXPECT_EQ(task.GetConversionType(), Pdf2OfficeDocx);
  EXPECT_EQ(task.GetOutName(), "out_file");
  EXPECT_EQ(task.GetTimeout(), 60);
  EXPECT_TRUE(task.GetScannedPages().empty());
  task.SetOutName("");
  EXPECT_EQ(task.GetOutName(), "");
  Pdf2OfficeTask of_document(PdfDoc(MakePdf("a.pdf", 1), "", true));
  EXPECT_EQ(of_document.GetOutName(), "out_file");
  EXPECT_EQ(of_document.GetTimeout(), 60);
  EXPECT_EQ(of_document.GetPdfDocsNum(), 1);
}

TEST_F(Pdf2OfficeTaskTest, IsAValue) {
  Pdf2OfficeTask task(MixedDocument(1, {1}));
  task.SetConversionType(Pdf2OfficePptx);
  task.SetOutName("x");
  task.SetTimeout(77);
  std::vector<int> scanned;
  task.CheckScan(scanned);
  task.SetOcrEnabled(false);
  const auto expect_alike = [&](Pdf2OfficeTask copy) {
    EXPECT_EQ(copy.GetConversionType(), Pdf2OfficePptx);
    EXPECT_EQ(copy.GetOutName(), "x");
    EXPECT_EQ(copy.GetTimeout(), 77);
    EXPECT_THAT(copy.GetScannedPages(), ElementsAre(1));
    EXPECT_EQ(copy.GetPdfDocsNum(), 1);
    EXPECT_TRUE(copy.CheckScan(scanned));
    EXPECT_THAT(scanned, ElementsAre(1, 1));
  };
  Pdf2OfficeTask other;
  other = task;
  expect_alike(task);
  expect_alike(other);
  other = Pdf2OfficeTask();
  EXPECT_EQ(other.GetTimeout(), 60);
  other = Pdf2OfficeTask(task);
  expect_alike(other);
  expect_alike(Pdf2OfficeTask(std::move(other)));
  Pdf2OfficeTask(task).Execute();  // it was looked at, and has its extension
  EXPECT_TRUE(HasPart("x.pptx", "ppt/slides/slide1.xml"));
}

TEST_F(Pdf2OfficeTaskTest, NeedsOneDocument) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.AddPdfDoc(Doc("a.pdf"));
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::InvalidParameter, "Invalid number of PDF docs [2] (1 expected)"));
  std::vector<int> scanned = {7};
  EXPECT_EQ(FailureOf([&] { task.CheckScan(scanned); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid number of PDF docs to check scan [2] (1 expected)"));
  task.ClearPdfDocs();
  EXPECT_EQ(
      FailureOf([&] { task.Execute(); }),
      Failure(PdfExceptionCode::InvalidParameter, "Invalid number of PDF docs [0] (1 expected)"));
  scanned = {7};
  EXPECT_EQ(FailureOf([&] { task.CheckScan(scanned); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid number of PDF docs to check scan [0] (1 expected)"));
  EXPECT_TRUE(scanned.empty());
}

TEST_F(Pdf2OfficeTaskTest, WritesBesideTheInput) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 2), "", true));
  task.Execute();
  EXPECT_TRUE(HasPart("out_file.docx", "word/document.xml"));
  EXPECT_TRUE(task.GetScannedPages().empty());
}

TEST_F(Pdf2OfficeTaskTest, KeepsTheExtensionOfAnEarlierType) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetConversionType(Pdf2OfficeXlsx);
  task.SetConversionType(Pdf2OfficeDocx);
  task.Execute();
  EXPECT_TRUE(HasPart("out_file.xlsx", "word/document.xml"));
  EXPECT_FALSE(IsThere("out_file.docx"));
  task.SetConversionType(Pdf2OfficePptx);
  task.SetConversionType(Pdf2OfficeDocx);
  task.Execute();
  EXPECT_TRUE(HasPart("out_file.pptx", "word/document.xml"));
}

TEST_F(Pdf2OfficeTaskTest, MakesSlides) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 2), "", true));
  task.SetConversionType(Pdf2OfficePptx);
  task.SetOutName("slides");
  task.Execute();
  EXPECT_TRUE(HasPart("slides.pptx", "ppt/slides/slide2.xml"));
}

// Two tables, for each of which there is a sheet.
TEST_F(Pdf2OfficeTaskTest, MakesSheets) {
  Pdf2OfficeTask task(TablesDocument());
  task.SetConversionType(Pdf2OfficeXlsx);
  task.Execute();
  EXPECT_TRUE(HasPart("out_file.xlsx", "xl/worksheets/sheet2.xml"));
  EXPECT_FALSE(HasPart("out_file.xlsx", "xl/worksheets/sheet3.xml"));
}

TEST_F(Pdf2OfficeTaskTest, ReplacesAnEarlierOutput) {
  for (const auto& [type, name, part] :
       {std::tuple(Pdf2OfficeDocx, "out_file.docx", "word/document.xml"),
        std::tuple(Pdf2OfficeXlsx, "out_file.xlsx", "xl/workbook.xml"),
        std::tuple(Pdf2OfficePptx, "out_file.pptx", "ppt/presentation.xml")}) {
    testing::WriteBytes(Path(name), "older");
    Pdf2OfficeTask task(TablesDocument());
    task.SetConversionType(type);
    task.Execute();
    EXPECT_TRUE(HasPart(name, part));
  }
}

TEST_F(Pdf2OfficeTaskTest, WritesToTheOutputDirectoryUnderAnyName) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetOutputPath(directory_.MakeDir("out"));
  task.SetOutName("");
  task.Execute();
  task.SetOutName("a.b");
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre(".docx", "a.b.docx"));
  EXPECT_EQ(task.GetOutputPath(), testing::Backslashes(Path("out/")));
}

TEST_F(Pdf2OfficeTaskTest, NeedsTheRightPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  TablesDocument();
  testing::EncryptWithQpdf(Path("tables.pdf"), Path("secret.pdf"), "pw", "owner");
  std::vector<int> scanned;
  for (const std::string password : {"", "wrong"}) {
    const Failure expected(PdfExceptionCode::InternalError,
                           password.empty() ? "document needs a password" : "password is wrong");
    Pdf2OfficeTask task(Doc("secret.pdf", password));
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected);
    EXPECT_EQ(FailureOf([&] { task.CheckScan(scanned); }), expected);
  }
  for (const Pdf2OfficeConversion type : {Pdf2OfficeDocx, Pdf2OfficeXlsx, Pdf2OfficePptx}) {
    Pdf2OfficeTask task(Doc("secret.pdf", "pw"));
    task.SetConversionType(type);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }), Failure());
    EXPECT_FALSE(task.CheckScan(scanned));
  }
  EXPECT_THAT(directory_.Names(), ElementsAre("out_file.docx", "out_file.pptx", "out_file.xlsx",
                                              "secret.pdf", "tables.pdf"));
}

// In place of the document that was looked at there is another one when it is converted.
// The document is replaced while the task is at work, in one step, as it may be about to be read.
TEST_F(Pdf2OfficeTaskTest, TellsWhyADocumentCannotBeConvertedAnyMore) {
  TARNIX_NEED_PROGRAM("qpdf");
  const auto failure_with = [this](const std::string& other) {
    Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
    task.SetProgress([&](const std::string&, std::int64_t, std::int64_t) {
      if (other.empty()) {
        std::filesystem::remove(Path("a.pdf"));
      } else {
        testing::WriteBytes(Path("new.pdf"), testing::ReadBytes(Path(other)));
        std::filesystem::rename(Path("new.pdf"), Path("a.pdf"));
      }
      return true;
    });
    return FailureOf([&] { task.Execute(); });
  };
  MakePdf("plain.pdf", 1);
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("secret.pdf"), "pw", "owner");
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(failure_with("secret.pdf"),
            Failure(PdfExceptionCode::PasswordError,
                    "PDF to office conversion failed, has copy protection/password"));
  EXPECT_EQ(failure_with("text.pdf"),
            Failure(PdfExceptionCode::EngineError,
                    "PDF to office conversion failed, unexpected error(4)", 4));
  EXPECT_EQ(failure_with(""), Failure(PdfExceptionCode::EngineError,
                                      "PDF to office conversion failed, unexpected error(3)", 3));
}

// In a process of its own, for all later conversions write a log.
TEST_F(Pdf2OfficeTaskTest, WritesALogOnceItIsAskedFor) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetOutputPath(Path("nowhere"));
  const auto fail_each_way = [&] {
    std::filesystem::current_path(directory_.MakeDir("here"));
    task.SetDebug(false);
    FailureOf([&] { task.Execute(); });
    const bool has_log = std::filesystem::exists("out.log");
    task.SetDebug(true);
    FailureOf([&] { task.Execute(); });
    std::filesystem::copy_file("out.log", "first.log");
    task.SetDebug(false);
    FailureOf([&] { task.Execute(); });
    std::_Exit(has_log ? 1 : 0);
  };
  EXPECT_EXIT(fail_each_way(), ::testing::ExitedWithCode(0), "");
  EXPECT_THAT(directory_.Names("here"), ElementsAre("first.log", "out.log"));
  const std::string line = testing::ReadBytes(Path("here/first.log"));
  EXPECT_THAT(line, ::testing::HasSubstr("the output cannot be made"));
  EXPECT_GT(testing::ReadBytes(Path("here/out.log")).size(), line.size());
}

TEST_F(Pdf2OfficeTaskTest, RefusesTypesThatAreNone) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetConversionType(static_cast<Pdf2OfficeConversion>(7));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::EngineError, "Invalid PDF2OFFICE conversion type [7]"));
}

TEST_F(Pdf2OfficeTaskTest, TellsScannedPagesAgainAndAgain) {
  Pdf2OfficeTask task(MixedDocument(5, {2, 5}));
  std::vector<int> scanned;
  EXPECT_TRUE(task.CheckScan(scanned));
  EXPECT_THAT(scanned, ElementsAre(2, 5));
  EXPECT_TRUE(task.CheckScan(scanned));
  EXPECT_THAT(scanned, ElementsAre(2, 5, 2, 5));
  EXPECT_FALSE(IsThere("out_file.docx"));
  EXPECT_EQ(task.GetOutputPath(), testing::Backslashes(Path("")));
  task.SetOcrEnabled(false);  // some pages are not scanned
  task.Execute();
  EXPECT_THAT(task.GetScannedPages(), ElementsAre(2, 5, 2, 5, 2, 5));
  EXPECT_TRUE(IsThere("out_file.docx"));
}

// Whether a document that is scanned throughout is taken is all that the setting is about.
TEST_F(Pdf2OfficeTaskTest, RecognisesScannedPagesAmongOthersInAnyCase) {
  std::string content = "BT /F1 16 Tf 20 TL 20 100 Td";
  for (const char* const line : {"The first of four lines", "with several words each,",
                                 "as letters and reports", "have them on a page."}) {
    content += " (" + std::string(line) + ") '";
  }
  TestPdf().Page().Size(260, 120).Content(content + " ET").Write(Path("w.pdf"));
  Pdf2ImgTask picture(Doc("w.pdf"));
  picture.SetDpi(150);
  picture.Execute();
  Img2PdfTask scan(Path("w-page-0001.jpg"));
  scan.SetOutPdfName("scan.pdf");
  scan.Execute();
  PdfDoc::Merge({Doc("w.pdf"), Doc("scan.pdf")}, Path("mixed.pdf"), "");
  Pdf2OfficeTask task(Doc("mixed.pdf"));
  task.Execute();
  EXPECT_THAT(task.GetScannedPages(), ElementsAre(2));
  const std::string expected = testing::ReadBytes(Path("out_file.docx"));
  task.SetOcrEnabled(false);
  task.Execute();
  EXPECT_TRUE(testing::ReadBytes(Path("out_file.docx")) == expected);
}

TEST_F(Pdf2OfficeTaskTest, TakesDocumentsThatAreScannedInPart) {
  for (const int scanned : {1, 2}) {
    Pdf2OfficeTask task(MixedDocument(2, {scanned}));
    task.SetOcrEnabled(false);
    task.Execute();
    EXPECT_THAT(task.GetScannedPages(), ElementsAre(scanned));
  }
}

// Looking at them is what counts, even where there is nothing to look at.
TEST_F(Pdf2OfficeTaskTest, TakesScannedDocumentsAfterALookThatFails) {
  const PdfDoc document = MixedDocument(1, {1});
  Pdf2OfficeTask task(document);
  task.SetOcrEnabled(false);
  task.ClearPdfDocs();
  std::vector<int> scanned;
  EXPECT_THROW(task.CheckScan(scanned), PdfException);
  task.AddPdfDoc(document);
  const Pdf2OfficeTask copy = task;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), Failure());
  EXPECT_EQ(FailureOf([&] { Pdf2OfficeTask(copy).Execute(); }), Failure());
}

TEST_F(Pdf2OfficeTaskTest, FailsOnDocumentsWithoutPages) {
  TestPdf().Write(Path("empty.pdf"));
  Pdf2OfficeTask task(Doc("empty.pdf"));
  std::vector<int> scanned;
  task.SetOcrEnabled(false);
  const Failure expected(PdfExceptionCode::InternalError, "Unable to obtain input PDF pages range");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected);
  EXPECT_EQ(FailureOf([&] { task.CheckScan(scanned); }), expected);
}

TEST_F(Pdf2OfficeTaskTest, TellsThatNoPageIsScanned) {
  Pdf2OfficeTask task(MixedDocument(2, {}));
  std::vector<int> scanned = {1};
  EXPECT_FALSE(task.CheckScan(scanned));
  EXPECT_TRUE(scanned.empty());
}

TEST_F(Pdf2OfficeTaskTest, RefusesScannedDocumentsUntilTheyWereLookedAt) {
  Pdf2OfficeTask task(MixedDocument(1, {1}));
  task.SetOcrEnabled(false);
  const Failure failure = FailureOf([&] { task.Execute(); });
  EXPECT_EQ(failure, Failure(PdfExceptionCode::AllPagesScanned,
                             "Input PDF [" + testing::Backslashes(Path("mixed.pdf")) +
                                 "] has all its pages scanned"));
  EXPECT_THAT(task.GetScannedPages(), ElementsAre(1));
  std::vector<int> scanned;
  task.CheckScan(scanned);
  EXPECT_THAT(scanned, ElementsAre(1, 1));
  task.Execute();
  EXPECT_TRUE(IsThere("out_file.docx"));
}

// So many that no machine converts them before the task looks at the time.
constexpr int kManyPages = 1000;

TEST_F(Pdf2OfficeTaskTest, DoesNotWaitWithoutTime) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", kManyPages), "", true));
  task.SetTimeout(0);
  const Failure failure = FailureOf([&] { task.Execute(); });
  EXPECT_EQ(failure, Failure(PdfExceptionCode::ConversionTimeout,
                             "PDF to office timeout of [0] seconds, expired for [" +
                                 testing::Backslashes(Path("a.pdf")) + "]"));
  EXPECT_FALSE(IsThere("out_file.docx"));
}

TEST_F(Pdf2OfficeTaskTest, ThreadsOutliveTheirTasks) {
  const PdfDoc document(MakePdf("a.pdf", kManyPages), "", true);
  for (int i = 0; i < 3; ++i) {
    Pdf2OfficeTask task(document);
    task.SetTimeout(0);
    EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::ConversionTimeout);
  }
  EXPECT_FALSE(IsThere("out_file.docx"));
}

TEST_F(Pdf2OfficeTaskTest, TellsThatThereAreNoTables) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetConversionType(Pdf2OfficeXlsx);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::NoTablesFound,
                    "PDF to office conversion failed, no tables to extract"));
  EXPECT_FALSE(IsThere("out_file.xlsx"));
}

TEST_F(Pdf2OfficeTaskTest, FailsOnWhatIsNoDocument) {
  testing::WriteBytes(Path("a.pdf"), "no document");
  Pdf2OfficeTask task(Doc("a.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InternalError, "no PDF object in the file"));
  std::vector<int> scanned;
  EXPECT_EQ(FailureOf([&] { task.CheckScan(scanned); }),
            Failure(PdfExceptionCode::InternalError, "no PDF object in the file"));
  Pdf2OfficeTask missing(PdfDoc(Path("missing.pdf"), "", false));
  EXPECT_EQ(FailureOf([&] { missing.Execute(); }),
            Failure(PdfExceptionCode::InternalError,
                    "the document cannot be opened: No such file or directory"));
}

TEST_F(Pdf2OfficeTaskTest, TellsWhatCannotBeWritten) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  task.SetOutputPath(Path("nowhere"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::EngineError,
                    "PDF to office conversion failed, unexpected error(5)", 5));
}

TEST_F(Pdf2OfficeTaskTest, TellsThatThereIsNoThread) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 1), "", true));
  const testing::NoThreads none;
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InternalError, "Unable to initialize conversion thread"));
  EXPECT_FALSE(IsThere("out_file.docx"));
}

TEST_F(Pdf2OfficeTaskTest, TellsHowFarItIs) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 3), "", true));
  std::pair<std::int64_t, std::int64_t> last;
  task.SetProgress([&](const std::string& job, std::int64_t done, std::int64_t of) {
    last = {done, of};
    return job == "office";
  });
  task.Execute();
  EXPECT_EQ(last, std::pair(std::int64_t{3}, std::int64_t{3}));
  EXPECT_EQ(task.GetWrittenFiles(),
            std::vector<std::string>{testing::Backslashes(Path("out_file.docx"))});
}

TEST_F(Pdf2OfficeTaskTest, TellsWhatPagesHaveLost) {
  TestPdf pdf;
  pdf.Page("Sound").Page().Content("/X Do").Object(
      "x",
      "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]/Filter/FlateDecode/Length 4>>stream\nabcd\n"
      "endstream");
  pdf.InheritedEntry("/Resources<</XObject<</X {{x}}>>>>");
  Pdf2OfficeTask task(PdfDoc(pdf.Write(Path("torn.pdf")), "", true));
  task.Execute();
  EXPECT_THAT(task.GetReport().GetEntries(),
              ElementsAre(PdfReportEntry{
                  .kind = PdfReportKind::Damage,
                  .outcome = PdfReportOutcome::Dropped,
                  .count = 1,
                  .page = 2,
                  .reason = "something of the page cannot be read, or is too much"}));
}

TEST_F(Pdf2OfficeTaskTest, TellsWhichPagesAreTooLarge) {
  TestPdf pdf;
  pdf.Page("Sheet").Page("Plan").NoMediaBox().PageEntry("/MediaBox[0 0 3168 1000]");
  Pdf2OfficeTask task(PdfDoc(pdf.Write(Path("plan.pdf")), "", true));
  task.Execute();
  const PdfReportEntry expected = {.kind = PdfReportKind::PageSize,
                                   .outcome = PdfReportOutcome::Replaced,
                                   .count = 1,
                                   .page = 2,
                                   .reason = "larger than a page can be there"};
  EXPECT_THAT(task.GetReport().GetEntries(), ElementsAre(expected));
  EXPECT_EQ(PdfReport::GetText(expected), "1 page size replaced: larger than a page can be there");
  task.SetConversionType(Pdf2OfficePptx);
  task.Execute();
  EXPECT_THAT(task.GetReport().GetEntries(), ElementsAre(expected));
}

TEST_F(Pdf2OfficeTaskTest, TellsThatFontsDoNotTellTheirText) {
  TestPdf pdf;
  pdf.Page("Sound").Page().Content("BT /F 10 Tf 100 700 Td (" + std::string(20, 'A') + ") Tj ET");
  pdf.InheritedEntry(
      "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Own"
      "/Encoding<</Differences[2/g18 65/g19]>>>>>>>>");
  Pdf2OfficeTask task(PdfDoc(pdf.Write(Path("numbers.pdf")), "", true));
  task.SetOcrEnabled(false);
  task.Execute();
  EXPECT_THAT(
      task.GetReport().GetEntries(),
      ElementsAre(PdfReportEntry{.kind = PdfReportKind::ScannedText,
                                 .outcome = PdfReportOutcome::Dropped,
                                 .count = 1,
                                 .page = 2,
                                 .reason = "the fonts of the page do not tell what its text is"}));
}

TEST_F(Pdf2OfficeTaskTest, MakesSlidesAsLargeAsPagesThatAreALittleLarger) {
  TestPdf pdf;
  pdf.Page("Letter").Page("A4").NoMediaBox().PageEntry("/MediaBox[0 0 595 842]");
  Pdf2OfficeTask task(PdfDoc(pdf.Write(Path("sizes.pdf")), "", true));
  task.SetConversionType(Pdf2OfficePptx);
  task.Execute();
  EXPECT_THAT(task.GetReport().GetEntries(), ElementsAre());
}

TEST_F(Pdf2OfficeTaskTest, TellsWhatHasNoPlaceInOfficeDocuments) {
  TestPdf pdf;
  pdf.Page("Text").Object("field", "<</FT/Tx/T(name)/V(x)>>").Object("file", "<</F(a)>>");
  pdf.CatalogEntry(
      "/AcroForm<</Fields[{{field}}]>>/Names<</EmbeddedFiles<</Names[(a){{file}}]>>>>");
  Pdf2OfficeTask task(PdfDoc(pdf.Write(Path("form.pdf")), "", true));
  task.Execute();
  std::vector<std::string> lines;
  for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
    lines.push_back(PdfReport::GetText(entry));
  }
  EXPECT_THAT(lines, ElementsAre("1 form field dropped: what it shows is text now",
                                 "1 attachment dropped: Office documents have none"));
}

TEST_F(Pdf2OfficeTaskTest, EndsWithWhatItsListenerThrows) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 3), "", true));
  task.SetProgress([](const std::string&, std::int64_t, std::int64_t) -> bool {
    throw std::length_error("enough");
  });
  EXPECT_THROW(task.Execute(), std::length_error);
}

TEST_F(Pdf2OfficeTaskTest, IsCancelledByTheHost) {
  Pdf2OfficeTask task(PdfDoc(MakePdf("a.pdf", 3), "", true));
  task.SetProgress([](const std::string&, std::int64_t, std::int64_t) { return false; });
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InternalError, "Cancelled by the host"));
  EXPECT_FALSE(IsThere("out_file.docx"));
  EXPECT_TRUE(task.GetWrittenFiles().empty());
}

}  // namespace
}  // namespace TarnixTools
