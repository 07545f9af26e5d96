#include "engines/office/writers/text/DrawnShapes.h"

#include "engines/office/writers/text/Units.h"

namespace TarnixTools::engines::office {

void WriteFill(XmlWriter& xml, const std::optional<Rgb>& color) {
  if (!color) {
    xml.Leaf("a:noFill");
    return;
  }
  xml.Open("a:solidFill");
  xml.Leaf("a:srgbClr", {{"val", Hex(*color)}});
  xml.Close();
}

}  // namespace TarnixTools::engines::office
