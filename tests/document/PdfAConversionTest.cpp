// PdfDoc::Transform to PDF/A: which levels will do, what a failure says, and what is left on the disk.
#include <set>

#include <fcntl.h>
#include <unistd.h>

#include "Pdf2PdfATask.h"
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/RawPdf.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsSupersetOf;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

constexpr auto kLowerLevel = static_cast<std::int32_t>(0x83410540);

class PdfAConversionTest : public testing::DocumentTest {
 protected:
  // A document that can be PDF/A-2 but not PDF/A-1, which limits arrays to 8191 elements.
  PdfDoc MakeNotForPart1() const {
    std::string many;
    for (int i = 0; i < 8192; ++i) {
      many += "0 ";
    }
    RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/Many[" + many + "]>>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
    WriteBytes(Path("doc.pdf"), file.Table());
    return Doc("doc.pdf");
  }

  Failure Convert(PdfDoc document, PdfCompliance level, bool may_be_lower,
                  const std::string& password = "") {
    PdfTransformation settings(PdfTransformType::PdfA);
    settings.SetCompliance(level);
    settings.SetPdfaDowngrade(may_be_lower);
    const Failure failure =
        FailureOf([&] { document.Transform(settings, Path("out.pdf"), password); });
    report_ = document.GetReport();
    return failure;
  }

  std::set<std::string> NamesIn(const std::string& directory) const {
    const std::vector<std::string> names = directory_.Names(directory);
    return {names.begin(), names.end()};
  }

  PdfReport report_;  // of the last conversion
};

TEST_F(PdfAConversionTest, FailsWhereOnlyALowerLevelIsReached) {
  EXPECT_EQ(
      Convert(MakeNotForPart1(), PdfCompliance::PdfA1B, false),
      Failure(PdfExceptionCode::EngineError,
              "Conversion to PDF/A failed, error [0x83410540], conversion error [0]", kLowerLevel));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
  ASSERT_FALSE(report_.GetEntries().empty()) << "it says what was in the way";
  EXPECT_THAT(PdfReport::GetText(report_.GetEntries().back()),
              HasSubstr("in the way of PDF/A: 6.1.12-5"));
}

TEST_F(PdfAConversionTest, FailsWithAPasswordTooAndLeavesAnOlderOutput) {
  WriteBytes(Path("out.pdf"), "older");
  EXPECT_EQ(Convert(MakeNotForPart1(), PdfCompliance::PdfA1B, false, "pw").engine_code,
            kLowerLevel);
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out.pdf"));
  EXPECT_EQ(ReadBytes(Path("out.pdf")), "older");
}

TEST_F(PdfAConversionTest, TakesALowerLevelWhereItMay) {
  EXPECT_EQ(Convert(MakeNotForPart1(), PdfCompliance::PdfA1B, true), Failure());
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out.pdf"));
  EXPECT_EQ(Doc("out.pdf").GetPdfaCompliance(), PdfCompliance::PdfA2B);
  EXPECT_TRUE(Doc("out.pdf").ValidatePdfA());
}

TEST_F(PdfAConversionTest, TakesAnyLevelWhereNoneIsAskedFor) {
  for (const bool may_be_lower : {false, true}) {
    EXPECT_EQ(Convert(MakeNotForPart1(), PdfCompliance::None, may_be_lower), Failure());
    EXPECT_TRUE(Doc("out.pdf").ValidatePdfA());
  }
}

TEST_F(PdfAConversionTest, TakesTheLevelThatIsAskedForWhereItCanBeReached) {
  MakePdf("doc.pdf", 1);
  EXPECT_EQ(Convert(Doc("doc.pdf"), PdfCompliance::PdfA1B, true), Failure());
  EXPECT_EQ(Doc("out.pdf").GetPdfaCompliance(), PdfCompliance::PdfA1B);
}

TEST_F(PdfAConversionTest, TellsTheEnginesCode) {
  WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(Convert(Doc("text.pdf"), PdfCompliance::PdfA2B, true),
            Failure(PdfExceptionCode::EngineError,
                    "Conversion to PDF/A failed, error [0x00000004], conversion error [0]", 4));
  MakePdf("doc.pdf", 1);
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  EXPECT_EQ(Convert(Doc("locked.pdf", "wrong"), PdfCompliance::None, false),
            Failure(PdfExceptionCode::EngineError,
                    "Conversion to PDF/A failed, error [0x00000011], conversion error [0]", 17));
  EXPECT_EQ(Convert(PdfDoc(Path("missing.pdf"), "", false), PdfCompliance::None, false),
            Failure(PdfExceptionCode::EngineError,
                    "Conversion to PDF/A failed, error [0x0000000D], conversion error [0]", 13));
  EXPECT_EQ(Convert(Doc("doc.pdf"), static_cast<PdfCompliance>(0x1404), true),
            Failure(PdfExceptionCode::EngineError,
                    "Conversion to PDF/A failed, error [0x0000000B], conversion error [0]", 11));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "locked.pdf", "text.pdf"));
}

