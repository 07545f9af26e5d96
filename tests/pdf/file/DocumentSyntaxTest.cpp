// What an observer hears of a file, on bytes made here.
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/file/Document.h"
#include "pdf/syntax/SyntaxObserver.h"
#include "pdf/write/Serialize.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Spacing that can be read: "\r" and "\n" as letters, spaces as dots.
std::string Shown(std::string_view text) {
  std::string shown;
  for (const char c : text) {
    shown += c == '\r' ? "\\r" : c == '\n' ? "\\n" : c == ' ' ? "." : std::string(1, c);
  }
  return shown;
}

// Keeps what it hears: text of its own in place of views.
class Listener : public SyntaxObserver {
 public:
  explicit Listener(std::string bytes, bool whole = true) : bytes_(std::move(bytes)) {
    document_ = Document::Open(std::make_unique<MemorySource>(bytes_), "");
    if (whole) {
      document_->Observe(*this);
    }
  }

  Document& document() { return *document_; }

  const std::string& bytes() const { return bytes_; }

  void OnHeader(const HeaderSyntax& header) override {
    headers.push_back(std::to_string(header.offset) + "|" + std::string(header.line) + "|" +
                      Shown(header.line_end) + "|" + std::string(header.next_line));
  }

  void OnStartXref(const StartXrefSyntax& start) override {
    EXPECT_EQ(bytes_.substr(start.offset, 9), "startxref");
    starts.push_back(Shown(start.after_keyword) + "|" + std::to_string(start.value) + "|" +
                     Shown(start.after_value));
  }

  void OnFileEnd(const FileEndSyntax& end) override {
    EXPECT_EQ(end.size, bytes_.size());
    EXPECT_EQ(end.has_marker, bytes_.compare(end.offset, 5, "%%EOF") == 0);
    ends.push_back((end.has_marker ? "%%EOF|" : "|") + Shown(end.after));
  }

  void OnXrefTable(const XrefTableSyntax& table) override {
    EXPECT_EQ(bytes_.substr(table.offset, 4), "xref");
    xref.push_back("xref|" + Shown(table.after_keyword));
  }

  void OnXrefSubsection(const XrefSubsectionSyntax& subsection) override {
    xref.push_back(std::to_string(subsection.first) + "|" + Shown(subsection.between) + "|" +
                   std::to_string(subsection.count) + "|" + Shown(subsection.after));
  }

  void OnXrefEntry(const XrefEntrySyntax& entry) override {
    EXPECT_EQ(bytes_.substr(entry.offset, entry.text.size()), entry.text);
    xref.push_back(std::to_string(entry.number) + ":" + Shown(entry.text) +
                   (entry.is_fixed ? "" : " odd"));
  }

  void OnTrailer(const TrailerSyntax& trailer) override {
    std::string text = bytes_.substr(trailer.offset, 7) + "|";
    AppendObject(text, trailer.dictionary);
    trailers.push_back(text + (trailer.is_stream ? "|stream" : ""));
  }

  void OnLinearization(const LinearizationSyntax& linearization) override {
    linearizations.push_back(std::to_string(linearization.reference.number) + "@" +
                             std::to_string(linearization.offset) + " /L " +
                             std::to_string(linearization.dictionary.Get("L").IntegerOr(-1)));
  }

  void OnObject(const ObjectSyntax& object) override {
    numbers.push_back(object.reference.number);
    if (object.holder == 0) {
      EXPECT_TRUE(IsDigit(bytes_.at(object.offset)));
    }
    objects.push_back(std::to_string(object.reference.number) + "|" + Shown(object.before) + "|" +
                      Shown(object.after_number) + "|" + Shown(object.after_generation) + "|" +
                      Shown(object.after_keyword) +
                      (object.holder != 0 ? "|in " + std::to_string(object.holder) : ""));
  }

  void OnToken(const TokenSyntax& token) override {
    tokens.push_back(std::string(token.token.text));
    token_offsets.push_back(token.offset);
  }

