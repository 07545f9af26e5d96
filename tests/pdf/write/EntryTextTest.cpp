#include <array>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"
#include "pdf/write/EntryText.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::array<std::string_view, 2> kMasks = {"SMask", "Mask"};

class EntryText : public ::testing::Test {
 protected:
  Object Parsed(std::string_view text) {
    Parser parser(arena_);
    Lexer lexer(text, true);
    Object value;
    parser.Parse(lexer, nullptr, value);
    return value;
  }

  Arena arena_;
};

TEST_F(EntryText, IsThatOfAllEntriesInTheirOrder) {
  std::string text = "<<";
  AppendEntries(text, Parsed("<</Width 3/A#20B[1 2]/SMask 4 0 R>>"));
  EXPECT_EQ(text, "<</Width 3/A#20B[1 2]/SMask 4 0 R");
}

TEST_F(EntryText, LeavesOutWhatIsNamed) {
  std::string text;
  AppendEntries(text, Parsed("<</SMask 4 0 R/Width 3/Masks true/Mask 5 0 R>>"), kMasks);
  EXPECT_EQ(text, "/Width 3/Masks true");
  AppendEntries(text, Parsed("<</A/B/C/D>>"), {"A"});
  EXPECT_EQ(text, "/Width 3/Masks true/C/D");
}

TEST_F(EntryText, IsEmptyForWhatIsNoDictionary) {
  std::string text;
  AppendEntries(text, Parsed("[1 2]"));
  AppendEntries(text, Object(), {"A"});
  EXPECT_EQ(text, "");
}

}  // namespace
}  // namespace TarnixTools::pdf
