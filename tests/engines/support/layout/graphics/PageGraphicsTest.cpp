// Which pictures and drawings have their place in the flow, and which lie behind the text.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/graphics/PageGraphics.h"
#include "engines/support/layout/text/PageText.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

PageGraphics GraphicsOf(const PageModel& page, const std::vector<std::uint32_t>& used = {},
                        const std::vector<pdf::Box>& tables = {}) {
  return FindGraphics(page, ReadPageText(page).upright.lines, used, tables);
}

PageGraphics GraphicsOf(MadePage& page) {
  return GraphicsOf(page.Take());
}

// A page with a line of text far below.
MadePage PageWithText() {
  MadePage page;
  page.Text(72, 700, U"text");
  return page;
}

TEST(PageGraphics, HavePicturesInTheFlow) {
  MadePage page = PageWithText();
  page.Image({100, 100, 400, 300}).Image({100, 400, 101.9, 401.9}).Image({500, 400, 514, 414});
  page.Image({500, 500, 514.1, 514}).Image({0, 0, 600, 680});
  const PageGraphics graphics = GraphicsOf(page);
  ASSERT_THAT(graphics.pictures, SizeIs(2));  // the second is too small to be seen
  EXPECT_THAT(graphics.pictures[0].images, ElementsAre(0));
  EXPECT_EQ(graphics.pictures[0].box.right, 400);
  EXPECT_EQ(graphics.pictures[0].box.top, 300);
  EXPECT_THAT(graphics.pictures[1].images, ElementsAre(3));
  // 85 % of the page, and a sign beside text.
  ASSERT_THAT(graphics.behind_pictures, SizeIs(2));
  EXPECT_THAT(graphics.behind_pictures[0].images, ElementsAre(4));
  EXPECT_THAT(graphics.behind_pictures[1].images, ElementsAre(2));
}

TEST(PageGraphics, CutPicturesAtThePage) {
  MadePage page = PageWithText();
  page.Image({-100, 100, 300, 900});
  const PageGraphics graphics = GraphicsOf(page);
  ASSERT_THAT(graphics.pictures, SizeIs(1));
  EXPECT_EQ(graphics.pictures[0].box.left, 0);
  EXPECT_EQ(graphics.pictures[0].box.top, 800);
}

TEST(PageGraphics, JoinPicturesThatTouch) {
  MadePage page = PageWithText();
  page.Image({100, 100, 200, 150}).Image({100, 151, 200, 200}).Image({100, 201.5, 200, 250});
  const PageGraphics graphics = GraphicsOf(page);
  ASSERT_THAT(graphics.pictures, SizeIs(2));
  EXPECT_THAT(graphics.pictures[0].images, ElementsAre(0, 1));
  EXPECT_EQ(graphics.pictures[0].box.bottom, 100);
  EXPECT_EQ(graphics.pictures[0].box.top, 200);
}

TEST(PageGraphics, LeavePicturesBehindTextThatRunsOverThem) {
  const auto is_behind = [](int lines, std::u32string_view text) {
    MadePage page = PageWithText();
    page.Image({100, 100, 400, 300});
    for (int i = 0; i < lines; ++i) {
      page.Text(110, 120 + 15 * i, text);
    }
    return GraphicsOf(page).pictures.empty();
  };
  EXPECT_TRUE(is_behind(5, U"a b c d e"));  // 25 words
  EXPECT_FALSE(is_behind(4, U"a b c d e f"));
  EXPECT_FALSE(is_behind(1, U"abcdefghijklmnopqrstuvwx"));  // 120 points, four tenths of it
  EXPECT_TRUE(is_behind(1, U"abcdefghijklmnopqrstuvwxy"));
}

TEST(PageGraphics, TakeAllPicturesOfAPageWithoutText) {
  MadePage page;
  page.Image({0, 0, 600, 800}).Image({500, 400, 510, 410});
  EXPECT_THAT(GraphicsOf(page).pictures, SizeIs(2));
}

TEST(PageGraphics, HaveTheDescriptionsOfTags) {
  PageModel page = PageWithText().Image({100, 100, 200, 150}).Image({100, 150, 200, 200}).Take();
  page.images[1].mark = 0;
  page.roles.push_back({.path = {"Figure"}, .description = "A figure", .language = {}});
  EXPECT_EQ(GraphicsOf(page).pictures.at(0).description, "A figure");
  page.images[1].mark = 1;
  EXPECT_EQ(GraphicsOf(page).pictures.at(0).description, "");
}

