// Copied pages with their boxes, resources and annotations as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

// Pages that inherit, share and name resources, in contents, forms, patterns, glyphs and
// appearances.
std::string Resources() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R>>
2 <</Type/Pages/Kids[3 0 R 8 0 R 7 0 R]/Count 6/MediaBox[0 0 90 80]/Rotate 90/CropBox[1 1 80 70]
 /Resources<</Font<</F 20 0 R/G 21 0 R/H 22 0 R>>/ProcSet[/PDF/Text]/XObject<</Unused 30 0 R/I 31 0 R>>>>>>
3 <</Type/Page/Parent 2 0 R/Contents 10 0 R/BleedBox[0 0 50 50]/TrimBox[(x) 1 2 3]/ArtBox[9 9 1 1]>>
4 <</Type/Page/Parent 8 0 R/Contents[11 0 R 10 0 R 99 0 R 12 0 R]/Resources 40 0 R/MediaBox[0 0 40 0 R]/Rotate 45>>
5 <</Type/Page/Parent 8 0 R/Contents 13 0 R/Resources 40 0 R/Rotate -90/MediaBox 16 0 R>>
6 <</Type/Page/Parent 8 0 R/Resources<</Font<</F 20 0 R/K 24 0 R>>/Own 5/XObject<</T 32 0 R>>>>/Contents 14 0 R/Rotate 0>>
7 <</Type/Page/Parent 2 0 R/Contents 15 0 R/Resources<</Font 41 0 R/XObject<</P 33 0 R/Q 34 0 R>>/Pattern<</P 35 0 R/R 36 0 R>>
 /Shading<</S 37 0 R/S2 37 0 R>>/ExtGState<</E<</Font[25 0 R 3]/SMask<</S/Alpha/G 38 0 R>>>>/E2<</CA 1>>>>
 /ColorSpace<</C[/Pattern/DeviceRGB]/D/DeviceGray/DefaultGray[/CalGray<<>>]>>/Properties<</M<</A 1>>/N 39 0 R>>>>/CropBox[5 5 20 20 9]>>
8 <</Type/Pages/Parent 2 0 R/Kids[4 0 R 5 0 R 6 0 R 9 0 R]/Count 4/CropBox[20 30 10 10]>>
9 <</Type/Page/Parent 8 0 R/Resources null/UserUnit 3/Tabs/R/Own[<</A 20 0 R>>(s)<00ff>true null 1.50]>>
10 <<>> stream BT /F 9 Tf (x) Tj ET
11 <<>> stream BT /F 9 Tf (x) Tj ET /I Do
12 <<>> stream BT /K 9 Tf ET
13 <<>> stream BT /G 9 Tf ET /J Do
14 <<>> stream /T Do
15 <<>> stream /P Do /Pattern cs /P scn /C CS /R SCN /S sh /E gs /Tag /M BDC EMC BT /K 3 Tf (a) Tj ET /N /N DP
16 [0 0 30 20.5]
20 <</Type/Font/Subtype/Type1/BaseFont/Helvetica>>
21 <</Type/Font/Subtype/Type1/BaseFont/Courier>>
22 <</Type/Font/Subtype/Type1/BaseFont/Symbol>>
23 <</Type/Font/Subtype/Type1/BaseFont/Times-Roman>>
24 <</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]/Encoding<</Differences[97/a]>>/FirstChar 97/LastChar 97/Widths[1]
 /CharProcs<</a 42 0 R>>/Resources<</XObject<</G 43 0 R/H 44 0 R>>>>>>
25 <</Type/Font/Subtype/Type1/BaseFont/ZapfDingbats>>
30 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream q Q
31 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8>> stream x
32 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</Font<</F 21 0 R/G 22 0 R>>>>>> stream BT /F 1 Tf ET
33 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream BT /F 1 Tf ET /Q Do
34 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8>> stream y
35 <</PatternType 1/PaintType 1/TilingType 1/BBox[0 0 1 1]/XStep 1/YStep 1/Resources<</Font<</A 22 0 R/B 23 0 R>>>>>> stream BT /A 1 Tf ET
36 <</PatternType 2/Shading 37 0 R>>
37 <</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 1 1]/Function<</FunctionType 2/Domain[0 1]/N 1>>>>
38 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Group<</S/Transparency>>/Resources 40 0 R>> stream /J Do
39 <</Own(properties)>>
40 <</Font<</F 20 0 R/G 21 0 R/K 24 0 R>>/XObject<</I 31 0 R/J 30 0 R>>>>
41 <</F 20 0 R/K 24 0 R/G 21 0 R>>
42 <<>> stream 1 0 d0 /G Do
43 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream n
44 <</Type/XObject/Subtype/Form/BBox[0 0 2 2]>> stream n
)")
      .Table();
}

