#include <algorithm>
#include <array>

#include "engines/pdfa/rules/FontFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kEmbedAgain = "Embed the font again with a program that writes it whole.";
constexpr std::uint64_t kHighestCid = 65535;

constexpr std::array<std::string_view, 7> kFontSubtypes = {
    "Type1", "MMType1", "TrueType", "Type3", "Type0", "CIDFontType0", "CIDFontType2"};

constexpr std::array<Rule<FontFacts>, 6> kFontRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 1},
     .later = {"6.2.11.2", 1},
     .holds = [](const FontFacts& font) { return font.has_type; },
     .wrong = "The dictionary of a font does not say /Type /Font.",
     .cure = "Add the entry."},
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 2},
     .later = {"6.2.11.2", 2},
     .holds =
         [](const FontFacts& font) {
           return std::find(kFontSubtypes.begin(), kFontSubtypes.end(), font.subtype) !=
                  kFontSubtypes.end();
         },
     .wrong = "The /Subtype of a font is none that fonts have.",
     .cure = "Name the kind of font that it is, such as /TrueType."},
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 3},
     .later = {"6.2.11.2", 3},
     .holds = [](const FontFacts& font) { return font.subtype == "Type3" || font.has_name; },
     .wrong = "A font has no name in /BaseFont.",
     .cure = "Add the name that the font's program has."},
    {.levels = kPart1,
     .part1 = {"6.3.2", 7},
     .holds =
         [](const FontFacts& font) {
           return !font.program_subtype || *font.program_subtype == "Type1C" ||
                  *font.program_subtype == "CIDFontType0C";
         },
     .wrong = "A font is embedded in a form that PDF 1.4 does not know.",
     .cure =
         "Embed it as CFF with the /Subtype Type1C or CIDFontType0C, as TrueType or as Type 1."},
    {.levels = kParts2And3,
     .later = {"6.2.11.2", 7},
     .holds =
         [](const FontFacts& font) {
           return !font.program_subtype || *font.program_subtype == "Type1C" ||
                  *font.program_subtype == "CIDFontType0C" || *font.program_subtype == "OpenType";
         },
     .wrong = "The /Subtype of a font's program is none that programs have.",
     .cure = "Name what it is: Type1C, CIDFontType0C or OpenType."},
    {.levels = kAllLevels,
     .part1 = {"6.3.4", 1},
     .later = {"6.2.11.4.1", 1},
     .holds = [](const FontFacts& font) { return !font.needs_program || font.has_program; },
     .wrong = "A font that text is shown in is not embedded.",
     .cure = "Embed the font."},
}};

constexpr std::array<Rule<SimpleFontFacts>, 3> kSimpleFontRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 4},
     .later = {"6.2.11.2", 4},
     .holds = [](const SimpleFontFacts& font) { return font.is_standard || font.first_code; },
     .wrong = "A font does not say which code its widths begin with.",
     .cure = "Add /FirstChar."},
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 5},
     .later = {"6.2.11.2", 5},
     .holds = [](const SimpleFontFacts& font) { return font.is_standard || font.last_code; },
     .wrong = "A font does not say which code its widths end with.",
     .cure = "Add /LastChar."},
    {.levels = kAllLevels,
     .part1 = {"6.3.2", 6},
     .later = {"6.2.11.2", 6},
     .holds =
         [](const SimpleFontFacts& font) {
           return font.is_standard ||
                  (font.widths && static_cast<std::int64_t>(*font.widths) - 1 ==
                                      font.last_code.value_or(0) - font.first_code.value_or(0));
         },
     .wrong = "A font does not have one width for each code from /FirstChar to /LastChar.",
     .cure = "Write as many /Widths as there are codes."},
}};

constexpr std::array<Rule<CollectionFacts>, 2> kCollectionRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.3.1", 1},
     .holds =
         [](const CollectionFacts& facts) {
           return facts.has_identity_map ||
                  (facts.of_font.registry && facts.of_font.registry == facts.of_map.registry &&
                   facts.of_font.ordering && facts.of_font.ordering == facts.of_map.ordering);
         },
     .wrong = "The codes and the glyphs of a composite font go by different character collections.",
     .cure = "Make the /CIDSystemInfo of the font and that of its map the same."},
    {.levels = kParts2And3,
     .later = {"6.2.11.3.1", 1},
     .holds =
         [](const CollectionFacts& facts) {
           return facts.has_identity_map ||
                  (facts.of_font.registry && facts.of_font.registry == facts.of_map.registry &&
                   facts.of_font.ordering && facts.of_font.ordering == facts.of_map.ordering &&
                   facts.of_font.supplement && facts.of_map.supplement &&
                   *facts.of_font.supplement <= *facts.of_map.supplement);
         },
     .wrong = "The codes and the glyphs of a composite font go by different character collections, "
              "or the glyphs by a later supplement.",
     .cure = "Make the /CIDSystemInfo of the font and that of its map the same."},
}};

