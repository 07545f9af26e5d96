#include "engines/office/writers/text/DrawnShapes.h"

#include <algorithm>

#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kThinnestLine = 0.1;  // points; thinner ones are not seen

ShapeForm FormOf(const PathShape& path) {
  if (!IsDrawnAsLine(path)) {
    return ShapeForm::kRectangle;
  }
  return path.rises ? ShapeForm::kRisingLine : ShapeForm::kFallingLine;
}

}  // namespace

void WriteFill(XmlWriter& xml, const std::optional<Rgb>& color) {
  if (!color) {
    xml.Leaf("a:noFill");
    return;
  }
  xml.Open("a:solidFill");
  xml.Leaf("a:srgbClr", {{"val", Hex(*color)}});
  xml.Close();
}

void WriteForm(XmlWriter& xml, const pdf::Box& box, double angle, ShapeForm form) {
  const bool is_line = form != ShapeForm::kRectangle;
  const double least = is_line ? 0 : kSmallestSide;
  xml.Open("a:xfrm");
  if (angle != 0) {
    xml.Attribute({"rot", Rounded(angle, 60'000)});
  }
  if (form == ShapeForm::kRisingLine) {
    xml.Attribute({"flipV", 1});
  }
  xml.Leaf("a:off", {{"x", Emu(box.left)}, {"y", Emu(UpperEdge(box))}});
  xml.Leaf("a:ext",
           {{"cx", Emu(std::max(box.width(), least))}, {"cy", Emu(std::max(box.height(), least))}});
  xml.Close();
  xml.Open("a:prstGeom", {{"prst", is_line ? "line" : "rect"}});
  xml.Leaf("a:avLst");
  xml.Close();
}

void WritePath(XmlWriter& xml, const PathShape& path, const pdf::Box& box) {
  WriteForm(xml, box, 0, FormOf(path));
  WriteFill(xml, path.fill);
  xml.Open("a:ln");
  if (path.stroke) {
    xml.Attribute({"w", LineEmu(std::max(path.line_width, kThinnestLine))});
  }
  WriteFill(xml, path.stroke);
  xml.Close();
}

std::vector<ImagePlace> PlacesOf(const Picture& picture, const PageModel& page) {
  std::vector<ImagePlace> images;
  for (const std::uint32_t number : picture.images) {
    if (number < page.images.size()) {
      images.push_back(page.images[number]);
    }
  }
  return images;
}

}  // namespace TarnixTools::engines::office
