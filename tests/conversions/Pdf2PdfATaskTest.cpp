// Pdf2PdfATask, and PdfDoc::Transform with a transformation of type PdfA.
#include <algorithm>

#include "Pdf2PdfATask.h"
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using testing::RawPdf;
using testing::ReadBytes;
using testing::WriteBytes;

class Pdf2PdfATaskTest : public testing::DocumentTest {
 protected:
  // A document with an empty page and a script that PDF/A does not allow.
  std::string MakeDocument(const std::string& name = "doc.pdf") const {
    return WriteBytes(Path(name),
                      RawPdf()
                          .Object(1,
                                  "<</Type/Catalog/Pages 2 0 R/OpenAction<</S/JavaScript"
                                  "/JS(app.alert\\(1\\))>>>>")
                          .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                          .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>")
                          .Object(4, "<</Title(A title)/Author(Ada)>>")
                          .Table("/Root 1 0 R/Info 4 0 R"));
  }

  Pdf2PdfATask TaskFor(const std::string& path, PdfCompliance level) const {
    Pdf2PdfATask task(PdfDoc(path, "", true));
    task.SetCompliance(level);
    return task;
  }
};

TEST_F(Pdf2PdfATaskTest, HasDefaults) {
  Pdf2PdfATask task(PdfDoc(MakeDocument(), "", true));
  EXPECT_EQ(task.GetOutName(), "output_pdfa_doc.pdf");
  EXPECT_EQ(task.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(task.GetDowngrade());
  EXPECT_EQ(Pdf2PdfATask(Doc("doc.pdf"), "").GetOutName(), "output_pdfa_doc.pdf");
  EXPECT_EQ(Pdf2PdfATask(Doc("doc.pdf"), "a.pdf").GetOutName(), "a.pdf");
  task.SetOutName("");
  EXPECT_EQ(task.GetOutName(), "output_pdfa_doc.pdf");
  task.SetDowngrade(true);
  task.SetCompliance(PdfCompliance::PdfA1B);
  const Pdf2PdfATask copy = task;
  EXPECT_EQ(copy.GetCompliance(), PdfCompliance::PdfA1B);
  EXPECT_TRUE(copy.GetDowngrade());
}

TEST_F(Pdf2PdfATaskTest, NeedsOneDocument) {
  Pdf2PdfATask task(PdfDoc(MakeDocument(), "", true));
  task.AddPdfDoc(Doc("doc.pdf"));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [2], expected single doc at task"));
  task.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task.Execute(); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unexpected PDF docs number [0], expected single doc at task"));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
}

TEST_F(Pdf2PdfATaskTest, WritesAValidDocument) {
  for (const PdfCompliance level : {PdfCompliance::PdfA1B, PdfCompliance::PdfA2B,
                                    PdfCompliance::PdfA2U, PdfCompliance::PdfA3B}) {
    Pdf2PdfATask task = TaskFor(MakeDocument(), level);
    task.Execute();
    EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "output_pdfa_doc.pdf"));
    PdfDoc output = Doc("output_pdfa_doc.pdf");
    EXPECT_EQ(output.GetPdfaCompliance(), level);
    EXPECT_TRUE(output.ValidatePdfA());
    EXPECT_THAT(output.GetFindings(), IsEmpty());
    EXPECT_FALSE(task.GetReport().GetEntries().empty()) << "the script is left out";
  }
}

TEST_F(Pdf2PdfATaskTest, WritesToTheOutputDirectoryOrBesideTheDocument) {
  Pdf2PdfATask task = TaskFor(MakeDocument(), PdfCompliance::PdfA2B);
  task.SetOutputPath(directory_.MakeDir("out"));
  task.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("output_pdfa_doc.pdf"));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out"));
  EXPECT_EQ(task.GetOutputPath(), testing::Backslashes(Path("out/")));
  Pdf2PdfATask beside = TaskFor(Path("doc.pdf"), PdfCompliance::PdfA2B);
  beside.GetOutName() = "a.pdf";
  beside.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "doc.pdf", "out"));
  EXPECT_EQ(beside.GetOutputPath(), testing::Backslashes(Path("")));
}

TEST_F(Pdf2PdfATaskTest, IsAValue) {
  Pdf2PdfATask task(PdfDoc(MakeDocument(), "", true), "x.pdf");
  task.SetCompliance(PdfCompliance::PdfA3B);
  task.SetDowngrade(true);
  const auto expect_alike = [](Pdf2PdfATask copy) {
    EXPECT_EQ(copy.GetOutName(), "x.pdf");
    EXPECT_EQ(copy.GetCompliance(), PdfCompliance::PdfA3B);
    EXPECT_TRUE(copy.GetDowngrade());
    EXPECT_EQ(copy.GetPdfDocsNum(), 1);
  };
  Pdf2PdfATask other(Doc("doc.pdf"));
  other = task;
  expect_alike(other);
  expect_alike(task);
  other = Pdf2PdfATask(Doc("doc.pdf"));
  EXPECT_EQ(other.GetCompliance(), PdfCompliance::None);
  EXPECT_FALSE(other.GetDowngrade());
  other = Pdf2PdfATask(task);
  expect_alike(other);
  other.SetDowngrade(false);
  EXPECT_FALSE(other.GetDowngrade());
}

