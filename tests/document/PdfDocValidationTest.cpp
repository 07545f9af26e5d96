// PdfDoc::ValidatePdfA: what a document claims, and whether it is that.
#include <algorithm>

#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::Contains;
using testing::Failure;
using testing::FailureOf;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::RawPdf;
using testing::WriteBytes;

class PdfDocValidationTest : public testing::DocumentTest {
 protected:
  // An empty page and what it claims. It is sound unless the page is to show a sound, which no level
  // of PDF/A knows.
  PdfDoc Make(const std::string& claim, bool is_sound = true) const {
    RawPdf file("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 5 0 R>>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3, std::string("<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Resources<<>>") +
                       (is_sound ? "" : "/Annots[4 0 R]") + ">>")
        .Object(4, is_sound ? "null" : "<</Type/Annot/Subtype/Sound/Rect[50 20 100 70]/F 4>>")
        .Stream(5, "/Type/Metadata/Subtype/XML",
                "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>"
                "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
                    claim + "</rdf:RDF><?xpacket end='w'?>");
    WriteBytes(Path("doc.pdf"), file.Table("/Root 1 0 R/ID[<00112233445566778899AABBCCDDEEFF>"
                                           "<00112233445566778899AABBCCDDEEFF>]"));
    return Doc("doc.pdf");
  }

  static std::vector<std::string> Rules(const PdfDoc& document) {
    std::vector<std::string> rules;
    for (const PdfFinding& finding : document.GetFindings()) {
      rules.push_back(finding.clause + "-" + std::to_string(finding.test));
    }
    return rules;
  }
};

TEST_F(PdfDocValidationTest, SaysYesOnlyToWhatClaimsALevelAndIsIt) {
  PdfDoc sound = Make(testing::ClaimOf("2"));
  EXPECT_TRUE(sound.ValidatePdfA());
  EXPECT_THAT(sound.GetFindings(), IsEmpty());
  PdfDoc broken = Make(testing::ClaimOf("2"), false);
  EXPECT_FALSE(broken.ValidatePdfA());
  EXPECT_THAT(Rules(broken), Contains("6.3.1-1"));
  PdfDoc unclaimed = Make("");
  EXPECT_FALSE(unclaimed.ValidatePdfA());
  EXPECT_THAT(Rules(unclaimed), Not(IsEmpty()));
}

TEST_F(PdfDocValidationTest, KnowsEveryLevel) {
  MakePdf("plain.pdf", 1);
  for (const PdfCompliance level :
       {PdfCompliance::PdfA1B, PdfCompliance::PdfA1A, PdfCompliance::PdfA2B, PdfCompliance::PdfA2U,
        PdfCompliance::PdfA2A, PdfCompliance::PdfA3B, PdfCompliance::PdfA3U,
        PdfCompliance::PdfA3A}) {
    PdfTransformation settings(PdfTransformType::PdfA);
    settings.SetCompliance(level);
    Doc("plain.pdf").Transform(settings, Path("out.pdf"), "");
    EXPECT_EQ(Doc("out.pdf").GetPdfaCompliance(), level);
    EXPECT_TRUE(Doc("out.pdf").ValidatePdfA()) << static_cast<int>(level);
    EXPECT_TRUE(Doc("out.pdf").ValidatePdfA(level)) << static_cast<int>(level);
    EXPECT_TRUE(Doc("out.pdf").ValidatePdfA(PdfCompliance::None)) << "by what it claims";
    const PdfCompliance other =
        level >= PdfCompliance::PdfA3B ? PdfCompliance::PdfA2B : PdfCompliance::PdfA3B;
    EXPECT_FALSE(Doc("out.pdf").ValidatePdfA(other)) << static_cast<int>(level);
  }
}

