#include "engines/office/writers/word/DrawingWriter.h"

#include "engines/office/writers/package/EncodedUri.h"
#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/Units.h"
#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::string_view kPictureUri = "http://schemas.openxmlformats.org/drawingml/2006/picture";
constexpr std::string_view kShapeUri =
    "http://schemas.microsoft.com/office/word/2010/wordprocessingShape";

constexpr double kLinkedShare = 0.6;  // of a picture, that its link covers at least

std::int64_t Side(double points) {
  return Emu(std::max(points, kSmallestSide));
}

void WriteExtent(XmlWriter& xml, const pdf::Box& box) {
  xml.Leaf("wp:extent", {{"cx", Side(box.width())}, {"cy", Side(box.height())}});
}

// Where a shape is within its anchor.
pdf::Box AtOrigin(const pdf::Box& box) {
  return {0, 0, box.width(), box.height()};
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
  WriteForm(xml, AtOrigin(box));
  for (int i = 0; i < 4; ++i) {
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
  WriteExtent(xml, box);
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

void WriteShape(Story& story, const PathShape& path) {
  XmlWriter& xml = story.xml;
  OpenShape(story, path.box, true, false);
  xml.Open("wps:spPr");
  WritePath(xml, path, AtOrigin(path.box));
  xml.Close();
  xml.Leaf("wps:bodyPr");
  CloseShape(xml);
}

}  // namespace

std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Picture& picture) {
  return story.context.pictures.PictureOf(page.model.number, PlacesOf(picture, page.model),
                                          picture.box);
}

std::optional<OfficePicture> ImageOf(Story& story, const OfficePage& page, const Drawing& drawing) {
  return story.context.pictures.DrawingOf(page.model.number, drawing.box);
}

bool OpenLinkOf(Story& story, const OfficePage& page, const pdf::Box& picture) {
  for (const PageLink& link : page.model.links) {
    if (!link.uri.empty() && CoveredShare(picture, link.box) >= kLinkedShare) {
      const std::string id =
          story.relationships.AddExternal(kHyperlinkRelation, EncodedUri(link.uri));
      story.xml.Open("w:hyperlink", {{"r:id", id}});
      return true;
    }
  }
  return false;
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
  WriteExtent(xml, box);
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
    if (number < page.model.paths.size()) {
      WriteShape(story, page.model.paths[number]);
    }
  }
}

void WriteBackground(Story& story, const PageLayout& page, const Rgb& color) {
  PathShape area;
  area.kind = PathShape::Kind::kRectangle;
  area.box = {0, 0, page.width, page.height};
  area.fill = color;
  WriteShape(story, area);
}

void WriteTextBox(Story& story, const pdf::Box& box, const TextBoxLook& look,
                  const std::function<void()>& write_content) {
  XmlWriter& xml = story.xml;
  const double angle = look.angle;
  OpenShape(story, box, look.is_behind, true);
  xml.Open("wps:spPr");
  const bool is_upright = IsQuarter(angle);
  WriteForm(xml, AtOrigin(box), is_upright ? 0 : angle);
  xml.Leaf("a:noFill");
  xml.Close();
  xml.Open("wps:txbx");
  xml.Open("w:txbxContent");
  write_content();
  xml.Close();
  xml.Close();
  xml.Leaf("wps:bodyPr", {{"vert", look.is_vertical ? "eaVert"
                                   : !is_upright    ? "horz"
                                   : angle < 180    ? "vert"
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
