#include <gtest/gtest.h>

#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::pdf {
namespace {

using testing::Expanded;
using testing::RawPdf;
using testing::RewriteCase;

// Each page of a document, expanded, but for its /Parent.
std::vector<std::string> PagesOf(Document& document) {
  const PageTree tree(document);
  std::vector<std::string> pages;
  for (const PageTree::Page& page : tree.pages()) {
    Arena arena;
    const Object dictionary = tree.Load(page, arena);
    EXPECT_TRUE(tree.IsNode(dictionary.Get("Parent").AsReference().number));
    std::vector<DictionaryEntry> entries;
    for (const DictionaryEntry& entry : dictionary.Entries()) {
      if (entry.Key() != "Parent") {
        entries.push_back(entry);
      }
    }
    pages.push_back(
        Expanded(document, Object::Dictionary(std::span<const DictionaryEntry>(entries)), 3));
  }
  EXPECT_EQ(document.findings().count(), 0U);
  return pages;
}

// Pages 10 to 12 below two nodes, and what refers to them; page 12 is no object of its own.
RawPdf Nested() {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages 2 0 R/Own[10 0 R 11 0 R 2 0 R 3 0 R]>>")
      .Object(2,
              "<</Type/Pages/Kids[3 0 R<</Type/Page/Parent 2 0 R/C 12>>]/Count 3/MediaBox[0 0 9 "
              "9]/Rotate 90/Resources<</Font<</F 20 0 R>>>>>>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[10 0 R 11 0 R]/Count 2/MediaBox 21 0 R>>")
      .Object(10, "<</Type/Page/Parent 3 0 R/C 10/Rotate 0>>")
      .Object(11, "<</Type/Page/Parent 3 0 R/C 11/Resources<<>>/MediaBox null>>")
      .Object(20, "(font)")
      .Object(21, "[0 0 5 5]");
}

TEST(RewrittenPages, StayAsTheyAreWithoutAWord) {
  RewriteCase test(Nested());
  EXPECT_EQ(testing::DifferenceOf(test.source(), test.Write()), "");
}

TEST(RewrittenPages, HaveWhatTheyInheritedAsTheirOwn) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  const auto pages = PagesOf(test.Write());
  ASSERT_EQ(pages.size(), 3U);
  EXPECT_EQ(pages[0],
            "<</Type/Page/C 10/Rotate 0/Resources<</Font<</F(font)>>>>/MediaBox[0 0 5 5]>>");
  EXPECT_EQ(pages[1], "<</Type/Page/C 11/Resources<<>>/MediaBox[0 0 5 5]/Rotate 90>>");
  EXPECT_EQ(pages[2],
            "<</Type/Page/C 12/Resources<</Font<</F(font)>>>>/MediaBox[0 0 9 9]/Rotate 90>>");
}

TEST(RewrittenPages, ShareLongValuesThatTheyInherited) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  Document& written = test.Write();
  const PageTree after(written);
  Arena arena;
  const Object first = after.Load(after.pages()[0], arena).Get("Resources");
  EXPECT_NE(first.AsReference().number, 0U);
  EXPECT_EQ(first.AsReference(),
            after.Load(after.pages()[2], arena).Get("Resources").AsReference());
}

TEST(RewrittenPages, AreThoseThatAreAskedForInTheirOrder) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree, {{.index = 2, .added = 0}, {.index = 0, .added = 0}});
  Document& written = test.Write();
  const auto pages = PagesOf(written);
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_TRUE(pages[0].starts_with("<</Type/Page/C 12"));
  EXPECT_TRUE(pages[1].starts_with("<</Type/Page/C 10"));
  Arena arena;
  const auto own = written.Catalog(arena).Get("Own").Items();
  EXPECT_EQ(own[0].AsReference().number, PageTree(written).pages()[1].number);
  EXPECT_TRUE(own[1].IsNull() && own[2].IsNull() && own[3].IsNull());
}

TEST(RewrittenPages, MayStandTwice) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree, {{.index = 0, .added = 0}, {.index = 0, .added = 0}});
  Document& written = test.Write();
  const PageTree after(written);
  ASSERT_EQ(after.pages().size(), 2U);
  EXPECT_NE(after.pages()[0].number, after.pages()[1].number);
  const auto pages = PagesOf(written);
  EXPECT_EQ(pages[0], pages[1]);
}

