// What the tags around a text make it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines {
namespace {

// Of a text within elements of these types, the outermost first.
Paragraph TaggedText(const std::vector<std::string>& path) {
  PageModel page = MadePage().Text(72, 100, U"Some text").Take();
  page.roles.push_back({.path = path, .element = 1, .description = {}, .language = {}});
  for (Glyph& glyph : page.glyphs) {
    glyph.mark = 0;
  }
  PageLayout layout = AnalyzePage(page);
  return *FlowParagraphs(layout).at(0);
}

struct Meaning {
  const char* tag;
  ParagraphRole role;
  int level;
};

TEST(StructureTags, TellTheRolesOfParagraphs) {
  for (const Meaning& meaning :
       {Meaning{"H1", ParagraphRole::kHeading, 1}, Meaning{"H2", ParagraphRole::kHeading, 2},
        Meaning{"H3", ParagraphRole::kHeading, 3}, Meaning{"H4", ParagraphRole::kHeading, 4},
        Meaning{"H5", ParagraphRole::kHeading, 5}, Meaning{"H6", ParagraphRole::kHeading, 6},
        Meaning{"H", ParagraphRole::kHeading, 1}, Meaning{"Title", ParagraphRole::kTitle, 0},
        Meaning{"LI", ParagraphRole::kListItem, 0}, Meaning{"Caption", ParagraphRole::kCaption, 0},
        Meaning{"TOCI", ParagraphRole::kContents, 0},
        Meaning{"BlockQuote", ParagraphRole::kQuote, 0}, Meaning{"Code", ParagraphRole::kCode, 0},
        Meaning{"P", ParagraphRole::kBody, 0}, Meaning{"TD", ParagraphRole::kBody, 0}}) {
    const Paragraph paragraph = TaggedText({"Document", meaning.tag});
    EXPECT_EQ(paragraph.role, meaning.role) << meaning.tag;
    EXPECT_EQ(paragraph.level, meaning.level) << meaning.tag;
    EXPECT_TRUE(paragraph.is_tagged) << meaning.tag;
  }
}

TEST(StructureTags, TellNothingByTypesOfOtherThings) {
  for (const char* tag : {"Span", "Figure", "H7", "Document"}) {
    EXPECT_FALSE(TaggedText({tag}).is_tagged) << tag;
  }
  EXPECT_FALSE(TaggedText({"TD", "Span"}).is_tagged);
}

TEST(StructureTags, TellByTheInnermostThatIsKnown) {
  EXPECT_EQ(TaggedText({"H1", "H3", "Span"}).level, 3);
  EXPECT_EQ(TaggedText({"BlockQuote", "P", "Span"}).role, ParagraphRole::kQuote);
  EXPECT_EQ(TaggedText({"BlockQuote", "P"}).role, ParagraphRole::kBody);
}

}  // namespace
}  // namespace TarnixTools::engines
