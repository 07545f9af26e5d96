#include <cstdio>
#include <filesystem>
#include <string>
#include <tuple>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/PdfA.h"
#include "engines/pdfa/convert/ConverterErrors.h"
#include "support/Expected.h"
#include "support/QpdfDocument.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPackets.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using testing::PageTexts;
using testing::QpdfComplaints;
using testing::ReadBytes;
using testing::TestPdf;

// A page with something painted, and with these entries of the catalog.
std::string DocumentWith(const std::string& catalog, const std::string& page = "") {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Contents 4 0 R" + page + ">>");
  file.Stream(4, "", "0 0 9 9 re f");
  file.Object(5, "<</Type/Filespec/F(a.txt)/UF(a.txt)/EF<</F 6 0 R>>>>");
  file.Stream(6, "/Type/EmbeddedFile/Subtype/text#2Fplain", "text");
  file.Object(7, "<</Type/StructTreeRoot/K<</S/P/Pg 3 0 R/K 0>>>>");
  for (const auto& [number, part, conformance] :
       {std::tuple(8, '1', 'B'), std::tuple(9, '2', 'B'), std::tuple(10, '3', 'A')}) {
    file.Stream(
        number, "/Type/Metadata/Subtype/XML",
        std::string("<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
                    "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
                    "rdf:about='' xmlns:p='http://www.aiim.org/pdfa/ns/id/' p:part='") +
            part + "' p:conformance='" + conformance + "'/></rdf:RDF></x:xmpmeta>");
  }
  return file.Table("/Root 1 0 R");
}

class ConverterTest : public ::testing::Test {
 protected:
  ConverterTest() {
    Pdf2PdfInitialize();
    object_ = Pdf2PdfCreateObject();
  }

  ~ConverterTest() override {
    Pdf2PdfDestroyObject(object_);
    Pdf2PdfUnInitialize();
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  int Convert(const std::string& in, const std::wstring& password = L"") {
    return Pdf2PdfConvertW(object_, WidePath(Path(in)), password, WidePath(Path("out.pdf")),
                           WidePath(Path("out.log")));
  }

  std::uint32_t Code() const { return static_cast<std::uint32_t>(Pdf2PdfGetErrorCode(object_)); }

  std::string Packet() const { return ReadBytes(Path("out.pdf")); }

  testing::TempDir directory_;
  TPdf2Pdf* object_ = nullptr;
};

TEST_F(ConverterTest, WritesWhatWasAskedFor) {
  TestPdf().Pages(2, "Page").Write(Path("in.pdf"));
  Pdf2PdfSetCompliance(object_, 0x1701);
  ASSERT_EQ(Convert("in.pdf"), 1) << ReadBytes(Path("out.log"));
  EXPECT_EQ(Pdf2PdfGetReachedCompliance(object_), 0x1701);
  EXPECT_EQ(Pdf2PdfGetConversionErrors(object_), 0);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_THAT(PageTexts(Path("out.pdf")), ElementsAre("Page 1", "Page 2"));
  EXPECT_THAT(Packet(), HasSubstr("<pdfaid:part>2</pdfaid:part>"));
}

TEST_F(ConverterTest, ChoosesTheMostUsefulLevel) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  ASSERT_EQ(Convert("in.pdf"), 1) << ReadBytes(Path("out.log"));
  EXPECT_EQ(Pdf2PdfGetReachedCompliance(object_), 0x1702);
}

TEST_F(ConverterTest, MakesTagsForLevelA) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  for (const int level : {0x1402, 0x1703, 0x1713}) {
    Pdf2PdfSetCompliance(object_, level);
    EXPECT_EQ(Convert("in.pdf"), 1) << ReadBytes(Path("out.log"));
    EXPECT_EQ(Pdf2PdfGetReachedCompliance(object_), level);
    EXPECT_THAT(PageTexts(Path("out.pdf")), ElementsAre("Page 1"));
    EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  }
}