TEST(RewrittenPages, MayBeAddedAndChanged) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  DocumentRewriter& rewriter = test.rewriter();
  const std::uint32_t blank = rewriter.Add(ObjectChange::Value("<</MediaBox[0 0 1 1]>>"));
  rewriter.Change(10, ObjectChange::Value("<</C(changed)/Annots[<</P 10 0 R>>]>>"));
  rewriter.SetEntry(11, "Rotate", "180");
  rewriter.RemoveEntry(11, "Resources");
  rewriter.SetPages(
      tree, {{.index = 0, .added = blank}, {.index = 0, .added = 0}, {.index = 1, .added = 0}});
  Document& written = test.Write();
  const PageTree after(written);
  ASSERT_EQ(after.pages().size(), 3U);
  Arena arena;
  EXPECT_TRUE(after.Load(after.pages()[0], arena).Get("Rotate").IsNull());
  EXPECT_TRUE(after.Load(after.pages()[0], arena).Get("Type").IsName("Page"));
  const Object changed = after.Load(after.pages()[1], arena);
  EXPECT_EQ(changed.Get("C").Text(), "changed");
  EXPECT_EQ(changed.Get("Rotate").IntegerOr(0), 90);
  EXPECT_EQ(changed.Get("Annots").Items()[0].Get("P").AsReference().number,
            after.pages()[1].number);
  const Object edited = after.Load(after.pages()[2], arena);
  EXPECT_EQ(edited.Get("Rotate").IntegerOr(0), 180);
  EXPECT_TRUE(edited.Get("Resources").IsNull());
}

TEST(RewrittenPages, MayBeMergedIntoAddedOnes) {
  RewriteCase test(Nested());
  const PageTree tree(test.source());
  const std::uint32_t page = test.rewriter().Add(ObjectChange::Value("<</C 1>>"));
  test.rewriter().Merge(10, page);
  test.rewriter().SetPages(tree, {{.index = 0, .added = page}});
  Document& written = test.Write();
  Arena arena;
  EXPECT_EQ(written.Catalog(arena).Get("Own").Items()[0].AsReference().number,
            PageTree(written).pages()[0].number);
}

TEST(RewrittenPages, StandForLostOnes) {
  RawPdf pdf = RawPdf()
                   .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                   .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 7 7]>>")
                   .Object(3, "<</Type/Page/Parent 2 0 R>>")
                   .Object(4, "<</Type/Page/Parent 2 0 R>>");
  std::string bytes = pdf.Table();
  bytes[bytes.find("\n4 0 obj") + 5] = '?';
  RewriteCase test(bytes);
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  const auto pages = PagesOf(test.Write());
  ASSERT_EQ(pages.size(), 2U);
  EXPECT_EQ(pages[1], "<</Type/Page/MediaBox[0 0 7 7]>>");
}

// The pages of a document without a catalog are those that are found.
TEST(RewrittenPages, GetACatalogWhereThereIsNone) {
  RewriteCase test(RawPdf().Object(3, "<</Type/Page/MediaBox[0 0 1 1]>>").Table("/Root 9 0 R"));
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  Document& written = test.Write();
  EXPECT_EQ(PagesOf(written).size(), 1U);
  Arena arena;
  EXPECT_TRUE(written.Catalog(arena).Get("Type").IsName("Catalog"));
}

TEST(RewrittenPages, AreNoNodes) {
  RewriteCase test(RawPdf().Pages(1));
  const PageTree tree(test.source());
  test.rewriter().SetEntry(3, "Own", "1");
  test.rewriter().Change(3, ObjectChange::Value("<</Kids[3 0 R]/Type/Pages>>"));
  test.rewriter().SetPages(tree);
  EXPECT_EQ(PagesOf(test.Write()), std::vector<std::string>{"<</Type/Page/Own 1>>"});
}

TEST(RewrittenPages, MayBeVeryMany) {
  RewriteCase test(RawPdf().Pages(5000));
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree);
  EXPECT_EQ(PagesOf(test.Write()).size(), 5000U);
}

TEST(RewrittenPages, MayBeNone) {
  RewriteCase test(RawPdf().Pages(2));
  const PageTree tree(test.source());
  test.rewriter().SetPages(tree, {});
  Document& written = test.Write();
  EXPECT_EQ(PageTree(written).pages().size(), 0U);
  EXPECT_EQ(test.CountObjects(), 2);
}

}  // namespace
}  // namespace TarnixTools::pdf
