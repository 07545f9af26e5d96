#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::TestPdf;

class Resources : public CopiedDocument {
 public:
  using CopiedDocument::CopiedDocument;

  // The names in a category of resources, separated by spaces.
  std::string Names(const Object& resources, std::string_view category) {
    std::string names;
    for (const pdf::DictionaryEntry& entry : Get(resources, category).Entries()) {
      names += (names.empty() ? "" : " ") + std::string(entry.Key());
    }
    return names;
  }

  std::string PageNames(std::size_t page, std::string_view category) {
    return Names(Page(page).Get("Resources"), category);
  }

  // Dictionaries of the file in which /Mark has this name.
  int Marked(const std::string& name) {
    return Count([&](const Object& object) { return object.Get("Mark").IsName(name); });
  }
};

// Entries of a form XObject that paints `content`.
std::string Form(const std::string& entries, const std::string& content) {
  return "<</Type/XObject/Subtype/Form/BBox[0 0 9 9]" + entries + "/Length " +
         std::to_string(content.size()) + ">>stream\n" + content + "\nendstream";
}

// An image of one black pixel, told apart by its mark.
std::string Image(const std::string& mark) {
  return "<</Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray"
         "/Mark/" +
         mark + "/Length 1>>stream\n0\nendstream";
}

// Three pages with one resource dictionary, inherited, of which each page uses one image.
TestPdf SharedResources() {
  TestPdf file;
  file.Object("a", Image("A")).Object("b", Image("B")).Object("c", Image("C"));
  file.InheritedEntry("/Resources<</XObject<</A {{a}}/B {{b}}/C {{c}}>>/ProcSet[/PDF]>>");
  file.Page().Content("/A Do").Page().Content("/B Do").Page().Content("q /C Do Q");
  return file;
}

TEST(PageResources, StayWholeWhenAllPagesAreCopied) {
  Resources copy({{SharedResources().Bytes(), {}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "A B C");
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kResource, TPdfCopyOutcome::kDropped), 0U);
}

TEST(PageResources, LoseWhatOnlyPagesLeftBehindUse) {
  Resources copy({{SharedResources().Bytes(), {1}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "B");
  EXPECT_EQ(copy.Marked("A") + copy.Marked("C"), 0);
  EXPECT_EQ(copy.Marked("B"), 1);
  EXPECT_TRUE(copy.Get(copy.Page(0), "Resources").Has("ProcSet"));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kResource, TPdfCopyOutcome::kDropped), 2U);
}

TEST(PageResources, AreSharedByTheCopiedPagesThatSharedThem) {
  Resources copy({{SharedResources().Bytes(), {0, 2}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "A C");
  EXPECT_EQ(copy.Page(0).Get("Resources").AsReference().number,
            copy.Page(1).Get("Resources").AsReference().number);
  EXPECT_EQ(copy.Marked("B"), 0);
}

TEST(PageResources, AreFollowedIntoForms) {
  TestPdf file;
  file.Object("used", Image("Used")).Object("other", Image("Other"));
  file.Object("form", Form("/Resources<</XObject<</U {{used}}/O {{other}}>>>>", "/U Do"));
  file.Page().Content("/F Do").PageEntry("/Resources<</XObject<</F {{form}}>>>>");
  file.Page().Content("/O Do").PageEntry("/Resources<</XObject<</O {{other}}>>>>");
  Resources copy({{file.Bytes(), {0}}});
  const Object form = copy.Get(copy.Get(copy.Get(copy.Page(0), "Resources"), "XObject"), "F");
  EXPECT_EQ(copy.Names(form.Get("Resources"), "XObject"), "U");
  EXPECT_EQ(copy.Marked("Other"), 0);
}

TEST(PageResources, KeepWhatAFormWithoutResourcesTakesFromThePage) {
  TestPdf file;
  file.Object("used", Image("Used")).Object("other", Image("Other"));
  file.Object("form", Form("", "/U Do"));
  file.Page().Content("/F Do").PageEntry(
      "/Resources<</XObject<</F {{form}}/U {{used}}/O {{other}}>>>>");
  file.Page();
  Resources copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "F U");
  EXPECT_EQ(copy.Marked("Other"), 0);
}

TEST(PageResources, OfPatternsAndGlyphsAreFollowed) {
  TestPdf file;
  file.Object("a", Image("A")).Object("b", Image("B"));
  file.Object("tile",
              "<</Type/Pattern/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep 9"
              "/Resources<</XObject<</A {{a}}/B {{b}}>>>>/Length 5>>stream\n/A Do\nendstream");
  file.Object("glyph", "<</Length 5>>stream\n/B Do\nendstream");
  file.Object("font",
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[1 0 0 1 0 0]/FirstChar 65"
              "/LastChar 65/Widths[9]/Encoding<</Differences[65/g]>>/CharProcs<</g {{glyph}}>>"
              "/Resources<</XObject<</A {{a}}/B {{b}}>>>>>>");
  file.Page()
      .Content("/Pattern cs /P scn 0 0 9 9 re f")
      .PageEntry("/Resources<</Pattern<</P {{tile}}>>>>");
  file.Page().Content("BT /F 9 Tf (A) Tj ET").PageEntry("/Resources<</Font<</F {{font}}>>>>");
  const std::string bytes = file.Bytes();
  Resources tiled({{bytes, {0}}});
  EXPECT_EQ(tiled.Marked("A"), 1);
  EXPECT_EQ(tiled.Marked("B"), 0);
  Resources set({{bytes, {1}}});
  EXPECT_EQ(set.Marked("A"), 0);
  EXPECT_EQ(set.Marked("B"), 1);
}

TEST(PageResources, OfDamagedContentStayWhole) {
  TestPdf file;
  file.Object("a", Image("A")).Object("b", Image("B"));
  file.Page().Content("/A Do (no end").PageEntry("/Resources<</XObject<</A {{a}}/B {{b}}>>>>");
  file.Page();
  Resources copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "A B");
}

TEST(PageResources, NamedByInlineImagesAndAcrossStreamsStay) {
  TestPdf file;
  file.Object("first", "<</Length 4>>stream\nq /A\nendstream");
  file.Object("second",
              "<</Length 54>>stream\nDo BI/W 1/H 1/BPC 8/CS/Own ID x EI Q                  "
              "          \nendstream");
  file.Object("a", Image("A")).Object("b", Image("B"));
  file.Page().PageEntry(
      "/Contents[{{first}} {{second}}]"
      "/Resources<</XObject<</A {{a}}/B {{b}}>>/ColorSpace<</Own[/Indexed/DeviceGray 0(x)]"
      "/Other[/Indexed/DeviceGray 0(y)]>>>>");
  file.Page();
  Resources copy({{file.Bytes(), {0}}});
  EXPECT_EQ(copy.PageNames(0, "XObject"), "A");
  EXPECT_EQ(copy.PageNames(0, "ColorSpace"), "Own");
}

TEST(PageResources, ThatAreMissingOrOfAWrongTypeAreLeftOut) {
  TestPdf file;
  file.Page().Content("/A Do");
  file.Page().Content("/A Do").PageEntry("/Resources(text)");
  file.Page().Content("/A Do").PageEntry("/Resources<</XObject[1 2]/Font 7>>");
  file.Page();
  Resources copy({{file.Bytes(), {0, 1, 2}}});
  EXPECT_EQ(copy.PageCount(), 3U);
  EXPECT_EQ(copy.PageNames(2, "XObject"), "");
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
