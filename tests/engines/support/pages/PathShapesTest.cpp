#include <gtest/gtest.h>

#include "engines/support/pages/PathShapes.h"

namespace TarnixTools::engines {
namespace {

using pdf::PathSegment;

// What a stroked line from one point to another becomes within a clip.
std::vector<PathShape> LineShapes(const pdf::Point& from, const pdf::Point& to,
                                  const pdf::Box& clip = pdf::Clip::kEndless) {
  const std::vector<PathSegment> segments = {{PathSegment::Kind::kMove, {{{}, {}, from}}},
                                             {PathSegment::Kind::kLine, {{{}, {}, to}}}};
  pdf::GraphicsState state;
  state.clip.box = clip;
  const pdf::PathUse path{.segments = segments, .box = {}, .strokes = true, .state = state};
  return ShapesOf(path);
}

// A rectangle of a path, run through from its lower-left corner.
struct Ring {
  pdf::Box box;
  bool goes_right = true;
};

// What rectangles become that one path fills, and strokes.
std::vector<PathShape> AreaShapes(const std::vector<Ring>& rings, pdf::FillRule rule,
                                  bool strokes = false) {
  std::vector<PathSegment> segments;
  for (const auto& [box, goes_right] : rings) {
    const pdf::Point right{box.right, box.bottom};
    const pdf::Point left{box.left, box.top};
    segments.push_back({PathSegment::Kind::kMove, {{{}, {}, {box.left, box.bottom}}}});
    segments.push_back({PathSegment::Kind::kLine, {{{}, {}, goes_right ? right : left}}});
    segments.push_back({PathSegment::Kind::kLine, {{{}, {}, {box.right, box.top}}}});
    segments.push_back({PathSegment::Kind::kLine, {{{}, {}, goes_right ? left : right}}});
    segments.push_back({PathSegment::Kind::kClose, {}});
  }
  pdf::GraphicsState state;
  return ShapesOf({.segments = segments,
                   .box = rings.front().box,
                   .fills = true,
                   .strokes = strokes,
                   .rule = rule,
                   .state = state});
}

constexpr auto kEvenOdd = pdf::FillRule::kEvenOdd;
constexpr auto kNonZero = pdf::FillRule::kNonZero;

TEST(PathShapes, LeaveTheHoleOfAFrameOpen) {
  const pdf::Box outer{0, 0, 100, 50};
  const pdf::Box inner{1, 10, 99, 40};
  for (const auto& shapes : {AreaShapes({{outer}, {inner}}, kEvenOdd),
                             AreaShapes({{inner, false}, {outer}}, kNonZero)}) {
    ASSERT_EQ(shapes.size(), 4u);
    EXPECT_EQ(shapes[0].box, (pdf::Box{0, 0, 100, 10}));
    EXPECT_EQ(shapes[0].kind, PathShape::Kind::kRectangle);
    EXPECT_EQ(shapes[1].box, (pdf::Box{0, 40, 100, 50}));
    EXPECT_EQ(shapes[2].box, (pdf::Box{0, 10, 1, 40}));
    EXPECT_EQ(shapes[2].kind, PathShape::Kind::kLine);
    EXPECT_EQ(shapes[3].box, (pdf::Box{99, 10, 100, 40}));
  }
}

TEST(PathShapes, LeaveAHoleOpenHoweverSmallItIs) {
  const pdf::Box outer{0, 0, 0.6, 0.6};
  const pdf::Box inner{0.1, 0.1, 0.5, 0.5};
  EXPECT_EQ(AreaShapes({{outer}, {inner, false}}, kNonZero).size(), 4u);
  EXPECT_EQ(AreaShapes({{outer, false}, {inner}}, kNonZero).size(), 4u);
  EXPECT_EQ(AreaShapes({{outer}, {inner}}, kNonZero).size(), 2u);
}

TEST(PathShapes, KeepRectanglesWithoutHoles) {
  const pdf::Box outer{0, 0, 100, 50};
  EXPECT_EQ(AreaShapes({{outer}, {{1, 10, 99, 40}}}, kNonZero).size(), 2u);
  EXPECT_EQ(AreaShapes({{outer}, {{200, 10, 299, 40}}}, kEvenOdd).size(), 2u);
  EXPECT_EQ(AreaShapes({{outer}, {{50, 10, 199, 40}}}, kEvenOdd).size(), 2u);
  EXPECT_EQ(AreaShapes({{outer}, {outer}}, kNonZero).size(), 2u);
  EXPECT_EQ(AreaShapes({{outer}}, kEvenOdd, true).size(), 1u);
}

TEST(PathShapes, LeaveARectangleOutThatItsHoleCovers) {
  const auto shapes = AreaShapes({{{0, 0, 100, 50}}, {{0, 10, 100, 50}}}, kEvenOdd);
  ASSERT_EQ(shapes.size(), 1u);
  EXPECT_EQ(shapes[0].box, (pdf::Box{0, 0, 100, 10}));
}

TEST(PathShapes, AreOneShapeForSeveralHoles) {
  const pdf::Box outer{0, 0, 100, 50};
  for (const auto& shapes :
       {AreaShapes({{outer}, {{10, 10, 20, 40}}, {{30, 10, 40, 40}}}, kEvenOdd),
        AreaShapes({{outer}, {{10, 10, 90, 40}}, {{20, 20, 40, 30}}}, kEvenOdd),
        AreaShapes({{{20, 20, 40, 30}}, {{10, 10, 90, 40}}, {outer}}, kEvenOdd),
        AreaShapes({{outer}, {{10, 10, 90, 40}}}, kEvenOdd, true)}) {
    ASSERT_EQ(shapes.size(), 1u);
    EXPECT_EQ(shapes[0].kind, PathShape::Kind::kOther);
  }
}

TEST(PathShapes, TellWhichWayALineLeads) {
  for (const bool is_backward : {false, true}) {
    const pdf::Point left{10, 10};
    const pdf::Point lower{60, 40};
    const pdf::Point upper{60, -20};
    const auto falling = is_backward ? LineShapes(lower, left) : LineShapes(left, lower);
    const auto rising = is_backward ? LineShapes(upper, left) : LineShapes(left, upper);
    ASSERT_EQ(falling.size(), 1u);
    ASSERT_EQ(rising.size(), 1u);
    EXPECT_EQ(rising[0].kind, PathShape::Kind::kLine);
    EXPECT_TRUE(rising[0].rises);
    EXPECT_FALSE(falling[0].rises);
  }
}

TEST(PathShapes, KeepALineAlongAnAxisThatIsCut) {
  const auto shapes = LineShapes({10, 10}, {60, 10}, {0, 0, 30, 30});
  ASSERT_EQ(shapes.size(), 1u);
  EXPECT_EQ(shapes[0].kind, PathShape::Kind::kLine);
  EXPECT_EQ(shapes[0].box.right, 30);
}

TEST(PathShapes, KeepNoSlantedLineThatIsCut) {
  const auto shapes = LineShapes({10, 10}, {60, 40}, {0, 0, 30, 40});
  ASSERT_EQ(shapes.size(), 1u);
  EXPECT_EQ(shapes[0].kind, PathShape::Kind::kOther);
}

}  // namespace
}  // namespace TarnixTools::engines
