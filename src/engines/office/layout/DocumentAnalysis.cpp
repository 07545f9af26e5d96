#include "engines/office/layout/DocumentAnalysis.h"

#include <vector>

#include "engines/office/layout/document/Bookmarks.h"
#include "engines/office/layout/document/Contents.h"
#include "engines/office/layout/document/Continuations.h"
#include "engines/office/layout/document/Headings.h"
#include "engines/office/layout/document/Notes.h"
#include "engines/office/layout/document/RepeatedBlocks.h"
#include "engines/office/layout/tables/ContinuedTables.h"
#include "engines/support/layout/paragraphs/Lists.h"

namespace TarnixTools::engines::office {

namespace {

std::vector<PageLayout*> LayoutsOf(OfficeDocument& document) {
  std::vector<PageLayout*> pages;
  for (OfficePage& page : document.pages) {
    pages.push_back(&page.layout);
  }
  return pages;
}

}  // namespace

void AnalyzeDocument(OfficeDocument& document) {
  FindHeadersAndFooters(document);
  FindContents(document);
  FindCaptions(document);
  MarkContinuedTables(document);
  FindHeadings(document);
  FindLists(LayoutsOf(document));
  FindNotes(document);
  FindContinuations(document);
  SetBookmarks(document);
}

}  // namespace TarnixTools::engines::office
