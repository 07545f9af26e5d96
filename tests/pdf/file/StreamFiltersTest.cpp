#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {
namespace {

// The steps of a dictionary with these entries; references lead to what `resolve` gives.
std::vector<FilterStep> StepsOf(const std::string& entries, const Resolver& resolve = nullptr) {
  const std::string text = "<<" + entries + ">>";
  Arena arena;
  Parser parser(arena);
  Lexer lexer(text, true);
  Object dictionary;
  parser.Parse(lexer, nullptr, dictionary);
  return FilterStepsOf(dictionary, resolve);
}

TEST(StreamFilters, KnowNamesInFullAndShort) {
  const std::pair<const char*, FilterKind> kNames[] = {{"FlateDecode", FilterKind::kFlate},
                                                       {"Fl", FilterKind::kFlate},
                                                       {"LZWDecode", FilterKind::kLzw},
                                                       {"LZW", FilterKind::kLzw},
                                                       {"ASCII85Decode", FilterKind::kAscii85},
                                                       {"A85", FilterKind::kAscii85},
                                                       {"ASCIIHexDecode", FilterKind::kAsciiHex},
                                                       {"AHx", FilterKind::kAsciiHex},
                                                       {"RunLengthDecode", FilterKind::kRunLength},
                                                       {"RL", FilterKind::kRunLength},
                                                       {"DCTDecode", FilterKind::kImage},
                                                       {"DCT", FilterKind::kImage},
                                                       {"CCITTFaxDecode", FilterKind::kImage},
                                                       {"CCF", FilterKind::kImage},
                                                       {"JPXDecode", FilterKind::kImage},
                                                       {"JBIG2Decode", FilterKind::kImage},
                                                       {"Crypt", FilterKind::kCrypt},
                                                       {"Flate", FilterKind::kUnknown},
                                                       {"Own", FilterKind::kUnknown}};
  for (const auto& [name, kind] : kNames) {
    for (const std::string& entries : {"/Filter/" + std::string(name), "/F/" + std::string(name),
                                       "/Filter[/" + std::string(name) + "]"}) {
      const std::vector<FilterStep> steps = StepsOf(entries);
      ASSERT_EQ(steps.size(), 1U) << entries;
      EXPECT_EQ(steps[0].kind, kind) << entries;
    }
  }
  EXPECT_TRUE(StepsOf("").empty());
  EXPECT_TRUE(StepsOf("/Filter[]").empty());
  EXPECT_TRUE(StepsOf("/Filter null").empty());
}

TEST(StreamFilters, HaveTheirParameters) {
  const std::string parameters =
      "<</Predictor 12/Colors 3/BitsPerComponent 4/Columns 7/EarlyChange 0>>";
  for (const std::string& entries :
       {"/Filter/LZWDecode/DecodeParms" + parameters, "/F/LZW/DP" + parameters,
        "/Filter[/LZWDecode]/DecodeParms" + parameters,
        "/Filter[/LZWDecode]/DecodeParms[" + parameters + "]",
        "/Filter/LZWDecode/DecodeParms[" + parameters + "]"}) {
    const std::vector<FilterStep> steps = StepsOf(entries);
    ASSERT_EQ(steps.size(), 1U) << entries;
    EXPECT_EQ(steps[0].parameters.predictor, 12) << entries;
    EXPECT_EQ(steps[0].parameters.colors, 3) << entries;
    EXPECT_EQ(steps[0].parameters.bits_per_component, 4) << entries;
    EXPECT_EQ(steps[0].parameters.columns, 7) << entries;
    EXPECT_EQ(steps[0].parameters.early_change, 0) << entries;
  }
}

TEST(StreamFilters, HaveEachItsOwnParameters) {
  const auto steps = StepsOf("/Filter[/AHx/Fl/LZW]/DecodeParms[null<</Columns 5>><</Columns 6>>]");
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[0].parameters.columns, 1);
  EXPECT_EQ(steps[1].parameters.columns, 5);
  EXPECT_EQ(steps[2].parameters.columns, 6);
  // One dictionary says nothing of several filters.
  for (const FilterStep& step : StepsOf("/Filter[/AHx/Fl]/DecodeParms<</Columns 5>>")) {
    EXPECT_EQ(step.parameters.columns, 1);
  }
}

TEST(StreamFilters, FollowReferences) {
  const Resolver resolve = [](const Object& value) {
    return value.AsReference().number == 7 ? Object::Name("FlateDecode") : Object::Integer(9);
  };
  const auto steps = StepsOf("/Filter 7 0 R/DecodeParms<</Columns 8 0 R>>", resolve);
  ASSERT_EQ(steps.size(), 1U);
  EXPECT_EQ(steps[0].kind, FilterKind::kFlate);
  EXPECT_EQ(steps[0].parameters.columns, 9);
  EXPECT_EQ(StepsOf("/Filter[7 0 R]", resolve)[0].kind, FilterKind::kFlate);
  EXPECT_TRUE(StepsOf("/Filter 7 0 R").empty());
}

TEST(StreamFilters, AreOneMoreThanAreDecodedAtMost) {
  std::string names;
  for (int i = 0; i < limits::kMaxFilters + 9; ++i) {
    names += "/AHx";
  }
  EXPECT_EQ(StepsOf("/Filter[" + names + "]").size(),
            static_cast<std::size_t>(limits::kMaxFilters) + 1);
}

TEST(StreamFilters, WriteWhatAPredictorNeeds) {
  EXPECT_EQ(PredictorEntries({}), "");
  EXPECT_EQ(PredictorEntries({.predictor = 15, .colors = 3, .bits_per_component = 4, .columns = 9}),
            "/Predictor 15/Colors 3/BitsPerComponent 4/Columns 9");
  EXPECT_EQ(PredictorEntries({.predictor = 2, .columns = 9}), "/Predictor 2/Columns 9");
}

}  // namespace
}  // namespace TarnixTools::pdf
