#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/optimizer/structure/UnusedResources.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::engines::optimizer {
namespace {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::RewriteCase;

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
const std::string kSome = "<</Font<</F 20 0 R/G 21 0 R>>/XObject<</Im 22 0 R>>>>";

// Pages from 3 on with these entries each, and a font 20, another 21, an image 22.
RawPdf WithPages(const std::vector<std::string>& pages, const std::string& catalog = "",
                 const std::string& node = "") {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
  std::string kids;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    kids += std::to_string(3 + i) + " 0 R ";
    file.Object(3 + static_cast<int>(i),
                "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]" + pages[i] + ">>");
  }
  return file
      .Object(
          2, "<</Type/Pages/Kids[" + kids + "]/Count " + std::to_string(pages.size()) + node + ">>")
      .Object(20, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>")
      .Object(21, "<</Type/Font/Subtype/Type1/BaseFont/Symbol>>")
      .Stream(22, "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray", "x");
}

// What is left of resources, as "Font F,XObject Im".
std::string NamesOf(pdf::Document& document, const Object& owner) {
  Arena arena;
  std::string names;
  const Object resources = document.Resolve(owner.Get("Resources"), arena);
  for (const DictionaryEntry& category : resources.Entries()) {
    for (const DictionaryEntry& entry : document.Resolve(category.value, arena).Entries()) {
      names +=
          (names.empty() ? "" : ",") + std::string(category.Key()) + " " + std::string(entry.Key());
    }
  }
  return names;
}

class Pruned {
 public:
  explicit Pruned(RawPdf file, bool sets_pages = false)
      : case_(std::move(file)), pages_(case_.source()) {
    removed_ = RemoveUnusedResources(case_.source(), pages_, case_.rewriter());
    if (sets_pages) {
      case_.rewriter().SetPages(pages_);
    }
    case_.Write();
  }

  std::size_t removed() const { return removed_; }

  std::string OfPage(std::size_t index) {
    pdf::Document& written = case_.Write();
    const pdf::PageTree pages(written);
    Arena arena;
    const std::vector<DictionaryEntry> entry = {
        {Object::Name("Resources"),
         pages.Attribute(pages.pages()[index], pdf::InheritableKey::kResources, arena)}};
    return NamesOf(written, Object::Dictionary(entry));
  }

  // Of an entry of a page's resources, or of its first annotation's appearance.
  std::string OfXObject(std::size_t page_index, const std::string& name) {
    pdf::Document& written = case_.Write();
    const pdf::PageTree pages(written);
    Arena arena;
    const Object page = pages.Load(pages.pages()[page_index], arena);
    const auto in = [&](const Object& value, const char* key) {
      return written.Resolve(value.Get(key), arena);
    };
    if (!name.empty()) {
      return NamesOf(written, in(in(in(page, "Resources"), "XObject"), name.c_str()));
    }
    const Object annotation = written.Resolve(in(page, "Annots").Items()[0], arena);
    return NamesOf(written, in(in(annotation, "AP"), "N"));
  }