constexpr std::array<Rule<CidFontFacts>, 4> kCidFontRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.3.2", 1},
     .holds =
         [](const CidFontFacts& font) {
           return !font.has_true_type_outlines || font.has_glyph_map || !font.is_rendered;
         },
     .wrong = "A composite TrueType font does not say which glyphs its identifiers have.",
     .cure = "Add /CIDToGIDMap, as /Identity or as the stream that is right for the program."},
    {.levels = kParts2And3,
     .later = {"6.2.11.3.2", 1},
     .holds =
         [](const CidFontFacts& font) {
           return !font.has_true_type_outlines || font.has_glyph_map || !font.has_program;
         },
     .wrong = "A composite TrueType font does not say which glyphs its identifiers have.",
     .cure = "Add /CIDToGIDMap, as /Identity or as the stream that is right for the program."},
    {.levels = kPart1,
     .part1 = {"6.3.5", 3},
     .holds =
         [](const CidFontFacts& font) {
           return !font.is_subset ||
                  (font.has_cid_set && font.cid_set_is_true && font.cid_set_has_shown);
         },
     .wrong = "A subset of a composite font has no /CIDSet, or one that does not tell the glyphs "
              "that are in it.",
     .cure = "Write a /CIDSet with a bit for each glyph of the program."},
    {.levels = kParts2And3,
     .later = {"6.2.11.4.2", 2},
     .holds =
         [](const CidFontFacts& font) {
           return !font.has_program || !font.is_subset || !font.has_cid_set ||
                  (font.cid_set_is_true && font.cid_set_is_whole);
         },
     .wrong = "The /CIDSet of a composite font does not tell all glyphs that are in its program.",
     .cure = "Leave the /CIDSet out, or write one with a bit for each glyph of the program."},
}};

constexpr std::array<Rule<CodeMapFacts>, 4> kCodeMapRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.3.3", 1},
     .holds = [](const CodeMapFacts& map) { return map.is_identity || map.is_embedded; },
     .wrong = "The map from codes to glyphs of a composite font is not embedded.",
     .cure = "Embed the map, or use Identity-H or Identity-V."},
    {.levels = kParts2And3,
     .later = {"6.2.11.3.3", 1},
     .holds = [](const CodeMapFacts& map) { return map.is_predefined || map.is_embedded; },
     .wrong = "The map from codes to glyphs of a composite font is not embedded, and is none that "
              "every reader has.",
     .cure = "Embed the map."},
    {.levels = kAllLevels,
     .part1 = {"6.3.3.3", 2},
     .later = {"6.2.11.3.3", 2},
     .holds =
         [](const CodeMapFacts& map) {
           return !map.is_embedded || map.write_mode == map.stated_write_mode;
         },
     .wrong = "The dictionary of a map from codes to glyphs says another direction of writing than "
              "the map itself.",
     .cure = "Give /WMode the value that the map has."},
    {.levels = kAllLevels,
     .part1 = {"6.1.12", 10},
     .later = {"6.1.13", 10},
     .holds = [](const CodeMapFacts& map) { return map.highest_cid <= kHighestCid; },
     .wrong = "A map from codes to glyphs leads to identifiers beyond 65,535.",
     .cure = kEmbedAgain},
}};

constexpr std::array<Rule<UsedMapFacts>, 1> kUsedMapRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.11.3.3", 3},
     .holds = [](const UsedMapFacts& map) { return map.is_predefined; },
     .wrong = "A map from codes to glyphs builds on another one that not every reader has.",
     .cure = "Write all that the map has into the map itself."},
}};

constexpr std::array<Rule<Type1FontFacts>, 2> kType1FontRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.5", 2},
     .holds =
         [](const Type1FontFacts& font) {
           return !font.is_subset ||
                  (font.has_char_set && font.char_set_is_true && font.char_set_has_shown);
         },
     .wrong =
         "A subset of a Type 1 font has no /CharSet, or one that does not name the glyphs that "
         "are in it.",
     .cure = "Write a /CharSet with the names of all glyphs of the program."},
    {.levels = kParts2And3,
     .later = {"6.2.11.4.2", 1},
     .holds =
         [](const Type1FontFacts& font) {
           return !font.has_program || !font.is_subset || !font.has_char_set ||
                  (font.char_set_is_true && font.char_set_is_whole);
         },
     .wrong = "The /CharSet of a Type 1 font does not name all glyphs that are in its program.",
     .cure = "Leave the /CharSet out, or write one with the names of all glyphs of the program."},
}};

