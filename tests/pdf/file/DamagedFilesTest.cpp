// Cross-references and streams that are not as they should be, and what is made of them.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/Document.h"
#include "pdf/write/Serialize.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

class Opened {
 public:
  explicit Opened(std::string bytes) : bytes_(std::move(bytes)) {
    document_ = Document::Open(std::make_unique<MemorySource>(bytes_), "");
  }

  Document* operator->() { return document_.get(); }

  std::string Text(std::uint32_t number, std::uint16_t generation = 0) {
    Arena arena;
    std::string text;
    AppendObject(text, document_->Load({number, generation}, arena));
    return text;
  }

  bool Found(FindingCode code) { return document_->findings().Has(code); }

 private:
  std::string bytes_;
  std::unique_ptr<Document> document_;
};

std::string Ten(std::size_t offset) {
  const std::string digits = std::to_string(offset);
  return std::string(10 - digits.size(), '0') + digits;
}

// Catalog, page tree, page, and the text in object 4, with this table in front of "trailer".
//   table - "@N" stands for the place of object N in ten digits
std::string WithTable(std::string table, const std::string& trailer = "/Root 1 0 R/Size 5") {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(text)");
  for (int number = 1; number <= 4; ++number) {
    const std::string name = "@" + std::to_string(number);
    for (std::size_t at = 0; (at = table.find(name)) != std::string::npos;) {
      table.replace(at, 2, Ten(pdf.OffsetOf(number)));
    }
  }
  const std::size_t start = pdf.size();
  return pdf
      .Raw("xref\n" + table + "trailer\n<<" + trailer + ">>\nstartxref\n" + std::to_string(start) +
           "\n%%EOF\n")
      .bytes();
}

constexpr const char* kFour = "@1 00000 n \n@2 00000 n \n@3 00000 n \n@4 00000 n \n";

TEST(DamagedTable, EntriesMayLackTheirForm) {
  const std::string null_entry = "0 5\n0000000000 65535 f \n";
  for (const std::string& table :
       {null_entry + kFour,
        std::string("0 5\n0000000000 65535 f\n@1 00000 n\n@2 00000 n\n@3 00000 n\n@4 00000 n\n"),
        std::string("0 5\n0 65535 f @1 0 n\n@2 0 n @3 0 n\n  @4 00000 n\n"),
        "0 5 " + std::string("\n \n0000000000 65535 f \n") + kFour,
        std::string("1 5\n0000000000 65535 f \n") + kFour,  // numbered from 1 by mistake
        std::string("1 2\n@1 00000 n \n@2 00000 n \n3 2\n@3 00000 n \n@4 00000 n \n")}) {
    Opened document(WithTable(table));
    EXPECT_EQ(document.Text(4), "(text)") << table;
    EXPECT_TRUE(document->IsCatalogObject(1)) << table;
    EXPECT_FALSE(document->is_rebuilt()) << table;
    EXPECT_FALSE(document.Found(FindingCode::kXrefDamaged)) << table;
  }
}

TEST(DamagedTable, MayClaimMoreEntriesThanItHas) {
  Opened document(WithTable("0 9\n0000000000 65535 f \n" + std::string(kFour)));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_TRUE(document.Found(FindingCode::kXrefDamaged));
}

TEST(DamagedTable, IsGivenUpWhereEntriesAreNone) {
  for (const char* table :
       {"0 5\n0000000000 65535 f \n@1 00000 x \n", "0 5\n(no) 65535 f \n", "0 5\n0 (no) f \n",
        "0 -1\n", "-1 2\n", "0 x\n", "foo\n", "0 5\n00000x0000 65535 f \n",
        "0 5\n0000000000x65535 f \n", "0 5\n0000000000 65535xf \n"}) {
    Opened document(WithTable(table));
    EXPECT_TRUE(document->is_rebuilt()) << table;
    EXPECT_EQ(document.Text(4), "(text)") << table;
  }
}

