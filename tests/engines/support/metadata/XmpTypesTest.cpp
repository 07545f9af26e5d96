#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpDate.h"
#include "engines/support/metadata/XmpTypes.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

// The property that has this content.
XmpTree TreeWith(const std::string& content, const std::string& attributes = "") {
  return ReadXmp(
      "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' xmlns:s='http://s/' "
      "xmlns:stRef='http://ns.adobe.com/xap/1.0/sType/ResourceRef#'><rdf:Description "
      "rdf:about=''><s:a" +
      attributes + ">" + content + "</s:a></rdf:Description></rdf:RDF>");
}

bool Is(const std::string& content, const std::string& type, const std::string& attributes = "") {
  const XmpTree tree = TreeWith(content, attributes);
  EXPECT_EQ(tree.state, XmpState::kFine) << content;
  return tree.state == XmpState::kFine &&
         IsOfXmpType(tree.properties.front(), PlainXmpType(type), {});
}

std::string Array(const std::string& kind, const std::string& item,
                  const std::string& attributes = "") {
  return "<rdf:" + kind + "><rdf:li" + attributes + ">" + item + "</rdf:li></rdf:" + kind + ">";
}

TEST(XmpTypes, AreOfSimpleValues) {
  struct Row {
    const char* type;
    const char* right;
    const char* wrong;
  };

  const Row rows[] = {{"Integer", "-12", "1.0"},
                      {"Integer", "+1", ""},
                      {"Real", "-.5", "."},
                      {"Real", "3", "3,1"},
                      {"Rational", "1/2", "1"},
                      {"Rational", "-3/4", "1/-2"},
                      {"Boolean", "True", "true"},
                      {"Date", "2020", "20"},
                      {"MIMEType", "application/pdf", "application"},
                      {"GPSCoordinate", "67,19,26S", "67S"},
                      {"GPSCoordinate", "43,40.5W", "43,40.5"},
                      {"closed Choice of Integer", "7", "seven"}};
  for (const Row& row : rows) {
    EXPECT_TRUE(Is(row.right, row.type)) << row.type << row.right;
    EXPECT_FALSE(Is(row.wrong, row.type)) << row.type << row.wrong;
  }
  EXPECT_TRUE(Is("", "Text"));
  EXPECT_FALSE(Is(Array("Bag", "x"), "Text"));
  EXPECT_FALSE(Is("x", "Unheard"));
}

// Of each type the values that it has, of these.
TEST(XmpTypes, HaveTheseValues) {
  std::string text;
  for (const char* type : {"Text", "ProperName", "AgentName", "URI", "URL", "GUID", "XPath",
                           "RenditionClass", "Choice", "Integer", "Real", "Rational", "Boolean",
                           "Date", "MIMEType", "Locale", "GPSCoordinate", "Number"}) {
    text += std::string(type) + ":";
    for (const char* value :
         {"",      "0",       "19",      "+7",     "-7",        "+-7",    "7-",    "+",
          "1.",    ".5",      "-.5",     ".",      "-.",        "1.5.",   "1e5",   "1/2",
          "-1/2",  "1/-2",    "1/",      "/2",     "1/2/3",     "True",   "False", "true",
          "FALSE", "2020-01", "2020-13", "a/b",    "a9/b-_+.c", "a/b;c",  "/b",    "a/",
          "a b/c", "1,2,3N",  "1,2.3E",  "1,2.3S", "1,2,3W",    "1,2,3X", "1,2,3", "1,2N",
          "12N",   ",2,3N",   "1,,3N",   "1,2,N",  "a,2,3N"}) {
      text += Is(value, type) ? " [" + std::string(value) + "]" : "";
    }
    text += "\n";
  }
  EXPECT_TRUE(testing::IsAsExpected("metadata/types.txt", text));
}

TEST(XmpTypes, AreNamedInSeveralWays) {
  for (const auto& [name, plain] :
       {std::pair("Text", "text"), std::pair(" \tLang\n  Alt ", "lang alt"), std::pair("", ""),
        std::pair("  ", ""), std::pair("bag of Text", "bag text"),
        std::pair("Bag of open Choice of Text", "bag text"),
        std::pair("seq of Closed Choice of Integer", "seq integer"),
        std::pair("open choice of closed choice of choice of URI", "uri"),
        std::pair("Choice of of Text", "text"), std::pair("open choice", "open choice"),
        std::pair("of", ""), std::pair("offset", "fset"), std::pair("roof", "roof")}) {
    EXPECT_EQ(PlainXmpType(name), plain) << name;
  }
}

