#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/content/ContentFixture.h"
#include "pdf/content/PageContents.h"

namespace TarnixTools::pdf {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Objects 5, 6 and 7 are streams with the data a, b and c; 8 is an array of two of them, and 9
// leads there.
class PageContentsTest : public ::testing::Test {
 protected:
  explicit PageContentsTest() {
    file_.Stream(5, "", "a").Stream(6, "", "b").Stream(7, "", "c");
    file_.Object(8, "[5 0 R 6 0 R]").Object(9, "8 0 R").Object(10, "7 0 R").Object(11, "(x)");
    file_.Stream(12, "/Filter/Nothing", "d").Stream(13, "/Filter/ASCIIHexDecode", "65 6");
  }

  // The page's /Contents are this.
  Object Contents(const std::string& contents) {
    file_.Object(3, "<</Type/Page/Parent 2 0 R/Contents " + contents + ">>");
    return file_.Open().Load({.number = 3, .generation = 0}, arena_).Get("Contents");
  }

  ContentStreams StreamsOf(const std::string& contents) {
    const Object value = Contents(contents);
    return StreamsOfContents(file_.document(), value);
  }

  PageContents Read(const std::string& contents) {
    const Object value = Contents(contents);
    return ReadPageContents(file_.document(), value);
  }

  ContentDocument file_;
  Arena arena_;
};

TEST_F(PageContentsTest, OneStream) {
  const ContentStreams streams = StreamsOf("5 0 R");
  EXPECT_THAT(streams.numbers, ElementsAre(5U));
  EXPECT_FALSE(streams.is_array);
  EXPECT_TRUE(streams.is_regular);
}

TEST_F(PageContentsTest, SeveralAreJoined) {
  const PageContents contents = Read("[5 0 R 6 0 R 10 0 R]");
  EXPECT_EQ(contents.bytes, "a\nb\nc\n");
  ASSERT_EQ(contents.parts.size(), 3U);
  EXPECT_EQ(contents.parts[2].number, 7U);
  EXPECT_EQ(contents.parts[2].begin, 4U);
  EXPECT_TRUE(contents.is_whole);
}

TEST_F(PageContentsTest, AnArrayThatIsAnObject) {
  const ContentStreams streams = StreamsOf("9 0 R");
  EXPECT_THAT(streams.numbers, ElementsAre(5U, 6U));
  EXPECT_EQ(streams.array, 8U);
  EXPECT_TRUE(streams.is_array);
}

TEST_F(PageContentsTest, AStreamBehindTwoReferences) {
  EXPECT_EQ(Read("10 0 R").bytes, "c");
}

TEST_F(PageContentsTest, OnlyReferencesToStreamsCount) {
  const ContentStreams streams = StreamsOf("[5 0 R[6 0 R]8 0 R 11 0 R(x)]");
  EXPECT_THAT(streams.numbers, ElementsAre(5U));
  EXPECT_FALSE(streams.is_regular);
  EXPECT_FALSE(Read("[5 0 R[6 0 R]]").is_whole);
}

TEST_F(PageContentsTest, NothingIsRegularToo) {
  EXPECT_TRUE(StreamsOf("[null 77 0 R 5 0 R]").is_regular);
  EXPECT_THAT(StreamsOf("77 0 R").numbers, IsEmpty());
  EXPECT_THAT(StreamsOf("(x)").numbers, IsEmpty());
  EXPECT_EQ(Read("77 0 R").bytes, "");
}

TEST_F(PageContentsTest, WhatCannotBeDecodedIsMissing) {
  const PageContents contents = Read("[5 0 R 12 0 R 3 0 R 6 0 R]");
  EXPECT_EQ(contents.bytes, "a\nb\n");
  EXPECT_FALSE(contents.is_whole);
}

TEST_F(PageContentsTest, TheSameStreamMayStandTwice) {
  EXPECT_EQ(Read("[5 0 R 5 0 R]").bytes, "a\na\n");
}

}  // namespace
}  // namespace TarnixTools::pdf
