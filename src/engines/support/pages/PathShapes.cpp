#include "engines/support/pages/PathShapes.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>

#include "engines/support/pages/FilledAreas.h"

namespace TarnixTools::engines {

namespace {

using pdf::Box;
using pdf::PathSegment;
using pdf::Point;

constexpr double kThinRule = 3;          // points: a filled rectangle as thin as that is a line
constexpr double kAligned = 0.1;         // points that a line along an axis may be off
constexpr std::size_t kMaxCorners = 64;  // of a subpath of straight lines

bool IsAlongAxis(const Point& a, const Point& b) {
  return std::abs(a.x - b.x) <= kAligned || std::abs(a.y - b.y) <= kAligned;
}

bool IsSame(const Point& a, const Point& b) {
  return std::abs(a.x - b.x) <= kAligned && std::abs(a.y - b.y) <= kAligned;
}

// The corners of a subpath of straight lines, without those that come twice; the first one again at
// the end of a closed one. Nothing for one with curves or with very many.
std::optional<std::vector<Point>> CornersOf(std::span<const PathSegment> subpath, bool is_closed) {
  std::vector<Point> corners;
  for (const PathSegment& segment : subpath) {
    if (segment.kind == PathSegment::Kind::kCurve || corners.size() > kMaxCorners) {
      return std::nullopt;
    }
    if (segment.kind == PathSegment::Kind::kClose) {
      is_closed = true;
    } else if (corners.empty() || !IsSame(corners.back(), segment.end())) {
      corners.push_back(segment.end());
    }
  }
  if (is_closed && corners.size() > 1 && !IsSame(corners.front(), corners.back())) {
    corners.push_back(corners.front());
  }
  return corners;
}

Box BoxOf(std::span<const Point> points) {
  Box box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const Point& point : points) {
    box.left = std::min(box.left, point.x);
    box.right = std::max(box.right, point.x);
    box.bottom = std::min(box.bottom, point.y);
    box.top = std::max(box.top, point.y);
  }
  return box;
}

bool AreAlongAxes(std::span<const Point> corners) {
  for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
    if (!IsAlongAxis(corners[i], corners[i + 1])) {
      return false;
    }
  }
  return true;
}

bool IsRectangle(std::span<const Point> corners) {
  return corners.size() == 5 && AreAlongAxes(corners) && IsSame(corners[0], corners[4]) &&
         !IsAlongAxis(corners[0], corners[2]);
}

// Of a rectangle, as the numbers of the space grow.
bool IsClockwise(std::span<const Point> corners) {
  double area = 0;
  for (std::size_t i = 0; i + 1 < corners.size(); ++i) {
    area += corners[i].x * corners[i + 1].y - corners[i + 1].x * corners[i].y;
  }
  return area > 0;
}

void Add(std::vector<PathShape>& shapes, PathShape::Kind kind, const Box& box) {
  PathShape shape;
  shape.kind = kind;
  shape.box = box;
  shapes.push_back(shape);
}

void AddLine(std::vector<PathShape>& shapes, std::span<const Point> ends) {
  Add(shapes, PathShape::Kind::kLine, BoxOf(ends));
  shapes.back().rises = (ends[1].x - ends[0].x) * (ends[1].y - ends[0].y) < 0;
}

void AddFilled(std::vector<PathShape>& shapes, const Box& box) {
  const bool is_thin = std::min(box.width(), box.height()) <= kThinRule;
  Add(shapes, is_thin ? PathShape::Kind::kLine : PathShape::Kind::kRectangle, box);
}

// False for a subpath that is neither a line nor a rectangle, nor made of lines along the axes.
//   areas - takes the rectangles of a path that fills
bool AddSubpath(std::span<const PathSegment> subpath, bool fills, std::vector<PathShape>& shapes,
                std::vector<FilledArea>& areas) {
  const auto corners = CornersOf(subpath, fills);
  if (!corners) {
    return false;
  }
  if (corners->size() < 2) {
    return true;
  }
  const Box box = BoxOf(*corners);
  const bool is_thin = std::min(box.width(), box.height()) <= kThinRule;
  if (IsRectangle(*corners)) {
    if (fills) {
      areas.push_back({box, IsClockwise(*corners)});
    } else {
      Add(shapes, PathShape::Kind::kRectangle, box);
    }
    return true;
  }
  if (fills && is_thin && AreAlongAxes(*corners)) {
    Add(shapes, PathShape::Kind::kLine, box);
    return true;
  }
  if (fills || (corners->size() > 2 && !AreAlongAxes(*corners))) {
    return false;
  }
  for (std::size_t i = 0; i + 1 < corners->size(); ++i) {
    AddLine(shapes, std::span(*corners).subspan(i, 2));
  }
  return true;
}

bool HaveHoles(std::span<const FilledArea> areas, std::span<const Box> painted) {
  return !std::equal(areas.begin(), areas.end(), painted.begin(), painted.end(),
                     [](const FilledArea& area, const Box& box) { return area.box == box; });
}

bool AddSubpaths(const pdf::PathUse& path, std::vector<PathShape>& shapes) {
  const std::span<const PathSegment> segments = path.segments;
  std::vector<FilledArea> areas;
  std::size_t begin = 0;
  while (begin < segments.size()) {
    std::size_t end = begin + 1;
    while (end < segments.size() && segments[end].kind != PathSegment::Kind::kMove) {
      ++end;
    }
    if (!AddSubpath(segments.subspan(begin, end - begin), path.fills, shapes, areas)) {
      return false;
    }
    begin = end;
  }
  const auto boxes = PaintedBoxes(areas, path.rule);
  if (!boxes || (path.strokes && HaveHoles(areas, *boxes))) {
    return false;
  }
  for (const Box& box : *boxes) {
    AddFilled(shapes, box);
  }
  return path.is_whole;
}

// Unlike boxes of areas, those of lines may have no width.
bool ClipTo(const Box& clip, Box& box) {
  box.left = std::max(box.left, clip.left);
  box.right = std::min(box.right, clip.right);
  box.bottom = std::max(box.bottom, clip.bottom);
  box.top = std::min(box.top, clip.top);
  return box.left <= box.right && box.bottom <= box.top;
}

// Whether a line with this box is along no axis.
bool IsSlanted(const Box& box) {
  return box.width() > kAligned && box.height() > kAligned;
}

// False for a shape that the clip leaves nothing of. What it leaves of a slanted line need not lead
// from corner to corner.
bool ClipShape(const pdf::PathUse& path, PathShape& shape) {
  const Box whole = shape.box;
  const bool is_seen = ClipTo(path.state.clip.box, shape.box);
  const bool is_cut = shape.box != whole;
  if (is_cut && shape.kind == PathShape::Kind::kLine && !path.fills && IsSlanted(whole)) {
    shape.kind = PathShape::Kind::kOther;
  }
  return is_seen;
}

}  // namespace

std::vector<PathShape> ShapesOf(const pdf::PathUse& path) {
  std::vector<PathShape> shapes;
  if (!AddSubpaths(path, shapes)) {
    shapes.clear();
    Add(shapes, PathShape::Kind::kOther, path.box);
  }
  std::erase_if(shapes, [&](PathShape& shape) { return !ClipShape(path, shape); });
  return shapes;
}

}  // namespace TarnixTools::engines
