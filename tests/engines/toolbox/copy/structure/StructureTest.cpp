// Tagged structure of copied pages, on real bytes.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "engines/toolbox/copy/structure/Tags.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Three pages: two paragraphs on the first, one from the second to the third, in a section each.
std::string ThreePages() {
  return TaggedPdf(3, "/K 21 0 R/ParentTree 30 0 R/ParentTreeNextKey 3/RoleMap<</Para/P/Foo/Span>>")
      .Element(21, 20, "Document", "/K[22 0 R 23 0 R]/Lang(en)")
      .Element(22, 21, "Sect", "/K[24 0 R 25 0 R]/T(first)")
      .Element(23, 21, "Sect", "/K[26 0 R 27 0 R]/T(second)")
      .Element(24, 22, "Para", "/Pg 3 0 R/K 0/Alt(one)")
      .Element(25, 22, "P", "/Pg 3 0 R/K[1 2]/ActualText(two)")
      .Element(26, 23, "P", "/Pg 4 0 R/K[0<</Type/MCR/Pg 5 0 R/MCID 0>>]")
      .Element(27, 23, "Figure", "/Pg 5 0 R/K 1/Alt(three)")
      .Object(30, "<</Nums[0[24 0 R 25 0 R 25 0 R]1[26 0 R]2[26 0 R 27 0 R]]>>")
      .Bytes();
}

TEST(Structure, KeepsTheTreeOfAWholeDocument) {
  CopiedDocument copy({{ThreePages(), {0, 1, 2}}});
  Tags tags(copy);
  EXPECT_THAT(tags.paths(),
              ElementsAre("Document", "Document/Sect", "Document/Sect/Para", "Document/Sect/P",
                          "Document/Sect", "Document/Sect/P", "Document/Sect/Figure"));
  EXPECT_EQ(tags.PathOf(0, 0), "Document/Sect/Para");
  EXPECT_EQ(tags.PathOf(0, 2), "Document/Sect/P");
  EXPECT_EQ(tags.PathOf(2, 0), "Document/Sect/P");
  EXPECT_EQ(tags.Element("Document/Sect/Figure").Get("Alt").Text(), "three");
  EXPECT_EQ(tags.Element("Document").Get("Lang").Text(), "en");
  EXPECT_THAT(tags.Keys(), ElementsAre(0, 1, 2));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(copy.Page(i).Get("StructParents").IntegerOr(-1), i);
  }
  EXPECT_EQ(copy.Text(tags.root().Get("RoleMap")), "<</Foo/Span/Para/P>>");
  EXPECT_EQ(tags.root().Get("ParentTreeNextKey").IntegerOr(0), 3);
  EXPECT_EQ(copy.Text(copy.Catalog().Get("MarkInfo")), "<</Marked true>>");
}

TEST(Structure, LeavesElementsOfOtherPagesBehind) {
  CopiedDocument copy({{ThreePages(), {2}}});
  Tags tags(copy);
  EXPECT_THAT(tags.paths(),
              ElementsAre("Document", "Document/Sect", "Document/Sect/P", "Document/Sect/Figure"));
  EXPECT_EQ(tags.PathOf(0, 0), "Document/Sect/P");
  EXPECT_EQ(tags.PathOf(0, 1), "Document/Sect/Figure");
  EXPECT_FALSE(tags.Element("Document/Sect/P").Has("Pg"));  // that page is not here
  EXPECT_THAT(tags.Keys(), ElementsAre(2));
  EXPECT_FALSE(tags.root().Has("RoleMap"));  // none of its types is left
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("S").IsName(); }), 4);
}

TEST(Structure, FollowsTheOrderOfTheTreeWhateverTheOrderOfPages) {
  CopiedDocument copy({{ThreePages(), {2, 0}}});
  Tags tags(copy);
  EXPECT_THAT(tags.paths(),
              ElementsAre("Document", "Document/Sect", "Document/Sect/Para", "Document/Sect/P",
                          "Document/Sect", "Document/Sect/P", "Document/Sect/Figure"));
  EXPECT_EQ(tags.PathOf(0, 1), "Document/Sect/Figure");
  EXPECT_EQ(tags.PathOf(1, 1), "Document/Sect/P");
}

