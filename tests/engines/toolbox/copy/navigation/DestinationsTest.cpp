#include <map>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "pdf/tree/KeyedTree.h"
#include "support/RawPdf.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TestPdf;

constexpr const char* kLink = "/Type/Annot/Subtype/Link/Rect[0 0 9 9]";

std::string Link(const std::string& entries) {
  return kLink + entries;
}

// Names of a copied document and where they lead.
std::map<std::string, std::string> NamesOf(CopiedDocument& copy) {
  std::map<std::string, std::string> names;
  const Object tree = copy.Follow(copy.Catalog().Get("Names")).Get("Dests");
  pdf::ForEachInTree(copy.document(), tree, "Names", [&](const Object& key, const Object& value) {
    EXPECT_TRUE(names.emplace(key.Text(), copy.Place(value)).second) << "twice: " << key.Text();
  });
  return names;
}

using Names = std::map<std::string, std::string>;

TEST(Destinations, FollowPagesInAnyOrder) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .Annotation(Link("/Dest[{{page 3}}/XYZ 1 2.5 null]"))
                                .Annotation(Link("/A<</S/GoTo/D[{{page 2}}/FitH 7]>>"))
                                .Annotation(Link("/Dest[1/Fit]"))
                                .Page("b")
                                .Page("c")
                                .Bytes();
  CopiedDocument copy({{bytes, {2, 1, 0}}});
  const auto links = copy.Annotations(2);
  ASSERT_EQ(links.size(), 3U);
  EXPECT_EQ(copy.Place(links[0].Get("Dest")), "0/XYZ 1 2.5 null");
  EXPECT_EQ(copy.Place(links[1].Get("A").Get("D")), "1/FitH 7");
  EXPECT_EQ(copy.Place(links[2].Get("Dest")), "1/Fit") << "a page by its index";
}

TEST(Destinations, BringNamesThatLeadToCopiedPages) {
  const std::string bytes =
      TestPdf()
          .Page("a")
          .Annotation(Link("/Dest(one)"))
          .Annotation(Link("/Dest/two"))
          .Annotation(Link("/A<</S/GoTo/D(three)>>"))
          .Page("b")
          .Page("c")
          .Object(
              "dests",
              "<</Names[(one)[{{page 1}}/Fit](three)[{{page 3}}/Fit](unused)<</D {{value}}>>]>>")
          .Object("value", "[{{page 2}}/XYZ 0 0 0]")
          .CatalogEntry("/Names<</Dests {{dests}}>>/Dests<</two<</D[{{page 2}}/FitB]>>>>")
          .Bytes();
  CopiedDocument copy({{bytes, {1, 0}}});
  EXPECT_EQ(NamesOf(copy), (Names{{"one", "1/Fit"}, {"two", "0/FitB"}, {"unused", "0/XYZ 0 0 0"}}));
  const auto links = copy.Annotations(1);
  ASSERT_EQ(links.size(), 2U) << "the third leads to a page that is not there";
  EXPECT_EQ(links[0].Get("Dest").Text(), "one");
  EXPECT_TRUE(links[1].Get("Dest").IsString()) << "names of the old dictionary become strings";
  EXPECT_EQ(links[1].Get("Dest").Text(), "two");
}

std::string Chapter(const std::string& place) {
  return TestPdf()
      .Page("a")
      .Annotation(Link("/Dest(chapter)"))
      .Annotation(Link("/A<</S/GoTo/D(chapter)/Next<</S/GoTo/D/chapter>>>>"))
      .CatalogEntry("/Names<</Dests<</Names[(chapter)[{{page 1}}/" + place + "]]>>>>")
      .Bytes();
}

// Two pages with a name each; a link leads from the first to the second.
std::string Part() {
  return TestPdf()
      .Page("a")
      .Annotation(Link("/Dest(b)"))
      .Page("b")
      .CatalogEntry("/Dests<</a[{{page 1}}/Fit]/b[{{page 2}}/Fit]>>")
      .Bytes();
}

