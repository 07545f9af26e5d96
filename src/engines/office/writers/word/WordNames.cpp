#include "engines/office/writers/word/WordNames.h"

#include <algorithm>
#include <cmath>

#include "engines/office/writers/text/Units.h"

namespace TarnixTools::engines::office {

namespace {

constexpr std::int64_t kMostHalfPoints = 3276;  // that text is large
// Of hidden text, in thousandths of a percent. Programs show in black what is wholly transparent.
constexpr std::int64_t kTransparency = 99'000;

void WriteFont(XmlWriter& xml, const TextLook& look) {
  if (!look.face || look.face->family.empty()) {
    return;
  }
  const std::string& family = look.face->family;
  xml.Leaf("w:rFonts",
           {{"w:ascii", family}, {"w:hAnsi", family}, {"w:eastAsia", family}, {"w:cs", family}});
}

void WriteSwitch(XmlWriter& xml, std::string_view name, bool is_on) {
  if (is_on) {
    xml.Leaf(name);
  } else {
    xml.Leaf(name, {{"w:val", "0"}});
  }
}

void WriteWeight(XmlWriter& xml, const TextLook& look) {
  const bool is_bold = look.face && look.face->is_bold;
  const bool is_italic = look.face && look.face->is_italic;
  WriteSwitch(xml, "w:b", is_bold);
  WriteSwitch(xml, "w:bCs", is_bold);
  WriteSwitch(xml, "w:i", is_italic);
  WriteSwitch(xml, "w:iCs", is_italic);
  if (look.is_struck) {
    xml.Leaf("w:strike");
  }
}

void WriteSize(XmlWriter& xml, const TextLook& look) {
  const auto half_points = std::clamp<std::int64_t>(Rounded(look.size, 2), 2, kMostHalfPoints);
  xml.Leaf("w:sz", {{"w:val", half_points}});
  xml.Leaf("w:szCs", {{"w:val", half_points}});
}

// Text that is there to be found, over a picture of it: it has no colour, but all else.
void WriteTransparency(XmlWriter& xml) {
  xml.Open("w14:textFill");
  xml.Open("w14:solidFill");
  xml.Open("w14:srgbClr", {{"w14:val", "000000"}});
  xml.Leaf("w14:alpha", {{"w14:val", kTransparency}});
  xml.Close();
  xml.Close();
  xml.Close();
}

}  // namespace

void WriteLook(XmlWriter& xml, const TextLook& look, const RunSetting& setting) {
  if (setting.is_link) {
    xml.Leaf("w:rStyle", {{"w:val", "Hyperlink"}});
  }
  WriteFont(xml, look);
  WriteWeight(xml, look);
  xml.Leaf("w:color", {{"w:val", Hex(look.color)}});
  if (const auto spacing = Twips(setting.spacing)) {
    xml.Leaf("w:spacing", {{"w:val", spacing}});
  }
  if (const auto percent = std::lround(setting.scale * 100); percent != 100) {
    xml.Leaf("w:w", {{"w:val", percent}});
  }
  if (const auto half_points = Rounded(setting.rise, 2)) {
    xml.Leaf("w:position", {{"w:val", half_points}});
  }
  WriteSize(xml, look);
  xml.Leaf("w:u", {{"w:val", look.is_underlined ? "single" : "none"}});
  if (look.highlight) {
    xml.Leaf("w:shd", {{"w:val", "clear"}, {"w:color", "auto"}, {"w:fill", Hex(*look.highlight)}});
  }
  if (look.raise != Raise::kNone) {
    const bool is_above = look.raise == Raise::kSuperscript;
    xml.Leaf("w:vertAlign", {{"w:val", is_above ? "superscript" : "subscript"}});
  }
  if (setting.is_right_to_left) {
    xml.Leaf("w:rtl");
  }
  if (look.is_hidden) {
    WriteTransparency(xml);
  }
}

void OpenStory(XmlWriter& xml, std::string_view element) {
  xml.Open(element,
           {{"xmlns:w", kWordNamespace},
            {"xmlns:r", "http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
            {"xmlns:wp", "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"},
            {"xmlns:a", "http://schemas.openxmlformats.org/drawingml/2006/main"},
            {"xmlns:pic", "http://schemas.openxmlformats.org/drawingml/2006/picture"},
            {"xmlns:mc", "http://schemas.openxmlformats.org/markup-compatibility/2006"},
            {"xmlns:wps", "http://schemas.microsoft.com/office/word/2010/wordprocessingShape"},
            {"xmlns:w14", "http://schemas.microsoft.com/office/word/2010/wordml"},
            {"mc:Ignorable", "w14"}});
}

}  // namespace TarnixTools::engines::office