TEST_F(ConverterTest, KeepsAttachmentsThatArePdfAInPart2) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  Pdf2PdfSetCompliance(object_, 0x1701);
  ASSERT_EQ(Convert("in.pdf"), 1);
  testing::RawPdf file;
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/Names<</EmbeddedFiles<</Names[(a)4 0 R(b)6 0 R]>>>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
  file.Object(4, "<</Type/Filespec/F(a.pdf)/EF<</F 5 0 R>>>>");
  file.Stream(5, "/Type/EmbeddedFile", ReadBytes(Path("out.pdf")));
  file.Object(6, "<</Type/Filespec/F(b.txt)/EF<</F 7 0 R>>>>");
  file.Stream(7, "/Type/EmbeddedFile", "text");
  testing::WriteBytes(Path("in.pdf"), file.Table("/Root 1 0 R"));
  ASSERT_EQ(Convert("in.pdf"), 1) << ReadBytes(Path("out.log"));
  const testing::QpdfDocument written(Path("out.pdf"));
  const auto names = written.Catalog()["/Names"]["/EmbeddedFiles"]["/Names"];
  ASSERT_EQ(names.size(), 2U);
  EXPECT_EQ(names[0], "u:a");
}

TEST_F(ConverterTest, ClaimsNoLevelThatDoesNotHold) {
  std::string many;
  for (int i = 0; i < 8192; ++i) {
    many += "0 ";
  }
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Many[" + many + "]>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
  testing::WriteBytes(Path("in.pdf"), file.Table("/Root 1 0 R"));
  Pdf2PdfSetCompliance(object_, 0x1401);
  EXPECT_EQ(Convert("in.pdf"), 0);
  EXPECT_EQ(Code(), 0x83410540U);
  EXPECT_EQ(Pdf2PdfGetReachedCompliance(object_), 0x1701);
  EXPECT_GT(Pdf2PdfGetConversionErrors(object_), 0);
  EXPECT_THAT(ReadBytes(Path("out.log")), HasSubstr("not mended: 6.1.12-5"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(ConverterTest, RefusesWhatIsNoLevel) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  EXPECT_EQ(Pdf2PdfSetCompliance(object_, 0x1700), 0);
  EXPECT_EQ(Convert("in.pdf"), 0);
  EXPECT_EQ(Code(), kConverterArgumentError);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), "");
}

TEST_F(ConverterTest, NeedsTheRightPassword) {
  TestPdf().Pages(1, "Page").Write(Path("plain.pdf"));
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("in.pdf"), "secret", "owner");
  EXPECT_EQ(Convert("in.pdf", L"wrong"), 0);
  EXPECT_EQ(Code(), kConverterPasswordError);
  EXPECT_EQ(Convert("in.pdf", L"secret"), 1);
  EXPECT_THAT(PageTexts(Path("out.pdf")), ElementsAre("Page 1"));
}

// What it says is of the last document, of which there is nothing where that does not open.
TEST_F(ConverterTest, ForgetsTheDocumentsBefore) {
  EXPECT_EQ(Pdf2PdfIsEncrypted(object_), 0);
  TestPdf().Pages(1, "Page").Write(Path("plain.pdf"));
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("in.pdf"), "secret", "owner");
  ASSERT_EQ(Convert("in.pdf", L"secret"), 1);
  EXPECT_EQ(Pdf2PdfIsEncrypted(object_), 1);
  EXPECT_GT(Pdf2PdfGetReportCount(object_), 0);
  EXPECT_EQ(Convert("missing.pdf"), 0);
  EXPECT_EQ(Pdf2PdfIsEncrypted(object_), 0);
  EXPECT_EQ(Pdf2PdfGetReportCount(object_), 0);
  EXPECT_EQ(Pdf2PdfGetConversionErrors(object_), 0);
  EXPECT_EQ(Pdf2PdfGetReachedCompliance(object_), 0);
  ASSERT_EQ(Convert("plain.pdf"), 1);
  EXPECT_EQ(Pdf2PdfIsEncrypted(object_), 0);
  EXPECT_EQ(Pdf2PdfIsEncrypted(nullptr), 0);
  EXPECT_EQ(Pdf2PdfGetReachedCompliance(nullptr), 0);
}

// A packet goes into what was written last, and into nothing where that has failed.
TEST_F(ConverterTest, MergesNoPacketIntoAnOlderDocument) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  ASSERT_EQ(Convert("in.pdf"), 1);
  EXPECT_EQ(Pdf2PdfConvertW(object_, WidePath(Path("in.pdf")), L"", WidePath(Path("other.pdf")),
                            WidePath(Path("none/log.txt"))),
            0);
  testing::WriteBytes(Path("packet.xml"), testing::TestPacket(""));
  EXPECT_EQ(Pdf2PdfSetMetadataW(object_, WidePath(Path("packet.xml"))), 0);
  EXPECT_EQ(Code(), kConverterArgumentError);
}

