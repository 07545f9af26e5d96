#include "engines/pdfa/convert/annotations/MadeAppearance.h"

#include <algorithm>

#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

MadeAppearance EmptyAppearance(const Object& annotation, pdf::Document& document) {
  const pdf::Box box =
      pdf::ReadPageBox(document, annotation.Get("Rect")).value_or(pdf::Box{0, 0, 1, 1});
  std::string text = "<</Type/XObject/Subtype/Form/Resources<<>>/BBox";
  pdf::AppendBox(text, box);
  return {text + ">>", " "};
}

void AppendOperation(std::string& out, std::span<const double> operands, std::string_view name) {
  for (const double operand : operands) {
    pdf::AppendNumber(out, operand);
    out += " ";
  }
  out += name;
  out += "\n";
}

std::string OpacityEntries(double opacity) {
  std::string entries;
  for (const char* key : {"/CA ", "/ca "}) {
    entries += key;
    pdf::AppendNumber(entries, std::clamp(opacity, 0.0, 1.0));
  }
  return entries;
}

std::string ColorOperator(std::vector<double> components, PaintUse use) {
  if (components.size() == 4) {
    const double white = 1 - components[3];
    components = {(1 - components[0]) * white, (1 - components[1]) * white,
                  (1 - components[2]) * white};
  }
  if (components.size() != 1 && components.size() != 3) {
    return {};
  }
  for (double& component : components) {
    component = std::clamp(component, 0.0, 1.0);
  }
  const bool is_gray = components.size() == 1;
  std::string text;
  AppendOperation(text, components,
                  use == PaintUse::kStroke ? (is_gray ? "G" : "RG") : (is_gray ? "g" : "rg"));
  return text;
}

}  // namespace TarnixTools::engines::pdfa
