#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/word/MarginKeys.h"

namespace TarnixTools::engines::office {
namespace {

// A page whose footer has the number; its form and value, or "none".
std::string Shown(const std::string& number) {
  OfficePage page = PageWith({});
  Paragraph footer = TextAt(290, 810, {number});
  footer.lines[0].pieces[0].kind = PieceKind::kPageNumber;
  page.layout.footer = {Block{footer}};
  const auto shown = ShownNumber(page.layout);
  if (!shown) {
    return "none";
  }
  const char* form = shown->format == NumberFormat::kDecimal      ? "decimal "
                     : shown->format == NumberFormat::kLowerRoman ? "small "
                                                                  : "capital ";
  return form + std::to_string(shown->value);
}

TEST(MarginKeys, TellTheNumbersOfPages) {
  EXPECT_EQ(Shown("7"), "decimal 7");
  EXPECT_EQ(Shown("123456"), "decimal 123456");
  EXPECT_EQ(Shown("1234567"), "none");
  EXPECT_EQ(Shown("i"), "small 1");
  EXPECT_EQ(Shown("xiv"), "small 14");
  EXPECT_EQ(Shown("xlix"), "small 49");
  EXPECT_EQ(Shown("XCVI"), "capital 96");
  EXPECT_EQ(Shown("a"), "none");
  EXPECT_EQ(Shown(""), "none");
}

TEST(MarginKeys, AreThoseOfTextsAtOnePlaceWhateverTheirNumber) {
  const auto key = [](double left, const std::string& text, const std::string& number) {
    OfficePage page = PageWith({});
    Paragraph footer = TextAt(290, 810, {number});
    footer.lines[0].pieces[0].kind = PieceKind::kPageNumber;
    page.layout.header = {Block{TextAt(left, 40, {text})},
                          Block{TableAt(72, 50, {text, "b", "c", "d"})}};
    page.layout.footer = {Block{footer}};
    return MarginKey(page.layout);
  };
  EXPECT_EQ(key(72, "Title", "1"), key(72, "Title", "2"));
  EXPECT_EQ(key(72, "Title", "1"), key(75, "Title", "1"));
  EXPECT_NE(key(72, "Title", "1"), key(200, "Title", "1"));
  EXPECT_NE(key(72, "Title", "1"), key(72, "Other", "1"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
