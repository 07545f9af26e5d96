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