TEST_F(Pdf2PdfATaskTest, ChoosesALevelByItself) {
  TaskFor(MakeDocument(), PdfCompliance::None).Execute();
  PdfDoc output = Doc("output_pdfa_doc.pdf");
  EXPECT_TRUE(output.ValidatePdfA());
}

TEST_F(Pdf2PdfATaskTest, MayWriteOverItsInput) {
  Pdf2PdfATask task = TaskFor(MakeDocument(), PdfCompliance::PdfA2B);
  task.SetOutName("doc.pdf");
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
  EXPECT_TRUE(Doc("doc.pdf").ValidatePdfA());
}

TEST_F(Pdf2PdfATaskTest, LeavesFilesOfOthersAlone) {
  WriteBytes(Path("pdfa_metadata.xmp"), "mine");
  WriteBytes(Path("out.pdf_out.log"), "mine");
  WriteBytes(Path("out.pdftmp.pdf"), "mine");
  WriteBytes(Path("out.pdf"), "older");
  Pdf2PdfATask task = TaskFor(MakeDocument(), PdfCompliance::PdfA2B);
  task.SetOutName("out.pdf");
  task.Execute();
  EXPECT_TRUE(Doc("out.pdf").ValidatePdfA());
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out.pdf", "out.pdf_out.log",
                                              "out.pdftmp.pdf", "pdfa_metadata.xmp"));
  EXPECT_EQ(ReadBytes(Path("pdfa_metadata.xmp")), "mine");
  EXPECT_EQ(ReadBytes(Path("out.pdf_out.log")), "mine");
  EXPECT_EQ(ReadBytes(Path("out.pdftmp.pdf")), "mine");
}

TEST_F(Pdf2PdfATaskTest, LeavesNothingBehindWhenItFails) {
  WriteBytes(Path("text.pdf"), "no document");
  WriteBytes(Path("output_pdfa_doc.pdf"), "older");
  const Failure failure =
      FailureOf([&] { TaskFor(Path("text.pdf"), PdfCompliance::PdfA2B).Execute(); });
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_THAT(failure.message, ::testing::StartsWith("Conversion to PDF/A failed, error [0x"));
  EXPECT_THAT(directory_.Names(), ElementsAre("output_pdfa_doc.pdf", "text.pdf"));
  EXPECT_EQ(ReadBytes(Path("output_pdfa_doc.pdf")), "older");
}

TEST_F(Pdf2PdfATaskTest, GoesOnWithoutAPacketThatIsNone) {
  const char* const packets[] = {"no packet", "<rdf:RDF",
                                 "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"};
  for (const char* packet : packets) {
    WriteBytes(Path("doc.pdf"), RawPdf()
                                    .Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 5 0 R>>")
                                    .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                                    .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
                                    .Stream(5, "/Type/Metadata/Subtype/XML", packet)
                                    .Table());
    Pdf2PdfATask task = TaskFor(Path("doc.pdf"), PdfCompliance::PdfA2B);
    task.Execute();
    EXPECT_TRUE(Doc("output_pdfa_doc.pdf").ValidatePdfA());
    const auto& entries = task.GetReport().GetEntries();
    EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), [](const PdfReportEntry& entry) {
      return PdfReport::GetText(entry) == "1 XMP packet dropped: cannot be read";
    })) << packet;
  }
}

TEST_F(Pdf2PdfATaskTest, RefusesLevelsThatAreNone) {
  Pdf2PdfATask task = TaskFor(MakeDocument(), static_cast<PdfCompliance>(0x1700));
  EXPECT_EQ(FailureOf([&] { task.Execute(); }).code, PdfExceptionCode::EngineError);
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
}

TEST_F(Pdf2PdfATaskTest, ClaimsNothingOnceItIsEncrypted) {
  Pdf2PdfATask task = TaskFor(MakeDocument(), PdfCompliance::PdfA2B);
  task.SetOutPassword("pw");
  task.Execute();
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "output_pdfa_doc.pdf"));
  EXPECT_TRUE(PdfDoc::HasPassword(Path("output_pdfa_doc.pdf")));
  EXPECT_NE(Doc("output_pdfa_doc.pdf", "pw").GetPdfaCompliance(), PdfCompliance::PdfA2B);
  std::vector<std::string> lines;
  for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
    lines.push_back(PdfReport::GetText(entry));
  }
  EXPECT_THAT(lines,
              ::testing::Contains("1 PDF/A claim dropped: what is encrypted cannot be PDF/A"));
}

TEST_F(Pdf2PdfATaskTest, TransformsLikeAnyOther) {
  PdfDoc document(MakeDocument(), "", true);
  PdfTransformation settings(PdfTransformType::PdfA);
  settings.SetCompliance(PdfCompliance::PdfA3B);
  document.Transform(settings, Path("out.pdf"), "");
  EXPECT_TRUE(Doc("out.pdf").ValidatePdfA());
  EXPECT_EQ(Doc("out.pdf").GetMetaData(PdfMetadataParam::Author), "Ada");
}

}  // namespace
}  // namespace TarnixTools