TEST(XmpTypes, AreOfArrays) {
  EXPECT_TRUE(Is(Array("Bag", "1"), "bag Integer"));
  EXPECT_TRUE(Is(Array("Seq", "1"), "Seq of open Choice of Integer"));
  EXPECT_FALSE(Is(Array("Seq", "1"), "bag Integer"));
  EXPECT_FALSE(Is(Array("Bag", "x"), "bag Integer"));
  EXPECT_FALSE(Is("1", "bag Integer"));
  EXPECT_TRUE(Is(Array("Alt", "x", " xml:lang='x-default'"), "Lang Alt"));
  EXPECT_FALSE(Is(Array("Alt", "x"), "Lang Alt"));
  EXPECT_FALSE(Is("x", "Lang Alt"));
}

TEST(XmpTypes, AreOfStructures) {
  const std::string resource = " rdf:parseType='Resource'";
  EXPECT_TRUE(Is("<stRef:versionID>1</stRef:versionID>", "ResourceRef", resource));
  EXPECT_FALSE(Is("<stRef:other>1</stRef:other>", "ResourceRef", resource));
  EXPECT_FALSE(Is("<s:versionID>1</s:versionID>", "ResourceRef", resource));
  EXPECT_FALSE(Is("1", "ResourceRef"));
}

TEST(XmpTypes, CanBeDeclared) {
  const XmpDeclaredType types[] = {
      {"pair", "http://s/", {{"left", "integer"}, {"more", "bag pair"}}},
      {"name", "http://s/", {}}};
  const std::string resource = " rdf:parseType='Resource'";
  const XmpTree fine = TreeWith(
      "<s:left>1</s:left><s:more><rdf:Bag><rdf:li s:left='2'/></rdf:Bag></s:more>", resource);
  EXPECT_TRUE(IsOfXmpType(fine.properties.front(), "pair", types));
  const XmpTree wrong =
      TreeWith("<s:more><rdf:Bag><rdf:li s:left='x'/></rdf:Bag></s:more>", resource);
  EXPECT_FALSE(IsOfXmpType(wrong.properties.front(), "pair", types));
  EXPECT_TRUE(IsOfXmpType(TreeWith("x").properties.front(), "name", types));
  EXPECT_TRUE(IsKnownXmpType("seq bag pair", types));
  EXPECT_TRUE(IsKnownXmpType("lang alt", {}));
  EXPECT_FALSE(IsKnownXmpType("seq pair", {}));
}

TEST(XmpDate, ReadsBothForms) {
  for (const char* fine : {"2020", "2020-02", "2020-02-03", "2020-02-03T04:05", "2020-02-03T04:05Z",
                           "2020-02-03T04:05:06", "2020-02-03T04:05:06.78-09:30"}) {
    EXPECT_TRUE(ReadXmpDate(fine)) << fine;
  }
  for (const char* wrong : {"", "20", "2020-13", "2020-1", "2020-02-03T", "2020-02-03T04",
                            "2020-02-03T24:00", "2020-02-03T04:05+09", "2020-02-03T04:05:06.Z",
                            "1997-07-16T19:20:15.45Z+01:00", "2020-02-03 04:05"}) {
    EXPECT_FALSE(ReadXmpDate(wrong)) << wrong;
  }
  for (const char* fine :
       {"D:2020", "2020", "D:20200203", "D:20200203040506", "D:20200203040506Z",
        "D:20200203040506Z00'00'", "D:20200203040506+01'00'", "D:20200203040506-01'30",
        "D:20200203040506+01'", "D:20200203040506+01"}) {
    EXPECT_TRUE(ReadInfoDate(fine)) << fine;
  }
  for (const char* wrong :
       {"", "D:", "today", "D:202", "D:20201303", "D:20200203040506+1", "D:20200203040506Z01'00'",
        "D:20200203040506-0130", "D:20200203040506Z0000"}) {
    EXPECT_FALSE(ReadInfoDate(wrong)) << wrong;
  }
}

TEST(XmpDate, TellsMomentsApart) {
  const auto same = [](const char* xmp, const char* info) {
    return ReadXmpDate(xmp)->IsSameMoment(*ReadInfoDate(info));
  };
  EXPECT_TRUE(same("2020-03-01T00:30:00+01:00", "D:20200229233000Z"));
  EXPECT_FALSE(same("2020-03-01T00:30:00+01:00", "D:20200301003000Z"));
  EXPECT_TRUE(same("2020-01-01", "D:2020"));
  EXPECT_TRUE(same("2022-06-22T15:23:43+05:30", "D:20220622095343Z00'00'"));
  EXPECT_EQ(XmpDateText(*ReadInfoDate("D:20200203040506-01'30'")), "2020-02-03T04:05:06-01:30");
  EXPECT_EQ(XmpDateText(*ReadInfoDate("D:20200203040506Z")), "2020-02-03T04:05:06Z");
  EXPECT_EQ(XmpDateText(*ReadInfoDate("D:2020")), "2020-01-01T00:00:00");
}