TEST(DamagedTable, FreesObjectsAndThoseInNoPlace) {
  Opened document(
      WithTable("0 5\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n@4 00000 f \n"));
  EXPECT_EQ(document.Text(4), "null");
  Opened nowhere(WithTable(
      "0 5\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n0000000000 00000 n \n"));
  EXPECT_EQ(nowhere.Text(4), "null");
  // A generation that cannot be frees the object, too.
  Opened generation(
      WithTable("0 5\n0000000000 65535 f \n@1 00000 n \n@2 00000 n \n@3 00000 n \n@4 65536 n \n"));
  EXPECT_EQ(generation.Text(4), "null");
}

TEST(DamagedTable, MayPointToAnotherThatIsNotThere) {
  for (const char* previous : {"-1", "99999", "9", "99999999999999999999"}) {
    Opened document(WithTable("0 5\n0000000000 65535 f \n" + std::string(kFour),
                              std::string("/Root 1 0 R/Size 5/Prev ") + previous));
    EXPECT_EQ(document.Text(4), "(text)") << previous;
    EXPECT_TRUE(document.Found(FindingCode::kXrefDamaged)) << previous;
  }
  // What is no number points nowhere.
  Opened none(
      WithTable("0 5\n0000000000 65535 f \n" + std::string(kFour), "/Root 1 0 R/Size 5/Prev(no)"));
  EXPECT_FALSE(none.Found(FindingCode::kXrefDamaged));
}

TEST(DamagedTable, MayNameAStreamThatIsNone) {
  for (const char* stream : {"9", "0", "20"}) {
    Opened document(WithTable("0 5\n0000000000 65535 f \n" + std::string(kFour),
                              std::string("/Root 1 0 R/Size 5/XRefStm ") + stream));
    EXPECT_EQ(document.Text(4), "(text)") << stream;
    EXPECT_TRUE(document.Found(FindingCode::kXrefDamaged)) << stream;
  }
  Opened beyond(WithTable("0 5\n0000000000 65535 f \n" + std::string(kFour),
                          "/Root 1 0 R/Size 5/XRefStm 99999"));
  EXPECT_FALSE(beyond.Found(FindingCode::kXrefDamaged));
}

// The objects of a document with a cross-reference stream, whose rows are of one, two and one bytes.
std::string WithStream(const std::string& entries, const std::string& rows_of_others = "",
                       const std::string& data = {}) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(text)");
  std::string rows;
  for (int number = 1; number <= 4; ++number) {
    const std::size_t place = pdf.OffsetOf(number);
    rows += '\1';
    rows += static_cast<char>(place >> 8U);
    rows += static_cast<char>(place);
    rows += '\0';
  }
  const std::size_t start = pdf.size();
  pdf.Stream(9, "/Type/XRef/Root 1 0 R" + entries, data.empty() ? rows + rows_of_others : data);
  return pdf.Raw("startxref\n" + std::to_string(start) + "\n%%EOF\n").bytes();
}

TEST(DamagedXrefStream, IsReadAsItsEntriesSay) {
  Opened document(WithStream("/Size 5/W[1 2 1]/Index[1 4]"));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_FALSE(document->is_rebuilt());
  EXPECT_EQ(document->findings().count(), 0U);
  // Another range: objects 20 and 21 are where 3 and 4 should be.
  Opened moved(WithStream("/Size 30/W[1 2 1]/Index[1 2 3 1 4 1]"));
  EXPECT_EQ(moved.Text(4), "(text)");
  EXPECT_FALSE(moved->is_rebuilt());
  // Object 0 is none, whatever its entry says.
  Opened zero(
      WithStream("/Size 6/W[1 2 1]/Index[1 4 0 1 5 1]", std::string("\1\0\20\0\1\0\20\0", 8)));
  EXPECT_EQ(zero.Text(4), "(text)");
  EXPECT_FALSE(zero->Exists(0));
  EXPECT_TRUE(zero->Exists(5));
  // More than there is.
  Opened more(WithStream("/Size 5/W[1 2 1]/Index[1 400]"));
  EXPECT_EQ(more.Text(4), "(text)");
  EXPECT_FALSE(more->is_rebuilt());
}

