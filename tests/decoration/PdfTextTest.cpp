#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfText.h"
#include "decoration/FontForTest.h"
#include "support/Failures.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;

class PdfTextTest : public ::testing::Test {
 protected:
  PdfText Text(const std::string& text, double size = 24) const {
    return {text, font_.Get(), size};
  }

  std::vector<std::string> Lines(const std::string& text) const {
    return Text(text).GetTextLines();
  }

  double Ascent() const { return engines::PdfFontGetAscent(font_.Get()); }

  double Descent() const { return engines::PdfFontGetDescent(font_.Get()); }

  Failure FailureOfSize(double size) const {
    return FailureOf([&] { Text("a", size); });
  }

  static Failure BadSize(const std::string& size) {
    return {PdfExceptionCode::InvalidParameter, "Invalid pdf text font size [" + size + "]"};
  }

  testing::FontForTest font_;
};

TEST_F(PdfTextTest, MeasuresOneLine) {
  const PdfText text = Text("Draft");
  ASSERT_GT(Ascent(), 0.5);
  ASSERT_LT(Descent(), -0.1);
  EXPECT_EQ(text.GetFontSize(), 24);
  EXPECT_EQ(text.GetLeading(), 28.80000114440918);
  EXPECT_DOUBLE_EQ(text.GetAscent(), 24 * Ascent());
  EXPECT_DOUBLE_EQ(text.GetDescent(), 24 * Descent());
  EXPECT_DOUBLE_EQ(text.GetTextHeight(), text.GetAscent() - text.GetDescent());
}

TEST_F(PdfTextTest, AddsALeadingForEachFurtherLine) {
  const PdfText text = Text("a\nb\nc", 10);
  EXPECT_EQ(text.GetLinesNum(), 3);
  EXPECT_DOUBLE_EQ(text.GetTextHeight(),
                   2 * text.GetLeading() + text.GetAscent() - text.GetDescent());
}

TEST_F(PdfTextTest, SplitsAtLineFeedsOnly) {
  EXPECT_THAT(Lines("a\nbb\nccc"), ElementsAre("a", "bb", "ccc"));
  EXPECT_THAT(Lines("a\n"), ElementsAre("a"));
  EXPECT_THAT(Lines("a\n\nb"), ElementsAre("a", "", "b"));
  EXPECT_THAT(Lines("a\r\nb"), ElementsAre("a\r", "b"));
  EXPECT_THAT(Lines("\n"), ElementsAre(""));
  EXPECT_THAT(Lines("\n\n"), ElementsAre("", ""));
}

TEST_F(PdfTextTest, TakesAnEmptyTextForOneEmptyLine) {
  PdfText text = Text("");
  EXPECT_THAT(text.GetTextLines(), ElementsAre(""));
  EXPECT_DOUBLE_EQ(text.GetTextHeight(), text.GetAscent() - text.GetDescent());
}

TEST_F(PdfTextTest, FindsTheLineOfMostBytes) {
  EXPECT_EQ(Text("a\nbb\nccc").GetLongestLine(), "ccc");
  EXPECT_EQ(Text("ab\ncd").GetLongestLine(), "ab");
  EXPECT_EQ(Text("iii\n\xC3\xA4\xC3\xB6").GetLongestLine(), "\xC3\xA4\xC3\xB6");
  EXPECT_EQ(Text("").GetLongestLine(), "");
}

TEST_F(PdfTextTest, NeedsAFontAndASize) {
  EXPECT_EQ(FailureOf([] { PdfText("a", nullptr, -1); }),
            Failure(PdfExceptionCode::InvalidParameter, "Invalid pdf text font"));
  EXPECT_EQ(FailureOfSize(0), BadSize("0"));
  EXPECT_EQ(FailureOfSize(-1), BadSize("-1"));
  EXPECT_EQ(FailureOfSize(-0.6), BadSize("-1"));
  EXPECT_EQ(FailureOfSize(-1e300), BadSize("-2147483647"));
  EXPECT_EQ(FailureOfSize(std::numeric_limits<double>::quiet_NaN()), BadSize("0"));
  EXPECT_EQ(FailureOfSize(0.001), Failure());
}

TEST_F(PdfTextTest, IsCopiedAndMovedWithAllItHolds) {
  const PdfText text = Text("a\nbb");
  PdfText copy(text);
  EXPECT_THAT(copy.GetTextLines(), ElementsAre("a", "bb"));
  PdfText moved(std::move(copy));
  PdfText assigned = Text("x");
  assigned = moved;
  EXPECT_EQ(assigned.GetLongestLine(), "bb");
  EXPECT_EQ(assigned.GetTextHeight(), text.GetTextHeight());
  EXPECT_EQ(assigned.GetDescent(), text.GetDescent());
}

}  // namespace
}  // namespace TarnixTools
