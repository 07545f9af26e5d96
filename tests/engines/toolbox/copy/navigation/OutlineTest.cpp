#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TestPdf;

// Titles with their level and /Count, while every relation is checked: "A(2) >B >C".
class Outline {
 public:
  explicit Outline(CopiedDocument& copy) : copy_(&copy) {
    const Object root = copy.Catalog().Get("Outlines");
    if (root.AsReference()) {
      Walk(root, 0);
      text_.pop_back();
      EXPECT_EQ(copy.Follow(root).Get("Count").IntegerOr(0), visible_);
    }
  }

  const std::string& text() const { return text_; }

  Object Item(const std::string& title) const { return items_.at(title); }

 private:
  void Walk(const Object& parent, int level) {
    const Object parent_item = copy_->Follow(parent);
    Object previous;
    Object item = parent_item.Get("First");
    while (item.AsReference()) {
      const Object dictionary = copy_->Follow(item);
      EXPECT_EQ(dictionary.Get("Parent").AsReference(), parent.AsReference());
      EXPECT_EQ(dictionary.Get("Prev").AsReference(), previous.AsReference());
      const std::string title(dictionary.Get("Title").Text());
      items_.emplace(title, dictionary);
      const std::int64_t count = dictionary.Get("Count").IntegerOr(0);
      text_ += std::string(static_cast<std::size_t>(level), '>') + title;
      text_ += count != 0 ? "(" + std::to_string(count) + ") " : " ";
      visible_ += hidden_ == 0 ? 1 : 0;
      hidden_ += count < 0 ? 1 : 0;
      Walk(item, level + 1);
      hidden_ -= count < 0 ? 1 : 0;
      previous = item;
      item = dictionary.Get("Next");
    }
    EXPECT_EQ(parent_item.Get("Last").AsReference(), previous.AsReference());
  }

  CopiedDocument* copy_;
  std::string text_;
  std::map<std::string, Object> items_;
  std::int64_t visible_ = 0;
  int hidden_ = 0;
};

std::string TextOf(const std::vector<PagesOf>& parts) {
  CopiedDocument copy(parts);
  return Outline(copy).text();
}

// A, with A1 and (closed) A2 > A2x, then B; on pages 1, 2, 3, 4 and 1.
TestPdf Book(const std::string& mark = "") {
  return TestPdf()
      .Pages(4)
      .CatalogEntry("/Outlines {{root}}")
      .Object("root", "<</First {{A}}/Last {{B}}/Count 99>>")
      .Object("A", "<</Title(" + mark +
                       "A)/Parent {{root}}/Next {{B}}/First {{A1}}/Last {{A2}}/Count 2/C[1 0 0]/F 3"
                       "/Dest[{{page 1}}/Fit]/SE {{page 3}}>>")
      .Object("A1", "<</Title(" + mark + "A1)/Next {{A2}}/A<</S/GoTo/D[{{page 2}}/XYZ 0 9 0]>>>>")
      .Object("A2", "<</Title(" + mark +
                        "A2)/Prev {{B}}/Count -1/First {{A2x}}/Last {{A}}/Dest[{{page 3}}/Fit]>>")
      .Object("A2x", "<</Title {{title}}/Dest(name)>>")
      .Object("title", "(" + mark + "A2x)")
      .Object("B", "<</Title(" + mark + "B)/A<</S/URI/URI(u)>>>>")
      .CatalogEntry("/Dests<</name[{{page 4}}/Fit]>>");
}

TEST(Outline, ComesAsAWhole) {
  CopiedDocument copy({{Book().Bytes(), {3, 2, 1, 0}}});
  const Outline outline(copy);
  EXPECT_EQ(outline.text(), "A(2) >A1 >A2(-1) >>A2x B");
  EXPECT_EQ(copy.Place(outline.Item("A").Get("Dest")), "3/Fit");
  EXPECT_EQ(copy.Place(outline.Item("A1").Get("A").Get("D")), "2/XYZ 0 9 0");
  EXPECT_EQ(outline.Item("A2x").Get("Dest").Text(), "name");
  EXPECT_EQ(copy.Text(outline.Item("A").Get("C")), "[1 0 0]");
  EXPECT_EQ(outline.Item("A").Get("F").IntegerOr(0), 3);
  EXPECT_FALSE(outline.Item("A").Has("SE"));
  EXPECT_EQ(outline.Item("B").Get("A").Get("URI").Text(), "u");
}

TEST(Outline, KeepsItemsOfCopiedPagesAndTheirAncestors) {
  const std::string bytes = Book().Bytes();
  EXPECT_EQ(TextOf({{bytes, {0}}}), "A");
  EXPECT_EQ(TextOf({{bytes, {1}}}), "A(1) >A1");
  EXPECT_EQ(TextOf({{bytes, {3}}}), "A(1) >A2(-1) >>A2x");
  EXPECT_EQ(TextOf({{bytes, {2, 1}}}), "A(2) >A1 >A2");
  CopiedDocument copy({{bytes, {3, 3}}});
  const Outline outline(copy);
  EXPECT_FALSE(outline.Item("A").Has("Dest")) << "only its descendant is here";
  EXPECT_FALSE(outline.Item("A2").Has("Dest"));
  EXPECT_TRUE(outline.Item("A2x").Has("Dest"));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kOutlineItem, TPdfCopyOutcome::kKept), 3U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kOutlineItem, TPdfCopyOutcome::kDropped), 2U);
}

