// What the rules of every level say of facts, on both sides of every bound.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/rules/ActionFacts.h"
#include "engines/pdfa/rules/AnnotationFacts.h"
#include "engines/pdfa/rules/ColorFacts.h"
#include "engines/pdfa/rules/ContentFacts.h"
#include "engines/pdfa/rules/DocumentFacts.h"
#include "engines/pdfa/rules/EmbeddedFileFacts.h"
#include "engines/pdfa/rules/FileFacts.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "engines/pdfa/rules/FormFacts.h"
#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/pdfa/rules/MetadataFacts.h"
#include "engines/pdfa/rules/ProfileFacts.h"
#include "engines/pdfa/rules/StructureFacts.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;

// Facts by what they are, and what the levels find in them.
class Sayings {
 public:
  template <typename Facts>
  void Say(const std::string& what, const Facts& facts) {
    std::string found = testing::TextOfLevels([&](const std::string& level) {
      FindingList findings(*LevelOf(level[0] - '0', level[1]));
      findings.Check(facts);
      return testing::TextOf(findings.Take());
    });
    std::replace(found.begin(), found.end(), '\n', ';');
    text_ += what + " | " + found + "\n";
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

FileFacts FileWith(bool is_linearized, std::optional<std::string> first,
                   std::optional<std::string> last) {
  FileFacts file;
  file.is_linearized = is_linearized;
  file.first_id = std::move(first);
  file.last_id = std::move(last);
  return file;
}

void SayFiles(Sayings& sayings) {
  for (const char* line :
       {"%PDF-1.0", "%PDF-1.7", "%PDF-1.8", "%PDF-2.0", "%PDF-9.9", "%PDF-1.", "%PDF-1.4 ",
        "%PDF-14", "%PDF-1,4", "%PDF-/.4", "%PDF-:.4", "%PDF-1./", "%PDF-1.:", "%pdf-1.4", ""}) {
    sayings.Say(std::string("header ") + line,
                HeaderFacts{.is_first = true, .line = line, .has_binary_comment = true});
  }
  sayings.Say("header later",
              HeaderFacts{.is_first = false, .line = "%PDF-1.4", .has_binary_comment = true});
  sayings.Say("header alone", HeaderFacts{.is_first = true, .line = "%PDF-1.4"});
  sayings.Say("no identifier", FileWith(false, std::nullopt, std::nullopt));
  sayings.Say("first identifier", FileWith(false, "a", std::nullopt));
  sayings.Say("last identifier", FileWith(false, std::nullopt, "a"));
  sayings.Say("empty identifiers", FileWith(false, "", ""));
  sayings.Say("linearized, first identifier", FileWith(true, "a", std::nullopt));
  sayings.Say("linearized, last identifier", FileWith(true, std::nullopt, "a"));
  sayings.Say("linearized, empty first identifier", FileWith(true, "", "a"));
  sayings.Say("linearized, same identifiers", FileWith(true, "a", "a"));
  FileFacts file = FileWith(false, "a", "a");
  file.has_nothing_after_end = false;
  file.has_xref_stream = true;
  file.objects = 8'388'607;
  sayings.Say("more after the end, a stream of references", file);
  ++file.objects;
  sayings.Say("too many objects", file);
  sayings.Say("encrypted", TrailerFacts{.is_encrypted = true});
  sayings.Say("plain", TrailerFacts{});
  sayings.Say("xref", XrefFacts{});
  sayings.Say("xref on a line", XrefFacts{.keyword_ends_line = false});
  sayings.Say("xref with spaces", XrefFacts{.numbers_have_a_space = false});
  sayings.Say("object", ObjectFacts{});
  sayings.Say("object with spaces", ObjectFacts{.spacing_is_regular = false});
  sayings.Say("stream", StreamFacts{});
  sayings.Say("stream of another length", StreamFacts{.length_is_right = false});
  sayings.Say("stream within a line", StreamFacts{.keywords_are_on_lines = false});
  sayings.Say("stream elsewhere", StreamFacts{.is_in_other_file = true});
  for (const char* name :
       {"ASCIIHexDecode", "ASCII85Decode", "FlateDecode", "RunLengthDecode", "CCITTFaxDecode",
        "JBIG2Decode", "DCTDecode", "JPXDecode", "LZWDecode", "Crypt", "Fl", ""}) {
    sayings.Say(std::string("filter ") + name, FilterFacts{.name = name});
  }
  sayings.Say("filter Crypt, identity", FilterFacts{.name = "Crypt", .is_identity_crypt = true});
  sayings.Say("filter Own, identity", FilterFacts{.name = "Own", .is_identity_crypt = true});
}

TEST(FactFindings, AreThoseOfFiles) {
  Sayings sayings;
  SayFiles(sayings);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/files.txt", sayings.text()));
}

TEST(FactFindings, AreThoseOfValues) {
  Sayings sayings;
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{2147483647}, std::int64_t{2147483648},
        std::int64_t{-2147483648}, std::int64_t{-2147483649}}) {
    sayings.Say("integer " + std::to_string(value), IntegerFacts{value});
  }
  for (const auto& [name, value] :
       {std::pair("0", 0.0), std::pair("32767", 32767.0), std::pair("32767.001", 32767.001),
        std::pair("-32767", -32767.0), std::pair("-32767.001", -32767.001),
        std::pair("3.403e38", 3.403e38), std::pair("3.404e38", 3.404e38),
        std::pair("-3.403e38", -3.403e38), std::pair("-3.404e38", -3.404e38),
        std::pair("1.175e-38", 1.175e-38), std::pair("1.174e-38", 1.174e-38),
        std::pair("-1.175e-38", -1.175e-38), std::pair("-1.174e-38", -1.174e-38)}) {
    sayings.Say(std::string("real ") + name, RealFacts{value});
  }
  for (const std::size_t bytes : {0U, 32'767U, 32'768U, 65'535U, 65'536U}) {
    sayings.Say("string " + std::to_string(bytes), StringFacts{.bytes = bytes});
  }
  for (const std::size_t digits : {0U, 1U, 2U, 3U}) {
    sayings.Say("digits " + std::to_string(digits),
                StringFacts{.is_hex = true, .hex_characters = digits});
  }
  sayings.Say("odd digits", StringFacts{.is_hex = true, .has_only_hex_digits = false});
  sayings.Say("no digits",
              StringFacts{.is_hex = false, .hex_characters = 1, .has_only_hex_digits = false});
  for (const std::size_t bytes : {0U, 127U, 128U}) {
    sayings.Say("name " + std::to_string(bytes), NameFacts{bytes});
  }
  for (const std::size_t items : {0U, 8191U, 8192U}) {
    sayings.Say("array " + std::to_string(items), ArrayFacts{items});
  }
  for (const std::size_t entries : {0U, 4095U, 4096U}) {
    sayings.Say("dictionary " + std::to_string(entries), DictionaryFacts{entries});
  }
  sayings.Say("readable name", ReadableNameFacts{});
  sayings.Say("name of bytes", ReadableNameFacts{.is_utf8 = false});
  EXPECT_TRUE(IsAsExpected("pdfa/facts/values.txt", sayings.text()));
}

