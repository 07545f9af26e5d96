#include <gtest/gtest.h>

#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/word/Numbering.h"

namespace TarnixTools::engines::office {
namespace {

ListLabel Label(ListKind kind, const std::string& text, std::int32_t value,
                std::uint32_t list = 1) {
  return {kind, text, value, 0, 0, list};
}

std::string Written(const Numbering& numbering) {
  pdf::StringSink sink;
  XmlWriter xml(sink);
  numbering.Write(xml);
  xml.Finish();
  return sink.Take();
}

TEST(Numbering, CountsItemsOfAListByOneNumber) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kDecimal, "(1)", 1), 0, {});
  const ListPlace second = numbering.Place(Label(ListKind::kDecimal, "(2)", 2), 0, {});
  EXPECT_EQ(first.number, second.number);
  EXPECT_NE(Written(numbering).find("w:val=\"(%1)\""), std::string::npos);
}

TEST(Numbering, StartsAnewWhereCountingGivesAnotherLabel) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kLowerLetter, "c)", 3), 0, {});
  const ListPlace other = numbering.Place(Label(ListKind::kLowerLetter, "f)", 6), 0, {});
  EXPECT_NE(first.number, other.number);
  EXPECT_NE(Written(numbering).find("<w:startOverride w:val=\"6\"/>"), std::string::npos);
}

TEST(Numbering, KeepsTheLevelsOfAListApart) {
  Numbering numbering;
  const ListPlace outer = numbering.Place(Label(ListKind::kDecimal, "1.", 1), 0, {});
  const ListPlace inner = numbering.Place(Label(ListKind::kLowerLetter, "a.", 1), 1, {});
  const ListPlace next = numbering.Place(Label(ListKind::kDecimal, "2.", 2), 0, {});
  const ListPlace again = numbering.Place(Label(ListKind::kLowerLetter, "a.", 1), 1, {});
  EXPECT_EQ(outer.number, inner.number);
  EXPECT_EQ(inner.level, 1u);
  EXPECT_EQ(next.number, outer.number);
  EXPECT_EQ(again.number, outer.number);
}

TEST(Numbering, DefinesAnewWhatLooksOtherwise) {
  Numbering numbering;
  const ListPlace first = numbering.Place(Label(ListKind::kBullet, "•", 0), 0, {});
  const ListPlace other = numbering.Place(Label(ListKind::kBullet, "-", 0), 0, {});
  EXPECT_NE(first.number, other.number);
  EXPECT_EQ(SchemaComplaints(Written(numbering)), "");
}

TEST(Numbering, ShowsBulletsOfSymbolFontsAsText) {
  Numbering numbering;
  numbering.Place(Label(ListKind::kBullet, "\uF0B7", 0), 0, {});
  numbering.Place(Label(ListKind::kBullet, "\uF0FC", 0, 2), 0, {});
  EXPECT_NE(Written(numbering).find("<w:lvlText w:val=\"•\"/>"), std::string::npos);
  EXPECT_NE(Written(numbering).find("<w:lvlText w:val=\"✓\"/>"), std::string::npos);
}

}  // namespace
}  // namespace TarnixTools::engines::office
