#include <utility>
#include <vector>

#include "PdfRepairTask.h"
#include "support/DocumentTest.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::Contains;
using ::testing::ElementsAre;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::QpdfComplaints;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

constexpr auto kEngineError = PdfExceptionCode::EngineError;

class PdfRepairTaskTest : public testing::DocumentTest {
 protected:
  PdfRepairTaskTest() { MakePdf("sound.pdf", 3); }

  // A document without a cross-reference.
  void MakeTorn(const std::string& name) const {
    const std::string bytes = TestPdf().Pages(3).Bytes();
    WriteBytes(Path(name), bytes.substr(0, bytes.rfind("xref\n0")));
  }

  PdfRepairTask TaskFor(const std::string& name, const std::string& password = "") const {
    PdfRepairTask task(Doc(name, password));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }

  std::string OutputPath() const { return Path("out/output_repaired_doc.pdf"); }
};

TEST_F(PdfRepairTaskTest, HasDefaults) {
  PdfRepairTask task(Doc("sound.pdf"));
  EXPECT_EQ(task.GetOutName(), "output_repaired_doc.pdf");
  EXPECT_EQ(task.GetErrorsNum(), 0);
  EXPECT_THAT(task.GetErrorsInfo(), IsEmpty());
  EXPECT_EQ(task.GetPdfDocsNum(), 1);
}

TEST_F(PdfRepairTaskTest, IgnoresAnEmptyName) {
  PdfRepairTask task(Doc("sound.pdf"), "");
  EXPECT_EQ(task.GetOutName(), "output_repaired_doc.pdf");
  task.SetOutName("x.pdf");
  task.SetOutName("");
  EXPECT_EQ(task.GetOutName(), "x.pdf");
  EXPECT_EQ(PdfRepairTask(Doc("sound.pdf"), "y.pdf").GetOutName(), "y.pdf");
}

TEST_F(PdfRepairTaskTest, WritesBesideASoundDocumentAndReportsNothing) {
  PdfRepairTask task(Doc("sound.pdf"));
  task.Execute();
  EXPECT_EQ(task.GetErrorsNum(), 0);
  EXPECT_THAT(task.GetReport().GetEntries(), IsEmpty());
  EXPECT_EQ(task.GetOutputPath(), Backslashes(directory_.Path() + "/"));
  EXPECT_EQ(Texts("output_repaired_doc.pdf"), Labels(1, 3));
  EXPECT_NE(ReadBytes(Path("output_repaired_doc.pdf")), ReadBytes(Path("sound.pdf")))
      << "it is written anew all the same";
  EXPECT_FALSE(PdfRepairTask::IsDamaged(Doc("sound.pdf")));
}

TEST_F(PdfRepairTaskTest, PutsADamagedDocumentRight) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.Execute();
  EXPECT_GT(task.GetErrorsNum(), 0);
  EXPECT_THAT(task.GetErrorsInfo(),
              Contains("Objects had to be looked for in the whole file; worked around"));
  EXPECT_EQ(QpdfComplaints(OutputPath()), "");
  EXPECT_EQ(Texts("out/output_repaired_doc.pdf"), Labels(1, 3));
  EXPECT_EQ(task.GetReport().GetEntries().front().kind, PdfReportKind::Damage);
  EXPECT_EQ(task.GetReport().GetEntries().front().outcome, PdfReportOutcome::Kept);
}

TEST_F(PdfRepairTaskTest, TellsWhetherADocumentIsDamaged) {
  MakeTorn("torn.pdf");
  EXPECT_TRUE(PdfRepairTask::IsDamaged(Doc("torn.pdf")));
  std::list<std::string> problems = {"before"};
  EXPECT_TRUE(PdfRepairTask::IsDamaged(Doc("torn.pdf"), problems));
  EXPECT_EQ(problems.front(), "before");
  EXPECT_THAT(problems,
              Contains("Objects had to be looked for in the whole file; can be worked around"));
  EXPECT_THAT(directory_.Names(), ElementsAre("sound.pdf", "torn.pdf"));
}

TEST_F(PdfRepairTaskTest, AddsTheProblemsOfEveryRun) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.Execute();
  const int once = task.GetErrorsNum();
  task.Execute();
  EXPECT_EQ(task.GetErrorsNum(), 2 * once);
}