ProfileFacts ProfileOf(int version, const std::string& device_class, const std::string& space) {
  ProfileFacts profile;
  profile.is_readable = true;
  profile.major_version = version;
  device_class.copy(profile.device_class.data(), profile.device_class.size());
  space.copy(profile.color_space.data(), profile.color_space.size());
  return profile;
}

void SayProfile(Sayings& sayings, const std::string& what, const ProfileFacts& profile) {
  sayings.Say("output " + what, OutputProfileFacts{profile});
  sayings.Say("input " + what, InputProfileFacts{profile});
}

TEST(FactFindings, AreThoseOfColors) {
  Sayings sayings;
  for (const int version : {0, 2, 3, 4, 5}) {
    SayProfile(sayings, "version " + std::to_string(version), ProfileOf(version, "mntr", "RGB "));
  }
  for (const char* device_class : {"prtr", "mntr", "scnr", "spac", "link", "abst", "nmcl"}) {
    SayProfile(sayings, device_class, ProfileOf(2, device_class, "RGB "));
  }
  for (const char* space : {"RGB ", "CMYK", "GRAY", "Lab ", "XYZ ", "HSV "}) {
    SayProfile(sayings, space, ProfileOf(2, "mntr", space));
  }
  ProfileFacts broken = ProfileOf(2, "mntr", "RGB ");
  broken.is_readable = false;
  SayProfile(sayings, "broken", broken);
  sayings.Say("one profile", OutputIntentsFacts{});
  sayings.Say("profiles", OutputIntentsFacts{.have_one_profile = false});
  for (const char* subtype : {"GTS_PDFX", "GTS_PDFA1", ""}) {
    for (const bool refers : {false, true}) {
      sayings.Say(std::string("intent ") + subtype + (refers ? " refers" : ""),
                  OutputIntentFacts{.subtype = subtype, .has_profile_reference = refers});
    }
  }
  for (const auto& [name, kind] :
       {std::pair("gray", DeviceKind::kGray), std::pair("RGB", DeviceKind::kRgb),
        std::pair("CMYK", DeviceKind::kCmyk)}) {
    for (const char* output : {"", "GRAY", "RGB ", "CMYK"}) {
      sayings.Say(std::string(name) + " on " + output,
                  DeviceColorFacts{.kind = kind, .output_space = output});
    }
  }
  for (const char* space : {"GRAY", "RGB ", "Lab ", "CMYK", "HSV "}) {
    for (int components = 0; components <= 5; ++components) {
      sayings.Say(space + std::to_string(components),
                  ProfileComponentsFacts{.color_space = space, .components = components});
    }
  }
  for (const bool overprints : {false, true}) {
    for (const int mode : {0, 1, 2}) {
      sayings.Say("overprint " + std::to_string(overprints) + " mode " + std::to_string(mode),
                  IccCmykFacts{.overprints = overprints, .overprint_mode = mode});
    }
  }
  for (const std::size_t components : {1U, 8U, 9U, 32U, 33U}) {
    sayings.Say("DeviceN " + std::to_string(components), DeviceNFacts{.components = components});
  }
  sayings.Say("colorants", DeviceNFacts{.has_all_colorants = false});
  sayings.Say("separation", SeparationFacts{});
  sayings.Say("another separation", SeparationFacts{.is_as_before = false});
  EXPECT_TRUE(IsAsExpected("pdfa/facts/colors.txt", sayings.text()));
}