  void OnRepeatedKey(const RepeatedKeySyntax& key) override {
    repeated.push_back(std::string(key.name));
  }

  void OnStream(const StreamSyntax& stream) override {
    EXPECT_EQ(bytes_.substr(stream.offset, 6), "stream");
    EXPECT_EQ(stream.has_end, bytes_.compare(stream.end, 9, "endstream") == 0);
    streams.push_back(Shown(stream.after_keyword) + "|" +
                      (stream.claimed ? std::to_string(*stream.claimed) : "none") + "|" +
                      std::to_string(stream.end - stream.data) + "|" + Shown(stream.before_end) +
                      (stream.has_end ? "" : "|no end"));
  }

  void OnObjectEnd(const ObjectEndSyntax& end) override {
    EXPECT_EQ(end.has_keyword, bytes_.compare(end.offset, 6, "endobj") == 0);
    object_ends.push_back(std::to_string(end.reference.number) + "|" + Shown(end.before) + "|" +
                          Shown(end.after) + (end.has_keyword ? "" : "|no keyword") +
                          (end.is_regular ? "" : "|irregular"));
  }

  std::vector<std::string> headers, starts, ends, xref, trailers, linearizations, objects, tokens,
      repeated, streams, object_ends;
  std::vector<std::uint32_t> numbers;
  std::vector<std::uint64_t> token_offsets;

 private:
  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }

  std::string bytes_;
  std::unique_ptr<Document> document_;
};

// The object alone, written as `text` between whatever stands before and after it.
Listener HeardOfObject(const std::string& text, int number = 4) {
  RawPdf pdf;
  pdf.Pages(1).Mark(number).Raw(text);
  Listener listener(pdf.Table(), false);
  Arena arena;
  listener.document().Load({static_cast<std::uint32_t>(number), 0}, arena, listener);
  return listener;
}

TEST(DocumentSyntax, HearsTheHeaderAndTheLineAfterIt) {
  EXPECT_THAT(Listener(RawPdf("%PDF-1.4\r\n%\xE2\xE3\xCF\xD3\r\n").Pages(1).Table()).headers,
              ElementsAre("0|%PDF-1.4|\\r\\n|%\xE2\xE3\xCF\xD3"));
  EXPECT_THAT(Listener(RawPdf("junk%PDF-1.7 x\r").Pages(1).Table()).headers,
              ElementsAre("4|%PDF-1.7 x|\\r|1 0 obj"));
  EXPECT_THAT(Listener(RawPdf("").Pages(1).Table()).headers, IsEmpty());
}

TEST(DocumentSyntax, HearsWhatFollowsTheEnd) {
  const std::string plain = RawPdf().Pages(1).Table();
  const std::string cut = plain.substr(0, plain.rfind('\n'));
  EXPECT_THAT(Listener(plain).ends, ElementsAre("%%EOF|\\n"));
  EXPECT_THAT(Listener(cut).ends, ElementsAre("%%EOF|"));
  EXPECT_THAT(Listener(plain + "\r\nmore").ends, ElementsAre("%%EOF|\\n\\r\\nmore"));
  EXPECT_THAT(Listener(cut.substr(0, cut.rfind('%') - 1)).ends, ElementsAre("|"));
  EXPECT_EQ(Listener(plain + std::string(500, 'x')).ends.front().size(),
            6 + 2 + limits::kMaxSpacing - 1);
}

TEST(DocumentSyntax, HearsWhereTheCrossReferenceStarts) {
  std::string bytes = RawPdf().Pages(1).Table();
  const std::string offset = std::to_string(bytes.rfind("xref\n0 1"));
  EXPECT_THAT(Listener(bytes).starts, ElementsAre("\\n|" + offset + "|\\n"));
  bytes.replace(bytes.rfind("\n%%EOF"), 1, " \r\n");
  EXPECT_THAT(Listener(bytes).starts, ElementsAre("\\n|" + offset + "|.\\r\\n"));
  bytes.replace(bytes.rfind(offset), offset.size(), "none");
  EXPECT_THAT(Listener(bytes).starts, ElementsAre("\\n|-1|"));
}