// Annotations of one page and of several, listed and not, that refer to one another.
std::string Notes() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R]/Count 3/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Annots[10 0 R 11 0 R 12 0 R 13 0 R 17 0 R 19 0 R 10 0 R 3 0 R 20 0 R 22 0 R 30 0 R<</Subtype/Text/Rect[0 0 1 1]/Popup 15 0 R>>]>>
4 <</Type/Page/Parent 2 0 R/Annots 6 0 R/Contents 20 0 R/Resources<</Font<</F 22 0 R>>>>>>
5 <</Type/Page/Parent 2 0 R/Annots[]>>
6 [14 0 R 13 0 R 16 0 R 18 0 R 21 0 R 23 0 R 24 0 R]
10 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/Contents(original)/P 3 0 R/Popup 11 0 R/AP<</N 31 0 R>>>>
11 <</Type/Annot/Subtype/Popup/Rect[0 0 1 1]/Parent 10 0 R/Open true>>
12 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/Contents(reply)/IRT 10 0 R/RT/Group/Popup 15 0 R>>
13 <</Type/Annot/Subtype/Square/Rect[0 0 1 1]/Contents(on two pages)/IRT 14 0 R/BS<</W 1>>>>
14 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/Contents(of the second page)/IRT 12 0 R/RT/R/Popup 11 0 R>>
15 <</Type/Annot/Subtype/Popup/Rect[0 0 1 2]/Parent 12 0 R>>
16 <</Type/Annot/Subtype/Popup/Rect[0 0 1 3]/Parent 10 0 R>>
17 <</Type/Annot/Subtype/Popup/Rect[0 0 1 4]>>
18 <</Type/Annot/Subtype/Popup/Rect[0 0 1 5]/Parent 14 0 R>>
19 <</Type/Annot/Subtype/Stamp/Rect[0 0 1 1]/A<</S/GoTo/D[5 0 R/Fit]>>/AA<</E<</S/GoTo/D[9 0 R/Fit]>>>>>>
20 <<>> stream q Q
21 <</Type/Annot/Subtype/Link/Rect[0 0 1 1]/Dest[3 0 R/Fit]/PA<</S/GoTo/D[5 0 R/Fit]>>>>
22 <</Type/Font/Subtype/Type1/BaseFont/Helvetica>>
23 <</Type/Annot/Rect[0 0 1 1]>>
24 <</Subtype/Ink/Own 13 0 R/Lines[[1 2]]>>
30 <</Type/Annot/Subtype/Widget/Rect[0 0 1 1]/DA(/F 3 Tf)/AP<</N 32 0 R/D<</A 33 0 R/B 33 0 R>>>>>>
31 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</Font<</F 22 0 R/G 34 0 R>>>>>> stream BT /F 1 Tf ET
32 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</Font<</F 22 0 R/G 34 0 R>>>>>> stream BT /G 1 Tf ET
33 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream q Q
34 <</Type/Font/Subtype/Type1/BaseFont/Courier>>
)")
      .Table();
}

TEST(PageTexts, OfAllPages) {
  EXPECT_TRUE(IsAsExpected("copy/pages_whole.txt", CopiedText({{Resources()}})));
}

TEST(PageTexts, OfSomePages) {
  EXPECT_TRUE(IsAsExpected("copy/pages_1_and_3.txt", CopiedText({{Resources(), {0, 2}}})));
  EXPECT_TRUE(IsAsExpected("copy/pages_2_and_4.txt", CopiedText({{Resources(), {1, 3}}})));
  EXPECT_TRUE(IsAsExpected("copy/pages_6_and_5.txt", CopiedText({{Resources(), {5, 4}}})));
}

