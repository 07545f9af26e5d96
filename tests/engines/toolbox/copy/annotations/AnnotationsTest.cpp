#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "support/RawPdf.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TestPdf;

std::uint32_t NumberAt(CopiedDocument& copy, std::size_t page, std::size_t index) {
  return copy.Follow(copy.Page(page).Get("Annots")).Items()[index].AsReference().number;
}

// A page with a note, its popup and a reply to it.
constexpr const char* kNote = "<</Type/Annot/Subtype/Text/Popup 11 0 R/P 3 0 R/AP<</N 13 0 R>>>>";
constexpr const char* kPopup = "<</Type/Annot/Subtype/Popup/Parent 10 0 R/Open true>>";
constexpr const char* kReply =
    "<</Type/Annot/Subtype/Text/IRT 10 0 R/RT/Group/Contents(reply)/AF[14 0 R]>>";

std::string Notes(const std::string& list = "[12 0 R 10 0 R 11 0 R]") {
  RawPdf file;
  file.Pages(2)
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots" + list + ">>")
      .Object(10, kNote)
      .Object(11, kPopup)
      .Object(12, kReply)
      .Stream(13, "/Subtype/Form/BBox[0 0 1 1]", "0 0 m")
      .Object(14, "<</Type/Filespec/F(a.txt)>>");
  return file.Table();
}

TEST(Annotations, KeepTheirRelations) {
  CopiedDocument copy({{Notes(), {0}}});
  const auto all = copy.Annotations(0);
  ASSERT_EQ(all.size(), 3U);
  EXPECT_EQ(all[0].Get("IRT").AsReference().number, NumberAt(copy, 0, 1));
  EXPECT_TRUE(all[0].Get("RT").IsName("Group"));
  EXPECT_EQ(copy.Follow(all[0].Get("AF").Items()[0]).Get("F").Text(), "a.txt");
  EXPECT_EQ(all[1].Get("Popup").AsReference().number, NumberAt(copy, 0, 2));
  EXPECT_EQ(copy.Text(copy.Follow(all[1].Get("AP").Get("N")).Get("BBox")), "[0 0 1 1]");
  EXPECT_EQ(all[2].Get("Parent").AsReference().number, NumberAt(copy, 0, 1));
  EXPECT_TRUE(all[2].Get("Open").BooleanOr(false));
  for (const Object& one : all) {
    EXPECT_EQ(one.Get("P").AsReference().number, copy.PageNumber(0));
  }
}

TEST(Annotations, RelateToTheirOwnCopies) {
  CopiedDocument copy({{Notes(), {0, 1, 0}}});
  for (const std::size_t page : {0U, 2U}) {
    const auto all = copy.Annotations(page);
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(all[0].Get("IRT").AsReference().number, NumberAt(copy, page, 1));
    EXPECT_EQ(all[1].Get("Popup").AsReference().number, NumberAt(copy, page, 2));
    EXPECT_EQ(all[2].Get("Parent").AsReference().number, NumberAt(copy, page, 1));
    EXPECT_EQ(all[2].Get("P").AsReference().number, copy.PageNumber(page));
  }
  EXPECT_NE(NumberAt(copy, 0, 0), NumberAt(copy, 2, 0));
}

TEST(Annotations, BringPopupsThatThePageDoesNotList) {
  CopiedDocument copy({{Notes("[10 0 R]"), {0, 0}}});
  for (const std::size_t page : {0U, 1U}) {
    const Object popup = copy.Follow(copy.Annotations(page)[0].Get("Popup"));
    EXPECT_TRUE(popup.Get("Subtype").IsName("Popup"));
    EXPECT_EQ(popup.Get("Parent").AsReference().number, NumberAt(copy, page, 0));
    EXPECT_EQ(popup.Get("P").AsReference().number, copy.PageNumber(page));
  }
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("Subtype").IsName("Popup"); }), 2);
}

TEST(Annotations, LeavePopupsAndRepliesOfOthersBehind) {
  CopiedDocument copy({{Notes("[11 0 R 12 0 R]"), {0}}});
  const auto all = copy.Annotations(0);
  ASSERT_EQ(all.size(), 1U) << "the popup has no parent on the page";
  EXPECT_FALSE(all[0].Has("IRT"));
  EXPECT_FALSE(all[0].Has("RT"));
  EXPECT_EQ(all[0].Get("Contents").Text(), "reply");
}