template <typename Change>
void SayState(Sayings& sayings, const std::string& what, const Change& change) {
  GraphicsStateFacts state;
  change(state);
  sayings.Say(what, state);
}

void SayStates(Sayings& sayings) {
  SayState(sayings, "state", [](GraphicsStateFacts&) {});
  SayState(sayings, "TR", [](GraphicsStateFacts& state) { state.has_transfer_function = true; });
  SayState(sayings, "HTP", [](GraphicsStateFacts& state) { state.has_halftone_phase = true; });
  for (const char* name : {"", "Default", "Identity", "None", "Normal", "Compatible", "Multiply"}) {
    SayState(sayings, std::string("TR2 ") + name,
             [&](GraphicsStateFacts& state) { state.newer_transfer = name; });
    SayState(sayings, std::string("SMask ") + name,
             [&](GraphicsStateFacts& state) { state.soft_mask = name; });
    SayState(sayings, std::string("BM ") + name,
             [&](GraphicsStateFacts& state) { state.blend_mode = name; });
  }
  for (const auto& [name, alpha] :
       {std::pair("0", 0.0), std::pair("1", 1.0), std::pair("0.9999995", 0.9999995),
        std::pair("1.0000005", 1.0000005), std::pair("0.999998", 0.999998),
        std::pair("1.000002", 1.000002)}) {
    SayState(sayings, std::string("CA ") + name,
             [&](GraphicsStateFacts& state) { state.stroke_alpha = alpha; });
    SayState(sayings, std::string("ca ") + name,
             [&](GraphicsStateFacts& state) { state.fill_alpha = alpha; });
  }
}