TEST_F(PdfAConversionTest, OpensTheDocumentWithItsOwnPassword) {
  MakePdf("doc.pdf", 2);
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  EXPECT_EQ(Convert(Doc("locked.pdf", "pw"), PdfCompliance::PdfA2B, false), Failure());
  EXPECT_FALSE(Doc("out.pdf").IsEncrypted());
  EXPECT_TRUE(Doc("out.pdf").ValidatePdfA());
  ASSERT_FALSE(report_.GetEntries().empty());
  EXPECT_EQ(PdfReport::GetText(report_.GetEntries().back()),
            "protection dropped: the input is protected, the output is not");
}

TEST_F(PdfAConversionTest, EncryptsTheCopyAndLeavesNothingElse) {
  TARNIX_NEED_PROGRAM("qpdf");
  TestPdf().Pages(2).InfoEntry("/Author(Ada)").Write(Path("doc.pdf"));
  WriteBytes(Path("out.pdf"), "older");
  EXPECT_EQ(Convert(Doc("doc.pdf"), PdfCompliance::PdfA2B, false, "pw"), Failure());
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out.pdf"));
  EXPECT_THAT(testing::QpdfEncryption(Path("out.pdf"), "pw"), HasSubstr("P = 3900\n"));
  EXPECT_EQ(Texts("out.pdf", "pw"), Labels(1, 2));
  EXPECT_EQ(Doc("out.pdf", "pw").GetMetaData(PdfMetadataParam::Author), "Ada");
}

// What is there while the encrypted copy is written.
TEST_F(PdfAConversionTest, HasFilesBesideTheOutputAndTheDocumentMeanwhile) {
  directory_.MakeDir("in");
  directory_.MakeDir("out");
  MakePdf("in/doc.pdf", 2);
  Pdf2PdfATask task(Doc("in/doc.pdf"), "a.pdf");
  task.SetOutputPath(Path("out"));
  task.SetOutPassword("pw");
  std::set<std::string> seen;
  task.SetProgress([&](auto&&...) {
    seen.merge(NamesIn("in"));
    seen.merge(NamesIn("out"));
    return true;
  });
  task.Execute();
  EXPECT_THAT(seen, IsSupersetOf({"a.pdf_out.log", "a.pdftmp.pdf", "pdfa_metadata.xmp"}));
  EXPECT_THAT(directory_.Names("in"), ElementsAre("doc.pdf"));
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf"));
}

// Where no file can be made beside the document, its packet is beside the output meanwhile.
TEST_F(PdfAConversionTest, NeedsNoDirectoryOfTheDocumentThatTakesFiles) {
  MakePdf("doc.pdf", 2);
  const int file = open(Path("doc.pdf").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(file, 0);
  const PdfDoc document("/proc/self/fd/" + std::to_string(file), "", true);
  directory_.MakeDir("out");
  Pdf2PdfATask task(document, "a.pdf");
  task.SetOutputPath(Path("out"));
  task.SetOutPassword("pw");
  std::set<std::string> seen;
  task.SetProgress([&](auto&&...) {
    seen.merge(NamesIn("out"));
    return true;
  });
  task.Execute();
  close(file);
  EXPECT_THAT(seen, IsSupersetOf({"a.pdf_metadata.xmp", "a.pdf_out.log", "a.pdftmp.pdf"}));
  EXPECT_THAT(directory_.Names("out"), ElementsAre("a.pdf"));
}

TEST_F(PdfAConversionTest, TellsThatTheOutputCannotBeMade) {
  MakePdf("doc.pdf", 1);
  const std::string directory = directory_.MakeDir("out.pdf");
  EXPECT_EQ(Convert(Doc("doc.pdf"), PdfCompliance::PdfA2B, false),
            Failure(PdfExceptionCode::FileNotFound,
                    "Unable to create new file [" + directory + "] (Is a directory)"));
  EXPECT_EQ(Convert(Doc("doc.pdf"), PdfCompliance::PdfA2B, false, "pw"),
            Failure(PdfExceptionCode::FileNotFound, "Unable to create new file [" +
                                                        testing::Backslashes(directory) +
                                                        "] (Is a directory)"));
  PdfTransformation settings(PdfTransformType::PdfA);
  EXPECT_EQ(FailureOf([&] { Doc("doc.pdf").Transform(settings, Path("no/out.pdf"), ""); }),
            Failure(PdfExceptionCode::EngineError,
                    "Conversion to PDF/A failed, error [0x0000000E], conversion error [0]", 14));
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "out.pdf"));
  EXPECT_THAT(directory_.Names("out.pdf"), ElementsAre());
}

TEST_F(PdfAConversionTest, LeavesFilesOfItsOwnNamesAlsoWhenItFails) {
  for (const char* name : {"out.pdf_out.log", "out.pdftmp.pdf", "pdfa_metadata.xmp"}) {
    WriteBytes(Path(name), "mine");
  }
  EXPECT_EQ(Convert(MakeNotForPart1(), PdfCompliance::PdfA1B, false, "pw").engine_code,
            kLowerLevel);
  EXPECT_THAT(directory_.Names(),
              ElementsAre("doc.pdf", "out.pdf_out.log", "out.pdftmp.pdf", "pdfa_metadata.xmp"));
  for (const char* name : {"out.pdf_out.log", "out.pdftmp.pdf", "pdfa_metadata.xmp"}) {
    EXPECT_EQ(ReadBytes(Path(name)), "mine");
  }
}

}  // namespace
}  // namespace TarnixTools
