// Files as a whole: how they are read, and what another byte here and there makes of them.
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/file/FileText.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::DamageText;
using ::TarnixTools::testing::DataText;
using ::TarnixTools::testing::IsAsExpected;
using ::TarnixTools::testing::RawPdf;
using testing::ContentText;
using testing::Difference;
using testing::SyntaxText;

// What stands in the place of what.
using Change = std::pair<std::string, std::string>;

std::string Changed(std::string bytes, const Change& change) {
  const std::size_t at = bytes.find(change.first);
  EXPECT_NE(at, std::string::npos) << change.first;
  return at == std::string::npos ? bytes : bytes.replace(at, change.first.size(), change.second);
}

std::string OnOneLine(std::string text) {
  for (char& c : text) {
    c = c == '\n' ? '~' : c;
  }
  return text;
}

// What each change makes of the text of the file.
template <typename Text>
std::string Changes(const std::string& bytes, const std::vector<Change>& changes, Text text_of) {
  const std::string sound = text_of(bytes);
  std::string text = sound;
  for (const Change& change : changes) {
    text += "\n'" + OnOneLine(change.first) + "' -> '" + OnOneLine(change.second) + "'\n" +
            Difference(sound, text_of(Changed(bytes, change)));
  }
  return text;
}

std::string Contents(const std::string& bytes, const std::vector<Change>& changes) {
  return Changes(bytes, changes, [](const std::string& b) { return ContentText(b); });
}

std::string Syntax(const std::string& bytes, const std::vector<Change>& changes) {
  return Changes(bytes, changes, [](const std::string& b) { return SyntaxText(b); });
}

std::string Ten(std::size_t offset) {
  const std::string digits = std::to_string(offset);
  return std::string(10 - digits.size(), '0') + digits;
}

// A table, and an update of it: object 7 is another one, 8 is free, 11 is new.
std::string Tables() {
  RawPdf pdf("%PDF-1.7\n%\xE2\xE3\xCF\xD3\n");
  pdf.Lines(R"(1 <</Type/Catalog/Pages 2 0 R>>
2 <</Type/Pages/Kids[3 0 R 10 0 R]/Count 3/MediaBox[0 0 90 80]/Rotate 90>>
3 <</Type/Page/Parent 2 0 R/Contents 5 0 R/Annots[]>>
4 <</Type/Page/Parent 10 0 R/CropBox[1 1 50 40]/Rotate 0>>)");
  pdf.Object(5, "<</Length 6 0 R>>\nstream\r\nBT (x) Tj ET\nendstream")
      .Object(6, "12")
      .Object(7, "[(old)<6F6c64>]")
      .Object(8, "(free)", 2);
  pdf.Lines(R"(9 <</Type/Page/Parent 10 0 R/UserUnit 2>>
10 <</Type/Pages/Kids[4 0 R 9 0 R]/Count 2/Parent 2 0 R/Resources<</Font 7 0 R>>>>)");
  std::string table = "0000000000 65535 f \n";
  for (int i = 1; i <= 10; ++i) {
    table += Ten(pdf.OffsetOf(i)) + (i == 8 ? " 00002 n \n" : " 00000 n \n");
  }
  const std::size_t first = pdf.size();
  pdf.Raw("xref\n0 11\n" + table + "trailer\n<</Size 11/Root 1 0 R/ID[(a)(b)]>>\nstartxref\n" +
          std::to_string(first) + "\n%%EOF\n");
  pdf.Object(7, "[(new)]").Object(11, "<</New true/Old 8 0 R>>");
  const std::size_t second = pdf.size();
  pdf.Raw("xref\n0 1\n0000000000 65535 f \n7 2\n" + Ten(pdf.OffsetOf(7)) +
          " 00000 n \n0000000000 00003 f \n11 1\n" + Ten(pdf.OffsetOf(11)) +
          " 00000 n \ntrailer\n<</Size 12/Root 1 0 R/Prev " + std::to_string(first) +
          "/ID[(a)(c)]>>\nstartxref\n" + std::to_string(second) + "\n%%EOF\n");
  return pdf.bytes();
}

std::string Hex(std::uint64_t value, int digits) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text;
  for (int i = digits; i-- > 0;) {
    text += kDigits[value >> static_cast<unsigned>(4 * i) & 15U];
  }
  return text;
}

