#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/PngChunks.h"

namespace TarnixTools::engines {
namespace {

TEST(PngChunks, HaveALengthATypeAndASum) {
  std::string end;
  AppendPngChunk(end, "IEND", {});
  EXPECT_EQ(end, std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
}

TEST(PngChunks, HeaderSaysSizeAndColor) {
  std::string header;
  AppendPngHeader(header, {.width = 0x01020304, .height = 1, .color_type = 6});
  EXPECT_EQ(header.substr(0, 21), std::string("\0\0\0\x0DIHDR\1\2\3\4\0\0\0\1\x08\6\0\0\0", 21));
  EXPECT_EQ(header.size(), 25U);
}

}  // namespace
}  // namespace TarnixTools::engines
