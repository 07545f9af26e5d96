#include <gtest/gtest.h>
#include <sys/resource.h>

#include "pdf/Error.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Surroundings.h"

namespace TarnixTools::pdf {
namespace {

using testing::DifferenceOf;
using testing::Expanded;
using testing::OpenBytes;
using testing::RawPdf;
using testing::RewriteCase;

// A document without pages whose catalog has this as its /Own, which test objects hang from.
RawPdf Owning(const std::string& own) {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R/Own " + own + ">>")
      .Object(2, "<</Type/Pages/Kids[]/Count 0>>");
}

TEST(DocumentRewriter, WritesWhatTheTrailerLeadsTo) {
  RewriteCase test(Owning("5 0 R")
                       .Object(5, "<</A 6 0 R/B(text)>>")
                       .Object(6, "[5 0 R 7 0 R]")
                       .Stream(7, "/Own true", "data")
                       .Object(8, "(info)")
                       .Object(9, "(nobody refers to it)")
                       .Object(10, "<</Title 8 0 R>>"),
                   "/Root 1 0 R/Info 10 0 R");
  Document& written = test.Write();
  EXPECT_EQ(DifferenceOf(test.source(), written), "");
  EXPECT_EQ(test.CountObjects(), 7);
  EXPECT_EQ(test.bytes().find("nobody"), std::string::npos);
  EXPECT_EQ(written.findings().count(), 0U);
}

TEST(DocumentRewriter, NumbersObjectsInTheOrderInWhichTheyAreMet) {
  RewriteCase test(
      Owning("<</A 9 0 R/B 7 0 R>>").Object(9, "[8 0 R]").Object(8, "8").Object(7, "7"));
  test.Write();
  Arena arena;
  Document& written = test.Write();
  const Object own = written.Catalog(arena).Get("Own");
  EXPECT_EQ(own.Get("A").AsReference().number, 3U);
  EXPECT_EQ(own.Get("B").AsReference().number, 4U);
}

TEST(DocumentRewriter, WritesFirstWhatIsReferredToFirst) {
  RewriteCase test(
      Owning("[5 0 R 6 0 R]").Object(5, "[7 0 R]").Object(6, "(second)").Object(7, "(first)"));
  RewriteOptions options;
  options.layout = FileLayout::kTable;
  test.Write(options);
  EXPECT_LT(test.bytes().find("(first)"), test.bytes().find("(second)"));
}

TEST(DocumentRewriter, LeavesOlderVersionsBehind) {
  RawPdf pdf = Owning("5 0 R").Object(5, "(old)").Object(6, "(newer)");
  const std::string old = pdf.Table();
  const std::string update = "5 0 obj\n(new)\nendobj\n";
  const std::string table = "xref\n5 1\n" +
                            std::string(10 - std::to_string(old.size()).size(), '0') +
                            std::to_string(old.size()) + " 00000 n \n";
  RewriteCase test(old + update + table + "trailer\n<</Size 7/Root 1 0 R/Prev " +
                   std::to_string(old.find("xref\n0 1")) + ">>\nstartxref\n" +
                   std::to_string(old.size() + update.size()) + "\n%%EOF\n");
  EXPECT_EQ(test.Own(), "(new)");
  EXPECT_EQ(test.CountObjects(), 3);
}

TEST(DocumentRewriter, TellsWhatItWasTold) {
  RewriteCase test(
      Owning("[5 0 R 6 0 R 7 0 R]").Object(5, "<</A 1/B 2>>").Object(6, "<</A 6>>").Object(7, "7"));
  DocumentRewriter& rewriter = test.rewriter();
  const auto text = [&](std::uint32_t number) {
    Arena arena;
    return Expanded(test.source(), rewriter.Load(number, arena));
  };
  rewriter.SetEntry(5, "A", "(set)");
  rewriter.RemoveEntry(5, "B");
  EXPECT_EQ(text(5), "<</A(set)>>");
  EXPECT_FALSE(rewriter.IsChanged(5));
  rewriter.Change(6, ObjectChange::Value("<</C 7 0 R>>"));
  EXPECT_EQ(text(6), "<</C 7>>");
  EXPECT_TRUE(rewriter.IsChanged(6));
  rewriter.ChangeLater(7, [] { return ObjectChange::Value("8"); });
  EXPECT_EQ(text(7), "7");
  EXPECT_TRUE(rewriter.IsChanged(7));
  rewriter.SetEntry(rewriter.catalog(), "Own", "null");
  EXPECT_NE(text(1).find("/Own null"), std::string::npos);
  EXPECT_EQ(text(rewriter.catalog()), text(1));
}

TEST(DocumentRewriter, TellsWhatReferencesWillLeadTo) {
  RewriteCase test(Owning("[5 0 R 6 0 R 7 0 R]").Object(5, "5").Object(6, "6").Object(7, "7"));
  DocumentRewriter& rewriter = test.rewriter();
  rewriter.Merge(5, 6);
  rewriter.Merge(6, 7);
  EXPECT_EQ(rewriter.Successor(5), 7U);
  EXPECT_EQ(rewriter.Successor(7), 7U);
  rewriter.Drop(7);
  EXPECT_EQ(rewriter.Successor(5), 0U);
}

TEST(DocumentRewriter, WritesNullForWhatIsNotThere) {
  RewriteCase test(Owning("[77 0 R 5 0 R<</A 78 0 R>>]"));
  EXPECT_EQ(test.Own(), "[null null<</A null>>]");
}

TEST(DocumentRewriter, WritesNullForWhatCannotBeRead) {
  RawPdf pdf = Owning("[5 0 R 6 0 R]").Object(5, ")").Object(6, "6");
  std::string bytes = pdf.Table();
  bytes.replace(bytes.find("6 0 obj"), 7, "6 0 abj");
  RewriteCase test(bytes);
  EXPECT_EQ(test.Own(), "[null null]");
  EXPECT_TRUE(test.source().findings().Has(FindingCode::kObjectMissing));
  EXPECT_TRUE(test.source().findings().Has(FindingCode::kObjectDamaged));
}

TEST(DocumentRewriter, KeepsTheKeysOfTheStructureTree) {
  RewriteCase test(Owning("[5 0 R 6 0 R]")
                       .Object(5, "<</StructParent 4>>")
                       .Object(6, "<</StructParents -3.0>>"));
  EXPECT_EQ(test.Own(), "[<</StructParent 4>><</StructParents -3.0>>]");
}

TEST(DocumentRewriter, ReplacesObjects) {
  RewriteCase test(Owning("[5 0 R 6 0 R 7 0 R]").Object(5, "5").Object(6, "6").Stream(7, "", "7"));
  test.rewriter().Change(5, ObjectChange::Value("<</Six 6 0 R>>"));
  test.rewriter().Change(6, ObjectChange::Stream("<</Seven 7 0 R/Length 9 0 R>>", "data"));
  test.rewriter().Change(7, ObjectChange::Value("(no stream any more)"));
  EXPECT_EQ(test.Own(),
            "[<</Six<</Seven(no stream any more)/Length 4>>(data)>><</Seven(no stream any "
            "more)/Length 4>>(data)(no stream any more)]");
}

TEST(DocumentRewriter, KnowsTheLastChangeOfAnObjectOnly) {
  RewriteCase test(Owning("5 0 R").Object(5, "5"));
  test.rewriter().ChangeLater(5, [] { return ObjectChange::Value("(later)"); });
  test.rewriter().Change(5, ObjectChange::Keep());
  EXPECT_EQ(test.Own(), "5");
}

TEST(DocumentRewriter, LeavesObjectsOut) {
  RewriteCase test(
      Owning("[5 0 R 6 0 R<</A 6 0 R>>]").Object(5, "5").Object(6, "[7 0 R]").Object(7, "7"));
  test.rewriter().Change(6, ObjectChange::LeaveOut());
  EXPECT_EQ(test.Own(), "[5 null<</A null>>]");
  EXPECT_EQ(test.CountObjects(), 3);
}

TEST(DocumentRewriter, DropsObjects) {
  RewriteCase test(Owning("5 0 R")
                       .Object(5, "[6 0 R 7 0 R 1 8 0 R<</A 6 0 R/B 7 0 R/C 7 0 R/D 1>>7 0 R]")
                       .Object(6, "6")
                       .Object(7, "7")
                       .Object(8, "8"));
  test.rewriter().Drop(6);
  test.rewriter().Drop(7, Gap::kClosed);
  EXPECT_EQ(test.Own(), "[null 1 8<</A null/D 1>>]");
  EXPECT_EQ(test.CountObjects(), 4);
}

TEST(DocumentRewriter, ClosesGapsInStreamsAndIrregularObjects) {
  RewriteCase test(Owning("[5 0 R 6 0 R]")
                       .Stream(5, "/A 7 0 R/B 1/Resources 7 0 R", "data")
                       .Object(6, "<</A 7 0 R/B[1 --2 7 0 R 3]/C<</D 7 0 R>>>>")
                       .Object(7, "7"));
  test.rewriter().Drop(7, Gap::kClosed);
  EXPECT_EQ(test.Own(), "[<</B 1/Length 4>>(data)<</B[1 -2 3]/C<<>>>>]");
}

TEST(DocumentRewriter, MergesObjects) {
  RewriteCase test(Owning("[5 0 R 6 0 R 7 0 R 8 0 R]")
                       .Object(5, "5")
                       .Object(6, "6")
                       .Object(7, "7")
                       .Object(8, "8"));
  test.rewriter().Merge(5, 6);
  test.rewriter().Merge(6, 7);
  test.rewriter().Merge(7, 5);  // a circle
  test.rewriter().Merge(8, 8);
  EXPECT_EQ(test.Own(), "[7 7 7 8]");
  EXPECT_EQ(test.CountObjects(), 4);
}

TEST(DocumentRewriter, MergesObjectsInLongRows) {
  RawPdf pdf = Owning("[10 0 R 5009 0 R]");
  for (int i = 0; i < 5000; ++i) {
    pdf.Object(10 + i, std::to_string(i));
  }
  RewriteCase test(pdf);
  for (std::uint32_t i = 0; i + 1 < 5000; ++i) {
    test.rewriter().Merge(10 + i, 11 + i);
  }
  EXPECT_EQ(test.Own(), "[4999 4999]");
}

TEST(DocumentRewriter, SetsAndRemovesEntries) {
  RewriteCase test(Owning("[5 0 R 6 0 R 7 0 R 8 0 R]")
                       .Object(5, "<</A 1/B 2/C 3>>")
                       .Stream(6, "/A 1/B 2", "data")
                       .Object(7, "[1]")
                       .Object(8, "<</A 1/B 2/A 3>>"));
  for (const std::uint32_t number : {5, 6, 7, 8}) {
    test.rewriter().SetEntry(number, "A", "(first)");
    test.rewriter().SetEntry(number, "A", "[5 0 R]");
    test.rewriter().RemoveEntry(number, "B");
    test.rewriter().RemoveEntry(number, "None");
    test.rewriter().SetEntry(number, "N#w", "/N");
  }
  test.rewriter().Drop(5);
  EXPECT_EQ(test.Own(), "[null<</A[null]/N#23w/N/Length 4>>(data)[1]<</A[null]/N#23w/N>>]");
}

TEST(DocumentRewriter, SetsEntriesOfWhatIsReplaced) {
  RewriteCase test(Owning("[5 0 R 6 0 R]").Object(5, "5").Object(6, "6"));
  test.rewriter().SetEntry(5, "A", "1");
  test.rewriter().Change(5, ObjectChange::Value("<</B 2>>"));
  test.rewriter().SetEntry(6, "A", "1");
  test.rewriter().Change(6, ObjectChange::Stream("<</B 2>>", "data"));
  EXPECT_EQ(test.Own(), "[<</B 2/A 1>><</B 2/A 1/Length 4>>(data)]");
}

TEST(DocumentRewriter, AddsObjectsThatAreReferredTo) {
  RewriteCase test(Owning("5 0 R").Object(5, "5"));
  DocumentRewriter& rewriter = test.rewriter();
  const std::uint32_t first = rewriter.Add(ObjectChange::Value("null"));
  const std::uint32_t second =
      rewriter.Add(ObjectChange::Value("[" + std::to_string(first) + " 0 R 6 0 R]"));
  rewriter.Add(ObjectChange::Value("(nobody refers to it)"));
  rewriter.Change(first, ObjectChange::Stream("<<>>", "data"));
  rewriter.Change(5, ObjectChange::Value("<</A " + std::to_string(second) + " 0 R>>"));
  EXPECT_EQ(test.Own(), "<</A[<</Length 4>>(data)null]>>");
  EXPECT_EQ(test.CountObjects(), 5);
}

TEST(DocumentRewriter, AsksForLaterChangesInTurn) {
  RewriteCase test(Owning("[5 0 R 6 0 R]").Object(5, "5").Object(6, "6").Object(7, "7"));
  std::string turns;
  for (const std::uint32_t number : {7, 6, 5}) {
    test.rewriter().ChangeLater(number, [&, number] {
      turns += std::to_string(number);
      const std::uint32_t added = test.rewriter().Add(ObjectChange::Value("(added)"));
      return ObjectChange::Value("[" + std::to_string(added) + " 0 R]");
    });
  }
  EXPECT_EQ(test.Own(), "[[(added)][(added)]]");
  EXPECT_EQ(turns, "56");
  const std::string bytes = test.bytes();
  test.Write();
  EXPECT_EQ(test.bytes(), bytes);
}

TEST(DocumentRewriter, AsksAboutEachObject) {
  RewriteCase test(Owning("[5 0 R 6 0 R 7 0 R 8 0 R 8 0 R 1 0 R]")
                       .Object(5, "5")
                       .Object(6, "6")
                       .Object(7, "7")
                       .Object(8, "8")
                       .Object(9, "9"));
  std::string asked;
  test.rewriter().Change(7, ObjectChange::Keep());
  test.rewriter().ChangeEach([&](std::uint32_t number) {
    asked += std::to_string(number);
    return number == 5   ? ObjectChange::Value("(five)")
           : number == 6 ? ObjectChange::LeaveOut()
                         : ObjectChange::Keep();
  });
  test.Write();
  EXPECT_EQ(asked, "2568");
  EXPECT_TRUE(test.Own().starts_with("[(five)null 7 8 8<</Type/Catalog")) << test.Own();
}

TEST(DocumentRewriter, WritesDataOfAnyLengthAsItComes) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{300}, std::size_t{3} << 20}) {
    RewriteCase test(Owning("5 0 R").Object(5, "5"));
    test.rewriter().Change(5, ObjectChange::StreamFrom("<</A 6 0 R>>", [&](ByteSink& sink) {
                             for (std::size_t i = 0; i < size; i += 100) {
                               sink.Write(std::string(100, 'x'));
                             }
                           }));
    Document& written = test.Write();
    Arena arena;
    const std::uint32_t number = written.Catalog(arena).Get("Own").AsReference().number;
    EXPECT_EQ(written.TryDecodeStream(number)->data.size(), (size + 99) / 100 * 100);
    EXPECT_EQ(written.findings().count(), 0U);
  }
}