TEST(Structure, JoinsSourcesUnderOneDocument) {
  CopiedDocument copy({{ThreePages(), {0}}, {ThreePages(), {2, 1}}});
  Tags tags(copy);
  EXPECT_EQ(copy.Follow(tags.root().Get("K")).Get("S").Text(), "Document");
  EXPECT_EQ(tags.PathOf(0, 0), "Document/Document/Sect/Para");
  EXPECT_EQ(tags.PathOf(1, 1), "Document/Document/Sect/Figure");
  EXPECT_EQ(tags.PathOf(2, 0), "Document/Document/Sect/P");
  EXPECT_EQ(tags.count(), 1U + 4U + 4U);
  EXPECT_THAT(tags.Keys(), ElementsAre(0, 4, 5));
  EXPECT_EQ(tags.root().Get("ParentTreeNextKey").IntegerOr(0), 6);
}

TEST(Structure, LeavesAPageThatIsCopiedAgainUntagged) {
  CopiedDocument copy({{ThreePages(), {1, 1}}});
  Tags tags(copy);
  EXPECT_EQ(tags.PathOf(0, 0), "Document/Sect/P");
  EXPECT_FALSE(copy.Page(1).Has("StructParents"));
  EXPECT_FALSE(copy.Catalog().Has("MarkInfo"));  // not all of it is tagged
}

TEST(Structure, CountsAsTaggedOnlyWhenAllSourcesAre) {
  const std::string untagged = RawPdf().Pages(1, "/StructParents 0").Table();
  CopiedDocument copy({{untagged, {0}}, {ThreePages(), {0, 1}}});
  Tags tags(copy);
  EXPECT_FALSE(copy.Catalog().Has("MarkInfo"));
  EXPECT_FALSE(copy.Page(0).Has("StructParents"));
  EXPECT_EQ(tags.PathOf(1, 0), "Document/Sect/Para");
  CopiedDocument none({{untagged, {0}}});
  EXPECT_FALSE(none.Catalog().Has("StructTreeRoot"));
}

TEST(Structure, SaysOfAWholeDocumentWhatItSaidOfItself) {
  RawPdf pdf;
  pdf.Pages(2).Object(1, "<</Type/Catalog/Pages 2 0 R/MarkInfo<</Marked false/Own 1>>>>");
  const std::string bytes = pdf.Table();
  EXPECT_EQ(CopiedDocument::Text(CopiedDocument({{bytes, {1, 0}}}).Catalog().Get("MarkInfo")),
            "<</Marked false/Own 1>>");
  EXPECT_FALSE(CopiedDocument({{bytes, {1}}}).Catalog().Has("MarkInfo"));
  EXPECT_FALSE(CopiedDocument({{bytes, {0, 1}}, {bytes, {0, 1}}}).Catalog().Has("MarkInfo"));
}

TEST(Structure, SaysOfSeveralDocumentsWhatHoldsOfOneOfThem) {
  const auto marked = [](const std::string& marks) {
    RawPdf pdf;
    pdf.Pages(1).Object(1, "<</Type/Catalog/Pages 2 0 R/MarkInfo<<" + marks + ">>>>");
    return pdf.Table();
  };
  const auto joined = [&](const std::string& first, const std::string& second) {
    return CopiedDocument::Text(
        CopiedDocument({{marked(first), {0}}, {marked(second), {0}}}).Catalog().Get("MarkInfo"));
  };
  EXPECT_EQ(joined("/UserProperties true", "/Marked false"), "<</UserProperties true>>");
  EXPECT_EQ(joined("/Marked false", "/Suspects true"), "<</Suspects true>>");
  EXPECT_EQ(joined("/Suspects true", "/UserProperties true"),
            "<</UserProperties true/Suspects true>>");
  EXPECT_EQ(joined("/Suspects false", "/UserProperties false"), "null");
}

