#include <gmock/gmock.h>

#include "engines/office/layout/DocumentAnalysis.h"
#include "engines/support/layout/MadePage.h"
#include "engines/support/layout/PageAnalysis.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

constexpr std::u32string_view kFull = U"A line of text that reaches the right margin of its page";

class DocumentAnalysis : public testing::Test {
 protected:
  void Add(MadePage& page) {
    OfficePage next;
    next.layout = AnalyzePage(page.Take());
    next.layout.number = static_cast<std::uint32_t>(document_.pages.size());
    document_.pages.push_back(std::move(next));
  }

  std::vector<Paragraph*> Flow(std::size_t page) {
    return FlowParagraphs(document_.pages[page].layout);
  }

  OfficeDocument document_;
};

TEST_F(DocumentAnalysis, MovesHeadersAndPageNumbersOutOfTheFlow) {
  for (int i = 0; i < 3; ++i) {
    MadePage page;
    page.Text(72, 40, U"The report").Text(72, 300, kFull);
    page.Text(280, 780, U"Page " + std::u32string(1, U'5' + i) + U" of 9");
    Add(page);
  }
  AnalyzeDocument(document_);
  for (OfficePage& page : document_.pages) {
    EXPECT_THAT(page.layout.header, SizeIs(1));
    EXPECT_THAT(FlowParagraphs(page.layout), SizeIs(1));
  }
  const Block& footer = document_.pages[1].layout.footer.at(0);
  const std::vector<TextPiece>& pieces = std::get<Paragraph>(footer.content).lines[0].pieces;
  ASSERT_THAT(pieces, SizeIs(3));
  EXPECT_EQ(pieces[1].kind, PieceKind::kPageNumber);
  EXPECT_EQ(pieces[1].text, "6");
}

TEST_F(DocumentAnalysis, TakesNoHeaderFromAPageThatIsThereTwice) {
  for (int i = 0; i < 2; ++i) {
    MadePage page;
    page.Text(72, 40, U"The first line");
    for (int line = 0; line < 6; ++line) {
      page.Text(72, 300 + 40 * line, kFull);
    }
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.header, SizeIs(0));
  EXPECT_THAT(document_.pages[1].layout.header, SizeIs(0));
}

TEST_F(DocumentAnalysis, LeavesNumbersThatDoNotCount) {
  for (const char32_t digit : {U'7', U'2'}) {
    MadePage page;
    page.Text(72, 300, kFull).Text(300, 700, std::u32string(1, digit));
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.footer, SizeIs(0));
}

TEST_F(DocumentAnalysis, FindsAPageNumberFarFromTheEdge) {
  for (const char32_t digit : {U'1', U'2'}) {
    MadePage page;
    page.Text(72, 300, kFull).Text(300, 660, std::u32string(1, digit));
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.footer, SizeIs(1));
}

TEST_F(DocumentAnalysis, TakesALineApartAtTheFootOfOnePageAsFooter) {
  MadePage page;
  page.Text(72, 700, kFull).Text(300, 770, U"6");
  Add(page);
  MadePage full;
  full.Text(72, 758, kFull).Text(72, 770, U"its end");
  Add(full);
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.footer, SizeIs(1));
  EXPECT_THAT(document_.pages[1].layout.footer, SizeIs(0));
}

TEST_F(DocumentAnalysis, LeavesRepeatedTextBehindOtherText) {
  for (const char32_t digit : {U'a', U'b'}) {
    MadePage page;
    page.Text(72, 60, std::u32string(3, digit)).Text(72, 140, U"Both begin with this");
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.header, SizeIs(0));
}

TEST_F(DocumentAnalysis, LeavesRepeatedTextBelowATitleOfThePage) {
  for (const char32_t digit : {U'a', U'b'}) {
    MadePage page;
    page.Text(72, 40, std::u32string(30, digit))
        .Text(250, 70, U"[In thousands]")
        .Text(72, 300, kFull);
    page.Text(300, 780, U"Both end with this").Text(72, 790, std::u32string(30, digit));
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.header, SizeIs(0));
  EXPECT_THAT(document_.pages[0].layout.footer, SizeIs(0));
  EXPECT_THAT(Flow(0), SizeIs(5));
}

TEST_F(DocumentAnalysis, FindsThePageNumberAmongOtherNumbers) {
  for (const char32_t digit : {U'1', U'2'}) {
    MadePage page;
    page.Text(72, 300, kFull);
    page.Text(72, 770, U"Statistics to 2021, page 2" + std::u32string(1, digit));
    Add(page);
  }
  AnalyzeDocument(document_);
  ASSERT_THAT(document_.pages[0].layout.footer, SizeIs(1));
  const auto& footer = std::get<Paragraph>(document_.pages[0].layout.footer[0].content);
  ASSERT_THAT(footer.lines[0].pieces, SizeIs(2));
  EXPECT_EQ(footer.lines[0].pieces[0].text, "Statistics to 2021, page ");
  EXPECT_EQ(footer.lines[0].pieces[1].kind, PieceKind::kPageNumber);
  EXPECT_EQ(footer.lines[0].pieces[1].text, "21");
}

