#include <gtest/gtest.h>

#include "engines/office/writers/text/LineScripts.h"

namespace TarnixTools::engines::office {
namespace {

TEST(LineScripts, FindsTheEndOfTheFirstWord) {
  EXPECT_EQ(FirstBreak("real-time use", false), 9U);
  EXPECT_EQ(FirstBreak("real-time use", true), 5U);
  EXPECT_EQ(FirstBreak("-5 degrees", true), 2U);
  EXPECT_EQ(FirstBreak("10-20", true), std::string_view::npos);
  EXPECT_EQ(FirstBreak("標準", true), 3U);
}

TEST(LineScripts, CountsGapsBetweenScripts) {
  EXPECT_EQ(ScriptChanges(false).In("標準A標準"), 2U);
  EXPECT_EQ(ScriptChanges(false).In("標準 A, 標準"), 0U);
  EXPECT_EQ(ScriptChanges(true).In("標準 A, 標準"), 2U);
  EXPECT_EQ(ScriptChanges(true).In("標準,標準"), 2U);
}

TEST(LineScripts, KnowsJoinedLetters) {
  EXPECT_TRUE(IsJoined("A العربية"));
  EXPECT_FALSE(IsJoined("A, שלום, 標準"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
