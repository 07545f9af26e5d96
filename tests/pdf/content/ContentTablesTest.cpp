// Tables of contents and what is read in them.
#include <array>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/content/ContentReader.h"
#include "pdf/content/NameScan.h"
#include "pdf/content/Operands.h"
#include "pdf/content/Operators.h"
#include "support/Expected.h"

namespace TarnixTools::pdf {
namespace {

using Table = std::vector<std::pair<std::string, std::string>>;

std::string OnOneLine(std::string_view text) {
  std::string line;
  for (const char c : text) {
    line += c == '\n' ? '~' : c == '\r' ? '^' : c == '\0' ? '0' : c;
  }
  return line;
}

std::string BalanceText(const ContentBalance& balance) {
  std::string text = "closing '" + OnOneLine(balance.closing()) + "', saves " +
                     std::to_string(balance.open_saves()) + ", surplus " +
                     std::to_string(balance.surplus_restores());
  for (const std::size_t position : balance.restore_positions()) {
    text += " @" + std::to_string(position);
  }
  text += balance.is_cut() ? ", cut" : "";
  return text + (balance.stops_readers() ? ", stops" : "");
}

std::string BalanceOf(const std::vector<std::string>& streams) {
  ContentBalance balance = MeasureBalance(streams.front());
  for (std::size_t i = 1; i < streams.size(); ++i) {
    balance.Append(MeasureBalance(streams[i]));
  }
  return BalanceText(balance);
}

TEST(ContentTables, OfBalance) {
  const std::vector<std::vector<std::string>> contents = {
      {""},
      {" \n"},
      {"q q Q q"},
      {"Q q Q Q\nQ q"},
      {"BT ET BT"},
      {"ET"},
      {"0 0 m 1 1 l"},
      {"0 0 m S"},
      {"0 0 m s"},
      {"0 0 m f"},
      {"0 0 m F"},
      {"0 0 m f*"},
      {"0 0 m B"},
      {"0 0 m B*"},
      {"0 0 m b"},
      {"0 0 m b*"},
      {"0 0 m n"},
      {"0 0 1 1 re"},
      {"0 0 1 1 re W n"},
      {"0 0 m n 0 0 m f 0 0 m F 0 0 m f* 0 0 m s 0 0 m B 0 0 m B* 0 0 m b 0 0 m b* q"},
      {"/A BMC /B <</C 1>> BDC EMC"},
      {"EMC EMC /A BMC"},
      {"(a(b\\)c)d"},
      {"(a\\"},
      {"(a)"},
      {"(a\\))"},
      {"(a(b)"},
      {"[(a"},
      {"[1 [2 <</K"},
      {"[1 >> ]"},
      {"<</A [ >> ]"},
      {"<41"},
      {"<41>"},
      {"<"},
      {">"},
      {"> ] >>"},
      {"/Name"},
      {"% q\nq"},
      {"% q\rq"},
      {"% q"},
      {"1 0 0 1 0 0cm"},
      {"1 0 0 1 0cm"},
      {"q 1 0 0 1 0cm"},
      {"q 5 w w"},
      {"true w"},
      {"null w false w trux w"},
      {"[1 q 2] 0 d"},
      {"<</A q>> q"},
      {"5 foo"},
      {"BX 5 foo bar EX"},
      {"BX BX foo EX foo EX foo"},
      {"EX foo"},
      {"(a) Tj (b)"},
      {"1 2 3"},
      {"{q} q"},
      {"q)q"},
      {"BI /W 1/H 1/BPC 8/CS/G ID x EI q"},
      {"BI /W 1/H 1/BPC 8/CS/G ID x"},
      {"BI /W 1/H 1/BPC 8/CS/G ID x q"},
      {"BI /W 1 true false null ID EI q"},
      {"BI /W true ID q EI Q"},
      {"BI /W false ID q EI Q"},
      {"BI /W null ID q EI Q"},
      {"<6 q>"},
      {"BI /W 1"},
      {"BI /W 1 q"},
      {"BI q ID q"},
      {"BI"},
      {"ID EI"},
      {"q", "Q"},
      {"q q", "Q Q Q", "q"},
      {"Q", "q"},
      {"/A BMC", "EMC EMC", "/B BMC"},
      {"BT", "ET"},
      {"BT", "q"},
      {"0 0 m", "1 1 l", "S"},
      {"0 0 m", "q"},
      {"(a", "b)"},
      {"1 0 0", "1 0 0 cm"},
      {"1 0 0", "0 0 cm"},
      {"1 0 0", " ", "1 0 0 cm"},
      {"q", "0 0 cm"},
      {"q 1", "w"},
      {"w", "5 w"},
      {"5 w 1 2", "3 4", "5 6 cm", "cm"},
      {"BI /W 9/H 9/BPC 8/CS/G ID x", "q"},
  };
  std::string text;
  for (const auto& streams : contents) {
    for (const std::string& stream : streams) {
      text += "[" + OnOneLine(stream) + "] ";
    }
    text += "\n  " + BalanceOf(streams) + "\n";
  }
  std::string unknown = "q ";
  for (int i = 0; i < 31; ++i) {
    unknown += "x ";
  }
  text += "31 unknown: " + BalanceOf({unknown}) + "\n32 unknown: " + BalanceOf({unknown + "x"}) +
          "\n31 and 1: " + BalanceOf({unknown, "x"}) + "\n";
  EXPECT_TRUE(::TarnixTools::testing::IsAsExpected("content/balance.txt", text));
}

std::string OperationsText(std::string_view content) {
  ContentReader reader(content);
  std::string text;
  Operation operation;
  while (reader.Next(operation)) {
    EXPECT_EQ(operation.code, OperatorCode(operation.name));
    text += "  " + std::to_string(operation.operand_count) + " '" + OnOneLine(operation.operands) +
            "' " + OnOneLine(operation.name);
    if (operation.code == OperatorCode("BI")) {
      text += " '" + OnOneLine(operation.image_entries) + "' data '" +
              OnOneLine(operation.image_data) + "'";
    }
    text += "\n";
  }
  text += reader.is_damaged() ? "  damaged\n" : "";
  return text + (reader.has_operands_left() ? "  operands left\n" : "");
}

TEST(ContentTables, OfOperations) {
  std::string text;
  for (const std::string content : {"",
                                    " ",
                                    "q",
                                    "q Q",
                                    "1 0 0 1 5 6 cm",
                                    "1 0 0 1 5 6cm",
                                    "-1 +2 -.5 5. 1..2 --3 w",
                                    "5-3 w",
                                    "1e5 w",
                                    "- w",
                                    "1 -w",
                                    "[1 2]0 d",
                                    "[1 [2]] 0 d",
                                    "<</A 1>>/B <41>(x) foo",
                                    "(a(b)\\)) Tj",
                                    "(a) Tj (b",
                                    "(a",
                                    "(a\\",
                                    "<41",
                                    "<",
                                    "/Name",
                                    "/A/B/C gs",
                                    "/A#20B gs",
                                    "[1 2 d",
                                    "[1 q 2] d",
                                    "<</A q>> q",
                                    "<<q",
                                    "] q",
                                    ">> q",
                                    "> q",
                                    ") q",
                                    "} q {",
                                    "1 2",
                                    "q % c\nQ",
                                    "q % c",
                                    "true false null x",
                                    "tru",
                                    "T* ' \"",
                                    "'(a)\"",
                                    "abcd efgh",
                                    "ab1 abc abcd",
                                    "f*f",
                                    "1 2 m3 4 l",
                                    "/A<</B(x)/C[1]>>BDC",
                                    "[<</A[1]>>] d",
                                    "[<<] >> d",
                                    "q\n\nQ\r",
                                    "12x y",
                                    "1.5x y",
                                    "BI/W 1/H 1/BPC 8/CS/G ID x EI Q",
                                    "BI/W 1/H 1/BPC 8/CS/G ID",
                                    "BI /A true ID",
                                    "BI /W 1 q Q",
                                    "BI",
                                    "ID EI q",
                                    "EI"}) {
    text += "[" + OnOneLine(content) + "]\n" + OperationsText(content);
  }
  EXPECT_TRUE(::TarnixTools::testing::IsAsExpected("content/operations.txt", text));
}

TEST(ContentTables, OfNestingAndItsBound) {
  const auto nested = [](int depth) {
    return std::string(static_cast<std::size_t>(depth), '[') +
           std::string(static_cast<std::size_t>(depth), ']') + " 0 d";
  };
  EXPECT_EQ(OperationsText(nested(limits::kMaxNesting)),
            "  2 '" + nested(limits::kMaxNesting).substr(0, 2 * limits::kMaxNesting + 3) + "' d\n");
  EXPECT_TRUE(OperationsText(nested(limits::kMaxNesting + 1)).ends_with("' d\n  damaged\n"));
  const auto closing = [](int depth) {
    return MeasureBalance(std::string(static_cast<std::size_t>(depth), '[')).closing().size();
  };
  EXPECT_EQ(closing(limits::kMaxNesting), static_cast<std::size_t>(limits::kMaxNesting));
  EXPECT_EQ(closing(limits::kMaxNesting + 1), static_cast<std::size_t>(limits::kMaxNesting));
}

TEST(ContentTables, OfInlineImages) {
  std::string text;
  for (const std::string content :
       {"BI/W 2/H 1/BPC 8/CS/G ID xy EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xyEI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xy\r\nEI\nQ",
        "BI/W 2/H 1/BPC 8/CS/G ID\r\nxy EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID\r\nx EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xy         EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xy        EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xyz EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID EI EI Q",
        "BI/W 2/H 1/BPC 8/CS/G ID xy EIQ EI Q",
        "BI/W 2/H 2/BPC 4/CS/I ID xy EI Q",
        "BI/W 3/H 2/BPC 4/CS[/I/RGB 1<00>] ID wxyz EI Q",
        "BI/W 3/H 2/BPC 4/CS[/Indexed/RGB 1<00>] ID wxyz EI Q",
        "BI/W 3/H 2/BPC 4/CS[/ICCBased 1] ID EI Q wx EI Q",
        "BI/W 1/H 1/BPC 8/CS/RGB ID EI  EI Q",
        "BI/W 1/H 1/BPC 8/CS/DeviceRGB ID EI  EI Q",
        "BI/W 1/H 1/BPC 8/CS/CalRGB ID EI  EI Q",
        "BI/W 1/H 1/BPC 8/CS/CMYK ID EI q EI Q",
        "BI/W 1/H 1/BPC 8/CS/DeviceCMYK ID EI q EI Q",
        "BI/W 3/H 1/BPC 8/CS/DeviceGray ID EI  EI Q",
        "BI/W 3/H 1/BPC 8/CS/CalGray ID EI  EI Q",
        "BI/W 3/H 1/BPC 8/CS/Indexed ID EI  EI Q",
        "BI/W 3/H 1/BPC 8/CS/Own ID EI  EI Q",
        "BI/W 17/H 1/IM true ID EI  EI Q",
        "BI/Width 17/Height 1/ImageMask true/BitsPerComponent 8 ID EI  EI Q",
        "BI/W 3/H 1/BPC 16/CS/G ID EI q Q EI Q",
        "BI/W 3/H 1/BPC 17/CS/G ID x EI q Q EI Q",
        "BI/W 0/H 1/BPC 8/CS/G ID x EI Q",
        "BI/W 1/H 0/BPC 8/CS/G ID x EI Q",
        "BI/W 1/H 1/BPC 0/CS/G ID x EI Q",
        "BI/W 65537/H 1/BPC 1/CS/G ID x EI Q",
        "BI/W 4/H 1/BPC 8/CS/G ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS/I ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS/DeviceGray ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS/CalGray ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS/Indexed ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS[/Indexed/RGB 1<00>] ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS[/I/RGB 1<00>] ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS[] ID EI q EI Q",
        "BI/W 4/H 1/BPC 8/CS/Own ID EI q EI Q",
        "BI/W 2/H 1/BPC 8/CS/RGB ID EI q Q EI Q",
        "BI/W 1/H 2/BPC 8/CS/DeviceRGB ID EI q Q EI Q",
        "BI/W 2/H 1/BPC 8/CS/CalRGB ID EI q Q EI Q",
        "BI/W 1/H 1/BPC 8/CS/CMYK ID EI q EI Q",
        "BI/W 25/H 1/IM true/BPC 8/CS/RGB ID EI q EI Q",
        "BI/W 2/H 1/BPC 16/CS/G ID EI q EI Q",
        "BI/W 2/H 1/BPC 17/CS/G ID EI qx EI Q",
        "BI/W 1/H 4/BPC 1/CS/G ID EI q EI Q",
        "BI/W 4/H 1/BPC 0/CS/G ID EI q EI Q",
        "BI/H 4/BPC 8/CS/G ID EI q EI Q",
        "BI/W 4/BPC 8/CS/G ID EI q EI Q",
        "BI/W 4/H 1/CS/G ID EI q EI Q",
        "BI/L 5 ID EI Qx EI Q",
        "BI/Length 5/F/Fl ID EI Qx EI Q",
        "BI/L 99 ID x EI Q",
        "BI/L -1 ID x EI Q",
        "BI/F/AHx ID 6EI Q > EI Q",
        "BI/F[/ASCIIHexDecode/Fl] ID 6EI Q > EI Q",
        "BI/F/A85 ID > EI Q ~> EI Q",
        "BI/Filter/ASCII85Decode ID > EI Q ~> EI Q",
        "BI/F/A85 ID > EI Q",
        "BI/F/Fl ID\r\nEI Q",
        "BI/F/DCT ID\r\n@ EI Q",
        "BI/F/FlateDecode ID\r\nx EI Q",
        "BI/F/DCTDecode ID\r\nx EI Q",
        "BI/F/RL ID\r\nx EI Q",
        "BI/F[/Fl] ID\r\nx EI Q",
        "BI/F[] ID\r\nx EI Q",
        "BI/F/RL ID x EI foo y EI Q",
        "BI/F/RL ID x EI 1 2 foo EI Q",
        "BI/F/RL ID x EI 1..2 Q EI Q",
        "BI/F/RL ID x EI true null (a) Q y EI Q",
        "BI/F/RL ID x EI 1 2 3 4 5 6 7 8 9 10 11 12 13 y EI Q",
        "BI/F/RL ID x EI 1 2 3 4 5 6 7 8 9 10 y EI Q",
        "BI/F/RL ID xEI Q",
        "BI/F/RL ID xEI y EI Q",
        "BI/F/RL ID EI Q",
        "BI/F/RL ID x EIx",
        "BI/F/RL ID x EI",
        "BI/F/RL ID x",
        "BI/F/RL ID",
        "BI 1/W 2/H ID x EI Q",
        "BI/F/RL ID xEI q BI/F/RL ID yEI Q"}) {
    text += "[" + OnOneLine(content) + "]\n" + OperationsText(content);
  }
  EXPECT_TRUE(::TarnixTools::testing::IsAsExpected("content/inline_images.txt", text));
}

std::string ScannedText(std::string_view content) {
  std::vector<ScannedName> names;
  const bool is_whole = ScanNames(content, names);
  std::string text;
  for (const auto& [category, name] : names) {
    text += " " + std::string(kResourceCategoryKeys.at(static_cast<std::size_t>(category))) +
            std::string(name);
  }
  return is_whole ? text : "no" + text;
}

TEST(ContentTables, OfScannedNames) {
  const Table table = {
      {"", ""},
      {"1 0 0 rg", ""},
      {"/F 12 Tf", " Font/F"},
      {"/F -12.5 Tf", " Font/F"},
      {"/F +1 .5 Tf", " Font/F"},
      {"/F\n12\tTf(x)Tj", " Font/F"},
      {"/F 12Tf", "no"},
      {"/X Do", " XObject/X"},
      {"/X Do/Y Do", " XObject/X XObject/Y"},
      {"/G gs", " ExtGState/G"},
      {"/C cs /D CS", " ColorSpace/C ColorSpace/D"},
      {"/P scn /Q SCN /R sc /S SC", " Pattern/P Pattern/Q Pattern/R Pattern/S"},
      {"1 2 /P scn", " Pattern/P"},
      {"/S sh", " Shading/S"},
      {"/T BMC EMC /T MP /I ri", ""},
      {"/T/P BDC EMC", " Properties/T Properties/P"},
      {"/T /P DP", " Properties/T Properties/P"},
      {"/T<</MCID 0>>BDC EMC", " Properties/T"},
      {"/T <</A<</B(>>)>>/C<41>>> BDC", " Properties/T"},
      {"/T <</A BDC", "no"},
      {"/T <</A 1> BDC", "no"},
      {"/T <</A%\n>> BDC", "no"},
      {"/T <</A(x >> BDC", "no"},
      {"/T <</A<4 BDC", "no"},
      {"/T/P Do", "no"},
      {"/T/P BMC", "no"},
      {"/T BDC", "no"},
      {"/T<<>>Do", "no"},
      {"/T foo", "no"},
      {"/T", "no"},
      {"/T Tdef", "no"},
      {"/ Do", " XObject/"},
      {"/A#42 Do", " XObject/A#42"},
      {"(a(b)c\\)) Tj /X Do", " XObject/X"},
      {"(/Y Do) Tj", ""},
      {"(a", "no"},
      {"(a\\", "no"},
      {"<41>Tj /X Do", " XObject/X"},
      {"<41", "no"},
      {"<</A 1>>", "no"},
      {"% c\n/X Do", "no"},
      {"BT /F 1 Tf ET", " Font/F"},
      {"B B* BX", ""},
      {"BI /W 1 ID x EI", "no"},
      {"B", ""},
      {"0 0 m B ", ""},
  };
  for (const auto& [content, names] : table) {
    EXPECT_EQ(ScannedText(content), names) << content;
  }
}

Operation OperationOf(std::string_view content) {
  ContentReader reader(content);
  Operation operation;
  reader.Next(operation);
  return operation;
}

template <std::size_t Count>
std::string NumbersOf(std::string_view content) {
  std::array<double, Count> numbers{};
  if (!LastNumbers(OperationOf(content), numbers)) {
    return "none";
  }
  std::ostringstream text;
  for (const double number : numbers) {
    text << number << ' ';
  }
  return text.str();
}

TEST(ContentTables, OfOperands) {
  EXPECT_EQ(NumbersOf<1>("5 w"), "5 ");
  EXPECT_EQ(NumbersOf<1>("-.5 w"), "-0.5 ");
  EXPECT_EQ(NumbersOf<1>("+5 w"), "5 ");
  EXPECT_EQ(NumbersOf<1>("w"), "none");
  EXPECT_EQ(NumbersOf<1>("5%c\n w"), "5 ");
  EXPECT_EQ(NumbersOf<1>("1..2 w"), "1 ");
  EXPECT_EQ(NumbersOf<1>("--5 w"), "-5 ");
  EXPECT_EQ(NumbersOf<1>("(x) w"), "0 ");
  EXPECT_EQ(NumbersOf<1>("1 2 w"), "2 ");
  EXPECT_EQ(NumbersOf<1>("1 2.5.5 w"), "2.5 ");
  EXPECT_EQ(NumbersOf<2>("1 w"), "none");
  EXPECT_EQ(NumbersOf<2>("1 2 w"), "1 2 ");
  EXPECT_EQ(NumbersOf<2>("1%c\n2 w"), "1 2 ");
  EXPECT_EQ(NumbersOf<2>("1 [2] w"), "1 0 ");
  EXPECT_EQ(NumbersOf<2>("7 8 9 w"), "8 9 ");
  EXPECT_EQ(NumbersOf<2>("7 /N true w"), "0 0 ");
  Arena arena;
  const Table names = {{"/A gs", "A"},      {"/A/B gs", "B"},   {"1 /A gs", "A"},
                       {"/A 1 gs", "none"}, {"gs", "none"},     {"(x) gs", "none"},
                       {"/A#42 gs", "AB"},  {"(/B)/A gs", "A"}, {"/A(/B) gs", "none"},
                       {"[/A] gs", "none"}, {"/A\n gs", "A"},   {"% /B\n/A gs", "A"}};
  for (const auto& [content, name] : names) {
    EXPECT_EQ(LastName(OperationOf(content), arena).value_or("none"), name) << content;
  }
  const Table fonts = {{"/F 5 Tf", "F 5"},    {"/F -2.5 Tf", "F -2.5"}, {"/F Tf", "none"},
                       {"5 Tf", "none"},      {"5 /F Tf", "none"},      {"/E/F 5 Tf", "F 5"},
                       {"/F 4 5 Tf", "none"}, {"/F (x) Tf", "F 0"},     {"/F#41 6 Tf", "FA 6"},
                       {"1/F 5 Tf", "F 5"},   {"(a)/F 5 Tf", "F 5"}};
  for (const auto& [content, font] : fonts) {
    const auto found = LastNameAndNumber(OperationOf(content), arena);
    std::ostringstream text;
    if (found) {
      text << found->name << ' ' << found->number;
    }
    EXPECT_EQ(found ? text.str() : "none", font) << content;
  }
  const std::vector<std::pair<std::string, std::vector<std::size_t>>> strings = {
      {"[(a)1<41>]", {1, 5}},
      {"(a)", {}},
      {"[(a)][(b)(c)]", {6, 9}},
      {"[[(a)](b)]", {6}},
      {"](a)[(b)]", {5}},
      {"", {}},
      {"[(a", {1}}};
  for (const auto& [operands, offsets] : strings) {
    EXPECT_EQ(StringOffsets(operands), offsets) << operands;
  }
  EXPECT_EQ(FirstRawName("1 /A#42/B"), "A#42");
  EXPECT_EQ(FirstRawName("1"), "");
  EXPECT_EQ(FirstRawName("/"), "");
}

// Each operator of the standard, its group and how many operands it has.
TEST(ContentTables, OfOperators) {
  std::string text;
  for (const OperatorRow& row : kOperators) {
    const std::uint32_t code = OperatorCode(row.name);
    text += std::string(row.name) + " " + std::to_string(code) + " " +
            std::to_string(static_cast<int>(GroupOf(code))) + " " +
            std::to_string(OperandsOf(code)) + "\n";
    EXPECT_TRUE(IsOperator(code));
  }
  EXPECT_TRUE(::TarnixTools::testing::IsAsExpected("content/operators.txt", text));
  for (const char* name : {"", "ID", "EI", "x", "qq", "Tx", "abcd", "QQQ"}) {
    EXPECT_FALSE(IsOperator(OperatorCode(name))) << name;
    EXPECT_EQ(OperandsOf(OperatorCode(name)), -1) << name;
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
