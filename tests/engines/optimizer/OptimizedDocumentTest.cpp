#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/OptimizedDocument.h"
#include "engines/optimizer/OptimizerFailure.h"
#include "engines/support/fonts/FontCatalog.h"
#include "support/QpdfDocument.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPackets.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::optimizer {
namespace {

using platform::WidePath;
using testing::ClaimOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::QpdfComplaints;
using testing::QpdfDocument;
using testing::RawPdf;
using testing::ReadBytes;
using ::testing::StartsWith;
using testing::TestPacket;
using testing::TestPdf;
using testing::WriteBytes;

class OptimizedDocumentTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) const { return directory_.Path(name); }

  OptimizerReport Save(const std::string& in, const std::string& out,
                       const pdf::Security* security = nullptr) const {
    OptimizedDocument document(WidePath(Path(in)), "");
    return document.Save(WidePath(Path(out)),
                         {.settings = *ProfileSettings(kDefaultProfile), .security = security});
  }

  // A document that is written again smaller, with this packet.
  void MakeWithPacket(const std::string& name, const std::string& packet,
                      const std::string& header = "%PDF-1.7\n") const {
    RawPdf file(header);
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 5 0 R>>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
    file.Stream(5, "/Type/Metadata/Subtype/XML", packet);
    file.Stream(6, "", std::string(2000, 'x'));  // nothing refers to it
    WriteBytes(Path(name), file.Table());
  }

  // A document that shows "AB" in Helvetica, of which the program of an installed face with the metrics
  // is embedded; false where that is not installed.
  bool MakeWithFace(const std::string& name, const std::string& entries = "") const {
    const fonts::InstalledFace* face = fonts::FontCatalog::Get().Find("Liberation Sans", "Regular");
    if (face == nullptr || face->family != "Liberation Sans") {
      return false;
    }
    RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.Object(3,
                "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 4 0 R"
                "/Resources<</Font<</F 5 0 R>>>>>>");
    file.Stream(4, "", "BT /F 9 Tf (AB) Tj ET");
    file.Object(5,
                "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding"
                "/FontDescriptor 8 0 R>>");
    file.Object(8, "<</Type/FontDescriptor/FontName/Helvetica/Flags 32/FontFile2 9 0 R>>");
    file.Stream(9, "", ReadBytes(face->file));
    file.Stream(10, "/Type/Metadata/Subtype/XML", TestPacket(ClaimOf("2")));
    WriteBytes(Path(name), file.Table());
    return true;
  }

  // With settings of a profile.
  OptimizerReport SaveBy(const OptimizerSettings& settings) const {
    OptimizedDocument document(WidePath(Path("in.pdf")), "");
    return document.Save(WidePath(Path("out.pdf")), {.settings = settings});
  }

  testing::TempDir directory_;
};

// "damage kept: REASON", ...
std::vector<std::string> Texts(const OptimizerReport& report) {
  constexpr std::array<const char*, 4> kKinds = {"damage", "signature", "packet", "claim"};
  std::vector<std::string> texts;
  for (const TPdfOptimizeReportEntry& entry : report.entries) {
    texts.push_back(
        std::to_string(entry.count) + " " + kKinds[static_cast<std::size_t>(entry.kind)] +
        (entry.outcome == TPdfOptimizeOutcome::kKept ? " kept: " : " dropped: ") + entry.reason);
  }
  return texts;
}