 private:
  RewriteCase case_;
  pdf::PageTree pages_;
  std::size_t removed_ = 0;
};

TEST(UnusedResources, LoseWhatThePageDoesNotName) {
  Pruned test(WithPages({"/Contents 10 0 R/Resources" + kSome}).Stream(10, "", "/G 9 Tf"));
  EXPECT_EQ(test.OfPage(0), "Font G");
  EXPECT_EQ(test.removed(), 2U);
}

TEST(UnusedResources, StayWhereAnyOfThoseWhoShareThemNamesThem) {
  for (const std::string where : {"resources", "category"}) {
    const std::string shared =
        where == "resources" ? "/Resources 30 0 R" : "/Resources<</Font 31 0 R/XObject 32 0 R>>";
    RawPdf file = WithPages({"/Contents 10 0 R" + shared, "/Contents 11 0 R" + shared});
    file.Stream(10, "", "/F 9 Tf")
        .Stream(11, "", "/F 9 Tf /Im Do")
        .Object(30, kSome)
        .Object(31, "<</F 20 0 R/G 21 0 R>>")
        .Object(32, "<</Im 22 0 R>>");
    Pruned test(file);
    EXPECT_EQ(test.OfPage(0), "Font F,XObject Im") << where;
    EXPECT_EQ(test.OfPage(1), "Font F,XObject Im") << where;
    EXPECT_EQ(test.removed(), 1U) << where;
  }
}

TEST(UnusedResources, AreThoseThatPagesInherit) {
  for (const bool sets_pages : {false, true}) {
    RawPdf file = WithPages({"/Contents 10 0 R", "/Contents 11 0 R"}, "", "/Resources" + kSome);
    file.Stream(10, "", "/F 9 Tf").Stream(11, "", "/Im Do");
    Pruned test(file, sets_pages);
    EXPECT_EQ(test.OfPage(0), "Font F,XObject Im");
    EXPECT_EQ(test.OfPage(1), "Font F,XObject Im");
  }
}

TEST(UnusedResources, AreLookedUpByFormsWithoutTheirOwn) {
  RawPdf file = WithPages(
      {"/Contents 10 0 R/Resources<</Font<</F 20 0 R/G 21 0 R>>/XObject<</Fm 23 0 R>>>>"});
  file.Stream(10, "", "/Fm Do").Stream(23, kForm, "/G 9 Tf");
  EXPECT_EQ(Pruned(file).OfPage(0), "Font G,XObject Fm");
}

TEST(UnusedResources, OfFormsAreLookedAtToo) {
  RawPdf file = WithPages({"/Contents 10 0 R/Resources<</XObject<</Fm 23 0 R>>>>"});
  file.Stream(10, "", "/Fm Do").Stream(23, kForm + "/Resources" + kSome, "/Im Do");
  EXPECT_EQ(Pruned(file).OfXObject(0, "Fm"), "XObject Im");
}

// Readers look for it in the page's resources.
TEST(UnusedResources, StayWhereAFormLacksThem) {
  RawPdf file =
      WithPages({"/Contents 10 0 R/Resources<</Font<</F 20 0 R/G 21 0 R>>"
                 "/XObject<</Fm 23 0 R>>>>"});
  file.Stream(10, "", "/Fm Do").Stream(23, kForm + "/Resources<<>>", "/G 9 Tf");
  EXPECT_EQ(Pruned(file).OfPage(0), "Font G,XObject Fm");
}

TEST(UnusedResources, StayForTextThatIsTypedIntoFields) {
  RawPdf file =
      WithPages({"/Annots[<</Subtype/Widget/FT/Tx/Rect[0 0 1 1]/DA(/G 9 Tf)"
                 "/AP<</N 23 0 R>>>>]"});
  file.Stream(23, kForm + "/Resources" + kSome, "");
  EXPECT_EQ(Pruned(file).OfXObject(0, ""), "Font G");
}

TEST(UnusedResources, StayWhereAnythingElseRefersToThem) {
  RawPdf file = WithPages({"/Contents 10 0 R/Resources 30 0 R"},
                          "/AcroForm<</DA(/F 9 Tf)/DR 30 0 R/Fields[]>>");
  file.Stream(10, "", "").Object(30, kSome);
  EXPECT_EQ(Pruned(file).removed(), 0U);

  RawPdf fonts = WithPages({"/Contents 10 0 R/Resources<</Font 31 0 R/XObject<</Im 22 0 R>>>>"},
                           "/AcroForm<</DA(/F 9 Tf)/DR<</Font 31 0 R>>/Fields[]>>");
  fonts.Stream(10, "", "").Object(31, "<</F 20 0 R/G 21 0 R>>");
  EXPECT_EQ(Pruned(fonts).OfPage(0), "Font F,Font G");
}

TEST(UnusedResources, StayWhereContentCannotBeRead) {
  RawPdf file = WithPages({"/Contents 10 0 R/Resources" + kSome});
  file.Stream(10, "/Filter/FlateDecode", "no deflated data");
  EXPECT_EQ(Pruned(file).removed(), 0U);
  RawPdf odd = WithPages({"/Contents 10 0 R/Resources" + kSome});
  odd.Stream(10, "", "/F 9 Tf (never ends");
  EXPECT_EQ(Pruned(odd).removed(), 0U);
}

TEST(UnusedResources, StayWhereAKeyStandsTwice) {
  RawPdf file = WithPages(
      {"/Contents 10 0 R/Resources<</Font<</F 20 0 R>>/Font<</G 21 0 R>>/XObject<</Im 22 0 R>>>>"});
  file.Stream(10, "", "");
  EXPECT_EQ(Pruned(file).removed(), 0U);
}

TEST(UnusedResources, StayForAPageThatIsNoObject) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2,
              "<</Type/Pages/Count 1/Kids[<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Resources 30 "
              "0 R>>]>>")
      .Object(20, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>")
      .Object(30, "<</Font<</F 20 0 R>>>>");
  EXPECT_EQ(Pruned(file).removed(), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
