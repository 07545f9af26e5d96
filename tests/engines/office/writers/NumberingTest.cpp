#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/XmlNode.h"
#include "engines/office/writers/word/Numbering.h"
#include "engines/support/layout/Dice.h"
#include "support/Expected.h"

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

// What Word shows before an item: its number, by the definition and by where the count begins.
class Counter {
 public:
  explicit Counter(const XmlNode& root) {
    std::vector<std::vector<std::string>> patterns;
    for (const XmlNode* definition : All(root, "w:abstractNum")) {
      patterns.push_back(Values(*definition, "w:lvlText", "w:val"));
    }
    for (const XmlNode* number : All(root, "w:num")) {
      const std::string definition = Values(*number, "w:abstractNumId", "w:val").at(0);
      Number& own = numbers_.emplace_back();
      own.patterns = patterns.at(std::stoul(definition));
      own.counts.assign(own.patterns.size(), 0);
      own.starts.assign(own.patterns.size(), 1);
      const std::vector<std::string> levels = Values(*number, "w:lvlOverride", "w:ilvl");
      const std::vector<std::string> starts = Values(*number, "w:startOverride", "w:val");
      for (std::size_t i = 0; i < levels.size(); ++i) {
        own.starts.at(std::stoul(levels[i])) = std::stoi(starts.at(i));
      }
    }
  }

  std::string Next(const ListPlace& place) {
    Number& own = numbers_.at(place.number - 1);
    int& count = own.counts.at(place.level);
    count = count == 0 ? own.starts.at(place.level) : count + 1;
    std::fill(own.counts.begin() + place.level + 1, own.counts.end(), 0);
    std::string text = own.patterns.at(place.level);
    const std::string mark = "%" + std::to_string(place.level + 1);
    const std::size_t at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), std::to_string(count));
  }

 private:
  struct Number {
    std::vector<std::string> patterns;
    std::vector<int> counts;
    std::vector<int> starts;
  };

  std::vector<Number> numbers_;
};

// Items of lists that go on, are cut, nested and counted as chance has it; what Word counts is what
// was shown.
TEST(Numbering, CountsAsTheLabelsDo) {
  std::string text;
  for (std::uint64_t seed = 1; seed <= 30; ++seed) {
    Dice dice(seed);
    Numbering numbering;
    std::vector<std::pair<std::string, ListPlace>> items;
    std::array<std::int32_t, 3> counts = {};
    for (std::size_t i = dice.Under(14) + 3; i > 0; --i) {
      const std::size_t level = dice.Under(3);
      const bool is_bullet = dice.Chance(15);
      std::fill(counts.begin() + static_cast<std::ptrdiff_t>(level) + 1, counts.end(), 0);
      counts[level] =
          dice.Chance(85) ? counts[level] + 1 : static_cast<std::int32_t>(dice.Under(6) + 1);
      const std::string shown = std::to_string(counts[level]) + (dice.Chance(90) ? "." : ")");
      const std::string label = is_bullet ? "•" : shown;
      const ListPlace place = numbering.Place(
          Label(is_bullet ? ListKind::kBullet : ListKind::kDecimal, label,
                is_bullet ? 0 : counts[level], static_cast<std::uint32_t>(dice.Chance(90) ? 1 : 2)),
          static_cast<std::uint8_t>(level), {});
      items.emplace_back(label, place);
      text += label + " " + std::to_string(place.number) + "/" + std::to_string(place.level) + ", ";
    }
    const XmlNode root = ParsedXml(Written(numbering));
    Counter counter(root);
    for (const auto& [label, place] : items) {
      EXPECT_EQ(counter.Next(place), label) << seed;
    }
    text += "\n";
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("office/numbering.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
