#include "engines/office/layout/DocumentAnalysis.h"

#include "engines/office/layout/document/Bookmarks.h"
#include "engines/office/layout/document/Headings.h"
#include "engines/office/layout/document/Lists.h"
#include "engines/office/layout/document/RepeatedBlocks.h"

namespace TarnixTools::engines::office {

void AnalyzeDocument(OfficeDocument& document) {
  FindHeadersAndFooters(document);
  FindHeadings(document);
  FindLists(document);
  SetBookmarks(document);
}

}  // namespace TarnixTools::engines::office
