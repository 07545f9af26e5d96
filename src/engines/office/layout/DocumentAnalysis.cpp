#include "engines/office/layout/DocumentAnalysis.h"

#include "engines/office/layout/document/Bookmarks.h"
#include "engines/office/layout/document/Contents.h"
#include "engines/office/layout/document/Continuations.h"
#include "engines/office/layout/document/Headings.h"
#include "engines/office/layout/document/Lists.h"
#include "engines/office/layout/document/Notes.h"
#include "engines/office/layout/document/RepeatedBlocks.h"
#include "engines/office/layout/tables/ContinuedTables.h"

namespace TarnixTools::engines::office {

void AnalyzeDocument(OfficeDocument& document) {
  FindHeadersAndFooters(document);
  FindContents(document);
  FindCaptions(document);
  MarkContinuedTables(document);
  FindHeadings(document);
  FindLists(document);
  FindNotes(document);
  FindContinuations(document);
  SetBookmarks(document);
}

}  // namespace TarnixTools::engines::office