// A cross-reference stream in digits, and an object stream.
std::string Streams() {
  RawPdf pdf("%PDF-1.5\n");
  const std::string members =
      "1 0 2 29 4 79 8 116 <</Type/Catalog/Pages 2 0 R>> "
      "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/Rotate 0>> "
      "<</Type/Page/Parent 2 0 R/Own(s)/C 7>> [1 2 0 R]";
  pdf.Lines(R"(3 <</Type/Page/Parent 2 0 R/MediaBox[0 0 9 8]/Contents 5 0 R>>)");
  pdf.Stream(5, "/Filter/ASCIIHexDecode", "71 20 51>")
      .Stream(6, "/Type/ObjStm/N 4/First 20", members)
      .Mark(7);
  std::string rows = "00 000000 FFFF ";
  for (const int number : {1, 2}) {
    rows += "02 000006 000" + std::to_string(number - 1) + " ";
  }
  rows += "01 " + Hex(pdf.OffsetOf(3), 6) + " 0000 02 000006 0002 01 " + Hex(pdf.OffsetOf(5), 6) +
          " 0000 01 " + Hex(pdf.OffsetOf(6), 6) + " 0000 01 " + Hex(pdf.OffsetOf(7), 6) +
          " 0000 02 000006 0003";
  pdf.Stream(7, "/Type/XRef/W[1 3 2]/Size 9/Index[0 9]/Root 1 0 R/Filter/ASCIIHexDecode",
             rows + ">");
  const std::size_t start = pdf.OffsetOf(7);
  return pdf.Raw("startxref\n" + std::to_string(start) + "\n%%EOF").bytes();
}

// A table that knows of some objects, and a stream beside it that knows of the others.
std::string Hybrid() {
  RawPdf pdf;
  pdf.Pages(1).Object(4, "(in the table)").Object(5, "(in the stream)").Object(6, "(hidden)");
  pdf.Mark(8);
  pdf.Stream(8, "/Type/XRef/W[0 2 1]/Index[5 2]/Size 9/Filter/ASCIIHexDecode",
             Hex(pdf.OffsetOf(5), 4) + "00 " + Hex(pdf.OffsetOf(6), 4) + "05>");
  const std::size_t start = pdf.size();
  std::string table = "xref\n0 8\n0000000000 65535 f \n";
  for (int i = 1; i <= 4; ++i) {
    table += Ten(pdf.OffsetOf(i)) + " 00000 n \n";
  }
  table += "0000000000 00000 f \n0000000000 00000 f \n0000000000 00000 f \n";
  return pdf
      .Raw(table + "trailer\n<</Size 8/Root 1 0 R/XRefStm " + std::to_string(pdf.OffsetOf(8)) +
           ">>\nstartxref\n" + std::to_string(start) + "\n%%EOF\n")
      .bytes();
}

TEST(FileTexts, OfTables) {
  EXPECT_TRUE(IsAsExpected("file/tables.txt",
                           Contents(Tables(), {{"%PDF-", "%PdF-"},
                                               {"%PDF-", "\n%PDF-"},
                                               {"<</Type/Catalog", "(no catalog)%"},
                                               {"/Pages 2 0 R", "/Pages 9 0 R"},
                                               {"/Pages 2 0 R", "/Pages 8 0 R"},
                                               {"2 0 obj", "3 0 obj"},
                                               {"3 0 obj", "3 0 ooo"},
                                               {"4 0 obj", "4 1 obj"},
                                               {"9 0 obj", "99 obj "},
                                               {"/Kids[3 0 R", "/Kids[3 0 3"},
                                               {"/Kids[3 0 R 10 0 R]", "/Kids[10 0 R 3 0 R]"},
                                               {"/Kids[3 0 R 10 0 R]", "/Kids[3 0 R 02 0 R]"},
                                               {"/Kids[4 0 R 9 0 R]", "/Kids[4 0 R 4 0 R]"},
                                               {"/Kids[4 0 R 9 0 R]", "/Kids[4 0 R 8 0 R]"},
                                               {"/Kids[4 0 R 9 0 R]", "/Kids 4 0 R(      )"},
                                               {"/Count 3", "/Count 2"},
                                               {"/Count 3", "/Count 4"},
                                               {"/Count 3", "/Cunt -1"},
                                               {"/MediaBox[0 0 90 80]", "/MediaBox[0 0 90 x0]"},
                                               {"/CropBox[1 1 50 40]", "/CropBox[50 40 1 1]"},
                                               {"/CropBox[1 1 50 40]", "/CropBox[1 1  1 40]"},
                                               {"/UserUnit 2", "/UserUnit 0"},
                                               {"/Rotate 90>>", "/Rotate -9>>"},
                                               {"/Length 6 0 R", "/Length 7 0 R"},
                                               {"/Length 6 0 R", "/Length 13   "},
                                               {"/Length 6 0 R", "/Length 11   "},
                                               {"/Length 6 0 R", "/Length -1   "},
                                               {"/Length 6 0 R", "/Length 12.0 "},
                                               {"stream\r\nBT", "stream \nBT"},
                                               {"stream\r\nBT", "stream\nqBT"},
                                               {"stream\r\nBT", "streamq\nBT"},
                                               {"stream\r\nBT", "%c\nstream\nBT"},
                                               {"endstream", "endstreem"},
                                               {"\nendstream\nendobj", "\nendstreem\nendobb"},
                                               {"(old)<6F6c64>]", "(old)<6F6c64>>"},
                                               {"(free)\nendobj", "(free\\nendobj"},
                                               {"xref\n0 11", "xrxf\n0 11"},
                                               {"xref\n0 11", "xref\n1 11"},
                                               {"xref\n0 11", "xref\n0 12"},
                                               {"xref\n0 11", "xref\n0 10"},
                                               {"f \n0000", "f \n0001"},
                                               {"00002 n", "70000 n"},
                                               {"trailer", "trialer"},
                                               {"trailer\n<<", "trailer\n[["},
                                               {"/Root 1 0 R/ID[(a)(b)]", "/Root 2 0 R/ID[(a)(b)]"},
                                               {"/Root 1 0 R/Prev", "/Root 3 0 R/Prev"},
                                               {"/Root 1 0 R/Prev", "/Root<<>>  /Prev"},
                                               {"/Root 1 0 R/Prev", "/Root<</Pages 2 0 R>>/Prev"},
                                               {"/ID[(a)(b)]", "/Prev   929"},
                                               {"/ID[(a)(b)]", "/Prev   573"},
                                               {"/ID[(a)(b)]", "/Prev    -1"},
                                               {"/ID[(a)(b)]", "/Prev     9"},
                                               {"/Prev ", "/Prev -"},
                                               {"/Prev ", "/Prev 9"},
                                               {"/Prev ", "/Prev 1%\n"},
                                               {"7 2\n", "7 3\n"},
                                               {"7 2\n", "7 x\n"},
                                               {"7 2\n", "7 2\n\n\n"},
                                               {"7 2\n", "7 2 \n  \n"},
                                               {"0000000000 00003 f \n", "  0 00003 f         \n"},
                                               {"f \n7 2", "f \n1 2"},
                                               {"\n11 1\n", "\n12 1\n"},
                                               {"00003 f", "00003 n"}})));
}

