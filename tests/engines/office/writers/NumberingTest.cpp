#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/XmlNode.h"
#include "engines/office/writers/word/Numbering.h"

namespace TarnixTools::engines::office {
namespace {

ListLabel Label(ListKind kind, const std::string& text, std::int32_t value,
                std::uint32_t list = 1) {
  return {kind, text, value, 0, 0, list};
}

std::string Written(const Numbering& numbering) {
  pdf::StringSink sink;
  XmlWriter xml(sink);
  numbering.Write(xml);
  xml.Finish();
  return sink.Take();
}

TEST(Numbering, CountsItemsOfAListByOneNumber) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kDecimal, "(1)", 1), 0, {});
  const ListPlace second = numbering.Place(Label(ListKind::kDecimal, "(2)", 2), 0, {});
  EXPECT_EQ(first.number, second.number);
  EXPECT_NE(Written(numbering).find("w:val=\"(%1)\""), std::string::npos);
}

TEST(Numbering, StartsAnewWhereCountingGivesAnotherLabel) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kLowerLetter, "c)", 3), 0, {});
  const ListPlace other = numbering.Place(Label(ListKind::kLowerLetter, "f)", 6), 0, {});
  EXPECT_NE(first.number, other.number);
  EXPECT_NE(Written(numbering).find("<w:startOverride w:val=\"6\"/>"), std::string::npos);
}

TEST(Numbering, KeepsTheLevelsOfAListApart) {
  Numbering numbering;
  const ListPlace outer = numbering.Place(Label(ListKind::kDecimal, "1.", 1), 0, {});
  const ListPlace inner = numbering.Place(Label(ListKind::kLowerLetter, "a.", 1), 1, {});
  const ListPlace next = numbering.Place(Label(ListKind::kDecimal, "2.", 2), 0, {});
  const ListPlace again = numbering.Place(Label(ListKind::kLowerLetter, "a.", 1), 1, {});
  EXPECT_EQ(outer.number, inner.number);
  EXPECT_EQ(inner.level, 1u);
  EXPECT_EQ(next.number, outer.number);
  EXPECT_EQ(again.number, outer.number);
}

TEST(Numbering, DefinesAnewWhatLooksOtherwise) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kBullet, "•", 0), 0, {});
  const ListPlace other = numbering.Place(Label(ListKind::kBullet, "-", 0), 0, {});
  EXPECT_NE(first.number, other.number);
  EXPECT_EQ(SchemaComplaints(Written(numbering)), "");
}

TEST(Numbering, ShowsBulletsOfSymbolFontsAsText) {
  Numbering numbering;
  numbering.Place(Label(ListKind::kBullet, "\uF0B7", 0), 0, {});
  numbering.Place(Label(ListKind::kBullet, "\uF0FC", 0, 2), 0, {});
  EXPECT_NE(Written(numbering).find("<w:lvlText w:val=\"•\"/>"), std::string::npos);
  EXPECT_NE(Written(numbering).find("<w:lvlText w:val=\"✓\"/>"), std::string::npos);
}

// The patterns of all levels that are used, with what they count by.
std::string PatternOf(ListKind kind, const char* text) {
  Numbering numbering;
  numbering.Place(Label(kind, text, 1), 1, {});
  const XmlNode root = ParsedXml(Written(numbering));
  return Values(root, "w:numFmt", "w:val").at(1) + " " + Values(root, "w:lvlText", "w:val").at(1);
}

TEST(Numbering, HasThePatternsOfItsLabels) {
  EXPECT_EQ(PatternOf(ListKind::kDecimal, "(10)"), "decimal (%2)");
  EXPECT_EQ(PatternOf(ListKind::kDecimal, "2.10."), "decimal 2.%2.");
  EXPECT_EQ(PatternOf(ListKind::kLowerLetter, "a)"), "lowerLetter %2)");
  EXPECT_EQ(PatternOf(ListKind::kUpperLetter, "B."), "upperLetter %2.");
  EXPECT_EQ(PatternOf(ListKind::kLowerRoman, "xiv."), "lowerRoman %2.");
  EXPECT_EQ(PatternOf(ListKind::kUpperRoman, "[IV]"), "upperRoman [%2]");
  EXPECT_EQ(PatternOf(ListKind::kDecimal, "5 %"), "decimal %2  ");
  EXPECT_EQ(PatternOf(ListKind::kDecimal, "?"), "decimal ?");
  EXPECT_EQ(PatternOf(ListKind::kBullet, "*"), "bullet *");
}

TEST(Numbering, IndentsItsLevels) {
  Numbering numbering;
  numbering.Place(Label(ListKind::kDecimal, "1.", 1), 20, {});  // the last level is the ninth
  const XmlNode root = ParsedXml(Written(numbering));
  EXPECT_EQ(Values(root, "w:lvlText", "w:val").at(8), "%9.");
  EXPECT_EQ(ShownAll(*All(root, "w:lvl").at(0), "w:ind"),
            "<w:ind w:left=\"360\" w:hanging=\"360\"/>\n");
  EXPECT_EQ(ShownAll(*All(root, "w:lvl").at(8), "w:ind"),
            "<w:ind w:left=\"3240\" w:hanging=\"360\"/>\n");
}

TEST(Numbering, CountsInnerLevelsAnewBelowAnOuterOne) {
  Numbering numbering;
  const auto place = [&numbering](const char* text, std::int32_t value, std::uint8_t level) {
    return numbering.Place(Label(ListKind::kDecimal, text, value), level, {}).number;
  };
  const std::uint32_t list = place("1.", 1, 0);
  EXPECT_EQ(place("1)", 1, 1), list);
  EXPECT_EQ(place("2)", 2, 1), list);
  EXPECT_EQ(place("2.", 2, 0), list);
  EXPECT_EQ(place("1)", 1, 1), list);
  EXPECT_NE(place("3)", 3, 1), list);  // two was left out
}

}  // namespace
}  // namespace TarnixTools::engines::office
