#include <set>
#include <string>

#include <gtest/gtest.h>

#include "pdf/Findings.h"

namespace TarnixTools::pdf {
namespace {

TEST(Findings, EachHasWordsOfItsOwn) {
  std::set<std::string> texts;
  const auto last = static_cast<int>(FindingCode::kStringUndecryptable);
  for (int code = 0; code <= last; ++code) {
    texts.insert(TextOf(static_cast<FindingCode>(code)));
  }
  EXPECT_EQ(texts.size(), static_cast<std::size_t>(last) + 1);
  EXPECT_FALSE(texts.contains("damage of another kind"));
  EXPECT_STREQ(TextOf(static_cast<FindingCode>(200)), "damage of another kind");
}

TEST(Findings, TellWhetherSomethingIsLost) {
  EXPECT_TRUE(IsLoss(FindingCode::kObjectMissing));
  EXPECT_TRUE(IsLoss(FindingCode::kPagesMissing));
  EXPECT_FALSE(IsLoss(FindingCode::kXrefRebuilt));
  EXPECT_FALSE(IsLoss(FindingCode::kPageAdopted));
}

TEST(Findings, AreCountedBeyondThoseThatAreKept) {
  Findings findings;
  for (std::size_t i = 0; i < limits::kMaxFindings + 5; ++i) {
    findings.Add(FindingCode::kObjectDamaged, 7, 9);
  }
  EXPECT_EQ(findings.kept().size(), limits::kMaxFindings);
  EXPECT_EQ(findings.count(), limits::kMaxFindings + 5);
  EXPECT_TRUE(findings.Has(FindingCode::kObjectDamaged));
  EXPECT_FALSE(findings.Has(FindingCode::kObjectMissing));
}

TEST(Findings, KeepsThoseOfEachCode) {
  Findings findings;
  for (std::size_t i = 0; i < limits::kMaxFindings + 5; ++i) {
    findings.Add(FindingCode::kStreamLengthWrong, 1);
  }
  findings.Add(FindingCode::kPageBlank);
  EXPECT_TRUE(findings.Has(FindingCode::kPageBlank));
}

}  // namespace
}  // namespace TarnixTools::pdf