TEST(Outline, FollowsThatOfTheDocumentBefore) {
  EXPECT_EQ(TextOf({{Book("1").Bytes(), {0, 1}},
                    {TestPdf().Pages(2).Bytes(), {0, 1}},
                    {Book("2").Bytes(), {0, 1, 2, 3}}}),
            "1A(1) >1A1 2A(2) >2A1 >2A2(-1) >>2A2x 2B");
}

TEST(Outline, IsNotThereWithoutItems) {
  CopiedDocument copy({{TestPdf().Pages(2).Bytes(), {0, 1}}});
  EXPECT_FALSE(copy.Catalog().Has("Outlines"));
  CopiedDocument without({{Book().Bytes(), {0, 1}}}, kCopyLinks);
  EXPECT_FALSE(without.Catalog().Has("Outlines"));
}

TEST(Outline, EndsLoopsAndPassesOverNonsense) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/Outlines 10 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
      .Object(10, "<</First 11 0 R/Last 3 0 R/Count -9999999999>>")
      .Object(11, "<</Title 7/Next 12 0 R/First 11 0 R/C[(a)1 2]/F(b)/Dest[3 0 R/Fit]>>")
      .Object(12, "<</Title(b)/Next 11 0 R/First 10 0 R/Count true/A 12 0 R>>")
      .Object(13, "<</Title(lost)>>");
  CopiedDocument copy({{file.Table(), {0}}});
  EXPECT_EQ(copy.PageCount(), 1U);
  EXPECT_NE(Outline(copy).text().find("b"), std::string::npos);
}

TEST(Outline, TakesAnyDepthAndLength) {
  constexpr int kItems = 20'000;
  RawPdf file;
  file.Pages(1).Object(1, "<</Type/Catalog/Pages 2 0 R/Outlines<</First 10 0 R>>>>");
  for (int i = 0; i < kItems; ++i) {  // a chain downwards
    file.Object(10 + i, "<</Title(t)/Count 1/First " + std::to_string(11 + i) + " 0 R>>");
  }
  file.Object(10 + kItems, "<</Title(deepest)/Dest[3 0 R/Fit]>>");
  CopiedDocument copy({{file.Table(), {0}}});
  EXPECT_EQ(copy.Follow(copy.Catalog().Get("Outlines")).Get("Count").IntegerOr(0), kItems + 1);
}

TEST(Outline, SharesLongTitlesAsTheSourceDid) {
  const std::string title(5000, 'x');
  testing::RawPdf file;
  file.Pages(1).Object(1, "<</Type/Catalog/Pages 2 0 R/Outlines 10 0 R>>");
  file.Object(10, "<</First 11 0 R/Last 12 0 R>>")
      .Object(11, "<</Title 13 0 R/Parent 10 0 R/Next 12 0 R/Dest[3 0 R/Fit]>>")
      .Object(12, "<</Title 13 0 R/Parent 10 0 R/Prev 11 0 R/Dest[3 0 R/Fit]>>")
      .Object(13, "(" + title + ")");
  CopiedDocument copy({{file.Table()}});
  const pdf::Object first = copy.Get(copy.Get(copy.Catalog(), "Outlines"), "First");
  const pdf::Object second = copy.Get(first, "Next");
  EXPECT_EQ(copy.Get(first, "Title").Text(), title);
  EXPECT_NE(first.Get("Title").AsReference().number, 0U);
  EXPECT_EQ(first.Get("Title").AsReference().number, second.Get("Title").AsReference().number);
}

// Readers show such items closed (ISO 32000-2, table 151).
TEST(Outline, IsClosedWhereItDoesNotSayHowManyItemsAreOpen) {
  const auto text_of = [](const std::string& count) {
    return TextOf({{TestPdf()
                        .Pages(1)
                        .CatalogEntry("/Outlines {{root}}")
                        .Object("root", "<</First {{A}}/Last {{A}}>>")
                        .Object("A", "<</Title(A)/First {{B}}/Last {{C}}" + count + ">>")
                        .Object("B", "<</Title(B)/Next {{C}}>>")
                        .Object("C", "<</Title(C)/Prev {{B}}>>")
                        .Bytes()}});
  };
  EXPECT_EQ(text_of(""), "A(-2) >B >C");
  EXPECT_EQ(text_of("/Count 0"), "A(-2) >B >C");
  EXPECT_EQ(text_of("/Count -1"), "A(-2) >B >C");
  EXPECT_EQ(text_of("/Count 1"), "A(2) >B >C");
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
