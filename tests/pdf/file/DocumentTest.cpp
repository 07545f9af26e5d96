#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/write/Serialize.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// A document over bytes that it keeps.
class Opened {
 public:
  explicit Opened(std::string bytes, std::string_view password = "") : bytes_(std::move(bytes)) {
    document_ = Document::Open(std::make_unique<MemorySource>(bytes_), password);
  }

  Document* operator->() { return document_.get(); }

  std::string Text(std::uint32_t number) {
    Arena arena;
    std::string text;
    AppendObject(text, document_->Load({number, 0}, arena));
    return text;
  }

  bool Found(FindingCode code) { return document_->findings().Has(code); }

 private:
  std::string bytes_;
  std::unique_ptr<Document> document_;
};

ErrorCode OpenError(const std::string& bytes) {
  try {
    Opened document(bytes);
  } catch (const Error& error) {
    return error.code();
  }
  ADD_FAILURE() << "the document opened";
  return ErrorCode::kInternal;
}

TEST(Document, ReadsAClassicTable) {
  Opened document(RawPdf().Pages(1).Object(4, "(text)").Table());
  EXPECT_TRUE(document->IsCatalogObject(1));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_EQ(document.Text(99), "null");
  EXPECT_EQ(document->findings().count(), 0U);
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(Document, TakesTheNewestOfIncrementalUpdates) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(old)").Object(5, "(kept)");
  const std::size_t first = pdf.size();
  pdf.Table();
  RawPdf update(pdf.bytes());
  update.Object(4, "(new)");
  Opened document(update.Table("/Root 1 0 R/Prev " + std::to_string(first)));
  EXPECT_EQ(document.Text(4), "(new)");
  EXPECT_EQ(document.Text(5), "(kept)");
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(Document, HonoursFreedObjects) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(gone)");
  const std::size_t first = pdf.size();
  pdf.Table();
  const std::size_t second = pdf.size();
  pdf.Raw("xref\n4 1\n0000000000 00001 f \ntrailer\n<</Size 5/Root 1 0 R/Prev " +
          std::to_string(first) + ">>\nstartxref\n" + std::to_string(second) + "\n%%EOF\n");
  Opened document(pdf.bytes());
  EXPECT_EQ(document.Text(4), "null");
}

// An object stream with objects 1 to 3 and a cross-reference stream over it, both uncompressed.
std::string StreamedPdf(const std::string& extra_entries = "") {
  RawPdf pdf;
  std::string members;
  std::string table;
  int number = 0;
  for (const char* member : {"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
                             "<</Type/Page/Parent 2 0 R>>"}) {
    table += std::to_string(++number) + " " + std::to_string(members.size()) + " ";
    members += std::string(member) + " ";
  }
  pdf.Stream(4, "/Type/ObjStm/N 3/First " + std::to_string(table.size()), table + members);
  const std::size_t start = pdf.size();
  std::string rows;
  const auto row = [&](int type, std::size_t place, int third) {
    rows += static_cast<char>(type);
    rows += static_cast<char>(place >> 8);
    rows += static_cast<char>(place);
    rows += static_cast<char>(third);
  };
  row(0, 0, 0);
  row(2, 4, 0);
  row(2, 4, 1);
  row(2, 4, 2);
  row(1, pdf.OffsetOf(4), 0);
  row(1, start, 0);
  pdf.Stream(5, "/Type/XRef/Size 6/W[1 2 1]/Root 1 0 R" + extra_entries, rows);
  pdf.Raw("startxref\n" + std::to_string(start) + "\n%%EOF\n");
  return pdf.bytes();
}

TEST(Document, ReadsCrossReferenceAndObjectStreams) {
  Opened document(StreamedPdf());
  EXPECT_EQ(document.Text(3), "<</Type/Page/Parent 2 0 R>>");
  EXPECT_EQ(document->findings().count(), 0U);
}

