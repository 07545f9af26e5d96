#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/SubsetTag.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(SubsetTag, IsSixCapitalLettersAndAPlusSign) {
  EXPECT_EQ(WithoutSubsetTag("ABCDEF+Times-Roman"), "Times-Roman");
  EXPECT_EQ(WithoutSubsetTag("ABCDEF+"), "");
  for (const char* name : {"", "Times-Roman", "ABCDE+Times", "ABCDEFG+Times", "ABCDEf+Times",
                           "ABC1EF+Times", "ABCDEF", "ABCDEF-Times", "+ABCDEF", "ABCD++Times"}) {
    EXPECT_FALSE(HasSubsetTag(name)) << name;
    EXPECT_EQ(WithoutSubsetTag(name), name);
  }
}

TEST(SubsetTag, DiffersForOtherParts) {
  SubsetTag one;
  one.Add(36);
  SubsetTag other;
  other.Add(37);
  SubsetTag again;
  again.Add(36);
  const std::string name = one.Before("Face");
  EXPECT_TRUE(HasSubsetTag(name)) << name;
  EXPECT_EQ(WithoutSubsetTag(name), "Face");
  EXPECT_EQ(again.Before("Face"), name);
  EXPECT_NE(other.Before("Face"), name);
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