constexpr std::array<Rule<TrueTypeFontFacts>, 3> kTrueTypeFontRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.7", 1},
     .holds =
         [](const TrueTypeFontFacts& font) {
           return font.is_symbolic || (font.has_plain_encoding && !font.has_differences);
         },
     .wrong =
         "A TrueType font that is not symbolic has an encoding other than MacRomanEncoding and "
         "WinAnsiEncoding.",
     .cure = "Use one of the two without /Differences, or mark the font as symbolic and leave the "
             "encoding out."},
    {.levels = kParts2And3,
     .later = {"6.2.11.6", 2},
     .holds =
         [](const TrueTypeFontFacts& font) {
           return font.is_symbolic || (font.has_plain_encoding &&
                                       (!font.has_differences || font.differences_are_unicode));
         },
     .wrong = "A TrueType font that is not symbolic has an encoding that is not based on "
              "MacRomanEncoding or WinAnsiEncoding, or differs from it by glyphs that cannot be "
              "found by their characters.",
     .cure = "Use one of the two encodings; name glyphs as the Adobe Glyph List does, and embed a "
             "program with a Unicode map."},
    {.levels = kAllLevels,
     .part1 = {"6.3.7", 2},
     .later = {"6.2.11.6", 3},
     .holds = [](const TrueTypeFontFacts& font) { return !font.is_symbolic || !font.has_encoding; },
     .wrong = "A symbolic TrueType font has an /Encoding.",
     .cure = "Leave the encoding out, or mark the font as not symbolic."},
}};

constexpr std::array<Rule<TrueTypeProgramFacts>, 3> kTrueTypeProgramRules = {{
    {.levels = kPart1,
     .part1 = {"6.3.7", 3},
     .holds =
         [](const TrueTypeProgramFacts& program) {
           return !program.is_symbolic || program.maps == 1;
         },
     .wrong = "The program of a symbolic TrueType font does not have exactly one map from codes to "
              "glyphs.",
     .cure = "Embed the program with the one map that the font's codes are for."},
    {.levels = kParts2And3,
     .later = {"6.2.11.6", 1},
     .holds =
         [](const TrueTypeProgramFacts& program) {
           return program.is_symbolic || program.maps > (program.has_symbol_map ? 1 : 0);
         },
     .wrong = "The program of a TrueType font that is not symbolic has no map from characters to "
              "glyphs.",
     .cure = "Embed the program with such a map, or mark the font as symbolic."},
    {.levels = kParts2And3,
     .later = {"6.2.11.6", 4},
     .holds =
         [](const TrueTypeProgramFacts& program) {
           return !program.is_symbolic || program.maps == 1 || program.has_symbol_map;
         },
     .wrong = "The program of a symbolic TrueType font has several maps, or none, and no map of "
              "symbols.",
     .cure = "Embed the program with one map, or with a map of symbols among others."},
}};

}  // namespace

template <>
std::span<const Rule<FontFacts>> RulesFor<FontFacts>() {
  return kFontRules;
}

template <>
std::span<const Rule<SimpleFontFacts>> RulesFor<SimpleFontFacts>() {
  return kSimpleFontRules;
}

template <>
std::span<const Rule<CollectionFacts>> RulesFor<CollectionFacts>() {
  return kCollectionRules;
}

template <>
std::span<const Rule<CidFontFacts>> RulesFor<CidFontFacts>() {
  return kCidFontRules;
}

template <>
std::span<const Rule<CodeMapFacts>> RulesFor<CodeMapFacts>() {
  return kCodeMapRules;
}

template <>
std::span<const Rule<UsedMapFacts>> RulesFor<UsedMapFacts>() {
  return kUsedMapRules;
}

template <>
std::span<const Rule<Type1FontFacts>> RulesFor<Type1FontFacts>() {
  return kType1FontRules;
}

template <>
std::span<const Rule<TrueTypeFontFacts>> RulesFor<TrueTypeFontFacts>() {
  return kTrueTypeFontRules;
}

template <>
std::span<const Rule<TrueTypeProgramFacts>> RulesFor<TrueTypeProgramFacts>() {
  return kTrueTypeProgramRules;
}

}  // namespace TarnixTools::engines::pdfa
