// Copied outlines, destinations, page labels and actions as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

// Three pages, among which everything leads to and fro.
std::string Book() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/Outlines 20 0 R/PageLabels 8 0 R/PageMode/UseOutlines
 /Dests 9 0 R/Names<</Dests<</Kids[40 0 R 41 0 R]>>>>/OpenAction 15 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Annots[50 0 R 51 0 R 52 0 R 53 0 R 54 0 R 55 0 R 56 0 R 57 0 R 58 0 R 59 0 R]>>
4 <</Type/Page/Parent 2 0 R/Annots[60 0 R 61 0 R 62 0 R 63 0 R 64 0 R 65 0 R]>>
5 <</Type/Page/Parent 2 0 R>>
8 <</Nums[0<</S/r/P(front-)>>1<</S/D/St 5>>2<</S/A>>2<</S/a>>9<</S/D>>-1<</S/D>>]>>
9 <</old[3 0 R/XYZ 1 2 3]/both[4 0 R/FitH 7]/deep<</D[5 0 R/FitR 1 2 3 4]>>/none[77 0 R/Fit]/empty[]>>
15 <</S/GoTo/D(two)>>
20 <</Type/Outlines/First 21 0 R/Last 28 0 R/Count 9>>
21 <</Title(One)/Parent 20 0 R/Next 24 0 R/First 22 0 R/Last 23 0 R/Count 2/Dest[3 0 R/XYZ 0 80 null]/C[1 0 0.5]/F 2>>
22 <</Title(One one)/Parent 21 0 R/Next 23 0 R/Dest(two)/C[1 0]/F(x)>>
23 <</Title(One two)/Parent 21 0 R/Prev 22 0 R/A<</S/GoTo/D/old/Next<</S/URI/URI(u:)>>>>/First 29 0 R/Last 29 0 R/Count -1>>
24 <</Title(Two)/Parent 20 0 R/Prev 21 0 R/Next 25 0 R/First 26 0 R/Last 27 0 R/Count -2/A 16 0 R/C[1/X 1]/F 1.5>>
25 <</Title 5/Parent 20 0 R/Prev 24 0 R/Next 28 0 R/Dest[99 0 R/Fit]/A<</S/URI/URI(u:)>>/C[0 0 0]>>
26 <</Title(Two one)/Parent 24 0 R/Next 27 0 R/Dest[5 0 R/Fit]>>
27 <</Title(Two two)/Parent 24 0 R/Prev 26 0 R/Dest/both/Next 22 0 R>>
28 <</Title<FEFF0033>/Parent 20 0 R/Prev 25 0 R/SE 3 0 R/A<</S/JavaScript/JS(x)>>/Next 21 0 R>>
29 <</Title(One two one)/Parent 23 0 R/Dest[2/FitV 3]/Next 3 0 R>>
16 <</S/GoTo/D<</D[4 0 R/FitB]>>/SD[1 0 R]/Next[<</S/GoTo/D[5 0 R/Fit]>><</S/Thread/D 0>><</S/Named/N/NextPage>>]>>
40 <</Limits[(a)(one)]/Names[(a)[5 0 R/Fit](both)[3 0 R/FitBH 1](one)<</D[3 0 R/FitBV 2]>>]>>
41 <</Limits[(three)(two)]/Names[(three)[2 0 R/Fit](two)[4 0 R/XYZ 1 2 null(x)/Y 3 4 5 6](two)[3 0 R/Fit]]>>
50 <</Type/Annot/Subtype/Link/Rect[0 0 1 1]/Dest[4 0 R/Fit]/Border[0 0 0]>>
51 <</Type/Annot/Subtype/Link/Rect[0 0 2 1]/Dest(two)/PA<</S/URI/URI(pa:)>>/H/I>>
52 <</Type/Annot/Subtype/Link/Rect[0 0 3 1]/A<</S/GoTo/D(nowhere)>>>>
53 <</Type/Annot/Subtype/Link/Rect[0 0 4 1]/A<</S/GoTo/D/both/Next 17 0 R>>/AA<</U<</S/GoTo/D[5 0 R/Fit]>>/D<</S/URI/URI(d:)>>>>>>
17 <</S/URI/URI(after)/Next<</S/GoTo/D[3 0 R/Fit]>>>>
54 <</Type/Annot/Subtype/Link/Rect[0 0 5 1]/A 18 0 R>>
55 <</Type/Annot/Subtype/Link/Rect[0 0 6 1]/A 18 0 R/PA 18 0 R>>
18 <</S/GoTo/D[5 0 R/XYZ 1 2 3]/Next<</S/GoTo/D[4 0 R/Fit]>>>>
56 <</Type/Annot/Subtype/Link/Rect[0 0 7 1]/A<</S/GoToDp/Dp 1 0 R>>>>
57 <</Type/Annot/Subtype/Link/Rect[0 0 8 1]>>
58 <</Type/Annot/Subtype/Link/Rect[0 0 9 1]/A<</S/URI/URI(chain)/Next[<</S/URI/URI(1)>><</S/URI/URI(2)/Next 58 0 R>>]>>>>
59 <</Type/Annot/Subtype/Text/Rect[0 0 9 2]/Contents(note)/A<</S/GoTo/D(gone)>>/Popup 66 0 R>>
60 <</Type/Annot/Subtype/Link/Rect[0 0 1 3]/Dest/one>>
61 <</Type/Annot/Subtype/Link/Rect[0 0 2 3]/Dest[0/FitH 5]>>
62 <</Type/Annot/Subtype/Link/Rect[0 0 3 3]/Dest[-1/Fit]>>
63 <</Type/Annot/Subtype/Link/Rect[0 0 4 3]/Dest[3/Fit]>>
64 <</Type/Annot/Subtype/Link/Rect[0 0 5 3]/A<</S/GoToR/F(other.pdf)/D[0/Fit]>>>>
65 <</Type/Annot/Subtype/Link/Rect[0 0 6 3]/Dest/deep/A<</S/URI/URI(too)>>>>
66 <</Type/Annot/Subtype/Popup/Rect[0 0 6 4]/Parent 59 0 R/Open true>>
)")
      .Table();
}

