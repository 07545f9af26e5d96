// Faces that are made in code, table by table: what is read of them, how they are embedded, and which
// of their glyphs codes have.
#include <algorithm>
#include <map>
#include <memory>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/fonts/CompositeFont.h"
#include "engines/support/fonts/FontFace.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/MadeTables.h"
#include "engines/support/fonts/ProgramFixture.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"
#include "support/TestFont.h"

namespace TarnixTools::engines::fonts {
namespace {

using testing::BigEndian;
using testing::FontOf;
using testing::FontTables;
using testing::TablesOf;
using testing::TestFont;

// The test font with some bytes of a table replaced.
std::string With(const std::string& table, std::size_t at, const std::string& bytes,
                 const TestFont& font = {}) {
  FontTables tables = TablesOf(font.Bytes());
  tables.at(table).replace(at, bytes.size(), bytes);
  return FontOf(tables);
}

std::string Without(const std::string& table, const TestFont& font = {}) {
  FontTables tables = TablesOf(font.Bytes());
  tables.erase(table);
  return FontOf(tables);
}

// With outlines of CFF, whose glyphs are as those of the test font.
std::string CffFont(const std::string& cff) {
  FontTables tables = TablesOf(TestFont().Bytes());
  tables.erase("glyf");
  tables.erase("loca");
  tables["maxp"] = BigEndian(0x5000, 4) + BigEndian(3, 2);
  tables["CFF "] = cff;
  return FontOf(tables, "OTTO");
}

class MadeFaces : public ::testing::Test {
 protected:
  std::unique_ptr<FontFace> Load(const std::string& bytes, int index = 0) {
    const std::string name = "face" + std::to_string(count_++);  // a face goes on reading its file
    return FontFace::Load(testing::WriteBytes(directory_.Path(name), bytes), index);
  }

  std::string FaceText(const std::string& bytes, int index = 0) {
    const auto face = Load(bytes, index);
    if (face == nullptr) {
      return "none\n";
    }
    std::ostringstream text;
    const FontFace::Box box = face->bounds();
    text << face->name() << ", kind " << static_cast<int>(face->outline_kind()) << ", right "
         << static_cast<int>(face->embedding_right()) << ", em " << face->units_per_em() << ", "
         << face->glyph_count() << " glyphs, ascent " << face->ascent() << ", descent "
         << face->descent() << ", capitals " << face->cap_height() << ", weight "
         << face->weight_class() << ", angle " << face->italic_angle()
         << (face->is_fixed_pitch() ? ", fixed" : "") << ", bounds " << box.left << ' '
         << box.bottom << ' ' << box.right << ' ' << box.top << ", A " << face->GlyphOf(U'A')
         << ", B " << face->GlyphOf(U'B') << ", advances";
    for (const std::uint32_t glyph : {0U, 1U, 2U}) {
      text << ' ' << face->Advance(glyph) << '/' << face->CidOf(glyph);
    }
    text << ", blank " << face->BlankGlyph();
    return text.str() + "\n";
  }