TEST(DocumentRewriter, ChangesTheCatalog) {
  RewriteCase test(Owning("<</Up 1 0 R>>"));
  test.rewriter().SetEntry(test.rewriter().catalog(), "Lang", "(en)");
  test.rewriter().SetEntry(1, "Own", "(own)");
  test.rewriter().RemoveEntry(1, "Type");
  EXPECT_EQ(Expanded(test.Write(), Object::Ref({1, 0})),
            "<</Pages<</Type/Pages/Kids[]/Count 0>>/Own(own)/Lang(en)>>");
}

TEST(DocumentRewriter, GivesACatalogInTheTrailerAnObject) {
  RewriteCase test(RawPdf().Object(2, "<</Type/Pages/Kids[]/Count 0>>"),
                   "/Root<</Type/Catalog/Pages 2 0 R/Own 17>>");
  EXPECT_EQ(test.Own(), "17");
  EXPECT_FALSE(test.Write().findings().Has(FindingCode::kCatalogInTrailer));
}

TEST(DocumentRewriter, KeepsWhatTheTrailerSays) {
  RewriteCase test(Owning("5 0 R").Object(5, "5"),
                   "/Root 1 0 R/Info<</Title(T)>>/Extra[5 0 R]/ID[<3132><3334>]/Prev 99999999");
  Document& written = test.Write({.security = nullptr, .version = {}, .keeps_id = true});
  EXPECT_EQ(Expanded(written, written.trailer().Get("Info")), "<</Title(T)>>");
  EXPECT_TRUE(written.trailer().Get("Info").IsReference());
  EXPECT_EQ(Expanded(written, written.trailer().Get("Extra")), "[5]");
  EXPECT_TRUE(written.trailer().Get("Prev").IsNull());
  EXPECT_EQ(written.trailer().Get("ID").Items()[0].Text(), "12");
  EXPECT_NE(written.trailer().Get("ID").Items()[1].Text(), "34");
}

