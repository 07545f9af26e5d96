// PdfDoc: what a document says of itself, in files that are to keep it.
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/QpdfDocument.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::EncryptWithQpdf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::QpdfComplaints;
using testing::QpdfDocument;
using testing::RunProgram;
using testing::TestPdf;

constexpr const char* kPacket =
    "<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>"
    "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
    "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
    "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
    " xmlns:pdf='http://ns.adobe.com/pdf/1.3/' xmlns:xmp='http://ns.adobe.com/xap/1.0/'"
    " xmlns:own='http://own/' own:mark='kept' pdf:Producer='Press'>"
    "<dc:creator><rdf:Seq><rdf:li>Ada</rdf:li></rdf:Seq></dc:creator>"
    "<pdf:Keywords>a, b</pdf:Keywords><xmp:CreatorTool>Pen</xmp:CreatorTool>"
    "<xmp:CreateDate>2020-01-02T03:04:05Z</xmp:CreateDate>"
    "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end='w'?>";

constexpr const char* kClaim =
    "<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'>"
    "<pdfaid:part>2</pdfaid:part><pdfaid:conformance>B</pdfaid:conformance></rdf:Description>";

std::string PacketWithClaim() {
  std::string packet = kPacket;
  return packet.insert(packet.find("</rdf:RDF>"), kClaim);
}

class PdfDocKeepMetadataTest : public testing::DocumentTest {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("qpdf"); }

  // Three pages.
  std::string MakeDocument(const std::string& packet = kPacket) const {
    return TestPdf()
        .Pages(3)
        .InfoEntry("/Title(A title)/Author(Ada)/Keywords(a, b)/Creator(Pen)/Producer(Press)")
        .InfoEntry("/CreationDate(D:20200102030405Z)/Trapped/True/Own(mine)/Odd[1 2]")
        .Object("packet", "<</Type/Metadata/Subtype/XML/Length " + std::to_string(packet.size()) +
                              ">>\nstream\n" + packet + "\nendstream")
        .CatalogEntry("/Metadata {{packet}}")
        .Write(Path("doc.pdf"));
  }

  PdfDoc Keeping(const std::string& path, const std::string& password = "") const {
    PdfDoc document(path, password, true);
    document.SetKeepMetadata(true);
    return document;
  }

  static QpdfDocument::Json InfoOf(const std::string& path, const std::string& password = "") {
    const QpdfDocument document(path, password);
    return document.Follow(document.Trailer().value("/Info", QpdfDocument::Json()));
  }

  // Empty when there is none.
  static std::string PacketOf(const std::string& path, const std::string& password = "") {
    const auto reference = QpdfDocument(path, password).Catalog().value("/Metadata", "");
    return reference.empty()
               ? ""
               : RunProgram({"qpdf", "--password=" + password,
                             "--show-object=" + reference.substr(0, reference.find(' ')),
                             "--filtered-stream-data", path})
                     .output;
  }

  void ExpectKept(const std::string& name, const std::string& password = "") const {
    const auto info = InfoOf(Path(name), password);
    EXPECT_EQ(info["/Title"], "u:A title") << name;
    EXPECT_EQ(info["/Author"], "u:Ada");
    EXPECT_EQ(info["/CreationDate"], "u:D:20200102030405Z");
    EXPECT_EQ(info["/Trapped"], "/True");
    EXPECT_EQ(info["/Own"], "u:mine");
    EXPECT_FALSE(info.contains("/Odd"));
    EXPECT_EQ(PacketOf(Path(name), password), kPacket) << name;
    EXPECT_EQ(QpdfComplaints(Path(name), password), "");
  }

  static std::vector<std::string> AboutMetadata(const PdfReport& report) {
    std::vector<std::string> lines;
    for (const PdfReportEntry& entry : report.GetEntries()) {
      if (entry.kind == PdfReportKind::MetadataValue || entry.kind == PdfReportKind::XmpPacket ||
          entry.kind == PdfReportKind::PdfAClaim) {
        lines.push_back(PdfReport::GetText(entry));
      }
    }
    return lines;
  }
};

TEST_F(PdfDocKeepMetadataTest, IsOffAtFirstAndSaysWhatIsLeftBehind) {
  PdfDoc document(MakeDocument(), "", true);
  EXPECT_FALSE(document.GetKeepMetadata());
  document.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "");
  EXPECT_TRUE(InfoOf(Path("out.pdf")).is_null());
  EXPECT_EQ(PacketOf(Path("out.pdf")), "");
  EXPECT_THAT(AboutMetadata(document.GetReport()),
              ElementsAre("9 metadata values dropped: not carried over",
                          "1 XMP packet dropped: not carried over"));
}

TEST_F(PdfDocKeepMetadataTest, KeepsAllOfOneDocument) {
  PdfDoc document = Keeping(MakeDocument());
  document.Rotate(PdfRotationAngle::Rotate90, Path("turned.pdf"), "");
  ExpectKept("turned.pdf");
  EXPECT_THAT(AboutMetadata(document.GetReport()),
              ElementsAre("8 metadata values kept",
                          "1 metadata value dropped: no value that information can have",
                          "1 XMP packet kept"));
  document.Lock("secret", Path("locked.pdf"));
  ExpectKept("locked.pdf", "secret");
  Keeping(Path("locked.pdf"), "secret").UnLock("", Path("unlocked.pdf"));
  ExpectKept("unlocked.pdf");
}

TEST_F(PdfDocKeepMetadataTest, KeepsItInEveryPiece) {
  PdfDoc document = Keeping(MakeDocument());
  document.Split(2, Path(""), "", "");
  ExpectKept("doc-01.pdf");
  ExpectKept("doc-02.pdf");
  document.Split({PdfPageRange(1, 1), PdfPageRange(3, 3)}, Path(""), "", true, "joined.pdf", "pw");
  ExpectKept("joined.pdf", "pw");
}