  testing::TempDir directory_;
  int count_ = 0;
};

// The test font with two glyphs that are blank, of which the second one stands for a character.
std::string WithTwoBlanks(std::uint32_t character) {
  FontTables tables = TablesOf(TestFont().Bytes());
  std::string& loca = tables.at("loca");
  const std::size_t size = loca.size() / 4;
  for (const std::size_t glyph : {2U, 3U}) {
    loca.replace(size * glyph, size, loca.substr(size, size));
  }
  tables.at("hmtx").replace(4, 2, BigEndian(0, 2)).replace(8, 2, BigEndian(0, 2));
  tables["cmap"] = BigEndian(0, 2) + BigEndian(1, 2) + BigEndian(3, 2) + BigEndian(10, 2) +
                   BigEndian(12, 4) + BigEndian(12, 2) + BigEndian(0, 2) + BigEndian(28, 4) +
                   BigEndian(0, 4) + BigEndian(1, 4) + BigEndian(character, 4) +
                   BigEndian(character, 4) + BigEndian(2, 4);
  return FontOf(tables);
}

TEST_F(MadeFaces, HaveABlankGlyphForWhatIsNotSeen) {
  for (const std::uint32_t character : {0x200CU, 0x200DU, 0x200BU, 0x2060U, 0xFEFFU}) {
    EXPECT_EQ(Load(WithTwoBlanks(character))->BlankGlyph(), 2U) << character;
  }
  for (const std::uint32_t character : {0x20U, 0x200AU, 0x200EU, 0x2061U, 0xFF00U}) {
    EXPECT_EQ(Load(WithTwoBlanks(character))->BlankGlyph(), 1U) << "the first there is";
  }
}

TEST_F(MadeFaces, AreRead) {
  const TestFont variable = {.is_variable = true};
  std::string text;
  const auto add = [&](const std::string& name, const std::string& bytes, int index = 0) {
    text += name + ": " + FaceText(bytes, index);
  };
  add("plain", TestFont().Bytes());
  add("second", TestFont().Bytes(), 1);
  add("negative", TestFont().Bytes(), -1);
  add("instance of a plain one", TestFont().Bytes(), 0x10000);
  for (const int instance : {0, 1, 2}) {
    add("instance " + std::to_string(instance), variable.Bytes(), instance << 16);
  }
  add("slanted instance", With("fvar", 16, "slnt", variable), 0x10000);
  add("instance of another axis", With("fvar", 16, "wdth", variable), 0x10000);
  add("names", TestFont{.family = "Te st-(1)/&z9@[`{", .style = "A_B"}.Bytes());
  add("long name", TestFont{.family = std::string(80, 'n')}.Bytes());
  add("no name", TestFont{.family = "", .style = ""}.Bytes());
  add("instance with a long name",
      TestFont{.family = std::string(80, 'n'), .is_variable = true}.Bytes(), 0x10000);
  for (const char* table :
       {"head", "hhea", "hmtx", "maxp", "OS/2", "post", "name", "cmap", "glyf"}) {
    add(std::string("without ") + table, Without(table));
  }
  for (const std::uint32_t type :
       {0x2U, 0x4U, 0x8U, 0x6U, 0xAU, 0x100U, 0x102U, 0x200U, 0x304U, 0x1U}) {
    add("rights " + std::to_string(type), With("OS/2", 8, BigEndian(type, 2)));
  }
  add("first version", With("OS/2", 0, BigEndian(1, 2)));
  add("second version", With("OS/2", 0, BigEndian(2, 2)));
  add("capitals", With("OS/2", 88, BigEndian(700, 2)));
  add("weight", With("OS/2", 4, BigEndian(701, 2)));
  FontTables cut = TablesOf(TestFont().Bytes());
  cut["OS/2"].resize(88);
  add("without capitals", FontOf(cut));
  cut["OS/2"].resize(6);
  add("a weight alone", FontOf(cut));
  cut["OS/2"].resize(5);
  add("no weight", FontOf(cut));
  cut = TablesOf(TestFont().Bytes());
  cut["head"].resize(53);
  add("a short head", FontOf(cut));
  add("angle", With("post", 4, BigEndian(0xFFF38000, 4)));
  add("fixed", With("post", 12, BigEndian(1, 4)));
  add("fixed, too", With("post", 12, BigEndian(0x10000, 4)));
  add("bounds", With("head", 36, BigEndian(0xFFF6FFEC, 4) + BigEndian(0x001E0028, 4)));
  add("no advance", With("hmtx", 8, BigEndian(0, 2)));
  add("no advance of a box", With("hmtx", 4, BigEndian(0, 2)));
  add("CFF", CffFont(testing::CffProgram({"A", "space"})));
  add("CFF by identifiers", CffFont(testing::CidProgram({7, 300})));
  add("no font", "no font");
  EXPECT_EQ(FontFace::Load(directory_.Path("missing"), 0), nullptr);
  EXPECT_TRUE(testing::IsAsExpected("fonts/faces.txt", text));
}

// Keeps what it is given as text, without bytes of programs.
class TextObjects : public FontObjects {
 public:
  std::uint32_t AddValue(const std::string& text) override {
    text_ += std::to_string(++count_) + " " + text + "\n";
    return count_;
  }

