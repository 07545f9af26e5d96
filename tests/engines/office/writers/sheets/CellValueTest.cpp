#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "engines/office/writers/sheets/CellValue.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

struct ValueCase {
  std::string_view text;
  double number;
  std::string_view format;
};

// By the habits of English.
std::optional<CellValue> ReadEnglish(std::string_view text) {
  return ReadCellValue(text, NumberHabits("en-US"));
}

TEST(CellValue, ReadsNumbersWithTheirFormat) {
  const std::vector<ValueCase> cases = {
      {"0", 0, "0"},
      {"1996", 1996, "0"},
      {"12.50", 12.5, "0.00"},
      {".05", 0.05, "#.00"},
      {"-3.1", -3.1, "0.0"},
      {"\xE2\x88\x92"
       "3.1",
       -3.1, "0.0"},
      {"+5", 5, "+0;-0"},
      {"1,234", 1234, "#,##0"},
      {"1,234,567.8", 1234567.8, "#,##0.0"},
      {"1 234 567", 1234567, "#,##0"},
      {"1\xC2\xA0"
       "234,5",
       1234.5, "#,##0.0"},
      {"1.234.567,89", 1234567.89, "#,##0.00"},
      {"1'234.50", 1234.5, "#,##0.00"},
      {"0,025", 0.025, "0.000"},
      {"(12.5)", -12.5, "0.0;(0.0)"},
      {"45%", 0.45, "0%"},
      {"-4.5 %", -0.045, "0.0 %"},
      {"$1,234.50", 1234.5, "\"$\"#,##0.00"},
      {"$ 12", 12, "\"$ \"0"},
      {"($5)", -5, "\"$\"0;(\"$\"0)"},
      {"12,50 \xE2\x82\xAC", 12.5, "0.00\" \xE2\x82\xAC\""},
      {"EUR 5", 5, "\"EUR \"0"},
  };
  for (const ValueCase& value : cases) {
    SCOPED_TRACE(value.text);
    const auto read = ReadEnglish(value.text);
    ASSERT_TRUE(read.has_value());
    EXPECT_DOUBLE_EQ(read->number, value.number);
    EXPECT_EQ(read->format, value.format);
  }
}

TEST(CellValue, LeavesTextWhereADigitMightChange) {
  for (const std::string_view text : {"",           "-",        "n.a.",     "abc",
                                      "12a",        "1996/97",  "007",      "1234567890123456",
                                      "1,23,456",   "12,34,5",  "555-1234", "1 - 2",
                                      "1.2.3",      "$",        "%",        "()",
                                      "-0",         "1,",       "$-5",      "12:30",
                                      "3 4",        "1234 567", "00.5",     "1e5",
                                      "10,000 (1)", "(1)"}) {
    EXPECT_FALSE(ReadEnglish(text).has_value()) << text;
  }
}

TEST(CellValue, LeavesTextWhereTheSeparatorMayBeEither) {
  const NumberHabits unknown;
  EXPECT_FALSE(ReadCellValue("1,234", unknown).has_value());
  EXPECT_FALSE(ReadCellValue("1.234", unknown).has_value());
  EXPECT_TRUE(ReadCellValue("1234", unknown).has_value());
}

TEST(CellValue, LearnsTheSeparatorsOfADocument) {
  NumberHabits european("en");
  european.Learn("12,5");
  EXPECT_EQ(ReadCellValue("1.234", european)->number, 1234);
  EXPECT_EQ(ReadCellValue("1,234", european)->number, 1.234);
  NumberHabits english;
  english.Learn("0.5");
  EXPECT_EQ(ReadCellValue("1,234", english)->number, 1234);
  NumberHabits mixed("en");
  mixed.Learn("0.5");
  mixed.Learn("0,5");
  EXPECT_FALSE(ReadCellValue("1,234", mixed).has_value());
}

TEST(CellValue, ReadsDatesThatAreCertain) {
  EXPECT_EQ(ReadEnglish("2011-09-30"), (CellValue{40816, "yyyy\\-mm\\-dd"}));
  EXPECT_EQ(ReadEnglish("30.09.2011"), (CellValue{40816, "dd\\.mm\\.yyyy"}));
  EXPECT_EQ(ReadEnglish("1.3.1900"), (CellValue{61, "d\\.m\\.yyyy"}));
}