void SayHalftones(Sayings& sayings) {
  for (const std::int64_t type : {0, 1, 2, 3, 4, 5, 6, 10, 16}) {
    sayings.Say("halftone " + std::to_string(type),
                HalftoneFacts{.type = type, .colorant = std::nullopt});
  }
  sayings.Say("halftone", HalftoneFacts{.type = std::nullopt, .colorant = std::nullopt});
  sayings.Say("halftone with a name",
              HalftoneFacts{.type = 1, .has_name = true, .colorant = std::nullopt});
  for (const bool has_function : {false, true}) {
    const std::string end = has_function ? " with a function" : "";
    sayings.Say(
        "halftone of all" + end,
        HalftoneFacts{.type = 1, .colorant = std::nullopt, .has_transfer_function = has_function});
    for (const char* colorant : {"Default", "Cyan", "Magenta", "Yellow", "Black", "Gold", ""}) {
      sayings.Say(
          std::string("halftone of ") + colorant + end,
          HalftoneFacts{.type = 1, .colorant = colorant, .has_transfer_function = has_function});
    }
  }
}

TEST(FactFindings, AreThoseOfStates) {
  Sayings sayings;
  SayStates(sayings);
  SayHalftones(sayings);
  for (const char* mode :
       {"Normal", "Compatible", "Multiply", "Screen", "Overlay", "Darken", "Lighten", "ColorDodge",
        "ColorBurn", "HardLight", "SoftLight", "Difference", "Exclusion", "Hue", "Saturation",
        "Color", "Luminosity", "Odd", ""}) {
    sayings.Say(std::string("mode ") + mode, BlendModeFacts{mode});
  }
  for (const char* intent :
       {"RelativeColorimetric", "AbsoluteColorimetric", "Perceptual", "Saturation", "Auto", ""}) {
    sayings.Say(std::string("intent ") + intent, RenderingIntentFacts{intent});
  }
  sayings.Say("group", GroupFacts{});
  sayings.Say("transparency group", GroupFacts{.is_transparency = true});
  for (int bits = 0; bits < 8; ++bits) {
    sayings.Say("page " + std::to_string(bits),
                PageTransparencyFacts{.has_transparency = (bits & 1) != 0,
                                      .has_blending_space = (bits & 2) != 0,
                                      .has_output_intent = (bits & 4) != 0});
  }
  EXPECT_TRUE(IsAsExpected("pdfa/facts/states.txt", sayings.text()));
}

void SayImages(Sayings& sayings) {
  for (const std::int64_t bits : {0, 1, 2, 3, 4, 5, 7, 8, 9, 12, 15, 16, 17, 32}) {
    for (const bool is_mask : {false, true}) {
      sayings.Say((is_mask ? "mask " : "image ") + std::to_string(bits),
                  PaintedImageFacts{.is_mask = is_mask, .bits = bits});
    }
  }
  sayings.Say("image", PaintedImageFacts{.bits = std::nullopt});
  sayings.Say("mask", PaintedImageFacts{.is_mask = true, .bits = std::nullopt});
  sayings.Say("alternates", PaintedImageFacts{.has_alternates = true, .bits = std::nullopt});
  sayings.Say("image with OPI", PaintedImageFacts{.has_opi = true, .bits = std::nullopt});
  sayings.Say("interpolated", PaintedImageFacts{.is_interpolated = true, .bits = std::nullopt});
}

