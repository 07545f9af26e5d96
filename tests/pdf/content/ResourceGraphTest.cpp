#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/ContentFixture.h"
#include "pdf/content/ResourceGraph.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::string NameOf(ResourceKind kind) {
  switch (kind) {
    case ResourceKind::kUnknown:
      return "unknown";
    case ResourceKind::kPage:
      return "page";
    case ResourceKind::kForm:
      return "form";
    case ResourceKind::kTilingPattern:
      return "tiling";
    case ResourceKind::kSoftMaskGroup:
      return "group";
    case ResourceKind::kGlyph:
      return "glyph";
    case ResourceKind::kAppearance:
      return "appearance";
    case ResourceKind::kType3Font:
      return "type3";
    case ResourceKind::kFont:
      return "font";
    case ResourceKind::kImage:
      return "image";
    case ResourceKind::kImageMask:
      return "mask";
    case ResourceKind::kAlternate:
      return "alternate";
    case ResourceKind::kShading:
      return "shading";
    case ResourceKind::kShadingPattern:
      return "shaded";
    case ResourceKind::kColorSpace:
      return "space";
    case ResourceKind::kGraphicsState:
      return "state";
    case ResourceKind::kProperties:
      return "properties";
  }
  return {};
}

class ResourceGraphTest : public ::testing::Test {
 protected:
  // "kind number" of what a page leads to, without the page itself.
  std::vector<std::string> Told(ResourceGraph& graph, std::size_t page_index = 0) {
    std::vector<std::string> told;
    graph.AddPage(file_.pages(), page_index);
    while (const ResourceNode* node = graph.Next()) {
      if (node->kind != ResourceKind::kPage) {
        told.push_back(NameOf(node->kind) + " " + std::to_string(node->number));
      }
    }
    return told;
  }

  std::vector<std::string> Graph(const std::string& page_entries) {
    file_.Page(page_entries);
    ResourceGraph graph(file_.Open());
    const std::vector<std::string> told = Told(graph);
    EXPECT_TRUE(graph.is_complete());
    return told;
  }

  ContentDocument file_;
};

TEST_F(ResourceGraphTest, TellsThePageFirst) {
  file_.Page("/Resources 5 0 R").Object(5, "<<>>");
  ResourceGraph graph(file_.Open());
  graph.AddPage(file_.pages(), 0);
  const ResourceNode* node = graph.Next();
  ASSERT_NE(node, nullptr);
  EXPECT_EQ(node->kind, ResourceKind::kPage);
  EXPECT_EQ(node->number, 3U);
  EXPECT_EQ(node->scope.owner, 5U);
  EXPECT_EQ(graph.Next(), nullptr);
  EXPECT_EQ(graph.Next(), nullptr);
}

TEST_F(ResourceGraphTest, WhatHasContent) {
  file_.Stream(5, kFormEntries, "")
      .Stream(6, "/PatternType 1/Resources<<>>", "")
      .Object(7, "<</SMask<</S/Alpha/G 8 0 R>>>>")
      .Stream(8, kFormEntries, "")
      .Object(9, "<</Subtype/Type3/CharProcs<</a 10 0 R/b 11 0 R>>>>")
      .Stream(10, "", "")
      .Stream(11, "", "")
      .Object(12, "<</Subtype/Stamp/AP<</N 13 0 R/D<</On 14 0 R>>>>>>")
      .Stream(13, kFormEntries, "")
      .Stream(14, kFormEntries, "");
  EXPECT_THAT(Graph("/Resources<</XObject<</F 5 0 R>>/Pattern<</P 6 0 R>>/ExtGState<</G 7 0 R>>"
                    "/Font<</T 9 0 R>>>>/Annots[12 0 R]"),
              ElementsAre("state 7", "group 8", "type3 9", "glyph 10", "glyph 11", "tiling 6",
                          "form 5", "appearance 13", "appearance 14"));
}

