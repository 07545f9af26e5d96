#include "engines/pdfa/checks/CheckedDocument.h"

#include "engines/pdfa/checks/OutputProfiles.h"

namespace TarnixTools::engines::pdfa {

CheckedDocument::CheckedDocument(pdf::Document& document, FindingList& findings)
    : document_(&document), findings_(&findings), pages_(document) {
  output_space_ = OutputSpaceOf(document);
}

}  // namespace TarnixTools::engines::pdfa
