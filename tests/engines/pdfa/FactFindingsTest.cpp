// What the rules of every level say of facts, on both sides of every bound: of files, values, colours and content.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/Sayings.h"
#include "engines/pdfa/rules/ColorFacts.h"
#include "engines/pdfa/rules/ContentFacts.h"
#include "engines/pdfa/rules/FileFacts.h"
#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/pdfa/rules/ProfileFacts.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;

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
  for (const auto& opacity : {std::pair("0", 0.0), std::pair("1", 1.0),
                              std::pair("0.9999995", 0.9999995), std::pair("1.0000005", 1.0000005),
                              std::pair("0.999998", 0.999998), std::pair("1.000002", 1.000002)}) {
    SayState(sayings, std::string("CA ") + opacity.first,
             [&](GraphicsStateFacts& state) { state.stroke_alpha = opacity.second; });
    SayState(sayings, std::string("ca ") + opacity.first,
             [&](GraphicsStateFacts& state) { state.fill_alpha = opacity.second; });
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

}  // namespace
}  // namespace TarnixTools::engines::pdfa