TEST_F(PdfRepairTaskTest, KeepsTheProblemsItHasListedWhenItFails) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.Execute();
  const std::list<std::string> once = task.GetErrorsInfo();
  EXPECT_FALSE(once.empty());
  task.SetPdfDocs({PdfDoc(Path("missing.pdf"), "", false)});
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_EQ(task.GetErrorsInfo(), once);
  task.ClearPdfDocs();
  EXPECT_THROW(task.Execute(), PdfException);
  EXPECT_EQ(task.GetErrorsInfo(), once);
  EXPECT_EQ(task.GetErrorsNum(), static_cast<int>(once.size()));
}

// One is of the file, one of the tree of pages, one of what a page shows.
TEST_F(PdfRepairTaskTest, LooksAtTheFileItsTreesAndItsPages) {
  const auto document = [](const std::string& kids, const std::string& content) {
    testing::RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R" + kids + "]/Count 1>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Resources<<>>/Contents 4 0 R>>");
    file.Stream(4, "", content);
    return file;
  };
  const std::string sound = document("", "0 0 9 9 re f").Table();
  const std::string of_file = sound.substr(0, sound.rfind("startxref"));
  const std::string of_tree = document(" 3 0 R", "0 0 9 9 re f").Table();
  const std::string of_page = document("", "q 0 0 9 9 re f /No Do").Table();
  WriteBytes(Path("a.pdf"), sound);
  EXPECT_FALSE(PdfRepairTask::IsDamaged(Doc("a.pdf")));
  std::vector<std::list<std::string>> found;
  for (const std::string& bytes : {of_file, of_tree, of_page}) {
    WriteBytes(Path("a.pdf"), bytes);
    EXPECT_TRUE(PdfRepairTask::IsDamaged(Doc("a.pdf"), found.emplace_back()));
  }
  EXPECT_THAT(
      found, ElementsAre(ElementsAre("Byte 411: the end-of-file marker is missing; can be fixed",
                                     "Nothing tells where the cross-reference starts; can be fixed",
                                     "Objects had to be looked for in the whole file; "
                                     "can be worked around"),
                         ElementsAre("The page tree gives the wrong number of pages; can be fixed"),
                         ElementsAre("Page 1: object 3: the content uses a resource that is not "
                                     "named (1 XObject); lost")));
}

TEST_F(PdfRepairTaskTest, CopiesHaveProblemsOfTheirOwn) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.Execute();
  const int count = task.GetErrorsNum();
  PdfRepairTask copy(task);
  copy.Execute();
  EXPECT_EQ(copy.GetErrorsNum(), 2 * count);
  EXPECT_EQ(task.GetErrorsNum(), count);
  PdfRepairTask moved(std::move(copy));
  EXPECT_EQ(moved.GetErrorsNum(), 2 * count);
  moved.SetOutName("x.pdf");
  PdfRepairTask assigned(Doc("sound.pdf"));
  assigned = moved;
  EXPECT_EQ(assigned.GetErrorsInfo(), moved.GetErrorsInfo());
  EXPECT_EQ(assigned.GetOutName(), "x.pdf");
  assigned = PdfRepairTask(task);
  EXPECT_EQ(assigned.GetErrorsInfo(), task.GetErrorsInfo());
  EXPECT_EQ(assigned.GetOutName(), "output_repaired_doc.pdf");
}

TEST_F(PdfRepairTaskTest, WantsOneDocument) {
  const auto expected = [](int count) {
    return Failure(
        PdfExceptionCode::InvalidParameter,
        "Unexpected PDF docs number [" + std::to_string(count) + "], expected single doc at task");
  };
  PdfRepairTask task = TaskFor("sound.pdf");
  task.AddPdfDoc(Doc("sound.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected(2));
  task.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected(0));
  EXPECT_FALSE(Exists(OutputPath()));
}

TEST_F(PdfRepairTaskTest, FailsForAMissingDocument) {
  PdfDoc missing(Path("missing.pdf"), "", false);
  const Failure expected(
      kEngineError, "Unable to open doc [" + Backslashes(Path("missing.pdf")) + "] to be repaired",
      13);
  EXPECT_EQ(FailureOf([&] { PdfRepairTask::IsDamaged(missing); }), expected);
  PdfRepairTask task(missing);
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), expected);
  EXPECT_EQ(task.GetErrorsNum(), 0);
}

