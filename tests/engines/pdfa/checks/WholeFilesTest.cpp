// What validation finds in whole files: changed by appending, linearized, embedded in each other,
// with things that several checks find.
#include <cstdio>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "support/ArchiveFile.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

std::string Said(const std::string& what, const std::string& bytes, const std::string& level) {
  return what + ", " + level + "\n" + FindingsOf(bytes, level);
}

// The file with an object 20 appended.
//   keyword, heading - of the table of references
std::string Updated(const std::string& bytes, const std::string& keyword,
                    const std::string& heading, const std::string& trailer) {
  const std::size_t mark = bytes.rfind("startxref\n") + 10;
  const std::string table = bytes.substr(mark, bytes.find('\n', mark) - mark);
  std::string text = bytes + (bytes.ends_with('\n') ? "" : "\n");
  const std::size_t object = text.size();
  text += "20 0 obj\n1\nendobj\n";
  const std::size_t place = text.size();
  char entry[32];
  std::snprintf(entry, sizeof entry, "%010zu 00000 n \n", object);
  return text + keyword + heading + entry + "trailer\n<</Size 21/Root 1 0 R/Prev " + table +
         trailer + ">>\nstartxref\n" + std::to_string(place) + "\n%%EOF\n";
}

TEST(WholeFiles, AreJudgedWithAllTheirUpdates) {
  const std::string same = "/ID[<0123456789ABCDEF><0123456789ABCDEF>]";
  std::string text;
  for (const char* level : {"1b", "2b"}) {
    const std::string bytes = ArchiveFile(level).Bytes();
    const std::string spaced = ArchiveFile(level).Replace("xref\n0", "xref \n0").Bytes();
    const std::string apart = ArchiveFile(level).Replace("\n0 1\n", "\n0  1\n").Bytes();
    text += Said("fine", Updated(bytes, "xref\n", "20 1\n", same), level);
    text += Said("a space in the update", Updated(bytes, "xref \n", "20 1\n", same), level);
    text += Said("a space in the file", Updated(spaced, "xref\n", "20 1\n", same), level);
    text += Said("two spaces in the update", Updated(bytes, "xref\n", "20  1\n", same), level);
    text += Said("two spaces in the file", Updated(apart, "xref\n", "20 1\n", same), level);
    text += Said("no identifier", Updated(bytes, "xref\n", "20 1\n", ""), level);
    text +=
        Said("an encrypted update", Updated(bytes, "xref\n", "20 1\n", same + "/Encrypt 1"), level);
    text += Said("more behind it", Updated(bytes, "xref\n", "20 1\n", same) + "more", level);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/updated.txt", text));
}

std::string Linearized(const std::string& bytes) {
  const TempDir directory;
  WriteBytes(directory.Path("in.pdf"), bytes);
  RunProgram(
      {"qpdf", "--linearize", "--static-id", directory.Path("in.pdf"), directory.Path("out.pdf")});
  return ReadBytes(directory.Path("out.pdf"));
}

// The identifiers of the first and of the last trailer have to be the same, where the length that
// the file states is its own.
TEST(WholeFiles, AreLinearizedWhereTheySayTheirLength) {
  std::string text;
  for (const char* level : {"1b", "2b"}) {
    const std::string bytes = Linearized(ArchiveFile(level).Bytes());
    text += Said("linearized", bytes, level);
    std::string other_first = bytes;
    char& digit = other_first[other_first.find("/ID [<") + 6];
    digit = digit == '0' ? '1' : '0';
    text += Said("another first identifier", other_first, level);
    std::string no_first = bytes;
    no_first.replace(no_first.find("/ID [<"), 3, "/XX");
    text += Said("no first identifier", no_first, level);
    std::string no_last = bytes;
    no_last.replace(no_last.rfind("/ID [<"), 3, "/XX");
    text += Said("no last identifier", no_last, level);
    text += Said("longer than it says", no_first + "\n", level);
    text += Said("longer than it says, no last identifier", no_last + "\n", level);
    std::string no_length = no_first;
    no_length.replace(no_length.find("/L "), 3, "/X ");
    text += Said("says no length", no_length, level);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/linearized.txt", text));
}

// A valid document with another one embedded.
std::string Holding(const std::string& level, const std::string& embedded) {
  return ArchiveFile(level)
      .Catalog("/Names<</EmbeddedFiles<</Names[(a)20 0 R]>>>>")
      .Object(20, "<</Type/Filespec/F(a.pdf)/UF(a.pdf)/EF<</F 21 0 R>>>>")
      .Stream(21, "/Type/EmbeddedFile/Subtype/application#2Fpdf", embedded)
      .Bytes();
}

TEST(WholeFiles, HoldOthersOnlySoDeep) {
  const std::string plain = ArchiveFile("1b").Bytes();
  const std::string once = Holding("2b", plain);
  const std::string twice = Holding("2u", once);
  EXPECT_EQ(FindingsOf(once, "2b"), "");
  EXPECT_EQ(FindingsOf(twice, "2u"), "");
  EXPECT_EQ(FindingsOf(Holding("2b", twice), "2b"), "6.8-5 object 21\n");
  EXPECT_EQ(FindingsOf(Holding("2b", Holding("2b", ArchiveFile("3b").Bytes())), "2b"),
            "6.8-5 object 21\n");
  EXPECT_EQ(FindingsOf(Holding("2b", ArchiveFile("2b").Catalog("/AA<<>>").Bytes()), "2b"),
            "6.8-5 object 21\n");
  EXPECT_EQ(FindingsOf(Holding("2b", ArchiveFile("2b").Replace("ns/id/", "ns/xx/").Bytes()), "2b"),
            "6.8-5 object 21\n");
  EXPECT_EQ(FindingsOf(Holding("2b", "x" + plain), "2b"), "6.8-5 object 21\n");
  EXPECT_EQ(FindingsOf(Holding("2b", plain.substr(0, 20)), "2b"), "6.8-5 object 21\n");
}

TEST(WholeFiles, HaveFilesThatAreAssociatedByLists) {
  for (const auto& [list, found] :
       {std::pair("[21 0 R]", ""), std::pair("[3 0 R 21 0 R]", ""),
        std::pair("[]", "6.8-4 object 21\n"), std::pair("[3 0 R]", "6.8-4 object 21\n"),
        std::pair("[[21 0 R]]", "6.8-4 object 21\n")}) {
    const std::string bytes =
        ArchiveFile("3b")
            .Catalog("/AF 20 0 R")
            .Object(20, list)
            .Object(21, "<</Type/Filespec/F(a)/UF(a)/AFRelationship/Data/EF<</F 22 0 R>>>>")
            .Stream(22, "/Type/EmbeddedFile/Subtype/text#2Fplain", "text")
            .Bytes();
    EXPECT_EQ(FindingsOf(bytes, "3b"), found) << list;
  }
}

// Findings of one rule stand in the order in which the parts of a document are looked at.
TEST(WholeFiles, TellFindingsInTheOrderOfTheirParts) {
  RawPdf file;
  const std::string launch = "<</S/Launch>>";
  file.Object(1, "<</Type/Catalog/Pages 2 0 R/OpenAction " + launch +
                     "/AcroForm<</Fields[20 0 R]>>" +
                     "/Lang(a_a)/StructTreeRoot<</K 21 0 R>>/Outlines<</First 22 0 R>>>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>");
  for (const auto& [page, note] : {std::pair(3, 23), std::pair(4, 24)}) {
    file.Object(page, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/AA<</O " + launch +
                          ">>/Annots[" + std::to_string(note) +
                          " 0 R]/Contents 5 0 R/Resources<</Font<</T 25 0 R>>>>>>");
    file.Object(note, "<</Subtype/Link/Rect[0 0 9 9]/F 4/A " + launch + "/AA<</E " + launch +
                          ">>/Lang(d_d)>>");
  }
  file.Stream(5, "", "/P<</Lang(b_b)>>BDC BT /T 9 Tf (ab) Tj ET EMC foo 0 0 0 1 k 0 0 9 9 re f");
  file.Object(20, "<</T(a)/A " + launch + "/AA<</K " + launch + ">>>>");
  file.Object(21, "<</S/P/Lang(c_c)/K[<</S/P/Lang(e_e)>>]>>");
  file.Object(22, "<</A " + launch + ">>");
  file.Object(25,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 9 9]/FontMatrix[1 0 0 1 0 0]/FirstChar 97"
              "/LastChar 98/Widths[9 9]/Encoding<</Differences[97/a/b]>>/CharProcs<</a 26 0 R/b 26 "
              "0 R/c 27 0 R>>/Resources<<>>>>");
  file.Stream(27, "", "9 0 d0 unshown");
  file.Stream(26, "", "9 0 d0 0 0 0 1 k 0 0 9 9 re f bar");
  std::string text;
  for (const char* level : {"1a", "2a"}) {
    text += Said("many parts", file.Table(), level);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/in-order.txt", text));
}

// Numbers that no machine holds, on both sides of all bounds.
TEST(WholeFiles, HaveNumbersWithinBounds) {
  std::string text;
  for (const std::string& number :
       {std::string(400, '9') + ".5", "-" + std::string(400, '9') + ".5",
        "0." + std::string(400, '0') + "1", "-0." + std::string(400, '0') + "1",
        "." + std::string(400, '0') + "1", "00." + std::string(400, '0') + "1",
        "1" + std::string(400, '0') + ".", std::string(400, '0') + "1.5", std::string(20, '9'),
        "-" + std::string(20, '9'), "+" + std::string(20, '9'), std::string("9999.5"),
        std::string("99999.5"), std::string("32767.4"), std::string("-32768.5"),
        std::string("+32768.5"), std::string("--5.25"), std::string("1.2.3.4")}) {
    for (const char* level : {"1b", "2b"}) {
      const std::string found = FindingsOf(ArchiveFile(level).Object(20, number).Bytes(), level);
      text += number.substr(0, 8) + " of " + std::to_string(number.size()) + ", " + level + ": " +
              (found.empty() ? "\n" : found);
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/findings/numbers.txt", text));
}

}  // namespace
}  // namespace TarnixTools::testing
