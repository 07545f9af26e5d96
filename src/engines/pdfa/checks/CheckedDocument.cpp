#include "engines/pdfa/checks/CheckedDocument.h"

#include "engines/pdfa/checks/OutputProfiles.h"

namespace TarnixTools::engines::pdfa {

CheckedDocument::CheckedDocument(pdf::Document& document, FindingList& findings, int embedded_depth)
    : document_(&document),
      findings_(&findings),
      embedded_depth_(embedded_depth),
      pages_(document) {
  output_space_ = OutputSpaceOf(document);
}

}  // namespace TarnixTools::engines::pdfa