// The entries of the report, one after the other: what was done, how often, and to what.
TEST_F(ConverterTest, TellsEntriesOfItsReport) {
  std::string many;
  for (int i = 0; i < 8192; ++i) {
    many += "0 ";
  }
  testing::WriteBytes(Path("in.pdf"), DocumentWith("/AA<</WC<</S/Launch>>>>/Many[" + many + "]",
                                                   "/Annots[<</Subtype/Movie/Rect[0 0 9 9]>>"
                                                   "<</Subtype/Sound/Rect[0 0 9 9]>>]"));
  Pdf2PdfSetCompliance(object_, 0x1401);
  Convert("in.pdf");
  std::string text;
  for (int i = 0; i < Pdf2PdfGetReportCount(object_); ++i) {
    TPdf2PdfEntry entry;
    EXPECT_EQ(Pdf2PdfGetReportEntry(object_, i, &entry), 1);
    text += entry.outcome == TPdf2PdfOutcome::kChanged   ? "changed "
            : entry.outcome == TPdf2PdfOutcome::kDropped ? "dropped "
                                                         : "blocking ";
    text += std::to_string(entry.count) + " " + entry.what + "\n";
  }
  TPdf2PdfEntry none;
  EXPECT_EQ(Pdf2PdfGetReportEntry(object_, Pdf2PdfGetReportCount(object_), &none), 0);
  EXPECT_TRUE(testing::IsAsExpected("pdfa/convert/report.txt", text));
}

TEST_F(ConverterTest, TellsWhyADocumentDoesNotOpen) {
  EXPECT_EQ(Convert("missing.pdf"), 0);
  EXPECT_EQ(Code(), kConverterOpenError);
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(Convert("text.pdf"), 0);
  EXPECT_EQ(Code(), kConverterNotAPdfError);
}