JpxFacts SoundJpx() {
  JpxFacts jpx;
  jpx.color_channels = 3;
  jpx.color_spaces = 1;
  jpx.method = 1;
  jpx.space = 16;
  jpx.bits = 8;
  return jpx;
}

template <typename Change>
void SayJpx(Sayings& sayings, const std::string& what, const Change& change) {
  JpxFacts jpx = SoundJpx();
  change(jpx);
  sayings.Say("JPX " + what, jpx);
  jpx.has_own_space = true;
  sayings.Say("JPX with a space of its own " + what, jpx);
}

void SayAllJpx(Sayings& sayings) {
  for (std::size_t i = 0; i <= 5; ++i) {
    const std::string number = std::to_string(i);
    SayJpx(sayings, "channels " + number, [&](JpxFacts& jpx) { jpx.color_channels = i; });
    SayJpx(sayings, "method " + number, [&](JpxFacts& jpx) { jpx.method = static_cast<int>(i); });
  }
  for (std::size_t spaces = 0; spaces <= 3; ++spaces) {
    for (std::size_t exact = 0; exact <= spaces; ++exact) {
      SayJpx(sayings, "spaces " + std::to_string(spaces) + " exact " + std::to_string(exact),
             [&](JpxFacts& jpx) {
               jpx.color_spaces = spaces;
               jpx.exact_color_spaces = exact;
             });
    }
  }
  for (const std::uint32_t space : {12U, 18U, 19U, 20U}) {
    SayJpx(sayings, "space " + std::to_string(space), [&](JpxFacts& jpx) { jpx.space = space; });
  }
  SayJpx(sayings, "no space", [](JpxFacts& jpx) { jpx.space.reset(); });
  SayJpx(sayings, "depths", [](JpxFacts& jpx) { jpx.has_equal_depths = false; });
  for (const int bits : {0, 1, 38, 39}) {
    SayJpx(sayings, "bits " + std::to_string(bits), [&](JpxFacts& jpx) { jpx.bits = bits; });
  }
}

TEST(FactFindings, AreThoseOfContent) {
  Sayings sayings;
  sayings.Say("operator", OperatorFacts{});
  sayings.Say("no operator", OperatorFacts{.is_defined = false});
  for (const std::size_t nesting : {1U, 28U, 29U}) {
    sayings.Say("saved " + std::to_string(nesting), SavedStateFacts{nesting});
  }
  sayings.Say("resources", ResourceNamesFacts{});
  sayings.Say("resources of others", ResourceNamesFacts{.are_its_own = false});
  for (const char* name : {"ASCIIHexDecode", "ASCII85Decode", "LZWDecode", "FlateDecode",
                           "RunLengthDecode", "CCITTFaxDecode", "DCTDecode", "AHx", "A85", "LZW",
                           "Fl", "RL", "CCF", "DCT", "JPXDecode", "JBIG2Decode", "Crypt", ""}) {
    sayings.Say(std::string("inline filter ") + name, InlineFilterFacts{name});
  }
  for (int bits = 0; bits < 8; ++bits) {
    const bool first = (bits & 1) != 0;
    const bool second = (bits & 2) != 0;
    const bool third = (bits & 4) != 0;
    sayings.Say(
        "object " + std::to_string(bits),
        PaintedObjectFacts{.is_postscript = first, .has_opi = second, .has_soft_mask = third});
    sayings.Say(
        "form " + std::to_string(bits),
        PaintedFormFacts{.has_postscript = first, .has_opi = second, .has_reference = third});
  }
  SayImages(sayings);
  SayAllJpx(sayings);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/content.txt", sayings.text()));
}

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

// Every one of the facts with the others being true.
template <typename Facts, std::size_t kCount>
void SayEach(Sayings& sayings, const std::string& what, bool Facts::*const (&members)[kCount]) {
  for (std::size_t bits = 0; bits < std::size_t{1} << kCount; ++bits) {
    Facts facts;
    std::string name = what;
    for (std::size_t i = 0; i < kCount; ++i) {
      facts.*members[i] = (bits >> i & 1) != 0;
      name += facts.*members[i] ? '1' : '0';
    }
    sayings.Say(name, facts);
  }
}