TEST(CellValue, LeavesOtherDatesAsTheyAre) {
  for (const std::string_view text : {"05/04/2011", "2011-13-01", "30.02.2011", "01.01.1900",
                                      "May 21, 2009", "1.09.2011", "09.1.2011", "2011-9-30"}) {
    EXPECT_FALSE(ReadEnglish(text).has_value()) << text;
  }
}

TEST(CellValue, KnowsCurrencies) {
  for (const std::string currency :
       {"$", "€", "£", "¥", "US$", "EUR", "USD", "GBP", "CHF", "JPY"}) {
    EXPECT_EQ(ReadEnglish(currency + "5"), (CellValue{5, "\"" + currency + "\"0"})) << currency;
    EXPECT_EQ(ReadEnglish("5 " + currency), (CellValue{5, "0\" " + currency + "\""})) << currency;
  }
  EXPECT_FALSE(ReadEnglish("XYZ 5").has_value());
}

TEST(CellValue, TakesSpacesAndDashesOfAnyWidth) {
  for (const std::string space : {" ", "\u00A0", "\u2009", "\u202F", "\u2007"}) {
    EXPECT_EQ(ReadEnglish("1" + space + "234"), (CellValue{1234, "#,##0"}));
    EXPECT_EQ(ReadEnglish(space + "12" + space), (CellValue{12, "0"}));
  }
  for (const std::string dash : {"-", "\u2212", "\u2013", "\u2010", "\u2011"}) {
    EXPECT_EQ(ReadEnglish(dash + "5"), (CellValue{-5, "0"}));
  }
  EXPECT_EQ(ReadEnglish("1\u2019234"), (CellValue{1234, "#,##0"}));
  EXPECT_FALSE(ReadEnglish("\u20145").has_value());  // a long dash is no sign
}

TEST(CellValue, TakesNumbersWithinBounds) {
  EXPECT_EQ(ReadEnglish("123456789012345")->number, 123456789012345);
  EXPECT_EQ(ReadEnglish("12345678901.2345")->format, "0.0000");
  EXPECT_FALSE(ReadEnglish("12345678901.23456").has_value());
  EXPECT_EQ(ReadEnglish("(12)"), (CellValue{-12, "0;(0)"}));
  EXPECT_EQ(ReadEnglish("(5%)"), (CellValue{-0.05, "0%;(0%)"}));
  EXPECT_FALSE(ReadEnglish("5" + std::string(40, ' ') + "%").has_value());
  EXPECT_EQ(ReadEnglish("+1,234.5 %"), (CellValue{12.345, "+#,##0.0 %;-#,##0.0 %"}));
  EXPECT_FALSE(ReadEnglish("0,123,456").has_value());
  EXPECT_FALSE(ReadEnglish("1234,567,890").has_value());
  EXPECT_EQ(ReadEnglish("1,2345"), (CellValue{1.2345, "0.0000"}));  // four digits are no group
}

TEST(CellValue, LearnsOfSeveralCommasTogether) {
  NumberHabits habits;
  habits.Learn("1,234");
  habits.Learn("2,345");
  EXPECT_FALSE(ReadCellValue("3,456", habits).has_value());
  habits.Learn("3,456");
  EXPECT_EQ(ReadCellValue("3,456", habits)->number, 3456);
  NumberHabits english("en");
  EXPECT_EQ(ReadCellValue("3,456", english)->number, 3456);
  NumberHabits german("de");
  EXPECT_FALSE(ReadCellValue("3,456", german).has_value());
  german.Learn("text");
  german.Learn("1234");
  EXPECT_FALSE(ReadCellValue("3,456", german).has_value());
}

TEST(CellValue, ReadsDatesWithOneDigit) {
  EXPECT_EQ(ReadEnglish("9.12.2011"), (CellValue{40886, "d\\.m\\.yyyy"}));
  EXPECT_EQ(ReadEnglish("19.2.2011"), (CellValue{40593, "d\\.m\\.yyyy"}));
  EXPECT_EQ(ReadEnglish("1900-03-01"), (CellValue{61, "yyyy\\-mm\\-dd"}));
  EXPECT_FALSE(ReadEnglish("1900-02-28").has_value());  // spreadsheets differ on these
  EXPECT_FALSE(ReadEnglish("09.12.11").has_value());
  EXPECT_FALSE(ReadEnglish("a9.12.2011").has_value());
}