TEST(DamagedXrefStream, MayLeaveOutTheKindsOfItsEntries) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(text)");
  std::string rows;
  for (int number = 1; number <= 4; ++number) {
    rows += static_cast<char>(pdf.OffsetOf(number) >> 8U);
    rows += static_cast<char>(pdf.OffsetOf(number));
  }
  const std::size_t start = pdf.size();
  pdf.Stream(9, "/Type/XRef/Root 1 0 R/Size 5/W[0 2 0]/Index[1 4]", rows);
  Opened document(pdf.Raw("startxref\n" + std::to_string(start) + "\n%%EOF\n").bytes());
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(DamagedXrefStream, IsGivenUpWhereItsEntriesCannotBe) {
  for (const char* entries :
       {"/Size 5/W[1 2]/Index[1 4]", "/Size 5/W[1 -2 1]/Index[1 4]", "/Size 5/W[1 9 1]/Index[1 4]",
        "/Size 5/W[0 0 0]/Index[1 4]", "/Size 5/W[1 2 1]/Index[-1 4]",
        "/Size 5/W[1 2 1]/Index[1 -4]", "/Size 5/W[1 2 1]/Index[9999999999 4]",
        "/Size 5/W[1(x)1]/Index[1 4]", "/Size 5/W[1 2 1]/Index[1 4]/Filter/FlateDecode"}) {
    Opened document(WithStream(entries));
    EXPECT_TRUE(document->is_rebuilt()) << entries;
    EXPECT_EQ(document.Text(4), "(text)") << entries;
  }
}

TEST(DamagedXrefStream, IsReadAsFarAsItCanBeDecoded) {
  std::string hex;
  {
    const std::string whole = WithStream("/Size 5/W[1 2 1]/Index[1 4]");
    const std::size_t at = whole.find("stream\n", whole.find("/XRef")) + 7;
    for (std::size_t i = 0; i < 16; ++i) {
      const auto byte = static_cast<unsigned char>(whole[at + i]);
      hex += "0123456789ABCDEF"[byte >> 4U];
      hex += "0123456789ABCDEF"[byte & 15U];
    }
  }
  Opened document(WithStream("/Size 5/W[1 2 1]/Index[1 4]/Filter/ASCIIHexDecode", "", hex + ">"));
  EXPECT_EQ(document.Text(4), "(text)");
  EXPECT_FALSE(document->is_rebuilt());
}

TEST(DamagedStream, EndsWhereItsObjectDoesIfNothingElseTells) {
  const auto data_of = [](const std::string& rest) {
    RawPdf pdf;
    pdf.Pages(1).Mark(4).Raw("4 0 obj\n<</Length 99999>>\nstream\n" + rest);
    Opened document(pdf.Object(5, "(next)").Table());
    EXPECT_EQ(document.Text(5), "(next)") << rest;
    return document->TryDecodeStream(4)->data;
  };
  EXPECT_EQ(data_of("the data\nendstream\nendobj\n"), "the data");
  EXPECT_EQ(data_of("the data\r\nendstream\nendobj\n"), "the data");
  EXPECT_EQ(data_of("the data\rendstream\nendobj\n"), "the data");
  EXPECT_EQ(data_of("the dataendstream\nendobj\n"), "the data");
  EXPECT_EQ(data_of("the data\n\nendstream\nendobj\n"), "the data\n");
  EXPECT_EQ(data_of("the data\nendobj\n"), "the data");
  // "endobj" counts where another object follows only.
  EXPECT_EQ(data_of("endobj in the data\nendstream\nendobj\n"), "endobj in the data");
  EXPECT_EQ(data_of("endobj endobj data\nendobj\n"), "endobj endobj data");
}

TEST(DamagedStream, EndsWithTheFileIfNothingEndsIt) {
  RawPdf pdf;
  pdf.Pages(1).Raw("4 0 obj\n<<>>\nstream\nto the end");
  Opened document(pdf.bytes());
  EXPECT_EQ(document->TryDecodeStream(4)->data, "to the end");
  EXPECT_TRUE(document.Found(FindingCode::kStreamEndMissing));
}

