// What pages use of their resources, by the quick scan of names, held against a walk through what
// they draw: nothing that is looked up may be left out.
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/content/ResourceUse.h"
#include "support/RawPdf.h"
#include "support/Surroundings.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// "XObject Im0".
using Names = std::set<std::string>;

std::string NameOf(ResourceCategory category, std::string_view name) {
  return std::string(kResourceCategoryKeys[static_cast<std::size_t>(category)]) + " " +
         std::string(name);
}

// What is looked up and found in the resources of a page.
class LookUps : public ContentVisitor {
 public:
  explicit LookUps(std::uint32_t page_owner) : page_owner_(page_owner) {}

  bool EnterContent(const ContentEntry& entry) override {
    owners_.push_back(entry.scope.owner);
    return true;
  }

  void LeaveContent(const ContentEntry& /*entry*/) override { owners_.pop_back(); }

  void LookUp(ResourceCategory category, std::string_view name, const Object& entry) override {
    if (!entry.IsNull() && !owners_.empty() && owners_.back() == page_owner_) {
      names.insert(NameOf(category, name));
    }
  }

  Names names;

 private:
  std::uint32_t page_owner_;
  std::vector<std::uint32_t> owners_;
};

class Pages {
 public:
  explicit Pages(std::string bytes)
      : bytes_(std::move(bytes)),
        document_(Document::Open(std::make_unique<MemorySource>(bytes_), "")),
        tree_(*document_),
        resources_(*document_) {}

  std::size_t count() { return tree_.pages().size(); }

  Names LookedUp(std::size_t page_index) {
    Arena arena;
    LookUps found(ScopeOfPage(*document_, tree_, page_index, arena).owner);
    ContentWalker walker(*document_, found,
                         {.names = true,
                          .forms = true,
                          .patterns = true,
                          .soft_masks = true,
                          .glyphs = true,
                          .appearances = true});
    walker.BeginPage(tree_, page_index);
    walker.Run();
    return found.names;
  }

  // By the quick scan, as page copies ask: names, and what the things so named use in turn.
  Names Used(std::size_t page_index) {
    const PageTree::Page& page = tree_.pages()[page_index];
    Arena arena;
    const Object dictionary = tree_.Load(page, arena);
    const auto all =
        resources_.Read(tree_.FindAttribute(page, dictionary, InheritableKey::kResources).value);
    if (all == nullptr) {
      return {};
    }
    UsedEntries used;
    resources_.Mark(resources_.OfPage(dictionary), *all, used);
    Names names;
    for (std::size_t i = 0; i < all->entries.size(); ++i) {
      if (used.Holds(i)) {
        names.insert(NameOf(all->entries[i].category, all->entries[i].name));
      }
    }
    return names;
  }

  // Names that a walk looks up and the scan does not know of.
  Names Missed(std::size_t page_index) {
    const Names used = Used(page_index);
    Names missed;
    for (const std::string& name : LookedUp(page_index)) {
      if (!used.contains(name)) {
        missed.insert(name);
      }
    }
    return missed;
  }

 private:
  std::string bytes_;
  std::unique_ptr<Document> document_;
  PageTree tree_;
  ResourceUseReader resources_;
};

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

// A page with these resources and this content, and objects that other content leads to: forms 5
// and 6, the first without resources of its own, which draws the second and an image.
std::string Made(const std::string& resources, const std::string& content,
                 const std::string& entries = "") {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R/Resources<<" +
                     resources + ">>" + entries + ">>")
      .Stream(4, "", content)
      .Stream(5, kForm, "/Own Do /Im Do /CsA cs")
      .Stream(6, kForm + "/Resources<</XObject<</Im 7 0 R>>>>", "/Im Do")
      .Stream(7, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/CsB", "x")
      .Stream(8, "/PatternType 1/BBox[0 0 9 9]/XStep 9/YStep 9/PaintType 1/TilingType 1", "/Im Do")
      .Object(9, "<</SMask<</S/Alpha/G 5 0 R>>/Font[10 0 R 9]>>")
      .Object(10,
              "<</Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[1 0 0 1 0 0]/FirstChar 97"
              "/LastChar 97/Widths[1]/Encoding<</Differences[97/a]>>/CharProcs<</a 11 0 R>>>>")
      .Stream(11, "", "1 0 d0 /Im Do")
      .Object(12, "<</ShadingType 2/ColorSpace/CsA/Coords[0 0 9 9]>>")
      .Object(13, "<</PatternType 2/Shading 12 0 R>>")
      .Object(14, "[/Indexed[/Separation/Spot/CsB 15 0 R]1<0001>]")
      .Object(15, "<</FunctionType 2/N 1/Domain[0 1]>>")
      .Object(16, "<</Subtype/Stamp/Rect[0 0 9 9]/AP<</N 5 0 R/D<</On 8 0 R>>>>>>");
  return file.Table();
}

