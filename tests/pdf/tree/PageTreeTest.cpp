#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/tree/PageTree.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// The page tree of bytes that it keeps.
struct Tree {
  explicit Tree(std::string pdf)
      : bytes(std::move(pdf)),
        document(Document::Open(std::make_unique<MemorySource>(bytes), "")),
        pages(*document) {}

  std::vector<std::uint32_t> Numbers() const {
    std::vector<std::uint32_t> numbers;
    for (const PageTree::Page& page : pages.pages()) {
      numbers.push_back(page.number);
    }
    return numbers;
  }

  std::string bytes;
  std::unique_ptr<Document> document;
  PageTree pages;
};

using Numbers = std::vector<std::uint32_t>;

TEST(PageTree, GivesPagesInOrder) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 6 0 R]/Count 3/MediaBox[0 0 1 1]/Rotate 90>>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[4 0 R 5 0 R]/Count 2/MediaBox[0 0 2 2]>>")
      .Object(4, "<</Type/Page/Parent 3 0 R>>")
      .Object(5, "<</Type/Page/Parent 3 0 R>>")
      .Object(6, "<</Type/Page/Parent 2 0 R>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{4, 5, 6}));
  const auto& pages = tree.pages.pages();
  Arena arena;
  EXPECT_EQ(
      tree.pages.Attribute(pages[0], InheritableKey::kMediaBox, arena).Items()[2].IntegerOr(0), 2);
  EXPECT_EQ(
      tree.pages.Attribute(pages[2], InheritableKey::kMediaBox, arena).Items()[2].IntegerOr(0), 1);
  EXPECT_EQ(tree.pages.Attribute(pages[0], InheritableKey::kRotate, arena).IntegerOr(0), 90);
  EXPECT_TRUE(tree.pages.Attribute(pages[0], InheritableKey::kResources, arena).IsNull());
  EXPECT_TRUE(tree.pages.IsPage(4));
  EXPECT_TRUE(tree.pages.IsNode(3));
  EXPECT_FALSE(tree.pages.IsPage(3));
}

TEST(PageTree, TakesTheNearestValueThatIsNotNull) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 5/Rotate 90>>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[4 0 R 5 0 R 6 0 R 7 0 R 8 0 R]/Rotate 9 0 R>>")
      .Object(4, "<</Type/Page/Parent 3 0 R>>")
      .Object(5, "<</Type/Page/Parent 3 0 R/Rotate null>>")
      .Object(6, "<</Type/Page/Parent 3 0 R/Rotate 99 0 R>>")
      .Object(7, "<</Type/Page/Parent 3 0 R/Rotate 10 0 R>>")
      .Object(8, "<</Type/Page/Parent 3 0 R/Rotate/Left>>")
      .Object(9, "null")
      .Object(10, "180");
  Tree tree(pdf.Table());
  std::vector<std::int64_t> values;
  Arena arena;
  for (const PageTree::Page& page : tree.pages.pages()) {
    values.push_back(tree.pages.Attribute(page, InheritableKey::kRotate, arena).IntegerOr(-1));
  }
  EXPECT_EQ(values, (std::vector<std::int64_t>{90, 90, 90, 180, -1}));
}

TEST(PageTree, TellsWhatGivesAnAttribute) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/Resources 6 0 R>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/Resources 6 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>")
      .Object(5, "<</Type/Page/Parent 2 0 R/Resources 99 0 R>>")
      .Object(6, "<</Font<<>>>>");
  Tree tree(pdf.Table());
  Arena arena;
  const auto given = [&](std::size_t index) {
    const PageTree::Page& page = tree.pages.pages()[index];
    return tree.pages.FindAttribute(page, tree.pages.Load(page, arena), InheritableKey::kResources);
  };
  EXPECT_EQ(given(0).node, 0U);
  EXPECT_NE(given(1).node, 0U);
  EXPECT_EQ(given(2).node, given(1).node);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(given(i).value.AsReference().number, 6U) << i;
  }
}

TEST(PageTree, PassesOverKidsThatAreNoPages) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[null 99 0 R(x)17 3 0 R 4 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Pages/Parent 2 0 R/Count 0>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageTreeDamaged));
}

