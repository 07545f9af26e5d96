// Copied structure trees as a whole.
#include <gtest/gtest.h>

#include "engines/toolbox/copy/ChangedSources.h"
#include "engines/toolbox/copy/CopiedText.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using testing::IsAsExpected;

// Two pages whose elements hold marked content of pages, forms and appearances, whole objects, and
// nothing; with ids, classes, roles and namespaces.
//   root - further entries of the tree's root
//   alignment - of a class of attributes
std::string Report(const std::string& root, const std::string& alignment = "Start") {
  return testing::RawPdf()
      .Lines(
          R"(1 <</Type/Catalog/Pages 2 0 R/StructTreeRoot 20 0 R/MarkInfo<</Marked true>>/Lang(en)>>
2 <</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 90 80]>>
3 <</Type/Page/Parent 2 0 R/StructParents 0/Contents 5 0 R/Annots[10 0 R 11 0 R]/Resources<</XObject<</X 12 0 R/Y 13 0 R>>>>>>
4 <</Type/Page/Parent 2 0 R/StructParents 1/Contents 6 0 R/Resources<</XObject<</X 12 0 R>>>>>>
5 <<>> stream /X Do /Y Do /P<</MCID 0>>BDC EMC /P<</MCID 2>>BDC EMC
6 <<>> stream /X Do /P<</MCID 0>>BDC EMC /P<</MCID 1>>BDC EMC /P<</MCID 2>>BDC EMC
10 <</Type/Annot/Subtype/Link/Rect[0 0 1 1]/StructParent 2/A<</S/URI/URI(x:)>>>>
11 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/StructParent 9/Contents(no element)>>
12 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/StructParents 3>> stream /P<</MCID 0>>BDC EMC /P<</MCID 1>>BDC EMC
13 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/StructParent 4>> stream q Q
20 <</Type/StructTreeRoot/K[21 0 R 22 0 R 47 0 R]/ParentTreeNextKey 5
 /ParentTree<</Nums[0[23 0 R null 24 0 R]1[30 0 R 31 0 R 33 0 R]2 26 0 R 3[27 0 R 28 0 R]4 29 0 R]>>
 /IDTree<</Names[(one)23 0 R(th)35 0 R]>>)" +
          root + R"(>>