  std::uint32_t AddStream(const std::string& entries, std::string bytes) override {
    const bool is_program =
        entries.starts_with("/Length1") || entries.find("CIDFontType0C") != std::string::npos;
    return AddValue("<<" +
                    std::regex_replace(entries, std::regex("/Length1 [0-9]+"), "/Length1 SIZE") +
                    ">>\n(" + (is_program ? "a program" : testing::DataText(bytes)) + ")");
  }

  const std::string& text() const { return text_; }

 private:
  std::uint32_t count_ = 0;
  std::string text_;
};

using Use = std::pair<std::uint32_t, std::uint32_t>;  // a code and its glyph

std::string EmbeddedText(const FontFace& face, CompositeCodes kind, const std::vector<Use>& uses) {
  CompositeFont font(face, kind);
  for (const auto& [code, glyph] : uses) {
    font.Add(code, glyph, 100.5 + glyph, code % 2 == 0 ? U"A" : U"xy");
  }
  std::string program = font.Program();
  std::string tags;
  if (face.outline_kind() == OutlineKind::kTrueType) {
    for (const auto& [tag, bytes] : TablesOf(program)) {
      tags += tag + " ";
    }
  }
  const auto made = FontProgram::Open(program);
  std::string shapes;
  for (const auto& [code, glyph] : uses) {
    const std::uint32_t own =
        made != nullptr && made->is_cid_keyed() ? made->GlyphOfCid(face.CidOf(glyph)) : glyph;
    const auto shape = made != nullptr ? made->ShapeOf(own) : std::nullopt;
    shapes += " " + (shape ? std::to_string(shape->points.size()) : "none");
  }
  TextObjects objects;
  const std::string dictionary = font.Write(std::move(program), objects);
  return "tables " + tags + "points" + shapes + "\n" + objects.text() + dictionary + "\n\n";
}

TEST_F(MadeFaces, AreEmbedded) {
  const auto plain = Load(TestFont().Bytes());
  const auto instance = Load(TestFont{.is_variable = true}.Bytes(), 0x10000);
  const auto slanted =
      Load(With("post", 4, BigEndian(0xFFF38000, 4) + BigEndian(0, 4) + BigEndian(1, 4)));
  const auto whole = Load(With("OS/2", 8, BigEndian(0x100, 2)));
  const auto cff = Load(CffFont(testing::CffProgram({"A", "space"})));
  const auto keyed = Load(CffFont(testing::CidProgram({7, 300})));
  std::string text;
  text += EmbeddedText(*plain, {}, {{1, 1}, {2, 2}});
  text += EmbeddedText(*plain, {.is_vertical = true}, {{1, 1}, {2, 2}});
  text += EmbeddedText(*plain, {}, {{5, 1}, {6, 2}, {9, 1}});
  text += EmbeddedText(*plain, {.code_bytes = 1}, {{1, 1}, {2, 2}});
  text +=
      EmbeddedText(*plain, {.code_bytes = 1, .is_vertical = true, .lists_glyphs = true}, {{8, 2}});
  text += EmbeddedText(*plain, {.lists_glyphs = true}, {{9, 1}, {16, 2}});
  text += EmbeddedText(*instance, {}, {{1, 1}});
  text += EmbeddedText(*slanted, {}, {{1, 1}});
  text += EmbeddedText(*whole, {}, {{1, 1}});
  text += EmbeddedText(*cff, {.lists_glyphs = true}, {{1, 1}, {2, 2}});
  text += EmbeddedText(*cff, {}, {{7, 1}});
  text += EmbeddedText(*keyed, {.lists_glyphs = true}, {{7, 1}, {300, 2}});
  text += EmbeddedText(*keyed, {.is_vertical = true}, {{1, 1}, {300, 2}});
  text += EmbeddedText(*plain, {}, {});
  EXPECT_TRUE(testing::IsAsExpected("fonts/embedded.txt", text));
}

std::string GlyphsText(const std::string& program_bytes, const std::string& font,
                       const std::string& descendant = "null") {
  const std::string bytes = testing::RawPdf()
                                .Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>")
                                .Object(5, "<<" + font + ">>")
                                .Object(7, descendant)
                                .Stream(8, "", std::string("\0\0\0\2\0\1\0\7", 8))
                                .Table();
  const auto document = testing::OpenBytes(bytes);
  const DocumentFont found(*document, pdf::Object::Ref({5, 0}));
  const auto program = FontProgram::Open(program_bytes);
  if (program == nullptr) {
    return "no program\n";
  }
  GlyphFinder finder(found, *program);
  std::string text = font + ":";
  for (const std::uint32_t code : {0U, 1U, 2U, 3U, 7U, 32U, 65U, 66U, 255U, 256U, 300U}) {
    text += " " + std::to_string(code) + "=" + std::to_string(finder.StandardGlyphOf(code)) + "(";
    for (const std::uint32_t glyph : finder.GlyphsOf(code)) {
      text += " " + std::to_string(glyph);
    }
    text += ")";
  }
  return text + "\n";
}

// A character map of format 6 from a code on, for a system and its encoding.
std::string MappedFont(std::uint32_t platform, std::uint32_t encoding, std::uint32_t first) {
  FontTables tables = TablesOf(TestFont().Bytes());
  tables["cmap"] = BigEndian(0, 2) + BigEndian(1, 2) + BigEndian(platform, 2) +
                   BigEndian(encoding, 2) + BigEndian(12, 4) + BigEndian(6, 2) + BigEndian(14, 2) +
                   BigEndian(0, 2) + BigEndian(first, 2) + BigEndian(2, 2) + BigEndian(1, 2) +
                   BigEndian(2, 2);
  return FontOf(tables);
}

TEST_F(MadeFaces, HaveGlyphsForCodes) {
  const std::vector<std::string> simple = {
      "/Subtype/TrueType/FontDescriptor<</Flags 32>>/Encoding/WinAnsiEncoding",
      "/Subtype/TrueType/FontDescriptor<</Flags 4>>/Encoding/MacRomanEncoding",
      "/Subtype/TrueType/FontDescriptor<</Flags 4>>",
      "/Subtype/TrueType/FontDescriptor<</Flags 32>>",
      "/Subtype/TrueType/FontDescriptor<</Flags "
      "32>>/Encoding<</Differences[1/A/g2/glyph1/uni0041]>>",
      "/Subtype/TrueType/FontDescriptor<</Flags "
      "4>>/Encoding<</Differences[1/A/g2/glyph1/uni0041]>>",
      "/Subtype/Type1/FontDescriptor<</Flags 32>>/Encoding/WinAnsiEncoding",
      "/Subtype/Type1/FontDescriptor<</Flags 4>>/Encoding<</Differences[1/A/odd/space]>>",
      "/Subtype/Type1/FontDescriptor<</Flags 4>>",
  };
  const std::string type0 = "/Subtype/Type0/Encoding/Identity-H/DescendantFonts[7 0 R]";
  std::string text;
  for (const auto& [name, program] : std::vector<std::pair<const char*, std::string>>{
           {"plain", TestFont().Bytes()},
           {"symbols", MappedFont(3, 0, 0xF041)},
           {"symbols elsewhere", MappedFont(3, 0, 0xF101)},
           {"more symbols elsewhere", MappedFont(3, 0, 0xF201)},
           {"symbols in place", MappedFont(3, 0, 0x41)},
           {"Macintosh", MappedFont(1, 0, 0x41)},
           {"no map", Without("cmap")},
           {"CFF", testing::CffProgram({"A", "odd"})},
           {"CFF by identifiers", testing::CidProgram({7, 300})},
           {"OpenType", CffFont(testing::CffProgram({"A", "space"}))},
           {"Type 1", testing::Type1ProgramText({"A", "odd"})}}) {
    text += std::string(name) + "\n";
    for (const std::string& font : simple) {
      text += GlyphsText(program, font);
    }
    text += GlyphsText(program, type0, "<</Subtype/CIDFontType2>>");
    text += GlyphsText(program, type0, "<</Subtype/CIDFontType2/CIDToGIDMap 8 0 R>>");
    text += GlyphsText(program, type0, "<</Subtype/CIDFontType0/CIDToGIDMap 8 0 R>>");
  }
  EXPECT_TRUE(testing::IsAsExpected("fonts/glyphs.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines::fonts
