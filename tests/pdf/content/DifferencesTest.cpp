#include <string>

#include <gtest/gtest.h>

#include "pdf/content/Differences.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::pdf {
namespace {

// "CODE=NAME " for each code that the encoding names.
std::string NamesOf(const std::string& encoding) {
  const std::string bytes = testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R/Own 3 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[]/Count 0>>")
                                .Object(3, encoding)
                                .Object(4, "/indirect")
                                .Table();
  const auto document = testing::OpenBytes(bytes);
  Arena arena;
  const auto names = ReadDifferences(*document, document->Load({3, 0}, arena), arena);
  std::string text;
  for (std::size_t code = 0; code < names.size(); ++code) {
    if (!names[code].empty()) {
      text += std::to_string(code) + "=" + std::string(names[code]) + " ";
    }
  }
  return text;
}

TEST(Differences, CountOnFromACode) {
  EXPECT_EQ(NamesOf("<</Differences[/zero 65/A/B 200/x 4 0 R]>>"),
            "0=zero 65=A 66=B 200=x 201=indirect ");
}

TEST(Differences, OutsideOfBytesDoNotCount) {
  EXPECT_EQ(NamesOf("<</Differences[255/last/over -3/under 9999999999/far (x) 1/one]>>"),
            "1=one 255=last ");
}

TEST(Differences, OfWhatIsNoEncodingAreNone) {
  EXPECT_EQ(NamesOf("/WinAnsiEncoding"), "");
  EXPECT_EQ(NamesOf("<</Differences 5>>"), "");
}

}  // namespace
}  // namespace TarnixTools::pdf
