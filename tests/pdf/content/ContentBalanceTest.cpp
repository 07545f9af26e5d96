#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/content/ContentBalance.h"

namespace TarnixTools::pdf {
namespace {

std::string ClosingOf(std::string_view content) {
  return MeasureBalance(content).closing();
}

TEST(ContentBalance, FindsNothingOpenInBalancedContent) {
  EXPECT_EQ(ClosingOf(""), "");
  EXPECT_EQ(ClosingOf("q 1 0 0 1 5 5 cm BT /F1 12 Tf (q BT) Tj ET 0 0 9 9 re f Q"), "");
  EXPECT_EQ(ClosingOf("/P <</MCID 0>> BDC [<51> -5 (\\)Q)] TJ EMC % q q q"), "");
}

TEST(ContentBalance, ClosesWhatIsOpen) {
  EXPECT_EQ(ClosingOf("q q 5 w Q q"), "Q Q");
  EXPECT_EQ(ClosingOf("BT /F1 12 Tf"), "ET");
  EXPECT_EQ(ClosingOf("/OC /L1 BDC /Span BMC"), "EMC EMC");
  EXPECT_EQ(ClosingOf("0 0 m 5 5 l"), "n");
  EXPECT_EQ(ClosingOf("q 0 0 9 9 re W BT /A BMC"), "n ET EMC Q");
}

TEST(ContentBalance, CompletesTheLastToken) {
  EXPECT_EQ(ClosingOf("(a (b"), "))");
  EXPECT_EQ(ClosingOf("(a\\"), ")");  // what follows is a line feed
  EXPECT_EQ(ClosingOf("<41"), ">");
  EXPECT_EQ(ClosingOf("q [(a) <</K [1"), "]>>] Q");
  EXPECT_EQ(ClosingOf("/P <</A (x"), ")>>");
  EXPECT_EQ(ClosingOf("BI /W 1 /H 1 /BPC 8 /CS /G"), "\nID\nEI");
  EXPECT_EQ(ClosingOf("BI /W 9 /H 9 /BPC 8 /CS /G ID abc"), "\nEI");
}

TEST(ContentBalance, DoesNotLookIntoDataOfInlineImages) {
  EXPECT_EQ(ClosingOf("q BI /W 4 /H 1 /BPC 8 /CS /G ID q (q\nEI Q"), "");
}

TEST(ContentBalance, FindsRestoresWithoutSave) {
  const ContentBalance balance = MeasureBalance("Q q Q Q q");
  EXPECT_EQ(balance.restore_positions(), (std::vector<std::size_t>{0, 6}));
  EXPECT_EQ(balance.open_saves(), 1U);
}

TEST(ContentBalance, SeparatesOperatorsFromNumbersBeforeThem) {
  EXPECT_EQ(ClosingOf("1 0 0 1 0 0cm 2 J 5wq"), "");
  EXPECT_EQ(ClosingOf("5 w 0q"), "Q");
}

bool StopsReaders(std::string_view content) {
  return MeasureBalance(content).stops_readers();
}

TEST(ContentBalance, FindsOperatorsThatLackOperands) {
  for (const char* content :
       {"", "1 0 0 1 5 5 cm", "/F1 12 Tf [(a) -5 (b)] TJ (x)' 1 2(y)\" .1 .2 .3 scn", "[] 0 d",
        "/A <</B [1 0 0 RG]>> BDC EMC", "null true false 4 re", "0 0 m 5 5 l S 9 9 9", "5w 1 0 0rg",
        "1 2 3 4 5 6 7 8 9 g"}) {
    EXPECT_FALSE(StopsReaders(content)) << content;
  }
  for (const char* content : {"cm", "1 0 0 1 5 cm", "5 w w", "/F1 Tf", "[1 2 3] d", "1 1 foo 1 l",
                              "/A BDC", "1 0 0 rg RG", "gs", "] w"}) {
    EXPECT_TRUE(StopsReaders(content)) << content;
  }
}

TEST(ContentBalance, FindsInlineImagesThatDoNotEnd) {
  EXPECT_TRUE(StopsReaders("q BI /W 1 /H 1 /BPC 8 /CS /G"));
  EXPECT_TRUE(StopsReaders("BI /W 9 /H 9 /BPC 8 /CS /G ID abc"));
  EXPECT_FALSE(StopsReaders("BI /W 3 /H 1 /BPC 8 /CS /G ID abc\nEI"));
  EXPECT_FALSE(StopsReaders("(abc"));
}

TEST(ContentBalance, CountsOperatorsThatAreNone) {
  const auto times = [](int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
      all += text;
    }
    return all;
  };
  EXPECT_FALSE(StopsReaders(times(20, "1 0 foo ")));
  EXPECT_TRUE(StopsReaders(times(100, "1 0 foo ")));
  EXPECT_FALSE(StopsReaders("BX " + times(100, "foo ") + "EX"));
  ContentBalance all;
  for (int i = 0; i < 100; ++i) {
    all.Append(MeasureBalance("foo"));
  }
  EXPECT_TRUE(all.stops_readers());
}

TEST(ContentBalance, FindsOperandsInTheStreamBefore) {
  const auto stops = [](const std::vector<std::string>& streams) {
    ContentBalance all;
    for (const std::string& stream : streams) {
      all.Append(MeasureBalance(stream));
    }
    return all.stops_readers();
  };
  EXPECT_FALSE(stops({"q 2 0 0 2", "0 0 cm", "1 0 0 rg"}));
  EXPECT_FALSE(stops({"2 0", "0 2", "0 0", "cm"}));
  EXPECT_TRUE(stops({"q 2 0 0", "0 0 cm"}));
  EXPECT_TRUE(stops({"q", "w"}));
  EXPECT_TRUE(stops({"2 0", "w rg"}));
  EXPECT_TRUE(stops({"w", "q 1 w"}));
}

TEST(ContentBalance, JoinsStreams) {
  ContentBalance all;
  all.Append(MeasureBalance("q BT"));
  all.Append(MeasureBalance("Q Q /A BMC"));
  EXPECT_EQ(all.surplus_restores(), 1U);
  all.Append(MeasureBalance("EMC EMC ET q q"));
  EXPECT_EQ(all.closing(), "Q Q");
  all.Append(MeasureBalance("Q Q 0 0 m"));
  EXPECT_EQ(all.closing(), "n");
  all.Append(MeasureBalance("S (x"));
  EXPECT_TRUE(all.is_cut());
}

// What is counted beyond any bound would be closed by content without end.
TEST(ContentBalance, CountsAMillionOfWhatIsOpenAtMost) {
  const auto times = [](std::size_t count, std::string_view text) {
    std::string all;
    all.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i) {
      all += text;
    }
    return all;
  };
  const auto saves = [&](std::size_t count) {
    return MeasureBalance(times(count, "q ")).open_saves();
  };
  EXPECT_EQ(saves(999'999), 999'999U);
  EXPECT_EQ(saves(1'000'000), 1'000'000U);
  EXPECT_EQ(saves(1'000'001), 1'000'000U);
  EXPECT_EQ(ClosingOf(times(999'999, "(")).size(), 999'999U);
  EXPECT_EQ(ClosingOf(times(1'000'001, "(")).size(), 1'000'000U);
  EXPECT_EQ(ClosingOf(times(1'000'001, "/ BMC ")).size(), 4'000'000U - 1);
}

TEST(ContentBalance, GoesOnBehindHexadecimalStrings) {
  EXPECT_EQ(ClosingOf("<</A<41>/B[<42>"), "]>>");
  EXPECT_EQ(ClosingOf("<</A[<41>"), "]>>");
  EXPECT_EQ(ClosingOf("<</A<41>>"), ">>");  // one of two that close the dictionary
  EXPECT_EQ(ClosingOf("<</A<41>>>"), "");
  EXPECT_EQ(ClosingOf("<41>q"), "Q");
}

}  // namespace
}  // namespace TarnixTools::pdf