TEST(DocumentRewriter, ChangesTheTrailer) {
  RewriteCase test(Owning("5 0 R").Object(5, "<</Title(T)>>"), "/Root 1 0 R/Info 1 0 R/Extra 1");
  test.rewriter().SetTrailerEntry("Info", "5 0 R");
  test.rewriter().RemoveTrailerEntry("Extra");
  test.rewriter().SetTrailerEntry("New", "2");
  Document& written = test.Write();
  EXPECT_EQ(Expanded(written, written.trailer().Get("Info")), "<</Title(T)>>");
  EXPECT_TRUE(written.trailer().Get("Extra").IsNull());
  EXPECT_EQ(written.trailer().Get("New").IntegerOr(0), 2);
}

TEST(DocumentRewriter, WritesTheVersionOfTheDocumentOrAnother) {
  const auto header = [](const std::string& of, const RewriteOptions& options) {
    RewriteCase test(RawPdf("%PDF-" + of + "\n").Pages(1));
    test.Write(options);
    return test.bytes().substr(0, 8);
  };
  EXPECT_EQ(header("1.3", {}), "%PDF-1.7");
  EXPECT_EQ(header("2.0", {}), "%PDF-2.0");
  RewriteOptions options;
  options.layout = FileLayout::kTable;
  options.version = "1.4";
  EXPECT_EQ(header("2.0", options), "%PDF-1.4");
}