TEST_F(DocumentAnalysis, JoinsPartsOfAFooterOnOneBaseline) {
  for (const char32_t digit : {U'1', U'2'}) {
    MadePage page;
    page.Text(72, 300, kFull).Text(500, 770, std::u32string(1, digit)).Text(72, 770, U"The report");
    Add(page);
  }
  AnalyzeDocument(document_);
  ASSERT_THAT(document_.pages[1].layout.footer, SizeIs(1));
  const auto& footer = std::get<Paragraph>(document_.pages[1].layout.footer[0].content);
  ASSERT_THAT(footer.lines, SizeIs(1));
  ASSERT_THAT(footer.lines[0].pieces, SizeIs(3));
  EXPECT_EQ(footer.lines[0].pieces[0].text, "The report");
  EXPECT_EQ(footer.lines[0].pieces[1].kind, PieceKind::kTab);
  EXPECT_EQ(footer.lines[0].pieces[2].kind, PieceKind::kPageNumber);
  EXPECT_EQ(footer.lines[0].pieces[2].x, 500);
  EXPECT_EQ(footer.alignment, Alignment::kLeft);
}

TEST_F(DocumentAnalysis, FindsHeadingsByTheirType) {
  MadePage page;
  page.Text(72, 60, U"The title", {.size = 20}).Text(72, 100, U"A part", {.is_bold = true});
  for (int i = 0; i < 6; ++i) {
    page.Text(72, 130 + 12 * i, kFull);
  }
  Add(page);
  AnalyzeDocument(document_);
  ASSERT_THAT(Flow(0), SizeIs(3));
  EXPECT_EQ(Flow(0)[0]->role, ParagraphRole::kHeading);
  EXPECT_EQ(Flow(0)[0]->level, 1);
  EXPECT_EQ(Flow(0)[1]->role, ParagraphRole::kHeading);
  EXPECT_EQ(Flow(0)[1]->level, 2);
  EXPECT_EQ(Flow(0)[2]->role, ParagraphRole::kBody);
}

TEST_F(DocumentAnalysis, FindsHeadingsOfTheOutline) {
  MadePage page;
  page.Text(72, 60, U"1 Plain words");
  for (int i = 0; i < 6; ++i) {
    page.Text(72, 130 + 12 * i, kFull);
  }
  Add(page);
  document_.facts.outline = {{.title = "1. Plain  Words", .level = 1, .page = 0, .y = 50}};
  AnalyzeDocument(document_);
  EXPECT_EQ(Flow(0)[0]->role, ParagraphRole::kHeading);
  EXPECT_EQ(Flow(0)[0]->level, 2);
}

TEST_F(DocumentAnalysis, NumbersListsOverPages) {
  MadePage first;
  first.Text(72, 200, kFull).Text(90, 230, U"1. one thing").Text(90, 242, U"2. another");
  Add(first);
  MadePage second;
  second.Text(90, 60, U"3. the third").Text(72, 100, kFull);
  Add(second);
  AnalyzeDocument(document_);
  ASSERT_THAT(Flow(0), SizeIs(3));
  const Paragraph& item = *Flow(0)[1];
  EXPECT_EQ(item.role, ParagraphRole::kListItem);
  EXPECT_EQ(TextOf(item), "one thing");
  EXPECT_EQ(item.label->text, "1.");
  EXPECT_EQ(Flow(1)[0]->label->value, 3);
  EXPECT_EQ(Flow(1)[0]->label->list, item.label->list);
}

TEST_F(DocumentAnalysis, NestsLists) {
  MadePage page;
  page.Text(90, 100, U"\u2022 outer").Text(110, 112, U"\u25E6 inner").Text(90, 124, U"\u2022 next");
  Add(page);
  AnalyzeDocument(document_);
  ASSERT_THAT(Flow(0), SizeIs(3));
  EXPECT_EQ(Flow(0)[0]->level, 0);
  EXPECT_EQ(Flow(0)[1]->level, 1);
  EXPECT_EQ(Flow(0)[2]->level, 0);
}

TEST_F(DocumentAnalysis, LeavesASentenceThatBeginsWithANumber) {
  MadePage page;
  page.Text(72, 100, U"7. is no item when it is alone");
  Add(page);
  AnalyzeDocument(document_);
  EXPECT_FALSE(Flow(0)[0]->label.has_value());
}

