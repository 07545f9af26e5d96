// The text that is drawn for fields and notes without an appearance: its lines, and operator by operator.
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/Annotated.h"
#include "engines/pdfa/convert/annotations/AppearanceFonts.h"
#include "engines/pdfa/convert/annotations/TextAppearance.h"
#include "engines/pdfa/convert/annotations/TextLines.h"

namespace TarnixTools::engines::pdfa {
namespace {

TEST(TextLines, EndWhereTheTextSaysSo) {
  using Lines = std::vector<std::u32string>;
  EXPECT_EQ(LinesOf(U""), Lines{U""});
  EXPECT_EQ(LinesOf(U"a\rb\nc\r\nd\te"), (Lines{U"a", U"b", U"c", U"d e"}));
  EXPECT_EQ(LinesOf(U"a\r\n\r\n"), (Lines{U"a", U"", U""}));
  EXPECT_EQ(LinesOf(U"a\n\r"), (Lines{U"a", U"", U""}));
}

TEST(TextLines, AreWrappedAtSpaces) {
  using Lines = std::vector<std::u32string>;
  const auto wrapped = [](std::u32string_view text, double room) {
    return WrappedLines(text, room, [](std::u32string_view part) { return part.size() * 1.0; });
  };
  EXPECT_EQ(wrapped(U"", 5), Lines{U""});
  EXPECT_EQ(wrapped(U"ab cd", 5), Lines{U"ab cd"});
  EXPECT_EQ(wrapped(U"ab cd", 4), (Lines{U"ab", U"cd"}));
  EXPECT_EQ(wrapped(U"ab cd", 2), (Lines{U"ab", U"cd"}));
  EXPECT_EQ(wrapped(U"ab   cd\nx", 3), (Lines{U"ab", U"cd", U"x"}));
  EXPECT_EQ(wrapped(U"abcde fg", 2), (Lines{U"ab", U"cd", U"e", U"fg"}));
  EXPECT_EQ(wrapped(U"abc", 0.5), (Lines{U"a", U"b", U"c"}));
  EXPECT_EQ(wrapped(U" abc", 2), (Lines{U" a", U"bc"}));
  EXPECT_EQ(wrapped(U"   abc", 2), (Lines{U"", U"ab", U"c"}));
}

// Content with each number as "#", and the numbers.
struct Operations {
  std::string text;
  std::vector<double> numbers;
};

Operations OperationsOf(const std::string& content) {
  Operations operations;
  std::istringstream stream(content);
  for (std::string word; stream >> word;) {
    const bool is_number = word.find_first_not_of("-.0123456789") == std::string::npos;
    if (is_number) {
      operations.numbers.push_back(std::stod(word));
    }
    operations.text += (operations.text.empty() ? "" : " ") + (is_number ? "#" : word);
  }
  return operations;
}

// A text field of 160 by 40 points, with text of 10 points in black.
class TextAppearanceTest : public ::testing::Test {
 protected:
  void Draw(const std::string& entries) {
    const bool has_rect = entries.find("/Rect") != std::string::npos;
    const bool has_style = entries.find("/DA") != std::string::npos;
    annotated_ =
        std::make_unique<Annotated>((has_rect ? "" : "/Rect[0 0 160 40]") +
                                    std::string(has_style ? "" : "/DA(/Helv 10 Tf 0 g)") + entries);
    fonts_ = std::make_unique<AppearanceFonts>(annotated_->conversion());
    font_ = fonts_->Find("Helvetica", U"H*");
    ASSERT_NE(font_, nullptr);
    made_ = TextAppearance(annotated_->annotation(), annotated_->document(), *fonts_, true,
                           characters_left_);
    ASSERT_TRUE(made_);
    drawn_ = OperationsOf(made_->content);
  }

  // The numbers are those of the operators in their order.
  void Expect(const std::string& operators, const std::vector<double>& numbers) {
    EXPECT_EQ(drawn_.text, operators);
    ASSERT_EQ(drawn_.numbers.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      EXPECT_NEAR(drawn_.numbers[i], numbers[i], 0.002) << "the number " << i;
    }
  }

  // Of one line.
  void ExpectLine(const std::vector<double>& numbers, std::u32string_view text) {
    Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(text) + " Tj ET Q EMC",
           numbers);
  }

  double Width(std::u32string_view text, double size = 10) const {
    return font_->WidthOf(text) * size;
  }

  double Middle(double size = 10) const {
    return 20 - (font_->ascent() + font_->descent()) / 2 * size;
  }

  double Pitch(double size = 10) const {
    return (font_->ascent() - font_->descent()) * 1.15 * size;
  }