TEST(Structure, RenamesIdsInASingleDictionaryOfAttributes) {
  const std::string bytes =
      TaggedPdf(1, "/K 21 0 R/ParentTree<</Nums[0[22 0 R 23 0 R]]>>")
          .Element(21, 20, "TR", "/K[22 0 R 23 0 R]")
          .Element(22, 21, "TH", "/Pg 3 0 R/K 0/ID(head)")
          .Element(23, 21, "TD", "/Pg 3 0 R/K 1/A<</O/Table/Headers[(head)]/ColSpan 2>>")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}, {bytes, {0}}});
  Tags tags(copy);
  const Object rows = copy.Follow(tags.root().Get("K")).Get("K");
  const auto cell_of = [&](std::size_t row) {
    const Object cell = copy.Follow(copy.Follow(rows.Items()[row]).Get("K").Items()[1]);
    return CopiedDocument::Text(copy.Follow(cell.Get("A")));
  };
  EXPECT_EQ(cell_of(0), "<</O/Table/Headers[(head)]/ColSpan 2>>");
  EXPECT_EQ(cell_of(1), "<</O/Table/Headers[(head-2)]/ColSpan 2>>");
}

TEST(Structure, LeadsAnnotationsToTheirElements) {
  const std::string bytes =
      TaggedPdf(2, "/K 21 0 R/ParentTree<</Nums[0[22 0 R]1[23 0 R]2 22 0 R 3 23 0 R]>>")
          .Page(0, "/Annots[40 0 R]")
          .Page(1, "/Annots[41 0 R 42 0 R]")
          .Element(21, 20, "Document", "/K[22 0 R 23 0 R 24 0 R]")
          .Element(22, 21, "Link", "/Pg 3 0 R/K[0<</Type/OBJR/Obj 40 0 R>>]")
          .Element(23, 21, "Link", "/Pg 4 0 R/K[0<</Type/OBJR/Obj 41 0 R/Pg 4 0 R>>]")
          .Element(24, 21, "Annot", "/K<</Type/OBJR/Obj 42 0 R>>")
          .Object(40, "<</Type/Annot/Subtype/Link/Rect[0 0 1 1]/StructParent 2/Dest[4 0 R/Fit]>>")
          .Object(41, "<</Type/Annot/Subtype/Text/Rect[0 0 1 1]/StructParent 3>>")
          .Object(42, "<</Type/Annot/Subtype/Text/Rect[0 0 1 1]/StructParent 3>>")
          .Bytes();
  CopiedDocument whole({{bytes, {0, 1}}, {bytes, {0, 1}}});
  Tags tags(whole);
  for (const std::size_t page : {0, 2}) {
    const auto first = whole.Page(page).Get("Annots").Items();
    const auto second = whole.Page(page + 1).Get("Annots").Items();
    EXPECT_EQ(tags.PathOfObject(first[0]), "Document/Document/Link");
    EXPECT_EQ(tags.PathOfObject(second[0]), "Document/Document/Link");
    EXPECT_EQ(tags.PathOfObject(second[1]), "Document/Document/Annot");  // its key was not its own
  }
  // The link leads nowhere and is left out, and with it its place in the tree.
  CopiedDocument part({{bytes, {0}}});
  Tags part_tags(part);
  EXPECT_THAT(part_tags.paths(), ElementsAre("Document", "Document/Link"));
  EXPECT_EQ(CopiedDocument::Text(part_tags.Element("Document/Link").Get("K")), "0");
  EXPECT_THAT(part_tags.Keys(), ElementsAre(0));
}

