#include "engines/support/fonts/FontText.h"

#include <algorithm>
#include <vector>

#include "engines/support/fonts/BaseEncodings.h"
#include "engines/support/fonts/CollectionText.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::fonts {

namespace {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

constexpr int kCodes = 256;
constexpr int kFirstCharacter = 0x20;  // codes below it are no characters in any base encoding
constexpr std::size_t kMaxToUnicodeBytes = std::size_t{8} << 20;
constexpr std::size_t kMaxCharacters = 65'536;

// Nothing, or what writers put where they know nothing.
bool IsPlaceholder(std::u32string_view text) {
  return std::all_of(text.begin(), text.end(), [](char32_t c) {
    return c == 0 || c == 0xFEFF || c == 0xFFFE || c == 0xFFFD;
  });
}

// Whether the name is that of the glyph's number in a font: "g18".
bool IsNumbered(std::string_view name) {
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  return name.size() > 1 && !is_digit(name[0]) &&
         std::all_of(name.begin() + 1, name.end(), is_digit);
}

std::uint8_t Byte(std::uint32_t code) {
  return static_cast<std::uint8_t>(code);
}

std::optional<CMapFile> ReadToUnicode(Document& document, const Object& reference) {
  Arena arena;
  const Object font = document.Resolve(reference, arena);
  const pdf::Followed found = document.Follow(font.Get("ToUnicode"), arena);
  if (found.number == 0 || !found.value.IsDictionary()) {
    return std::nullopt;
  }
  const auto stream = document.TryDecodeStream(found.number, kMaxToUnicodeBytes);
  return stream ? std::optional(CMapFile::Read(stream->data)) : std::nullopt;
}

}  // namespace

FontText::FontText(Document& document, const Object& reference, const DocumentFont& font,
                   FontProgram* program)
    : font_(&font), program_(program), to_unicode_(ReadToUnicode(document, reference)) {
  if (!font.is_composite()) {
    ReadNames();
  }
}

const std::u32string& FontText::TextOf(std::uint32_t code) {
  const auto [place, is_new] = texts_.try_emplace(code);
  if (is_new) {
    place->second = Find(code);
  }
  return place->second;
}

// The program is asked last: its maps are long.
std::u32string FontText::Find(std::uint32_t code) {
  std::u32string text = OfToUnicode(code);
  if (IsPlaceholder(text)) {
    text = OfName(code, font_->GlyphNameOf(Byte(code)));
  }
  if (IsPlaceholder(text)) {
    text = OfUnicodeCode(code);
  }
  if (IsPlaceholder(text)) {
    text = OfCollection(code);
  }
  if (IsPlaceholder(text)) {
    text = OfProgram(code);
  }
  const bool is_usual = IsPlaceholder(text) && !has_own_codes_;
  return is_usual ? OfName(code, UsualNameOf(Byte(code))) : text;
}

std::u32string FontText::OfToUnicode(std::uint32_t code) const {
  const auto units = to_unicode_ ? to_unicode_->TextOf(code) : std::nullopt;
  return units ? WideToUtf32(std::wstring(units->begin(), units->end())) : std::u32string();
}

std::u32string FontText::OfName(std::uint32_t code, std::string_view name) const {
  if (font_->is_composite() || code >= kCodes) {
    return {};
  }
  const auto found = characters_of_names_.find(std::string(name));
  return found == characters_of_names_.end() ? std::u32string()
                                             : std::u32string(1, found->second.front());
}

std::u32string FontText::OfUnicodeCode(std::uint32_t code) const {
  return font_->has_unicode_codes() ? std::u32string(1, code) : std::u32string();
}

std::u32string FontText::OfCollection(std::uint32_t code) const {
  const CollectionText* collection =
      font_->codes() == nullptr ? nullptr : CollectionText::Of(font_->ordering());
  return collection == nullptr ? std::u32string() : collection->TextOf(font_->CidOf(code));
}

// Without an encoding, Type 1 fonts have the standard one, and TrueType fonts that of Windows.
std::string_view FontText::UsualNameOf(std::uint8_t code) const {
  const bool is_true_type = font_->kind() == FontKind::kTrueType;
  return font_->kind() == FontKind::kType3
             ? std::string_view()
             : GlyphNameIn(is_true_type ? BaseEncoding::kWinAnsi : BaseEncoding::kStandard, code);
}

std::u32string FontText::OfProgram(std::uint32_t code) {
  if (program_ == nullptr) {
    return {};
  }
  ReadCharacters();
  const std::uint32_t glyph = glyphs_->StandardGlyphOf(code);
  const auto found = characters_.find(glyph);
  return found == characters_.end() ? std::u32string() : std::u32string(1, found->second);
}

void FontText::ReadNames() {
  std::vector<std::string_view> names;
  for (int code = 0; code < kCodes; ++code) {
    const auto byte = static_cast<std::uint8_t>(code);
    for (const std::string_view name : {font_->GlyphNameOf(byte), UsualNameOf(byte)}) {
      if (!name.empty()) {
        names.push_back(name);
      }
    }
  }
  characters_of_names_ = CharactersOfNames(names);
  for (int code = 0; code < kFirstCharacter; ++code) {
    const std::string_view name = font_->GlyphNameOf(static_cast<std::uint8_t>(code));
    has_own_codes_ = has_own_codes_ || (IsNumbered(name) && OfName(code, name).empty());
  }
}

// The first character of each glyph, from the maps that tell characters.
void FontText::ReadCharacters() {
  if (has_characters_) {
    return;
  }
  has_characters_ = true;
  glyphs_.emplace(*font_, *program_);
  for (std::size_t map = 0; map < program_->maps().size(); ++map) {
    if (!program_->maps()[map].is_unicode()) {
      continue;
    }
    for (const CodeGlyph& pair : program_->Mappings(map, kMaxCharacters)) {
      characters_.try_emplace(pair.glyph, pair.code);
    }
  }
}

}  // namespace TarnixTools::engines::fonts
