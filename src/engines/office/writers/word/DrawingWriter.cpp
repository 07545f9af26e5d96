#include "engines/office/writers/word/DrawingWriter.h"

#include "engines/office/layout/Boxes.h"
#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/Units.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSmallestSide = 0.01;  // points; programs refuse what has no size
constexpr std::string_view kPictureUri = "http://schemas.openxmlformats.org/drawingml/2006/picture";
constexpr std::string_view kShapeUri =
    "http://schemas.microsoft.com/office/word/2010/wordprocessingShape";

std::int64_t Side(double points) {
  return Emu(std::max(points, kSmallestSide));
}

void WriteExtent(XmlWriter& xml, std::string_view name, const pdf::Box& box) {
  xml.Leaf(name, {{"cx", Side(box.width())}, {"cy", Side(box.height())}});
}

void WriteProperties(Story& story, const std::string& description) {
  const std::uint32_t number = ++story.context.drawing_count;
  story.xml.Open("wp:docPr", {{"id", number}, {"name", "Object " + std::to_string(number)}});
  if (!description.empty()) {
    story.xml.Attribute({"descr", description});
  }
  story.xml.Close();
}

void WriteGraphicPicture(Story& story, const OfficePicture& picture, const pdf::Box& box) {
  const std::string name = story.context.package.AddPicture("word/", picture);
  const std::string id = story.relationships.Add(kPictureRelation, name);
  XmlWriter& xml = story.xml;
  xml.Leaf("wp:cNvGraphicFramePr");
  xml.Open("a:graphic");
  xml.Open("a:graphicData", {{"uri", kPictureUri}});
  xml.Open("pic:pic");
  xml.Open("pic:nvPicPr");
  xml.Leaf("pic:cNvPr", {{"id", story.context.drawing_count}, {"name", "Picture"}});
  xml.Leaf("pic:cNvPicPr");
  xml.Close();
  xml.Open("pic:blipFill");
  xml.Leaf("a:blip", {{"r:embed", id}});
  xml.Open("a:stretch");
  xml.Leaf("a:fillRect");
  xml.Close();
  xml.Close();
  xml.Open("pic:spPr");
  xml.Open("a:xfrm");
  xml.Leaf("a:off", {{"x", 0}, {"y", 0}});
  WriteExtent(xml, "a:ext", box);
  xml.Close();
  xml.Open("a:prstGeom", {{"prst", "rect"}});
  xml.Leaf("a:avLst");
  for (int i = 0; i < 5; ++i) {
    xml.Close();
  }
}

void WritePosition(XmlWriter& xml, std::string_view name, double points) {
  xml.Open(name, {{"relativeFrom", "page"}});
  xml.Element("wp:posOffset", std::to_string(Emu(points)));
  xml.Close();
}

// Opens the anchor of something at a place of the page, up to what says what it is.
void OpenAnchor(Story& story, const pdf::Box& box, bool is_behind, const std::string& description) {
  XmlWriter& xml = story.xml;
  xml.Open("wp:anchor", {{"distT", 0},
                         {"distB", 0},
                         {"distL", 0},
                         {"distR", 0},
                         {"simplePos", 0},
                         {"relativeHeight", story.context.drawing_count + 1},
                         {"behindDoc", is_behind ? 1 : 0},
                         {"locked", 0},
                         {"layoutInCell", 1},
                         {"allowOverlap", 1}});
  xml.Leaf("wp:simplePos", {{"x", 0}, {"y", 0}});
  WritePosition(xml, "wp:positionH", box.left);
  WritePosition(xml, "wp:positionV", UpperEdge(box));
  WriteExtent(xml, "wp:extent", box);
  xml.Leaf("wp:effectExtent", {{"l", 0}, {"t", 0}, {"r", 0}, {"b", 0}});
  xml.Leaf("wp:wrapNone");
  WriteProperties(story, description);
}

void OpenShape(Story& story, const pdf::Box& box, bool is_behind, bool is_text) {
  XmlWriter& xml = story.xml;
  xml.Open("w:r");
  xml.Open("mc:AlternateContent");
  xml.Open("mc:Choice", {{"Requires", "wps"}});
  xml.Open("w:drawing");
  OpenAnchor(story, box, is_behind, "");
  xml.Leaf("wp:cNvGraphicFramePr");
  xml.Open("a:graphic");
  xml.Open("a:graphicData", {{"uri", kShapeUri}});
  xml.Open("wps:wsp");
  xml.Open("wps:cNvSpPr");
  if (is_text) {
    xml.Attribute({"txBox", 1});
  }
  xml.Close();
}