TEST(PageTree, StopsAtLoops) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 2 0 R 4 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Pages/Kids[2 0 R 4 0 R 5 0 R]/Count 1>>")
      .Object(5, "<</Type/Page/Parent 4 0 R>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3, 5}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageTreeLoop));
}

// Nodes that are written in place have no numbers by which a loop would show.
TEST(PageTree, UsesEachListOfKidsOnce) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids 4 0 R/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "[3 0 R<</Type/Pages/Kids 5 0 R/Count 9>><</Type/Pages/Kids 4 0 R/Count 9>>]")
      .Object(5, "4 0 R");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageTreeLoop));
}

TEST(PageTree, CountsAPageThatStandsTwiceTwice) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 3 0 R]/Count 2>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>");
  EXPECT_EQ(Tree(pdf.Table()).Numbers(), (Numbers{3, 3}));
}

TEST(PageTree, AdoptsPagesThatTheTreeHasLost) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 x 0 R 5 0 R 6 0 R]/Count 4>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>")
      .Object(5, "<</Type/Page/Parent 2 0 R>>")
      .Object(6, "<</Type/Page/Parent 2 0 R>>")
      .Object(7, "<</Type/Page/Parent 9 0 R>>");  // of another tree
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3, 4, 5, 6}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageAdopted));
  EXPECT_FALSE(tree.document->findings().Has(FindingCode::kPageBlank));
}

TEST(PageTree, LeavesDeletedPagesOfASoundTreeAlone) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>");
  EXPECT_EQ(Tree(pdf.Table()).Numbers(), (Numbers{3}));
  RawPdf damaged(pdf);
  EXPECT_EQ(Tree(damaged.Raw("startxref\n7\n%%EOF").bytes()).Numbers(), (Numbers{3}));
}

// The file with a character of the text in place of another, wherever it stands.
std::string Spoilt(std::string bytes, const std::string& text, std::size_t index, char character) {
  for (std::size_t at = bytes.find(text); at != std::string::npos; at = bytes.find(text, at + 1)) {
    bytes[at + index] = character;
  }
  return bytes;
}

TEST(PageTree, PutsEmptyPagesWhereOthersAreLost) {
  for (const char* count : {"5", "2", "0", "x"}) {
    RawPdf pdf;
    pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, std::string("<</Type/Pages/Kids[7 0 R 3 0 R 8 0 R 4 0 R 9 0 R]/Count ") + count +
                       "/Rotate 90>>")
        .Object(3, "<</Type/Page/Parent 2 0 R>>")
        .Object(4, "<</Type/Page/Parent 2 0 R>>")
        .Object(7, "<</Type/Page/Parent 2 0 R>>")
        .Object(8, "<</Type/Page/Parent 2 0 R>>")
        .Object(9, "<</Type/Page/Parent 2 0 R>>");
    std::string bytes = Spoilt(pdf.Table(), "\n7 0 obj", 3, '?');
    bytes = Spoilt(bytes, "\n8 0 obj\n<</Type", 9, '?');
    Tree tree(Spoilt(bytes, "\n9 0 obj", 5, '?'));
    EXPECT_EQ(tree.Numbers(), (Numbers{0, 3, 0, 4, 0})) << count;
    EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageBlank));
    EXPECT_FALSE(tree.document->findings().Has(FindingCode::kPagesMissing));
    Arena arena;
    const PageTree::Page& blank = tree.pages.pages()[0];
    EXPECT_TRUE(tree.pages.Load(blank, arena).IsDictionary());
    EXPECT_EQ(tree.pages.Attribute(blank, InheritableKey::kRotate, arena).IntegerOr(0), 90);
  }
}

TEST(PageTree, TakesNothingForAPageThatIsNone) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 5 0 R 99 0 R null 6 0 R 7 0 R 17]/Count 9>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(5, "null")
      .Object(6, "")
      .Object(7, "<</Type/Pages/Parent 2 0 R/Kids[]/Count 4>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3}));
  EXPECT_FALSE(tree.document->findings().Has(FindingCode::kPageBlank));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPagesMissing));
}