TEST_F(PdfDocValidationTest, ForgetsTheFindingsOfTheLast) {
  PdfDoc document = Make(testing::ClaimOf("2"), false);
  EXPECT_FALSE(document.ValidatePdfA());
  Make(testing::ClaimOf("2"));
  EXPECT_TRUE(document.ValidatePdfA());
  EXPECT_THAT(document.GetFindings(), IsEmpty());
  EXPECT_FALSE(document.ValidatePdfA(PdfCompliance::PdfA3B));
  EXPECT_THAT(document.GetFindings(), Not(IsEmpty()));
  WriteBytes(Path("doc.pdf"), "no document");
  EXPECT_NE(FailureOf([&] { document.ValidatePdfA(); }), Failure());
  EXPECT_THAT(document.GetFindings(), IsEmpty());
}

TEST_F(PdfDocValidationTest, TellsWhereSomethingIsWrong) {
  PdfDoc document = Make(testing::ClaimOf("2"), false);
  document.ValidatePdfA();
  ASSERT_FALSE(document.GetFindings().empty());
  const PdfFinding& finding = document.GetFindings().front();
  EXPECT_EQ(finding.clause, "6.3.1");
  EXPECT_EQ(finding.test, 1);
  EXPECT_EQ(finding.object, 4);
  EXPECT_EQ(finding.page, 1);
  EXPECT_TRUE(finding.has_box);
  EXPECT_EQ(finding.left, 50);
  EXPECT_EQ(finding.bottom, 20);
  EXPECT_EQ(finding.right, 100);
  EXPECT_EQ(finding.top, 70);
  EXPECT_NE(finding.message, "");
  EXPECT_NE(finding.cure, "");
}

TEST_F(PdfDocValidationTest, TellsEveryPlaceWhereARuleIsBroken) {
  const char* const sound = "/Type/Annot/Subtype/Sound/Rect[0 0 9 9]/F 4";
  testing::TestPdf().Page("a").Annotation(sound).Annotation(sound).Annotation(sound).Write(
      Path("doc.pdf"));
  PdfDoc document = Doc("doc.pdf");
  for (const bool is_level_given : {false, true}) {
    EXPECT_FALSE(is_level_given ? document.ValidatePdfA(PdfCompliance::PdfA2B)
                                : document.ValidatePdfA());
    const std::vector<std::string> rules = Rules(document);
    EXPECT_EQ(std::count(rules.begin(), rules.end(), "6.3.1-1"), 3);
  }
}

TEST_F(PdfDocValidationTest, NeedsADocumentAndItsPassword) {
  MakePdf("plain.pdf", 1);
  Doc("plain.pdf").Lock("pw", Path("locked.pdf"));
  WriteBytes(Path("text.pdf"), "no document");
  const auto not_opened = [this](const std::string& name, const std::string& code, long number) {
    return Failure(
        PdfExceptionCode::EngineError,
        "Could not open validator object for file [" + Backslashes(Path(name)) + "] [" + code + "]",
        number);
  };
  for (const PdfCompliance level : {PdfCompliance::None, PdfCompliance::PdfA1B}) {
    for (const char* password : {"", "wrong"}) {
      EXPECT_EQ(FailureOf([&] { Doc("locked.pdf", password).ValidatePdfA(level); }),
                not_opened("locked.pdf", "0x00000011", 17));
    }
    EXPECT_EQ(FailureOf([&] { Doc("text.pdf").ValidatePdfA(level); }),
              not_opened("text.pdf", "0x00000003", 3));
  }
  EXPECT_EQ(FailureOf([&] { Doc("locked.pdf", "wrong").ValidatePdfA(); }),
            not_opened("locked.pdf", "0x00000011", 17));
  EXPECT_EQ(FailureOf([&] { Doc("text.pdf").ValidatePdfA(); }),
            not_opened("text.pdf", "0x00000003", 3));
  EXPECT_FALSE(Doc("locked.pdf", "pw").ValidatePdfA());
}

TEST_F(PdfDocValidationTest, KnowsNoOtherLevels) {
  PdfDoc document = Make(testing::ClaimOf("2"));
  for (const int level : {0x1700, 0x1400, 0x1403, 0x1704, 0x1714, 1}) {
    EXPECT_EQ(FailureOf([&] { document.ValidatePdfA(static_cast<PdfCompliance>(level)); }).code,
              PdfExceptionCode::EngineError)
        << level;
  }
}

}  // namespace
}  // namespace TarnixTools