TEST(Structure, LeadsContentOfFormsToItsElements) {
  const std::string bytes =
      TaggedPdf(3, "/K 21 0 R/ParentTree<</Nums[0[22 0 R]5[23 0 R 24 0 R]6 25 0 R]>>")
          .Page(0, "/Contents 42 0 R/Resources<</XObject<</F 40 0 R/I 41 0 R>>>>")
          .Page(1, "/Contents 43 0 R/Resources<</XObject<</F 40 0 R>>>>")
          .Element(21, 20, "Document", "/K[22 0 R 23 0 R 24 0 R 25 0 R]")
          .Element(22, 21, "P", "/Pg 3 0 R/K 0")
          .Element(23, 21, "H1", "/K<</Type/MCR/Pg 3 0 R/Stm 40 0 R/MCID 0>>")
          .Element(24, 21, "H2", "/K<</Type/MCR/Pg 3 0 R/Stm 40 0 R/MCID 1>>")
          .Element(25, 21, "Figure", "/Pg 3 0 R/K<</Type/OBJR/Obj 41 0 R>>")
          .Stream(40, "/Type/XObject/Subtype/Form/BBox[0 0 1 1]/StructParents 5", "q Q")
          .Stream(41, "/Type/XObject/Subtype/Image/Width 1/Height 1/StructParent 6", "x")
          .Stream(42, "", "/F Do/I Do")
          .Stream(43, "", "/F Do")
          .Bytes();
  const auto form_of = [](CopiedDocument& copy, std::size_t page) {
    return copy.Follow(copy.Page(page).Get("Resources")).Get("XObject");
  };
  CopiedDocument both({{bytes, {0}}, {bytes, {0, 1, 2}}});
  Tags tags(both);
  for (const std::size_t page : {0, 1}) {
    const Object objects = both.Follow(form_of(both, page));
    EXPECT_EQ(tags.PathIn(objects.Get("F").AsReference().number, 1), "Document/Document/H2");
    EXPECT_EQ(tags.PathOfObject(objects.Get("I")), "Document/Document/Figure");
  }
  EXPECT_THAT(tags.Keys(), ElementsAre(0, 5, 6, 7, 12, 13));
  // The page that the tree names for the form's content is not copied, but another that shows it.
  CopiedDocument other({{bytes, {1}}});
  Tags other_tags(other);
  EXPECT_THAT(other_tags.paths(), ElementsAre("Document", "Document/H1", "Document/H2"));
  EXPECT_EQ(other_tags.Element("Document/H1").Get("K").Get("Pg").AsReference().number,
            other.PageNumber(0));
  // A page that neither of them is on.
  CopiedDocument none({{bytes, {2}}});
  EXPECT_THAT(Tags(none).paths(), IsEmpty());
}

TEST(Structure, GivesTypesWithAnotherMeaningANewName) {
  const auto with_roles = [](const std::string& roles, const std::string& type) {
    return TaggedPdf(1, "/K 21 0 R/ParentTree<</Nums[0[21 0 R]]>>/RoleMap<<" + roles + ">>")
        .Element(21, 20, type, "/Pg 3 0 R/K 0")
        .Bytes();
  };
  CopiedDocument copy({{with_roles("/A/P/B/A", "B"), {0}},
                       {with_roles("/A/P", "A"), {0}},
                       {with_roles("/A/H1/B/A", "B"), {0}},
                       {with_roles("/A/H1", "A"), {0}},
                       {with_roles("/P/H2", "P"), {0}},
                       {with_roles("/A/B/B/A", "A"), {0}}});
  Tags tags(copy);
  EXPECT_EQ(tags.PathOf(0, 0), "Document/B");
  EXPECT_EQ(tags.PathOf(1, 0), "Document/A");
  EXPECT_EQ(tags.PathOf(2, 0), "Document/B_2");
  EXPECT_EQ(tags.PathOf(3, 0), "Document/A_2");
  EXPECT_EQ(tags.PathOf(4, 0), "Document/P_2");
  const Object roles = tags.root().Get("RoleMap");
  EXPECT_EQ(roles.Get("A").Text(), "P");
  EXPECT_EQ(roles.Get("B").Text(), "A");
  EXPECT_EQ(roles.Get("A_2").Text(), "H1");
  EXPECT_EQ(roles.Get("B_2").Text(), "A_2");
  EXPECT_EQ(roles.Get("P_2").Text(), "H2");
  EXPECT_FALSE(roles.Has("P"));
}