// Object streams 10, 11 and so on, each with the length of the one before; object 2 is in the first.
std::string ChainedPdf(int count) {
  RawPdf pdf;
  const int first_length = 10 + count;
  for (int i = 0; i < count; ++i) {
    const int member = i == 0 ? 2 : first_length + i - 1;
    const std::string table = std::to_string(member) + " 0 ";
    const std::string length = i + 1 == count ? "16" : std::to_string(first_length + i) + " 0 R";
    std::string data = table + (i == 0 ? "(text)" : "16");
    data.resize(16, ' ');
    pdf.Object(10 + i, "<</Type/ObjStm/N 1/First " + std::to_string(table.size()) + "/Length " +
                           length + ">>\nstream\n" + data + "\nendstream");
  }
  std::string rows(std::size_t{6} * 10, '\0');
  const auto row = [&](int type, std::size_t place) {
    rows += static_cast<char>(type);
    for (int shift = 24; shift >= 0; shift -= 8) {
      rows += static_cast<char>(place >> shift);
    }
    rows += '\0';
  };
  for (int i = 0; i < count; ++i) {
    row(1, pdf.OffsetOf(10 + i));
  }
  for (int i = 1; i < count; ++i) {
    row(2, static_cast<std::size_t>(10 + i));
  }
  rows.replace(std::size_t{6} * 2, 6, std::string("\2\0\0\0\n\0", 6));
  const std::size_t start = pdf.size();
  pdf.Stream(9, "/Type/XRef/W[1 4 1]/Root<<>>/Size " + std::to_string(first_length + count - 1),
             rows);
  return pdf.Raw("startxref\n" + std::to_string(start) + "\n%%EOF\n").bytes();
}

TEST(Document, ReadsObjectStreamsThatNeedEachOtherWithoutRecursion) {
  for (const int count : {1, 3, 6000}) {
    Opened document(ChainedPdf(count));
    EXPECT_EQ(document.Text(2), "(text)") << count;
  }
}

TEST(Document, ReadsHybridFiles) {
  RawPdf pdf;
  pdf.Pages(1);
  pdf.Stream(8, "/Type/ObjStm/N 1/First 4", "9 0 (hidden)");
  const std::size_t stream = pdf.size();
  std::string row("\x02\x00\x08\x00", 4);
  pdf.Stream(7, "/Type/XRef/Size 10/W[1 2 1]/Index[9 1]", row);
  Opened document(pdf.Table("/Root 1 0 R/XRefStm " + std::to_string(stream)));
  EXPECT_EQ(document.Text(9), "(hidden)");
}

