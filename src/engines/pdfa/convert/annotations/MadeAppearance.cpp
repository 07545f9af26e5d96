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

std::string ColorOperator(std::vector<double> components, PaintUse use) {
  if (components.size() == 4) {
    const double white = 1 - components[3];
    components = {(1 - components[0]) * white, (1 - components[1]) * white,
                  (1 - components[2]) * white};
  }
  if (components.size() != 1 && components.size() != 3) {
    return {};
  }
  std::string text;
  for (const double component : components) {
    pdf::AppendNumber(text, std::clamp(component, 0.0, 1.0));
    text += " ";
  }
  const bool is_gray = components.size() == 1;
  return text +
         (use == PaintUse::kStroke ? (is_gray ? "G\n" : "RG\n") : (is_gray ? "g\n" : "rg\n"));
}

}  // namespace TarnixTools::engines::pdfa