// No outline and no labels, and names that the book has.
std::string Leaflet() {
  return testing::RawPdf()
      .Lines(
          R"(1 <</Type/Catalog/Pages 2 0 R/Names<</Dests<</Names[(one)[3 0 R/Fit](two)[4 0 R/Fit](two_1)[3 0 R/FitB]<FEFF0031>[4 0 R/FitB]]>>>>>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 9 8]>>
3 <</Type/Page/Parent 2 0 R/Annots[5 0 R 6 0 R]>>
4 <</Type/Page/Parent 2 0 R>>
5 <</Type/Annot/Subtype/Link/Rect[0 0 1 1]/Dest(two)>>
6 <</Type/Annot/Subtype/Link/Rect[0 0 2 1]/Dest<FEFF0031>>>
)")
      .Table();
}

TEST(NavigationTexts, OfAWholeDocument) {
  EXPECT_TRUE(IsAsExpected("copy/book_whole.txt", CopiedText({{Book()}})));
}

TEST(NavigationTexts, OfItsPages) {
  EXPECT_TRUE(IsAsExpected("copy/book_first_page.txt", CopiedText({{Book(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/book_last_pages.txt", CopiedText({{Book(), {2, 1}}})));
}

TEST(NavigationTexts, OfPagesCopiedTwice) {
  EXPECT_TRUE(IsAsExpected("copy/book_twice.txt", CopiedText({{Book(), {1, 0, 1}}})));
}

TEST(NavigationTexts, OfSeveralDocumentsUnderHeadings) {
  EXPECT_TRUE(IsAsExpected(
      "copy/books_with_headings.txt",
      CopiedText({{Book(), {0, 2}, "A book"}, {Leaflet(), {}, "A leaflet"}, {Leaflet()}})));
  EXPECT_TRUE(IsAsExpected("copy/leaflet_and_book.txt", CopiedText({{Leaflet()}, {Book()}})));
}

TEST(NavigationTexts, OfWhatIsAskedFor) {
  EXPECT_TRUE(
      IsAsExpected("copy/book_outline_only.txt", CopiedText({{Book()}}, kCopyOutlineItems)));
  EXPECT_TRUE(IsAsExpected("copy/book_links_only.txt", CopiedText({{Book()}}, kCopyLinks)));
  EXPECT_TRUE(
      IsAsExpected("copy/book_annotations_only.txt", CopiedText({{Book()}}, kCopyAnnotations)));
}

TEST(NavigationTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(IsAsExpected("copy/book_as_written.txt", WrittenText({{Book()}})));
  EXPECT_TRUE(IsAsExpected("copy/books_with_headings_as_written.txt",
                           WrittenText({{Book(), {0, 2}, "One"}, {Leaflet(), {}, "Two"}})));
}

TEST(NavigationTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/book_with_other_keys.txt", KeysChangedText(Book())));
}

TEST(NavigationTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/book_with_other_digits.txt", DigitsChangedText(Book())));
}

TEST(NavigationTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Book());
}

TEST(NavigationTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Book());
}

TEST(NavigationTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Book());
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