TEST(PageGraphics, HaveDrawingsInTheFlow) {
  MadePage page = PageWithText();
  page.Curve({100, 100, 200, 200}).Curve({206, 100, 300, 200}).Curve({307, 100, 400, 200});
  const PageGraphics graphics = GraphicsOf(page);
  ASSERT_THAT(graphics.drawings, SizeIs(2));  // parts may be six points away from each other
  EXPECT_THAT(graphics.drawings[0].paths, ElementsAre(0, 1));
  EXPECT_FALSE(graphics.drawings[0].is_simple);
  EXPECT_EQ(graphics.drawings[0].box.right, 300);
}

TEST(PageGraphics, LeaveSignsAndRulesBehind) {
  const auto is_behind = [](MadePage& page) { return GraphicsOf(page).drawings.empty(); };
  MadePage small = PageWithText();
  EXPECT_TRUE(is_behind(small.Curve({100, 100, 124, 124})));
  MadePage wider = PageWithText();
  EXPECT_FALSE(is_behind(wider.Curve({100, 100, 124.1, 124})));
  MadePage rule = PageWithText();
  EXPECT_TRUE(is_behind(rule.Field({100, 100, 300, 110})));
  MadePage field = PageWithText();
  EXPECT_FALSE(is_behind(field.Field({100, 100, 300, 110.1})));
  MadePage upright = PageWithText();
  EXPECT_TRUE(is_behind(upright.Field({100, 100, 110, 300})));
  MadePage curve = PageWithText();
  EXPECT_FALSE(is_behind(curve.Curve({100, 100, 300, 110})));
}

TEST(PageGraphics, LeaveFieldsBehindTheirText) {
  // Three and a half plain shapes for a line of text; four are a chart.
  const auto is_behind = [](int shapes) {
    MadePage page = PageWithText();
    for (int i = 0; i < shapes; ++i) {
      page.Field({100.0 + 50 * i, 100, 145.0 + 50 * i, 300});
    }
    page.Text(110, 200, U"label");
    return GraphicsOf(page).drawings.empty();
  };
  EXPECT_TRUE(is_behind(3));
  EXPECT_FALSE(is_behind(4));
}

TEST(PageGraphics, LeaveDrawingsAroundTablesBehind) {
  const PageModel page = PageWithText().Curve({100, 100, 300, 300}).Take();
  EXPECT_THAT(GraphicsOf(page, {}, {{100, 100, 300, 380}}).drawings, IsEmpty());
  EXPECT_THAT(GraphicsOf(page, {}, {{100, 100, 300, 400}}).drawings, SizeIs(1));
  EXPECT_THAT(GraphicsOf(page, {0}).drawings, IsEmpty());  // it belongs to something else
  EXPECT_THAT(GraphicsOf(page, {0}).behind_drawings, IsEmpty());
}

TEST(PageGraphics, AreSeen) {
  PageModel page = PageWithText()
                       .Field({100, 100, 300, 200})
                       .Field({100, 300, 101, 301})
                       .Field({700, 100, 900, 200})
                       .Take();
  page.paths[0].fill = Rgb{255, 255, 255};
  PageGraphics graphics = GraphicsOf(page);
  EXPECT_THAT(graphics.drawings, IsEmpty());
  EXPECT_THAT(graphics.behind_drawings, IsEmpty());
  page.paths[0].stroke = Rgb{};
  EXPECT_THAT(GraphicsOf(page).drawings, SizeIs(1));
}

TEST(PageGraphics, TellTheColourOfThePaper) {
  PageModel page = PageWithText().Field({0, 0, 600, 680}).Take();
  EXPECT_EQ(GraphicsOf(page).background, (Rgb{200, 30, 30}));
  page.paths[0].box.top = 679;
  EXPECT_FALSE(GraphicsOf(page).background.has_value());
  page.paths[0].box.top = 800;
  page.paths[0].fill = Rgb{255, 255, 255};
  EXPECT_FALSE(GraphicsOf(page).background.has_value());
}

}  // namespace
}  // namespace TarnixTools::engines