TEST(Destinations, RenamesNamesThatClash) {
  CopiedDocument copy({{Chapter("Fit"), {0}}, {Chapter("FitB"), {0}}, {Chapter("Fit"), {0}}});
  EXPECT_EQ(NamesOf(copy),
            (Names{{"chapter", "0/Fit"}, {"chapter_2", "1/FitB"}, {"chapter_3", "2/Fit"}}));
  EXPECT_EQ(copy.Annotations(0)[0].Get("Dest").Text(), "chapter");
  EXPECT_EQ(copy.Annotations(1)[0].Get("Dest").Text(), "chapter_2");
  const Object action = copy.Annotations(2)[1].Get("A");
  EXPECT_EQ(action.Get("D").Text(), "chapter_3");
  EXPECT_EQ(action.Get("Next").Get("D").Text(), "chapter_3");
}

TEST(Destinations, RenamesToNamesThatNobodyHas) {
  const auto file = [](const std::string& names) {
    return TestPdf().Page("a").CatalogEntry("/Names<</Dests<</Names[" + names + "]>>>>").Bytes();
  };
  CopiedDocument copy({{file("(a)[{{page 1}}/Fit](a_2)[{{page 1}}/FitB]"), {0}},
                       {file("(a)[{{page 1}}/Fit]<FEFF0061>[{{page 1}}/Fit]"), {0}},
                       {file("<FEFF0061>[{{page 1}}/Fit]"), {0}}});
  const std::string wide("\xFE\xFF\0a", 4);
  EXPECT_EQ(NamesOf(copy), (Names{{"a", "0/Fit"},
                                  {"a_2", "0/FitB"},
                                  {"a_3", "1/Fit"},
                                  {wide, "1/Fit"},
                                  {wide + std::string("\0_\0002", 4), "2/Fit"}}));
}

TEST(Destinations, KeepsBothMeaningsOfANameInOneDocument) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .Annotation(Link("/Dest(x)"))
                                .Annotation(Link("/Dest/x"))
                                .Page("b")
                                .CatalogEntry(
                                    "/Names<</Dests<</Names[(x)[{{page 1}}/Fit]]>>>>"
                                    "/Dests<</x[{{page 2}}/Fit]>>")
                                .Bytes();
  CopiedDocument copy({{bytes, {0, 1}}});
  const Names names = NamesOf(copy);
  const auto links = copy.Annotations(0);
  EXPECT_EQ(names.at(std::string(links[0].Get("Dest").Text())), "0/Fit");
  EXPECT_EQ(names.at(std::string(links[1].Get("Dest").Text())), "1/Fit");
}

TEST(Destinations, DoNotClashWithinOneCopy) {
  CopiedDocument copy({{Chapter("Fit"), {0, 0}}});
  EXPECT_EQ(NamesOf(copy), (Names{{"chapter", "0/Fit"}}));
  EXPECT_EQ(copy.Annotations(1)[0].Get("Dest").Text(), "chapter");
}

TEST(Destinations, AreReported) {
  CopiedDocument copy({{Chapter("Fit"), {0}}, {Chapter("FitB"), {0}}, {Part(), {0}}});
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kNamedDestination, TPdfCopyOutcome::kKept), 2U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kNamedDestination, TPdfCopyOutcome::kRenamed), 1U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kNamedDestination, TPdfCopyOutcome::kDropped), 1U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kLink, TPdfCopyOutcome::kKept), 4U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kLink, TPdfCopyOutcome::kDropped), 1U);
}

TEST(Destinations, WritesManyNamesAsABalancedTree) {
  std::string names;
  for (int i = 9999; i >= 0; --i) {  // in the wrong order
    names += "(n" + std::to_string(i) + ")[3 0 R/XYZ 0 " + std::to_string(i) + " 0]";
  }
  RawPdf file;
  file.Pages(1)
      .Object(1, "<</Type/Catalog/Pages 2 0 R/Names<</Dests 9 0 R>>>>")
      .Object(9, "<</Names[" + names + "]>>");
  CopiedDocument copy({{file.Table(), {0}}});
  const Names found = NamesOf(copy);
  EXPECT_EQ(found.size(), 10'000U);
  EXPECT_EQ(found.at("n1234"), "0/XYZ 0 1234 0");
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("Names").Items().size() > 128; }), 0);
}

