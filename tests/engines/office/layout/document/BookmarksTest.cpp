// Which paragraphs links of a document lead to.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "engines/office/layout/document/Bookmarks.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;

// A page with lines at 100, 200 and 300, whose upper edges are nine points above these.
OfficePage PageOfLines(std::uint32_t number) {
  OfficePage page = PageWith({Block{TextAt(72, 100, {"a"})}, Block{TextAt(72, 300, {"c"})},
                              Block{TextAt(72, 200, {"b"})}});
  page.layout.number = number;
  return page;
}

// The bookmarks that links to these places of the second page, which is number 5, get.
std::vector<std::string> BookmarksAt(const std::vector<double>& ys, OfficeDocument& document) {
  document = DocumentOf({PageOfLines(2), PageOfLines(5)});
  for (const double y : ys) {
    document.pages[0].layout.links.push_back({.uri = "", .bookmark = "", .page = 5, .y = y});
  }
  SetBookmarks(document);
  std::vector<std::string> bookmarks;
  for (const LinkTarget& link : document.pages[0].layout.links) {
    bookmarks.push_back(link.bookmark);
  }
  return bookmarks;
}

TEST(Bookmarks, AreOfTheNextParagraphBelow) {
  OfficeDocument document;
  EXPECT_THAT(BookmarksAt({0, 97, 97.1, 191, 250, 290, 700}, document),
              ElementsAre("target1", "target1", "target2", "target2", "target3", "target3",
                          "target2"));  // the last one is that of the page's last paragraph
  const std::vector<Paragraph*> paragraphs = FlowParagraphs(document.pages[1].layout);
  EXPECT_EQ(paragraphs[0]->bookmark, "target1");
  EXPECT_EQ(paragraphs[1]->bookmark, "target3");
  EXPECT_EQ(paragraphs[2]->bookmark, "target2");
}

TEST(Bookmarks, AreOfPagesThatThereAre) {
  OfficeDocument document = DocumentOf({PageOfLines(0), PageWith({})});
  document.pages[1].layout.number = 1;
  document.pages[0].layout.links = {{.uri = "x", .bookmark = "", .page = -1, .y = 0},
                                    {.uri = "", .bookmark = "", .page = 9, .y = 0},
                                    {.uri = "", .bookmark = "", .page = 1, .y = 0}};
  SetBookmarks(document);
  for (const LinkTarget& link : document.pages[0].layout.links) {
    EXPECT_EQ(link.bookmark, "");
  }
  EXPECT_EQ(FlowParagraphs(document.pages[0].layout)[0]->bookmark, "");
}

}  // namespace
}  // namespace TarnixTools::engines::office
