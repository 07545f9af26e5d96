// What becomes shapes of Office files, and how they are turned and filled.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_TEXT_DRAWNSHAPES_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_TEXT_DRAWNSHAPES_H_

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "engines/office/writers/package/XmlWriter.h"
#include "engines/support/layout/PageLayout.h"

namespace TarnixTools::engines::office {

// A drawing of more rectangles and lines than these is a picture.
inline constexpr std::size_t kMostShapes = 60;

inline constexpr double kSmallestSide = 0.01;  // points; programs refuse what has no size

// Whether a drawing is written as shapes of its own.
inline bool IsDrawnAsShapes(const Drawing& drawing) {
  return drawing.is_simple && drawing.paths.size() <= kMostShapes;
}

// Whether a path is drawn as a line. A rule that is painted as a thin area is that area: a line shows
// no filling.
inline bool IsDrawnAsLine(const PathShape& path) {
  return path.kind == PathShape::Kind::kLine && !path.fill;
}

// The angle from 0 up to 360 degrees.
inline double Turned(double angle) {
  const double rest = std::isfinite(angle) ? std::fmod(angle, 360.0) : 0;
  return rest < 0 ? rest + 360 : rest;
}

// How a shape, a line or a cell is filled (ECMA-376 part 1, 20.1.8); nothing: not at all.
void WriteFill(XmlWriter& xml, const std::optional<Rgb>& color);

// A line falls from its upper-left corner, or rises from its lower-left one.
enum class ShapeForm : std::uint8_t { kRectangle, kFallingLine, kRisingLine };

// The place and the form of a shape: a:xfrm and a:prstGeom. angle: degrees clockwise, from 0 up to
// 360.
void WriteForm(XmlWriter& xml, const pdf::Box& box, double angle = 0,
               ShapeForm form = ShapeForm::kRectangle);

// A path as a shape at the box: its form, its filling and its line.
void WritePath(XmlWriter& xml, const PathShape& path, const pdf::Box& box);

// The images of a picture, as they lie on the page.
std::vector<ImagePlace> PlacesOf(const Picture& picture, const PageModel& page);

// Whether lines that are turned by an angle of Turned run straight down or up.
inline bool IsQuarter(double angle) {
  return std::abs(angle - 90) < 1 || std::abs(angle - 270) < 1;
}

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_TEXT_DRAWNSHAPES_H_
