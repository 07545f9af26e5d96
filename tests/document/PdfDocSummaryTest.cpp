// PdfDoc::GetSummary.
#include "PdfProtectTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::FailureOf;
using testing::TestPdf;

class PdfDocSummaryTest : public testing::DocumentTest {};

TEST_F(PdfDocSummaryTest, OfAPlainDocumentIsShort) {
  MakePdf("doc.pdf", 1);
  const PdfSummary summary = Doc("doc.pdf").GetSummary();
  EXPECT_EQ(summary.version, "1.7");
  EXPECT_THAT(summary.rotations, ElementsAre(0));
  EXPECT_FALSE(summary.is_encrypted);
  EXPECT_EQ(summary.permissions, 3900U);
  EXPECT_EQ(static_cast<int>(summary.claims), 0x1700);
  ASSERT_EQ(summary.sizes.size(), 1U);
  PdfSize size = summary.sizes.front();
  EXPECT_EQ(size.GetWidth(), 612);
  EXPECT_EQ(size.GetHeight(), 792);
  EXPECT_EQ(summary.author + summary.keywords + summary.creator + summary.producer + summary.title +
                summary.subject,
            "");
  EXPECT_FALSE(summary.is_tagged);
  EXPECT_EQ(summary.signatures, 0);
  EXPECT_EQ(summary.fields, 0);
  EXPECT_EQ(summary.attachments, 0);
}

TEST_F(PdfDocSummaryTest, HoldsTheDocumentInformation) {
  TestPdf()
      .Page()
      .InfoEntry("/Author(A)/Keywords(K)/Creator(C)/Producer(P)/Title(T)/Subject(S)")
      .Write(Path("doc.pdf"));
  const PdfSummary summary = Doc("doc.pdf").GetSummary();
  EXPECT_EQ(summary.author, "A");
  EXPECT_EQ(summary.keywords, "K");
  EXPECT_EQ(summary.creator, "C");
  EXPECT_EQ(summary.producer, "P");
  EXPECT_EQ(summary.title, "T");
  EXPECT_EQ(summary.subject, "S");
}

TEST_F(PdfDocSummaryTest, CountsWhatTheDocumentHolds) {
  TestPdf()
      .Page("a")
      .Page("b")
      .Rotate(90)
      .Page("c")
      .Rotate(-90)
      .Object("sig", "<</Type /Sig /Filter /X>>")
      .Object("signed", "<</T (s) /FT /Sig /V {{sig}}>>")
      .Object("empty", "<</T (e) /FT /Sig>>")
      .Object("text", "<</T (t) /FT /Tx>>")
      .CatalogEntry("/AcroForm <</Fields [{{signed}} {{empty}} {{text}}]>>")
      .CatalogEntry("/MarkInfo <</Marked true>> /StructTreeRoot <</Type /StructTreeRoot>>")
      .CatalogEntry("/Names <</EmbeddedFiles <</Names [(a) <<>> (b) <<>>]>>>> /Version /2.0")
      .Write(Path("doc.pdf"));
  const PdfSummary summary = Doc("doc.pdf").GetSummary();
  EXPECT_EQ(summary.version, "2.0");
  EXPECT_THAT(summary.rotations, ElementsAre(0, 90, 270));
  EXPECT_TRUE(summary.is_tagged);
  EXPECT_EQ(summary.signatures, 1);
  EXPECT_EQ(summary.fields, 3);
  EXPECT_EQ(summary.attachments, 2);
}

TEST_F(PdfDocSummaryTest, TellsWhatMayBeDone) {
  constexpr std::uint32_t kPrint = 4;
  PdfProtectTask task(PdfDoc(MakePdf("doc.pdf", 1), "", true), "reader");
  task.SetOwnerPassword("owner");
  task.SetPermissions(kPrint);
  task.SetOutputPath(directory_.Path());
  task.SetOutPdfName("locked.pdf");
  task.Execute();
  const PdfSummary read = Doc("locked.pdf", "reader").GetSummary();
  EXPECT_TRUE(read.is_encrypted);
  EXPECT_FALSE(read.is_owner);
  EXPECT_EQ(read.permissions, kPrint);
  EXPECT_TRUE(Doc("locked.pdf", "owner").GetSummary().is_owner);
  EXPECT_EQ(FailureOf([&] { Doc("locked.pdf", "no").GetSummary(); }).code,
            PdfExceptionCode::PasswordError);
}

}  // namespace
}  // namespace TarnixTools
