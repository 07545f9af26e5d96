#include "pdf/content/PathBuilder.h"

#include <algorithm>
#include <span>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/content/Operands.h"

namespace TarnixTools::pdf {

namespace {

using Kind = PathSegment::Kind;

}  // namespace

bool PathBuilder::Run(const Operation& operation, const Matrix& matrix) {
  std::array<double, 6> number{};
  const auto count = static_cast<std::size_t>(std::max(OperandsOf(operation.code), 0));
  if (!LastNumbers(operation, std::span(number).first(count))) {
    return false;
  }
  const auto point = [&](std::size_t i) { return matrix.Apply(number[i], number[i + 1]); };
  switch (operation.code) {
    case OperatorCode("m"):
      Add({Kind::kMove, {Point{}, Point{}, point(0)}});
      break;
    case OperatorCode("l"):
      Add({Kind::kLine, {Point{}, Point{}, point(0)}});
      break;
    case OperatorCode("c"):
      Add({Kind::kCurve, {point(0), point(2), point(4)}});
      break;
    case OperatorCode("v"):
      Add({Kind::kCurve, {current_, point(0), point(2)}});
      break;
    case OperatorCode("y"):
      Add({Kind::kCurve, {point(0), point(2), point(2)}});
      break;
    case OperatorCode("re"):
      AddRectangle(number[0], number[1], number[2], number[3], matrix);
      break;
    default:
      Close();
  }
  return true;
}

void PathBuilder::AddRectangle(double x, double y, double width, double height,
                               const Matrix& matrix) {
  Add({Kind::kMove, {Point{}, Point{}, matrix.Apply(x, y)}});
  Add({Kind::kLine, {Point{}, Point{}, matrix.Apply(x + width, y)}});
  Add({Kind::kLine, {Point{}, Point{}, matrix.Apply(x + width, y + height)}});
  Add({Kind::kLine, {Point{}, Point{}, matrix.Apply(x, y + height)}});
  Close();
}

void PathBuilder::Clear() {
  segments_.clear();
  has_points_ = false;
  is_whole_ = true;
  start_ = {};
  current_ = {};
}

bool PathBuilder::IsRectangle() const {
  const bool is_closed = !segments_.empty() && segments_.back().kind == Kind::kClose;
  const std::size_t count = segments_.size() - (is_closed ? 1 : 0);
  if (count < 4 || count > 5 || segments_[0].kind != Kind::kMove ||
      !std::all_of(segments_.begin() + 1, segments_.begin() + static_cast<std::ptrdiff_t>(count),
                   [](const PathSegment& segment) { return segment.kind == Kind::kLine; })) {
    return false;
  }
  const auto corner = [this](std::size_t i) { return segments_[i].end(); };
  const bool begins_across = corner(0).y == corner(1).y && corner(1).x == corner(2).x &&
                             corner(2).y == corner(3).y && corner(3).x == corner(0).x;
  const bool begins_upright = corner(0).x == corner(1).x && corner(1).y == corner(2).y &&
                              corner(2).x == corner(3).x && corner(3).y == corner(0).y;
  return (begins_across || begins_upright) && (count == 4 || corner(4) == corner(0));
}

void PathBuilder::Add(const PathSegment& segment) {
  if (segment.kind == Kind::kClose) {
    current_ = start_;
  } else {
    for (std::size_t i = segment.kind == Kind::kCurve ? 0 : 2; i < segment.points.size(); ++i) {
      Include(segment.points[i]);
    }
    current_ = segment.end();
    start_ = segment.kind == Kind::kMove ? current_ : start_;
  }
  if (segments_.size() < limits::kMaxPathSegments) {
    segments_.push_back(segment);
  } else {
    is_whole_ = false;
  }
}

void PathBuilder::Include(const Point& point) {
  if (!std::exchange(has_points_, true)) {
    box_ = {point.x, point.y, point.x, point.y};
    return;
  }
  box_ = {std::min(box_.left, point.x), std::min(box_.bottom, point.y),
          std::max(box_.right, point.x), std::max(box_.top, point.y)};
}

}  // namespace TarnixTools::pdf
