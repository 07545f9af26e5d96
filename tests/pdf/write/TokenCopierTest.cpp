#include <gtest/gtest.h>

#include "pdf/Limits.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TokenCopier.h"

namespace TarnixTools::pdf {
namespace {

// Object N becomes 100 + N; object 9 is not copied, object 8 vanishes.
class Shifted : public ReferenceMap {
 public:
  std::uint32_t Map(std::uint32_t number) override {
    return number == 9 ? 0 : number == 8 ? kLeftOut : number + 100;
  }
};

struct Copied {
  TokenCopier::Status status;
  std::string text;
};

Copied Copy(std::string_view text) {
  Shifted map;
  TokenCopier copier(map);
  Lexer lexer(text, true);
  Copied copied;
  copied.status = copier.Copy(lexer, nullptr, copied.text);
  return copied;
}

TEST(TokenCopier, ChangesReferencesOnly) {
  EXPECT_EQ(
      Copy("<< /A [ 1 2 3 0 R 4 5 ] /B 7 0 R /C 12 /D (1 0 R) /E <1F> % note\n /F /G#20H /I -.5 >>")
          .text,
      "<</A[1 2 103 0 R 4 5]/B 107 0 R/C 12/D(1 0 R)/E<1F>/F/G#20H/I -.5>>");
}

TEST(TokenCopier, KeepsEmptyNamesEmpty) {
  EXPECT_EQ(Copy("<</ 6 0 R/A/ /B[/ 1/ true/ null]>>").text, "<</ 106 0 R/A//B[/ 1/ true/ null]>>");
  std::string text = "[";
  AppendName(text, "");
  AppendInteger(text, 7);
  EXPECT_EQ(text, "[/ 7");
}

TEST(TokenCopier, WritesNullForWhatIsNotCopied) {
  EXPECT_EQ(Copy("<</A 9 0 R/B[9 0 R 9 0 R]>>").text, "<</A null/B[null null]>>");
}

TEST(TokenCopier, LeavesOutEntriesAndItems) {
  EXPECT_EQ(Copy("<</A 8 0 R/B[8 0 R 1 8 0 R 2 8 0 R]/C 3 /D<</E 8 0 R>>/F 8 0 R>>").text,
            "<</B[1 2]/C 3/D<<>>>>");
  EXPECT_EQ(Copy("[8 0 R 8 0 R 4 5]").text, "[4 5]");
  EXPECT_EQ(Copy("<</A 1 8 0 R>>").status, TokenCopier::Status::kIrregular);
}

TEST(TokenCopier, KeepsStructureKeysWhenAsked) {
  Shifted map;
  TokenCopier copier(map);
  copier.set_keeps_structure_keys(true);
  std::string out;
  Lexer lexer("<</StructParent -1/StructParents 5 0 R>>", true);
  EXPECT_EQ(copier.Copy(lexer, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(out, "<</StructParent -1/StructParents 105 0 R>>");
  EXPECT_FALSE(copier.TakeStructureKey());
}

TEST(TokenCopier, HoldsTheLengthBack) {
  Shifted map;
  TokenCopier copier(map);
  std::string out;
  Lexer direct("<</Length 12/Filter/FlateDecode/Type/XObject/Sub<</Length 3>>>>", true);
  EXPECT_EQ(copier.Copy(direct, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(out, "<</Filter/FlateDecode/Type/XObject/Sub<</Length 3>>>>");
  EXPECT_EQ(copier.length().IntegerOr(0), 12);
  EXPECT_TRUE(copier.has_filter());
  EXPECT_EQ(copier.type(), "XObject");
  Lexer indirect("<</Length 8 0 R /A 1>>", true);
  out.clear();
  EXPECT_EQ(copier.Copy(indirect, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(out, "<</A 1>>");
  EXPECT_EQ(copier.length().AsReference().number, 8U);
  EXPECT_FALSE(copier.has_filter());
}

TEST(TokenCopier, ShiftsKeysOfTheParentTreeOrLeavesThemOut) {
  Shifted map;
  TokenCopier copier(map);
  const std::string_view text = "<</StructParents 4/A<</StructParent 1>>/StructParent 7>>";
  std::string out;
  Lexer without(text, true);
  EXPECT_EQ(copier.Copy(without, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(out, "<</A<</StructParent 1>>>>");
  copier.set_structure_keys(100, 1000);
  out.clear();
  Lexer with(text, true);
  EXPECT_EQ(copier.Copy(with, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(out, "<</StructParents 104/A<</StructParent 1>>/StructParent 107>>");
}

TEST(TokenCopier, LeavesIrregularSyntaxToTheParser) {
  for (const char* text :
       {"<</A>>", "<</A 1]", "[1 2>>", "<<1 2>>", "[--5]", "[foo]", "<</A 1 endobj", "12", "(x)",
        "/N", "[0 0 R]", "[1 99999 R]", "<</Length(x)>>", "<</A 1 2>>", "]", ""}) {
    EXPECT_EQ(Copy(text).status, TokenCopier::Status::kIrregular) << text;
  }
  EXPECT_EQ(Copy(std::string(limits::kMaxNesting + 1, '[')).status,
            TokenCopier::Status::kIrregular);
}

TEST(TokenCopier, LeavesSignaturesOfEncryptedDocumentsToTheParser) {
  class Plain : public StringTransform {
   public:
    void Apply(std::string&) override {}
  };

  Shifted map;
  TokenCopier copier(map);
  Plain plain;
  std::string out;
  Lexer lexer("<</Contents<00>/ByteRange[0 1 2 3]>>", true);
  EXPECT_EQ(copier.Copy(lexer, &plain, out), TokenCopier::Status::kIrregular);
  EXPECT_EQ(Copy("<</Contents<00>/ByteRange[0 1 2 3]>>").status, TokenCopier::Status::kDone);
}

TEST(TokenCopier, AsksForMoreWhereverTheWindowEnds) {
  const std::string_view whole = "<</A[1 2 0 R(text)]/Length 5 0 R/B<</C/D>>/E 12>>";
  Shifted map;
  TokenCopier copier(map);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    std::string out;
    Lexer lexer(whole.substr(0, size), false);
    EXPECT_EQ(copier.Copy(lexer, nullptr, out), TokenCopier::Status::kMore) << size;
  }
}

TEST(TokenCopier, EndsRightBehindTheValue) {
  Shifted map;
  TokenCopier copier(map);
  std::string out;
  Lexer lexer("<</A 5 /B 6>>stream", true);
  EXPECT_EQ(copier.Copy(lexer, nullptr, out), TokenCopier::Status::kDone);
  EXPECT_EQ(lexer.rest(), "stream");
}

TEST(TokenCopier, LeavesOutKeysThatNoParentTreeHas) {
  const auto copied = [](int key) {
    Shifted map;
    TokenCopier copier(map);
    copier.set_structure_keys(100, 7);
    const std::string text = "<</A 1/StructParents " + std::to_string(key) + "/B 2>>";
    Lexer lexer(text, true);
    std::string out;
    EXPECT_EQ(copier.Copy(lexer, nullptr, out), TokenCopier::Status::kDone);
    return out;
  };
  EXPECT_EQ(copied(-1), "<</A 1/B 2>>");
  EXPECT_EQ(copied(0), "<</A 1/StructParents 100/B 2>>");
  EXPECT_EQ(copied(6), "<</A 1/StructParents 106/B 2>>");
  EXPECT_EQ(copied(7), "<</A 1/B 2>>");
}

}  // namespace
}  // namespace TarnixTools::pdf
