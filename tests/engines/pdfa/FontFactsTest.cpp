// What the rules of every level say of facts, on both sides of every bound: of fonts.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/Sayings.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;

void SaySimpleFonts(Sayings& sayings) {
  for (const char* subtype : {"Type1", "MMType1", "TrueType", "Type3", "Type0", "CIDFontType0",
                              "CIDFontType2", "Type2", ""}) {
    sayings.Say(std::string("font ") + subtype, FontFacts{.has_type = true,
                                                          .subtype = subtype,
                                                          .has_name = false,
                                                          .program_subtype = std::nullopt});
  }
  for (const char* subtype : {"Type1C", "CIDFontType0C", "OpenType", "Other", ""}) {
    sayings.Say(std::string("program ") + subtype, FontFacts{.has_type = true,
                                                             .subtype = "Type1",
                                                             .has_name = true,
                                                             .program_subtype = subtype,
                                                             .needs_program = true,
                                                             .has_program = true});
  }
  sayings.Say("font without a type",
              FontFacts{.subtype = "Type1", .has_name = true, .program_subtype = std::nullopt});
  sayings.Say("font without a program", FontFacts{.has_type = true,
                                                  .subtype = "Type1",
                                                  .has_name = true,
                                                  .program_subtype = std::nullopt,
                                                  .needs_program = true});
  SimpleFontFacts codes{.first_code = 65, .last_code = 70, .widths = 6};
  sayings.Say("codes", codes);
  codes.widths = 5;
  sayings.Say("few widths", codes);
  codes.widths = 7;
  sayings.Say("many widths", codes);
  codes.is_standard = true;
  sayings.Say("many widths of a standard font", codes);
  sayings.Say("codes up to",
              SimpleFontFacts{.first_code = std::nullopt, .last_code = 5, .widths = 6});
  sayings.Say("codes from",
              SimpleFontFacts{.first_code = 5, .last_code = std::nullopt, .widths = 6});
  sayings.Say("codes from below",
              SimpleFontFacts{.first_code = -5, .last_code = std::nullopt, .widths = 6});
  sayings.Say("no widths",
              SimpleFontFacts{.first_code = 5, .last_code = 5, .widths = std::nullopt});
}

void SayCollections(Sayings& sayings) {
  const fonts::CharacterCollection japan = {"Adobe", "Japan1", 2};
  const fonts::CharacterCollection others[] = {{"Adobe", "Japan1", 2},
                                               {"Adobe", "Japan1", 1},
                                               {"Adobe", "Japan1", 3},
                                               {"Adobe", "Japan1", std::nullopt},
                                               {"Adobe", "GB1", 2},
                                               {"Own", "Japan1", 2},
                                               {std::nullopt, "Japan1", 2},
                                               {"Adobe", std::nullopt, 2},
                                               {}};
  int number = 0;
  for (const fonts::CharacterCollection& other : others) {
    const std::string name = std::to_string(number++);
    sayings.Say("collection, map " + name, CollectionFacts{.of_font = japan, .of_map = other});
    sayings.Say("collection, font " + name, CollectionFacts{.of_font = other, .of_map = japan});
    sayings.Say("collection, both " + name, CollectionFacts{.of_font = other, .of_map = other});
    sayings.Say("collection, identity " + name,
                CollectionFacts{.has_identity_map = true, .of_font = japan, .of_map = other});
  }
}