TEST(PageTexts, OfPagesCopiedTwice) {
  EXPECT_TRUE(IsAsExpected("copy/pages_twice.txt", CopiedText({{Resources(), {3, 5, 3}}})));
}

TEST(PageTexts, OfAnnotations) {
  EXPECT_TRUE(IsAsExpected("copy/notes_whole.txt", CopiedText({{Notes()}})));
  EXPECT_TRUE(IsAsExpected("copy/notes_first_page.txt", CopiedText({{Notes(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/notes_second_page.txt", CopiedText({{Notes(), {1, 2}}})));
  EXPECT_TRUE(IsAsExpected("copy/notes_twice.txt", CopiedText({{Notes(), {1, 0, 1}}})));
}

TEST(PageTexts, OfPagesWithoutTheirAnnotations) {
  EXPECT_TRUE(IsAsExpected("copy/notes_without_notes.txt", CopiedText({{Notes()}}, kCopyLinks)));
  EXPECT_TRUE(IsAsExpected("copy/notes_with_nothing.txt", CopiedText({{Notes()}}, 0)));
}

TEST(PageTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(IsAsExpected("copy/pages_as_written.txt", WrittenText({{Resources()}})));
  EXPECT_TRUE(IsAsExpected("copy/notes_as_written.txt", WrittenText({{Notes()}})));
}

TEST(PageTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/pages_with_other_keys.txt", KeysChangedText(Resources())));
  EXPECT_TRUE(IsAsExpected("copy/notes_with_other_keys.txt", KeysChangedText(Notes())));
}

TEST(PageTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/pages_with_other_digits.txt", DigitsChangedText(Resources())));
  EXPECT_TRUE(IsAsExpected("copy/notes_with_other_digits.txt", DigitsChangedText(Notes())));
}

TEST(PageTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Resources());
  ExpectNumbersNotToMatter(Notes());
}

TEST(PageTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Resources());
  ExpectEncryptionNotToMatter(Notes());
}

TEST(PageTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Resources());
  ExpectLayoutNotToMatter(Notes());
}

// Resources stay where it is not known which are used, or where others bring them along anyway.
TEST(PageTexts, OfPagesWhoseContentsCannotBeRead) {
  const std::string bytes = testing::RawPdf()
                                .Lines(R"(1 <</Type/Catalog/Pages 2 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R 7 0 R 8 0 R 9 0 R]/Count 7/MediaBox[0 0 9 9]>>
3 <</Type/Page/Parent 2 0 R/Contents 20 0 R/Resources<</XObject<</F 10 0 R/G 11 0 R>>>>>>
4 <</Type/Page/Parent 2 0 R/Contents 21 0 R/Resources<</XObject<</X 10 0 R/Y 12 0 R>>>>>>
5 <</Type/Page/Parent 2 0 R/Contents[21 0 R(x)]/Resources<</XObject<</Z 13 0 R>>>>>>
6 <</Type/Page/Parent 2 0 R/Contents[22 0 R 23 0 R]/Resources<</XObject<</W 14 0 R/V 15 0 R>>>>>>
7 <</Type/Page/Parent 2 0 R/Contents 25 0 R/Resources<</XObject<</W 14 0 R/U 16 0 R>>>>>>
8 <</Type/Page/Parent 2 0 R/Contents 25 0 R/Resources<</XObject<</W 17 0 R/U 16 0 R>>>>>>
9 <</Type/Page/Parent 2 0 R>>
10 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 10
11 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 11
12 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 12
13 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 13
14 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 14
15 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 15
16 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 16
17 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream 17
20 <</Filter/NoSuchDecode>> stream x
21 <<>> stream q Q
22 <<>> stream /W
23 <<>> stream Do ] (
24 <<>> stream Do
25 [22 0 R 24 0 R]
)")
                                .Table();
  EXPECT_TRUE(
      IsAsExpected("copy/unreadable_pages.txt", WrittenText({{bytes, {0, 1, 2, 3, 4, 5}}})));
  EXPECT_TRUE(
      IsAsExpected("copy/unreadable_pages_but_one.txt", WrittenText({{bytes, {5, 3, 1, 4}}})));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