TEST(Structure, GivesClassesAndIdsOfTwoSourcesNamesOfTheirOwn) {
  const auto table = [](const std::string& alignment) {
    return TaggedPdf(1,
                     "/K 21 0 R/ParentTree<</Nums[0[22 0 R 23 0 R]]>>"
                     "/ClassMap<</C<</O/Layout/TextAlign/" +
                         alignment + ">>/Same<</O/Layout/SpaceAfter 3>>>>")
        .Element(21, 20, "TR", "/K[22 0 R 23 0 R]/C[/C 0/Same]")
        .Element(22, 21, "TH", "/Pg 3 0 R/K 0/ID(head)/C/C")
        .Element(23, 21, "TD", "/Pg 3 0 R/K 1/A[40 0 R 0<</O/Layout>>]/ID<68656164>")
        .Object(40, "<</O/Table/Headers[(head)(other)]/ColSpan 2>>")
        .Bytes();
  };
  CopiedDocument copy({{table("Start"), {0}}, {table("End"), {0}}});
  Tags tags(copy);
  EXPECT_THAT(tags.Ids(), ElementsAre(std::make_pair("head", "Document/TR/TH"),
                                      std::make_pair("head-2", "Document/TR/TH")));
  const Object second = copy.Follow(copy.Follow(tags.root().Get("K")).Get("K").Items()[1]);
  EXPECT_EQ(CopiedDocument::Text(second.Get("C")), "[/C_2 0/Same]");
  const Object cell = copy.Follow(second.Get("K").Items()[1]);
  EXPECT_EQ(CopiedDocument::Text(copy.Follow(cell.Get("A").Items()[0]).Get("Headers")),
            "[(head-2)(other)]");
  EXPECT_EQ(CopiedDocument::Text(tags.root().Get("ClassMap")),
            "<</C<</O/Layout/TextAlign/Start>>/C_2<</O/Layout/TextAlign/End>>"
            "/Same<</O/Layout/SpaceAfter 3>>>>");
}

TEST(Structure, RefersToKeptElementsOnly) {
  const std::string bytes =
      TaggedPdf(2, "/K[21 0 R 22 0 R 23 0 R]/ParentTree<</Nums[0[21 0 R 22 0 R]1[23 0 R]]>>")
          .Element(21, 20, "P", "/Pg 3 0 R/K 0/Ref[22 0 R 23 0 R]")
          .Element(22, 20, "Note", "/Pg 3 0 R/K 1/Ref[23 0 R]/Other 23 0 R")
          .Element(23, 20, "Note", "/Pg 4 0 R/K 0/ActualText(gone)")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}});
  Tags tags(copy);
  EXPECT_EQ(tags.Element("P").Get("Ref").Items().size(), 1U);
  EXPECT_FALSE(tags.Element("Note").Has("Ref"));
  EXPECT_FALSE(tags.Element("Note").Has("Other"));
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("ActualText").Text() == "gone"; }), 0);
}

TEST(Structure, KeepsEmptyElementsWithWhatSurroundsThem) {
  const std::string bytes =
      TaggedPdf(2, "/K 21 0 R/ParentTree<</Nums[0[25 0 R]1[29 0 R 32 0 R]]>>/RoleMap<</Row/TR>>")
          .Element(21, 20, "Table", "/K[22 0 R 23 0 R]")
          .Element(22, 21, "Row", "/K[24 0 R 25 0 R 26 0 R 29 0 R]")  // goes on on the second page
          .Element(23, 21, "TR", "/K[30 0 R 31 0 R]")
          .Element(24, 22, "TD", "")
          .Element(25, 22, "TD", "/Pg 3 0 R/K 0")
          .Element(26, 22, "TD", "/K 27 0 R")
          .Element(27, 26, "P", "")
          .Element(29, 22, "TD", "/Pg 4 0 R/K 0")
          .Element(30, 23, "TD", "")
          .Element(31, 23, "TD", "/K 32 0 R")
          .Element(32, 31, "P", "/Pg 4 0 R/K 1")
          .Bytes();
  CopiedDocument first({{bytes, {0}}});
  EXPECT_THAT(Tags(first).paths(), ElementsAre("Table", "Table/Row", "Table/Row/TD", "Table/Row/TD",
                                               "Table/Row/TD", "Table/Row/TD/P"));
  CopiedDocument second({{bytes, {1}}});
  EXPECT_THAT(
      Tags(second).paths(),
      ElementsAre("Table", "Table/Row", "Table/Row/TD", "Table/Row/TD", "Table/Row/TD/P",
                  "Table/Row/TD", "Table/TR", "Table/TR/TD", "Table/TR/TD", "Table/TR/TD/P"));
}

