#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/sdk/PageRangeText.h"

namespace TarnixTools::engines::office {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(PageRangeText, NamesPages) {
  EXPECT_THAT(PagesOf(L"1-3", 5), ElementsAre(0U, 1U, 2U));
  EXPECT_THAT(PagesOf(L"4,1-2", 5), ElementsAre(0U, 1U, 3U));
  EXPECT_THAT(PagesOf(L"2-9,2", 3), ElementsAre(1U, 2U));
  EXPECT_THAT(PagesOf(L"", 2), ElementsAre(0U, 1U));
  EXPECT_THAT(PagesOf(L"7", 2), IsEmpty());
}

TEST(PageRangeText, RefusesWhatNamesNoPages) {
  for (const wchar_t* text :
       {L"", L"0", L"1-0", L"3-2", L"1-", L"-1", L"1,", L",1", L"a", L"1 ", L"999999999999"}) {
    EXPECT_FALSE(ReadPageRange(text)) << text;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::office