TEST_F(DocumentAnalysis, LeadsEntriesOfContentsByTabs) {
  MadePage page;
  page.Text(72, 200, U"Introduction . . . . . . . . 3").Text(90, 220, U"Scope .......... 12");
  Add(page);
  AnalyzeDocument(document_);
  ASSERT_THAT(Flow(0), SizeIs(2));
  EXPECT_EQ(Flow(0)[0]->role, ParagraphRole::kContents);
  EXPECT_EQ(Flow(0)[1]->level, 1);
  const std::vector<TextPiece>& pieces = Flow(0)[1]->lines[0].pieces;
  ASSERT_THAT(pieces, SizeIs(3));
  EXPECT_EQ(pieces[0].text, "Scope ");
  EXPECT_EQ(pieces[1].kind, PieceKind::kTab);
  EXPECT_EQ(pieces[2].text, "12");
}

// The lines are as long as each other, as those of a paragraph are.
TEST_F(DocumentAnalysis, KeepsEntriesOfContentsApart) {
  MadePage page;
  page.Text(72, 200, U"1. Introduction .......... 3")
      .Text(72, 212, U"2. Scope ................. 5");
  page.Text(72, 224, U"3. Terms ................. 7");
  Add(page);
  AnalyzeDocument(document_);
  ASSERT_THAT(Flow(0), SizeIs(3));
  for (const Paragraph* entry : Flow(0)) {
    EXPECT_EQ(entry->role, ParagraphRole::kContents);
    EXPECT_FALSE(entry->label.has_value());
    EXPECT_EQ(entry->lines[0].pieces.back().kind, PieceKind::kText);
  }
}

// A letter of the face is wider than a dot.
TEST_F(DocumentAnalysis, GivesEntriesOfContentsTheWidthOfTheirText) {
  MadePage page;
  page.Text(72, 200, U"MMMMMMMMMM .......... 3", {.advance = 0.5});
  Add(page);
  AnalyzeDocument(document_);
  const std::vector<TextPiece>& pieces = Flow(0)[0]->lines[0].pieces;
  ASSERT_THAT(pieces, SizeIs(3));
  EXPECT_GT(pieces[0].width, 2 * pieces[1].width);
  EXPECT_DOUBLE_EQ(pieces[0].x + pieces[0].width, pieces[1].x);
}

TEST_F(DocumentAnalysis, LeavesDotsThatLeadToNoNumber) {
  MadePage page;
  page.Text(72, 200, U"Name ............ and date");
  Add(page);
  AnalyzeDocument(document_);
  EXPECT_EQ(Flow(0)[0]->role, ParagraphRole::kBody);
}

TEST_F(DocumentAnalysis, MovesNotesWithTheirMarks) {
  MadePage page;
  page.Text(72, 200, kFull).Text(72, 212, U"Said by some").Text(132, 208, U"1", {.size = 6});
  page.Text(72, 700, U"1", {.size = 5}).Text(76, 703, U"By whom is not known.", {.size = 8});
  Add(page);
  AnalyzeDocument(document_);
  const PageLayout& layout = document_.pages[0].layout;
  ASSERT_THAT(layout.notes, SizeIs(1));
  EXPECT_EQ(layout.notes[0].label, "1");
  EXPECT_EQ(TextOf(std::get<Paragraph>(layout.notes[0].blocks.at(0).content)),
            "By whom is not known.");
  const TextPiece& mark = Flow(0)[0]->lines.back().pieces.back();
  EXPECT_EQ(mark.kind, PieceKind::kNoteMark);
  EXPECT_EQ(mark.number, 0);
}

TEST_F(DocumentAnalysis, GivesNotesWithTheSameMarkAReferenceEach) {
  MadePage page;
  page.Text(72, 176, kFull).Text(72, 188, kFull);
  for (int i = 0; i < 2; ++i) {
    page.Text(72, 200 + 12 * i, U"Said by some").Text(132, 196 + 12 * i, U"\u2020", {.size = 6});
    page.Text(72, 700 + 24 * i, U"\u2020", {.size = 5});
    page.Text(76, 703 + 24 * i, U"By whom is not known.", {.size = 8});
  }
  Add(page);
  AnalyzeDocument(document_);
  ASSERT_THAT(document_.pages[0].layout.notes, SizeIs(2));
  std::vector<std::uint32_t> numbers;
  for (const Paragraph* paragraph : Flow(0)) {
    for (const TextLine& line : paragraph->lines) {
      for (const TextPiece& piece : line.pieces) {
        if (piece.kind == PieceKind::kNoteMark) {
          numbers.push_back(piece.number);
        }
      }
    }
  }
  EXPECT_THAT(numbers, ElementsAre(0, 1));
}

