#include <set>
#include <string>
#include <utility>

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

TEST(Findings, ArePutInPlainWords) {
  const std::pair<FindingCode, const char*> kTexts[] = {
      {FindingCode::kHeaderMissing, "file header missing"},
      {FindingCode::kHeaderNotFirst, "bytes before the file header"},
      {FindingCode::kStartXrefMissing, "start of the cross-reference not found"},
      {FindingCode::kXrefDamaged, "cross-reference section damaged"},
      {FindingCode::kXrefLoop, "cross-reference sections in a loop"},
      {FindingCode::kXrefRebuilt, "cross-reference rebuilt from the objects found"},
      {FindingCode::kTrailerRebuilt, "document catalog found by searching"},
      {FindingCode::kCatalogInTrailer, "document catalog no object of its own"},
      {FindingCode::kObjectMissing, "object missing"},
      {FindingCode::kObjectDamaged, "object damaged"},
      {FindingCode::kObjectStreamDamaged, "object stream damaged"},
      {FindingCode::kStreamLengthWrong, "stream length wrong"},
      {FindingCode::kStreamEndMissing, "stream end missing"},
      {FindingCode::kPageTreeDamaged, "page tree damaged"},
      {FindingCode::kPageTreeLoop, "page tree in a loop"},
      {FindingCode::kPageCountWrong, "page count wrong"},
      {FindingCode::kPagesSalvaged, "pages gathered without a page tree"},
      {FindingCode::kPageAdopted, "page found that the page tree had lost"},
      {FindingCode::kPageBlank, "page lost, an empty one stands for it"},
      {FindingCode::kPagesMissing, "fewer pages found than the document says it has"},
      {FindingCode::kStringUndecryptable, "encrypted data incomplete"}};
  for (const auto& [code, text] : kTexts) {
    EXPECT_STREQ(TextOf(code), text);
  }
}

TEST(Findings, TellWhetherSomethingIsLost) {
  EXPECT_TRUE(IsLoss(FindingCode::kObjectMissing));
  EXPECT_TRUE(IsLoss(FindingCode::kPagesMissing));
  for (const FindingCode loss : {FindingCode::kObjectDamaged, FindingCode::kObjectStreamDamaged,
                                 FindingCode::kPageBlank, FindingCode::kStringUndecryptable}) {
    EXPECT_TRUE(IsLoss(loss)) << TextOf(loss);
  }
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
