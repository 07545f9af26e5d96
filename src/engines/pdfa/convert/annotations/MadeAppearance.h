// An appearance that an annotation gets, and the one that shows nothing.
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

// As large as the annotation.
MadeAppearance EmptyAppearance(const pdf::Object& annotation, pdf::Document& document);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_MADEAPPEARANCE_H_
