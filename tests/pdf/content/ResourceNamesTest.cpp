#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/content/NameScan.h"
#include "pdf/content/ResourceNames.h"
#include "pdf/syntax/Lexer.h"

namespace TarnixTools::pdf {
namespace {

// "Category/name ..." in order, each once, and "?" where it may not be all.
std::string Names(const std::string& content) {
  std::set<std::string> names;
  const ContentNames result =
      CollectResourceNames(content, [&](ResourceCategory category, std::string_view name) {
        names.insert(std::string(kResourceCategoryKeys[static_cast<std::size_t>(category)]) + "/" +
                     std::string(name));
      });
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : " ") + name;
  }
  return result.is_complete ? text : text + "?";
}

TEST(ResourceNames, AreThoseThatOperatorsLookUp) {
  EXPECT_EQ(Names("/F1 12 Tf"), "Font/F1");
  EXPECT_EQ(Names("/Im#301 Do"), "XObject/Im01");
  EXPECT_EQ(Names("/G gs"), "ExtGState/G");
  EXPECT_EQ(Names("/A cs /B CS"), "ColorSpace/A ColorSpace/B");
  EXPECT_EQ(Names("/P scn 1 0 0 /Q SCN"), "Pattern/P Pattern/Q");
  EXPECT_EQ(Names("/S sh"), "Shading/S");
  EXPECT_EQ(Names("/OC /M BDC EMC /T /D DP"),
            "Properties/D Properties/M Properties/OC Properties/T");
}

TEST(ResourceNames, AreNotThoseOfOtherOperators) {
  EXPECT_EQ(Names("/Perceptual ri /Tag BMC EMC /Tag MP 1 0 scn (/F1 1 Tf) Tj"), "");
  EXPECT_EQ(Names("/Span <</Lang/En/K[/L]>> BDC"), "Properties/Span");
}

TEST(ResourceNames, IncludeColorSpacesOfInlineImages) {
  EXPECT_EQ(Names("BI/W 1/H 1/BPC 8/CS/Cs1 ID a EI"), "ColorSpace/Cs1");
  EXPECT_EQ(Names("BI/W 1/H 1/BPC 8/ColorSpace[/Indexed/Cs2 0<00>]ID a EI"),
            "ColorSpace/Cs2 ColorSpace/Indexed");
}

TEST(ResourceNames, AreDoubtfulAfterDamage) {
  EXPECT_EQ(Names("/F1 1 Tf (open"), "Font/F1?");
  EXPECT_EQ(Names("/F1 1 Tf /F2 1 Tfx"), "Font/F1?");
  EXPECT_EQ(Names("BX /X new EX /F1 1 Tf"), "Font/F1?");
  EXPECT_EQ(Names("BI/W 1/F/Fl ID a"), "?");
}

// Each of these is read the slow way, or passed over the quick way, to the same end.
TEST(ResourceNames, AreNotThoseWithinOtherTokens) {
  EXPECT_EQ(Names("(/A Do \\) /B Do (/C Do)) Tj /D Do"), "XObject/D");
  EXPECT_EQ(Names("<(> Tj /D Do"), "XObject/D");
  EXPECT_EQ(Names("% (/A Do\n/D Do"), "XObject/D");
  EXPECT_EQ(Names("/P <</MCID 0/Lang (/A Do)>> BDC /D Do EMC"), "Properties/P XObject/D");
  EXPECT_EQ(Names("BI/W 1/H 1/BPC 8/CS/G ID ( EI /D Do"), "ColorSpace/G XObject/D");
  EXPECT_EQ(Names("[(a) -1 <62>] TJ /D Do"), "XObject/D");
}

// Words of content, of which some are names and some hold what looks like one.
std::string RandomContent(unsigned& state) {
  static const std::vector<std::string> kWords = {"/A",
                                                  "/B#41",
                                                  "/C",
                                                  "1",
                                                  "-.5",
                                                  "Tf",
                                                  "Do",
                                                  "gs",
                                                  "cs",
                                                  "scn",
                                                  "SCN",
                                                  "sh",
                                                  "BDC",
                                                  "BMC",
                                                  "EMC",
                                                  "MP",
                                                  "DP",
                                                  "ri",
                                                  "q",
                                                  "Q",
                                                  "(/A Do)",
                                                  "(\\) (/C))",
                                                  "<2F41>",
                                                  "<</K/V>>",
                                                  "[/A 1]",
                                                  "% /A\n",
                                                  "re",
                                                  "f*",
                                                  "<</L(>>)/M<</N 1>>>>",
                                                  "BI /W 1 /H 1 /BPC 8 /CS /G ID x EI"};
  std::string content;
  for (int i = 0; i < 12; ++i) {
    state = state * 1664525 + 1013904223;
    content += kWords[(state >> 8) % kWords.size()] + ((state >> 30) == 0 ? "\n" : " ");
  }
  return content;
}

// The names that reading operator by operator finds, and those that the quick way finds.
TEST(ResourceNames, AreFoundTheQuickWayTooWhereItSucceeds) {
  unsigned state = 1;
  int quick = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string content = RandomContent(state);
    std::set<std::string> read;
    const ContentNames result =
        ReadResourceNames(content, [&](ResourceCategory category, std::string_view name) {
          read.insert(std::to_string(static_cast<int>(category)) + std::string(name));
        });
    std::vector<ScannedName> scanned;
    if (!ScanNames(content, scanned) || !result.is_complete) {
      continue;
    }
    ++quick;
    std::set<std::string> found;
    for (const auto& [category, text] : scanned) {
      std::string name;
      DecodeName(text, name);
      found.insert(std::to_string(static_cast<int>(category)) + name);
    }
    EXPECT_EQ(found, read) << content;
  }
  EXPECT_GT(quick, 100);
}

TEST(ResourceNames, CountSurplusOperandsToo) {
  EXPECT_EQ(Names("/F1 /F2 12 Tf"), "Font/F1 Font/F2");
}

}  // namespace
}  // namespace TarnixTools::pdf