const std::string kAll =
    "/XObject<</Bare 5 0 R/Own 6 0 R/Im 7 0 R/No 7 0 R>>/Pattern<</Tile 8 0 R/Shade 13 0 R>>"
    "/ExtGState<</Mask 9 0 R>>/Font<</Type3 10 0 R>>/Shading<</Sh 12 0 R>>"
    "/ColorSpace<</CsA 14 0 R/CsB/DeviceGray/CsC/DeviceRGB>>/Properties<</Mc<<>>/Md<<>>>>";

// What a page that draws this uses of kAll; never less than what a walk looks up.
Names UsedBy(const std::string& content, const std::string& entries = "") {
  Pages pages(Made(kAll, content, entries));
  EXPECT_THAT(pages.Missed(0), IsEmpty()) << content;
  return pages.Used(0);
}

TEST(ResourceUse, IsWhatOperatorsName) {
  EXPECT_THAT(UsedBy(""), IsEmpty());
  EXPECT_THAT(UsedBy("/Own Do"), ElementsAre("XObject Own"));
  EXPECT_THAT(UsedBy("/#4fwn Do (/Im Do) Tj %/Im Do"), ElementsAre("XObject Own"));
  EXPECT_THAT(UsedBy("/Span/Mc BDC EMC /Sh sh"),
              ElementsAre("ColorSpace CsA", "ColorSpace CsB", "Properties Mc", "Shading Sh"));
}

TEST(ResourceUse, IsWhatContentWithoutResourcesNames) {
  const std::vector<std::string> of_form = {"ColorSpace CsA", "ColorSpace CsB", "XObject Im",
                                            "XObject Own"};
  const auto with = [&](const std::string& own) {
    Names names(of_form.begin(), of_form.end());
    names.insert(own);
    return names;
  };
  EXPECT_EQ(UsedBy("/Bare Do"), with("XObject Bare"));
  EXPECT_EQ(UsedBy("", "/Annots[16 0 R]"), Names(of_form.begin(), of_form.end()));
  EXPECT_THAT(UsedBy("/Pattern cs /Tile scn 0 0 9 9 re f"),
              ElementsAre("ColorSpace CsB", "Pattern Tile", "XObject Im"));
  EXPECT_THAT(UsedBy("BT /Type3 9 Tf (a) Tj ET"),
              ElementsAre("ColorSpace CsB", "Font Type3", "XObject Im"));
  EXPECT_EQ(UsedBy("/Mask gs BT (a) Tj ET"), with("ExtGState Mask"));
}

TEST(ResourceUse, IsWhatColorSpacesName) {
  EXPECT_THAT(UsedBy("/Im Do"), ElementsAre("ColorSpace CsB", "XObject Im"));
  EXPECT_THAT(UsedBy("/CsA cs"), ElementsAre("ColorSpace CsA", "ColorSpace CsB"));
  EXPECT_THAT(UsedBy("/Pattern cs /Shade scn 0 0 9 9 re f"),
              ElementsAre("ColorSpace CsA", "ColorSpace CsB", "Pattern Shade"));
  EXPECT_THAT(UsedBy("BI /W 1 /H 1 /BPC 8 /CS /CsC ID x EI"), ElementsAre("ColorSpace CsC"));
  EXPECT_THAT(UsedBy("", "/Group<</S/Transparency/CS/CsC>>"), ElementsAre("ColorSpace CsC"));
}

TEST(ResourceUse, IsAllWhereContentIsNotKnown) {
  Pages pages(Made(kAll, "/Own Do /" + std::string(limits::kMaxNameBytes + 1, 'n') + " Do"));
  EXPECT_EQ(pages.Used(0).size(), 14U);
  EXPECT_THAT(pages.Missed(0), IsEmpty());
}

TEST(ResourceUse, OfTheExamplesIsNoLessThanTheyLookUp) {
  for (const std::string& path : testing::DocumentsIn(testing::ExamplesDir())) {
    Pages pages(testing::ReadBytes(path));
    for (std::size_t page = 0; page < pages.count(); ++page) {
      EXPECT_THAT(pages.Missed(page), IsEmpty()) << path << ", page " << page;
    }
  }
}

// Every sixth document of the corpus, in four tests that run side by side; of long ones the first
// pages.
class ResourceUseOfCorpus : public ::testing::TestWithParam<std::size_t> {};

TEST_P(ResourceUseOfCorpus, IsNoLessThanIsLookedUp) {
  TARNIX_NEED_CORPUS("general");
  const std::vector<std::string> paths = testing::DocumentsIn(testing::CorpusDir() + "/general");
  std::size_t names = 0;
  for (std::size_t i = GetParam(); i < paths.size(); i += 6 * 4) {
    try {
      Pages pages(testing::ReadBytes(paths[i]));
      for (std::size_t page = 0; page < std::min<std::size_t>(pages.count(), 20); ++page) {
        EXPECT_THAT(pages.Missed(page), IsEmpty()) << paths[i] << ", page " << page;
        names += pages.Used(page).size();
      }
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kPasswordRequired) << paths[i];
    }
  }
  EXPECT_GT(names, 0U);
}

INSTANTIATE_TEST_SUITE_P(Every6th, ResourceUseOfCorpus,
                         ::testing::Range(std::size_t{0}, std::size_t{4}));

}  // namespace
}  // namespace TarnixTools::pdf