  std::unique_ptr<Annotated> annotated_;
  std::unique_ptr<AppearanceFonts> fonts_;
  AppearanceFont* font_ = nullptr;
  std::size_t characters_left_ = kPlenty;
  std::optional<MadeAppearance> made_;
  Operations drawn_;
};

TEST_F(TextAppearanceTest, StandsOnItsSide) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
  EXPECT_EQ(characters_left_, kPlenty - 2);
  Draw("/Subtype/Widget/FT/Tx/V(HH)/Q 1");
  ExpectLine({0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Tx/V(HH)/Q 2");
  ExpectLine({0, 0, 160, 40, 0, 10, 160 - Width(U"HH") - 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Btn/Ff 65536/MK<</CA(HH)>>");
  ExpectLine({0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, Middle()}, U"HH");
}

TEST_F(TextAppearanceTest, KeepsOffTheBorder) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)/MK<</BC[.5]>>/BS<</W 3>>");
  Expect("q # G # w # # # # re S Q /Tx BMC q # # # # re W n BT # g /F # Tf # # Td " +
             font_->Shown(U"HH") + " Tj ET Q EMC",
         {.5, 3, 1.5, 1.5, 157, 37, 3, 3, 154, 34, 0, 10, 6, Middle()});
}

TEST_F(TextAppearanceTest, FallsIntoLines) {
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(HH\\nH)/Q 1");
  const std::string two = " Tj # # Td ";
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + two +
             font_->Shown(U"H") + " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, 38 - font_->ascent() * 10,
          Width(U"H") / 2, -Pitch()});
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(HH HH)/Rect[0 0 20 40]");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + two +
             font_->Shown(U"HH") + " Tj ET Q EMC",
         {0, 0, 20, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -Pitch()});
  Draw("/Subtype/Widget/FT/Tx/V(H\\nH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"H H");
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(H H H)/Rect[0 0 4 40]/DA(/Helv .5 Tf 0 g)");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H H") + two +
             font_->Shown(U"H") + " Tj ET Q EMC",
         {0, 0, 4, 40, 0, .5, 2, 38 - font_->ascent() * .5, 0, -Pitch(.5)});
}

// What would be below the field is not written; of an empty line only the place is left.
TEST_F(TextAppearanceTest, EndsBelowTheField) {
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(H\\n\\nH\\nH\\nH\\nH\\nH)");
  const std::string next = " Tj # # Td " + font_->Shown(U"H");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H") + next + next +
             " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -2 * Pitch(), 0, -Pitch()});
}

TEST_F(TextAppearanceTest, StandsInTheCellsOfAComb) {
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(HH*HH)");
  const double h = (40 - Width(U"H")) / 2;
  const double star = (40 - Width(U"*")) / 2;
  const std::string next = " Tj # # Td ";
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H") + next +
             font_->Shown(U"H") + next + font_->Shown(U"*") + next + font_->Shown(U"H") +
             " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, h, Middle(), 40, 0, 40 + star - h, 0, 40 + h - star, 0});
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(H)/DA(/Helv 0 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, 26.8, (40 - Width(U"H", 26.8)) / 2, Middle(26.8)}, U"H");
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
}

TEST_F(TextAppearanceTest, IsOfSmallSizesToo) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)/DA(/Helv .5 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, .5, 2, Middle(.5)}, U"HH");
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(H)/DA(/Helv 1 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, 1, (40 - Width(U"H", 1)) / 2, Middle(1)}, U"H");
}