TEST(DamagedStream, EndsWithAKeywordThatIsTheEndOfTheFile) {
  for (const std::string end : {"endstream", "endstream\n", "endstreamX"}) {
    RawPdf pdf;
    pdf.Pages(1).Raw("4 0 obj\n<</Length 99>>\nstream\nto the end\n" + end);
    Opened document(pdf.bytes());
    EXPECT_EQ(document->TryDecodeStream(4)->data, "to the end") << end;
    EXPECT_FALSE(document.Found(FindingCode::kStreamEndMissing)) << end;
  }
}

TEST(DamagedStream, BeginsBehindTheLineOfItsKeyword) {
  const auto data_of = [](const std::string& before) {
    RawPdf pdf;
    pdf.Pages(1).Object(4, "<</Length 4>>" + before + "data\nendstream");
    return Opened(pdf.Table())->TryDecodeStream(4)->data;
  };
  for (const char* before : {"stream\n", "stream\r\n", "stream\r", "\nstream\n", "stream \n",
                             "stream \t\r\n", "% comment\nstream\n", "stream"}) {
    EXPECT_EQ(data_of(before), "data") << before;
  }
  EXPECT_EQ(data_of(std::string(3000, ' ') + "stream\n"), "data");
}

TEST(FoundObjects, AreKnownByTheirEntriesWithoutTypes) {
  // The catalog has pages, the page tree children and their number.
  RawPdf pdf;
  pdf.Object(1, "<</Pages 2 0 R>>")
      .Object(2, "<</Kids[]/Count 0>>")
      .Object(5, "<</Pages 2 0 R/Root 1 0 R>>");
  Opened document(pdf.bytes());
  EXPECT_TRUE(document->IsCatalogObject(1));
  // Fields and outlines have children, too.
  for (const char* other : {"/T(a)", "/FT/Tx", "/First 3 0 R", "/Type/X"}) {
    RawPdf tree;
    tree.Object(2, "<</Kids[]/Count 0>>")
        .Object(3, "<</Kids[]/Count 9" + std::string(other) + ">>");
    Opened found(tree.bytes());
    Arena arena;
    EXPECT_EQ(found->Catalog(arena).Get("Pages").AsReference().number, 2U) << other;
  }
}

TEST(FoundObjects, HaveNumbersAndGenerationsInBounds) {
  RawPdf pdf;
  pdf.Pages(1);
  pdf.Raw("0 0 obj (a) endobj\n99999999999 0 obj (b) endobj\n8 65536 obj (c) endobj\n");
  pdf.Raw("9 65535 obj (d) endobj\n10 00000 obj (e) endobj\n11 0obj (f) endobj\n");
  pdf.Raw("12 000000 obj (g) endobj\nx13 0 obj (h) endobj\n14  \n 0 \n obj(i) endobj\n");
  Opened document(pdf.bytes());
  EXPECT_FALSE(document->Exists(0));
  EXPECT_FALSE(document->Exists(8));
  EXPECT_EQ(document.Text(8), "null");
  EXPECT_EQ(document.Text(9, 65535), "(d)");
  EXPECT_EQ(document.Text(10), "(e)");
  EXPECT_EQ(document.Text(11), "(f)");
  EXPECT_EQ(document.Text(12), "null");
  EXPECT_EQ(document.Text(14), "(i)");
}

TEST(FoundObjects, AreMembersOfStreamsWhereverTheListSaysTheyAre) {
  const auto text_of = [](const std::string& entries, const std::string& data) {
    RawPdf pdf;
    pdf.Pages(1).Stream(8, "/Type/ObjStm" + entries, data);
    return Opened(pdf.bytes()).Text(20);
  };
  EXPECT_EQ(text_of("/N 2/First 11", "20 4 21 0   (b) (a)"), "(a)");
  EXPECT_EQ(text_of("/N 2/First 2", "20 4 21 0 (b) (a)"), "(a)");  // begins behind the list
  EXPECT_EQ(text_of("/N 2/First 999", "20 5 21 0 (b) (a)"), "(a)");
  EXPECT_EQ(text_of("/N 9/First 10", "20 4 21 0 (b) (a)"), "(a)");
  EXPECT_EQ(text_of("/N 1/First 5", "20 99 (b)"), "null");
  EXPECT_EQ(text_of("/N 1/First 5", "20 -1 (b)"), "null");
}

}  // namespace
}  // namespace TarnixTools::pdf