TEST(Document, FollowsOffsetsThatCountFromTheHeader) {
  const std::string plain = RawPdf().Pages(1).Object(4, "(text)").Table();
  Opened document("HTTP/1.1 200 OK\r\nContent-Type: application/pdf\r\n\r\n" + plain);
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_TRUE(document.Found(FindingCode::kHeaderNotFirst));
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(Document, FindsObjectsWhenTheTableIsWrong) {
  Opened document(RawPdf().Pages(1).Object(4, "(text)").Table("/Root 1 0 R", 7));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_TRUE(document.Found(FindingCode::kXrefRebuilt));
}

TEST(Document, FindsObjectsWhenNothingPointsToTheTable) {
  const std::string plain = RawPdf().Pages(1).Object(4, "(text)").Table();
  for (const std::string& bytes :
       {plain.substr(0, plain.find("xref")), plain.substr(0, plain.rfind("startxref")),
        plain.substr(plain.find('\n') + 1)}) {
    Opened document(bytes);
    EXPECT_EQ(document.Text(4), "(text)");
    EXPECT_TRUE(document->IsCatalogObject(1));
  }
}

TEST(Document, ConfirmsWhatTheTableSaysBeforeItGivesItUp) {
  // Object 5 is not where the table says; the text in object 4's data must not pass for object 6.
  RawPdf pdf;
  pdf.Pages(1)
      .Stream(4, "", "6 0 obj (inside a stream) endobj")
      .Object(5, "(five)")
      .Object(6, "(six)");
  std::string bytes = pdf.Table();
  const std::size_t line = bytes.find("5 1\n") + 4;
  bytes.replace(line, 10, "0000000001");
  Opened document(bytes);
  EXPECT_EQ(document.Text(5), "(five)");
  EXPECT_EQ(document.Text(6), "(six)");
}

TEST(Document, FindsMembersOfObjectStreamsWithoutACrossReference) {
  std::string bytes = StreamedPdf();
  bytes.replace(bytes.rfind("startxref") + 10, 3, "001");
  Opened document(bytes);
  EXPECT_EQ(document.Text(3), "<</Type/Page/Parent 2 0 R>>");
  EXPECT_TRUE(document->is_rebuilt());
}

TEST(Document, TakesTheRootOfATrailerThatTheSearchFinds) {
  // Two catalogs, of which the last one in the file is not the root.
  RawPdf pdf;
  pdf.Pages(1).Object(9, "<</Type/Catalog/Pages 2 0 R/Lang(no)>>");
  Opened table(pdf.bytes() + "trailer\n<</Root 1 0 R/Info 7 0 R>>\n");
  EXPECT_TRUE(table->IsCatalogObject(1));
  EXPECT_EQ(table->trailer().Get("Info").AsReference().number, 7U);
  EXPECT_FALSE(table.Found(FindingCode::kTrailerRebuilt));
  RawPdf streamed = pdf;
  streamed.Stream(8, "/Type/XRef/W[1 2 1]/Size 10/Root 1 0 R/Info 6 0 R", "");
  Opened stream(streamed.bytes());
  EXPECT_TRUE(stream->IsCatalogObject(1));
  EXPECT_EQ(stream->trailer().Get("Info").AsReference().number, 6U);
  EXPECT_FALSE(stream.Found(FindingCode::kTrailerRebuilt));
  // The newest of several.
  Opened both(streamed.bytes() + "trailer\n<</Root 9 0 R>>\n");
  EXPECT_TRUE(both->IsCatalogObject(9));
  Opened none(pdf.bytes());
  EXPECT_TRUE(none->IsCatalogObject(9));
  EXPECT_TRUE(none.Found(FindingCode::kTrailerRebuilt));
}

TEST(Document, TakesACatalogThatStandsInTheTrailer) {
  RawPdf pdf;
  pdf.Object(2, "<</Type/Pages/Kids[]/Count 0>>").Raw("trailer<</Root<</Pages 2 0 R>>>>");
  Opened document(pdf.bytes());
  Arena arena;
  EXPECT_FALSE(document->IsCatalogObject(0));
  EXPECT_FALSE(document->IsCatalogObject(2));
  EXPECT_EQ(document->Catalog(arena).Get("Pages").AsReference().number, 2U);
  EXPECT_TRUE(document.Found(FindingCode::kCatalogInTrailer));
}

TEST(Document, ReadsNoMoreForACatalogThatStandsInTheTrailer) {
  RawPdf pdf;
  pdf.Object(2, "<</Type/Pages/Kids[]/Count 0>>").Object(3, "<</Type/Catalog/Pages 2 0 R>>");
  Opened document(pdf.Table("/Root<</Pages 2 0 R/Lang(de)>>"));
  Arena arena;
  EXPECT_EQ(document->Catalog(arena).Get("Lang").Text(), "de");
  EXPECT_FALSE(document->is_rebuilt());
  document->Rebuild();
  EXPECT_EQ(document->Catalog(arena).Get("Lang").Text(), "de");
}

TEST(Document, PassesOverARootThatIsNoCatalog) {
  for (const char* root : {"<</Pages 4 0 R>>", "<<>>", "7", "4 0 R", "99 0 R", "null"}) {
    RawPdf pdf;
    pdf.Pages(1).Object(4, "(text)");
    Opened document(pdf.Table(std::string("/Root ") + root));
    EXPECT_TRUE(document->IsCatalogObject(1)) << root;
    EXPECT_FALSE(document.Found(FindingCode::kCatalogInTrailer)) << root;
  }
}

TEST(Document, TakesThePageTreeWhereTheCatalogIsLost) {
  RawPdf pdf;
  pdf.Object(2, "<</Type/Pages/Kids[4 0 R]/Count 1>>")
      .Object(3, "<</Type/Pages/Kids[5 0 R 4 0 R]/Count 2>>")
      .Object(4, "<</Type/Pages/Parent 3 0 R/Kids[]/Count 9>>");
  Opened document(pdf.bytes());
  Arena arena;
  EXPECT_TRUE(document.Found(FindingCode::kTrailerRebuilt));
  EXPECT_EQ(document->Catalog(arena).Get("Pages").AsReference().number, 3U);
}

TEST(Document, SalvagesPagesInFileOrder) {
  RawPdf pdf;
  pdf.Stream(10, "/Type/ObjStm/N 2/First 9", "1 0 2 14 <</Type/Page>><</Type/Page>>")
      .Object(3, "<</Type/Page>>")
      .Stream(11, "/Type/ObjStm/N 1/First 4", "4 0 <</Type/Page>>");
  Opened document(pdf.bytes());
  EXPECT_THAT(document->SalvagedPages(), ::testing::ElementsAre(1, 2, 3, 4));
}

TEST(Document, SurvivesCrossReferenceLoops) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(text)");
  Opened document(pdf.Table("/Root 1 0 R/Prev " + std::to_string(pdf.size())));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_TRUE(document.Found(FindingCode::kXrefLoop));
}

TEST(Document, MeasuresStreamsWithAWrongLength) {
  for (const char* length : {"0", "3", "9999", "-1", "4 0 R", "77 0 R", "(no)", "99999999999999"}) {
    RawPdf pdf;
    pdf.Pages(1).Object(4,
                        std::string("<</Length ") + length + ">>\nstream\ndata of it\nendstream");
    Opened document(pdf.Table());
    const auto decoded = document->TryDecodeStream(4);
    ASSERT_TRUE(decoded) << length;
    EXPECT_EQ(decoded->data, "data of it") << length;
    EXPECT_TRUE(document.Found(FindingCode::kStreamLengthWrong)) << length;
  }
}