TEST(Structure, SharesNamespacesThatAreOnlyNames) {
  const std::string bytes =
      TaggedPdf(1, "/K 21 0 R/ParentTree<</Nums[0[21 0 R]]>>/Namespaces[40 0 R 41 0 R]")
          .Element(21, 20, "Document", "/Pg 3 0 R/K 0/NS 40 0 R")
          .Object(40, "<</Type/Namespace/NS(http://iso.org/pdf2/ssn)>>")
          .Object(41, "<</Type/Namespace/NS(urn:own)/RoleMapNS<</X[/P 40 0 R]>>>>")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}, {bytes, {0}}});
  Tags tags(copy);
  const Object namespaces = tags.root().Get("Namespaces");
  ASSERT_EQ(namespaces.Items().size(), 3U);
  EXPECT_EQ(tags.Element("Document").Get("NS").AsReference(), namespaces.Items()[0].AsReference());
  EXPECT_EQ(tags.Element("Document/Document").Get("NS").AsReference(),
            namespaces.Items()[0].AsReference());
  for (const std::size_t i : {1, 2}) {
    const Object own = copy.Follow(namespaces.Items()[i]).Get("RoleMapNS").Get("X");
    EXPECT_EQ(own.Items()[1].AsReference(), namespaces.Items()[0].AsReference());
  }
}

TEST(Structure, TagsContentWithoutAParentTree) {
  for (const char* tree : {"", "/ParentTree 99 0 R", "/ParentTree<</Nums[(x)0 0 0 1 null]>>",
                           "/ParentTree 30 0 R", "/ParentTree[1]"}) {
    const std::string bytes = TaggedPdf(2, std::string("/K[21 0 R 22 0 R 23 0 R]") + tree)
                                  .Page(1, "/Annots[40 0 R]")
                                  .Element(21, 20, "P", "/Pg 3 0 R/K[0 1]")
                                  .Element(22, 20, "H", "/Pg 4 0 R/K[0 7]")
                                  .Element(23, 20, "Annot", "/K<</Type/OBJR/Obj 40 0 R>>")
                                  .Object(30, "<</Kids[30 0 R 31 0 R]>>")
                                  .Object(31, "<</Nums[0[22 0 R]0[22 0 R]]/Kids[30 0 R]>>")
                                  .Object(40, "<</Type/Annot/Subtype/Text/Rect[0 0 1 1]>>")
                                  .Bytes();
    CopiedDocument copy({{bytes, {0, 1}}});
    Tags tags(copy);
    EXPECT_EQ(tags.PathOf(0, 1), "P") << tree;
    EXPECT_EQ(tags.PathOf(1, 7), "H") << tree;
    EXPECT_EQ(tags.PathOfObject(copy.Page(1).Get("Annots").Items()[0]), "Annot") << tree;
  }
}

TEST(Structure, GivesPagesWithTheSameKeyTheirOwn) {
  const std::string bytes = TaggedPdf(2, "/K[21 0 R 22 0 R]/ParentTree<</Nums[1[21 0 R 22 0 R]]>>")
                                .Object(3, "<</Type/Page/Parent 2 0 R/StructParents 1>>")
                                .Element(21, 20, "P", "/Pg 3 0 R/K 0")
                                .Element(22, 20, "H", "/Pg 4 0 R/K 1")
                                .Bytes();
  CopiedDocument copy({{bytes, {0, 1}}});
  Tags tags(copy);
  EXPECT_EQ(tags.PathOf(0, 0), "P");
  EXPECT_EQ(tags.PathOf(1, 1), "H");
  EXPECT_THAT(tags.Keys(), ElementsAre(1, 2));
}