TEST_F(PdfRepairTaskTest, NamesTheInputWhenTheOutputCannotBeSaved) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.SetOutName("missing/x.pdf");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), Failure(kEngineError,
                                                        "Unable to generate repaired output doc [" +
                                                            Backslashes(Path("torn.pdf")) + "]",
                                                        14));
  EXPECT_GT(task.GetErrorsNum(), 0);
  EXPECT_THAT(task.GetReport().GetEntries(), IsEmpty());
  task.SetOutName("x.pdf");
  task.Execute();  // what a failure left behind is in nobody's way
  EXPECT_TRUE(Exists(Path("out/x.pdf")));
}

TEST_F(PdfRepairTaskTest, ListsWhatIsHopelessBeforeItFails) {
  WriteBytes(Path("hopeless.pdf"), "%PDF-1.4\n1 0 obj\n(text)\nendobj\n");
  EXPECT_TRUE(PdfRepairTask::IsDamaged(Doc("hopeless.pdf")));
  PdfRepairTask task = TaskFor("hopeless.pdf");
  EXPECT_EQ(FailureOf([&] { task.Execute(); }), Failure(kEngineError,
                                                        "Unable to generate repaired output doc [" +
                                                            Backslashes(Path("hopeless.pdf")) + "]",
                                                        5));
  EXPECT_THAT(task.GetErrorsInfo(), Contains("No page can be found; lost"));
}

TEST_F(PdfRepairTaskTest, NeedsTheRightPassword) {
  testing::EncryptWithQpdf(Path("sound.pdf"), Path("secret.pdf"), "pw", "pw");
  EXPECT_EQ(FailureOf([&] { PdfRepairTask::IsDamaged(Doc("secret.pdf")); }).engine_code, 17);
  PdfRepairTask wrong = TaskFor("secret.pdf", "wrong");
  EXPECT_EQ(FailureOf([&] { wrong.Execute(); }).engine_code, 17);
  EXPECT_FALSE(PdfRepairTask::IsDamaged(Doc("secret.pdf", "pw")));
  PdfRepairTask task = TaskFor("secret.pdf", "pw");
  task.Execute();
  EXPECT_EQ(task.GetErrorsNum(), 0);
  EXPECT_FALSE(testing::QpdfNeedsPassword(OutputPath()));
  EXPECT_EQ(Texts("out/output_repaired_doc.pdf"), Labels(1, 3));
}

TEST_F(PdfRepairTaskTest, EncryptsWithTheOutputPassword) {
  PdfRepairTask task = TaskFor("sound.pdf");
  task.SetOutPassword("new");
  task.Execute();
  const std::string encryption = testing::QpdfEncryption(OutputPath(), "new");
  EXPECT_THAT(encryption, HasSubstr("P = 2052\n"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is owner password"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is user password"));
  EXPECT_EQ(Texts("out/output_repaired_doc.pdf", "new"), Labels(1, 3));
}

TEST_F(PdfRepairTaskTest, ReportsAClaimThatDoesNotSurvive) {
  const std::string packet = testing::TestPacket(testing::ClaimOf("2"));
  TestPdf()
      .Pages(1)
      .Object("packet", "<</Type/Metadata/Length " + std::to_string(packet.size()) +
                            ">>\nstream\n" + packet + "\nendstream")
      .CatalogEntry("/Metadata {{packet}}")
      .Write(Path("claim.pdf"));
  PdfRepairTask task = TaskFor("claim.pdf");
  task.Execute();
  EXPECT_EQ(task.GetErrorsNum(), 0);
  ASSERT_EQ(task.GetReport().GetEntries().size(), 1u);
  EXPECT_EQ(task.GetReport().GetEntries()[0].kind, PdfReportKind::PdfAClaim);
  EXPECT_EQ(task.GetReport().GetEntries()[0].outcome, PdfReportOutcome::Dropped);
}

}  // namespace
}  // namespace TarnixTools
