#include "engines/pdfa/convert/fonts/PictureEncodings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TarnixTools::engines::pdfa {

namespace {

// From 0x20, and from 0xA0 on; a blank where there is nothing.
constexpr std::u32string_view kSymbolLow =
    U" !∀#∃%&∋()∗+,−./"
    U"0123456789:;<=>?≅ΑΒΧΔΕΦΓΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλμνοπθρστυϖωξψζ{|}∼";
constexpr std::u32string_view kSymbolHigh =
    U"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…⏐⎯↵ℵℑℜ℘⊗⊕∅∩∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓◊〈®©™∑⎛⎜⎝⎡⎢⎣⎧⎨⎩⎪ "
    U"〉∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭";

// Where ZapfDingbats does not follow the block of dingbats.
constexpr std::array<std::pair<std::uint8_t, char32_t>, 19> kDingbats = {{
    {0x20, U' '}, {0x25, U'☎'}, {0x2A, U'☛'}, {0x2B, U'☞'}, {0x48, U'★'},
    {0x6C, U'●'}, {0x6E, U'■'}, {0x73, U'▲'}, {0x74, U'▼'}, {0x75, U'◆'},
    {0x77, U'◗'}, {0xA8, U'♣'}, {0xA9, U'♦'}, {0xAA, U'♥'}, {0xAB, U'♠'},
    {0xD5, U'→'}, {0xD6, U'↔'}, {0xD7, U'↕'}, {0xF0, 0},
}};

char32_t SymbolOf(std::uint8_t code) {
  if (code >= 0x20 && code - 0x20U < kSymbolLow.size()) {
    return kSymbolLow[code - 0x20U];
  }
  return code >= 0xA0 && code - 0xA0U < kSymbolHigh.size() ? kSymbolHigh[code - 0xA0U] : 0;
}

char32_t DingbatOf(std::uint8_t code) {
  const auto* const found = std::find_if(kDingbats.begin(), kDingbats.end(),
                                         [code](const auto& row) { return row.first == code; });
  if (found != kDingbats.end()) {
    return found->second;
  }
  if (code >= 0x21 && code <= 0x7E) {
    return 0x2701 + (code - 0x21U);
  }
  if (code >= 0xAC && code <= 0xB5) {
    return 0x2460 + (code - 0xACU);
  }
  return code >= 0xA1 && code <= 0xFE ? 0x2761 + (code - 0xA1U) : 0;
}

bool IsSymbol(std::string_view font_name) {
  return font_name.ends_with("Symbol") || font_name.ends_with("SymbolMT");
}

bool IsDingbats(std::string_view font_name) {
  return font_name.ends_with("ZapfDingbats") || font_name.ends_with("Dingbats");
}

}  // namespace

bool HasPictures(std::string_view font_name) {
  return IsSymbol(font_name) || IsDingbats(font_name);
}

char32_t PictureOf(std::string_view font_name, std::uint8_t code) {
  if (IsSymbol(font_name)) {
    return SymbolOf(code);
  }
  return IsDingbats(font_name) ? DingbatOf(code) : 0;
}

}  // namespace TarnixTools::engines::pdfa
