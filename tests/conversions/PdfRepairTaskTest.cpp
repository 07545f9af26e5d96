#include <utility>

#include "PdfRepairTask.h"
#include "support/DocumentTest.h"
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

TEST_F(PdfRepairTaskTest, CopiesHaveProblemsOfTheirOwn) {
  MakeTorn("torn.pdf");
  PdfRepairTask task = TaskFor("torn.pdf");
  task.Execute();
  const int count = task.GetErrorsNum();
  PdfRepairTask copy(task);
  copy.Execute();
  EXPECT_EQ(copy.GetErrorsNum(), 2 * count);
  EXPECT_EQ(task.GetErrorsNum(), count);
  const PdfRepairTask moved(std::move(copy));
  EXPECT_EQ(moved.GetErrorsNum(), 2 * count);
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
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).engine_code, 5);
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
  EXPECT_THAT(testing::QpdfEncryption(OutputPath(), "new"), HasSubstr("P = 2052"));
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