TEST(FactFindings, AreThoseOfFonts) {
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

TEST(FactFindings, AreThoseOfGlyphs) {
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

AnnotationFacts SoundAnnotation() {
  AnnotationFacts annotation;
  annotation.subtype = "Text";
  annotation.flags = 4;
  annotation.width = 10;
  annotation.height = 10;
  annotation.has_appearance = true;
  annotation.has_only_normal = true;
  annotation.normal = NormalAppearance::kStream;
  return annotation;
}

template <typename Change>
void SayAnnotation(Sayings& sayings, const std::string& what, const Change& change) {
  AnnotationFacts annotation = SoundAnnotation();
  change(annotation);
  sayings.Say("annotation " + what, annotation);
}

void SayAppearances(Sayings& sayings) {
  for (const char* subtype : {"Text", "Link", "Popup", "Widget"}) {
    for (int bits = 0; bits < 16; ++bits) {
      SayAnnotation(sayings, subtype + std::to_string(bits), [&](AnnotationFacts& annotation) {
        annotation.subtype = subtype;
        annotation.is_button = (bits & 1) != 0;
        annotation.normal = static_cast<NormalAppearance>(std::min(bits >> 1 & 3, 2));
        annotation.has_only_normal = annotation.normal != NormalAppearance::kNone;
        annotation.has_states = (bits & 8) != 0;
      });
    }
    SayAnnotation(sayings, std::string("without an appearance ") + subtype,
                  [&](AnnotationFacts& annotation) {
                    annotation.subtype = subtype;
                    annotation.has_appearance = false;
                    annotation.has_only_normal = false;
                  });
  }
}

TEST(FactFindings, AreThoseOfAnnotations) {
  Sayings sayings;
  for (const char* subtype :
       {"Text",        "Link",     "FreeText",  "Line",     "Square", "Circle",         "Highlight",
        "Underline",   "Squiggly", "StrikeOut", "Stamp",    "Ink",    "Popup",          "Widget",
        "PrinterMark", "TrapNet",  "Polygon",   "PolyLine", "Caret",  "FileAttachment", "Watermark",
        "Redact",      "Sound",    "Movie",     "Screen",   "3D",     "RichMedia",      ""}) {
    SayAnnotation(sayings, subtype,
                  [&](AnnotationFacts& annotation) { annotation.subtype = subtype; });
  }
  for (std::int64_t flags = 0; flags <= 1024; flags = flags == 0 ? 1 : 2 * flags) {
    for (const std::int64_t print : {0, 4}) {
      SayAnnotation(sayings, "flags " + std::to_string(flags | print),
                    [&](AnnotationFacts& annotation) { annotation.flags = flags | print; });
    }
  }
  SayAnnotation(sayings, "no flags", [](AnnotationFacts& annotation) { annotation.flags.reset(); });
  for (const double opacity : {0.0, 0.99, 1.0, 1.01}) {
    SayAnnotation(sayings, "opacity " + std::to_string(opacity),
                  [&](AnnotationFacts& annotation) { annotation.opacity = opacity; });
  }
  for (const bool is_rgb : {false, true}) {
    SayAnnotation(sayings, "colored " + std::to_string(is_rgb), [&](AnnotationFacts& annotation) {
      annotation.has_color = true;
      annotation.output_is_rgb = is_rgb;
    });
  }
  for (const auto& [width, height] : {std::pair(0, 0), std::pair(1, 0), std::pair(0, 1)}) {
    SayAnnotation(sayings, "of " + std::to_string(width) + " by " + std::to_string(height),
                  [&](AnnotationFacts& annotation) {
                    annotation.width = width;
                    annotation.height = height;
                    annotation.has_appearance = false;
                    annotation.has_only_normal = false;
                  });
  }
  SayAppearances(sayings);
  SayEach(sayings, "widget ",
          {&WidgetFacts::has_action, &WidgetFacts::has_additional_actions,
           &WidgetFacts::has_appearance});
  for (const char* type : {"GoTo", "GoToR", "GoToE", "Thread", "URI", "Named", "SubmitForm",
                           "Launch", "Sound", "Movie", "Hide", "ResetForm", "ImportData",
                           "JavaScript", "SetOCGState", "Rendition", "Trans", "GoTo3DView", ""}) {
    sayings.Say(std::string("action ") + type, ActionFacts{type});
  }
  for (const char* name : {"NextPage", "PrevPage", "FirstPage", "LastPage", "Print", ""}) {
    sayings.Say(std::string("named ") + name, NamedActionFacts{name});
  }
  EXPECT_TRUE(IsAsExpected("pdfa/facts/annotations.txt", sayings.text()));
}

TEST(FactFindings, AreThoseOfDocuments) {
  Sayings sayings;
  for (bool CatalogFacts::*const member :
       {&CatalogFacts::has_additional_actions, &CatalogFacts::has_layers,
        &CatalogFacts::has_embedded_files, &CatalogFacts::has_alternate_presentations,
        &CatalogFacts::needs_rendering, &CatalogFacts::has_requirements, &CatalogFacts::is_marked,
        &CatalogFacts::has_structure}) {
    CatalogFacts catalog;
    catalog.*member = true;
    sayings.Say("catalog", catalog);
  }
  SayEach(sayings, "page ",
          {&PageFacts::has_additional_actions, &PageFacts::has_presentation_steps});
  for (const double side : {2.99, 3.0, 14400.0, 14400.01}) {
    sayings.Say("wide " + std::to_string(side), PageBoxFacts{side, 100});
    sayings.Say("high " + std::to_string(side), PageBoxFacts{100, side});
  }
  SayEach(sayings, "layers ",
          {&LayerConfigurationFacts::has_name, &LayerConfigurationFacts::has_name_of_another,
           &LayerConfigurationFacts::lists_all, &LayerConfigurationFacts::has_automatic_states});
  SayEach(sayings, "form ", {&FormFacts::needs_appearances, &FormFacts::has_xfa});
  SayEach(sayings, "field ", {&FieldFacts::has_additional_actions});
  SayEach(sayings, "signature ", {&SignatureFacts::covers_document});
  for (const std::size_t signers : {0U, 1U, 2U}) {
    for (const bool has_certificate : {false, true}) {
      sayings.Say("signers " + std::to_string(signers) + (has_certificate ? " known" : ""),
                  SignatureMessageFacts{.has_certificate = has_certificate, .signers = signers});
    }
  }
  SayEach(sayings, "permissions ", {&PermissionsFacts::has_others});
  SayEach(sayings, "reference ",
          {&SignatureReferenceFacts::has_digest, &SignatureReferenceFacts::document_has_mdp});
  SayEach(
      sayings, "element ",
      {&StructureElementFacts::leads_to_standard_type, &StructureElementFacts::is_mapped_in_circle,
       &StructureElementFacts::is_remapped_standard_type});
  for (const char* tag :
       {"",        "a",  "de", "de-DE", "abcdefgh", "abcdefghi", "de-abcdefgh", "de-abcdefghi",
        "de-1901", "d1", "1",  "-",     "de-",      "-de",       "de--DE",      "de_DE",
        "DE-z9",   "@",  "[",  "`",     "{",        "aZ-Az",     "de-/",        "de-:"}) {
    sayings.Say(std::string("language ") + tag, LanguageFacts{tag});
  }
  SayEach(sayings, "file specification ",
          {&FileSpecificationFacts::embeds_file, &FileSpecificationFacts::has_names,
           &FileSpecificationFacts::has_relationship, &FileSpecificationFacts::is_associated});
  for (const char* type : {"", "text", "text/", "/plain", "text/plain", "a-_+.9/Z0z", "a b/c",
                           "a/b/c", "a@/b", "a/[", "`/a", "{/a", "a/,", "a/:"}) {
    sayings.Say(std::string("media type ") + type, EmbeddedFileFacts{.media_type = type});
  }
  sayings.Say("archive", EmbeddedFileFacts{.media_type = "a/b", .is_pdfa = true});
  EXPECT_TRUE(IsAsExpected("pdfa/facts/documents.txt", sayings.text()));
}

ClaimFacts ClaimOf(const char* part, const char* conformance) {
  ClaimFacts claim;
  claim.has_identification = true;
  claim.part = part;
  claim.conformance = conformance;
  return claim;
}

void SayClaims(Sayings& sayings) {
  for (const char* part : {"", "0", "1", "2", "3", "4"}) {
    sayings.Say(std::string("part ") + part, ClaimOf(part, "A"));
  }
  for (const char* part : {"1", "2", "3"}) {
    for (const char* conformance : {"", "A", "B", "U", "C", "a", "AB"}) {
      sayings.Say(part + std::string(conformance), ClaimOf(part, conformance));
    }
    for (bool ClaimFacts::*const member :
         {&ClaimFacts::has_identification, &ClaimFacts::part_has_prefix,
          &ClaimFacts::conformance_has_prefix, &ClaimFacts::amendment_has_prefix,
          &ClaimFacts::corrigendum_has_prefix}) {
      ClaimFacts claim = ClaimOf(part, "A");
      claim.*member = false;
      sayings.Say(std::string("claim of part ") + part, claim);
    }
  }
}

void SayExtensions(Sayings& sayings) {
  for (const auto& [part_name, part] : {std::pair("schema", XmpExtensionPart::kSchema),
                                        std::pair("property", XmpExtensionPart::kProperty),
                                        std::pair("type", XmpExtensionPart::kValueType),
                                        std::pair("field", XmpExtensionPart::kField)}) {
    for (const char* name : {"schema", "namespaceURI", "prefix", "property", "valueType", "name",
                             "category", "description", "type", "field", "other"}) {
      for (int bits = 0; bits < 4; ++bits) {
        sayings.Say(std::string(part_name) + "." + name + std::to_string(bits),
                    ExtensionEntryFacts{.part = part,
                                        .name = name,
                                        .is_there = (bits & 1) != 0,
                                        .is_right = (bits & 2) != 0});
      }
    }
  }
}

TEST(FactFindings, AreThoseOfMetadata) {
  Sayings sayings;
  SayEach(sayings, "metadata ",
          {&DocumentMetadataFacts::has_stream, &DocumentMetadataFacts::has_filter});
  SayEach(sayings, "packet ",
          {&PacketFacts::has_bytes, &PacketFacts::has_encoding, &PacketFacts::is_sound,
           &PacketFacts::is_utf8});
  SayEach(sayings, "property ", {&PropertyFacts::is_defined, &PropertyFacts::has_right_type});
  SayEach(sayings, "schemas ", {&ExtensionsFacts::is_bag, &ExtensionsFacts::has_right_prefix});
  SayEach(sayings, "extension ", {&ExtensionFacts::has_other_fields});
  for (bool InformationFacts::*const member :
       {&InformationFacts::creation_date_agrees, &InformationFacts::title_agrees,
        &InformationFacts::author_agrees, &InformationFacts::subject_agrees,
        &InformationFacts::keywords_agree, &InformationFacts::creator_agrees,
        &InformationFacts::producer_agrees, &InformationFacts::modification_date_agrees}) {
    InformationFacts information;
    information.*member = false;
    sayings.Say("information", information);
  }
  SayClaims(sayings);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/metadata.txt", sayings.text()));
  Sayings of_extensions;
  SayExtensions(of_extensions);
  EXPECT_TRUE(IsAsExpected("pdfa/facts/extensions.txt", of_extensions.text()));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
