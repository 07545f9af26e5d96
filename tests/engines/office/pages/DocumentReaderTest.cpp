#include <atomic>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/pages/DocumentReader.h"
#include "engines/support/pages/Cancellation.h"
#include "foundation/Utf8.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using testing::TestPdf;

constexpr const char* kImage = "BI /W 1 /H 1 /CS /G /BPC 8 /F /AHx ID 80> EI";
constexpr const char* kFont =
    "/Resources<</Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>";

class DocumentReaderTest : public ::testing::Test {
 protected:
  DocumentReader& Open(const TestPdf& pdf) {
    reader_ = DocumentReader::Open(platform::WidePath(pdf.Write(directory_.Path("a.pdf"))), "");
    return *reader_;
  }

  bool IsScanned(const std::string& content) {
    return Open(TestPdf().Page().PageEntry(kFont).Content(content)).IsScanned(0);
  }

  testing::TempDir directory_;
  std::unique_ptr<DocumentReader> reader_;
};

std::u32string TextOf(const PageModel& page) {
  std::u32string text;
  for (const Glyph& glyph : page.glyphs) {
    text += page.text.substr(glyph.text, glyph.length);
  }
  return text;
}

TEST_F(DocumentReaderTest, StopsInThePageOnceItIsCancelled) {
  const std::atomic<bool> is_cancelled = true;
  DocumentReader& reader = Open(TestPdf().Page().PageEntry(kFont).Content("BT ET"));
  reader.SetCancelFlag(is_cancelled);
  EXPECT_THROW(reader.Read(0), Cancelled);
  EXPECT_THROW(reader.OpenAgain()->Read(0), Cancelled);
}

TEST_F(DocumentReaderTest, ReadsLinks) {
  TestPdf pdf;
  pdf.Page("a").Annotation("/Subtype/Link/Rect[10 20 110 40]/A<</S/URI/URI(https://a.example)>>");
  pdf.Annotation("/Subtype/Link/Rect[10 60 110 80]/Dest[{{page 2}}/XYZ 0 692 0]");
  pdf.Annotation("/Subtype/Link/Rect[10 60 110 80]/Dest(nowhere)").Page("b");
  const PageModel page = Open(pdf).Read(0);
  ASSERT_EQ(page.links.size(), 2U);
  EXPECT_EQ(page.links[0].uri, "https://a.example");
  EXPECT_NEAR(page.links[0].box.bottom, 752, 1e-6);
  EXPECT_EQ(page.links[1].target_page, 1);
  EXPECT_NEAR(page.links[1].target_y, 100, 1e-6);
}

TEST_F(DocumentReaderTest, MakesPagesSmallerThatHaveTooLittleRoom) {
  TestPdf pdf;
  pdf.Page().PageEntry(kFont).Content("BT /F 20 Tf 100 592 Td (a) Tj ET 0 0 61.2 79.2 re f");
  pdf.Annotation("/Subtype/Link/Rect[10 60 110 80]/Dest[{{page 1}}/XYZ 0 692 0]");
  DocumentReader& reader = Open(pdf);
  reader.SetRoom({306, 500});
  EXPECT_EQ(reader.SizeOf(0).width, 612);
  EXPECT_EQ(reader.SizeOf(0).height, 792);
  const PageModel page = reader.OpenAgain()->Read(0);
  EXPECT_EQ(page.scale, 0.5);
  EXPECT_EQ(page.width, 306);
  EXPECT_EQ(page.height, 396);
  ASSERT_EQ(page.glyphs.size(), 1U);
  EXPECT_NEAR(page.glyphs[0].x, 50, 1e-6);
  EXPECT_NEAR(page.glyphs[0].y, 100, 1e-6);
  EXPECT_NEAR(page.styles[page.glyphs[0].style].size, 10, 1e-6);
  ASSERT_EQ(page.paths.size(), 1U);
  EXPECT_NEAR(page.paths[0].box.width(), 30.6, 1e-6);
  ASSERT_EQ(page.links.size(), 1U);
  EXPECT_NEAR(page.links[0].box.width(), 50, 1e-6);
  EXPECT_NEAR(page.links[0].target_y, 50, 1e-6);
}

TEST_F(DocumentReaderTest, LeavesPagesThatHaveRoom) {
  DocumentReader& reader = Open(TestPdf().Page());
  reader.SetRoom({612, 792});
  EXPECT_EQ(reader.Read(0).scale, 1);
  EXPECT_EQ(reader.Read(0).width, 612);
}