TEST(Annotations, AreListedOnce) {
  CopiedDocument copy({{Notes("[10 0 R 10 0 R 12 0 R 10 0 R]"), {0}}});
  EXPECT_EQ(copy.Annotations(0).size(), 2U);
}

TEST(Annotations, SharedByTwoPagesBecomeTwo) {
  RawPdf file;
  file.Pages(3, "/MediaBox[0 0 9 9]/Annots 20 0 R")
      .Object(20, "[10 0 R 11 0 R]")
      .Object(10, kNote)
      .Object(11, kPopup)
      .Stream(13, "", "x");
  CopiedDocument copy({{file.Table(), {1, 0}}});
  EXPECT_NE(NumberAt(copy, 0, 0), NumberAt(copy, 1, 0));
  for (const std::size_t page : {0U, 1U}) {
    const auto all = copy.Annotations(page);
    EXPECT_EQ(all[0].Get("P").AsReference().number, copy.PageNumber(page));
    EXPECT_EQ(all[1].Get("Parent").AsReference().number, NumberAt(copy, page, 0));
  }
}

TEST(Annotations, AreFoundByWhatComesBeforeTheirPage) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .PageEntry("/PieceInfo<</X {{on c}}>>")
                                .Annotation("/Subtype/Widget/A<</S/Hide/T[{{on c}} {{on b}}]>>")
                                .Page("b")
                                .PageEntry("/Annots[{{on b}}]")
                                .Page("c")
                                .PageEntry("/Annots[{{on c}}]")
                                .Object("on b", "<</Subtype/Text/Contents(b)>>")
                                .Object("on c", "<</Subtype/Text/Contents(c)>>")
                                .Bytes();
  CopiedDocument copy({{bytes, {0, 2}}});
  const Object hidden = copy.Follow(copy.Annotations(0)[0].Get("A")).Get("T");
  EXPECT_EQ(hidden.Items()[0].AsReference().number, NumberAt(copy, 1, 0));
  EXPECT_EQ(copy.Page(0).Get("PieceInfo").Get("X").AsReference().number, NumberAt(copy, 1, 0));
  EXPECT_TRUE(hidden.Items()[1].IsNull()) << "its page is not copied";
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("Contents").Text() == "b"; }), 0);
}

TEST(Annotations, RemoveLinksThatLeadNowhere) {
  const std::string bytes =
      TestPdf()
          .Page("a")
          .Annotation("/Subtype/Link/Dest[{{page 2}}/Fit]/AP<</N {{look}}>>")
          .Annotation("/Subtype/Link/A<</S/GoTo/D[{{page 2}}/Fit]>>/PA<</S/URI/URI(u)>>")
          .Annotation("/Subtype/Link/A<</S/URI/URI(u)>>")
          .Annotation("/Subtype/Link/A<</S/JavaScript/JS(beep)>>")
          .Annotation("/Subtype/Link/Contents(without any)")
          .Annotation(
              "/Subtype/Screen/A<</S/GoTo/D[{{page 2}}/Fit]>>/AA<</E<</S/GoTo/D[{{page 1}}"
              "/Fit]>>/X<</S/GoTo/D[{{page 2}}/Fit]>>>>")
          .Page("b")
          .Object("look", "<</Marker 1>>")
          .Bytes();
  CopiedDocument copy({{bytes, {0}}});
  const auto all = copy.Annotations(0);
  ASSERT_EQ(all.size(), 4U);
  EXPECT_EQ(all[0].Get("A").Get("URI").Text(), "u");
  EXPECT_EQ(all[1].Get("A").Get("JS").Text(), "beep");
  EXPECT_EQ(all[2].Get("Contents").Text(), "without any");
  EXPECT_FALSE(all[3].Has("A"));
  EXPECT_EQ(copy.Place(all[3].Get("AA").Get("E").Get("D")), "0/Fit");
  EXPECT_FALSE(all[3].Get("AA").Has("X"));
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Has("Marker"); }), 0)
      << "nothing of a removed link stays";
}

