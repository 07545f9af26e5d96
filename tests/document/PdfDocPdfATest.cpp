// PdfDoc: XMP metadata and what a document claims.
#include "support/DocumentTest.h"
#include "support/FileSizeLimit.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using testing::ClaimOf;
using testing::Failure;
using testing::FailureOf;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPacket;
using testing::WriteBytes;

constexpr const char* kEmptyPacket =
    "<?xpacket begin='\xEF\xBB\xBF?' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta "
    "xmlns:x=\"adobe:ns:meta/\" x:xmptk=\"Tarnix\"><rdf:RDF "
    "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"></rdf:RDF></x:xmpmeta><?xpacket "
    "end='w'?>";

class PdfDocPdfATest : public testing::DocumentTest {
 protected:
  // A document with this packet as object 5, which is its metadata when the entry names it.
  std::string MakeWithPacket(const std::string& packet,
                             const std::string& entry = "/Metadata 5 0 R",
                             const std::string& coded = "") const {
    return WriteBytes(Path("doc.pdf"),
                      RawPdf()
                          .Object(1, "<</Type/Catalog/Pages 2 0 R" + entry + ">>")
                          .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                          .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
                          .Stream(5, "/Type/Metadata/Subtype/XML" + coded, packet)
                          .Table());
  }
};

TEST_F(PdfDocPdfATest, WritesItsPacketAsItIs) {
  const std::string packet = TestPacket(ClaimOf("2")) + "\n<?padding?>";
  PdfDoc document(MakeWithPacket(packet), "", true);
  document.GetXmpMetaData(Path("a.xmp"));
  EXPECT_EQ(ReadBytes(Path("a.xmp")), packet);
  WriteBytes(Path("b.xmp"), "older");
  PdfDoc::GetXmpMetaData(document, Path("b.xmp"));
  EXPECT_EQ(ReadBytes(Path("b.xmp")), packet);
  EXPECT_TRUE(document.GetReport().GetEntries().empty());
}

TEST_F(PdfDocPdfATest, WritesAnEmptyPacketWithoutOne) {
  PdfDoc document(MakeWithPacket("", ""), "", true);
  document.GetXmpMetaData(Path("a.xmp"));
  EXPECT_EQ(ReadBytes(Path("a.xmp")), kEmptyPacket);
  EXPECT_TRUE(document.GetReport().GetEntries().empty());
}

TEST_F(PdfDocPdfATest, SaysThatAPacketCannotBeRead) {
  PdfDoc document(MakeWithPacket("packet", "/Metadata 5 0 R", "/Filter/Unheard"), "", true);
  document.GetXmpMetaData(Path("a.xmp"));
  EXPECT_EQ(ReadBytes(Path("a.xmp")), kEmptyPacket);
  ASSERT_EQ(document.GetReport().GetEntries().size(), 1U);
  EXPECT_EQ(PdfReport::GetText(document.GetReport().GetEntries().front()),
            "1 XMP packet dropped: cannot be read");
}

