#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/content/ContentReader.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {
namespace {

// "name(operand count) ..." of all operations, and what was amiss.
std::string Read(const std::string& content) {
  ContentReader reader(content);
  Operation operation;
  std::string text;
  while (reader.Next(operation)) {
    text += std::string(operation.name) + "(" + std::to_string(operation.operand_count) + ") ";
  }
  text += reader.is_damaged() ? "damaged" : "sound";
  return reader.has_operands_left() ? text + ", operands left" : text;
}

// Data of the inline images, each in brackets, and the operators in between.
std::string Images(const std::string& content) {
  ContentReader reader(content);
  Operation operation;
  std::string text;
  while (reader.Next(operation)) {
    text += operation.code == OperatorCode("BI") ? "[" + std::string(operation.image_data) + "]"
                                                 : std::string(operation.name);
  }
  return reader.is_damaged() ? text + " damaged" : text;
}

TEST(ContentReader, ReadsOperatorsWithTheirOperands) {
  EXPECT_EQ(Read("q 1 0 0 1 10 20 cm\nBT/F1 12 Tf(a)Tj ET Q"),
            "q(0) cm(6) BT(0) Tf(2) Tj(1) ET(0) Q(0) sound");
}

TEST(ContentReader, CountsArraysAndDictionariesAsOneOperand) {
  EXPECT_EQ(Read("[(a)-120(b)[1 2]]TJ /Span<</MCID 3/A[1<</B 2>>]>>BDC EMC"),
            "TJ(1) BDC(2) EMC(0) sound");
}

TEST(ContentReader, GivesOperandsAsValues) {
  const std::string content = "-.5 12 /N#61me (a\\)b) <4142> [1 true null] <</K/V>> sc";
  ContentReader reader(content);
  Operation operation;
  ASSERT_TRUE(reader.Next(operation));
  Arena arena;
  std::string text;
  for (const Object& operand : ParseOperands(operation.operands, arena)) {
    AppendObject(text, operand);
  }
  EXPECT_EQ(text, "-.5 12/Name(a\\)b)<4142>[1 true null]<</K/V>>");
}

TEST(ContentReader, PassesOverComments) {
  EXPECT_EQ(Read("q % (not a string\n1 w % at the end"), "q(0) w(1) sound");
}

TEST(ContentReader, ReadsNothingFromNothing) {
  EXPECT_EQ(Read(""), "sound");
  EXPECT_EQ(Read(" \n\t"), "sound");
}

TEST(ContentReader, SaysThatOperandsAreLeft) {
  EXPECT_EQ(Read("q 1 0 0 1"), "q(0) sound, operands left");
  EXPECT_EQ(Read("q\n"), "q(0) sound");
}

TEST(ContentReader, KeepsUnknownOperators) {
  EXPECT_EQ(Read("1 2 foo 3 w 12.5Tf"), "foo(2) w(1) 12.5Tf(0) sound");
}

TEST(ContentReader, ReadsNumbersAsTheyAreWritten) {
  EXPECT_EQ(Read("--5 1.2.3 +3 -.5 . 4.-3 m"), "m(6) sound");
}

TEST(ContentReader, NoticesDamage) {
  EXPECT_EQ(Read("(open Tj"), "damaged, operands left");
  EXPECT_EQ(Read("(open (in) Tj"), "damaged, operands left");
  EXPECT_EQ(Read("(esc\\)"), "damaged, operands left");
  EXPECT_EQ(Read("(closed)"), "sound, operands left");
  EXPECT_EQ(Read("<41 Tj"), "damaged, operands left");
  EXPECT_EQ(Read("[1 2 TJ q"), "TJ(1) q(0) damaged");
  EXPECT_EQ(Read("1 ] w"), "w(1) damaged");
  EXPECT_EQ(Read("<</A [1>> BDC"), "BDC(1) damaged");
  EXPECT_EQ(Read("q ) Q"), "q(0) Q(0) damaged");
  EXPECT_EQ(Read("{ q } Q"), "q(0) Q(0) damaged");
}

TEST(ContentReader, SurvivesDeepNesting) {
  const std::string deep(100000, '[');
  EXPECT_EQ(Read(deep + " q"), "q(1) damaged");
  EXPECT_EQ(Read(deep + std::string(100000, ']') + "TJ"), "TJ(1) damaged");
}

TEST(InlineImages, AreAsLongAsTheirDataMustBe) {
  // Data that looks like the end of an image, and more.
  EXPECT_EQ(Images("q BI/W 4/H 2/BPC 8/CS/G ID \nEI Q \x01\n EI Q"), "q[\nEI Q \x01\n]Q");
  EXPECT_EQ(Images("BI /Width 2 /Height 1 /BitsPerComponent 8 /ColorSpace /DeviceRGB ID "
                   " EI Q \nEI\nS"),
            "[ EI Q ]S");
  EXPECT_EQ(Images("BI/W 8/H 5/IM true ID  EI EEI Q"), "[ EI E]Q");
  EXPECT_EQ(Images("BI/W 2/H 2/BPC 4/CS[/I/RGB 1<000000ffffff>]ID \xAB\xCD\nEI Q"), "[\xAB\xCD]Q");
}

TEST(InlineImages, AreAsLongAsTheirColorSpaceMakesThem) {
  const std::pair<const char*, std::size_t> kSpaces[] = {{"/G", 1},
                                                         {"/DeviceGray", 1},
                                                         {"/CalGray", 1},
                                                         {"/I", 1},
                                                         {"/Indexed", 1},
                                                         {"[/I/G 1<00FF>]", 1},
                                                         {"[/Indexed/RGB 0<000000>]", 1},
                                                         {"/RGB", 3},
                                                         {"/DeviceRGB", 3},
                                                         {"/CalRGB", 3},
                                                         {"/CMYK", 4},
                                                         {"/DeviceCMYK", 4}};
  for (const auto& [space, components] : kSpaces) {
    std::string data(8 * components, 'x');
    data.replace(1, 5, " EI Q");  // as if it ended there
    for (const char* names :
         {"/W 4/H 2/BPC 8/CS", "/Width 4/Height 2/BitsPerComponent 8/ColorSpace"}) {
      EXPECT_EQ(Images("BI" + std::string(names) + space + " ID " + data + " EI Q"),
                "[" + data + "]Q")
          << space;
    }
  }
  // Where nothing tells, the first end counts.
  EXPECT_EQ(Images("BI/W 4/H 2/BPC 8/CS/Own ID x EI Q"), "[x]Q");
  EXPECT_EQ(Images("BI/Width 8/Height 5/ImageMask true ID  EI EEI Q"), "[ EI E]Q");
  EXPECT_EQ(Images("BI/W 4/H 4/Filter/Fl/Length 9 ID  EI Q EI \nEI Q"), "[ EI Q EI ]Q");
}

TEST(InlineImages, OfFiltersWithAMagicNumberDoNotBeginWithALineEnd) {
  for (const char* filter : {"/F/DCT", "/F/DCTDecode", "/F/Fl", "/F/FlateDecode", "/Filter/DCT",
                             "/F[/DCT]", "/Filter[/Fl/CCF]"}) {
    EXPECT_EQ(Images("BI/W 4/H 1" + std::string(filter) + " ID\r\nabc EI Q"), "[abc]Q") << filter;
  }
  for (const char* filter : {"/F/CCF", "/F/LZW", "/F[/CCF/DCT]", "/F[]"}) {
    EXPECT_EQ(Images("BI/W 4/H 1" + std::string(filter) + " ID\r\nabc EI Q"), "[\nabc]Q") << filter;
  }
}

TEST(InlineImages, MayStateTheirLength) {
  EXPECT_EQ(Images("BI/W 4/H 4/F/Fl/L 9 ID  EI Q EI \nEI Q"), "[ EI Q EI ]Q");
  // A length that leads nowhere does not count.
  EXPECT_EQ(Images("BI/W 4/H 4/F/Fl/L 5 ID abcdefgh EI Q"), "[abcdefgh]Q");
}

TEST(InlineImages, TakeTwoBytesOfSpaceForOne) {
  EXPECT_EQ(Images("BI/W 3/H 1/BPC 8/CS/G ID\r\nabc EI Q"), "[abc]Q");
  EXPECT_EQ(Images("BI/W 4/H 1/BPC 8/CS/G ID\r\nabc EI Q"), "[\nabc]Q");
  EXPECT_EQ(Images("BI/W 4/H 1/F/DCT ID\r\nabc EI Q"), "[abc]Q");
  EXPECT_EQ(Images("BI/W 4/H 1/F/CCF ID\r\nabc EI Q"), "[\nabc]Q");
}

TEST(InlineImages, EndAtTheMarkOfAsciiFilters) {
  EXPECT_EQ(Images("BI/W 1/H 1/F/AHx ID 41 EI Q 42>EI Q"), "[41 EI Q 42>]Q");
  EXPECT_EQ(Images("BI/W 1/H 1/F[/A85/Fl]ID GhVa EI Q 9~>\nEI Q"), "[GhVa EI Q 9~>]Q");
}

TEST(InlineImages, AreSearchedForTheirEnd) {
  EXPECT_EQ(Images("BI/F/Fl ID ab\x80 EI \x81\x82\x83 q EI\nQ"), "[ab\x80 EI \x81\x82\x83 q]Q");
  EXPECT_EQ(Images("BI/F/DCT ID abEI Q"), "[ab]Q");
  EXPECT_EQ(Images("BI/F/Fl ID ab EI"), "[ab]");
  EXPECT_EQ(Images("BI/W 1/H 1/F/Fl ID a EI BI/W 1/H 1/F/Fl ID b EI Q"), "[a][b]Q");
}

TEST(InlineImages, WithoutAnEndAreDamage) {
  EXPECT_EQ(Images("q BI/W 1/F/Fl ID abc"), "q[] damaged");
  EXPECT_EQ(Images("q BI/W 1/H 1 Q S"), "q[]QS damaged");
  EXPECT_EQ(Images("q BI/W 1/H 1"), "q[] damaged");
}

TEST(InlineImages, OfImpossibleSizeAreSearched) {
  EXPECT_EQ(Images("BI/W 2147483647/H 2147483647/BPC 16/CS/CMYK ID ab EI Q"), "[ab]Q");
  EXPECT_EQ(Images("BI/W -1/H 0/BPC 8/CS/G ID ab EI Q"), "[ab]Q");
}

TEST(InlineImages, TakeTimeInProportionToTheContent) {
  std::string content;
  for (int i = 0; i < 20000; ++i) {
    content += "BI/F/AHx ID 41EI ";  // never the mark that the filter wants
  }
  content += " ~> >";
  EXPECT_EQ(Images(content).substr(0, 12), "[41][41][41]");
}

TEST(InlineImages, GiveTheirEntries) {
  Arena arena;
  const Object entries = ParseInlineEntries("/W 3 /CS /Cs1 junk /F [/A85 /Fl]", arena);
  EXPECT_EQ(entries.Get("W").IntegerOr(0), 3);
  EXPECT_TRUE(entries.Get("CS").IsName("Cs1"));
  EXPECT_EQ(entries.Get("F").Items().size(), 2U);
}

TEST(ContentReader, BoundsNesting) {
  const auto nested = [](int depth, const std::string& inside) {
    std::string text;
    for (int i = 0; i < depth; ++i) {
      text.insert(0, "[");
      text += "]";
    }
    return text.insert(static_cast<std::size_t>(depth), inside) + " d";
  };
  EXPECT_EQ(Read(nested(500, "1")), "d(1) sound");
  EXPECT_EQ(Read(nested(499, "<<>>")), "d(1) sound");
  EXPECT_EQ(Read(nested(501, "1")), "d(1) damaged");
  EXPECT_EQ(Read(nested(500, "<<")), "d(1) damaged");
}

TEST(ContentReader, TakesAnyLettersForAnOperator) {
  EXPECT_EQ(Read("1 A 2 Z 3 a 4 z 5 @ 6 [ 7 ] d 8 `"), "A(1) Z(1) a(1) z(1) @(1) d(2) `(1) sound");
}

}  // namespace
}  // namespace TarnixTools::pdf