TEST_F(DocumentAnalysis, LeavesNotesInColumns) {
  MadePage page;
  for (int i = 0; i < 20; ++i) {
    page.Text(72, 200 + 12 * i, U"Half of a line of the page")
        .Text(320, 200 + 12 * i, U"and its other half, to read later");
  }
  page.Text(72, 440, U"Said by some").Text(132, 436, U"1", {.size = 6});
  page.Text(72, 700, U"1", {.size = 5}).Text(76, 703, U"By whom is not known.", {.size = 8});
  Add(page);
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.bands.at(0).columns, SizeIs(2));
  EXPECT_THAT(document_.pages[0].layout.notes, SizeIs(0));
}

TEST_F(DocumentAnalysis, LeavesNotesWithoutAMarkInTheText) {
  MadePage page;
  page.Text(72, 200, kFull).Text(72, 212, kFull);
  page.Text(72, 700, U"1", {.size = 5}).Text(76, 703, U"By whom is not known.", {.size = 8});
  Add(page);
  AnalyzeDocument(document_);
  EXPECT_THAT(document_.pages[0].layout.notes, SizeIs(0));
}

TEST_F(DocumentAnalysis, ContinuesSentencesOnTheNextPage) {
  for (const bool is_first : {true, false}) {
    MadePage page;
    page.Text(72, 200, is_first ? kFull : U"in small letters the sentence goes on, on this page")
        .Text(72, 212, kFull);
    Add(page);
  }
  AnalyzeDocument(document_);
  EXPECT_FALSE(Flow(0)[0]->goes_on);
  EXPECT_TRUE(Flow(1)[0]->goes_on);
}

TEST_F(DocumentAnalysis, FindsCaptionsBesidePictures) {
  MadePage page;
  page.Image({100, 150, 300, 300}).Text(100, 320, U"Figure 2: A picture").Text(72, 400, kFull);
  Add(page);
  AnalyzeDocument(document_);
  EXPECT_EQ(Flow(0)[0]->role, ParagraphRole::kCaption);
  EXPECT_EQ(Flow(0)[1]->role, ParagraphRole::kBody);
}

TEST_F(DocumentAnalysis, LeadsLinksToParagraphs) {
  MadePage first;
  first.Text(72, 100, U"See below");
  Add(first);
  MadePage second;
  second.Text(72, 100, kFull).Text(72, 300, U"The target");
  Add(second);
  document_.pages[0].layout.links = {{.uri = "", .bookmark = "", .page = 1, .y = 290}};
  AnalyzeDocument(document_);
  EXPECT_FALSE(Flow(1)[1]->bookmark.empty());
  EXPECT_EQ(document_.pages[0].layout.links[0].bookmark, Flow(1)[1]->bookmark);
  EXPECT_TRUE(Flow(1)[0]->bookmark.empty());
}

TEST_F(DocumentAnalysis, TakesNoNumberForThatOfThePageWhichDoesNotCount) {
  for (int i = 0; i < 3; ++i) {
    MadePage page;
    page.Text(72, 300, kFull).Text(280, 780, U"Part 2 of all");
    Add(page);
  }
  AnalyzeDocument(document_);
  for (const OfficePage& page : document_.pages) {
    ASSERT_THAT(page.layout.footer, SizeIs(1));
    const auto& footer = std::get<Paragraph>(page.layout.footer[0].content);
    EXPECT_THAT(footer.lines[0].pieces, SizeIs(1));
    EXPECT_EQ(footer.lines[0].pieces[0].kind, PieceKind::kText);
  }
}

TEST_F(DocumentAnalysis, CutsTheNumberOfThePageOutOfItsText) {
  for (int i = 0; i < 2; ++i) {
    MadePage page;
    page.Text(72, 300, kFull).Text(280, 780, U"Page " + std::u32string(1, U'5' + i) + U" of 9");
    Add(page);
  }
  AnalyzeDocument(document_);
  const auto& footer = std::get<Paragraph>(document_.pages[0].layout.footer.at(0).content);
  const std::vector<TextPiece>& pieces = footer.lines[0].pieces;
  ASSERT_THAT(pieces, SizeIs(3));
  EXPECT_EQ(pieces[0].text, "Page ");
  EXPECT_DOUBLE_EQ(pieces[0].x, 280);
  EXPECT_EQ(pieces[1].text, "5");
  EXPECT_NEAR(pieces[1].x, 305, 0.1);
  EXPECT_NEAR(pieces[1].width, 5, 0.1);
  EXPECT_EQ(pieces[2].text, " of 9");
  EXPECT_NEAR(pieces[2].x, 310, 0.1);
}

}  // namespace
}  // namespace TarnixTools::engines::office