TEST(DocumentSyntax, HearsHowATableIsWritten) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  const std::size_t start = pdf.size();
  char rows[2][24];
  for (int i = 0; i < 2; ++i) {
    std::snprintf(rows[i], sizeof rows[i], "%010zu 00000 n", pdf.OffsetOf(i + 1));
  }
  pdf.Raw("xref \n0  2\r\n0000000000 65535 f\r\n" + std::string(rows[0]) + " \n2 1 \n" + rows[1] +
          "\n\ntrailer<</Size 3/Root 1 0 R/ID[<4><41>]>>\nstartxref\n" + std::to_string(start) +
          "\n%%EOF\n");
  Listener listener(pdf.bytes());
  EXPECT_THAT(listener.xref, ElementsAre("xref|.\\n", "0|..|2|\\r\\n", "0:0000000000.65535.f\\r\\n",
                                         "1:" + Shown(rows[0]) + ".\\n", "2|.|1|.\\n",
                                         "2:" + Shown(rows[1]) + "\\n\\n odd"));
  EXPECT_THAT(listener.trailers, ElementsAre("trailer|<</Size 3/Root 1 0 R/ID[<40><41>]>>"));
  EXPECT_THAT(listener.tokens, ::testing::IsSupersetOf({"/ID", "<4>", "<41>"}));
  EXPECT_FALSE(listener.document().is_rebuilt());
}

TEST(DocumentSyntax, HearsEveryRevision) {
  RawPdf pdf;
  pdf.Pages(1);
  const std::size_t first = pdf.size();
  pdf.Table();
  RawPdf update(pdf.bytes());
  update.Object(4, "(new)");
  Listener listener(update.Table("/Root 1 0 R/Prev " + std::to_string(first)));
  ASSERT_EQ(listener.trailers.size(), 2U);
  EXPECT_NE(listener.trailers[0].find("/Prev"), std::string::npos) << "the newest comes first";
  EXPECT_THAT(listener.numbers, ElementsAre(1, 2, 3, 4));
}

TEST(DocumentSyntax, HearsObjectsInFileOrderWithTheirSpacing) {
  RawPdf pdf;
  pdf.Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  Listener listener(pdf.Table());
  EXPECT_THAT(listener.numbers, ElementsAre(3, 1, 2));
  EXPECT_THAT(listener.objects, ElementsAre("3|\\n|.|.|\\n", "1|\\n|.|.|\\n", "2|\\n|.|.|\\n"));
  EXPECT_THAT(listener.object_ends, ElementsAre("3|\\n|\\n", "1|\\n|\\n", "2|\\n|\\n"));
}

TEST(DocumentSyntax, HearsOddSpacingAroundKeywords) {
  const Listener odd = HeardOfObject("4  0\t\r\nobj%c\n(x)%d\r\n endobj  ");
  EXPECT_THAT(odd.objects, ElementsAre("4|\\n|..|\t\\r\\n|"));
  EXPECT_THAT(odd.object_ends, ElementsAre("4|%d\\r\\n.|.."));
  const Listener tight = HeardOfObject("4 0 obj<</A 1>>endobj5 0 obj 1 endobj\n");
  EXPECT_THAT(tight.objects, ElementsAre("4|\\n|.|.|"));
  EXPECT_THAT(tight.object_ends, ElementsAre("4||"));
}