TEST_F(PdfDocPdfATest, SaysWhyThereIsNoPacket) {
  PdfDoc document(MakeWithPacket(""), "", true);
  EXPECT_EQ(FailureOf([&] { document.GetXmpMetaData(""); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Invalid XMP out path for PDF [" + Backslashes(Path("doc.pdf")) + "]"));
  EXPECT_EQ(
      FailureOf([&] { document.GetXmpMetaData(Path("none/a.xmp")); }),
      Failure(PdfExceptionCode::FileNotFound, "Unable to create new file [" + Path("none/a.xmp") +
                                                  "] (No such file or directory)"));
  WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(
      FailureOf([&] { Doc("text.pdf").GetXmpMetaData(Path("a.xmp")); }),
      Failure(PdfExceptionCode::EngineError,
              "Unable to open PDF file [" + Backslashes(Path("text.pdf")) + "] for XMP extraction",
              3));
  EXPECT_FALSE(testing::Exists(Path("a.xmp")));
}

TEST_F(PdfDocPdfATest, TellsWhatItClaims) {
  const auto claimed = [this](const std::string& packet) {
    PdfDoc document(MakeWithPacket(packet), "", true);
    return document.GetPdfaCompliance();
  };
  EXPECT_EQ(claimed(TestPacket(ClaimOf("1"))), PdfCompliance::PdfA1B);
  EXPECT_EQ(claimed(TestPacket(ClaimOf("2"))), PdfCompliance::PdfA2B);
  EXPECT_EQ(claimed(TestPacket(ClaimOf("3"))), PdfCompliance::PdfA3B);
  EXPECT_EQ(static_cast<int>(claimed(TestPacket(ClaimOf("4")))), 0x1700);
  EXPECT_EQ(static_cast<int>(claimed("no packet")), 0x1700);
}

TEST_F(PdfDocPdfATest, LeavesWhatWasThereWhenItCannotWrite) {
  PdfDoc document(MakeWithPacket(TestPacket(ClaimOf("2"))), "", true);
  const std::string directory = directory_.MakeDir("a.xmp");
  EXPECT_EQ(FailureOf([&] { document.GetXmpMetaData(directory); }),
            Failure(PdfExceptionCode::FileNotFound,
                    "Unable to create new file [" + directory + "] (Is a directory)"));
  WriteBytes(Path("b.xmp"), "older");
  Failure failure;
  {
    const testing::FileSizeLimit full(10);
    failure = FailureOf([&] { document.GetXmpMetaData(Path("b.xmp")); });
  }
  EXPECT_EQ(failure, Failure(PdfExceptionCode::FileNotFound,
                             "Unable to create new file [" + Path("b.xmp") + "] (File too large)"));
  EXPECT_EQ(ReadBytes(Path("b.xmp")), "older");
}

TEST_F(PdfDocPdfATest, AsksForThePathBeforeTheDocument) {
  PdfDoc missing(Path("missing.pdf"), "", false);
  const Failure expected(PdfExceptionCode::InvalidParameter,
                         "Invalid XMP out path for PDF [" + Backslashes(Path("missing.pdf")) + "]");
  EXPECT_EQ(FailureOf([&] { missing.GetXmpMetaData(""); }), expected);
  EXPECT_EQ(FailureOf([&] { PdfDoc::GetXmpMetaData(missing, ""); }), expected);
}

TEST_F(PdfDocPdfATest, WritesThePacketOfAnEncryptedDocument) {
  PdfDoc document(MakeWithPacket(TestPacket(ClaimOf("2"))), "", true);
  document.SetKeepMetadata(true);
  document.Lock("pw", Path("locked.pdf"));
  const auto not_opened = Failure(
      PdfExceptionCode::EngineError,
      "Unable to open PDF file [" + Backslashes(Path("locked.pdf")) + "] for XMP extraction", 17);
  for (const char* password : {"", "wrong"}) {
    EXPECT_EQ(FailureOf([&] { Doc("locked.pdf", password).GetXmpMetaData(Path("a.xmp")); }),
              not_opened);
    EXPECT_FALSE(testing::Exists(Path("a.xmp")));
  }
  Doc("locked.pdf", "pw").GetXmpMetaData(Backslashes(Path("a.xmp")));
  EXPECT_THAT(ReadBytes(Path("a.xmp")), ::testing::HasSubstr("<dc:title>A title</dc:title>"));
  WriteBytes(Path("bare.xmp"), "older and longer than what is written " + std::string(999, 'x'));
  MakePdf("bare.pdf", 1);
  Doc("bare.pdf").GetXmpMetaData(Path("bare.xmp"));
  EXPECT_EQ(ReadBytes(Path("bare.xmp")), kEmptyPacket);
}

TEST_F(PdfDocPdfATest, NeedsTheRightPassword) {
  MakePdf("doc.pdf", 1);
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  EXPECT_EQ(static_cast<int>(Doc("locked.pdf", "pw").GetPdfaCompliance()) & 0xFF, 0);
  for (const char* password : {"", "wrong"}) {
    const auto failure = FailureOf([&] { Doc("locked.pdf", password).GetPdfaCompliance(); });
    EXPECT_EQ(failure, Failure(PdfExceptionCode::EngineError,
                               "Unable to open PDF file [" + Backslashes(Path("locked.pdf")) +
                                   "] for compliance verification",
                               17));
  }
}

}  // namespace
}  // namespace TarnixTools