TEST(FontFactFindings, AreThoseOfFonts) {
  Sayings sayings;
  SaySimpleFonts(sayings);
  SayCollections(sayings);
  SayEach(sayings, "identifiers ",
          {&CidFontFacts::has_true_type_outlines, &CidFontFacts::has_glyph_map,
           &CidFontFacts::is_rendered, &CidFontFacts::has_program});
  SayEach(sayings, "set of identifiers ",
          {&CidFontFacts::is_subset, &CidFontFacts::has_cid_set, &CidFontFacts::cid_set_is_true,
           &CidFontFacts::cid_set_is_whole, &CidFontFacts::cid_set_has_shown});
  SayEach(sayings, "set of characters ",
          {&Type1FontFacts::has_program, &Type1FontFacts::is_subset, &Type1FontFacts::has_char_set,
           &Type1FontFacts::char_set_is_true, &Type1FontFacts::char_set_is_whole,
           &Type1FontFacts::char_set_has_shown});
  SayEach(sayings, "TrueType ",
          {&TrueTypeFontFacts::is_symbolic, &TrueTypeFontFacts::has_encoding,
           &TrueTypeFontFacts::has_plain_encoding, &TrueTypeFontFacts::has_differences,
           &TrueTypeFontFacts::differences_are_unicode});
  SayEach(sayings, "map ",
          {&CodeMapFacts::is_identity, &CodeMapFacts::is_predefined, &CodeMapFacts::is_embedded});
  for (const bool is_embedded : {false, true}) {
    sayings.Say(
        "map written downwards " + std::to_string(is_embedded),
        CodeMapFacts{.is_predefined = true, .is_embedded = is_embedded, .stated_write_mode = 1});
  }
  for (const std::uint64_t cid : {65535U, 65536U}) {
    sayings.Say("identifier " + std::to_string(cid),
                CodeMapFacts{.is_identity = true, .is_predefined = true, .highest_cid = cid});
  }
  SayEach(sayings, "used map ", {&UsedMapFacts::is_predefined});
  for (std::size_t maps = 0; maps <= 3; ++maps) {
    for (int bits = 0; bits < 4; ++bits) {
      sayings.Say(
          "program with maps " + std::to_string(maps) + "." + std::to_string(bits),
          TrueTypeProgramFacts{
              .is_symbolic = (bits & 1) != 0, .maps = maps, .has_symbol_map = (bits & 2) != 0});
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/facts/fonts.txt", sayings.text()));
}

GlyphFacts SoundGlyph() {
  GlyphFacts glyph;
  glyph.is_rendered = true;
  glyph.is_present = true;
  glyph.program_width = 500;
  glyph.stated_width = 500;
  glyph.text = u"a";
  return glyph;
}

template <typename Change>
void SayGlyph(Sayings& sayings, const std::string& what, const Change& change) {
  GlyphFacts glyph = SoundGlyph();
  change(glyph);
  sayings.Say("glyph " + what, glyph);
  glyph.is_rendered = false;
  sayings.Say("unseen glyph " + what, glyph);
}

TEST(FontFactFindings, AreThoseOfGlyphs) {
  Sayings sayings;
  SayGlyph(sayings, "", [](GlyphFacts&) {});
  SayGlyph(sayings, "missing", [](GlyphFacts& glyph) { glyph.is_present = false; });
  SayGlyph(sayings, "unknown", [](GlyphFacts& glyph) { glyph.is_present.reset(); });
  SayGlyph(sayings, "notdef", [](GlyphFacts& glyph) { glyph.is_notdef = true; });
  for (const double width : {498.9, 499.0, 501.0, 501.1}) {
    SayGlyph(sayings, "wide " + std::to_string(width),
             [&](GlyphFacts& glyph) { glyph.stated_width = width; });
  }
  SayGlyph(sayings, "no width", [](GlyphFacts& glyph) { glyph.stated_width.reset(); });
  SayGlyph(sayings, "no width in the program", [](GlyphFacts& glyph) {
    glyph.program_width.reset();
    glyph.stated_width = 1;
  });
  SayGlyph(sayings, "no text", [](GlyphFacts& glyph) { glyph.text.reset(); });
  SayGlyph(sayings, "no text, collection", [](GlyphFacts& glyph) {
    glyph.text.reset();
    glyph.has_known_collection = true;
  });
  SayGlyph(sayings, "no text, identity", [](GlyphFacts& glyph) {
    glyph.text.reset();
    glyph.has_identity_map = true;
  });
  for (const char16_t unit : {0x0, 0x1, 0xDB7F, 0xDB80, 0xDBFF, 0xDC00, 0xDFFF, 0xE000, 0xF8FF,
                              0xF900, 0xFEFE, 0xFEFF, 0xFF00, 0xFFFD, 0xFFFE, 0xFFFF}) {
    SayGlyph(sayings, "text " + std::to_string(unit), [&](GlyphFacts& glyph) {
      glyph.text = std::u16string{u'a', unit};
    });
  }
  SayGlyph(sayings, "text that is told", [](GlyphFacts& glyph) {
    glyph.text = u"\xE000";
    glyph.has_actual_text = true;
  });
  EXPECT_TRUE(IsAsExpected("pdfa/facts/glyphs.txt", sayings.text()));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
