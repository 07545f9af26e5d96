// Rewritten documents as a whole.
#include <initializer_list>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/DocumentText.h"
#include "pdf/write/RewriteFixture.h"
#include "pdf/write/Serialize.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using testing::DigitsText;
using testing::DocumentText;
using testing::IsAsExpected;
using testing::ObjectsText;
using testing::OpenBytes;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::RewriteCase;
using testing::RewrittenBytes;
using testing::TempDir;
using testing::WriteBytes;

// Objects of each kind, regular and not, that refer to one another.
RawPdf Mixture() {
  RawPdf pdf;
  pdf.Lines(
      R"(1 <</Type/Catalog/Pages 2 0 R/Own[5 0 R 6 0 R 7 0 R 8 0 R 9 0 R 10 0 R 11 0 R 12 0 R 99 0 R 13 0 R 14 0 R]>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 9 8]/Rotate 90/CropBox 15 0 R/Resources<</Font<</F 5 0 R>>>>>>
3 <</Type/Page/Parent 2 0 R/Contents 6 0 R/StructParents 3>>
4 <</Type/Page/Parent 2 0 R/Rotate 0/Annots[<</P 4 0 R/Dest[3 0 R]>>]/Resources null/Kids null>>
5 <</Type/Font/BaseFont/F/W[1 2.50 -.5 +7 007 <00fF>(a\(b\)\n)/N#20 true false null 3 0 R 4]/E<<>>/A[]>>
6 <</Length 17 0 R/Type/XObject/StructParent 4/Own 5 0 R>> stream 012345678901234567890123456789
7 <</Filter/ASCIIHexDecode/F null/A 1>> stream 71 20 51>
8 [1 2 0 R 3 0 obj
9 <</A --5/B 1..2/C[<</D (x)]>>
10 (string)
11 5 0 R
12 3
13 <</Gone 99 0 R/List[99 0 R 5 0 R 16 0 R]/Deep<</Deeper<</Deepest 16 0 R>>>>>>
14 <</Key 1/Key 2/Length 5/Parent 13 0 R/Kids[13 0 R]>>
15 [1 1 7 7]
16 <</Same true>>
17 30
18 <</Title(Info)/Author 10 0 R>>
)");
  return pdf;
}

const char* const kTrailer =
    "/Root 1 0 R/Info 18 0 R/ID[(first)(second)]/Own 16 0 R/Other[1(x)]/Prev 1/XRefStm "
    "2/W[1]/F(x)/DL 3"
    "/FFilter/X/FDecodeParms<<>>/AuthCode<<>>/Type/Own/Index[1]/Filter/Own/DecodeParms<<>>/Length "
    "9";

std::string Written(RewriteCase& test, const RewriteOptions& options = {}) {
  test.Write(options);
  const TempDir directory;
  const std::string path = WriteBytes(directory.Path("a.pdf"), test.bytes());
  return test.bytes().substr(0, 9) + ObjectsText(path) + "as spelled\n" +
         DocumentText(test.bytes());
}

RewriteCase CaseOf() {
  return RewriteCase(Mixture(), kTrailer);
}

TEST(RewrittenTexts, OfADocumentWithoutChanges) {
  RewriteCase test = CaseOf();
  EXPECT_TRUE(IsAsExpected("rewrite/unchanged.txt", Written(test)));
  RewriteCase table = CaseOf();
  EXPECT_TRUE(IsAsExpected(
      "rewrite/as_a_table.txt",
      Written(table, {.layout = FileLayout::kTable, .version = "1.3", .keeps_id = true})));
  EXPECT_TRUE(table.bytes().find("/ID[<6669727374><") != std::string::npos ||
              table.bytes().find("/ID[(first)<") != std::string::npos);
}

TEST(RewrittenTexts, OfChangesOfEachKind) {
  RewriteCase test = CaseOf();
  DocumentRewriter& rewriter = test.rewriter();
  const std::uint32_t added = rewriter.Add(ObjectChange::Value("<</Added true/Back 13 0 R>>"));
  const std::uint32_t later = rewriter.AddLater([] { return ObjectChange::Value("(later)"); });
  const std::string added_text = std::to_string(added) + " 0 R";
  rewriter.Change(5, ObjectChange::Value("[/Changed " + added_text + "]"));
  rewriter.Change(6, ObjectChange::Stream("<</Length 99/A " + std::to_string(later) + " 0 R>>",
                                          std::string(300, 'x')));
  rewriter.ChangeLater(7, [&] {
    return ObjectChange::StreamFrom("<</Filter/Own>>", [](ByteSink& sink) {
      sink.Write("piece by ");
      sink.Write("piece");
    });
  });
  rewriter.SetEntry(9, "B", "7");
  rewriter.SetEntry(9, "New", added_text);
  rewriter.RemoveEntry(9, "A");
  rewriter.SetEntry(10, "None", "1");
  rewriter.SetEntry(14, "Key", "3");
  rewriter.SetEntry(rewriter.catalog(), "Lang", "(en)");
  rewriter.Merge(16, 12);
  rewriter.Drop(11);
  rewriter.Drop(8, Gap::kClosed);
  rewriter.SetTrailerEntry("Other", "[2]");
  rewriter.SetTrailerEntry("New", "/N");
  rewriter.RemoveTrailerEntry("Own");
  EXPECT_TRUE(IsAsExpected("rewrite/changed.txt", Written(test)));
}

TEST(RewrittenTexts, OfChangesOfEachObject) {
  RewriteCase test = CaseOf();
  test.rewriter().Change(10, ObjectChange::LeaveOut());
  test.rewriter().ChangeEach([&](std::uint32_t number) {
    return number % 2 == 0 ? ObjectChange::Keep()
                           : ObjectChange::Value("(" + std::to_string(number) + ")");
  });
  EXPECT_TRUE(IsAsExpected("rewrite/each_changed.txt", Written(test)));
}

TEST(RewrittenTexts, OfPages) {
  RewriteCase test = CaseOf();
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  test.rewriter().SetEntry(2, "Rotate", "180");
  test.rewriter().SetEntry(3, "Own", "(set)");
  EXPECT_TRUE(IsAsExpected("rewrite/pages.txt", Written(test)));

  RewriteCase others = CaseOf();
  const PageTree other_tree(others.source());
  const std::uint32_t added = others.rewriter().Add(
      ObjectChange::Value("<</Type/Page/MediaBox[0 0 1 1]/Kids[]/Next 4 0 R/Lost 3 0 R>>"));
  others.rewriter().SetPages(other_tree, {{.index = 1}, {.added = added}, {.index = 1}});
  EXPECT_TRUE(IsAsExpected("rewrite/other_pages.txt", Written(others)));
}

TEST(RewrittenTexts, OfACatalogInTheTrailer) {
  RawPdf pdf;
  pdf.Lines(R"(2 <</Type/Pages/Kids[3 0 R]/Count 1>>
3 <</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>)");
  RewriteCase test(pdf, "/Root<</Type/Catalog/Pages 2 0 R/Own[3 0 R]>>/Info<</Title(t)>>");
  test.rewriter().SetEntry(test.rewriter().catalog(), "New", "1");
  EXPECT_TRUE(IsAsExpected("rewrite/catalog_in_the_trailer.txt", Written(test)));
}

// Entries of a stream but for its length.
std::string CodingOf(const Object& dictionary) {
  std::string entries;
  for (const DictionaryEntry& entry : dictionary.Entries()) {
    if (entry.Key() != "Length") {
      AppendName(entries, entry.Key());
      AppendObject(entries, entry.value);
    }
  }
  return entries;
}

// Of each stream from object 10 on, how it was coded and is now.
std::string CodesOf(RewriteCase& test) {
  Document& written = test.Write();
  std::string text;
  Arena arena;
  std::uint32_t source = 10;
  const Object own = written.Resolve(written.Catalog(arena).Get("Own"), arena);
  for (const Object& item : own.Items()) {
    Arena source_arena;
    const Object before = test.source().Load({.number = source++, .generation = 0}, source_arena);
    const auto decoded = written.TryDecodeStream(item.AsReference().number);
    text += CodingOf(before) + " -> " + CodingOf(written.Load(item.AsReference(), arena)) + ", " +
            std::to_string(decoded->data.size()) + (decoded->complete ? "\n" : " broken\n");
  }
  return text;
}

// How streams are coded: those that nothing compresses are deflated, wasteful codes are taken off.
TEST(RewrittenTexts, OfStreamsOfEachCode) {
  const std::string data(200, 'x');
  std::string hex;
  for (int i = 0; i < 200; ++i) {
    hex += "78";
  }
  std::string flate;
  pdf::DeflateTo(flate, data, 6);
  RawPdf pdf;
  pdf.Pages(1);
  int number = 10;
  for (const auto& [entries, bytes] : std::initializer_list<std::pair<std::string, std::string>>{
           {"", data},
           {"/Type/Metadata", data},
           {"/Subtype/Metadata", data},
           {"/DecodeParms<<>>", data},
           {"/DecodeParms null", data},
           {"/Filter null", data},
           {"/Filter[]", data},
           {"/Filter/FlateDecode", flate},
           {"/Filter[/FlateDecode]/DecodeParms[null]", flate},
           {"/Filter/FlateDecode/DecodeParms<</Columns 1>>", flate},
           {"/Filter/ASCIIHexDecode", hex + ">"},
           {"/Filter/ASCIIHexDecode/Type/Metadata", hex + ">"},
           {"/Filter/AHx", hex + ">"},
           {"/Filter[/ASCIIHexDecode]", hex + ">"},
           {"/Filter/ASCII85Decode", "zzzzzz~>"},
           {"/Filter/LZWDecode", "\x80\x0B\x60\x50\x22\x0C\x0C\x85\x01"},
           {"/Filter/LZWDecode/Own/ASCII", "\x80\x0B\x60"},
           {"/Filter/RunLengthDecode", "\x81x\x80"},
           {"/Filter/DCTDecode", "no picture"},
           {"/Filter[/ASCIIHexDecode/DCTDecode]", hex + ">"},
           {"/Filter[/ASCIIHexDecode/RunLengthDecode]", "8178 80>"},
           {"/Filter[/ASCIIHexDecode/FlateDecode]/DecodeParms[null<</Columns 1>>]", hex + ">"},
           {"/Filter[/ASCIIHexDecode/NoSuchDecode]", hex + ">"},
           {"/Filter/NoSuchDecode", data},
           {"/Filter/Crypt", data},
           {"/Filter[/Crypt/ASCIIHexDecode]", hex + ">"},
           {"/F(elsewhere)", data},
           {"/Own/ASCIIHexDecode", data},
           {"/Own/LZW/Filter/FlateDecode", flate}}) {
    pdf.Stream(number++, entries, bytes);
  }
  std::string list;
  for (int i = 10; i < number; ++i) {
    list += std::to_string(i) + " 0 R ";
  }
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R/Own[" + list + "]>>");
  std::string text;
  for (const bool is_changed : {false, true}) {
    RewriteCase test(pdf);
    for (int i = 10; is_changed && i < number; ++i) {
      test.rewriter().SetEntry(static_cast<std::uint32_t>(i), "New", "1");
    }
    text += CodesOf(test);
  }
  EXPECT_TRUE(IsAsExpected("rewrite/codes.txt", text));
}

// The same documents with another digit or name, written in both layouts.
TEST(RewrittenTexts, OfOtherDigitsAndNames) {
  const auto rewritten = [](const std::string& bytes) {
    std::string text;
    for (const FileLayout layout : {FileLayout::kObjectStreams, FileLayout::kTable}) {
      try {
        const auto document = OpenBytes(bytes);
        text += DocumentText(RewrittenBytes(*document, {.layout = layout}));
        text += std::to_string(document->findings().count()) + " findings\n";
      } catch (const Error& error) {
        text += std::string(error.what()) + "\n";
      }
    }
    return text;
  };
  const std::string bytes = Mixture().Table(kTrailer);
  EXPECT_TRUE(IsAsExpected("rewrite/other_digits.txt",
                           DigitsText(bytes, rewritten, bytes.rfind("xref\n0 1"), true)));
}

}  // namespace
}  // namespace TarnixTools::pdf