TEST_F(DocumentReaderTest, ReadsTheOutline) {
  TestPdf pdf;
  pdf.Pages(2).Object("root", "<</First {{one}}>>");
  pdf.Object("one", "<</Title(One)/Dest[{{page 1}}/Fit]/First {{two}}/Next {{one}}>>");
  pdf.Object("two", "<</Title(Two)/A<</S/GoTo/D[{{page 2}}/FitH 392]>>>>");
  pdf.CatalogEntry("/Outlines {{root}}/Lang(de)").InfoEntry("/Title(A title)");
  const DocumentFacts& facts = Open(pdf).facts();
  EXPECT_EQ(facts.title, "A title");
  EXPECT_EQ(facts.language, "de");
  EXPECT_FALSE(facts.is_tagged);
  ASSERT_EQ(facts.outline.size(), 2U);
  EXPECT_EQ(facts.outline[0].title, "One");
  EXPECT_EQ(facts.outline[1].level, 1U);
  EXPECT_EQ(facts.outline[1].page, 1U);
  EXPECT_NEAR(facts.outline[1].y, 400, 1e-6);
}

TEST_F(DocumentReaderTest, TellsTheRolesOfMarkedContent) {
  TestPdf pdf;
  pdf.Page().PageEntry(kFont).Content(
      "/P <</MCID 1>> BDC BT /F 10 Tf 100 700 Td (a) Tj ET EMC "
      "/H <</MCID 0>> BDC BT /F 10 Tf 100 600 Td (b) Tj ET EMC");
  pdf.Object("tree", "<</Type/StructTreeRoot/K {{all}}/RoleMap<</Big/H1>>>>");
  pdf.Object("all", "<</S/Document/K[{{head}} {{body}} {{all}}]/Pg {{page 1}}>>");
  pdf.Object("head", "<</S/Big/K 0/Alt(what)>>").Object("body", "<</S/P/K[1]>>");
  pdf.CatalogEntry("/StructTreeRoot {{tree}}");
  const PageModel page = Open(pdf).Read(0);
  ASSERT_EQ(page.roles.size(), 2U);
  EXPECT_THAT(page.roles[0].path, ElementsAre("Document", "H1"));
  EXPECT_EQ(page.roles[0].description, "what");
  EXPECT_THAT(page.roles[1].path, ElementsAre("Document", "P"));
  EXPECT_LT(page.roles[0].order, page.roles[1].order);
  EXPECT_EQ(page.glyphs[0].mark, 1);
}

TEST_F(DocumentReaderTest, TellsOnEveryPageWhetherTheTreeHasTables) {
  for (const bool has_table : {true, false}) {
    TestPdf pdf;
    pdf.Pages(2, "Page");
    pdf.Object("tree", "<</Type/StructTreeRoot/K {{all}}/RoleMap<</Line/TR>>>>");
    pdf.Object("all", "<</S/Document/K {{table}}/Pg {{page 2}}>>");
    pdf.Object("table", has_table ? "<</S/Table/K<</S/Line/K 0>>>>" : "<</S/P/K 0>>");
    pdf.CatalogEntry("/StructTreeRoot {{tree}}");
    EXPECT_EQ(Open(pdf).Read(0).tree_has_tables, has_table);
  }
}

TEST_F(DocumentReaderTest, TellsScannedPages) {
  const std::string scan = std::string("q 612 0 0 792 0 0 cm ") + kImage + " Q ";
  const std::string text(100, 'a');
  EXPECT_TRUE(IsScanned(scan));
  EXPECT_TRUE(IsScanned(scan + "BT /F 10 Tf 9 9 Td (page 7) Tj ET"));
  EXPECT_FALSE(IsScanned(scan + "BT /F 10 Tf 9 9 Td (" + text + ") Tj ET"));
  EXPECT_FALSE(IsScanned(scan + "BT 3 Tr /F 10 Tf 9 9 Td (" + text + ") Tj ET"));
  EXPECT_FALSE(IsScanned(std::string("q 300 0 0 300 0 0 cm ") + kImage + " Q"));
  EXPECT_FALSE(IsScanned("0 0 612 792 re f"));
}

