// What pages lead to, and which of their resources they use, as a whole.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/content/ResourceGraph.h"
#include "pdf/content/ResourceUse.h"
#include "pdf/content/WalkFixture.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::IsAsExpected;
using ::TarnixTools::testing::RawPdf;

// Pages that lead to everything that can be led to, some of it in several ways.
std::string Everything() {
  return RawPdf()
      .Lines(R"(1 <</Type/Catalog/Pages 2 0 R/AcroForm<</DA(/Helv 3 Tf)>>>>
2 <</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R]/Count 4/MediaBox[0 0 9 9]/Resources 9 0 R>>
3 <</Type/Page/Parent 2 0 R/Contents[50 0 R 51 0 R]/Annots[60 0 R 61 0 R]/Group<</CS/Named>>>>
4 <</Type/Page/Parent 2 0 R/Contents 52 0 R/Group<</CS[/ICCBased 30 0 R]>>>>
5 <</Type/Page/Parent 2 0 R/Contents 53 0 R/Resources<</XObject<</Own 10 0 R/F 11 0 R>>/Font<</F 20 0 R/F 21 0 R>>/Other 12 0 R/ProcSet[/PDF]>>>>
6 <</Type/Page/Parent 2 0 R/Contents[54 0 R 55 0 R 54 0 R]>>
9 <</XObject<</Form 10 0 R/Own 11 0 R/Image 12 0 R/Lost 99 0 R/Name/N/PS 16 0 R>>
 /Font<</Helv 20 0 R/T 21 0 R/InPlace<</Type/Font/Subtype/TrueType/FontDescriptor 29 0 R>>>>
 /ColorSpace<</Named[/ICCBased 30 0 R]/Sep[/Separation/Red 31 0 R 33 0 R]/Dev[/DeviceN[/A/B]/DeviceCMYK 33 0 R<</Colorants<</A[/Separation/A/DeviceGray 33 0 R]>>/Process<</ColorSpace 31 0 R>>>>]
 /Idx[/Indexed/Named 1<0011>]/Pat[/Pattern 31 0 R]/DefaultRGB 31 0 R/Gray/DeviceGray/Short[/Lab]>>
 /Pattern<</Tile 40 0 R/Shade 41 0 R/None 42 0 R>>/Shading<</S 43 0 R>>
 /ExtGState<</Mask<</SMask<</S/Alpha/G 13 0 R>>/Font[21 0 R 3]>>/Plain<</CA 1>>>>/Properties<</P 44 0 R>>/Foreign 45 0 R>>
10 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Resources<</XObject<</Own 11 0 R>>>>>> stream /Own Do
11 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]/Group<</CS/Sep>>>> stream /Image Do /Helv 3 Tf
12 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace/Named/BitsPerComponent 8/SMask 14 0 R/Mask 15 0 R/Alternates[<</Image 15 0 R>>7]>> stream x
13 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream /Plain gs /Own Do
14 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace[/Indexed/Idx 1<00>]/BitsPerComponent 8>> stream x
15 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace[/ICCBased 30 0 R]/SMask 17 0 R/Mask 14 0 R>> stream x
17 <</Type/XObject/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray>> stream x
16 <</Type/XObject/Subtype/PS>> stream x
20 <</Type/Font/Subtype/Type1/BaseFont/Helvetica>>
21 <</Type/Font/Subtype/Type3/CharProcs<</a 22 0 R/b 23 0 R/c(x)>>/Encoding<</Differences[97/a/b]>>>>
22 <<>> stream 1 0 d0 /Image Do
23 <<>> stream /Tile scn
29 <</Type/FontDescriptor>>
30 <</N 3/Alternate 31 0 R>> stream profile
31 [/CalRGB<</WhitePoint[1 1 1]>>]
33 <</FunctionType 2/Domain[0 1]/N 1>>
40 <</PatternType 1/PaintType 1/TilingType 1/BBox[0 0 1 1]/XStep 1/YStep 1>> stream /S sh /Dev cs
41 <</PatternType 2/Shading 43 0 R/ExtGState 46 0 R>>
42 <</PatternType 3>>
43 <</ShadingType 2/ColorSpace/Idx/Coords[0 0 1 1]/Function 33 0 R>>
44 <</Type/OCG/Name(l)>>
45 <</Foreign true>>
46 <</SMask/None>>
50 <<>> stream /Form Do /T 3
51 <<>> stream Tf /P /P BDC EMC
52 <<>> stream /Sep cs /Shade scn BI/W 1/H 1/CS/Idx/BPC 8 ID x EI /Mask gs /Lost Do
53 <<>> stream /F Do BT /F 1 Tf ET
54 <<>> stream /Tile scn /Pat CS /Gray cs
55 <</Filter/NoSuchDecode>> stream x
60 <</Type/Annot/Subtype/Widget/Rect[0 0 1 1]/AP<</N 13 0 R/D<</On 10 0 R/Off 62 0 R>>>>/DA(/T 1 Tf /Helv 2 Tf)>>
61 <</Type/Annot/Subtype/Widget/Rect[0 0 1 1]/Parent 63 0 R>>
62 <</Type/XObject/Subtype/Form/BBox[0 0 1 1]>> stream /Short cs
63 <</DA(/T 1 Tf)>>
)")
      .Table();
}