TEST_F(PdfDocKeepMetadataTest, KeepsItUnderDecorations) {
  PdfDoc document = Keeping(MakeDocument());
  PdfTransformation numbers(PdfTransformType::AddPageNumber);
  document.Transform(numbers, Path("one.pdf"), "");
  ExpectKept("one.pdf");
  std::vector<PdfTransformation> several(2, numbers);
  document.Transform(several, Path("two.pdf"), "");
  ExpectKept("two.pdf");
}

TEST_F(PdfDocKeepMetadataTest, AMergeHasNothingToKeep) {
  const PdfDoc document = Keeping(MakeDocument());
  PdfReport report;
  PdfDoc::Merge({document, document}, Path("out.pdf"), "", &report);
  EXPECT_TRUE(InfoOf(Path("out.pdf")).is_null());
  EXPECT_EQ(PacketOf(Path("out.pdf")), "");
  EXPECT_THAT(AboutMetadata(report), ElementsAre("18 metadata values dropped: not carried over",
                                                 "2 XMP packets dropped: not carried over"));
}

TEST_F(PdfDocKeepMetadataTest, TakesAClaimOfPdfAOut) {
  PdfDoc document = Keeping(MakeDocument(PacketWithClaim()));
  document.Split(2, Path(""), "", "");
  EXPECT_THAT(PacketOf(Path("doc-01.pdf")), Not(HasSubstr("pdfaid:part")));
  EXPECT_THAT(PacketOf(Path("doc-01.pdf")), HasSubstr("own:mark='kept'"));
  EXPECT_EQ(PacketOf(Path("doc-02.pdf")), PacketOf(Path("doc-01.pdf")));
  EXPECT_EQ(AboutMetadata(document.GetReport()).back(),
            "2 PDF/A claims dropped: does not hold for what is written");
}

TEST_F(PdfDocKeepMetadataTest, LeavesAPacketOutThatCannotBeRead) {
  PdfDoc document = Keeping(MakeDocument("<!DOCTYPE x [<!ENTITY a 'b'>]>" + PacketWithClaim()));
  document.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "");
  EXPECT_EQ(PacketOf(Path("out.pdf")), "");
  EXPECT_EQ(InfoOf(Path("out.pdf"))["/Author"], "u:Ada");
  EXPECT_EQ(AboutMetadata(document.GetReport()).back(), "1 XMP packet dropped: cannot be read");
}

TEST_F(PdfDocKeepMetadataTest, NewValuesAreInThePacketToo) {
  Keeping(MakeDocument()).SetMetaData({"B<&>\xC3\xA9", "a, b", "", "New"}, Path("out.pdf"), "");
  const auto info = InfoOf(Path("out.pdf"));
  EXPECT_EQ(info["/Title"], "u:A title");
  EXPECT_EQ(info["/Author"], "u:B<&>\xC3\xA9");
  EXPECT_EQ(info["/Keywords"], "u:a, b");
  EXPECT_EQ(info["/Creator"], "u:");
  EXPECT_EQ(info["/Producer"], "u:New");
  const std::string packet = PacketOf(Path("out.pdf"));
  EXPECT_THAT(packet, HasSubstr("<rdf:li>B&lt;&amp;&gt;\xC3\xA9</rdf:li>"));
  EXPECT_THAT(packet, HasSubstr(">New</pdf:Producer>"));
  EXPECT_THAT(packet, HasSubstr("<pdf:Keywords>a, b</pdf:Keywords>"));
  EXPECT_THAT(packet, HasSubstr("<xmp:CreateDate>"));
  for (const char* old : {"Ada", "Press", "Pen", "CreatorTool"}) {
    EXPECT_THAT(packet, Not(HasSubstr(old)));
  }
}

TEST_F(PdfDocKeepMetadataTest, IsReadFromEncryptedDocuments) {
  const std::string path = EncryptWithQpdf(MakeDocument(), Path("encrypted.pdf"), "user", "owner");
  Keeping(path, "user").UnLock("", Path("out.pdf"));
  ExpectKept("out.pdf");
}

TEST_F(PdfDocKeepMetadataTest, OfADocumentWithoutAnyIsNone) {
  PdfDoc document = Keeping(MakePdf("plain.pdf", 1));
  document.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "");
  EXPECT_TRUE(InfoOf(Path("out.pdf")).is_null());
  EXPECT_THAT(AboutMetadata(document.GetReport()), IsEmpty());
}

TEST_F(PdfDocKeepMetadataTest, SaysTheSameTitleInThePacket) {
  std::string packet = kPacket;
  packet.insert(
      packet.find("<dc:creator>"),
      "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>A title</rdf:li></rdf:Alt></dc:title>"
      "<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>Old</rdf:li></rdf:Alt>"
      "</dc:description>");
  Keeping(MakeDocument(packet))
      .SetMetaValues({.params = {}, .title = "New & better", .subject = ""}, Path("new.pdf"), "");
  const auto info = InfoOf(Path("new.pdf"));
  EXPECT_EQ(info["/Title"], "u:New & better");
  EXPECT_EQ(info["/Author"], "u:Ada");
  const std::string written = PacketOf(Path("new.pdf"));
  EXPECT_THAT(written, HasSubstr("New &amp; better</rdf:li></rdf:Alt></dc:title>"));
  EXPECT_THAT(written, Not(HasSubstr("A title")));
  EXPECT_THAT(written, Not(HasSubstr("dc:description")));
  EXPECT_THAT(written, HasSubstr("<dc:creator><rdf:Seq><rdf:li>Ada"));
}

}  // namespace
}  // namespace TarnixTools
