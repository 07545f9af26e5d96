// Copied layers as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

// Two pages and a sheet of layers in nested lists, radio groups, usages and configurations.
std::string Plan() {
  return testing::RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/PageMode/UseOC/OCProperties 8 0 R>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Contents 5 0 R/Resources<</Properties<</A 10 0 R/B 11 0 R/M 20 0 R/U 19 0 R>>>>>>
4 <</Type/Page/Parent 2 0 R/Contents 6 0 R/Resources<</Properties<</C 12 0 R/D 13 0 R/E 14 0 R>>>>/Annots[21 0 R]>>
5 <<>> stream /OC /A BDC EMC /OC /B BDC EMC /OC /M BDC EMC /OC /U BDC EMC
6 <<>> stream /OC /C BDC EMC /OC /D BDC EMC /OC /E BDC EMC
8 <</OCGs[10 0 R 11 0 R 12 0 R 13 0 R 14 0 R 15 0 R 3 0 R 22 0 R 99 0 R 10 0 R]/D 9 0 R
 /Configs[<</Name(Print)/Creator(c)/BaseState/OFF/ON[10 0 R 12 0 R]/OFF[13 0 R]/Intent/Design/Order[11 0 R 10 0 R]
 /ListMode/AllPages/Locked[12 0 R]/RBGroups[[10 0 R 13 0 R]]/AS[<</Event/View/OCGs[12 0 R]/Category[/Zoom]>>]>>
 7 <</Name<3132>/BaseState/Unchanged/ListMode/VisiblePages/Intent[/View/Design]>> 23 0 R]>>
9 <</Name(Plan)/Creator(Maker)/ON[10 0 R]/OFF[11 0 R 12 0 R]/Locked[13 0 R 99 0 R]/Intent/View
 /Order[(Top)10 0 R[11 0 R(label)[12 0 R]]13 0 R[(labelled)14 0 R][[15 0 R]]25 0 R 10 0 R]
 /RBGroups[[10 0 R 11 0 R][12 0 R 13 0 R 15 0 R]24 0 R]
 /AS[<</Event/Print/OCGs[10 0 R 14 0 R 16 0 R]/Category[/Print/View 3]>><</Event/Export/OCGs[15 0 R]/Category[/Export]>><</OCGs[10 0 R]>>]>>
10 <</Type/OCG/Name(A)/Intent/View>>
11 <</Type/OCG/Name(B)/Intent[/View/Design]>>
12 <</Type/OCG/Name(C)/Intent/Design>>
13 <</Type/OCG/Name(D)/Usage<</Print<</PrintState/OFF>>>>>>
14 <</Type/OCG/Name(E)/Intent[/All]>>
15 <</Type/OCG/Name(F)>>
16 <</Type/OCG/Name(not listed)>>
19 <</Type/OCG/Name(not listed either)>>
20 <</Type/OCMD/OCGs[10 0 R 15 0 R]/P/AnyOff/VE[/Not 10 0 R]>>
21 <</Type/Annot/Subtype/Square/Rect[0 0 1 1]/OC 16 0 R>>
22 <</Type/Font>>
23 <</Name(Third)/BaseState/ON/OFF[10 0 R]>>
24 [14 0 R 24 0 R 15 0 R]
25 [14 0 R 25 0 R[(inner)]]
)")
      .Table();
}

// Layers that start from another state, with another intent.
std::string OtherPlan(const std::string& base) {
  return testing::RawPdf()
      .Lines(
          R"(1 <</Type/Catalog/Pages 2 0 R/OCProperties<</OCGs[10 0 R 11 0 R 12 0 R]
 /D<<)" + base +
          R"(/ON[10 0 R]/OFF[12 0 R]/Order[(Other)10 0 R 11 0 R]/AS[<</Event/View/OCGs[11 0 R]/Category[/View]>>]>>
 /Configs[<</Name(Alt)/OFF[11 0 R]/ON[12 0 R]>><</BaseState/OFF>>]>>>>
2 <</Type/Pages/Kids[3 0 R]/Count 1/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/Contents 5 0 R/Resources<</Properties<</A 10 0 R/B 11 0 R>>>>>>
5 <<>> stream /OC /A BDC EMC
10 <</Type/OCG/Name(X)/Intent/Design>>
11 <</Type/OCG/Name(Y)>>
12 <</Type/OCG/Name(Z)/Intent/View>>
)")
      .Table();
}

TEST(LayerTexts, OfAWholeDocument) {
  EXPECT_TRUE(IsAsExpected("copy/layers_whole.txt", CopiedText({{Plan()}})));
}

TEST(LayerTexts, OfItsPages) {
  EXPECT_TRUE(IsAsExpected("copy/layers_first_page.txt", CopiedText({{Plan(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/layers_second_page.txt", CopiedText({{Plan(), {1}}})));
}

TEST(LayerTexts, OfSeveralDocuments) {
  EXPECT_TRUE(IsAsExpected("copy/layers_of_one_base.txt",
                           CopiedText({{Plan()}, {OtherPlan("/Intent/View/Name(Other)")}})));
  EXPECT_TRUE(IsAsExpected("copy/layers_of_two_bases.txt",
                           CopiedText({{OtherPlan("/BaseState/OFF/ListMode/VisiblePages")},
                                       {Plan(), {1}},
                                       {OtherPlan("/Intent[/Design/All]/Creator(o)")}})));
  EXPECT_TRUE(IsAsExpected("copy/layers_of_one_that_is_off.txt",
                           CopiedText({{OtherPlan("/BaseState/OFF/ListMode/VisiblePages")},
                                       {OtherPlan("/BaseState/OFF/ListMode/VisiblePages")}})));
}

TEST(LayerTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(IsAsExpected("copy/layers_as_written.txt", WrittenText({{Plan()}})));
  EXPECT_TRUE(
      IsAsExpected("copy/layers_of_two_as_written.txt",
                   WrittenText({{Plan()}, {OtherPlan("/BaseState/OFF/ListMode/VisiblePages")}})));
}

TEST(LayerTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/layers_with_other_keys.txt", KeysChangedText(Plan())));
}

TEST(LayerTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/layers_with_other_digits.txt", DigitsChangedText(Plan())));
}

TEST(LayerTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Plan());
}

TEST(LayerTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Plan());
}

TEST(LayerTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Plan());
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