// A page with an element whose type a namespace explains, and the role map for readers without.
std::string WithNamespace(const std::string& role) {
  return TaggedPdf(2, "/K 21 0 R/ParentTree<</Nums[0[22 0 R]]>>/Namespaces[40 0 R]/RoleMap<</Own/" +
                          role + "/Inner/Span/Unused/P>>")
      .Element(21, 20, "Document", "/K 22 0 R")
      .Element(22, 21, "Own", "/Pg 3 0 R/K 0/NS 40 0 R")
      .Object(40, "<</Type/Namespace/NS(urn:own)/RoleMapNS<</Own[/P 41 0 R]>>>>")
      .Object(41, "<</Type/Namespace/NS(http://iso.org/pdf2/ssn)>>")
      .Bytes();
}

TEST(Structure, KeepsRolesOfTypesThatANamespaceExplains) {
  CopiedDocument piece({{WithNamespace("Inner"), {0}}});
  Tags tags(piece);
  EXPECT_THAT(tags.paths(), ElementsAre("Document", "Document/Own"));
  EXPECT_EQ(piece.Text(tags.root().Get("RoleMap")), "<</Inner/Span/Own/Inner>>");
}

TEST(Structure, ReportsARoleThatAnotherDocumentHasTaken) {
  CopiedDocument copy({{WithNamespace("P"), {0}}, {WithNamespace("P"), {0}}});
  EXPECT_EQ(copy.Text(Tags(copy).root().Get("RoleMap")), "<</Own/P>>");
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kStructureElement, TPdfCopyOutcome::kDropped), 0U);
  CopiedDocument clash({{WithNamespace("P"), {0}}, {WithNamespace("H1"), {0}}});
  Tags tags(clash);
  EXPECT_THAT(tags.paths(), ElementsAre("Document", "Document/Document", "Document/Document/Own",
                                        "Document/Document", "Document/Document/Own"));
  EXPECT_EQ(clash.Text(tags.root().Get("RoleMap")), "<</Own/P>>");
  EXPECT_EQ(clash.Reported(TPdfCopiedKind::kStructureElement, TPdfCopyOutcome::kDropped), 1U);
}

TEST(Structure, ReadsElementsInEveryForm) {
  const std::string bytes =
      TaggedPdf(1, "/K 40 0 R/ParentTree<</Nums[0[]]>>")
          .Object(40, "[21 0 R null 41 0 R 7(x)]")
          .Element(21, 20, "P", "/Pg 3 0 R/K 42 0 R")
          .Object(41, "<</S/Sect/P 20 0 R/Pg 3 0 R/K[<</S/Div/K[43 0 R<</S/Span/K 4>>]>>5]>>")
          .Object(42, "[0 44 0 R]")
          .Object(43, "<</Type/MCR/MCID 3>>")
          .Object(44, "1")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}});
  Tags tags(copy);
  EXPECT_THAT(tags.paths(), ElementsAre("P", "Sect", "Sect/Div", "Sect/Div/Span"));
  EXPECT_EQ(tags.PathOf(0, 0), "P");
  EXPECT_EQ(tags.PathOf(0, 1), "P");
  EXPECT_EQ(tags.PathOf(0, 2), "");
  EXPECT_EQ(tags.PathOf(0, 3), "Sect/Div");
  EXPECT_EQ(tags.PathOf(0, 4), "Sect/Div/Span");
  EXPECT_EQ(tags.PathOf(0, 5), "Sect");
}

