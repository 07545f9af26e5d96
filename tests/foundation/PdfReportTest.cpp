#include <set>

#include <gtest/gtest.h>

#include "PdfReport.h"

namespace TarnixTools {
namespace {

using Kind = PdfReportKind;
using Outcome = PdfReportOutcome;

TEST(PdfReport, CountsWhatIsTheSameTogether) {
  PdfReport report;
  report.Add({Kind::Link, Outcome::Kept, 2, 3, ""});
  report.Add({Kind::Link, Outcome::Dropped, 1, 4, "why"});
  report.Add({Kind::Link, Outcome::Kept, 5, 6, ""});
  report.Add({Kind::Link, Outcome::Dropped, 1, 0, "why not"});
  const std::vector<PdfReportEntry> expected = {{Kind::Link, Outcome::Kept, 7, 3, ""},
                                                {Kind::Link, Outcome::Dropped, 1, 4, "why"},
                                                {Kind::Link, Outcome::Dropped, 1, 0, "why not"}};
  EXPECT_EQ(report.GetEntries(), expected);
}

TEST(PdfReport, TakesInAnother) {
  PdfReport report;
  report.Add({Kind::Layer, Outcome::Kept, 1, 0, ""});
  PdfReport other;
  other.Add({Kind::Layer, Outcome::Kept, 2, 0, ""});
  other.Add({Kind::Script, Outcome::Dropped, 1, 0, "runs"});
  report.Add(other);
  ASSERT_EQ(report.GetEntries().size(), 2U);
  EXPECT_EQ(report.GetEntries()[0].count, 3);
  report.Add(report);
  ASSERT_EQ(report.GetEntries().size(), 2U);
  EXPECT_EQ(report.GetEntries()[1].count, 2);
  report.Clear();
  EXPECT_TRUE(report.GetEntries().empty());
}

TEST(PdfReport, TellsEntriesAsLines) {
  EXPECT_EQ(PdfReport::GetText({Kind::OutlineItem, Outcome::Kept, 12, 0, ""}),
            "12 outline items kept");
  EXPECT_EQ(PdfReport::GetText({Kind::NamedDestination, Outcome::Renamed, 2, 1, "taken"}),
            "2 named destinations renamed: taken");
  EXPECT_EQ(PdfReport::GetText({Kind::Signature, Outcome::Dropped, 1, 3, "pages changed"}),
            "1 signature dropped: pages changed");
  EXPECT_EQ(PdfReport::GetText({Kind::Damage, Outcome::Kept, 1, 0, "page count wrong"}),
            "damage: page count wrong");
  EXPECT_EQ(PdfReport::GetText({Kind::Damage, Outcome::Dropped, 3, 0, "object missing"}),
            "damage: object missing (3 times)");
  EXPECT_EQ(PdfReport::GetText({Kind::Conversion, Outcome::Replaced, 2, 0, "font embedded"}),
            "changed for PDF/A: font embedded (2 times)");
  EXPECT_EQ(PdfReport::GetText({Kind::Conversion, Outcome::Dropped, 1, 0, "script"}),
            "left out for PDF/A: script");
  EXPECT_EQ(PdfReport::GetText({Kind::Conversion, Outcome::Kept, 1, 0, "no font"}),
            "in the way of PDF/A: no font");
  EXPECT_EQ(PdfReport::GetText({Kind::PageNumber, Outcome::Added, 12, 1, ""}),
            "12 page numbers added");
  EXPECT_EQ(PdfReport::GetText({Kind::Font, Outcome::Replaced, 1, 0, "not installed"}),
            "1 font replaced: not installed");
}

TEST(PdfReport, NamesEveryKindDifferently) {
  std::set<std::string> names;
  for (int kind = 0; kind <= static_cast<int>(Kind::Protection); ++kind) {
    names.insert(PdfReport::GetKindName(static_cast<Kind>(kind)));
  }
  EXPECT_EQ(names.size(), static_cast<std::size_t>(Kind::Protection) + 1);
  EXPECT_EQ(names.count("thing"), 0U);
  EXPECT_STREQ(PdfReport::GetKindName(static_cast<Kind>(1000)), "thing");
}

TEST(PdfReport, NamesKindsInPlainWords) {
  const char* const names[] = {
      "link",           "annotation",  "named destination", "outline item",
      "page label",     "form field",  "signature",         "XFA form",
      "script",         "layer",       "attachment",        "structure element",
      "article thread", "thumbnail",   "output intent",     "viewer setting",
      "resource",       "damage",      "page number",       "text stamp",
      "image stamp",    "font",        "language",          "metadata value",
      "XMP packet",     "PDF/A claim", "conversion",        "protection",
      "scanned text",   "page size"};
  std::set<std::string> left(std::begin(names), std::end(names));
  for (int kind = 0; std::string(PdfReport::GetKindName(static_cast<Kind>(kind))) != "thing";
       ++kind) {
    EXPECT_EQ(left.erase(PdfReport::GetKindName(static_cast<Kind>(kind))), 1U)
        << PdfReport::GetKindName(static_cast<Kind>(kind));
  }
  EXPECT_TRUE(left.empty());
}

TEST(PdfReport, IsCopiedAndMovedAsAValue) {
  PdfReport report;
  report.Add({Kind::Layer, Outcome::Kept, 1, 0, ""});
  PdfReport copy = report;
  report.Clear();
  EXPECT_EQ(copy.GetEntries().size(), 1U);
  const PdfReport moved = std::move(copy);
  EXPECT_EQ(moved.GetEntries().size(), 1U);
}

TEST(PdfReport, KeepsSourcesApart) {
  PdfReport report;
  PdfReportEntry entry{
      .kind = Kind::Damage, .outcome = Outcome::Dropped, .count = 1, .reason = "cut"};
  for (const char* source : {"a.png", "b.png", "a.png"}) {
    entry.source = source;
    report.Add(entry);
  }
  ASSERT_EQ(report.GetEntries().size(), 2U);
  EXPECT_EQ(report.GetEntries()[0].source, "a.png");
  EXPECT_EQ(report.GetEntries()[0].count, 2);
  EXPECT_EQ(report.GetEntries()[1].count, 1);
}

}  // namespace
}  // namespace TarnixTools