TEST(Document, TakesTheDataAsLongAsTheLengthSays) {
  RawPdf pdf;
  pdf.Pages(1).Stream(4, "", "endstream in the data endstream");
  Opened document(pdf.Table());
  EXPECT_EQ(document->TryDecodeStream(4)->data, "endstream in the data endstream");
}

TEST(Document, DecodesThroughFiltersInIndirectObjects) {
  RawPdf pdf;
  pdf.Pages(1).Object(5, "[/ASCIIHexDecode]").Stream(4, "/Filter 5 0 R", "48 69>");
  Opened document(pdf.Table());
  EXPECT_EQ(document->TryDecodeStream(4)->data, "Hi");
}

TEST(Document, GivesNullForReferencesInACircle) {
  Opened document(RawPdf().Pages(1).Object(4, "5 0 R").Object(5, "4 0 R").Table());
  Arena arena;
  EXPECT_TRUE(document->Resolve(Object::Ref({4, 0}), arena).IsNull());
}

TEST(Document, RefusesWhatIsNoPdf) {
  EXPECT_EQ(OpenError(""), ErrorCode::kNotAPdf);
  EXPECT_EQ(OpenError("hello"), ErrorCode::kNotAPdf);
  EXPECT_EQ(OpenError(std::string(100000, 'x')), ErrorCode::kNotAPdf);
}

TEST(Document, RefusesASecurityHandlerItDoesNotKnow) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "<</Filter/Adobe.PubSec/V 4>>");
  EXPECT_EQ(OpenError(pdf.Table("/Root 1 0 R/Encrypt 4 0 R")), ErrorCode::kUnsupportedSecurity);
}

// A source that has become shorter since it was opened.
class ShrinkingSource : public MemorySource {
 public:
  explicit ShrinkingSource(std::string_view bytes)
      : MemorySource(bytes), size_(bytes.size() + 100000) {}

  std::uint64_t Size() const override { return size_; }

 private:
  std::uint64_t size_;
};

TEST(Document, NoticesThatTheFileBecameShorter) {
  const std::string bytes = RawPdf().Pages(1).Table();
  try {
    Document::Open(std::make_unique<ShrinkingSource>(bytes), "");
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kSourceChanged);
  }
}

TEST(Document, ReadsObjectsAcrossBlockBorders) {
  // Objects and a table that straddle the borders of the blocks in which the file is read.
  RawPdf pdf;
  pdf.Pages(1);
  for (int number = 10; number < 4010; ++number) {
    pdf.Object(number, "<</N " + std::to_string(number) + "/S(" +
                           std::string(static_cast<std::size_t>(number % 97), 'x') + ")>>");
  }
  Opened document(pdf.Table());
  for (int number = 10; number < 4010; ++number) {
    Arena arena;
    EXPECT_EQ(document->Load({static_cast<std::uint32_t>(number), 0}, arena).Get("N").IntegerOr(0),
              number);
  }
  EXPECT_EQ(document->findings().count(), 0U);
}

TEST(Document, ReadsAnObjectLargerThanAnyWindow) {
  RawPdf pdf;
  const std::string text(700000, 'y');
  pdf.Pages(1).Object(4, "(" + text + ")");
  Opened document(pdf.Table());
  EXPECT_EQ(document.Text(4).size(), text.size() + 2);
}

TEST(Document, KeepsLargeObjectsThatAreAskedForAgain) {
  std::string large = "[(first)";
  for (int i = 0; i < 1000; ++i) {
    large += " 1 0 R";
  }
  testing::RawPdf file;
  file.Pages(1).Object(10, large + "]").Object(11, "[(small)]");
  const auto document =
      Document::Open(std::make_unique<MemorySource>(file.Table()), std::string_view());
  const auto items_of = [&](std::uint32_t number, Arena& arena) {
    return document->Load({number, 0}, arena).Items();
  };
  Arena first;
  Arena second;
  const auto fresh = items_of(10, first);
  EXPECT_NE(fresh.data(), items_of(10, second).data());
  for (int i = 0; i < 5; ++i) {
    items_of(10, second);
    items_of(11, second);
  }
  const auto kept = items_of(10, first);
  EXPECT_EQ(kept.data(), items_of(10, second).data());
  EXPECT_NE(items_of(11, first).data(), items_of(11, second).data());
  second.Reset();
  EXPECT_EQ(kept.size(), 1001U);
  EXPECT_EQ(kept[0].Text(), "first");
  document->Rebuild();
  EXPECT_EQ(items_of(10, second).size(), 1001U);
  EXPECT_EQ(kept[0].Text(), "first");
}

}  // namespace
}  // namespace TarnixTools::pdf
