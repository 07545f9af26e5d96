#include "engines/pdfa/convert/annotations/MadeAppearance.h"

#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

MadeAppearance EmptyAppearance(const Object& annotation, pdf::Document& document) {
  const pdf::Box box =
      pdf::ReadPageBox(document, annotation.Get("Rect")).value_or(pdf::Box{0, 0, 1, 1});
  std::string text = "<</Type/XObject/Subtype/Form/Resources<<>>/BBox";
  pdf::AppendBox(text, box);
  return {text + ">>", " "};
}

}  // namespace TarnixTools::engines::pdfa