TEST_F(ConverterTest, MergesAPacket) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  ASSERT_EQ(Convert("in.pdf"), 1);
  testing::WriteBytes(Path("packet.xml"),
                      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
                      "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description "
                      "rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
                      "xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">"
                      "<dc:format>application/pdf</dc:format><pdfaid:part>1</pdfaid:part>"
                      "</rdf:Description></rdf:RDF></x:xmpmeta>");
  ASSERT_EQ(Pdf2PdfSetMetadataW(object_, WidePath(Path("packet.xml"))), 1);
  EXPECT_THAT(Packet(), HasSubstr("<dc:format>application/pdf</dc:format>"));
  EXPECT_THAT(Packet(), HasSubstr("<pdfaid:part>2</pdfaid:part>"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

// What the document says goes before what the packet says; the rest comes from the packet.
TEST_F(ConverterTest, WritesWhatAMergedPacketSays) {
  testing::WriteBytes(Path("in.pdf"), DocumentWith(""));
  Pdf2PdfSetCompliance(object_, 0x1702);
  ASSERT_EQ(Convert("in.pdf"), 1);
  const auto packet = [](const std::string& properties) {
    return "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
           "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description rdf:about='' "
           "xmlns:dc='http://purl.org/dc/elements/1.1/' xmlns:s='http://s/' "
           "xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'>" +
           properties + "</rdf:Description></rdf:RDF></x:xmpmeta>";
  };
  const auto written = [this] {
    const std::string bytes = Packet();
    const std::size_t begin = bytes.find("<?xpacket");
    return bytes.substr(begin, bytes.find("<?xpacket end") - begin) + "\n";
  };
  std::string text;
  for (const std::string& properties :
       {std::string("<dc:format>application/pdf</dc:format><s:own>1</s:own>"),
        std::string("<dc:format>text/plain</dc:format><dc:source>x</dc:source>"),
        std::string("<pdfaid:part>1</pdfaid:part><pdfaid:conformance>A</pdfaid:conformance>"),
        std::string("<s:odd rdf:parseType='Resource'><s:f>1</s:f></s:odd>")}) {
    testing::WriteBytes(Path("packet.xml"), packet(properties));
    const int done = Pdf2PdfSetMetadataW(object_, WidePath(Path("packet.xml")));
    text += properties + "\n" + std::to_string(done) + "\n" + written();
    EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  }
  EXPECT_EQ(Pdf2PdfSetMetadataW(object_, WidePath(Path("none.xml"))), 0);
  EXPECT_EQ(Code(), kConverterMetadataError);
  EXPECT_TRUE(testing::IsAsExpected("pdfa/convert/merged-packets.txt", text));
}

TEST_F(ConverterTest, RefusesAPacketThatCannotBeRead) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  testing::WriteBytes(Path("packet.xml"), "<x:xmpmeta");
  EXPECT_EQ(Pdf2PdfSetMetadataW(object_, WidePath(Path("packet.xml"))), 0);
  EXPECT_EQ(Code(), kConverterArgumentError);  // nothing was written yet
  ASSERT_EQ(Convert("in.pdf"), 1);
  EXPECT_EQ(Pdf2PdfSetMetadataW(object_, WidePath(Path("packet.xml"))), 0);
  EXPECT_EQ(Code(), kConverterMetadataError);
}

// What comes of each level that may be wanted of each document, and what is said.
TEST_F(ConverterTest, TellsWhatItHasReached) {
  const std::pair<const char*, const char*> documents[] = {
      {"", ""},
      {"/Names<</EmbeddedFiles<</Names[(a)5 0 R]>>>>", ""},
      {"/MarkInfo<</Marked true>>/StructTreeRoot 7 0 R", ""},
      {"/MarkInfo<</Marked 1>>/StructTreeRoot 7 0 R", ""},
      {"/Names<</EmbeddedFiles<</Names[]>>>>/MarkInfo<</Marked true>>/StructTreeRoot 7 0 R", ""},
      {"/Metadata 8 0 R", ""},
      {"/Metadata 9 0 R", ""},
      {"/Metadata 10 0 R/Names<</EmbeddedFiles<</Names[(a)5 0 R]>>>>", ""},
      {"/Own[40000.5]", ""},
      {"", "/MediaBox[0 0 1 1]"}};
  std::string text;
  for (const auto& [catalog, page] : documents) {
    testing::WriteBytes(Path("in.pdf"), DocumentWith(catalog, page));
    text += std::string(catalog) + page + "\n";
    for (const int wanted :
         {0, 0x1401, 0x1402, 0x1701, 0x1702, 0x1703, 0x1711, 0x1712, 0x1713, 0x1400}) {
      Pdf2PdfSetCompliance(object_, wanted);
      Pdf2PdfSetReportDetails(object_, wanted == 0x1401 || wanted == 0x1713 ? 1 : 0);
      const int done = Convert("in.pdf");
      char line[96];
      std::snprintf(line, sizeof line, " %x: %d reached %x code %x errors %d entries %d\n",
                    static_cast<unsigned>(wanted), done,
                    static_cast<unsigned>(Pdf2PdfGetReachedCompliance(object_)), Code(),
                    Pdf2PdfGetConversionErrors(object_), Pdf2PdfGetReportCount(object_));
      text += line + ReadBytes(Path("out.log"));
      std::filesystem::remove(Path("out.log"));
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/convert/levels.txt", text));
}

TEST_F(ConverterTest, ReportsWhatItDoes) {
  TestPdf().Pages(1, "Page").Write(Path("in.pdf"));
  ASSERT_EQ(Convert("in.pdf"), 1);
  ASSERT_GT(Pdf2PdfGetReportCount(object_), 0);
  TPdf2PdfEntry entry;
  EXPECT_EQ(Pdf2PdfGetReportEntry(object_, 0, &entry), 1);
  EXPECT_NE(std::string(entry.what), "");
  EXPECT_EQ(Pdf2PdfGetReportEntry(object_, -1, &entry), 0);
  EXPECT_EQ(Pdf2PdfGetReportEntry(object_, 0, nullptr), 0);
}

TEST(ConverterWithoutObject, Fails) {
  EXPECT_EQ(Pdf2PdfConvertW(nullptr, WidePath("a"), L"", WidePath("b"), WidePath("")), 0);
  EXPECT_EQ(Pdf2PdfGetErrorCode(nullptr), static_cast<std::int32_t>(kConverterArgumentError));
  EXPECT_EQ(Pdf2PdfGetConversionErrors(nullptr), -1);
  EXPECT_EQ(Pdf2PdfGetReportCount(nullptr), -1);
  EXPECT_EQ(Pdf2PdfDestroyObject(nullptr), 0);
}

}  // namespace
}  // namespace TarnixTools::engines