TEST_F(OptimizedDocumentTest, WritesOverItsOwnInput) {
  TestPdf().Pages(20).Write(Path("in.pdf"));
  const std::size_t before = ReadBytes(Path("in.pdf")).size();
  Save("in.pdf", "in.pdf");
  EXPECT_LT(ReadBytes(Path("in.pdf")).size(), before);
  EXPECT_EQ(QpdfComplaints(Path("in.pdf")), "");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

TEST_F(OptimizedDocumentTest, NeverGrows) {
  WriteBytes(Path("in.pdf"), RawPdf("%PDF-1.4\n").Pages(1).Table());  // less than any stream takes
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")), IsEmpty());
  EXPECT_EQ(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
}

TEST_F(OptimizedDocumentTest, IsStableWhenItIsDoneAgain) {
  TestPdf().Pages(20).Write(Path("in.pdf"));
  Save("in.pdf", "1.pdf");
  Save("1.pdf", "2.pdf");
  EXPECT_EQ(ReadBytes(Path("1.pdf")), ReadBytes(Path("2.pdf")));
}

TEST_F(OptimizedDocumentTest, MayGrowWhereItIsEncrypted) {
  WriteBytes(Path("in.pdf"), RawPdf().Pages(1).Table());
  const pdf::Security security = pdf::Security::Create("pw", "pw", -1);
  Save("in.pdf", "out.pdf", &security);
  EXPECT_GT(ReadBytes(Path("out.pdf")).size(), ReadBytes(Path("in.pdf")).size());
  EXPECT_EQ(QpdfComplaints(Path("out.pdf"), "pw"), "");
}

TEST_F(OptimizedDocumentTest, PutsDamageRightAtAnySize) {
  const std::string sound = RawPdf().Pages(1).Table();
  WriteBytes(Path("in.pdf"), sound.substr(0, sound.find("xref")));
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")), Not(IsEmpty()));
  EXPECT_NE(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(OptimizedDocumentTest, KeepsPagesThatThePageTreeHasLost) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 x 0 R]/Count 2>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
  file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 7 7]>>");
  WriteBytes(Path("in.pdf"), file.Table());
  Save("in.pdf", "out.pdf");
  EXPECT_EQ(testing::PageFactsOf(Path("out.pdf")).size(), 2U);
}

TEST_F(OptimizedDocumentTest, KeepsWhatTheDocumentSaysOfItself) {
  MakeWithPacket("in.pdf", TestPacket(""));
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")), IsEmpty());
  EXPECT_THAT(ReadBytes(Path("out.pdf")), HasSubstr(TestPacket("")));
}

TEST_F(OptimizedDocumentTest, TakesOutAClaim) {
  MakeWithPacket("in.pdf", TestPacket(ClaimOf("2")));
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")),
              ElementsAre("1 claim dropped: not proven of what is written"));
  EXPECT_THAT(ReadBytes(Path("out.pdf")), HasSubstr("A title"));
  EXPECT_THAT(ReadBytes(Path("out.pdf")), Not(HasSubstr("<pdfaid:part>")));
  EXPECT_THAT(ReadBytes(Path("out.pdf")), HasSubstr("/ObjStm"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(OptimizedDocumentTest, KeepsAClaimThatIsProven) {
  MakeWithPacket("in.pdf", TestPacket(ClaimOf("2")));
  const auto save = [this](TPdfClaimProof proof) {
    OptimizedDocument document(WidePath(Path("in.pdf")), "");
    return document.Save(WidePath(Path("out.pdf")),
                         {.settings = *ProfileSettings(kDefaultProfile), .claim_proof = proof});
  };
  EXPECT_THAT(Texts(save([](std::FILE*) { return 0x1701; })), IsEmpty());
  EXPECT_THAT(ReadBytes(Path("out.pdf")), HasSubstr(TestPacket(ClaimOf("2"))));
  EXPECT_THAT(Texts(save([](std::FILE*) { return 0; })),
              ElementsAre("1 claim dropped: does not hold for what is written"));
  EXPECT_THROW(save([](std::FILE*) { return -1; }), pdf::Error);
  MakeWithPacket("in.pdf", TestPacket(ClaimOf("4")));
  EXPECT_THAT(Texts(save([](std::FILE*) { return -1; })),
              ElementsAre("1 claim dropped: not proven of what is written"));
}

TEST_F(OptimizedDocumentTest, WritesNoObjectStreamsForPdfA1) {
  MakeWithPacket("in.pdf", TestPacket(ClaimOf("1")), "%PDF-1.4\n");
  Save("in.pdf", "out.pdf");
  EXPECT_THAT(ReadBytes(Path("out.pdf")), StartsWith("%PDF-1.4\n"));
  EXPECT_THAT(ReadBytes(Path("out.pdf")), Not(HasSubstr("/ObjStm")));
  EXPECT_THAT(ReadBytes(Path("out.pdf")), Not(HasSubstr("/XRef")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(OptimizedDocumentTest, LeavesOutAPacketThatCannotBeRead) {
  MakeWithPacket("in.pdf", "<no packet");
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")), ElementsAre("1 packet dropped: cannot be read"));
  EXPECT_EQ(QpdfDocument(Path("out.pdf")).Catalog().contains("/Metadata"), false);
}

TEST_F(OptimizedDocumentTest, KeepsTheClaimOfADocumentThatStaysAsItIs) {
  RawPdf file("%PDF-1.4\n");
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 4 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
  file.Stream(
      4, "", TestPacket("<rdf:Description xmlns:a='http://www.aiim.org/pdfa/ns/id/' a:part='1'/>"));
  WriteBytes(Path("in.pdf"), file.Table());
  EXPECT_THAT(Texts(Save("in.pdf", "out.pdf")), IsEmpty());
  EXPECT_EQ(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
}

TEST_F(OptimizedDocumentTest, IsOfNoEarlierVersionThanTheSource) {
  RawPdf file("%PDF-2.0\n");
  WriteBytes(Path("in.pdf"), file.Pages(20).Table());
  Save("in.pdf", "out.pdf");
  EXPECT_THAT(ReadBytes(Path("out.pdf")), StartsWith("%PDF-2.0\n"));
}

TEST_F(OptimizedDocumentTest, KeepsTheFirstIdentifier) {
  WriteBytes(Path("in.pdf"), RawPdf().Pages(20).Table("/Root 1 0 R/ID[<4142><4344>]"));
  Save("in.pdf", "out.pdf");
  EXPECT_EQ(QpdfDocument(Path("out.pdf")).Trailer()["/ID"][0], "u:AB");
}

TEST_F(OptimizedDocumentTest, RefusesWhatCannotBeOpened) {
  try {
    OptimizedDocument document(WidePath(Path("missing.pdf")), "");
    FAIL();
  } catch (const OptimizerFailure& failure) {
    EXPECT_EQ(failure.code(), kOptimizerOpenError);
  }
}

TEST_F(OptimizedDocumentTest, LeavesOutStandardFontsThatAgree) {
  if (!MakeWithFace("in.pdf")) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  settings.removes_standard_fonts = true;
  const FontReport fonts = SaveBy(settings).fonts;
  EXPECT_EQ(fonts.programs, 1U);
  EXPECT_EQ(fonts.dropped, 1U);
  EXPECT_EQ(fonts.bytes_after, 0U);
  EXPECT_LT(ReadBytes(Path("out.pdf")).size(), 2000U);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

// It has to embed its fonts.
TEST_F(OptimizedDocumentTest, KeepsStandardFontsOfPdfA) {
  if (!MakeWithFace("in.pdf", "/Metadata 10 0 R")) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  settings.removes_standard_fonts = true;
  const FontReport fonts = SaveBy(settings).fonts;
  EXPECT_EQ(fonts.dropped, 0U);
  EXPECT_GT(ReadBytes(Path("out.pdf")).size(), 10'000U);
}

TEST_F(OptimizedDocumentTest, DropsHintsOfFontsByTheImageProfile) {
  if (!MakeWithFace("in.pdf")) {
    GTEST_SKIP() << "needs the fonts Liberation";
  }
  OptimizerSettings settings = *ProfileSettings(kDefaultProfile);
  settings.subsets_fonts = true;
  const FontReport with_hints = SaveBy(settings).fonts;
  const FontReport without = SaveBy(*ProfileSettings(kImageProfile)).fonts;
  EXPECT_EQ(with_hints.programs, 1U);
  EXPECT_LT(with_hints.bytes_after, with_hints.bytes_before / 4);
  EXPECT_LT(without.bytes_after, with_hints.bytes_after / 2);
}

TEST(OptimizerReport, TakesBackWhatWasDone) {
  OptimizerReport report;
  report.Dropped(ReportedKind::kSignature, "why", 0);
  EXPECT_THAT(report.entries, IsEmpty());
  report.Dropped(ReportedKind::kSignature, "why", 2);
  ClassFigures& figures = report.images[static_cast<std::size_t>(ImageClass::kTextScan)];
  figures = {.images = 7, .bytes_before = 900, .bytes_after = 300, .left_alone = {1, 2, 3}};
  report.fonts = {.programs = 9,
                  .merged = 2,
                  .dropped = 1,
                  .bytes_before = 800,
                  .bytes_after = 100,
                  .left_alone = {1, 2, 0, 1}};
  report.TakeBack();
  EXPECT_THAT(report.entries, IsEmpty());
  EXPECT_EQ(report.fonts.bytes_after, 800U);
  EXPECT_EQ(report.fonts.merged + report.fonts.dropped, 0U);
  EXPECT_THAT(report.fonts.left_alone, ElementsAre(6, 2, 0, 1, 0, 0));
  EXPECT_EQ(figures.bytes_after, 900U);
  EXPECT_THAT(figures.left_alone, ElementsAre(2, 2, 3));
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