TEST_F(DocumentReaderTest, OpensAgainForOtherThreads) {
  DocumentReader& reader = Open(TestPdf().Pages(2, "Page"));
  const auto other = reader.OpenAgain();
  EXPECT_EQ(other->page_count(), 2U);
  EXPECT_EQ(TextOf(other->Read(1)), TextOf(reader.Read(1)));
}

TEST_F(DocumentReaderTest, TellsTheCellsOfTables) {
  TestPdf pdf;
  pdf.Page().PageEntry(kFont).Content(
      "/TD <</MCID 0>> BDC EMC /TD <</MCID 1>> BDC EMC /P <</MCID 2>> BDC EMC "
      "/P <</MCID 4>> BDC EMC");
  pdf.Object("tree", "<</Type/StructTreeRoot/K {{doc}}>>");
  pdf.Object("doc", "<</S/Document/K[{{table}} {{after}}]/Pg {{page 1}}/Lang(de)>>");
  pdf.Object("table", "<</S/Table/K[{{row}}]/Alt(numbers)>>");
  pdf.Object("row", "<</S/TR/K[{{one}} {{two}}]>>");
  pdf.Object("one", "<</S/TH/K[<</S/Span/K 0/Lang(fr)>>]>>");
  pdf.Object("two", "<</S/TD/K[{{inner}} <</Type/MCR/MCID 2/Pg {{page 1}}>>]>>");
  pdf.Object("inner", "<</S/Table/K<</S/TR/K<</S/TD/K 1>>>>>>");
  // Of a form, of an object, and of no page: they say nothing of the page's content.
  pdf.Object("after", "<</S/P/K[4 <</Type/MCR/MCID 3/Stm {{tree}}>> <</Type/OBJR>> -1]>>");
  pdf.CatalogEntry("/StructTreeRoot {{tree}}");
  const PageModel page = Open(pdf).Read(0);
  ASSERT_EQ(page.roles.size(), 5U);
  const StructureRole& head = page.roles[0];
  const StructureRole& inner = page.roles[1];
  const StructureRole& second = page.roles[2];
  EXPECT_THAT(head.path, ElementsAre("Document", "Table", "TR", "TH", "Span"));
  EXPECT_EQ(head.table, second.table);
  EXPECT_EQ(head.row, second.row);
  EXPECT_NE(head.row, 0U);
  EXPECT_NE(head.cell, second.cell);
  EXPECT_NE(head.cell, 0U);
  EXPECT_NE(second.cell, 0U);
  EXPECT_EQ(head.language, "fr");
  EXPECT_EQ(second.language, "de");
  EXPECT_EQ(head.description, "numbers");
  // The innermost table counts, with its own row and cell.
  EXPECT_NE(inner.table, head.table);
  EXPECT_NE(inner.row, head.row);
  EXPECT_NE(inner.cell, second.cell);
  EXPECT_THAT(page.roles[3].path, ElementsAre());
  EXPECT_THAT(page.roles[4].path, ElementsAre("Document", "P"));
  EXPECT_EQ(page.roles[4].table, 0U);
  EXPECT_LT(head.order, inner.order);
  EXPECT_LT(inner.order, second.order);
  EXPECT_LT(second.order, page.roles[4].order);
}

TEST_F(DocumentReaderTest, FollowsNamesAndViewsOfDestinations) {
  TestPdf pdf;
  pdf.Page("a");
  const auto link = [&pdf](const std::string& target) {
    pdf.Annotation("/Subtype/Link/Rect[10 20 110 40]" + target);
  };
  link("/Dest(tree)");
  link("/Dest/old");
  link("/A<</S/GoTo/D(tree)>>");
  link("/Dest[{{page 2}}/FitH 592]");
  link("/Dest[{{page 2}}/FitBH 492]");
  link("/Dest[{{page 2}}/FitR 0 0 100 392]");
  link("/Dest[{{page 2}}/FitV 292]");
  link("/Dest[1/XYZ 0 192 0]");
  link("/Dest[{{page 2}}/XYZ 0 null 0]");
  link("/Dest[{{page 2}}/XYZ 0 9999 0]");
  link("/Dest[1/Fit]");
  link("/Dest[1/XYZ 0]");
  link("/Dest[2/Fit]");
  link("/A<</S/GoToR/D[0/Fit]>>");
  link("/A<</S/URI/URI 5>>");
  pdf.Page("b");
  pdf.Object("names", "<</Names[(tree)<</D[{{page 2}}/XYZ 0 692 0]>>]>>");
  pdf.CatalogEntry("/Names<</Dests {{names}}>>/Dests<</old[{{page 1}}/XYZ 0 92 0]>>");
  const PageModel page = Open(pdf).Read(0);
  std::vector<std::pair<int, int>> places;
  for (const PageLink& found : page.links) {
    places.emplace_back(found.target_page, static_cast<int>(std::lround(found.target_y)));
  }
  using Place = std::pair<int, int>;
  EXPECT_THAT(places, ElementsAre(Place(1, 100), Place(0, 700), Place(1, 100), Place(1, 200),
                                  Place(1, 300), Place(1, 400), Place(1, 0), Place(1, 600),
                                  Place(1, 0), Place(1, 0), Place(1, 0), Place(1, 0)));
}