TEST(Annotations, ComeAsTheOptionsSay) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .Annotation("/Subtype/Link/Dest[{{page 1}}/Fit]")
                                .Annotation("/Subtype/Text")
                                .Annotation("/Subtype/Widget")
                                .Bytes();
  const auto subtype = [&](int options) {
    CopiedDocument copy({{bytes, {0}}}, options);
    const auto all = copy.Annotations(0);
    return all.size() == 1 ? std::string(all[0].Get("Subtype").Text()) : std::to_string(all.size());
  };
  EXPECT_EQ(subtype(kCopyLinks), "Link");
  EXPECT_EQ(subtype(kCopyAnnotations), "Text");
  EXPECT_EQ(subtype(kCopyFormFields), "Widget");
  EXPECT_EQ(subtype(0), "0");
}

TEST(Annotations, SurvivesNonsense) {
  RawPdf file;
  file.Pages(2)
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots[3 0 R 2 0 R 1 0 R 99 0 R null 7"
              "(a)[]<<>>10 0 R 11 0 R 12 0 R 13 0 R]>>")
      .Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Annots 4 0 R>>")
      .Object(10, "<</Subtype/Text/IRT 10 0 R/Popup 10 0 R/Parent 3 0 R>>")
      .Object(11, "<</Subtype/Text/IRT 4 0 R/Popup 3 0 R/A 11 0 R/AA 7>>")
      .Object(12, "<</Subtype/Popup/Parent 12 0 R/Popup 12 0 R>>")
      .Object(13, "13 0 R");
  CopiedDocument copy({{file.Table(), {0, 1, 0}}});
  EXPECT_EQ(copy.PageCount(), 3U);
  EXPECT_EQ(copy.Count([](const Object& o) { return o.Get("Type").IsName("Page"); }), 3);
}

TEST(Annotations, LeaveOutWhatIsNone) {
  RawPdf file;
  file.Pages(2)
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 10 0 R/Resources 11 0 R>>")
      .Object(4,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 10 0 R/Resources 11 0 R"
              "/Annots[1 0 R 10 0 R 11 0 R 12 0 R 13 0 R 99 0 R]>>")
      .Stream(10, "", "0 0 m")
      .Object(11, "<</Font<</F 12 0 R>>>>")
      .Object(12, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(13, "<</Type/Annot/Subtype/Text/Rect[0 0 9 9]>>");
  for (const std::vector<int>& pages : {std::vector<int>{0, 1}, {1}, {1, 1}, {0}}) {
    CopiedDocument copy({{file.Table(), pages}});
    for (std::size_t page = 0; page < pages.size(); ++page) {
      EXPECT_EQ(copy.Annotations(page).size(), pages[page] == 0 ? 0U : 1U);
      EXPECT_EQ(copy.Data(copy.Page(page).Get("Contents")), "0 0 m");
      if (pages.size() == 2 && pages[0] != pages[1]) {  // else it is left out, being unused
        const Object fonts = copy.Get(copy.Page(page).Get("Resources"), "Font");
        EXPECT_EQ(copy.Get(copy.Get(fonts, "F"), "BaseFont").Text(), "Helvetica");
      }
    }
  }
}

TEST(Annotations, AreNotCopiedWithoutEnd) {
  constexpr int kPages = 80;
  RawPdf file;
  file.Pages(kPages, "/MediaBox[0 0 9 9]/Annots[1000 0 R]");
  file.Object(1000, "<</Subtype/Text/Contents(" + std::string(1 << 20, 'x') + ")>>");
  CopiedDocument copy({{file.Table()}});
  ASSERT_EQ(copy.PageCount(), static_cast<std::size_t>(kPages));
  EXPECT_EQ(copy.Annotations(0).size(), 1U);
  EXPECT_EQ(copy.Annotations(1).size(), 1U);
  EXPECT_EQ(copy.Annotations(kPages - 1).size(), 0U);
  EXPECT_GT(copy.Reported(TPdfCopiedKind::kAnnotation, TPdfCopyOutcome::kDropped), 0U);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
