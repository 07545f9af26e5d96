#include <string>

#include <gtest/gtest.h>

#include "engines/support/fonts/CffCharset.h"

namespace TarnixTools::engines::fonts {
namespace {

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

// A header, the name "x", a top dictionary, and at offset 26 the charset.
std::string Font(const std::string& charset, bool is_cid_keyed = true) {
  std::string top = is_cid_keyed ? Bytes({139, 139, 139, 12, 30}) : Bytes({139, 139, 139, 12, 7});
  top += Bytes({28, 0, 26, 15});
  std::string font = Bytes({1, 0, 4, 1});
  font += Bytes({0, 1, 1, 1, 2}) + "x";
  font += Bytes({0, 1, 1, 1, 1 + static_cast<int>(top.size())}) + top;
  font.resize(26);
  return font + charset;
}

using Cids = std::vector<std::uint16_t>;

TEST(CffCharset, ReadsEveryFormat) {
  EXPECT_EQ(ReadCffCharset(Font(Bytes({0, 0, 7, 1, 0})), 3).cids, (Cids{0, 7, 256}));
  EXPECT_EQ(ReadCffCharset(Font(Bytes({1, 0, 7, 2})), 4).cids, (Cids{0, 7, 8, 9}));
  EXPECT_EQ(ReadCffCharset(Font(Bytes({2, 0, 7, 0, 1, 0, 50, 0, 0})), 4).cids, (Cids{0, 7, 8, 50}));
}

TEST(CffCharset, KnowsFontsWithoutCharacterIdentifiers) {
  const CffCharset charset = ReadCffCharset(Font(Bytes({0, 0, 7}), false), 2);
  EXPECT_FALSE(charset.is_cid_keyed);
  EXPECT_TRUE(charset.cids.empty());
}

TEST(CffCharset, LeavesOutWhatCannotBeRead) {
  EXPECT_TRUE(ReadCffCharset(Font(Bytes({0, 0, 7})), 9).cids.empty());
  EXPECT_TRUE(ReadCffCharset(Font(Bytes({9, 0, 7})), 2).cids.empty());
  const std::string font = Font(Bytes({0, 0, 7}));
  for (std::size_t size = 0; size < font.size(); ++size) {
    EXPECT_TRUE(ReadCffCharset(font.substr(0, size), 2).cids.empty()) << size;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
