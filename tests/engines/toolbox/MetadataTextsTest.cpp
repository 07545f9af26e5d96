// What documents say of themselves, as a whole: kept, changed, and in short.
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedText.h"
#include "support/MemoryFile.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;
using testing::ObjectsText;
using testing::RawPdf;

constexpr const char* kPacket =
    "<?xpacket begin=\"\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>"
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
    "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\"><rdf:Description rdf:about=\"\" "
    "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" "
    "xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\" xmlns:own=\"http://own/\">"
    "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">Title</rdf:li></rdf:Alt></dc:title>"
    "<dc:creator><rdf:Seq><rdf:li>Author</rdf:li></rdf:Seq></dc:creator>"
    "<pdf:Producer>Producer</pdf:Producer><own:Note>kept</own:Note>"
    "</rdf:Description></rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";

std::string Told(const std::string& catalog = "/Metadata 9 0 R",
                 const std::string& packet = kPacket) {
  return RawPdf()
      .Pages(2)
      .Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>")
      .Stream(9, "/Type/Metadata/Subtype/XML", packet)
      .Object(
          10,
          "<</Title(Title)/Author(Author)/Producer<50726F6475636572>/Trapped/True/Own 5/Flag true"
          "/Subject 11 0 R/List[1]/Title(again)/Gone null>>")
      .Object(11, "(Subject)")
      .Table("/Root 1 0 R/Info 10 0 R");
}

// A copy of the first page with what the changes make of its metadata.
std::string Kept(const std::string& bytes,
                 const std::function<void(TPdfDocument* target, TPdfDocument* source)>& changes) {
  MemoryFile input{bytes};
  MemoryFile output;
  const TPdfStream input_stream = input.Descriptor();
  const TPdfStream output_stream = output.Descriptor();
  TPdfDocument* source = PdfDocumentOpenA(&input_stream, "");
  TPdfDocument* target = PdfDocumentCreateW(&output_stream, 0, nullptr);
  std::vector<ReportedEntry> report;
  PdfDocumentSetReport(
      target,
      [](void* context, const TPdfReportEntry* entry) {
        static_cast<std::vector<ReportedEntry>*>(context)->push_back(
            {entry->kind, entry->outcome, entry->count, entry->reason, entry->page});
      },
      &report);
  changes(target, source);
  CopyInto(target, {bytes, {0}});
  TPdfPageList* pages = PdfDocumentGetPages(source);
  TPdfPageList* copies = PdfDocumentGetPages(target);
  TPdfPage* page = PdfPageListGet(pages, 1);
  TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
  EXPECT_EQ(PdfPageListAppend(copies, copy), 1);
  PdfClose(copy);
  PdfClose(page);
  PdfClose(pages);
  PdfClose(copies);
  EXPECT_EQ(PdfClose(source), 1);
  EXPECT_EQ(PdfClose(target), 1);
  const testing::TempDir directory;
  return ReportText(report) +
         ObjectsText(testing::WriteBytes(directory.Path("a.pdf"), output.bytes)) +
         "As spelled: " + SpelledText(output.bytes) + "\n";
}

void SetAll(TPdfDocument* target) {
  TPdfMetadata* metadata = PdfDocumentGetMetadata(target);
  EXPECT_EQ(PdfMetadataSetTitleA(metadata, "New & title", 11), 1);
  EXPECT_EQ(PdfMetadataSetAuthorA(metadata, "", 0), 1);
  EXPECT_EQ(PdfMetadataSetSubjectA(metadata, "Sub\xE2\x82\xAC", 6), 1);
  EXPECT_EQ(PdfMetadataSetKeywordsA(metadata, "k, w", 4), 1);
  EXPECT_EQ(PdfMetadataSetCreatorA(metadata, "Cre", 3), 1);
  EXPECT_EQ(PdfMetadataSetProducerA(metadata, "Producer", 8), 1);
  EXPECT_EQ(PdfDocumentSetMetadata(target, metadata), 1);
  PdfClose(metadata);
}

TEST(MetadataTexts, OfWhatIsKeptAndChanged) {
  std::string text = Kept(Told(), [](TPdfDocument*, TPdfDocument*) {});
  text += Kept(Told(), [](TPdfDocument* target, TPdfDocument* source) {
    EXPECT_EQ(PdfDocumentKeepMetadata(target, source), 1);
  });
  text += Kept(Told(), [](TPdfDocument* target, TPdfDocument* source) {
    EXPECT_EQ(PdfDocumentKeepMetadata(target, source), 1);
    SetAll(target);
  });
  text += Kept(Told(), [](TPdfDocument* target, TPdfDocument*) { SetAll(target); });
  EXPECT_TRUE(IsAsExpected("copy/metadata.txt", text));
}

TEST(MetadataTexts, OfPacketsThatAreNone) {
  const auto keep = [](TPdfDocument* target, TPdfDocument* source) {
    EXPECT_EQ(PdfDocumentKeepMetadata(target, source), 1);
    SetAll(target);
  };
  EXPECT_TRUE(IsAsExpected("copy/odd_metadata.txt",
                           Kept(Told("/Metadata 9 0 R", "no packet"), keep) +
                               Kept(Told("/Metadata 99 0 R"), keep) + Kept(Told(""), keep) +
                               Kept(RawPdf().Pages(2).Table(), keep)));
}

std::string SummaryOf(const std::string& bytes) {
  MemoryFile input{bytes};
  const TPdfStream stream = input.Descriptor();
  TPdfDocument* source = PdfDocumentOpenA(&stream, "");
  TPdfSummary summary;
  EXPECT_EQ(PdfDocumentGetSummary(source, &summary), 1);
  std::string text;
  for (const std::int64_t number :
       {std::int64_t{summary.version}, std::int64_t{summary.is_encrypted},
        std::int64_t{summary.is_owner}, std::int64_t{summary.permissions},
        std::int64_t{summary.compliance}, std::int64_t{summary.is_tagged}, summary.signature_count,
        summary.field_count, summary.attachment_count}) {
    text += std::to_string(number) + " ";
  }
  PdfClose(source);
  return text;
}

std::string WithCatalog(const std::string& entries, const std::string& objects = "") {
  return RawPdf("%PDF-1.3\n")
      .Pages(1)
      .Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>")
      .Lines(objects)
      .Table();
}

TEST(MetadataTexts, OfSummaries) {
  EXPECT_EQ(SummaryOf(WithCatalog("")), "13 0 0 0 4864 0 0 0 0 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/Version/1.7")), "17 0 0 0 5888 0 0 0 0 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/MarkInfo<</Marked true>>")), "13 0 0 0 4864 0 0 0 0 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/StructTreeRoot<<>>")), "13 0 0 0 4864 0 0 0 0 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/MarkInfo<</Marked true>>/StructTreeRoot<<>>")),
            "13 0 0 0 4864 1 0 0 0 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/Names<</EmbeddedFiles<</Names[(a)1(b)2(c)]>>>>")),
            "13 0 0 0 4864 0 0 0 2 ");
  EXPECT_EQ(SummaryOf(WithCatalog("/AcroForm<</Fields[7 0 R 8 0 R 9 0 R 10 0 R]>>",
                                  "7 <</FT/Sig/T(a)/V<<>>>>\n8 <</FT/Sig/T(b)>>\n"
                                  "9 <</FT/Sig/T(c)/Kids[11 0 R]>>\n10 <</FT/Tx/T(d)/V<<>>>>\n"
                                  "11 <</T(e)/Parent 9 0 R/V 12 0 R>>\n12 <</Type/Sig>>")),
            "13 0 0 0 4864 0 2 4 0 ");
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