TEST(PageTree, BelievesTheCountWhereNoCrossReferenceIsLeft) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[7 0 R 3 0 R null 8 0 R 4 0 R 9 0 R]/Count 4>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>");
  Tree tree(pdf.Raw("trailer\n<</Root 1 0 R>>\nstartxref\n7\n%%EOF").bytes());
  EXPECT_EQ(tree.Numbers(), (Numbers{0, 3, 0, 4}));  // no more than /Count
}

// A page stands for the node that leads back to itself, as long as the root counts one more.
TEST(PageTree, BelievesTheCountOfALoop) {
  for (const char* const count : {"1", "2", "9"}) {
    RawPdf pdf;
    pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, std::string("<</Type/Pages/Kids[3 0 R 4 0 R]/Count ") + count + ">>")
        .Object(3, "<</Type/Page/Parent 2 0 R>>")
        .Object(4, "<</Type/Pages/Parent 2 0 R/Kids[5 0 R]/Count 1>>")
        .Object(5, "<</Type/Pages/Parent 4 0 R/Kids[4 0 R]/Count 1>>");
    const Numbers expected = count == std::string("1") ? Numbers{3} : Numbers{3, 0};
    for (const std::string& bytes :
         {pdf.Table(), pdf.Raw("trailer\n<</Root 1 0 R>>\nstartxref\n7\n%%EOF").bytes()}) {
      Tree tree(bytes);
      EXPECT_EQ(tree.Numbers(), expected) << count;
      EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageTreeLoop));
    }
  }
}

TEST(PageTree, MakesNoEmptyPagesWithoutEnd) {
  std::string kids;
  for (int i = 0; i < 20'000; ++i) {
    kids += "4 0 R ";
  }
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R " + kids + "]/Count 20001>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>");
  Tree tree(Spoilt(pdf.Table(), "\n4 0 obj", 3, '?'));
  EXPECT_EQ(tree.Numbers().size(), 10'001U);
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageBlank));
}

TEST(PageTree, AdoptsThePagesOfANodeWithoutKids) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 3>>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Count 2/Kidz[5 0 R 6 0 R]>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>")
      .Object(5, "<</Type/Page/Parent 3 0 R>>")
      .Object(6, "<</Type/Page/Parent 3 0 R>>");
  EXPECT_EQ(Tree(pdf.Table()).Numbers(), (Numbers{5, 6, 4}));
}

TEST(PageTree, TellsThatItFoundFewerPagesThanClaimed) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kidz[3 0 R 4 0 R]/Count 3>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3, 4}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPagesMissing));
}

TEST(PageTree, DoesNotBelieveTheCount) {
  for (const char* count : {"0", "-3", "2147483647", "(five)"}) {
    RawPdf pdf;
    pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, std::string("<</Type/Pages/Kids[3 0 R 4 0 R]/Count ") + count + ">>")
        .Object(3, "<</Type/Page/Parent 2 0 R>>")
        .Object(4, "<</Type/Page/Parent 2 0 R>>");
    Tree tree(pdf.Table());
    EXPECT_EQ(tree.Numbers(), (Numbers{3, 4})) << count;
    EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPageCountWrong)) << count;
  }
}

TEST(PageTree, TakesPagesThatAreNoObjectsOfTheirOwn) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[<</Type/Page/MediaBox[0 0 9 9]>>]/Count 1>>");
  Tree tree(pdf.Table());
  ASSERT_EQ(tree.Numbers(), (Numbers{0}));
  Arena arena;
  EXPECT_EQ(tree.pages.Load(tree.pages.pages()[0], arena).Get("MediaBox").Items().size(), 4U);
}

TEST(PageTree, WalksDeepTreesWithoutRecursion) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  constexpr int kDepth = 20000;
  for (int i = 0; i < kDepth; ++i) {
    pdf.Object(2 + i, "<</Type/Pages/Kids[" + std::to_string(3 + i) + " 0 R]/Count 1>>");
  }
  pdf.Object(2 + kDepth, "<</Type/Page>>");
  EXPECT_EQ(Tree(pdf.Table()).Numbers(), (Numbers{2 + kDepth}));
}

TEST(PageTree, GathersPagesWhenTheTreeIsGone) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3, 4}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPagesSalvaged));
}