TEST(DocumentSyntax, HearsThatAnObjectHasNoEnd) {
  EXPECT_THAT(HeardOfObject("4 0 obj\n(x)\n").object_ends, ElementsAre("4|\\n||no keyword"));
  EXPECT_THAT(HeardOfObject("4 0 obj\n<</A [1 2\nendobj\n").object_ends,
              ElementsAre("4|\\n|\\n|irregular"));
  EXPECT_THAT(HeardOfObject("4 0 obj\n1 %" + std::string(5000, 'c') + "\nendobj\n").object_ends,
              ElementsAre(::testing::EndsWith("|no keyword")));
}

TEST(DocumentSyntax, FindsTheNumberBehindWhiteSpace) {
  const Listener listener = HeardOfObject("\r\n 4 0 obj\n1\nendobj\n");
  EXPECT_THAT(listener.objects, ElementsAre("4|\\n\\r\\n.|.|.|\\n"));
}

TEST(DocumentSyntax, HearsHowAStreamIsWritten) {
  const auto streams = [](const std::string& rest) {
    return HeardOfObject("4 0 obj\n" + rest + "\nendobj\n").streams;
  };
  EXPECT_THAT(streams("<</Length 3>>\nstream\nabc\nendstream"), ElementsAre("\\n|3|4|c\\n"));
  EXPECT_THAT(streams("<</Length 3>>stream\r\nabc\r\nendstream"), ElementsAre("\\r\\n|3|5|\\r\\n"));
  EXPECT_THAT(streams("<</Length 3>>stream\rabcendstream"), ElementsAre("\\r|3|3|bc"));
  EXPECT_THAT(streams("<</Length 4>>stream  \nabc\nendstream"), ElementsAre("..\\n|4|4|c\\n"));
  EXPECT_THAT(streams("<</Length 99>>%c\nstream\nabc\nendstream"), ElementsAre("\\n|99|4|c\\n"));
  EXPECT_THAT(streams("<<>>stream\nabc\nendstream"), ElementsAre("\\n|none|4|c\\n"));
  EXPECT_THAT(streams("<</Length 0>>stream\nendstream"), ElementsAre("\\n|0|0|"));
  EXPECT_THAT(streams("<</Length 3>>stream\nabc"), ElementsAre("\\n|3|4|c\\n|no end"));
  EXPECT_THAT(streams("<</Length 2 0 R>>stream\nabc\nendstream"), ElementsAre("\\n|none|4|c\\n"));
  EXPECT_THAT(streams("<</Length 3>>"), IsEmpty());
}

TEST(DocumentSyntax, FollowsALengthThatIsAnObjectOfItsOwn) {
  RawPdf pdf;
  pdf.Pages(1).Object(5, "3").Object(4, "<</Length 5 0 R>>stream\nabc\nendstream");
  EXPECT_THAT(Listener(pdf.Table()).streams, ElementsAre("\\n|3|4|c\\n"));
}

TEST(DocumentSyntax, HearsTokensAtTheirOffsets) {
  const Listener listener = HeardOfObject("4 0 obj\n<</A <4>/A +07/B(\\051)>>\nendobj\n");
  EXPECT_THAT(listener.tokens, ElementsAre("<<", "/A", "<4>", "/A", "+07", "/B", "(\\051)", ">>"));
  for (std::size_t i = 0; i < listener.tokens.size(); ++i) {
    EXPECT_EQ(listener.bytes().compare(listener.token_offsets[i], listener.tokens[i].size(),
                                       listener.tokens[i]),
              0);
  }
  EXPECT_THAT(listener.repeated, ElementsAre("A"));
}

TEST(DocumentSyntax, GivesTheValueThatItTellsOf) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "[1 2]");
  Listener listener(pdf.Table(), false);
  Arena arena;
  EXPECT_EQ(listener.document().Load({4, 0}, arena, listener).Items().size(), 2U);
  EXPECT_TRUE(listener.document().Load({99, 0}, arena, listener).IsNull());
  EXPECT_THAT(listener.numbers, ElementsAre(4));
}

