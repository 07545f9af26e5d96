// Tables of texts, versions, matrices and keyed trees.
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/Utf8.h"
#include "pdf/Box.h"
#include "pdf/Matrix.h"
#include "pdf/file/Document.h"
#include "pdf/file/NumberArrays.h"
#include "pdf/syntax/PdfDocEncoding.h"
#include "pdf/tree/DocumentVersion.h"
#include "pdf/tree/KeyedTree.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::IsAsExpected;
using ::TarnixTools::testing::RawPdf;

// ISO 32000-2, annex D.3: the text shows each character beside its code.
TEST(TreeTables, OfPdfDocEncoding) {
  std::string text;
  for (int code = 0; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    const char32_t character = PdfDocCharacter(byte);
    text += std::to_string(code) + " U+" + std::to_string(static_cast<unsigned>(character));
    if (character > 0x20 && character != 0x7F && (character < 0x80 || character > 0xA0)) {
      text += ' ';
      AppendUtf8(text, character);
    }
    const std::optional<char> back = PdfDocByte(character);
    text += back ? back == byte ? "\n" : " another\n" : " none\n";
  }
  EXPECT_TRUE(IsAsExpected("tree/PDFDocEncoding.txt", text));
  for (const char32_t character :
       {U'\x00', U'\x18', U'\x1F', U'\x7F', U'\x80', U'\xA0', U'\xAD', U'\x0100', U'\xFFFD'}) {
    EXPECT_FALSE(PdfDocByte(character)) << static_cast<unsigned>(character);
  }
}

TEST(TreeTables, OfVersions) {
  const std::vector<std::pair<const char*, int>> table = {
      {"", 0},     {"1", 0},    {"1.", 0},   {"1.4", 14}, {"1.0", 10}, {"1.7", 17},
      {"1.8", 17}, {"1.9", 17}, {"2.0", 20}, {"2.9", 29}, {"0.9", 0},  {"3.0", 0},
      {"1,4", 0},  {"1.a", 0},  {"1./", 0},  {"1.:", 0},  {"1.45", 14}};
  for (const auto& [text, version] : table) {
    EXPECT_EQ(VersionOf(text), version) << text;
  }
  const auto version_of = [](const std::string& header, const std::string& entry) {
    const std::string bytes =
        RawPdf(header).Pages(1).Object(1, "<</Pages 2 0 R" + entry + ">>").Table();
    return DocumentVersion(*Document::Open(std::make_unique<MemorySource>(bytes), ""));
  };
  EXPECT_EQ(version_of("%PDF-1.4\n", ""), 14);
  EXPECT_EQ(version_of("%PDF-1.4\n", "/Version/1.6"), 16);
  EXPECT_EQ(version_of("%PDF-1.4\n", "/Version/1.3"), 14);
  EXPECT_EQ(version_of("%PDF-1.4\n", "/Version(1.6)"), 14);
  EXPECT_EQ(version_of("x%PDF-2.0\n", "/Version/1.6"), 20);
  EXPECT_EQ(version_of("", "/Version/1.6"), 16);
  EXPECT_EQ(version_of("", ""), 0);
}

