// Rules by their facts, where a file that breaks them would be huge or would break others first.
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/rules/FileFacts.h"
#include "engines/pdfa/rules/FindingList.h"
#include "engines/pdfa/rules/FontFacts.h"

namespace TarnixTools::engines::pdfa {
namespace {

template <typename Facts>
std::string Broken(Level level, const Facts& facts) {
  FindingList findings(level);
  findings.Check(facts, {});
  std::string rules;
  for (const Finding& finding : findings.Take()) {
    rules += (rules.empty() ? "" : " ") + std::string(finding.rule.clause) + "-" +
             std::to_string(finding.rule.test);
  }
  return rules;
}

// Of a file that is as it should be.
FileFacts SoundFile() {
  FileFacts file;
  file.first_id = "id";
  return file;
}

TEST(FactRules, AllowSoManyObjects) {
  FileFacts file = SoundFile();
  const std::string otherwise = Broken(Level::k1b, file);
  file.objects = 8'388'607;
  EXPECT_EQ(Broken(Level::k1b, file), otherwise);
  file.objects = 8'388'608;
  EXPECT_NE(Broken(Level::k1b, file).find("6.1.12-7"), std::string::npos);
  EXPECT_NE(Broken(Level::k2b, file).find("6.1.13-7"), std::string::npos);
}

TEST(FactRules, AllowNoStreamOfCrossReferencesInPart1) {
  FileFacts file = SoundFile();
  EXPECT_EQ(Broken(Level::k1b, file).find("6.1.4-3"), std::string::npos);
  file.has_xref_stream = true;
  EXPECT_NE(Broken(Level::k1b, file).find("6.1.4-3"), std::string::npos);
  EXPECT_EQ(Broken(Level::k2b, file).find("6.1.4"), std::string::npos);
}

TEST(FactRules, WantOneIdentifierInLinearizedFiles) {
  FileFacts file = SoundFile();
  file.last_id = "other";
  EXPECT_EQ(Broken(Level::k1b, file).find("6.1.3-4"), std::string::npos) << "not linearized";
  file.is_linearized = true;
  EXPECT_NE(Broken(Level::k1b, file).find("6.1.3-4"), std::string::npos);
  file.last_id = file.first_id;
  EXPECT_EQ(Broken(Level::k1b, file).find("6.1.3-4"), std::string::npos);
}

TEST(FactRules, AllowNoEncryption) {
  for (const Level level : {Level::k1b, Level::k3u}) {
    EXPECT_EQ(Broken(level, TrailerFacts{.is_encrypted = false}), "");
    EXPECT_EQ(Broken(level, TrailerFacts{.is_encrypted = true}), "6.1.3-2");
  }
}

TEST(FactRules, WantMapsInTrueTypePrograms) {
  const auto rules = [](Level level, bool is_symbolic, std::size_t maps, bool has_symbol_map) {
    return Broken(level,
                  TrueTypeProgramFacts{
                      .is_symbolic = is_symbolic, .maps = maps, .has_symbol_map = has_symbol_map});
  };
  EXPECT_EQ(rules(Level::k2b, false, 1, false), "");
  EXPECT_EQ(rules(Level::k2b, false, 0, false), "6.2.11.6-1");
  EXPECT_EQ(rules(Level::k2b, false, 1, true), "6.2.11.6-1") << "the map of symbols does not count";
  EXPECT_EQ(rules(Level::k2b, false, 2, true), "");
  EXPECT_EQ(rules(Level::k2b, true, 1, false), "");
  EXPECT_EQ(rules(Level::k2b, true, 2, true), "");
  EXPECT_EQ(rules(Level::k2b, true, 2, false), "6.2.11.6-4");
  EXPECT_EQ(rules(Level::k1b, true, 1, false), "");
  EXPECT_EQ(rules(Level::k1b, true, 2, true), "6.3.7-3");
  EXPECT_EQ(rules(Level::k1b, true, 0, false), "6.3.7-3");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
