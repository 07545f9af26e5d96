#include "engines/office/layout/DocumentAnalysis.h"

#include "engines/office/layout/document/Bookmarks.h"

namespace TarnixTools::engines::office {

void AnalyzeDocument(OfficeDocument& document) {
  SetBookmarks(document);
}

}  // namespace TarnixTools::engines::office