class ResourceTexts : public ::testing::Test {
 protected:
  ResourceTexts()
      : bytes_(Everything()),
        document_(Document::Open(std::make_unique<MemorySource>(bytes_), "")),
        tree_(*document_) {}

  std::string TextOf(ResourceGraph& graph) const {
    std::string text;
    while (const ResourceNode* node = graph.Next()) {
      text += "  " + NameOf(node->kind) + " " + std::to_string(node->number) + " of " +
              std::to_string(node->user) + " " + std::string(node->name) + ", names by " +
              std::to_string(node->scope.owner) + "\n";
    }
    return text + (graph.is_complete() ? "" : "  incomplete\n");
  }

  // The names of the entries that are used.
  std::string UsedText(ResourceUseReader& reader, const ResourceUse& use,
                       const ResourceDictionary& resources) const {
    UsedEntries used;
    std::string text = use.is_known ? "" : " unknown";
    text += " " + std::to_string(use.names.size()) + ":";
    for (const std::size_t entry : reader.Mark(use, resources, used)) {
      text += " " + std::string(resources.entries[entry].name);
    }
    return text + (used.may_be_all ? ", perhaps all\n" : "\n");
  }

  std::string bytes_;
  std::unique_ptr<Document> document_;
  PageTree tree_;
};

TEST_F(ResourceTexts, OfWhatPagesLeadTo) {
  std::string text;
  for (std::size_t i = 0; i < tree_.pages().size(); ++i) {
    ResourceGraph graph(*document_);
    graph.AddPage(tree_, i);
    text += "page " + std::to_string(i) + " alone\n" + TextOf(graph);
  }
  ResourceGraph graph(*document_);
  for (std::size_t i = 0; i < tree_.pages().size(); ++i) {
    graph.AddPage(tree_, i);
    text += "page " + std::to_string(i) + " after those before\n" + TextOf(graph);
  }
  const ResourceScope user{.resources = {}, .owner = 77};
  for (const ResourceCategory category :
       {ResourceCategory::kXObject, ResourceCategory::kFont, ResourceCategory::kColorSpace,
        ResourceCategory::kPattern, ResourceCategory::kExtGState, ResourceCategory::kShading,
        ResourceCategory::kProperties}) {
    for (const std::uint32_t number : {11U, 12U, 21U, 31U, 41U, 43U, 44U}) {
      ResourceGraph alone(*document_);
      alone.AddResource(category, Object::Ref({.number = number, .generation = 0}), user);
      text += std::string(kResourceCategoryKeys.at(static_cast<std::size_t>(category))) + " " +
              std::to_string(number) + "\n" + TextOf(alone);
    }
  }
  ResourceGraph content(*document_);
  content.AddContent({ResourceKind::kTilingPattern, 40}, user);
  text += "content 40\n" + TextOf(content);
  EXPECT_TRUE(IsAsExpected("content/resources.txt", text));
}

