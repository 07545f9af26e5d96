#include "engines/pdfa/RuleCase.h"

#include <string>
#include <string_view>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "support/ArchiveFile.h"
#include "support/Expected.h"

namespace TarnixTools::testing {

namespace {

constexpr std::pair<std::string_view, std::string_view> kShort[] = {
    {"{rect}", "/Rect[0 0 10 10]"},
    {"{form}", "/AP<</N 6 0 R>>"},
    {"{file}", "/EF<</F 4 0 R>>"},
    {"{layers}", "/OCProperties<</OCGs[3 0 R]/D<<"}};

std::string Expand(std::string text) {
  for (const auto& [name, meaning] : kShort) {
    const std::size_t at = text.find(name);
    if (at != std::string::npos) {
      text.replace(at, name.size(), meaning);
    }
  }
  return text;
}

// Nothing where it is not to be found: each part has a header and a claim of its own.
void ReplaceIn(ArchiveFile& file, const std::string& replacement) {
  const std::size_t bar = replacement.find('|');
  const std::string text = replacement.substr(0, bar);
  if (bar != std::string::npos && file.Bytes().find(text) != std::string::npos) {
    file.Replace(text, replacement.substr(bar + 1));
  }
}

std::string FileOf(const RuleCase& rule_case, const char* example, const std::string& level) {
  const std::string text = Expand(example);
  ArchiveFile file(level);
  file.Catalog(rule_case.catalog);
  switch (rule_case.part) {
    case Part::kCatalog:
      file.Catalog(text);
      break;
    case Part::kPage:
      file.Page(text);
      break;
    case Part::kTrailer:
      file.Trailer(text);
      break;
    case Part::kAnnotation:
      file.Annotation(text);
      break;
    case Part::kObject:
      file.Object(20, text);
      break;
    case Part::kPacket:
      file.Packet(text);
      break;
    case Part::kBytes:
      ReplaceIn(file, text);
      break;
  }
  return file.Bytes();
}

// What stands in the text, in one line of letters that all programs show.
std::string OneLine(const std::string& text) {
  std::string line;
  for (const char c : text) {
    line += c == '\n' ? "\\n" : c == '\r' ? "\\r" : c < ' ' || c > '~' ? "." : std::string(1, c);
  }
  return line;
}

std::string TextOfExample(const RuleCase& rule_case, const char* example) {
  return OneLine(example) + "\n" + TextOfLevels([&](const std::string& level) {
           return FindingsOf(FileOf(rule_case, example, level), level);
         });
}

}  // namespace

void ExpectFindings(std::span<const OddCase> cases, const std::string& expected) {
  std::string text;
  for (const OddCase& odd : cases) {
    const RuleCase rule_case = {"", "", odd.part, "", "", odd.catalog};
    text += OneLine(odd.catalog) + " " + TextOfExample(rule_case, odd.text);
  }
  EXPECT_TRUE(IsAsExpected(expected, text));
}

void ExpectCases(std::span<const RuleCase> cases, const std::string& expected) {
  std::string text;
  for (const RuleCase& rule_case : cases) {
    SCOPED_TRACE(std::string(rule_case.rule) + " of " + rule_case.level);
    EXPECT_THAT(BrokenRules(FileOf(rule_case, rule_case.good, rule_case.level), rule_case.level),
                ::testing::IsEmpty());
    EXPECT_THAT(BrokenRules(FileOf(rule_case, rule_case.bad, rule_case.level), rule_case.level),
                ::testing::Contains(rule_case.rule));
    text +=
        TextOfExample(rule_case, rule_case.good) + TextOfExample(rule_case, rule_case.bad) + "\n";
  }
  EXPECT_TRUE(IsAsExpected(expected, text));
}

}  // namespace TarnixTools::testing
