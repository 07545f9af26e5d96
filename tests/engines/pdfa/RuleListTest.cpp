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

TEST(Levels, GoWithTheirCodes) {
  EXPECT_EQ(CodeOf(Level::k1a), 0x1402);
  EXPECT_EQ(CodeOf(Level::k3u), 0x1712);
  EXPECT_EQ(LevelOfCode(0x1703), Level::k2a);
  EXPECT_EQ(LevelOfCode(0x1700), std::nullopt);
  EXPECT_EQ(LevelOf(1, 'u'), std::nullopt);
  EXPECT_STREQ(NameOf(Level::k3b), "PDF/A-3b");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