TEST(DocumentSyntax, HearsMembersOfAnObjectStreamAfterIt) {
  RawPdf pdf;
  pdf.Pages(1);
  pdf.Stream(8, "/Type/ObjStm/N 2/First 8", "9 0 7 8 (hidden)<</A 1/A 2");
  const std::size_t stream = pdf.size();
  pdf.Stream(10, "/Type/XRef/Size 11/W[1 2 1]/Index[7 1 9 1]",
             std::string("\x02\x00\x08\x01\x02\x00\x08\x00", 8));
  pdf.Object(12, "null");
  Listener listener(pdf.Table("/Root 1 0 R/XRefStm " + std::to_string(stream)));
  EXPECT_THAT(listener.numbers, ElementsAre(1, 2, 3, 8, 9, 7, 10, 12));
  EXPECT_THAT(listener.objects, ::testing::IsSupersetOf({"9|||||in 8", "7|||||in 8"}));
  EXPECT_THAT(listener.object_ends,
              ::testing::IsSupersetOf({"9|||no keyword", "7|||no keyword|irregular"}));
  EXPECT_THAT(listener.repeated, ElementsAre("A"));
  const auto hidden = std::find(listener.tokens.begin(), listener.tokens.end(), "(hidden)");
  ASSERT_NE(hidden, listener.tokens.end());
  EXPECT_EQ(listener.token_offsets[static_cast<std::size_t>(hidden - listener.tokens.begin())], 8U)
      << "in the decoded data";
  EXPECT_THAT(listener.trailers,
              ElementsAre(::testing::StartsWith("trailer|"), ::testing::EndsWith("|stream")));
}

TEST(DocumentSyntax, HearsOfLinearization) {
  RawPdf pdf;
  pdf.Object(9, "<</Linearized 1/L 1234>>").Pages(1);
  EXPECT_THAT(Listener(pdf.Table()).linearizations, ElementsAre("9@9 /L 1234"));
  RawPdf late;
  late.Pages(1).Object(9, "<</Linearized 1/L 1234>>");
  EXPECT_THAT(Listener(late.Table()).linearizations, IsEmpty());
}

TEST(DocumentSyntax, HearsObjectsThatNoTableNames) {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(x)");
  Listener listener(pdf.bytes());
  EXPECT_THAT(listener.numbers, ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(listener.xref, IsEmpty());
  EXPECT_THAT(listener.starts, IsEmpty());
}

// Object 4 is not where the table says, object 5 is in no table: the whole file is read for them,
// and nothing is told twice.
TEST(DocumentSyntax, HearsEveryObjectOnceWhereTheTableIsWrong) {
  RawPdf pdf;
  pdf.Mark(4).Pages(1).Raw("4 0 obj\n(x)\nendobj\n5 0 obj\n(y)\nendobj\n");
  Listener listener(pdf.Table());
  EXPECT_TRUE(listener.document().is_rebuilt());
  EXPECT_THAT(listener.numbers, ElementsAre(1, 4, 2, 3, 5));
}

TEST(DocumentSyntax, PassesOverMembersOfWhatIsNoObjectStream) {
  RawPdf pdf;
  pdf.Pages(1);
  const std::size_t stream = pdf.size();
  pdf.Stream(10, "/Type/XRef/Size 12/W[1 2 1]/Index[7 1 11 1]",
             std::string("\x02\x00\x09\x00\x02\x00\x07\x00", 8));
  Listener listener(pdf.Table("/Root 1 0 R/XRefStm " + std::to_string(stream)));
  EXPECT_THAT(listener.numbers, ElementsAre(1, 2, 3, 10));
}

TEST(DocumentSyntax, HearsADamagedTableAsFarAsItIsRead) {
  std::string bytes = RawPdf().Pages(1).Table();
  const std::size_t row = bytes.find("0000000000 65535 f");
  bytes.replace(row + 40, 3, "@@@");
  Listener listener(bytes);
  EXPECT_THAT(listener.numbers, ElementsAre(1, 2, 3));
}

}  // namespace
}  // namespace TarnixTools::pdf
