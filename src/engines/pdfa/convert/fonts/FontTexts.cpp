#include "engines/pdfa/convert/fonts/FontTexts.h"

#include <string>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/fonts/PictureEncodings.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::pdfa {

using fonts::BaseEncoding;
using pdf::Arena;
using pdf::Object;

namespace {

constexpr unsigned kCodes = 256;

}  // namespace

FontTexts::FontTexts(pdf::Document& document, const fonts::DocumentFont& font) : font_(&font) {
  Arena arena;
  const Object dictionary = document.Load({font.number(), 0}, arena);
  const pdf::Followed map = document.Follow(dictionary.Get("ToUnicode"), arena);
  if (map.number != 0) {
    if (const auto stream = document.TryDecodeStream(map.number, limits::kMaxFontMapBytes)) {
      to_unicode_ = fonts::CMapFile::Read(stream->data);
    }
  }
  std::vector<std::string_view> names;
  for (unsigned code = 0; code < kCodes && !font.is_composite(); ++code) {
    names.push_back(GlyphNameOf(static_cast<std::uint8_t>(code)));
  }
  characters_ = fonts::CharactersOfNames(names);
}

std::u32string FontTexts::SaidTextOf(std::uint32_t code) const {
  const auto text = to_unicode_ ? to_unicode_->TextOf(code) : std::nullopt;
  return text ? WideToUtf32(std::wstring(text->begin(), text->end())) : std::u32string();
}

std::u32string FontTexts::TextOf(std::uint32_t code) const {
  std::u32string text = SaidTextOf(code);
  if (text.empty() && font_->has_unicode_codes()) {
    text = std::u32string(1, code);
  } else if (text.empty() && !font_->is_composite() && code < kCodes) {
    text = TextOfSimple(static_cast<std::uint8_t>(code));
  }
  return text;
}

std::u32string FontTexts::TextOfSimple(std::uint8_t code) const {
  const std::string_view name = GlyphNameOf(code);
  const auto found = characters_.find(std::string(name));
  if (found != characters_.end() && !found->second.empty()) {
    return std::u32string(1, found->second.front());
  }
  const char32_t picture = name.empty() ? PictureOf(font_->name(), code) : 0;
  return picture != 0 ? std::u32string(1, picture) : std::u32string();
}

// Without an encoding, Type 1 fonts of text have the standard one, and TrueType fonts that of
// Windows.
std::string_view FontTexts::GlyphNameOf(std::uint8_t code) const {
  const std::string_view name = font_->GlyphNameOf(code);
  if (!name.empty() || font_->has_base_encoding() || HasPictures(font_->name())) {
    return name;
  }
  return fonts::GlyphNameIn(font_->kind() == fonts::FontKind::kTrueType ? BaseEncoding::kWinAnsi
                                                                        : BaseEncoding::kStandard,
                            code);
}

}  // namespace TarnixTools::engines::pdfa
