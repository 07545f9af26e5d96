#include <gtest/gtest.h>

#include "foundation/Utf8.h"
#include "pdf/syntax/PdfDocEncoding.h"

namespace TarnixTools::pdf {
namespace {

TEST(PdfDocEncoding, HasPlacesOfItsOwn) {
  EXPECT_EQ(PdfDocCharacter('\x18'), 0x02D8U);  // breve
  EXPECT_EQ(PdfDocCharacter('\x1F'), 0x02DCU);  // small tilde
  EXPECT_EQ(PdfDocCharacter('\x80'), 0x2022U);  // bullet
  EXPECT_EQ(PdfDocCharacter('\x95'), 0x0141U);  // L with stroke
  EXPECT_EQ(PdfDocCharacter('\xA0'), 0x20ACU);  // euro
  EXPECT_EQ(PdfDocCharacter('\xE9'), 0xE9U);
  EXPECT_EQ(PdfDocCharacter('\x9F'), kReplacementCharacter);
}

TEST(PdfDocEncoding, HasTheCharactersOfTheStandard) {
  // Annex D.3: from 0x18 and from 0x80 on, and Latin-1 for the rest.
  const std::u32string accents = U"˘ˇˆ˙˝˛˚˜";
  const std::u32string upper = U"•†‡…—–ƒ⁄‹›−‰„“”‘’‚™ﬁﬂŁŒŠŸŽıłœšž\uFFFD€";
  for (unsigned value = 0; value < 256; ++value) {
    const char32_t expected = value >= 0x18 && value < 0x20    ? accents[value - 0x18]
                              : value >= 0x80 && value <= 0xA0 ? upper[value - 0x80]
                                                               : value;
    EXPECT_EQ(PdfDocCharacter(static_cast<char>(value)), expected) << value;
  }
}

TEST(PdfDocEncoding, GivesBackEveryByteThatItDefines) {
  int defined = 0;
  for (int value = 0; value < 256; ++value) {
    const char byte = static_cast<char>(value);
    const std::optional<char> back = PdfDocByte(PdfDocCharacter(byte));
    if (back) {
      EXPECT_EQ(*back, byte) << value;
      ++defined;
    }
  }
  // Not 21 of the control characters, 0x7F, 0x9F and 0xAD.
  EXPECT_EQ(defined, 256 - 24);
}

TEST(PdfDocEncoding, LacksCharacters) {
  for (const char32_t character :
       {U'\0', U'\x18', U'\x7F', U'\x80', U'\xA0', U'\xAD', U'\x65E5', U'\xFFFD', U'\x1F600'}) {
    EXPECT_EQ(PdfDocByte(character), std::nullopt) << static_cast<unsigned>(character);
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
