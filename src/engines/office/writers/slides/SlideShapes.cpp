#include "engines/office/writers/slides/SlideShapes.h"

#include "engines/office/writers/text/DrawnShapes.h"

namespace TarnixTools::engines::office {

namespace {

void WriteName(SlidePart& slide, std::string_view kind, const std::string& description) {
  const std::uint32_t id = ++slide.shape_count;
  slide.xml.Open("p:cNvPr", {{"id", id}, {"name", std::string(kind) + " " + std::to_string(id)}});
  if (!description.empty()) {
    slide.xml.Attribute({"descr", description});
  }
  slide.xml.Close();
}

void WriteShape(SlidePart& slide, const PathShape& path) {
  XmlWriter& xml = slide.xml;
  xml.Open("p:sp");
  xml.Open("p:nvSpPr");
  WriteName(slide, "Shape", "");
  xml.Leaf("p:cNvSpPr");
  xml.Leaf("p:nvPr");
  xml.Close();
  xml.Open("p:spPr");
  WritePath(xml, path, path.box);
  xml.Close();
  xml.Close();
}

void WriteImage(SlidePart& slide, const OfficePicture& image, const pdf::Box& box,
                const std::string& description) {
  XmlWriter& xml = slide.xml;
  const std::string name = "../" + slide.context.package.AddPicture("ppt/", image);
  xml.Open("p:pic");
  xml.Open("p:nvPicPr");
  WriteName(slide, "Picture", description);
  xml.Leaf("p:cNvPicPr");
  xml.Leaf("p:nvPr");
  xml.Close();
  xml.Open("p:blipFill");
  xml.Leaf("a:blip", {{"r:embed", slide.relationships.Add(kPictureRelation, name)}});
  xml.Open("a:stretch");
  xml.Leaf("a:fillRect");
  xml.Close();
  xml.Close();
  xml.Open("p:spPr");
  WriteForm(xml, box);
  xml.Close();
  xml.Close();
}

}  // namespace

void WriteTextShape(SlidePart& slide, const TextGroup& group, const pdf::Box& box, double angle,
                    bool is_vertical) {
  XmlWriter& xml = slide.xml;
  xml.Open("p:sp");
  xml.Open("p:nvSpPr");
  WriteName(slide, "Text", "");
  xml.Leaf("p:cNvSpPr", {{"txBox", 1}});
  xml.Leaf("p:nvPr");
  xml.Close();
  xml.Open("p:spPr");
  WriteForm(xml, box, angle);
  WriteFill(xml, std::nullopt);
  xml.Close();
  xml.Open("p:txBody");
  xml.Open("a:bodyPr");
  if (is_vertical) {
    xml.Attribute({"vert", "eaVert"});
  }
  for (const std::string_view side : {"lIns", "tIns", "rIns", "bIns"}) {
    xml.Attribute({side, 0});
  }
  xml.Attribute({"wrap", "square"});
  xml.Attribute({"anchor", "t"});
  xml.Leaf("a:noAutofit");
  xml.Close();
  xml.Leaf("a:lstStyle");
  WriteParagraphs(slide, group, group.box.left, group.box.right);
  xml.Close();
  xml.Close();
}

void WritePictureShape(SlidePart& slide, const Picture& picture) {
  const auto image = slide.context.pictures.PictureOf(
      slide.page.model.number, PlacesOf(picture, slide.page.model), picture.box);
  if (image) {
    WriteImage(slide, *image, picture.box, picture.description);
  }
}

void WriteDrawingShapes(SlidePart& slide, const Drawing& drawing) {
  if (IsDrawnAsShapes(drawing)) {
    for (const std::uint32_t number : drawing.paths) {
      if (number < slide.page.model.paths.size()) {
        WriteShape(slide, slide.page.model.paths[number]);
      }
    }
    return;
  }
  if (const auto image = slide.context.pictures.DrawingOf(slide.page.model.number, drawing.box)) {
    WriteImage(slide, *image, drawing.box, drawing.description);
  }
}

}  // namespace TarnixTools::engines::office