TEST(DocumentRewriter, TakesEncryptionOffAndPutsItOn) {
  const std::string plain =
      Owning("[5 0 R(text)]").Stream(5, "/Name(text)", std::string(100, 'd')).Table();
  const auto original = OpenBytes(plain);
  const Security security = Security::Create("secret", "", -4);
  for (const FileLayout layout : {FileLayout::kObjectStreams, FileLayout::kTable}) {
    RewriteCase encrypted(plain);
    Document& locked =
        encrypted.Write({.security = &security, .layout = layout, .version = {}}, "secret");
    EXPECT_TRUE(locked.is_encrypted());
    EXPECT_EQ(encrypted.bytes().find("text"), std::string::npos);
    EXPECT_EQ(DifferenceOf(*original, locked), "");
    EXPECT_THROW(OpenBytes(encrypted.bytes()), Error);
    RewriteCase decrypted(encrypted.bytes(), "secret");
    EXPECT_EQ(DifferenceOf(*original, decrypted.Write()), "");
    EXPECT_FALSE(decrypted.Write().is_encrypted());
    RewriteCase again(encrypted.bytes(), "secret");
    EXPECT_EQ(
        DifferenceOf(*original, again.Write({.security = &security, .version = {}}, "secret")), "");
  }
}

TEST(DocumentRewriter, FollowsRowsOfAnyLength) {
  constexpr int kCount = 10'000;
  RawPdf pdf = Owning("10 0 R");
  for (int i = 0; i < kCount; ++i) {
    pdf.Object(10 + i, "<</Next " + std::to_string(11 + i) + " 0 R/First 10 0 R>>");
  }
  RewriteCase test(pdf);
  EXPECT_EQ(DifferenceOf(test.source(), test.Write()), "");
  EXPECT_EQ(test.CountObjects(), kCount + 2);
}