TEST(FileTexts, OfTablesWithoutAnEnd) {
  const std::string bytes = Tables();
  const std::string sound = ContentText(bytes);
  std::string text;
  for (const char* end : {"\n%%EOF\n", "startxref\n", "trailer\n<</Size 12", "xref\n0 1\n",
                          "[(new)]", "%%EOF\n7", "xref\n0 11", "10 0 obj", "9 0 obj", "6 0 obj",
                          "5 0 obj", "stream\r\n", "4 0 obj", "2 0 obj", "1 0 obj", "%\xE2"}) {
    const std::size_t at = bytes.rfind(end);
    ASSERT_NE(at, std::string::npos) << end;
    text +=
        "\nbefore '" + OnOneLine(end) + "'\n" + Difference(sound, ContentText(bytes.substr(0, at)));
  }
  EXPECT_TRUE(IsAsExpected("file/cut.txt", text));
}

TEST(FileTexts, OfCrossReferenceStreams) {
  EXPECT_TRUE(IsAsExpected(
      "file/streams.txt",
      Contents(Streams(), {{"/W[1 3 2]", "/W[1 3 3]"},
                           {"/W[1 3 2]", "/W[1 3]  "},
                           {"/W[1 3 2]", "/W[0 4 2]"},
                           {"/W[1 3 2]", "/W[0 0 0]"},
                           {"/W[1 3 2]", "/W[1 9 2]"},
                           {"/W[1 3 2]", "/W[1 5 0]"},
                           {"/W[1 3 2]", "/X[1 3 2]"},
                           {"/Index[0 9]", "/Index[0 8]"},
                           {"/Index[0 9]", "/Index[1 9]"},
                           {"/Index[0 9]", "/Index[0 2 4 9]"},
                           {"/Index[0 9]", "/Index[-1 9]"},
                           {"/Index[0 9]", "/Index[0 -9]"},
                           {"/Index[0 9]", "/Index(0 9)"},
                           {"/Size 9/Index[0 9]", "/Size 3           "},
                           {"/Type/XRef", "/Type/Xref"},
                           {"/Root 1 0 R", "/Root 2 0 R"},
                           {"/Size 9/Index[0 9]/Root 1 0 R/Filter/ASCIIHexDecode",
                            "/Size 9/Index[0 9]/Root 1 0 R/Filter/NoSuchDecode  "},
                           {"02 000006 0000", "02 000005 0000"},
                           {"02 000006 0000", "02 000006 0002"},
                           {"02 000006 0000", "03 000006 0000"},
                           {"02 000006 0002", "02 FFFFFF 0002"},
                           {"02 000006 0002", "00 000006 0002"},
                           {"02 000006 0003", "02 000006 00x3"},
                           {"02 000006 0003", "02 000006     "},
                           {"/N 4", "/N 3"},
                           {"/N 4", "/N 9"},
                           {"/First 20", "/First 21"},
                           {"/First 20", "/First -1"},
                           {"/First 20", "/First 999"},
                           {"1 0 2 29", "1 0 2 28"},
                           {"1 0 2 29", "1 0 2 x9"},
                           {"1 0 2 29", "9 0 2 29"},
                           {"/Type/ObjStm", "/Type/Objstm"},
                           {"/Filter/ASCIIHexDecode", "/Filter/AHx        "},
                           {"71 20 51>", "71 2- 51 "},
                           {"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Catalog/Pages 9 0 R>>"},
                           {"6 0 obj", "6 9 obj"},
                           {"7 0 obj", "7 0 ob "}})));
}

