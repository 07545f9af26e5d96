#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/BaseEncodings.h"
#include "engines/support/fonts/GlyphNames.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::fonts {
namespace {

// The characters of codes in a row, "." for those without a name; of several that a name may stand
// for, the lowest.
std::string CharactersIn(BaseEncoding encoding, int first, int last) {
  std::string text;
  for (int code = first; code <= last; ++code) {
    const std::string name(GlyphNameIn(encoding, static_cast<std::uint8_t>(code)));
    const CharactersByName known = CharactersOfNames({name});
    if (known.empty()) {
      text += '.';
    } else {
      AppendUtf8(text, known.at(name).front());
    }
  }
  return text;
}

TEST(BaseEncodings, HaveTheCharactersOfTheirCodePages) {
  EXPECT_EQ(CharactersIn(BaseEncoding::kWinAnsi, 0x20, 0x7E),
            " !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
            "abcdefghijklmnopqrstuvwxyz{|}~");
  EXPECT_EQ(CharactersIn(BaseEncoding::kWinAnsi, 0x80, 0x9F), "€•‚ƒ„…†‡ˆ‰Š‹Œ•Ž••‘’“”•–—˜™š›œ•žŸ");
  EXPECT_EQ(CharactersIn(BaseEncoding::kWinAnsi, 0xA1, 0xFF),
            "¡¢£¤¥¦§¨©ª«¬-"
            "®¯°±²³´µ¶·¸¹º»¼½¾¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúûüýþÿ");
  EXPECT_EQ(
      CharactersIn(BaseEncoding::kMacRoman, 0x80, 0xFF),
      "ÄÅÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü†°¢£§•¶ß®©™´¨.ÆØ.±..¥µ.....ªº.æø¿¡¬.ƒ..«»… ÀÃÕŒœ–—“”‘’÷.ÿŸ⁄¤"
      "‹›ﬁﬂ‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ.ÒÚÛÙıˆ˜¯˘˙˚¸˝˛ˇ");
  EXPECT_EQ(CharactersIn(BaseEncoding::kStandard, 0xA1, 0xFB),
            "¡¢£⁄¥ƒ§¤'“«‹›ﬁﬂ.–†‡·.¶•‚„”»…‰.¿.`´ˆ˜¯˘˙¨.˚¸.˝˛ˇ—................Æ.ª....ŁØŒº.....æ...ı."
            ".łøœß");
}

TEST(BaseEncodings, AreFoundByName) {
  EXPECT_EQ(BaseEncodingOf("WinAnsiEncoding"), BaseEncoding::kWinAnsi);
  EXPECT_EQ(BaseEncodingOf("MacRomanEncoding"), BaseEncoding::kMacRoman);
  EXPECT_EQ(BaseEncodingOf("StandardEncoding"), BaseEncoding::kStandard);
  EXPECT_EQ(BaseEncodingOf("MacExpertEncoding"), std::nullopt);
}

TEST(BaseEncodings, HaveMoreNamesInMacintoshMaps) {
  EXPECT_EQ(MacCodeOf("A"), 0x41);
  EXPECT_EQ(MacCodeOf("space"), 0x20);
  EXPECT_EQ(MacCodeOf("infinity"), 176);
  EXPECT_EQ(MacCodeOf("Euro"), 219);
  EXPECT_EQ(MacCodeOf("currency"), 219);
  EXPECT_EQ(MacCodeOf("alpha"), std::nullopt);
  EXPECT_EQ(MacCodeOf(""), std::nullopt);
}

TEST(GlyphNames, TellCharacters) {
  const CharactersByName known =
      CharactersOfNames({"afii10017", "uni20AC", "u1F600", "Delta", "increment", "nonsense", ""});
  EXPECT_EQ(known.at("afii10017"), (std::vector<char32_t>{U'А'}));
  EXPECT_EQ(known.at("uni20AC"), (std::vector<char32_t>{U'€'}));
  EXPECT_EQ(known.at("u1F600"), (std::vector<char32_t>{U'😀'}));
  EXPECT_TRUE(known.contains("Delta"));
  EXPECT_TRUE(known.contains("increment"));
  EXPECT_FALSE(known.contains("nonsense"));
  EXPECT_TRUE(CharactersOfNames({}).empty());
}

TEST(GlyphNames, TellNumbersOfGlyphs) {
  EXPECT_EQ(GlyphNumberIn("g12"), 12U);
  EXPECT_EQ(GlyphNumberIn("glyph00345"), 345U);
  EXPECT_EQ(GlyphNumberIn("cid7"), 7U);
  for (const char* name : {"A", "", "g", "x12", "g12a", "g123456"}) {
    EXPECT_EQ(GlyphNumberIn(name), std::nullopt) << name;
  }
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