class CountingSink : public ByteSink {
 public:
  void Write(std::string_view bytes) override { count_ += bytes.size(); }

  std::uint64_t count() const { return count_; }

 private:
  std::uint64_t count_ = 0;
};

// In kilobytes.
long PeakMemory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

TEST(DocumentRewriter, HoldsTheDataOfOneStreamAtATime) {
  if (testing::KeepsFreedMemory()) {
    GTEST_SKIP() << "freed memory is kept";
  }
  constexpr std::uint32_t kCount = 10'000;
  constexpr std::size_t kSize = 30'000;
  std::string numbers;
  RawPdf pdf = Owning("10 0 R");
  for (std::uint32_t i = 0; i < kCount; ++i) {
    numbers += " " + std::to_string(11 + i) + " 0 R";
    pdf.Object(static_cast<int>(11 + i), "null");
  }
  RewriteCase test(pdf.Object(10, "[" + numbers + "]"));
  for (std::uint32_t i = 0; i < kCount; ++i) {
    test.rewriter().ChangeLater(11 + i, [i] {
      return ObjectChange::Stream("<</Filter/Own>>", std::string(kSize, static_cast<char>(i)));
    });
  }
  const long before = PeakMemory();
  CountingSink sink;
  test.rewriter().Write(sink);
  EXPECT_GT(sink.count(), kCount * kSize);
  EXPECT_LT(PeakMemory() - before, 32'000);
}

}  // namespace
}  // namespace TarnixTools::pdf
