// Appearances for annotations that have none, as viewers draw them.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_

#include <string>

#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// A form XObject.
struct MadeAppearance {
  std::string dictionary;
  std::string content;
};

// One that shows nothing.
MadeAppearance EmptyAppearance(const pdf::Object& annotation, pdf::Document& document);

// One that shows what the annotation is: shapes and lines in their colours, marked text; nothing of
// an annotation that viewers do not draw by themselves.
MadeAppearance MakeAppearance(const pdf::Object& annotation, pdf::Document& document);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_