TEST(TreeTables, OfTextStrings) {
  using namespace std::string_literals;
  const std::vector<std::pair<std::string, std::string>> table = {
      {"", ""},
      {"abc", "abc"},
      {"\x80\x9E\xA0", "•ž€"},
      {"\xFE\xFF", ""},
      {"\xFE\xFF\0a\x20\xAC"s, "a€"},
      {"\xFE\xFF\0a\0"s, "a"},
      {"\xFF\xFE"
       "a\0\xAC\x20"s,
       "a€"},
      {"\xFE\xFF\xD8\x3D\xDE\0"s, "😀"},
      {"\xFE\xFF\0\x1B\0d\0e\0\x1B\0x"s, "x"},
      {"\xFE\xFF\0x\0\x1B\0d\0e"s, "x"},
      {"\xFE\xFF\0x\0\x1B"s, "x"},
      {"\xEF\xBB\xBFä", "ä"},
      {"\xEF\xBB\xBF", ""},
      {"\xEF\xBB", "ï»"},
      {"\xFE", "þ"},
  };
  for (const auto& [bytes, text] : table) {
    EXPECT_EQ(TextStringToUtf8(bytes), text);
  }
  const std::vector<std::pair<std::string, std::string>> written = {
      {"", ""},
      {"abc", "abc"},
      {"•€", "\x80\xA0"},
      {"Ω", "\xFE\xFF\x03\xA9"s},
      {"a\xF0\x9F\x98\x80", "\xFE\xFF\0a\xD8\x3D\xDE\0"s},
      {"þÿ", "\xFE\xFF\0\xFE\0\xFF"s},
      {"ÿþ", "\xFE\xFF\0\xFF\0\xFE"s},
      {"ï»¿", "\xFE\xFF\0\xEF\0\xBB\0\xBF"s},
      {"a\x1B", "\xFE\xFF\0a\xFF\xFD"s},
  };
  for (const auto& [text, bytes] : written) {
    EXPECT_EQ(Utf8ToTextString(text), bytes) << text;
  }
  EXPECT_EQ(TextStringWith("a", "_2"), "a_2");
  EXPECT_EQ(TextStringWith("\xFE\xFF\0a"s, "_2"), "\xFE\xFF\0a\0_\0002"s);
  EXPECT_EQ(TextStringWith("\xFE\xFF\0a\0"s, "_"), "\xFE\xFF\0a\0_"s);
  EXPECT_EQ(TextStringWith("\xFF\xFE"
                           "a\0"s,
                           "_"),
            "\xFF\xFE"
            "a\0_\0"s);
  EXPECT_EQ(TextStringWith("\xEF\xBB\xBF"
                           "a",
                           "_"),
            "\xEF\xBB\xBF"
            "a_");
}

std::string MatrixText(const Matrix& m) {
  std::string text;
  for (const double value : {m.a, m.b, m.c, m.d, m.e, m.f}) {
    AppendNumber(text, value, 3);
    text += ' ';
  }
  return text;
}

TEST(TreeTables, OfMatrices) {
  EXPECT_EQ(MatrixText(Matrix{1, 2, 3, 4, 5, 6} * Matrix{7, 8, 9, 10, 11, 12}),
            "25 28 57 64 100 112 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(0)), "1 0 0 1 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(90)), "0 1 -1 0 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(180)), "-1 0 0 -1 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(270)), "0 -1 1 0 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(-90)), "0 -1 1 0 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(-270)), "0 1 -1 0 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(450)), "0 1 -1 0 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(30)), ".866 .5 -.5 .866 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Rotation(-330)), ".866 .5 -.5 .866 0 0 ");
  EXPECT_EQ(MatrixText(Matrix::Translation(3, -4)), "1 0 0 1 3 -4 ");
  EXPECT_EQ(Matrix::Rotation(90).a, 0);
  const Point point = Matrix{1, 2, 3, 4, 5, 6}.Apply(10, 100);
  EXPECT_EQ(point.x, 315);
  EXPECT_EQ(point.y, 426);
}

TEST(TreeTables, OfMatricesThatAreNearlyNone) {
  EXPECT_TRUE(Matrix().IsIdentity());
  for (double Matrix::*part : {&Matrix::a, &Matrix::b, &Matrix::c, &Matrix::d}) {
    Matrix matrix;
    matrix.*part += 0.9e-9;
    EXPECT_TRUE(matrix.IsIdentity());
    matrix.*part += 0.2e-9;
    EXPECT_FALSE(matrix.IsIdentity());
    matrix = {};
    matrix.*part -= 1.1e-9;
    EXPECT_FALSE(matrix.IsIdentity());
  }
  for (double Matrix::*part : {&Matrix::e, &Matrix::f}) {
    Matrix matrix;
    matrix.*part = -0.9e-6;
    EXPECT_TRUE(matrix.IsIdentity());
    matrix.*part = -1.1e-6;
    EXPECT_FALSE(matrix.IsIdentity());
    matrix.*part = 1e-6;
    EXPECT_FALSE(matrix.IsIdentity());
  }
  EXPECT_TRUE(Matrix().IsFinite());
  for (double Matrix::*part :
       {&Matrix::a, &Matrix::b, &Matrix::c, &Matrix::d, &Matrix::e, &Matrix::f}) {
    Matrix matrix;
    matrix.*part = std::numeric_limits<double>::infinity();
    EXPECT_FALSE(matrix.IsFinite());
  }
}