TEST_F(ResourceGraphTest, WhatContentUses) {
  file_.Stream(5, kFormEntries + "/Resources<</XObject<</I 6 0 R>>>>", "")
      .Stream(6, kImageEntries + "/SMask 7 0 R/Mask 8 0 R/Alternates[<</Image 9 0 R>>10 0 R]", "")
      .Stream(7, kImageEntries, "")
      .Stream(8, kImageEntries, "")
      .Stream(9, kImageEntries, "")
      .Object(10, "<</Image 11 0 R>>")
      .Stream(11, kImageEntries, "")
      .Object(12, "<</Subtype/Type1>>")
      .Object(13, "<</Font[12 0 R 9]>>")
      .Object(14, "<</PatternType 2/Shading 15 0 R/ExtGState<</SMask/None>>>>")
      .Object(15, "<</ShadingType 2/ColorSpace/DeviceRGB>>")
      .Object(16, "<</Type/OCG>>");
  EXPECT_THAT(Graph("/Resources<</XObject<</F 5 0 R>>/Pattern<</P 14 0 R>>/Shading<</S 15 0 R>>"
                    "/ExtGState<</G 13 0 R>>/Properties<</M 16 0 R>>>>"),
              ElementsAre("state 13", "font 12", "shaded 14", "shading 15", "state 0",
                          "properties 16", "shading 15", "form 5", "image 6", "mask 7", "mask 8",
                          "alternate 9", "alternate 11"));
}

TEST_F(ResourceGraphTest, ColorSpacesWithinEachOther) {
  file_.Object(5, "[/ICCBased 6 0 R]")
      .Stream(6, "/N 3/Alternate 7 0 R", "")
      .Object(7, "[/CalRGB<<>>]")
      .Object(8, "[/Indexed 5 0 R 0(abc)]")
      .Object(9, "[/Separation/Gold 10 0 R 11 0 R]")
      .Object(10, "[/Lab<<>>]")
      .Object(12,
              "[/DeviceN[/A/B]/DeviceCMYK 11 0 R<</Colorants<</A 9 0 R>>"
              "/Process<</ColorSpace 13 0 R>>>>]")
      .Object(13, "[/CalGray<<>>]")
      .Object(14, "[/Pattern 15 0 R]")
      .Object(15, "[/CalGray<<>>]");
  EXPECT_THAT(Graph("/Group<</CS 8 0 R>>/Resources<</ColorSpace<</D/DeviceRGB/N 12 0 R/P 14 0 R"
                    "/I[/Indexed/DeviceRGB 0(abc)]/Odd[]>>>>"),
              ElementsAre("space 12", "space 9", "space 10", "space 13", "space 14", "space 15",
                          "space 0", "space 0", "space 8", "space 5", "space 7"));
}

TEST_F(ResourceGraphTest, EachObjectOnce) {
  file_.Stream(5, kFormEntries + "/Resources<</XObject<</F 5 0 R/G 6 0 R/H 6 0 R>>>>", "")
      .Stream(6, kFormEntries + "/Resources<</XObject<</F 5 0 R>>>>", "")
      .Object(7, "6 0 R");
  EXPECT_THAT(Graph("/Resources<</XObject<</A 5 0 R/B 5 0 R/C 7 0 R>>>>"),
              ElementsAre("form 5", "form 6"));
}

TEST_F(ResourceGraphTest, ContentWithoutResourcesOncePerUser) {
  file_.Stream(5, kFormEntries + "/Resources<</XObject<</H 7 0 R>>>>", "")
      .Stream(6, kFormEntries + "/Resources<</XObject<</H 7 0 R/I 7 0 R>>>>", "")
      .Stream(7, kFormEntries, "");
  EXPECT_THAT(Graph("/Resources<</XObject<</A 5 0 R/B 6 0 R>>>>"),
              ElementsAre("form 5", "form 7", "form 6", "form 7"));
}

TEST_F(ResourceGraphTest, SaysWhereNamesAreLookedUp) {
  file_.Page("/Resources<</XObject<</A 5 0 R>>>>")
      .Stream(5, kFormEntries + "/Resources 6 0 R", "")
      .Object(6, "<</XObject<</B 7 0 R>>/Font<</T 8 0 R>>>>")
      .Stream(7, kFormEntries, "")
      .Object(8, "<</Subtype/Type3/CharProcs<</a 9 0 R>>/Resources<<>>>>")
      .Stream(9, "", "");
  ResourceGraph graph(file_.Open());
  graph.AddPage(file_.pages(), 0);
  std::vector<std::string> owners;
  while (const ResourceNode* node = graph.Next()) {
    owners.push_back(std::string(node->name) + " " + std::to_string(node->number) + " by " +
                     std::to_string(node->user) + ": " + std::to_string(node->scope.owner));
    EXPECT_TRUE(node->scope.resources.IsDictionary());
  }
  const std::string page = std::to_string(file_.document().object_limit());
  EXPECT_THAT(owners, ElementsAre(" 3 by 0: " + page, "A 5 by 3: 6", "T 8 by 5: 8", "a 9 by 8: 8",
                                  "B 7 by 5: 6"));
}

