#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "pdf/file/ByteSource.h"
#include "pdf/tree/VisibleLayers.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using testing::RawPdf;

// Objects 4 and 5 are layers; 4 is seen, 5 is not. Object 6 is a visibility expression.
class VisibleLayersTest : public ::testing::Test {
 protected:
  // Whether what belongs to object 7 is seen, which has this body.
  bool IsSeen(const std::string& body, const std::string& configuration = "/OFF[5 0 R]") {
    RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/OCProperties<</D<<" + configuration + ">>>>>>")
        .Object(2, "<</Type/Pages/Count 0/Kids[]>>")
        .Object(4, "<</Type/OCG/Name(on)>>")
        .Object(5, "<</Type/OCG/Name(off)>>")
        .Object(6, "[/Not 5 0 R]")
        .Object(7, body)
        .Object(8, "[/And 8 0 R]");
    const std::string bytes = file.Table();
    const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
    return VisibleLayers(*document).IsSeen(Object::Ref({.number = 7, .generation = 0}));
  }

  bool IsMemberSeen(const std::string& entries) { return IsSeen("<</Type/OCMD" + entries + ">>"); }

  bool IsExpressionSeen(const std::string& expression) {
    return IsMemberSeen("/OCGs 4 0 R/VE" + expression);
  }
};

TEST_F(VisibleLayersTest, GroupsByTheDefaultConfiguration) {
  EXPECT_TRUE(IsSeen("<</Type/OCG>>", ""));
  EXPECT_FALSE(IsSeen("<</Type/OCG>>", "/OFF[7 0 R]"));
  EXPECT_FALSE(IsSeen("<</Type/OCG>>", "/BaseState/OFF"));
  EXPECT_TRUE(IsSeen("<</Type/OCG>>", "/BaseState/OFF/ON[7 0 R]"));
}

TEST_F(VisibleLayersTest, WithoutLayersEverythingIsSeen) {
  const std::string bytes = RawPdf().Pages(1).Table();
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const VisibleLayers layers(*document);
  EXPECT_TRUE(layers.IsSeen(Object::Ref({.number = 3, .generation = 0})));
  EXPECT_TRUE(layers.IsSeen({}));
}

TEST_F(VisibleLayersTest, MembersByTheirPolicy) {
  EXPECT_TRUE(IsMemberSeen("/OCGs 4 0 R"));
  EXPECT_FALSE(IsMemberSeen("/OCGs 5 0 R"));
  EXPECT_TRUE(IsMemberSeen("/OCGs[]"));
  EXPECT_TRUE(IsMemberSeen("/OCGs[4 0 R 5 0 R]"));
  EXPECT_TRUE(IsMemberSeen("/OCGs[4 0 R 5 0 R]/P/AnyOn"));
  EXPECT_FALSE(IsMemberSeen("/OCGs[4 0 R 5 0 R]/P/AllOn"));
  EXPECT_TRUE(IsMemberSeen("/OCGs[4 0 R 5 0 R]/P/AnyOff"));
  EXPECT_FALSE(IsMemberSeen("/OCGs[4 0 R 5 0 R]/P/AllOff"));
  EXPECT_TRUE(IsMemberSeen("/OCGs[5 0 R]/P/AllOff"));
}

TEST_F(VisibleLayersTest, ExpressionsGoBeforeThePolicy) {
  EXPECT_FALSE(IsExpressionSeen("[/And 4 0 R 5 0 R]"));
  EXPECT_TRUE(IsExpressionSeen("[/And 4 0 R 4 0 R]"));
  EXPECT_TRUE(IsExpressionSeen("[/Or 5 0 R 4 0 R]"));
  EXPECT_FALSE(IsExpressionSeen("[/Or 5 0 R 5 0 R]"));
  EXPECT_FALSE(IsExpressionSeen("[/Not 4 0 R]"));
  EXPECT_TRUE(IsExpressionSeen("[/Not 5 0 R]"));
  EXPECT_TRUE(IsExpressionSeen(" 6 0 R"));
}

TEST_F(VisibleLayersTest, ExpressionsWithinEachOther) {
  EXPECT_TRUE(IsExpressionSeen("[/And[/Or 5 0 R 4 0 R][/Not[/And 4 0 R 5 0 R]] 6 0 R]"));
  EXPECT_FALSE(IsExpressionSeen("[/And[/Or 5 0 R 4 0 R][/Not[/And 4 0 R 4 0 R]]]"));
}

// Then the policy counts, by which the first layer makes it seen.
TEST_F(VisibleLayersTest, ExpressionsThatCannotBeWorkedOut) {
  for (const char* const expression :
       {"[]", "[/And]", "[/Xor 5 0 R]", "[/And 4 0 R(x)]", "[/Not null]", " 8 0 R", "/And"}) {
    EXPECT_TRUE(IsExpressionSeen(expression)) << expression;
  }
}

TEST_F(VisibleLayersTest, ExpressionsOfAnySizeComeToAnEnd) {
  std::string deep = "5 0 R";
  std::string wide;
  for (int i = 0; i < 200; ++i) {
    deep.insert(0, "[/And ").append("]");
  }
  for (int i = 0; i < 20'000; ++i) {
    wide += "5 0 R ";
  }
  EXPECT_TRUE(IsExpressionSeen(deep));
  EXPECT_TRUE(IsExpressionSeen("[/Or " + wide + "]"));
}

}  // namespace
}  // namespace TarnixTools::pdf
