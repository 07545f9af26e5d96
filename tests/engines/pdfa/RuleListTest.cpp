#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/rules/RuleList.h"
#include "support/Expected.h"
#include "support/Surroundings.h"

namespace TarnixTools::engines::pdfa {
namespace {

std::string NumberText(const RuleNumber& number) {
  return number ? number.clause + ("-" + std::to_string(number.test)) : std::string();
}

TEST(RuleList, IsInTheDocuments) {
  std::ifstream file(TarnixTools::testing::SourceDir() + "/docs/pdfa-coverage.md");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    lines.push_back(line);
  }
  for (const RuleText& rule : AllRules()) {
    const std::string row = "| " + NumberText(rule.part1) + " | " + NumberText(rule.later) + " |";
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                            [&](const std::string& line) {
                              return line.starts_with(row) &&
                                     line.find(rule.wrong) != std::string::npos;
                            }))
        << row << rule.wrong;
  }
}

// Every number that stands in the sources of the tests of rules.
std::set<std::string> NumbersInTests() {
  std::set<std::string> numbers;
  const std::regex number("6(\\.\\d+)+-\\d+");
  for (const auto& file : std::filesystem::recursive_directory_iterator(
           TarnixTools::testing::SourceDir() + "/tests/engines/pdfa")) {
    if (file.path().extension() == ".cpp") {
      std::ifstream source(file.path());
      const std::string text(std::istreambuf_iterator<char>(source), {});
      for (std::sregex_iterator match(text.begin(), text.end(), number), end; match != end;
           ++match) {
        numbers.insert(match->str());
      }
    }
  }
  return numbers;
}

TEST(RuleList, HasAnExampleThatBreaksEachRule) {
  const std::set<std::string> numbers = NumbersInTests();
  for (const RuleText& rule : AllRules()) {
    EXPECT_TRUE(numbers.contains(NumberText(rule.part1)) ||
                numbers.contains(NumberText(rule.later)))
        << NumberText(rule.part1) << " " << NumberText(rule.later) << ": " << rule.wrong;
  }
}

TEST(RuleList, NumbersEachRuleOfALevelOnce) {
  std::set<std::tuple<int, std::string>> seen;
  for (const RuleText& rule : AllRules()) {
    for (int bit = 0; bit < 8; ++bit) {
      const auto level = static_cast<Level>(1 << bit);
      const RuleNumber& number = PartOf(level) == 1 ? rule.part1 : rule.later;
      if (Contains(rule.levels, level) && number) {
        EXPECT_TRUE(seen.emplace(bit, NumberText(number)).second) << NumberText(number);
      }
    }
  }
  EXPECT_GT(seen.size(), 900U);
}

TEST(RuleList, HasTwoSentencesForEachRule) {
  for (const RuleText& rule : AllRules()) {
    for (const char* sentence : {rule.wrong, rule.cure}) {
      EXPECT_TRUE('A' <= *sentence && *sentence <= 'Z') << sentence;
      EXPECT_TRUE(std::string(sentence).ends_with('.')) << sentence;
    }
  }
}

// "1b 2b 3b".
std::string LevelsText(LevelSet levels) {
  std::string text;
  for (int bit = 0; bit < 8; ++bit) {
    const auto level = static_cast<Level>(1 << bit);
    if (Contains(levels, level)) {
      text += std::string(" ") + (NameOf(level) + 6);
    }
  }
  return text;
}

TEST(RuleList, SaysAllOfThis) {
  std::string text;
  for (const RuleText& rule : AllRules()) {
    text += NumberText(rule.part1) + " | " + NumberText(rule.later) + " |" +
            LevelsText(rule.levels) + "\n" + rule.wrong + "\n" + rule.cure + "\n\n";
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/rules.txt", text));
}

TEST(Levels, GoWithTheirCodes) {
  constexpr std::tuple<Level, std::int32_t, int, char, const char*> kRows[] = {
      {Level::k1b, 0x1401, 1, 'b', "PDF/A-1b"}, {Level::k1a, 0x1402, 1, 'a', "PDF/A-1a"},
      {Level::k2b, 0x1701, 2, 'b', "PDF/A-2b"}, {Level::k2u, 0x1702, 2, 'u', "PDF/A-2u"},
      {Level::k2a, 0x1703, 2, 'a', "PDF/A-2a"}, {Level::k3b, 0x1711, 3, 'b', "PDF/A-3b"},
      {Level::k3u, 0x1712, 3, 'u', "PDF/A-3u"}, {Level::k3a, 0x1713, 3, 'a', "PDF/A-3a"}};
  for (const auto& [level, code, part, conformance, name] : kRows) {
    EXPECT_EQ(CodeOf(level), code);
    EXPECT_EQ(LevelOfCode(code), level);
    EXPECT_EQ(LevelOf(part, conformance), level);
    EXPECT_EQ(PartOf(level), part);
    EXPECT_EQ(ConformanceOf(level), conformance);
    EXPECT_STREQ(NameOf(level), name);
  }
  EXPECT_STREQ(NameOf(static_cast<Level>(0)), "");
  EXPECT_EQ(CodeOf(Level::k1a), 0x1402);
  EXPECT_EQ(CodeOf(Level::k3u), 0x1712);
  EXPECT_EQ(LevelOfCode(0x1703), Level::k2a);
  EXPECT_EQ(LevelOfCode(0x1700), std::nullopt);
  EXPECT_EQ(LevelOf(1, 'u'), std::nullopt);
  EXPECT_STREQ(NameOf(Level::k3b), "PDF/A-3b");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
