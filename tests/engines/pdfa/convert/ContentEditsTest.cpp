#include <gtest/gtest.h>

#include "engines/pdfa/convert/contents/ContentEdits.h"

namespace TarnixTools::engines::pdfa {
namespace {

TEST(ContentEdits, GoByPlacesAsTheyWere) {
  ContentEdits edits;
  edits.Replace(4, 6, "XYZ");
  edits.Insert(2, "-");
  edits.Insert(2, "+");
  EXPECT_EQ(edits.AppliedTo("01234567"), "01-+23XYZ67");
}

TEST(ContentEdits, PutInBeforeWhatIsReplaced) {
  ContentEdits edits;
  edits.Replace(2, 4, "new");
  edits.Insert(2, "<");
  edits.Insert(4, ">");
  EXPECT_EQ(edits.AppliedTo("01234"), "01<new>4");
}

TEST(ContentEdits, StayWithinTheContent) {
  ContentEdits edits;
  edits.Replace(1, 3, "a");
  edits.Replace(2, 100, "b");
  edits.Insert(200, "c");
  EXPECT_EQ(edits.AppliedTo("0123"), "0abc");
}

TEST(ContentEdits, BringNoTextIntoWhatGoes) {
  ContentEdits edits;
  edits.Replace(1, 5, "a");
  edits.Replace(2, 4, "b");
  edits.Insert(3, "+");
  EXPECT_EQ(edits.AppliedTo("0123456"), "0a+56");
}

TEST(ContentEdits, BringNoTextIntoTheEndOfWhatGoes) {
  ContentEdits edits;
  edits.Replace(1, 5, "a");
  edits.Replace(2, 5, "b");
  edits.Replace(4, 6, "c");
  EXPECT_EQ(edits.AppliedTo("0123456"), "0ac6");
}

TEST(ContentEdits, TakeThoseOfAnother) {
  ContentEdits other;
  other.Insert(1, "o");
  other.Append("end");
  ContentEdits edits;
  EXPECT_TRUE(edits.empty());
  edits.Insert(1, "e");
  edits.Take(other);
  EXPECT_FALSE(edits.empty());
  EXPECT_EQ(edits.AppliedTo("01"), "0eo1\nend");
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