void CloseShape(XmlWriter& xml) {
  for (int i = 0; i < 8; ++i) {
    xml.Close();
  }
}

void WriteGeometry(XmlWriter& xml, const pdf::Box& box, double angle, std::string_view kind) {
  xml.Open("a:xfrm");
  if (angle != 0) {
    xml.Attribute({"rot", Rounded(angle, 60'000)});
  }
  xml.Leaf("a:off", {{"x", 0}, {"y", 0}});
  xml.Leaf("a:ext", {{"cx", kind == "line" ? Emu(box.width()) : Side(box.width())},
                     {"cy", kind == "line" ? Emu(box.height()) : Side(box.height())}});
  xml.Close();
  xml.Open("a:prstGeom", {{"prst", kind}});
  xml.Leaf("a:avLst");
  xml.Close();
}

void WriteShape(Story& story, const pdf::Box& box, std::string_view kind,
                const std::optional<Rgb>& fill, const std::optional<Rgb>& stroke, double width) {
  XmlWriter& xml = story.xml;
  OpenShape(story, box, true, false);
  xml.Open("wps:spPr");
  WriteGeometry(xml, box, 0, kind);
  WriteFill(xml, fill);
  xml.Open("a:ln");
  if (stroke) {
    xml.Attribute({"w", Emu(std::max(width, 0.1))});
  }
  WriteFill(xml, stroke);
  xml.Close();
  xml.Close();
  xml.Leaf("wps:bodyPr");
  CloseShape(xml);
}

}  // namespace

std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Picture& picture) {
  std::vector<ImagePlace> images;
  for (const std::uint32_t number : picture.images) {
    if (number < page.model.images.size()) {
      images.push_back(page.model.images[number]);
    }
  }
  return story.context.pictures.PictureOf(page.model.number, images, picture.box);
}

std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Drawing& drawing) {
  return story.context.pictures.DrawingOf(page.model.number, drawing.box);
}

void WriteInlinePicture(Story& story, const OfficePicture& picture, const pdf::Box& box,
                        const std::string& description) {
  XmlWriter& xml = story.xml;
  xml.Open("w:r");
  xml.Open("w:rPr");
  xml.Leaf("w:sz", {{"w:val", 2}});
  xml.Close();
  xml.Open("w:drawing");
  xml.Open("wp:inline", {{"distT", 0}, {"distB", 0}, {"distL", 0}, {"distR", 0}});
  WriteExtent(xml, "wp:extent", box);
  WriteProperties(story, description);
  WriteGraphicPicture(story, picture, box);
  for (int i = 0; i < 3; ++i) {
    xml.Close();
  }
}

void WriteAnchoredPicture(Story& story, const OfficePicture& picture, const pdf::Box& box,
                          const std::string& description, bool is_behind) {
  XmlWriter& xml = story.xml;
  xml.Open("w:r");
  xml.Open("w:drawing");
  OpenAnchor(story, box, is_behind, description);
  WriteGraphicPicture(story, picture, box);
  for (int i = 0; i < 3; ++i) {
    xml.Close();
  }
}

void WriteShapes(Story& story, const OfficePage& page, const Drawing& drawing) {
  for (const std::uint32_t number : drawing.paths) {
    if (number >= page.model.paths.size()) {
      continue;
    }
    const PathShape& path = page.model.paths[number];
    WriteShape(story, path.box, IsDrawnAsLine(path) ? "line" : "rect", path.fill, path.stroke,
               path.line_width);
  }
}

void WriteBackground(Story& story, const PageLayout& page, const Rgb& color) {
  WriteShape(story, {0, 0, page.width, page.height}, "rect", color, std::nullopt, 0);
}

void WriteTextBox(Story& story, const pdf::Box& box, double angle, bool is_behind,
                  const std::function<void()>& write_content) {
  XmlWriter& xml = story.xml;
  OpenShape(story, box, is_behind, true);
  xml.Open("wps:spPr");
  const bool is_upright = IsQuarter(angle);
  WriteGeometry(xml, box, is_upright ? 0 : angle, "rect");
  xml.Leaf("a:noFill");
  xml.Close();
  xml.Open("wps:txbx");
  xml.Open("w:txbxContent");
  write_content();
  xml.Close();
  xml.Close();
  xml.Leaf("wps:bodyPr", {{"vert", !is_upright   ? "horz"
                                   : angle < 180 ? "vert"
                                                 : "vert270"},
                          {"wrap", "square"},
                          {"lIns", 0},
                          {"tIns", 0},
                          {"rIns", 0},
                          {"bIns", 0},
                          {"anchor", "t"}});
  CloseShape(xml);
}

}  // namespace TarnixTools::engines::office
