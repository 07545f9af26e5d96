// The path that content is about to paint or to clip with (ISO 32000-2, 8.5.2).
#ifndef TARNIX_PDF_CONTENT_PATHBUILDER_H_
#define TARNIX_PDF_CONTENT_PATHBUILDER_H_

#include <array>
#include <cstdint>
#include <vector>

#include "pdf/Box.h"
#include "pdf/Matrix.h"
#include "pdf/content/ContentReader.h"

namespace TarnixTools::pdf {

struct PathSegment {
  enum class Kind : std::uint8_t { kMove, kLine, kCurve, kClose };

  Kind kind = Kind::kMove;
  // Where it ends comes last; a curve has two handles before that. None of a segment that closes.
  std::array<Point, 3> points;

  const Point& end() const { return points[2]; }
};

class PathBuilder {
 public:
  // An operator of OperatorGroup::kPath; its points go through the matrix. False: it has too few
  // operands, and nothing is done.
  bool Run(const Operation& operation, const Matrix& matrix);

  void Close() { Add({PathSegment::Kind::kClose, {}}); }

  void Clear();

  const std::vector<PathSegment>& segments() const { return segments_; }

  // Around all points, those of handles too. Empty for no path.
  Box box() const { return has_points_ ? box_ : Box{}; }

  // Whether all segments are there; the box counts more than limits::kMaxPathSegments.
  bool is_whole() const { return is_whole_; }

  // Whether it is one rectangle along the axes.
  bool IsRectangle() const;

 private:
  void AddRectangle(double x, double y, double width, double height, const Matrix& matrix);
  void Add(const PathSegment& segment);
  void Include(const Point& point);

  std::vector<PathSegment> segments_;
  Box box_;
  Point start_;    // of the subpath
  Point current_;  // where it has got to
  bool has_points_ = false;
  bool is_whole_ = true;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_PATHBUILDER_H_
