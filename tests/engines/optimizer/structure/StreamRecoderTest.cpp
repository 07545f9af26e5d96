#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/structure/StreamRecoder.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using pdf::Arena;
using pdf::FilterKind;
using pdf::Object;
using ::TarnixTools::testing::DifferenceOf;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::RewriteCase;
using ::TarnixTools::testing::RewrittenBytes;
using ::testing::ElementsAre;

// Streams that the catalog leads to.
RawPdf Owning(const std::string& own) {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R/Own " + own + ">>")
      .Object(2, "<</Type/Pages/Kids[]/Count 0>>");
}

// Content as programs write it: much the same again and again.
std::string Content(int lines) {
  std::string content;
  for (int i = 0; i < lines; ++i) {
    content += "BT /F1 12 Tf 72 " + std::to_string(i * 7919 % 700) + " Td (line " +
               std::to_string(i * i) + ") Tj ET\n";
  }
  return content;
}

std::string Deflated(const std::string& data, int level) {
  std::string deflated;
  pdf::DeflateTo(deflated, data, level);
  return deflated;
}

std::size_t RecodeAll(RewriteCase& test, const std::unordered_set<std::uint32_t>& taken = {}) {
  DataStore store(0);
  std::size_t count = 0;
  for (const std::uint32_t number : StreamsToRecode(test.source(), taken, test.rewriter())) {
    const auto encoded = ReadEncoded(test.source(), number);
    auto recoded = encoded ? Recode(*encoded) : std::nullopt;
    if (recoded) {
      PutRecoded(test.source(), number, recoded->coding, store.Keep(std::move(recoded->data)),
                 test.rewriter());
      ++count;
    }
  }
  return count;
}

TEST(StreamRecoder, DeflatesBetter) {
  const std::string weak = Deflated(Content(500), 1);
  RewriteCase test(Owning("5 0 R").Stream(5, "/Filter/FlateDecode", weak));
  EXPECT_EQ(RecodeAll(test), 1U);
  EXPECT_EQ(DifferenceOf(test.source(), test.Write()), "");
  EXPECT_LT(test.bytes().size(), RewrittenBytes(test.source()).size());
}

TEST(StreamRecoder, TakesChainsApart) {
  std::string hex;
  for (const char c : Deflated(Content(50), 6)) {
    const char digits[] = "0123456789ABCDEF";
    hex += digits[static_cast<unsigned char>(c) >> 4];
    hex += digits[static_cast<unsigned char>(c) & 15];
  }
  RewriteCase test(
      Owning("5 0 R").Stream(5, "/Filter[/AHx/Fl]/DecodeParms[null null]/A 1", hex + ">"));
  EXPECT_EQ(RecodeAll(test), 1U);
  pdf::Document& written = test.Write();
  EXPECT_EQ(DifferenceOf(test.source(), written), "");
  Arena arena;
  const Object own = written.Resolve(written.Catalog(arena).Get("Own"), arena);
  EXPECT_TRUE(own.Get("Filter").IsName("FlateDecode"));
  EXPECT_TRUE(own.Get("DecodeParms").IsNull());
  EXPECT_EQ(own.Get("A").IntegerOr(0), 1);
}

TEST(StreamRecoder, LeavesShortDataWithoutFilter) {
  RewriteCase test(Owning("5 0 R").Stream(5, "/Filter/ASCIIHexDecode", "71 20 51>"));
  EXPECT_EQ(RecodeAll(test), 1U);
  EXPECT_EQ(test.Own(), "<</Length 3>>(q Q)");
}

// Rows that grow by one each, which is nothing but ones to the predictor.
TEST(StreamRecoder, KeepsPredictorsThatHelp) {
  std::string rows;
  for (int row = 0; row < 200; ++row) {
    rows += '\x02';
    for (int i = 0; i < 8; ++i) {
      rows += static_cast<char>(row == 0 ? i * 31 : 1);
    }
  }
  RewriteCase test(Owning("5 0 R").Stream(
      5, "/Filter/FlateDecode/DecodeParms<</Columns 8/Predictor 12>>", Deflated(rows, 1)));
  EXPECT_EQ(RecodeAll(test), 1U);
  pdf::Document& written = test.Write();
  EXPECT_EQ(DifferenceOf(test.source(), written), "");
  Arena arena;
  const Object own = written.Resolve(written.Catalog(arena).Get("Own"), arena);
  EXPECT_EQ(own.Get("DecodeParms").Get("Predictor").IntegerOr(0), 12);
}

TEST(StreamRecoder, NeverMakesDataLonger) {
  const auto encoded = [](const std::string& data, FilterKind kind) {
    return EncodedStream{.data = data, .steps = {{.kind = kind, .parameters = {}}}};
  };
  const auto best = Recode(encoded(Deflated(Content(300), 6), FilterKind::kFlate));
  ASSERT_TRUE(best.has_value());
  EncodedStream again = encoded(best->data, FilterKind::kFlate);
  again.entry_bytes = std::string("/Filter/FlateDecode").size();
  EXPECT_FALSE(Recode(again).has_value());
  EXPECT_FALSE(Recode({.data = "\x01\x02\x03", .steps = {}}).has_value());
}

TEST(StreamRecoder, LeavesDamagedDataAsItIs) {
  const std::string cut = Deflated(Content(100), 6).substr(0, 300);
  EXPECT_FALSE(
      Recode({.data = cut, .steps = {{.kind = FilterKind::kFlate, .parameters = {}}}}).has_value());
}

TEST(StreamRecoder, LeavesOthersAlone) {
  const std::string data = Content(20);
  RawPdf file = Owning("[5 0 R 6 0 R 7 0 R 8 0 R 9 0 R 10 0 R 11 0 R]");
  file.Stream(5, "/Type/Metadata/Subtype/XML", data)
      .Stream(6, "/Filter/DCTDecode", data)
      .Stream(7, "/Filter[/FlateDecode/JPXDecode]", data)
      .Stream(8, "/F(other file)", data)
      .Stream(9, "/Taken true", data)
      .Stream(10, "/Changed true", data)
      .Stream(11, "/Filter/Crypt", data)
      .Stream(12, "/Unreached true", data);
  RewriteCase test(file);
  test.rewriter().Change(10, pdf::ObjectChange::Value("null"));
  EXPECT_THAT(StreamsToRecode(test.source(), {9}, test.rewriter()), ElementsAre());
  EXPECT_THAT(StreamsToRecode(test.source(), {}, test.rewriter()), ElementsAre(9));
}

TEST(StreamRecoder, GoesWithEntriesThatAreSet) {
  RewriteCase test(Owning("5 0 R").Stream(5, "/A 1/B 2", Content(20)));
  test.rewriter().RemoveEntry(5, "A");
  EXPECT_EQ(RecodeAll(test), 1U);
  test.rewriter().SetEntry(5, "B", "3");
  pdf::Document& written = test.Write();
  Arena arena;
  const Object own = written.Resolve(written.Catalog(arena).Get("Own"), arena);
  EXPECT_TRUE(own.Get("A").IsNull());
  EXPECT_EQ(own.Get("B").IntegerOr(0), 3);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