std::string BoxText(const Box& box) {
  std::string text;
  AppendBox(text, box);
  return text;
}

TEST(TreeTables, OfBoxes) {
  EXPECT_EQ(BoxText(Box::OfCorners(3, 4, 1, 2)), "[1 2 3 4]");
  EXPECT_EQ(BoxText(Box::OfCorners(1, 4, 3, 2)), "[1 2 3 4]");
  EXPECT_EQ(BoxText(Box{1, 2, 30, 40}.Within({3, 1, 20, 50})), "[3 2 20 40]");
  EXPECT_EQ(BoxText(Box{1, 2, 30, 40}.Within({0, 5, 50, 30})), "[1 5 30 30]");
  EXPECT_EQ(BoxText(Box{1, 2, 3, 5}.Through({10, 100, -1000, 10000, 7, 8})),
            "[-4983 20108 -1963 50308]");
  EXPECT_EQ(BoxText(Box{1, 2, 3, 5}.Through({-10, 0, 0, -1, 0, 0})), "[-30 -5 -10 -2]");
}

TEST(TreeTables, OfNumbersWritten) {
  const auto written = [](double value, int decimals) {
    std::string text;
    AppendNumber(text, value, decimals);
    return text;
  };
  EXPECT_EQ(written(0, 3), "0");
  EXPECT_EQ(written(-0.0001, 3), "0");
  EXPECT_EQ(written(0.5, 3), ".5");
  EXPECT_EQ(written(-0.5, 3), "-.5");
  EXPECT_EQ(written(10, 0), "10");
  EXPECT_EQ(written(100, 3), "100");
  EXPECT_EQ(written(1.2345, 3), "1.234");
  EXPECT_EQ(written(1.2355, 3), "1.236");
  EXPECT_EQ(written(-12.300, 3), "-12.3");
  EXPECT_EQ(written(std::nan(""), 3), "0");
  EXPECT_EQ(written(std::numeric_limits<double>::infinity(), 3), "0");
  std::string after = "1";
  AppendNumber(after, 2, 0);
  AppendNumber(after, .5, 1);
  AppendNumber(after, -1, 0);
  AppendReference(after, 3, 4);
  AppendName(after, "N");
  AppendInteger(after, -5);
  AppendString(after, "s", false);
  AppendToken(after, "true");
  EXPECT_EQ(after, "1 2 .5 -1 3 4 R/N -5(s)true");
}

TEST(TreeTables, OfNamesAndStringsWritten) {
  using namespace std::string_literals;
  const auto name = [](std::string_view bytes) {
    std::string text;
    AppendName(text, bytes);
    return text;
  };
  EXPECT_EQ(name(""), "/");
  EXPECT_EQ(name("A B#C"), "/A#20B#23C");
  EXPECT_EQ(name("\x01!~\x7F\xFF"), "/#01!~#7F#FF");
  EXPECT_EQ(name("(/%[{<"), "/#28#2F#25#5B#7B#3C");
  EXPECT_EQ(name("\0"s), "/#00");
  const auto string = [](std::string_view bytes, bool as_hex) {
    std::string text;
    AppendString(text, bytes, as_hex);
    return text;
  };
  EXPECT_EQ(string("", false), "()");
  EXPECT_EQ(string("", true), "<>");
  EXPECT_EQ(string("aZ\x0F", true), "<615A0F>");
  EXPECT_EQ(string("a(b)\\\r\n", false), "(a\\(b\\)\\\\\\r\n)");
  EXPECT_EQ(string("((", false), "(\\(\\()");
  EXPECT_EQ(string("\xFE\xFF", false), "(\xFE\xFF)");
}