TEST_F(ResourceGraphTest, WhatReadersPassOver) {
  file_.Object(5, "<</Subtype/Form>>")
      .Stream(6, "/Subtype/PS", "")
      .Object(7, "(x)")
      .Object(8, "<</PatternType 3>>")
      .Object(9, "9 0 R");
  EXPECT_THAT(Graph("/Annots[(x)<</AP 7 0 R>>]/Resources<</XObject<</A 6 0 R/B 7 0 R/C 77 0 R/D<<"
                    "/Subtype/Form>>/E 9 0 R>>/Pattern<</P 8 0 R>>/Font 7 0 R>>"),
              IsEmpty());
}

TEST_F(ResourceGraphTest, SharedResourcesAreGoneThroughOnce) {
  testing::RawPdf raw;
  raw.Pages(2, "/Resources 5 0 R").Object(5, "<</XObject<</F 6 0 R>>>>");
  raw.Stream(6, kFormEntries, "");
  const std::string bytes = raw.Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const PageTree pages(*document);
  ResourceGraph graph(*document);
  std::vector<int> counts;
  for (std::size_t i = 0; i < 2; ++i) {
    counts.push_back(0);
    graph.AddPage(pages, i);
    while (graph.Next() != nullptr) {
      ++counts.back();
    }
  }
  EXPECT_THAT(counts, ElementsAre(2, 1));
}

TEST_F(ResourceGraphTest, InheritedResources) {
  testing::RawPdf raw;
  raw.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]/Resources<</XObject<</F 6 0 R>>>>>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Stream(6, kFormEntries, "");
  const std::string bytes = raw.Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const PageTree pages(*document);
  ResourceGraph graph(*document);
  graph.AddPage(pages, 0);
  const ResourceNode* page = graph.Next();
  ASSERT_NE(page, nullptr);
  EXPECT_GT(page->scope.owner, document->object_limit());
  const ResourceNode* form = graph.Next();
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->number, 6U);
}

TEST_F(ResourceGraphTest, GoesNotBelowWhatIsSkipped) {
  file_.Page("/Resources<</XObject<</F 5 0 R/G 7 0 R>>>>")
      .Stream(5, kFormEntries + "/Resources<</XObject<</H 6 0 R>>>>", "")
      .Stream(6, kFormEntries, "")
      .Stream(7, kFormEntries, "");
  ResourceGraph graph(file_.Open());
  graph.AddPage(file_.pages(), 0);
  std::vector<std::uint32_t> numbers;
  while (const ResourceNode* node = graph.Next()) {
    numbers.push_back(node->number);
    if (node->number == 5) {
      graph.SkipBelow();
    }
  }
  EXPECT_THAT(numbers, ElementsAre(3U, 5U, 7U));
}

TEST_F(ResourceGraphTest, DeepNestingComesToAnEnd) {
  for (int number = 5; number < 205; ++number) {
    file_.Stream(
        number,
        kFormEntries + "/Resources<</XObject<</F " + std::to_string(number + 1) + " 0 R>>>>", "");
  }
  file_.Page("/Resources<</XObject<</F 5 0 R>>>>");
  ResourceGraph graph(file_.Open());
  EXPECT_THAT(Told(graph), SizeIs(64));
  EXPECT_FALSE(graph.is_complete());
}

TEST_F(ResourceGraphTest, BeginsAtAnEntryOfResources) {
  file_.Page("/Resources<<>>")
      .Object(5, "<</SMask<</S/Alpha/G 6 0 R>>>>")
      .Stream(6, kFormEntries, "")
      .Stream(7, kFormEntries + "/Resources<</XObject<</I 8 0 R>>>>", "")
      .Stream(8, kImageEntries, "");
  ResourceGraph graph(file_.Open());
  constexpr std::uint32_t kUser = 99;
  graph.AddResource(ResourceCategory::kExtGState, Object::Ref({5, 0}), {{}, kUser});
  EXPECT_EQ(graph.Next()->number, 5U);
  const ResourceNode* group = graph.Next();
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->kind, ResourceKind::kSoftMaskGroup);
  EXPECT_EQ(group->scope.owner, kUser);
  EXPECT_EQ(graph.Next(), nullptr);

  graph.AddContent({ResourceKind::kAppearance, 7}, {{}, kUser});
  const ResourceNode* appearance = graph.Next();
  ASSERT_NE(appearance, nullptr);
  EXPECT_EQ(appearance->kind, ResourceKind::kAppearance);
  EXPECT_EQ(appearance->scope.owner, 7U);
  EXPECT_EQ(graph.Next()->number, 8U);
  EXPECT_EQ(graph.Next(), nullptr);
}

}  // namespace
}  // namespace TarnixTools::pdf