TEST(Destinations, KeepsWhatIsLeftOfAnActionChain) {
  const std::string bytes =
      TestPdf()
          .Page("a")
          .Annotation(Link("/A<</S/GoTo/D[{{page 2}}/Fit]/Next[<</S/URI/URI(u)>>{{last}}]>>"))
          .Annotation(Link("/A {{loop}}"))
          .Annotation(Link("/A<</S/Thread/D 0>>"))
          .Annotation(Link("/A<</S/GoTo/SD[null/Fit]/D[{{page 1}}/Fit]>>"))
          .Annotation(Link("/A<</S/GoToR/D[1/Fit]/F(other.pdf)>>"))
          .Page("b")
          .Object("last", "<</S/Named/N/NextPage/Next<</S/GoTo/D[{{page 1}}/Fit]>>>>")
          .Object("loop", "<</S/URI/URI(v)/Next {{loop}}>>")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}});
  const auto links = copy.Annotations(0);
  ASSERT_EQ(links.size(), 4U);
  const Object first = copy.Follow(links[0].Get("A"));
  EXPECT_EQ(first.Get("URI").Text(), "u") << "the first action was dropped";
  const auto rest = first.Get("Next").Items();
  ASSERT_EQ(rest.size(), 2U);
  EXPECT_EQ(rest[0].Get("N").Text(), "NextPage");
  EXPECT_EQ(copy.Place(rest[1].Get("D")), "0/Fit");
  EXPECT_FALSE(copy.Follow(links[1].Get("A")).Has("Next")) << "loops are cut";
  EXPECT_FALSE(links[2].Get("A").Has("SD"));
  EXPECT_EQ(links[3].Get("A").Get("F").Text(), "other.pdf");
}

TEST(Destinations, SharesActionsThatAreShared) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .Annotation(Link("/A {{action}}"))
                                .Annotation(Link("/A {{action}}"))
                                .Object("action", "<</S/GoTo/D[{{page 1}}/Fit]>>")
                                .Bytes();
  CopiedDocument copy({{bytes, {0}}});
  const auto links = copy.Annotations(0);
  EXPECT_NE(links[0].Get("A").AsReference().number, 0U);
  EXPECT_EQ(links[0].Get("A").AsReference(), links[1].Get("A").AsReference());
}

TEST(Destinations, SurvivesNonsense) {
  RawPdf file;
  file.Object(1,
              "<</Type/Catalog/Pages 2 0 R/Names<</Dests 10 0 R>>/Dests<</a 1/b[]/c[9]"
              "/d[2 0 R/Fit]/e[1 0 R]/f<</D<</D[3 0 R]>>>>/g 77 0 R/h 12 0 R>>>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots[<</Subtype/Link/Dest(x)>>"
              "<</Subtype/Link/Dest[2 0 R/Fit]>><</Subtype/Link/Dest[-1/Fit]>>"
              "<</Subtype/Link/Dest[99999999999/Fit]>><</Subtype/Link/A[]>>"
              "<</Subtype/Link/A 3 0 R>><</Subtype/Link/Dest 3 0 R>>"
              "<</Subtype/Link/A<</S/GoTo>>>><</Subtype/Link/Dest(good)>>]>>")
      .Object(10, "<</Kids[10 0 R 11 0 R 10 0 R]/Names[(odd)]>>")
      .Object(11, "<</Names[7 (good)[3 0 R/Fit(s)[]3 0 R](good)[3 0 R/FitB](none)]/Kids 11 0 R>>")
      .Object(12, "12 0 R");
  CopiedDocument copy({{file.Table(), {0}}});
  EXPECT_EQ(NamesOf(copy), (Names{{"good", "0/Fit null null null"}}));
  EXPECT_EQ(copy.Annotations(0).size(), 1U);
}

TEST(Destinations, KeepABoundedNumberOfActionsAndEvents) {
  std::string next = "[";
  std::string events = "<<";
  for (int i = 0; i < 1000; ++i) {
    next += "<</S/URI/URI(next)>>";
    events += "/E" + std::to_string(i) + "<</S/JavaScript/JS(x)>>";
  }
  testing::RawPdf file;
  file.Pages(1, "/MediaBox[0 0 9 9]/Annots[10 0 R]")
      .Object(10, "<</Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(a)/Next 11 0 R>>/AA 12 0 R>>")
      .Object(11, next + "]")
      .Object(12, events + ">>");
  CopiedDocument copy({{file.Table()}});
  const pdf::Object link = copy.Annotations(0).at(0);
  EXPECT_EQ(copy.Get(link.Get("A"), "URI").Text(), "a");
  EXPECT_EQ(copy.Get(link.Get("A"), "Next").Items().size(), 99U);
  EXPECT_EQ(link.Get("AA").Entries().size(), 64U);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
