// What fonts say, and what names and maps mean, by tables that are compared whole.
#include <algorithm>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/BaseEncodings.h"
#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/CMapText.h"
#include "engines/support/fonts/CffCharset.h"
#include "engines/support/fonts/CodeMap.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontStyle.h"
#include "engines/support/fonts/GlyphNames.h"
#include "engines/support/fonts/PredefinedMaps.h"
#include "engines/support/fonts/StandardFontNames.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::fonts {
namespace {

std::string Hex(std::uint32_t value) {
  std::ostringstream text;
  text << std::hex << value;
  return text.str();
}

std::string Bytes(std::initializer_list<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value);
  }
  return bytes;
}

// As annex D.2 of the standard has them.
TEST(FontTables, OfEncodings) {
  std::ostringstream text;
  std::vector<std::string_view> names;
  for (const char* encoding : {"StandardEncoding", "WinAnsiEncoding", "MacRomanEncoding"}) {
    const auto base = BaseEncodingOf(encoding);
    ASSERT_TRUE(base);
    text << encoding << '\n';
    for (int code = 0; code < 256; ++code) {
      const std::string_view name = GlyphNameIn(*base, static_cast<std::uint8_t>(code));
      names.push_back(name);
      text << (name.empty() ? "-" : name) << (code % 8 == 7 ? '\n' : ' ');
    }
  }
  text << "codes of the Macintosh\n";
  names.insert(names.end(), {"notequal", "infinity", "Omega", "apple", "Euro", "lozenge", "Lslash",
                             "nonsense", "uni20AC", "u1F600", ".notdef"});
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  const CharactersByName characters = CharactersOfNames(names);
  for (const std::string_view name : names) {
    const auto code = MacCodeOf(name);
    text << name << ' ' << (code ? Hex(*code) : "-");
    const auto found = characters.find(std::string(name));
    if (found != characters.end()) {
      for (const char32_t character : found->second) {
        text << ' ' << Hex(character);
      }
    }
    text << '\n';
  }
  for (const char* other : {"MacExpertEncoding", "", "Standardencoding", "PDFDocEncoding"}) {
    EXPECT_FALSE(BaseEncodingOf(other)) << other;
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/encodings.txt", text.str()));
}

// Of a name there are no more than 64 letters; of the names, 4096, each once; the rest is not known.
TEST(FontTables, OfCharactersOfManyNames) {
  const std::string longest = std::string(60, 'A').insert(0, "A.b.");
  const CharactersByName few =
      CharactersOfNames({longest, longest + "A", ".notdef", "A", "B", "A", "B", "A", "", "A"});
  EXPECT_EQ(few, (CharactersByName{{longest, {U'A'}}, {"A", {U'A'}}, {"B", {U'B'}}}));
  std::vector<std::string> many;
  for (std::uint32_t code = 0; code < 4098; ++code) {
    std::string name = "uni" + Hex(0x5000 + code);
    std::transform(name.begin() + 3, name.end(), name.begin() + 3, [](char letter) {
      return letter >= 'a' ? static_cast<char>(letter - 32) : letter;
    });
    many.push_back(std::move(name));
  }
  std::vector<std::string_view> names(many.rbegin(), many.rend());
  names.insert(names.end(), many.begin(), many.end());
  const CharactersByName known = CharactersOfNames(names);
  EXPECT_EQ(known.size(), 4096U);
  EXPECT_TRUE(known.contains("uni5FFF"));
  EXPECT_FALSE(known.contains("uni6000"));
}

TEST(FontTables, OfNumbersInNames) {
  for (const char* prefix : {"g", "G", "gid", "GID", "glyph", "Glyph", "cid", "CID", "index", "c",
                             "C", "glyph_", "g_", ""}) {
    EXPECT_EQ(GlyphNumberIn(prefix + std::string("0")), 0U) << prefix;
    EXPECT_EQ(GlyphNumberIn(prefix + std::string("98765")), 98765U) << prefix;
  }
  for (const char* other : {"", "g", "g123456", "g1a", "x1", "Index1", "gl1", "_1", "1g", "g 1"}) {
    EXPECT_FALSE(GlyphNumberIn(other)) << other;
  }
}

TEST(FontTables, OfStyles) {
  std::ostringstream text;
  for (const char* words : {"",
                            "Regular",
                            "Roman",
                            "Normal",
                            "Upright",
                            "Plain",
                            "Book",
                            "Extra Light",
                            "UltraLight",
                            "Semi-Light",
                            "demilight",
                            "SemiBold",
                            "Demi Bold",
                            "ExtraBold",
                            "Ultra-Bold",
                            "ExtraBlack",
                            "UltraBlack",
                            "Thin",
                            "LIGHT",
                            "Medium",
                            "Bold",
                            "Demi",
                            "Black",
                            "Heavy",
                            "Italic",
                            "Oblique",
                            "Ultra Condensed",
                            "ExtraCondensed",
                            "SemiCondensed",
                            "Condensed",
                            "Narrow",
                            "SemiExpanded",
                            "ExtraExpanded",
                            "UltraExpanded",
                            "Expanded",
                            "Bold Condensed Italic",
                            "Regular Italic",
                            "Bold Caption",
                            "Zany",
                            "Condensed Narrow",
                            "Z-z@["}) {
    const FontStyle style = ParseFontStyle(words);
    text << words << ": " << style.weight << ' ' << style.slant << ' ' << style.width
         << (style.is_known ? "" : ", not all is known") << '\n';
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/styles.txt", text.str()));
}

TEST(FontTables, OfDistancesBetweenStyles) {
  const FontStyle regular;
  EXPECT_TRUE(IsOfStyle(regular, {.weight = 85}));
  EXPECT_FALSE(IsOfStyle(regular, {.weight = 86}));
  EXPECT_TRUE(IsOfStyle(regular, {.weight = 75}));
  EXPECT_FALSE(IsOfStyle(regular, {.weight = 74}));
  EXPECT_TRUE(IsOfStyle(regular, {.width = 105}));
  EXPECT_FALSE(IsOfStyle(regular, {.width = 106}));
  EXPECT_FALSE(IsOfStyle(regular, {.width = 94}));
  EXPECT_FALSE(IsOfStyle(regular, {.slant = 1}));
  EXPECT_TRUE(IsOfStyle({.slant = 110}, {.slant = 100}));
  EXPECT_FALSE(IsOfStyle({.is_known = false}, regular));
  EXPECT_TRUE(IsOfStyle(regular, {.is_known = false}));
  EXPECT_EQ(StyleDistance(regular, {.weight = 200}), 240);
  EXPECT_EQ(StyleDistance({.weight = 200}, regular), 240);
  EXPECT_EQ(StyleDistance(regular, {.slant = 100, .width = 75}), 1'025'000);
  EXPECT_EQ(StyleDistance({.slant = 110}, {.weight = 81, .slant = 100, .width = 101}), 1012);
}

TEST(FontTables, OfStandardFonts) {
  for (const char* name :
       {"Courier", "Courier-Bold", "Courier-Oblique", "Courier-BoldOblique", "Helvetica",
        "Helvetica-Bold", "Helvetica-Oblique", "Helvetica-BoldOblique", "Times-Roman", "Times-Bold",
        "Times-Italic", "Times-BoldItalic", "Symbol", "ZapfDingbats"}) {
    EXPECT_TRUE(IsStandardFontName(name)) << name;
  }
  for (const char* name :
       {"", "Arial", "Times", "courier", "Helvetica-BoldItalic", "ABCDEF+Symbol"}) {
    EXPECT_FALSE(IsStandardFontName(name)) << name;
  }
}

// As table 116 of the standard has them.
TEST(FontTables, OfPredefinedMaps) {
  std::ostringstream text;
  for (const char* name : {"GB-EUC-",
                           "GBpc-EUC-",
                           "GBK-EUC-",
                           "GBKp-EUC-",
                           "GBK2K-",
                           "UniGB-UCS2-",
                           "UniGB-UTF16-",
                           "B5pc-",
                           "HKscs-B5-",
                           "ETen-B5-",
                           "ETenms-B5-",
                           "CNS-EUC-",
                           "UniCNS-UCS2-",
                           "UniCNS-UTF16-",
                           "83pv-RKSJ-",
                           "90ms-RKSJ-",
                           "90msp-RKSJ-",
                           "90pv-RKSJ-",
                           "Add-RKSJ-",
                           "EUC-",
                           "Ext-RKSJ-",
                           "",
                           "UniJIS-UCS2-",
                           "UniJIS-UCS2-HW-",
                           "UniJIS-UTF16-",
                           "KSC-EUC-",
                           "KSCms-UHC-",
                           "KSCms-UHC-HW-",
                           "KSCpc-EUC-",
                           "UniKS-UCS2-",
                           "UniKS-UTF16-",
                           "Identity-",
                           "Own-",
                           "H-",
                           "V-"}) {
    for (const char* direction : {"H", "V", "X"}) {
      const auto map = PredefinedMapOf(std::string(name) + direction);
      text << name << direction << ' ';
      if (map) {
        text << map->ordering << ' ' << map->supplement;
      } else {
        text << "none";
      }
      text << (IsIdentityMap(std::string(name) + direction) ? " identity\n" : "\n");
    }
  }
  EXPECT_FALSE(PredefinedMapOf("GB-EUC"));
  for (const char* ordering : {"GB1", "CNS1", "Japan1", "Korea1"}) {
    EXPECT_TRUE(IsKnownCollection("Adobe", ordering));
    EXPECT_FALSE(IsKnownCollection("Own", ordering));
  }
  EXPECT_FALSE(IsKnownCollection("Adobe", "Identity"));
  EXPECT_TRUE(testing::IsAsExpected("fonts/predefined_maps.txt", text.str()));
}

std::string MapText(const std::optional<CodeMap>& map) {
  if (!map) {
    return "unsure\n";
  }
  std::ostringstream text;
  text << map->code_bytes() << " bytes, " << map->range_count() << " ranges, codes";
  for (const std::string& bytes :
       {std::string("A"), std::string("\x00\x10", 2), std::string("\x81\x40\x7F", 3),
        std::string("\x01\x02\x03\x04", 4), std::string("\xFF\xFF", 2), std::string()}) {
    std::vector<std::uint32_t> codes;
    const bool is_sure = map->Split(bytes, codes);
    text << " (";
    for (const std::uint32_t code : codes) {
      text << Hex(code) << ' ';
    }
    text << (is_sure ? ")" : "?)");
  }
  text << ", cids";
  for (const std::uint32_t code :
       {0U, 1U, 0xFU, 0x10U, 0x11U, 0x1FU, 0x20U, 0x41U, 0x8140U, 0xFFFFU, 0x1020304U}) {
    text << ' ' << map->CidOf(code);
  }
  return text.str() + "\n";
}

TEST(FontTables, OfCodeMaps) {
  const std::string two = "1 begincodespacerange <0000> <FFFF> endcodespacerange ";
  const auto base = std::make_shared<const CodeMap>(
      CodeMap::Read(two + "1 begincidrange <0010> <001F> 100 endcidrange").value());
  const auto find = [&](std::string_view name) { return name == "Base H" ? base : nullptr; };
  std::string text;
  for (const std::string& cmap :
       {std::string(),
        two,
        std::string("1 begincodespacerange <00> <7F> endcodespacerange"),
        std::string("1 begincodespacerange <01000000> <01FFFFFF> endcodespacerange 1 begincidchar "
                    "<01020304> 9 endcidchar"),
        std::string("1 begincodespacerange <0000000000> <FFFFFFFFFF> endcodespacerange"),
        std::string("1 begincodespacerange <> <> endcodespacerange"),
        std::string("1 begincodespacerange <00> endcodespacerange"),
        std::string("1 begincodespacerange endcodespacerange"),
        std::string("1 begincodespacerange <00> <FFFF> endcodespacerange"),
        std::string("1 begincodespacerange 0 <FF> endcodespacerange"),
        std::string("2 begincodespacerange <0010> <0F7F> <8140> <9FFC> endcodespacerange"),
        std::string(
            "2 begincodespacerange <00> <80> <8140> <9FFC> endcodespacerange 1 begincidrange "
            "<41> <42> 5 endcidrange 1 begincidchar <8140> 77 endcidchar"),
        two + "2 begincidrange <0010> <001F> 100 <0000> <0001> 7 endcidrange",
        two + "2 begincidrange <0010> <001F> 100 <001F> <0020> 7 endcidrange",
        two + "2 begincidrange <0010> <001F> 100 <0020> <0020> 7 endcidrange",
        two + "1 begincidrange <0010> <0010> 65535 endcidrange",
        two + "1 begincidrange <0010> <001F> 65530 endcidrange",
        two + "1 begincidrange <0010> <001F> 65536 endcidrange",
        two + "1 begincidrange <0010> <001F> -1 endcidrange",
        two + "1 begincidrange <001F> <0010> 1 endcidrange",
        two + "1 begincidrange <0010> 1 <001F> endcidrange",
        two + "1 begincidrange <10> <1F> 1 endcidrange",
        two + "1 begincidchar (\\000\\020) 4 endcidchar",
        two + "1 begincidchar <0010> endcidchar",
        two + "1 begincidchar 4 <0010> endcidchar",
        two + "7 8 9 def 1 begincidchar <0010> 4 endcidchar",
        two + "/Base#20H usecmap 1 begincidchar <0011> 4 endcidchar",
        std::string("/Base#20H usecmap"),
        std::string("/Other usecmap"),
        std::string("/Base#20H usecmap /Base#20H usecmap")}) {
    text += cmap + "\n" + MapText(CodeMap::Read(cmap)) + MapText(CodeMap::ReadAny(cmap, find));
  }
  text +=
      MapText(CodeMap::OneByte()) + MapText(CodeMap::Identity()) + MapText(CodeMap::SameAs(base));
  EXPECT_TRUE(testing::IsAsExpected("fonts/code_maps.txt", text));
}

TEST(FontTables, OfMapFiles) {
  std::ostringstream text;
  for (const char* cmap : {"",
                           "/WMode 1 def",
                           "/WMode 0 def /WMode 1",
                           "/Registry(A)def /Ordering<42>def /Supplement 3 def",
                           "<</Registry(A)/Ordering(B)/Supplement -1>>def",
                           "/Registry 1 def /Ordering/B def /Supplement(3)def",
                           "/Base#20H usecmap",
                           "(Base) usecmap",
                           "usecmap",
                           "1 begincidrange <0010> <001F> 100 endcidrange",
                           "1 begincidrange <001F> <0010> 100 endcidrange",
                           "1 begincidrange <0010> <001F> -100 endcidrange",
                           "2 begincidchar <01> 4 <02> 9 <03> endcidchar",
                           "1 beginbfchar <41> <0042> endbfchar",
                           "2 beginbfchar <41> <0042> endbfchar",
                           "beginbfchar <41> <0042> endbfchar",
                           "1 beginbfchar <41> <42> endbfchar",
                           "1 beginbfchar <41> <004200430044> endbfchar",
                           "1 beginbfchar <41> <00420043FF> endbfchar",
                           "1 beginbfchar <41> <> endbfchar",
                           "1 beginbfchar <41> /B endbfchar",
                           "1 beginbfchar <4142434445> <0042> endbfchar",
                           "2 beginbfchar <41> <0042> <41> <0043> endbfchar",
                           "1 beginbfrange <40> <42> <0061> endbfrange",
                           "1 beginbfrange <40> <42> <00610062> endbfrange",
                           "1 beginbfrange <42> <40> <0061> endbfrange",
                           "2 beginbfrange <40> <42> [<0061> <0062>] <44> <44> <0063> endbfrange",
                           "1 beginbfrange <40> <42> [<0061> <0062> endbfrange",
                           "3 beginbfrange <40> <41> <0061> endbfrange",
                           "1 beginbfrange <41> <41> endbfrange"}) {
    const CMapFile map = CMapFile::Read(cmap);
    text << cmap << "\n  mode " << map.write_mode() << ", on '" << map.used_map() << "', "
         << map.collection().registry.value_or("-") << ' '
         << map.collection().ordering.value_or("-") << ' '
         << map.collection().supplement.value_or(-9) << ", highest " << map.highest_cid()
         << (map.has_right_counts() ? "" : ", wrong counts");
    for (const std::uint32_t code : {0x3FU, 0x40U, 0x41U, 0x42U, 0x43U, 0x44U, 0x41424344U}) {
      if (const auto found = map.TextOf(code)) {
        text << ", " << Hex(code) << " is";
        for (const char16_t unit : *found) {
          text << ' ' << Hex(unit);
        }
      }
    }
    text << '\n';
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/map_files.txt", text.str()));
}

// Of 0, 1, 100 and 101 rows: a block has a hundred.
TEST(FontTables, OfMapsThatAreWritten) {
  std::string text = CodeMapEntries(false) + "\n" + CodeMapEntries(true) + "\n";
  for (const std::uint32_t count : {0U, 1U, 101U}) {
    std::map<std::uint32_t, std::uint32_t> cids;
    std::map<std::uint32_t, std::u32string> texts;
    for (std::uint32_t i = 0; i < count; ++i) {
      cids[2 * i] = 3 * i;
      texts[2 * i] = i == 0 ? U"A\U0001F600" : std::u32string(1, 0x30 + i);
    }
    text += CodeMapText(cids, count == 1 ? 1 : 2, count == 1) +
            ToUnicodeText(texts, count == 1 ? 1 : 2);
  }
  const std::string hundred = ToUnicodeText(
      [] {
        std::map<std::uint32_t, std::u32string> texts;
        for (std::uint32_t i = 0; i < 100; ++i) {
          texts[i] = U"x";
        }
        return texts;
      }(),
      2);
  EXPECT_NE(hundred.find("100 beginbfchar"), std::string::npos);
  EXPECT_EQ(hundred.find("beginbfchar"), hundred.rfind("beginbfchar"));
  EXPECT_EQ(
      ToUnicodeText({{1, std::u32string(257, U'a')}}, 1).find("<01><" + std::string(1024, '0')),
      std::string::npos);
  EXPECT_EQ(ToUnicodeText({{1, std::u32string(300, U'a')}}, 1).size(),
            ToUnicodeText({{1, std::u32string(256, U'a')}}, 1).size());
  EXPECT_EQ(ToUnicodeText({{1, std::u32string(256, U'a')}}, 1).size(),
            ToUnicodeText({{1, std::u32string(255, U'a')}}, 1).size() + 4);
  EXPECT_TRUE(testing::IsAsExpected("fonts/written_maps.txt", text));
}

// A bare CFF font: header, names, a top dictionary, then what comes behind it.
std::string Cff(const std::string& top, const std::string& rest, int offset_size = 1,
                const std::string& names = Bytes({0, 1, 1, 1, 2}) + "x", int header = 4) {
  std::string font =
      Bytes({1, 0, header, 1}) + std::string(static_cast<std::size_t>(header - 4), '\0');
  font += names + Bytes({0, 1, offset_size});
  for (const std::size_t offset : {std::size_t{1}, 1 + top.size()}) {
    for (int i = offset_size - 1; i >= 0; --i) {
      font += static_cast<char>(i > 3 ? 0 : offset >> (8 * i));
    }
  }
  font += top;
  font.resize(64, '\0');
  return font + rest;
}

std::string CharsetText(const std::string& font, std::uint32_t glyphs) {
  const CffCharset charset = ReadCffCharset(font, glyphs);
  std::ostringstream text;
  text << (charset.is_cid_keyed ? "keyed" : "plain") << ", " << CffGlyphCount(font) << " glyphs:";
  for (const std::uint16_t cid : charset.cids) {
    text << ' ' << cid;
  }
  return text.str() + "\n";
}

TEST(FontTables, OfCharsets) {
  const std::string ros = Bytes({139, 139, 139, 12, 30});
  // 64, as each kind of operand has it, then that of the charset and of the glyphs.
  const std::string data = Bytes({0, 0, 7, 1, 44, 0, 9});
  std::string text;
  for (const std::string& operand :
       {Bytes({139 + 64}), Bytes({28, 0, 64}), Bytes({29, 0, 0, 0, 64}), Bytes({247, 0}),
        Bytes({250, 255}), Bytes({251, 0}), Bytes({254, 255}), Bytes({30, 0x64, 0xFF}), Bytes({32}),
        Bytes({246}), Bytes({30, 0x6F, 139 + 64}), Bytes({30, 0xF6, 139 + 64}), Bytes({255}),
        Bytes({28, 0xFF, 0xC0}), std::string(), Bytes({30, 0xBF}), Bytes({30, 0x12, 0xBF}),
        Bytes({140}), Bytes({139})}) {
    text += CharsetText(Cff(ros + operand + Bytes({15}), data), 3);
    text += CharsetText(Cff(ros + operand + Bytes({17}), data + std::string(1200, '\3')), 3);
  }
  const std::string at_64 = Bytes({139 + 64, 15});
  for (const std::string& top : {ros + at_64, at_64, Bytes({139, 12, 7}) + at_64, at_64 + ros,
                                 Bytes({139, 139, 139, 12, 31}) + at_64, ros + Bytes({139 + 2, 15}),
                                 ros + Bytes({139 + 3, 15}), ros + Bytes({139 + 64, 16})}) {
    text += CharsetText(Cff(top, data), 4);
  }
  for (const int offset_size : {0, 1, 2, 3, 4, 5}) {
    text += CharsetText(Cff(ros + at_64, data, offset_size), 4);
  }
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 0})), 4);
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 2, 1, 1, 2, 4}) + "xyz"), 4);
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 1, 1, 2, 1}) + "xyz"), 4);
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 1, 1, 0, 1}) + "xyz"), 4);
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 1, 1, 1, 200}) + "xyz"), 4);
  text += CharsetText(Cff(ros + at_64, data, 1, Bytes({0, 1, 1, 1, 2}) + "x", 6), 4);
  for (const std::string& charset :
       {Bytes({0, 0, 7, 1, 44, 0, 9}), Bytes({1, 0, 7, 1, 0, 50, 0, 1, 0, 9}),
        Bytes({2, 0, 7, 0, 1, 0, 50, 0, 0, 0, 60, 1, 0}), Bytes({3, 0, 7}), Bytes({0, 0}),
        Bytes({1, 0, 7}), Bytes({2, 0, 7, 0}), Bytes({1, 255, 254, 5})}) {
    for (const std::uint32_t glyphs : {0U, 1U, 2U, 4U, 5U}) {
      text += CharsetText(Cff(ros + at_64, charset), glyphs);
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/charsets.txt", text));
}

std::string DescriptorText(const FontDescriptor& descriptor) {
  std::ostringstream text;
  text << "descriptor " << descriptor.number << ", entry " << static_cast<int>(descriptor.entry)
       << ' ' << descriptor.program << ' ' << descriptor.program_subtype
       << (descriptor.is_symbolic ? " symbolic" : "") << (descriptor.is_fixed_pitch ? " fixed" : "")
       << (descriptor.is_serif ? " serif" : "") << (descriptor.is_italic ? " italic" : "")
       << (descriptor.is_bold ? " bold" : "") << (descriptor.lists_glyphs ? " lists" : "")
       << " missing " << descriptor.missing_width.value_or(-1);
  return text.str();
}

std::string FontText(const DocumentFont& font) {
  std::ostringstream text;
  text << "kind " << static_cast<int>(font.kind()) << ", number " << font.number() << ", name '"
       << font.name() << "'" << (font.is_composite() ? " composite" : "")
       << (font.has_to_unicode() ? " unicode" : "") << (font.has_unicode_codes() ? " codes" : "")
       << (font.is_vertical() ? " vertical" : "") << (font.has_encoding() ? " encoding" : "")
       << (font.is_encoding_known() ? "" : " unknown") << (font.has_base_encoding() ? " base" : "")
       << (font.has_widths() ? " widths" : "") << ", ordering '" << font.ordering() << "', "
       << DescriptorText(font.descriptor()) << "\n  codes "
       << (font.codes() == nullptr ? 0 : font.codes()->code_bytes()) << ", names";
  for (const int code : {0, 39, 65, 66, 67, 128, 255}) {
    const auto byte = static_cast<std::uint8_t>(code);
    text << ' ' << font.GlyphNameOf(byte) << '/' << font.StandardNameOf(byte) << '/'
         << font.WidthOf(byte).value_or(-1);
  }
  text << ", cids";
  for (const std::uint32_t code : {0U, 1U, 2U, 3U, 5U, 9U, 10U, 11U, 300U}) {
    text << ' ' << font.CidOf(code) << '/' << font.WidthOfCid(code) << '/'
         << font.MappedGlyphOf(code);
  }
  return text.str() + "\n";
}

TEST(FontTables, OfDocumentsFonts) {
  std::string text;
  for (const std::string& entries : {
           std::string("/Subtype/Type1/BaseFont/A#20B"),
           std::string("/Subtype/MMType1/Encoding/WinAnsiEncoding/ToUnicode 20 0 R"),
           std::string("/Subtype/TrueType/Encoding/MacRomanEncoding/FontDescriptor 11 0 R"),
           std::string("/Subtype/TrueType/FontDescriptor<</Flags 32>>"),
           std::string("/Subtype/TrueType/FontDescriptor<</Flags 4>>"),
           std::string("/Subtype/TrueType/FontDescriptor<</Flags 36/CharSet(/A)>>"),
           std::string("/Subtype/Type3/Encoding<</Differences[65/x/y 128/z 300/w]>>"),
           std::string("/Subtype/Type1/Encoding/MacExpertEncoding"),
           std::string(
               "/Subtype/Type1/Encoding<</BaseEncoding/StandardEncoding/Differences[39/q]>>"),
           std::string("/Subtype/Odd/Encoding/WinAnsiEncoding"),
           std::string("/Subtype/Type1/FirstChar 65/LastChar 67/Widths[1 2.5(x)4]"),
           std::string("/Subtype/Type1/FirstChar 255/Widths[1 2]"),
           std::string("/Subtype/Type1/FirstChar 256/Widths[1 2]"),
           std::string("/Subtype/Type1/FirstChar -1/Widths[1 2]"),
           std::string("/Subtype/Type1/Widths[1 2]"),
           std::string("/Subtype/Type0/Encoding/Identity-H/DescendantFonts[10 0 R]"),
           std::string("/Subtype/Type0/Encoding/Identity-V/DescendantFonts[12 0 R]"),
           std::string("/Subtype/Type0/Encoding/UniJIS-UCS2-V/DescendantFonts[10 0 R]"),
           std::string("/Subtype/Type0/Encoding 21 0 R/DescendantFonts[10 0 R]"),
           std::string("/Subtype/Type0/Encoding 22 0 R/DescendantFonts[10 0 R]"),
           std::string("/Subtype/Type0/Encoding/Identity-H/DescendantFonts[13 0 R]"),
           std::string("/Subtype/Type0/Encoding/Identity-H/DescendantFonts[14 0 R]"),
           std::string("/Subtype/Type0/Encoding/Identity-H/DescendantFonts[]"),
       }) {
    testing::RawPdf file;
    const std::string collection = "/CIDSystemInfo<</Registry(Adobe)/Ordering(Japan1)>>";
    file.Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>")
        .Object(5, "<<" + entries + ">>")
        .Object(10, "<</Subtype/CIDFontType2" + collection +
                        "/DW 700/W[1[100 200]5 9 300 11 10 4 300[1]]/CIDToGIDMap 23 0 R"
                        "/FontDescriptor 11 0 R>>")
        .Object(
            11,
            "<</Flags 262243/FontFile2 24 0 R/FontFile3 25 0 R/MissingWidth 123/CIDSet 24 0 R>>")
        .Object(12,
                "<</Subtype/CIDFontType0/CIDSystemInfo<</Registry(Own)/Ordering(Japan1)>>"
                "/W[-1[5]2 1 6 3 3]/CIDToGIDMap/Identity>>")
        .Object(13, "<</Subtype/Type1" + collection + ">>")
        .Object(14,
                "<</Subtype/CIDFontType2/CIDToGIDMap(none)/FontDescriptor<</FontFile 99 0 R>>>>")
        .Stream(20, "", "")
        .Stream(21, "",
                "/WMode 1 def 1 begincodespacerange <00> <FF> endcodespacerange 1 begincidchar "
                "<01> 9 endcidchar")
        .Stream(22, "/UseCMap/Identity-H", "1 begincodespacerange <00> <FF> endcodespacerange")
        .Stream(23, "", Bytes({0, 0, 0, 7, 1, 2, 0}))
        .Stream(24, "", "")
        .Stream(25, "/Subtype/CIDFontType0C", "");
    const std::string bytes = file.Table();
    const auto document = testing::OpenBytes(bytes);
    text += entries + "\n" + FontText({*document, pdf::Object::Ref({5, 0})});
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/document_fonts.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