TEST_F(DocumentReaderTest, TellsScannedPagesByHowMuchImagesCover) {
  const auto scan = [](const char* matrix) {
    return std::string("q ") + matrix + " cm " + kImage + " Q ";
  };
  // 60 of 100 parts of the page, in cells of a 32nd of each side.
  EXPECT_TRUE(IsScanned(scan("612 0 0 495 0 0")));
  EXPECT_FALSE(IsScanned(scan("612 0 0 470 0 0")));
  EXPECT_TRUE(IsScanned(scan("306 0 0 792 0 0") + scan("306 0 0 792 306 0")));
  const std::string whole = scan("612 0 0 792 0 0");
  const auto with_text = [&whole](std::size_t bytes, const char* mode) {
    return whole + "BT " + mode + " Tr /F 10 Tf 9 9 Td (" + std::string(bytes, 'a') + ") Tj ET";
  };
  EXPECT_TRUE(IsScanned(with_text(60, "0")));
  EXPECT_FALSE(IsScanned(with_text(61, "0")));
  EXPECT_TRUE(IsScanned(with_text(23, "3")));
  EXPECT_FALSE(IsScanned(with_text(24, "3")));
  EXPECT_TRUE(IsScanned(with_text(60, "1")));
}

TEST_F(DocumentReaderTest, TellsTheRolesOfContentOnOtherPages) {
  TestPdf pdf;
  pdf.Page().PageEntry(kFont).Content("/P <</MCID 0>> BDC EMC");
  pdf.Page().PageEntry(kFont).Content("/P <</MCID 0>> BDC EMC");
  pdf.Object("tree", "<</Type/StructTreeRoot/K {{body}}>>");
  pdf.Object("body", "<</S/P/Pg {{page 1}}/K[0 <</Type/MCR/MCID 0/Pg {{page 2}}>> {{part}}]>>");
  pdf.Object("part", "<</S/Span/Pg {{page 2}}/K 1>>");
  pdf.CatalogEntry("/StructTreeRoot {{tree}}");
  DocumentReader& reader = Open(pdf);
  EXPECT_EQ(reader.Read(0).roles.size(), 1U);
  const PageModel second = reader.Read(1);
  ASSERT_EQ(second.roles.size(), 2U);
  EXPECT_THAT(second.roles[0].path, ElementsAre("P"));
  EXPECT_THAT(second.roles[1].path, ElementsAre("P", "Span"));
}

TEST_F(DocumentReaderTest, ReadsTheOutlineInItsOrder) {
  TestPdf pdf;
  pdf.Pages(1).Object("root", "<</First {{one}}>>");
  pdf.Object("one", "<</Title(One)/Dest[0/Fit]/First {{in}}/Next {{last}}>>");
  pdf.Object("in", "<</Title(In)/Dest[0/Fit]/Next {{none}}>>");
  pdf.Object("none", "<</Title(Leads nowhere)/First {{deep}}>>");
  pdf.Object("deep", "<</Title(Deep)/Dest[0/Fit]>>");
  pdf.Object("last", "<</Title(Last)/Dest[0/Fit]>>");
  pdf.CatalogEntry("/Outlines {{root}}");
  std::vector<std::string> titles;
  for (const OutlineEntry& entry : Open(pdf).facts().outline) {
    titles.push_back(std::to_string(entry.level) + " " + entry.title);
  }
  EXPECT_THAT(titles, ElementsAre("0 One", "1 In", "2 Deep", "0 Last"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