TEST_F(TextAppearanceTest, HidesPasswords) {
  Draw("/Subtype/Widget/FT/Tx/Ff 8192/V(abc)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"***");
}

TEST_F(TextAppearanceTest, HasTheSizeThatFits) {
  const std::string style = "/Subtype/Widget/FT/Tx/DA(/Helv 0 Tf 0 g)";
  Draw(style + "/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 26.8, 2, Middle(26.8)}, U"HH");
  const std::u32string wide(24, U'H');
  Draw(style + "/V(" + std::string(24, 'H') + ")");
  const double size = 156 / font_->WidthOf(wide);
  ExpectLine({0, 0, 160, 40, 0, size, 2, Middle(size)}, wide);
  const std::u32string widest(100, U'H');
  Draw(style + "/V(" + std::string(100, 'H') + ")");
  ExpectLine({0, 0, 160, 40, 0, 4, 2, Middle(4)}, widest);
}

TEST_F(TextAppearanceTest, HasTheSizeInWhichAllLinesFit) {
  const std::string style = "/Subtype/Widget/FT/Tx/Ff 4096/DA(/Helv 0 Tf 0 g)/V";
  const auto size_of = [&](const std::string& text) {
    Draw(style + text);
    return drawn_.numbers.at(5);
  };
  const auto fitting = [&](int lines) {
    double size = 12;
    while (size > 4 && lines * Pitch(size) > 36) {
      --size;
    }
    return size;
  };
  EXPECT_EQ(size_of("(H)"), 12);
  EXPECT_EQ(size_of("(H\\nH\\nH)"), fitting(3));
  EXPECT_EQ(size_of("(H\\nH\\nH\\nH\\nH)"), fitting(5));
  EXPECT_LT(fitting(5), fitting(3));
  EXPECT_EQ(size_of("(H\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH)"), 4);
}

TEST_F(TextAppearanceTest, MarksWhatIsChosen) {
  Draw("/Subtype/Widget/FT/Ch/V(b)/Opt[[(a)(H)](b)]");
  const double y = 38 - font_->ascent() * 10;
  Expect("/Tx BMC q # # # # re W n # # # rg # # # # re f BT # g /F # Tf # # Td " +
             font_->Shown(U"H") + " Tj # # Td " + font_->Shown(U"b") + " Tj ET Q EMC",
         {0, 0, 160, 40, .6, .75686, .8549, 0, y - Pitch() + font_->descent() * 10, 160, Pitch(), 0,
          10, 2, y, 0, -Pitch()});
  Draw("/Subtype/Widget/FT/Ch/V(b)/TI 1/Opt[(a)(H)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, y}, U"H");
}

// Between the borders; options that would be too much are passed over.
TEST_F(TextAppearanceTest, MarksWhatIsChosenWithinTheBorder) {
  Draw("/Subtype/Widget/FT/Ch/V(H)/Opt[(H)]/MK<</BC[.5]>>/BS<</W 3>>");
  const double y = 34 - font_->ascent() * 10;
  Expect(
      "q # G # w # # # # re S Q /Tx BMC q # # # # re W n # # # rg # # # # re f BT # g /F # Tf # "
      "# Td " +
          font_->Shown(U"H") + " Tj ET Q EMC",
      {.5,  3,       1.5,   1.5, 157,
       37,  3,       3,     154, 34,
       .6,  .75686,  .8549, 3,   y + font_->descent() * 10,
       154, Pitch(), 0,     10,  6,
       y});
  characters_left_ = 3;
  Draw("/Subtype/Widget/FT/Ch/Opt[(HH)(**)(b)(H)]");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + " Tj # # Td " +
             font_->Shown(U"b") + " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -Pitch()});
  EXPECT_EQ(characters_left_, 0U);
}

TEST_F(TextAppearanceTest, ShowsTheChosenOptionOfACombo) {
  Draw("/Subtype/Widget/FT/Ch/Ff 131072/V(b)/TI 1/Opt[[(b)(HH)](c)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Ch/Ff 131072/V(H)/Opt[(c)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"H");
}

TEST_F(TextAppearanceTest, OfFreeTextIsAsOpaqueAsItSays) {
  Draw("/Subtype/FreeText/Contents(HH)/BS<</W 0>>/CA .5");
  EXPECT_EQ(drawn_.text.substr(0, 6), "/G gs ");
  EXPECT_NE(made_->dictionary.find("/ExtGState<</G<</CA .5/ca .5>>>>"), std::string::npos);
  EXPECT_NE(made_->dictionary.find("/Font<</F " + std::to_string(font_->number()) + " 0 R>>"),
            std::string::npos);
  Draw("/Subtype/FreeText/Contents(HH)/BS<</W 0>>/CA 1");
  EXPECT_EQ(made_->dictionary.find("/ExtGState"), std::string::npos);
  ExpectLine({0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10}, U"HH");
}

TEST_F(TextAppearanceTest, IsAsLongAsThereMayBe) {
  characters_left_ = 3;
  Draw("/Subtype/Widget/FT/Tx/V(HHHHH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HHH");
  EXPECT_EQ(characters_left_, 0U);
  Draw("/Subtype/Widget/FT/Tx/V(HHHHH)");
  EXPECT_TRUE(made_->shows_nothing());
}

TEST(TextAppearance, IsOfWhatShowsText) {
  const auto shows = [](const std::string& entries) {
    Annotated annotated(entries);
    return ShowsText(annotated.annotation(), annotated.document());
  };
  EXPECT_TRUE(shows("/Subtype/FreeText"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Tx"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Ch"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Btn/Ff 65536"));
  EXPECT_FALSE(shows("/Subtype/Widget/FT/Btn"));
  EXPECT_FALSE(shows("/Subtype/Widget/FT/Sig"));
  EXPECT_FALSE(shows("/Subtype/Text/FT/Tx"));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