// What is visited in the tree that is object 4, and what was wrong with it.
std::string Visited(const std::string& objects, const char* key = "Names") {
  const std::string bytes = RawPdf().Pages(1).Lines(objects).Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  std::string text;
  const TreeDamage damage = ForEachInTree(*document, Object::Ref({4, 0}), key,
                                          [&](const Object& name, const Object& value) {
                                            AppendObject(text, name);
                                            text += '=';
                                            AppendObject(text, value);
                                            text += ' ';
                                          });
  return text + std::to_string(damage.nodes) + std::to_string(damage.entries) +
         std::to_string(damage.loops);
}

TEST(TreeTables, OfKeyedTrees) {
  EXPECT_EQ(Visited("4 <</Names[(a)1(b)2]>>"), "(a)= 1 (b)= 2 000");
  EXPECT_EQ(Visited("4 <</Names[(a)1(b)]>>"), "(a)= 1 010");
  EXPECT_EQ(Visited("4 <</Names[1(a)2/x(b)3]>>"), "(a)= 2 (b)= 3 020");
  EXPECT_EQ(Visited("4 <</Names[(a)(b)(c)]>>"), "(a)=(b) 010");
  EXPECT_EQ(Visited("4 <</Nums[1(a)(x)2(b)]>>", "Nums"), "1=(a) 2=(b) 010");
  EXPECT_EQ(Visited("4 <</Nums[1(a)]>>"), "000");
  EXPECT_EQ(Visited("4 <</Kids[5 0 R 6 0 R]/Names[(a)1]>>\n5 <</Names[(b)2]>>\n6 <</Names[(c)3]>>"),
            "(a)= 1 (b)= 2 (c)= 3 000");
  EXPECT_EQ(
      Visited("4 <</Kids[5 0 R 6 0 R]>>\n5 <</Kids[<</Names[(a)1]>>7 0 R]>>\n6 <</Names[(c)3]>>"
              "\n7 <</Names[(b)2]>>"),
      "(a)= 1 (b)= 2 (c)= 3 000");
  EXPECT_EQ(Visited("4 <</Kids[5 0 R 5 0 R 4 0 R]>>\n5 <</Names[(b)2]>>"), "(b)= 2 002");
  EXPECT_EQ(Visited("4 <</Kids[5 0 R(x)null 99 0 R 6 0 R]>>\n5 <</Names[(b)2]>>\n6 7"),
            "(b)= 2 200");
  EXPECT_EQ(
      Visited("4 <</Kids 5 0 R/Names 6 0 R>>\n5 [7 0 R]\n6 [8 0 R 9]\n7 <</Names[(z)0]>>\n8 (k)"),
      "(k)= 9 (z)= 0 000");
  EXPECT_EQ(Visited("4 7"), "100");
  EXPECT_EQ(Visited("4 <</Kids 3>>"), "000");
}

TEST(TreeTables, OfNumberArrays) {
  const std::string bytes = RawPdf().Pages(1).Lines("4 [4 5 0 R 1 2]\n5 3").Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const auto box = ReadBox(*document, Object::Ref({4, 0}));
  ASSERT_TRUE(box);
  EXPECT_EQ(BoxText(*box), "[1 2 4 3]");
  EXPECT_FALSE(ReadMatrix(*document, Object::Ref({4, 0})));
  std::vector<Object> items;
  for (int i = 1; i <= 7; ++i) {
    items.push_back(Object::Integer(i));
  }
  const auto matrix = ReadMatrix(*document, Object::Array(items));
  ASSERT_TRUE(matrix);
  EXPECT_EQ(MatrixText(*matrix), "1 2 3 4 5 6 ");
  EXPECT_FALSE(ReadBox(*document, Object::Array(items)));
  items.resize(6);
  EXPECT_TRUE(ReadMatrix(*document, Object::Array(items)));
  items.resize(5);
  EXPECT_FALSE(ReadMatrix(*document, Object::Array(items)));
  items.resize(3);
  EXPECT_FALSE(ReadBox(*document, Object::Array(items)));
}

}  // namespace
}  // namespace TarnixTools::pdf
