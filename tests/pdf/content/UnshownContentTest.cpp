#include <cstdint>
#include <unordered_set>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/ContentFixture.h"
#include "pdf/content/UnshownContent.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

// Notes what content it is told of.
class Visitor : public ContentVisitor {
 public:
  bool EnterContent(const ContentEntry& entry) override {
    if (entry.kind == ResourceKind::kPage) {
      return true;
    }
    const bool is_new = entered.insert(entry.number).second;
    if (is_new) {
      run.push_back(entry.number);
    }
    return is_new;
  }

  std::vector<std::uint32_t> run;
  std::unordered_set<std::uint32_t> entered;
};

TEST(UnshownContent, IsWhatTheWalkThroughThePageHasNotComeTo) {
  ContentDocument file;
  file.Page("/Resources<</XObject<</Shown 10 0 R/Unused 11 0 R/Also 12 0 R>>>>", "/Shown Do");
  file.Stream(10, kFormEntries, "0 0 1 1 re f");
  file.Stream(11, kFormEntries + "/Resources<</XObject<</F 12 0 R>>>>", "/F Do");
  file.Stream(12, kFormEntries, "0 0 2 2 re f");
  Document& document = file.Open();
  Visitor visitor;
  ContentWalker walker(document, visitor, {.forms = true});
  walker.BeginPage(file.pages(), 0);
  walker.Run();
  ASSERT_THAT(visitor.run, ElementsAre(10));
  std::vector<std::size_t> pages;
  WalkUnshown(document, file.pages(), walker, visitor.entered,
              [&](std::size_t page) { pages.push_back(page); });
  EXPECT_THAT(visitor.run, UnorderedElementsAre(10, 11, 12));
  EXPECT_THAT(pages, ElementsAre(0));
}

}  // namespace
}  // namespace TarnixTools::pdf
