#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/CidSet.h"

namespace TarnixTools::engines::fonts {
namespace {

TEST(CidSet, HasABitForEachIdentifier) {
  CidSet set;
  EXPECT_EQ(set.bits(), "\x80");
  set.Add(1);
  set.Add(9);
  set.Add(0x10000);
  EXPECT_EQ(set.bits(), "\xC0\x40");
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