21 <</Type/StructElem/S/Document/P 20 0 R/K[23 0 R 24 0 R 25 0 R 29 0 R 41 0 R]/Lang(fr)/ID(doc)>>
22 <</Type/StructElem/S/Chapter/P 20 0 R/K[30 0 R 34 0 R 40 0 R]/Pg 4 0 R/C[/Centred 1/Other]/T(Two)>>
23 <</Type/StructElem/S/Head/P 21 0 R/Pg 3 0 R/K 0/ID(one)/C/Centred/A<</O/Layout/SpaceBefore 3>>>>
24 <</S/P/P 21 0 R/K[<</Type/MCR/Pg 3 0 R/MCID 2>>25 0 R 46 0 R]/Ref[23 0 R 30 0 R 99 0 R]/R 2/ActualText(at)/Alt(alt)/E(exp)>>
25 <</Type/StructElem/S/Figure/P 21 0 R/Pg 3 0 R/K[26 0 R 27 0 R 28 0 R]/A[<</O/Layout/BBox[0 0 1 1]>>2<</O/Table/Headers[(one)(none)]>>]>>
26 <</Type/StructElem/S/Link/P 25 0 R/Pg 3 0 R/K[<</Type/OBJR/Obj 10 0 R>><</Type/OBJR/Obj 11 0 R/Pg 4 0 R>>]>>
27 <</Type/StructElem/S/Span/P 25 0 R/Pg 3 0 R/K<</Type/MCR/Stm 12 0 R/MCID 0>>>>
28 <</Type/StructElem/S/Span/P 25 0 R/K<</Type/MCR/Pg 4 0 R/Stm 12 0 R/StmOwn 4 0 R/MCID 1>>>>
29 <</Type/StructElem/S/Formula/P 21 0 R/Pg 3 0 R/K<</Obj 13 0 R>>/NS 45 0 R>>
30 <</Type/StructElem/S/H1/P 22 0 R/K 0/NS 43 0 R>>
31 <</Type/StructElem/S/Cell/P 32 0 R/K[1 5000 -1]/A<</O/Table/Headers[(th)<746831>]/RowSpan 2>>>>
32 <</Type/StructElem/S/Row/P 34 0 R/K[31 0 R 33 0 R 35 0 R 36 0 R]>>
33 <</Type/StructElem/S/TD/P 32 0 R/K 2/NS 44 0 R>>
34 <</Type/StructElem/S/Table/P 22 0 R/K[32 0 R 37 0 R]>>
35 <</Type/StructElem/S/TH/P 32 0 R/ID(th)/K[]>>
36 <</Type/StructElem/S/TD/P 32 0 R/K 38 0 R>>
37 <</Type/StructElem/S/TR/P 34 0 R/K[<</Type/StructElem/S/TD/P 37 0 R>><</S/TD/K<</S/P/Pg 3 0 R/K 2>>/P 37 0 R>>]>>
38 [39 0 R]
39 <</Type/StructElem/S/Empty/P 36 0 R>>
40 <</Type/StructElem/S/Note/P 22 0 R/Pg 4 0 R/K[<</MCID 1/Pg 4 0 R>>0]>>
41 <</Type/StructElem/S/Loop/P 21 0 R/K[21 0 R 41 0 R 3 0 R]/Pg 3 0 R>>
42 <</Type/Namespace/NS(http://iso.org/pdf2/ssn)>>
43 <</Type/Namespace/NS(http://own/)>>
44 <</Type/Namespace/NS(http://mapped/)/RoleMapNS<</TD[/TH 42 0 R]>>>>
45 <</Type/Namespace/NS(http://www.w3.org/1998/Math/MathML)/Schema<</F(x)/EF<<>>>>>>
46 3
47 <</Type/StructElem/S/Part/P 20 0 R/AF[48 0 R]/NS 42 0 R>>
48 <</Type/Filespec/F(part.txt)>>
49 <</O/Layout/TextAlign/)" +
          alignment +
          R"(>>
50 <</Type/Filespec/F(lexicon.pls)>>
51 <</Type/Filespec/F(all.txt)>>
)")
      .Table();
}

std::string Tagged() {
  return Report(
      "/RoleMap<</Chapter/Sect/Head/H1/Row/TR/Cell/Data/Data/TD/Empty/Empty/Un/Used/H1/P>>"
      "/ClassMap<</Centred 49 0 R/Other[<</O/Layout/Width 3>>]/Unused 49 0 R>>"
      "/Namespaces[42 0 R 43 0 R 44 0 R 45 0 R 3 0 R<<>>]/PronunciationLexicon[50 0 R]/AF 51 0 R");
}

// With another meaning of types and classes.
std::string OtherTagged() {
  return Report(
      "/RoleMap<</Chapter/Div/Chapter_2/Sect/Head/H1/Row/TR/Cell/TD/Empty/Span/Loop/Chapter>>"
      "/ClassMap<</Centred 49 0 R/Centred_2 49 0 R>>/Namespaces[43 0 R 45 0 R]"
      "/PronunciationLexicon 50 0 R",
      "End");
}

std::string Untagged() {
  return testing::RawPdf().Pages(1).Table();
}

TEST(StructureTexts, OfAWholeDocument) {
  EXPECT_TRUE(IsAsExpected("copy/structure_whole.txt", CopiedText({{Tagged()}})));
}

TEST(StructureTexts, OfItsPages) {
  EXPECT_TRUE(IsAsExpected("copy/structure_first_page.txt", CopiedText({{Tagged(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/structure_second_page.txt", CopiedText({{Tagged(), {1}}})));
}

TEST(StructureTexts, OfPagesCopiedTwice) {
  EXPECT_TRUE(IsAsExpected("copy/structure_twice.txt", CopiedText({{Tagged(), {1, 0, 1}}})));
}

TEST(StructureTexts, OfSeveralDocuments) {
  EXPECT_TRUE(
      IsAsExpected("copy/structure_of_two.txt", CopiedText({{Tagged()}, {OtherTagged(), {0}}})));
  EXPECT_TRUE(IsAsExpected("copy/structure_of_two_pieces.txt",
                           CopiedText({{OtherTagged(), {1}}, {Tagged(), {1}}})));
  EXPECT_TRUE(IsAsExpected("copy/structure_beside_untagged.txt",
                           CopiedText({{Untagged()}, {OtherTagged(), {0}}, {Untagged()}})));
}

TEST(StructureTexts, AsTheyAreSpelled) {
  EXPECT_TRUE(IsAsExpected("copy/structure_as_written.txt", WrittenText({{Tagged()}})));
  EXPECT_TRUE(IsAsExpected("copy/structures_as_written.txt",
                           WrittenText({{Tagged()}, {OtherTagged(), {0}}})));
}

// The root is among its own kids and looks like an element, the first object is one, an annotation
// is there under other names, too, and a form is not written as it should be.
TEST(StructureTexts, OfARootThatIsItsOwnKid) {
  const std::string bytes = testing::RawPdf()
                                .Lines(R"(1 <</Type/StructElem/S/P/P 21 0 R/Pg 4 0 R/K 0>>
2 <</Type/Catalog/Pages 3 0 R/StructTreeRoot 20 0 R>>
3 <</Type/Pages/Kids[4 0 R]/Count 1/MediaBox[0 0 90 80]>>
4 <</Type/Page/Parent 3 0 R/StructParents 0/Contents 5 0 R/Annots[6 0 R]/Resources<</XObject<</X 7 0 R>>>>>>
5 <<>> stream /P<</MCID 0>>BDC EMC /P<</MCID 1>>BDC EMC /X Do
6 <</Type/Annot/Subtype/Text/Rect[0 0 1 1]/StructParent 1>>
7 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/StructParent 2/Irregular]/Other 5/StructParents 99>> stream q Q
20 <</S/Root/K[21 0 R 20 0 R]/ParentTree<</Nums[0[1 0 R 22 0 R]1 23 0 R 2 24 0 R]>>>>
21 <</Type/StructElem/S/Document/P 20 0 R/K[1 0 R 22 0 R 20 0 R 23 0 R 24 0 R]>>
22 <</Type/StructElem/S/P/P 21 0 R/Pg 4 0 R/K 1/Ref[1 0 R 0 0 R]>>
23 <</Type/StructElem/S/Annot/P 21 0 R/Pg 4 0 R/K<</Type/OBJR/Own 6 0 R/Obj 6 0 R/Not 7 0 R>>>>
24 <</Type/StructElem/S/Figure/P 21 0 R/Pg 4 0 R/K<</Type/OBJR/Obj 7 0 R>>>>
)")
                                .Table("/Root 2 0 R");
  EXPECT_TRUE(IsAsExpected("copy/structure_of_an_odd_root.txt", WrittenText({{bytes}})));
}

TEST(StructureTexts, OfOtherKeys) {
  EXPECT_TRUE(IsAsExpected("copy/structure_with_other_keys.txt", KeysChangedText(Tagged())));
}

TEST(StructureTexts, OfOtherDigits) {
  EXPECT_TRUE(IsAsExpected("copy/structure_with_other_digits.txt", DigitsChangedText(Tagged())));
}

TEST(StructureTexts, AreTheSameWhicheverObjectIsTheFirst) {
  ExpectNumbersNotToMatter(Tagged());
}

// The namespace of the element that is put over those of several documents.
TEST(StructureTexts, OfDocumentsWithNamespaces) {
  const auto tagged = [](const std::string& name) {
    const std::string space = name.empty() ? "" : "/NS 7 0 R";
    const std::string spaces = name.empty() ? "" : "/Namespaces[7 0 R]";
    return testing::RawPdf()
        .Pages(1, "/StructParents 0")
        .Object(1, "<</Type/Catalog/Pages 2 0 R/StructTreeRoot 5 0 R>>")
        .Object(5, "<</Type/StructTreeRoot/K 6 0 R/ParentTree<</Nums[0[6 0 R]]>>" + spaces + ">>")
        .Object(6, "<</Type/StructElem/S/P/P 5 0 R/Pg 3 0 R/K 0" + space + ">>")
        .Object(7, "<</Type/Namespace/NS(" + name + ")>>")
        .Table();
  };
  std::string text;
  for (const auto& names : std::vector<std::vector<std::string>>{
           {"a"}, {"a", "a"}, {"a", "b"}, {"a", ""}, {"", "a"}, {"a", "b", "b"}, {"a", "a", "a"}}) {
    std::vector<PagesOf> parts;
    for (const std::string& name : names) {
      text += "'" + name + "' ";
      parts.push_back({tagged(name)});
    }
    text += "\n" + WrittenText(parts);
  }
  EXPECT_TRUE(IsAsExpected("copy/structure_with_namespaces.txt", text));
}

TEST(StructureTexts, AreTheSameEncrypted) {
  ExpectEncryptionNotToMatter(Tagged());
}

TEST(StructureTexts, AreTheSameInAnyLayout) {
  ExpectLayoutNotToMatter(Tagged());
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
