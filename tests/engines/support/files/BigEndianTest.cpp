#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines {
namespace {

using namespace std::string_view_literals;

TEST(BigEndian, HasTheHighestByteFirst) {
  EXPECT_EQ(Big16("\x01\xFE\x03"sv, 0), 0x01FEU);
  EXPECT_EQ(Big16("\x01\xFE\x03"sv, 1), 0xFE03U);
  EXPECT_EQ(Big32("\xFF\x01\x02\x03\x04"sv, 1), 0x01020304U);
  EXPECT_EQ(Big32("\xFF\x01\x02\x03\x04"sv, 0), 0xFF010203U);
}

TEST(BigEndian, IsNoughtBeyondTheEnd) {
  EXPECT_EQ(Big16("\x01"sv, 0), 0U);
  EXPECT_EQ(Big16("\x01\x02"sv, 1), 0U);
  EXPECT_EQ(Big32("\x01\x02\x03"sv, 0), 0U);
  EXPECT_EQ(Big32(""sv, std::numeric_limits<std::size_t>::max()), 0U);
}

TEST(BigEndian, IsAppendedWithTheLastBytes) {
  std::string out = "x";
  AppendBig16(out, 0x123456);
  AppendBig32(out, 0xFE);
  AppendBig(out, 0x0A0B0C, 3);
  EXPECT_EQ(out, "x\x34\x56\0\0\0\xFE\x0A\x0B\x0C"sv);
}

}  // namespace
}  // namespace TarnixTools::engines