TEST(PageTree, IsEmptyForASoundDocumentWithoutPages) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[]/Count 0>>");
  EXPECT_TRUE(Tree(pdf.Table()).Numbers().empty());
}

TEST(PageTree, SaysSoWhenADamagedDocumentHasNoPages) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  try {
    Tree tree(pdf.Table());
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.code(), ErrorCode::kNoPages);
  }
}

// The document is sound but for its pages.
TEST(PageTree, SaysSoWhenThereIsNoTreeAndNoPage) {
  for (const char* pages : {"", "/Pages 9 0 R", "/Pages 5", "/Pages[2 0 R]"}) {
    RawPdf pdf;
    pdf.Object(1, std::string("<</Type/Catalog") + pages + ">>").Object(2, "<</Type/Font>>");
    try {
      Tree tree(pdf.Table());
      ADD_FAILURE() << pages;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kNoPages) << pages;
      EXPECT_STREQ(error.what(), "no page can be found");
    }
  }
}

TEST(PageTree, GathersPagesOfASoundDocumentWithoutATree) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog>>").Object(3, "<</Type/Page/Parent 2 0 R>>");
  Tree tree(pdf.Table());
  EXPECT_EQ(tree.Numbers(), (Numbers{3}));
  EXPECT_TRUE(tree.document->findings().Has(FindingCode::kPagesSalvaged));
}

// Which pages there are whatever the kids are and whatever the tree claims.
//   kids - p: a page; l: one that is lost; n: null; x: no object; r: the root; s: no page
//   others - pages that no kid leads to
// For each claim from none to four the pages, and a letter for each finding: "A" for the first code.
std::string Tried(const std::string& kids, int others, bool has_table) {
  std::string text;
  for (const char* count : {"0", "1", "2", "3", "4"}) {
    RawPdf pdf;
    std::string list;
    std::string lost;
    int number = 10;
    for (const char kind : kids) {
      const std::string name = std::to_string(number);
      list += kind == 'n'   ? "null "
              : kind == 'r' ? "2 0 R "
              : kind == 's' ? "(s) "
                            : name + " 0 R ";
      if (kind == 'p' || kind == 'l') {
        pdf.Object(number, "<</Type/Page/Parent 2 0 R>>");
      }
      lost += kind == 'l' ? "\n" + name + " 0 obj" : "";
      ++number;
    }
    for (int i = 0; i < others; ++i) {
      pdf.Object(number++, "<</Type/Page/Parent 2 0 R>>");
    }
    pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages/Kids[" + list + "]/Count " + count + ">>");
    std::string bytes = has_table ? pdf.Table() : pdf.Raw("trailer\n<</Root 1 0 R>>\n").bytes();
    for (std::size_t at = 0; at < lost.size(); at += 9) {
      bytes = Spoilt(bytes, lost.substr(at, 9), 4, '?');
    }
    try {
      Tree tree(bytes);
      for (const std::uint32_t page : tree.Numbers()) {
        text += " " + std::to_string(page);
      }
      for (const Finding& finding : tree.document->findings().kept()) {
        text += " " + std::string(1, static_cast<char>('A' + static_cast<int>(finding.code)));
      }
    } catch (const Error&) {
      text += " none";
    }
    text += ";";
  }
  return text;
}

TEST(PageTree, TakesKidsOfEachKind) {
  std::string text;
  const std::string kinds = "plnxrs";
  std::vector<std::string> lists = {"",    "pp",   "ppp",  "plp",  "lpl", "pnp",
                                    "pxl", "lnxr", "llpp", "prps", "nnn", "xxl"};
  for (const char first : kinds) {
    lists.emplace_back(1, first);
    for (const char second : kinds) {
      lists.push_back({first, second});
    }
  }
  for (const std::string& kids : lists) {
    for (const int others : {0, 1, 2}) {
      for (const bool has_table : {true, false}) {
        text += kids + " and " + std::to_string(others) + (has_table ? ":" : " without a table:") +
                Tried(kids, others, has_table) + "\n";
      }
    }
  }
  EXPECT_TRUE(::TarnixTools::testing::IsAsExpected("tree/kids.txt", text));
}

}  // namespace
}  // namespace TarnixTools::pdf