TEST(XmpDate, KnowsTheBoundsOfEachNumber) {
  const auto xmp = [](const std::string& text) {
    const auto date = ReadXmpDate(text);
    return date ? XmpDateText(*date) : "";
  };
  EXPECT_EQ(xmp("0000"), "0000-01-01T00:00:00");
  EXPECT_EQ(xmp("9999-01-01"), "9999-01-01T00:00:00");
  EXPECT_EQ(xmp("2020-12-31T23:59:59.5Z"), "2020-12-31T23:59:59Z");
  EXPECT_EQ(xmp("2020-10-09T08:07:06+23:59"), "2020-10-09T08:07:06+23:59");
  EXPECT_EQ(xmp("2020-10-09T08:07-00:01"), "2020-10-09T08:07:00-00:01");
  EXPECT_EQ(xmp("2020-10-09T08:07+00:00"), "2020-10-09T08:07:00Z");
  for (const char* wrong : {"2020-00-01",
                            "2020-13-01",
                            "2020-01-00",
                            "2020-01-32",
                            "2020-01-01T24:00Z",
                            "2020-01-01T00:60Z",
                            "2020-01-01T00:00:60Z",
                            "2020-01-01T00:00+24:00",
                            "2020-01-01T00:00+00:60",
                            "2020-01-01T00:00+0000",
                            "2020-01-01T00:00Z0",
                            "2020-01-01T0:00",
                            "2020-01-01T00:00:0",
                            "2020/01",
                            "2020-01/01",
                            "2020-01-01T00.00",
                            "2020-01-01t00:00",
                            "202a",
                            "2020-1a",
                            "-020"}) {
    EXPECT_EQ(xmp(wrong), "") << wrong;
  }
  const auto info = [](const std::string& text) {
    const auto date = ReadInfoDate(text);
    return date ? XmpDateText(*date) : "";
  };
  EXPECT_EQ(info("D:00001231235959-23'59'"), "0000-12-31T23:59:59-23:59");
  EXPECT_EQ(info("D:99991009080706"), "9999-10-09T08:07:06");
  EXPECT_EQ(info("202010"), "2020-10-01T00:00:00");
  EXPECT_EQ(info("D:20201009"), "2020-10-09T00:00:00");
  EXPECT_EQ(info("D:2020100908"), "2020-10-09T08:00:00");
  EXPECT_EQ(info("D:202010090807Z"), "2020-10-09T08:07:00Z");
  EXPECT_EQ(info("D:20201009080706+01"), "2020-10-09T08:07:06+01:00");
  EXPECT_EQ(info("D:20201009080706+01'59"), "2020-10-09T08:07:06+01:59");
  EXPECT_EQ(info("D:20201009080706Z00'"), "2020-10-09T08:07:06Z");
  for (const char* wrong :
       {"D:20200001", "D:20201301", "D:20200100", "D:20200132", "D:2020010124", "D:202001010060",
        "D:20200101000060", "D:20200101000000+24'00'", "D:20200101000000+00'60'",
        "D:20200101000000Z01", "D:20200101000000Z00'01'", "D:20200101000000x", "D:202", "d:2020",
        "D:20200101000000+01'00''", "D:2020010100000000"}) {
    EXPECT_EQ(info(wrong), "") << wrong;
  }
}

int DaysOf(int year, int month) {
  const bool is_leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  const int days[] = {31, is_leap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return days[month - 1];
}

// An hour after eleven in the evening a day ends, whatever its month and year.
TEST(XmpDate, CountsDaysAsTheCalendarDoes) {
  for (const int year : {1899, 1900, 1999, 2000, 2003, 2004}) {
    for (int month = 1; month <= 12; ++month) {
      for (int day = 1; day <= DaysOf(year, month); ++day) {
        const bool ends_month = day == DaysOf(year, month);
        const bool ends_year = ends_month && month == 12;
        const XmpDate evening = {year, month, day, 23, 30, 15, -60};
        XmpDate next = {ends_year ? year + 1 : year,
                        ends_month ? month % 12 + 1 : month,
                        ends_month ? 1 : day + 1,
                        0,
                        30,
                        15,
                        0};
        EXPECT_TRUE(next.IsSameMoment(evening)) << XmpDateText(next);
        next.second = 16;
        EXPECT_FALSE(next.IsSameMoment(evening)) << XmpDateText(next);
        next.second = 15;
        next.minute = 31;
        EXPECT_FALSE(next.IsSameMoment(evening)) << XmpDateText(next);
      }
    }
  }
  EXPECT_TRUE((XmpDate{2020, 1, 1, 1, 30, 0, 90}).IsSameMoment({2020, 1, 1, 0, 0, 0, 0}));
  EXPECT_TRUE((XmpDate{2020, 1, 1, 0, 0, 0, {}}).IsSameMoment({2020, 1, 1, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace TarnixTools::engines