TEST(FileTexts, OfHybrids) {
  EXPECT_TRUE(
      IsAsExpected("file/hybrid.txt", Contents(Hybrid(), {{"/XRefStm ", "/XRefStm -"},
                                                          {"/XRefStm ", "/XRefStm 9"},
                                                          {"/XRefStm ", "/XRefStm 1%\n"},
                                                          {"/Index[5 2]", "/Index[5 1]"},
                                                          {"/W[0 2 1]", "/W[1 2 1]"},
                                                          {"/Index[5 2]", "/Index[4 2]"}})));
}

TEST(FileTexts, OfWhatAnObserverHears) {
  EXPECT_TRUE(IsAsExpected("file/heard_tables.txt",
                           Syntax(Tables(), {{"%PDF-1.7\n", "%PDF-1.\r\n"},
                                             {"%PDF-1.7\n%", "%PDF-1.7\r%"},
                                             {"1 0 obj\n<<", "1 0\tobj <<"},
                                             {"endobj\n3 0 obj", "endobj 3 0 obj"},
                                             {"4 0 obj\n", "4 0 obj%"},
                                             {"stream\r\nBT", "stream \nBT"},
                                             {"\nendstream\nendobj", "\rendstream endobj"},
                                             {"endstream\nendobj", "endstream%endobj"},
                                             {"12\nendobj", "12%endobj"},
                                             {"/Annots[]", "/Parent 9"},
                                             {"<6F6c64>", "<6F 6c6g"},
                                             {"/Rotate 90", "/Rotate[9<"},
                                             {"xref\n0 11\n", "xref 0 11 "},
                                             {"xref\n0 11\n", "xref\n0\r11\n"},
                                             {"65535 f \n", "65535 f\r\n"},
                                             {"65535 f \n", "65535 f  "},
                                             {"%%EOF\n7", "%%EOF\r7"},
                                             {"/Size 12", "/Root 12"}})));
}

TEST(FileTexts, OfWhatAnObserverHearsOfStreams) {
  EXPECT_TRUE(IsAsExpected("file/heard_streams.txt",
                           Syntax(Streams(), {{"/N 4", "/N 3"},
                                              {"[1 2 0 R]", "[1 2 0 x]"},
                                              {"/Own(s)", "/C 1(s)"},
                                              {"/Own(s)", "/#4fwn "},
                                              {"/MediaBox[0 0 9 8]", "/Linearized 1/L 90"},
                                              {"7 0 obj", " 7 0 obj"}})));
  EXPECT_TRUE(IsAsExpected("file/heard_hybrid.txt", Syntax(Hybrid(), {})));
}

// How many pages and objects there are, what was found amiss, and whether the file was searched.
std::string Summary(const std::string& text) {
  std::map<std::string, int> counts;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    const std::string kind = line.substr(0, line.find(' '));
    if (kind == "finding:") {
      ++counts[line.substr(9, line.find(", object") - 9)];
    } else if (kind == "page" || kind == "object" || kind == "rebuilt") {
      ++counts[kind];
    }
  }
  std::string summary;
  for (const auto& [kind, count] : counts) {
    summary += kind + " " + std::to_string(count) + ", ";
  }
  return summary.empty() ? text : summary;
}

// Every byte of a file is another one once; and all that is read then.
std::string DamagedText(const std::string& bytes) {
  std::string all;
  const std::string text = DamageText(bytes, [&](const std::string& damaged) {
    const std::string read = ContentText(damaged);
    all += read;
    return Summary(read);
  });
  return text + DataText(all + '\0') + "\n";
}

TEST(FileTexts, OfTablesOfWhichAByteIsAnother) {
  EXPECT_TRUE(IsAsExpected("file/damaged_table.txt", DamagedText(Tables())));
}

TEST(FileTexts, OfStreamsOfWhichAByteIsAnother) {
  EXPECT_TRUE(IsAsExpected("file/damaged_streams.txt", DamagedText(Streams())));
  EXPECT_TRUE(IsAsExpected("file/damaged_hybrid.txt", DamagedText(Hybrid())));
}

}  // namespace
}  // namespace TarnixTools::pdf
