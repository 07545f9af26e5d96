#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/RuleCase.h"
#include "support/ArchiveFile.h"

namespace TarnixTools::testing {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr RuleCase kCases[] = {
    {"1b", "6.1.2-1", Part::kBytes, "%PDF-1.4|%PDF-1.6", "%PDF-1.4|%PDF-one"},
    {"2b", "6.1.2-1", Part::kBytes, "%PDF-1.7|%PDF-1.0", "%PDF-1.7|%PDF-1.8"},
    {"2b", "6.1.2-1", Part::kBytes, "", "%PDF-1.7|%PDF-1.7 "},
    {"1b", "6.1.2-2", Part::kBytes, "", "\xE2\xE3\xCF\xD3|text"},
    {"1b", "6.1.3-1", Part::kBytes, "", "/ID[|/IX["},
    {"2b", "6.1.3-1", Part::kBytes, "", "[<0123456789ABCDEF><0123456789ABCDEF>]|[]"},
    {"1b", "6.1.3-3", Part::kBytes, "%%EOF\n|%%EOF\r\n", "%%EOF\n|%%EOF\n\n"},
    {"2b", "6.1.3-3", Part::kBytes, "%%EOF\n|%%EOF", "%%EOF\n|%%EOF\nmore"},
    {"1b", "6.1.4-1", Part::kBytes, "", "xref\n0 1\n|xref\n0  1\n"},
    {"1b", "6.1.4-2", Part::kBytes, "\nxref\n0 1\n|\nxref\r\n0 1\n",
     "\nxref\n0 1\n|\nxref \n0 1\n"},
    {"2b", "6.1.4-2", Part::kBytes, "", "\nxref\n0 1\n|\nxref\n\n0 1\n"},
    {"1b", "6.1.6-1", Part::kObject, "<AB CD>", "<ABC>"},
    {"2b", "6.1.6-1", Part::kObject, "<<>>", "[(ABC)<ABCDE>]"},
    {"2b", "6.1.6-2", Part::kObject, "<abcdef>", "<abxy>"},
    {"1b", "6.1.7-1", Part::kObject, "<</Length 3>>\nstream\nabc\nendstream",
     "<</Length 2>>\nstream\nabc\nendstream"},
    {"2b", "6.1.7.1-1", Part::kObject, "<</Length 0>>\nstream\n\nendstream",
     "<</Length 4>>\nstream\nabc\nendstream"},
    {"1b", "6.1.7-2", Part::kObject, "<</Length 3>>\nstream\r\nabc\rendstream",
     "<</Length 3>>\nstream\nabcendstream"},
    {"2b", "6.1.7.1-2", Part::kObject, "<</Length 3>>\nstream\nabc\r\nendstream",
     "<</Length 3>>\nstream \nabc\nendstream"},
    {"1b", "6.1.7-1", Part::kObject, "<<>>", "<</Length 0>>\nstream\nendstream"},
    {"1b", "6.1.7-3", Part::kObject, "<<>>", "<</F(a)/Length 3>>\nstream\nabc\nendstream"},
    {"2b", "6.1.7.1-3", Part::kObject, "<<>>",
     "<</FFilter/FlateDecode/Length 3>>\nstream\nabc\nendstream"},
    {"1b", "6.1.8-1", Part::kBytes, "7 0 obj\n|7\n0\tobj\r", "7 0 obj\n|7  0 obj\n"},
    {"2b", "6.1.9-1", Part::kBytes, "", "\nendobj\n4 0 obj| endobj\n4 0 obj"},
    {"2b", "6.1.9-1", Part::kBytes, "", "7 0 obj\n<<|7 0 obj <<"},
    {"2b", "6.1.9-1", Part::kBytes, "", "\n1 0 obj|%1 0 obj"},
    {"1b", "6.1.10-1", Part::kObject, "<</Filter/ASCIIHexDecode/Length 1>>\nstream\n>\nendstream",
     "<</Filter[/ASCIIHexDecode/LZWDecode]/Length 1>>\nstream\n>\nendstream"},
    {"2b", "6.1.7.2-1", Part::kObject,
     "<</Filter[/Crypt]/DecodeParms[<</Name/Identity>>]/Length 0>>\nstream\n\nendstream",
     "<</Filter[/Crypt]/DecodeParms[<</Name/Own>>]/Length 0>>\nstream\n\nendstream"},
    {"1b", "6.1.12-1", Part::kObject, "[2147483647 -2147483648]", "2147483648"},
    {"2b", "6.1.13-1", Part::kObject, "<<>>", "-99999999999999999999"},
    {"1b", "6.1.12-2", Part::kObject, "[32767.0 -32767.0]", "-32767.5"},
    {"2b", "6.1.13-2", Part::kObject, "32767.5", "-350000000000000000000000000000000000000.0"},
    {"2b", "6.1.13-5", Part::kObject, "0.0000000", "0.00000000000000000000000000000000000001"},
};

TEST(FileRules, HoldAndBreak) {
  ExpectCases(kCases, "pdfa/findings/file.txt");
}

// Of values that are long.
struct LongCase {
  const char* level;
  const char* rule;
  std::size_t most;
  const char* before;
  const char* item;
  const char* after;
};

constexpr LongCase kLongCases[] = {
    {"1b", "6.1.12-3", 65'535, "(", "a", ")"}, {"2b", "6.1.13-3", 32'767, "(", "a", ")"},
    {"1b", "6.1.12-4", 127, "/", "a", ""},     {"2b", "6.1.13-4", 127, "/", "#41", ""},
    {"1b", "6.1.12-5", 8191, "[", "0 ", "]"},
};

std::string LongValue(const LongCase& of, std::size_t count) {
  std::string value = of.before;
  for (std::size_t i = 0; i < count; ++i) {
    value += of.item;
  }
  return value + of.after;
}

TEST(FileRules, BoundLongValues) {
  for (const LongCase& of : kLongCases) {
    SCOPED_TRACE(of.rule);
    const auto rules = [&](std::size_t count) {
      return BrokenRules(ArchiveFile(of.level).Object(20, LongValue(of, count)).Bytes(), of.level);
    };
    EXPECT_THAT(rules(of.most), IsEmpty());
    EXPECT_THAT(rules(of.most + 1), Contains(of.rule));
  }
}

std::string DictionaryOf(int entries) {
  std::string dictionary = "<<";
  for (int i = 0; i < entries; ++i) {
    dictionary += "/K" + std::to_string(i) + " 0";
  }
  return dictionary + ">>";
}

TEST(FileRules, BoundDictionariesOfPart1) {
  const auto rules = [](int entries, const char* level) {
    return BrokenRules(ArchiveFile(level).Object(20, DictionaryOf(entries)).Bytes(), level);
  };
  EXPECT_THAT(rules(4095, "1b"), IsEmpty());
  EXPECT_THAT(rules(4096, "1b"), Contains("6.1.12-6"));
  EXPECT_THAT(rules(4096, "2b"), IsEmpty());
}

TEST(FileRules, WantNothingBeforeTheHeader) {
  EXPECT_THAT(BrokenRules("\n" + ArchiveFile("1b").Bytes(), "1b"), Contains("6.1.2-1"));
}

TEST(FileRules, HoldForSoundFilesOfEveryLevel) {
  for (const char* level : {"1a", "1b", "2a", "2b", "2u", "3a", "3b", "3u"}) {
    EXPECT_THAT(BrokenRules(ArchiveFile(level).Bytes(), level), IsEmpty()) << level;
  }
}

TEST(FileRules, NameAnotherLevelAsTheClaim) {
  EXPECT_THAT(BrokenRules(ArchiveFile("2b").Bytes(), "3b"), Contains("6.6.4-2"));
  EXPECT_THAT(BrokenRules(ArchiveFile("2b").Bytes(), "2u"), Contains("6.6.4-3"));
  EXPECT_THAT(BrokenRules(ArchiveFile("2u").Bytes(), "2b"), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::testing