TEST_F(ResourceTexts, OfWhatPagesUse) {
  ResourceUseReader reader(*document_);
  std::string text;
  Arena arena;
  for (std::size_t i = 0; i < tree_.pages().size(); ++i) {
    const PageTree::Page& page = tree_.pages()[i];
    const Object value = tree_.Attribute(page, InheritableKey::kResources, arena);
    const auto resources = reader.ReadShared(value, i);
    ASSERT_NE(resources, nullptr);
    text += "page " + std::to_string(i) +
            UsedText(reader, reader.OfPage(tree_.Load(page, arena)), *resources);
    if (i == 0 || i == 2) {
      for (const NamedResource& entry : resources->entries) {
        text += "  " +
                std::string(kResourceCategoryKeys.at(static_cast<std::size_t>(entry.category))) +
                " " + std::string(entry.name) + (entry.is_implied ? " implied" : "") + ", objects";
        for (std::uint32_t k = 0; k < entry.object_count; ++k) {
          text += " " + std::to_string(resources->objects.at(entry.first_object + k));
        }
        EXPECT_GE(resources->Find(entry.id), 0);
        text +=
            ", needs" + UsedText(reader, reader.NeedsOf(entry.category, entry.value), *resources);
      }
      text += resources->has_foreign_entries ? "  foreign\n" : "";
    }
  }
  const auto resources = reader.Read(Object::Ref({.number = 9, .generation = 0}));
  ASSERT_NE(resources, nullptr);
  EXPECT_EQ(reader.Read(Object::Integer(3)), nullptr);
  EXPECT_EQ(resources->Find(9999), -1);
  for (const std::uint32_t number : {10U, 11U, 12U, 13U, 40U, 62U}) {
    const Object form = document_->Load({.number = number, .generation = 0}, arena);
    text += "form " + std::to_string(number) +
            UsedText(reader, reader.OfForm(form, number), *resources);
  }
  const Object font = document_->Load({.number = 21, .generation = 0}, arena);
  text += "glyphs" + UsedText(reader, reader.OfGlyphs(font), *resources);
  for (const std::uint32_t number : {60U, 61U, 62U}) {
    const Object widget = document_->Load({.number = number, .generation = 0}, arena);
    text += "font of widget " + std::to_string(number) +
            UsedText(reader, {{reader.FontOfWidget(widget)}, true}, *resources);
  }
  EXPECT_TRUE(IsAsExpected("content/resources_used.txt", text));
}

// Names are known up to a number of them, however many streams they are in.
TEST(ResourceNamesOfStreams, AreBounded) {
  const auto known = [](const std::vector<std::pair<int, int>>& streams) {
    RawPdf pdf;
    pdf.Pages(1).Object(4, "<<>>");
    std::string array;
    int number = 10;
    for (const auto& [first, count] : streams) {
      std::string content;
      for (int i = first; i < first + count; ++i) {
        content += "/N" + std::to_string(i) + " Do ";
      }
      pdf.Stream(number, "", content);
      array += std::to_string(number++) + " 0 R ";
    }
    const std::string bytes =
        pdf.Object(3, "<</Type/Page/Contents 5 0 R>>").Object(5, "[" + array + "]").Table();
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
    ResourceUseReader reader(*document);
    Arena arena;
    const Object page = document->Load({.number = 3, .generation = 0}, arena);
    const ResourceUse first = reader.OfPage(page);
    const ResourceUse again = reader.OfPage(page);
    EXPECT_EQ(first.names, again.names);
    EXPECT_EQ(first.is_known, again.is_known);
    return (first.is_known ? "" : "unknown ") + std::to_string(first.names.size());
  };
  EXPECT_EQ(known({{0, 16'384}}), "16384");
  EXPECT_EQ(known({{0, 16'385}}), "unknown 0");
  EXPECT_EQ(known({{0, 16'384}, {0, 16'384}, {0, 16'384}}), "16384");
  EXPECT_EQ(known({{0, 10'000}, {10'000, 6'384}}), "16384");
  EXPECT_EQ(known({{0, 10'000}, {10'000, 6'385}}), "unknown 0");
  EXPECT_EQ(known({{0, 15'000}, {15'000, 15'000}, {30'000, 15'000}}), "unknown 0");
}

}  // namespace
}  // namespace TarnixTools::pdf