// "12.5 as 0.0", or nothing for what is text.
std::string Shown(const std::string& text, const NumberHabits& habits) {
  const std::optional<CellValue> value = ReadCellValue(text, habits);
  if (!value) {
    return "";
  }
  std::string shown(40, '\0');
  shown.resize(
      static_cast<std::size_t>(std::snprintf(shown.data(), shown.size(), "%.15g", value->number)));
  return shown + " as " + value->format;
}

// Digits of every form with what may stand around them; what is left out is text.
TEST(CellValue, ReadsAllFormsOfNumbers) {
  NumberHabits points;
  points.Learn("0.5");
  NumberHabits commas;
  commas.Learn("0,5");
  std::string text;
  for (const std::string digits : {"5",
                                   "12",
                                   "0",
                                   "00",
                                   "07",
                                   "1.5",
                                   "1,5",
                                   ".5",
                                   ",5",
                                   "5.",
                                   "5,",
                                   "0.50",
                                   "0,50",
                                   "1.234",
                                   "1,234",
                                   "12.345",
                                   "123,456",
                                   "1234.567",
                                   "0.123",
                                   "0,123",
                                   "1.2345",
                                   "12 345",
                                   "1 234",
                                   "1234 567",
                                   "1'234",
                                   "1'23",
                                   "1,234.5",
                                   "1.234,5",
                                   "1 234.5",
                                   "1'234,5",
                                   "1,234,567",
                                   "1.234.567",
                                   "1,234.567.8",
                                   "1.2.3",
                                   "1,234 567",
                                   "0,123,456",
                                   "12,34,567",
                                   "1234567890",
                                   "99999999999999",
                                   "123456789012345",
                                   "1234567890123456",
                                   "1234567890.12345",
                                   "1234567890.123456",
                                   "0.000000000000001",
                                   ".123456789012345",
                                   "1234567890123456789012345678901234567890",
                                   "a1",
                                   "1a",
                                   "1 2",
                                   "'1",
                                   "1'",
                                   "1..2"}) {
    for (const std::string& around : {digits,
                                      "-" + digits,
                                      "+" + digits,
                                      "(" + digits + ")",
                                      digits + "%",
                                      digits + " %",
                                      "(" + digits + " %)",
                                      "$" + digits,
                                      "$ " + digits,
                                      "($" + digits + ")",
                                      "-$" + digits,
                                      "$-" + digits,
                                      digits + "€",
                                      digits + " €",
                                      "-" + digits + " CHF",
                                      "+US$" + digits,
                                      "$" + digits + "€",
                                      "--" + digits,
                                      "(-" + digits + ")",
                                      "% " + digits}) {
      const std::string with_points = Shown(around, points);
      const std::string with_commas = Shown(around, commas);
      const std::string unknown = Shown(around, NumberHabits());
      if (!with_points.empty() || !with_commas.empty() || !unknown.empty()) {
        text += around + ": " + with_points;
        text += with_commas == with_points ? "" : " | " + with_commas;
        text += unknown == with_points ? "" : " | " + unknown;
        text += "\n";
      }
    }
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("office/cell-values.txt", text));
}

TEST(CellValue, ReadsAllFormsOfDates) {
  std::string text;
  for (const std::string year : {"1899", "1900", "1904", "2000", "2023", "9999", "23"}) {
    for (const std::string month : {"0", "1", "2", "02", "3", "03", "04", "12", "13"}) {
      for (const std::string day : {"0", "00", "1", "01", "09", "28", "29", "30", "31", "32"}) {
        for (const std::string& date :
             {year + "-" + month + "-" + day, day + "." + month + "." + year,
              day + "/" + month + "/" + year}) {
          const std::string shown = Shown(date, NumberHabits("en"));
          text += shown.empty() ? "" : date + ": " + shown + "\n";
        }
      }
    }
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("office/cell-dates.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::office