TEST(Structure, LeavesOutWhatIsBroken) {
  const std::string bytes =
      TaggedPdf(2,
                "/K[21 0 R 21 0 R 22 0 R 20 0 R 3 0 R 1 0 R 99 0 R 2 5 0 R]/RoleMap 21 0 R"
                "/ClassMap[1]/Namespaces 7/ParentTree 20 0 R/IDTree 20 0 R/AF 20 0 R")
          .Page(1, "/Annots[21 0 R 3 0 R null]")
          .Element(21, 99, "P", "/Pg 3 0 R/K[0 0 -1 21 0 R 23 0 R[24 0 R]2000000000 1.5(x)]/ID 5")
          .Element(22, 22, "Sect",
                   "/Pg 1 0 R/K[23 0 R 0<</Type/MCR/Pg 4 0 R/MCID 0>>"
                   "<</Type/MCR/Pg 20 0 R/MCID(x)>><</Type/OBJR/Obj 4 0 R>>]"
                   "/C[1(x)<<>>]/A 22 0 R/Ref 3/NS 9")
          .Element(23, 21, "Div", "/K 21 0 R/S 5/ID(a)")
          .Element(24, 21, "Div", "/Pg 3 0 R/K 1")
          .Bytes();
  CopiedDocument copy({{bytes, {0, 1}}, {bytes, {1}}});
  EXPECT_EQ(copy.PageCount(), 3U);
  Tags tags(copy);
  EXPECT_EQ(tags.PathOf(0, 0), "Document/P");
  EXPECT_EQ(tags.PathOf(1, 0), "Document/Sect");
  EXPECT_EQ(tags.PathOf(2, 0), "Document/Sect");
  for (const char* root : {"null", "5", "[1 2]", "(x)", "20 0 R", "1 0 R", "2 0 R", "3 0 R"}) {
    const std::string odd = TaggedPdf(1, "").Object(20, root).Object(21, "<</S/P/K 0>>").Bytes();
    CopiedDocument odd_copy({{odd, {0}}});
    EXPECT_EQ(odd_copy.PageCount(), 1U) << root;
  }
}

TEST(Structure, ReadsDeepTreesWithoutRecursion) {
  constexpr int kDepth = 50'000;
  TaggedPdf pdf(1, "/K 100 0 R");
  for (int i = 0; i < kDepth; ++i) {
    pdf.Element(100 + i, 99 + i, "Div", "/K " + std::to_string(101 + i) + " 0 R");
  }
  pdf.Element(100 + kDepth, 99 + kDepth, "P", "/Pg 3 0 R/K 0");
  CopiedDocument copy({{pdf.Bytes(), {0}}});
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("S").IsName("Div"); }), kDepth);
}

TEST(Structure, KeepsManyKidsInOrder) {
  constexpr int kPages = 300;
  std::string kids;
  TaggedPdf pdf(kPages, "/K 990 0 R/ParentTree<<>>");
  for (int i = 0; i < kPages; ++i) {
    pdf.Page(i, "");
  }
  // Objects 3 to 302 are pages, and one of them is the tree's root: it moves.
  std::string bytes;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R/StructTreeRoot 989 0 R>>")
      .Object(989, "<</Type/StructTreeRoot/K 990 0 R>>")
      .Page(17, "");
  for (int i = 0; i < kPages; ++i) {
    kids += std::to_string(1000 + i) + " 0 R ";
    pdf.Element(1000 + i, 990, "P",
                "/Pg " + std::to_string(3 + i) + " 0 R/K 0/ActualText(" + std::to_string(i) + ")");
  }
  pdf.Element(990, 989, "Document", "/K[" + kids + "]");
  CopiedDocument copy({{pdf.Bytes(), {299, 17, 5}}});
  Tags tags(copy);
  const auto copied = tags.Element("Document").Get("K").Items();
  ASSERT_EQ(copied.size(), 3U);
  EXPECT_EQ(copy.Follow(copied[0]).Get("ActualText").Text(), "5");
  EXPECT_EQ(copy.Follow(copied[1]).Get("ActualText").Text(), "17");
  EXPECT_EQ(copy.Follow(copied[2]).Get("ActualText").Text(), "299");
}

TEST(Structure, WritesTheSameBytesAgain) {
  const std::vector<PagesOf> parts = {{ThreePages(), {2, 0}}, {ThreePages(), {0, 1, 2}}};
  EXPECT_EQ(CopyAll(parts), CopyAll(parts));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
