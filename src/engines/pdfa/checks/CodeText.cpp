#include "engines/pdfa/checks/CodeText.h"

#include <vector>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/CompositeFontCheck.h"
#include "engines/support/fonts/BaseEncodings.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/PredefinedMaps.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontKind;
using pdf::Object;

namespace {

constexpr std::uint32_t kCodes = 256;

}  // namespace

CodeText::CodeText(CheckedDocument& checked, const CheckedFont& font, fonts::FontProgram* program)
    : font_(&font), program_(program) {
  if (!Contains(kUnicodeLevels, checked.level())) {
    return;
  }
  ReadMap(checked);
  if (font.descendant.IsDictionary()) {
    const fonts::CharacterCollection collection = CollectionOf(checked, font.descendant);
    pdf::Arena arena;
    const Object encoding = checked.Get(font.dictionary, "Encoding", arena);
    has_known_collection_ = fonts::IsKnownCollection(collection.registry.value_or(""),
                                                     collection.ordering.value_or(""));
    has_identity_map_ = encoding.IsName() && fonts::IsIdentityMap(encoding.Text());
  }
}

void CodeText::ReadMap(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Followed found = checked.document().Follow(font_->dictionary.Get("ToUnicode"), arena);
  const auto stream = found.number == 0 ? std::nullopt
                                        : checked.document().TryDecodeStream(
                                              found.number, limits::kMaxFontMapBytes);
  if (stream) {
    map_ = fonts::CMapFile::Read(stream->data);
    if (!map_->has_right_counts()) {
      map_.reset();
    }
  }
}

std::optional<std::u16string> CodeText::Of(std::uint32_t code) {
  if (auto text = map_ ? map_->TextOf(code) : std::nullopt) {
    return text;
  }
  if (font_->descendant.IsDictionary() || code >= kCodes) {
    return std::nullopt;
  }
  if (!characters_) {
    ReadNames();
  }
  const auto found = characters_->find(NameOf(static_cast<std::uint8_t>(code)));
  if (found == characters_->end() || found->second.empty()) {
    return std::nullopt;
  }
  const Utf16Units units = EncodeUtf16(found->second.front());
  return std::u16string(units.begin(), units.end());
}

// A suffix makes a name one that the Adobe Glyph List does not have.
void CodeText::ReadNames() {
  std::vector<std::string> names;
  for (const auto& [code, use] : font_->shown.codes) {
    const std::string name = code < kCodes ? NameOf(static_cast<std::uint8_t>(code)) : "";
    if (name.find('.') == std::string::npos) {
      names.push_back(name);
    }
  }
  characters_ = fonts::CharactersOfNames({names.begin(), names.end()});
}

// Where the encoding does not say, that of the program counts, or the standard one.
std::string CodeText::NameOf(std::uint8_t code) {
  const std::string_view name = font_->font.GlyphNameOf(code);
  const FontKind kind = font_->font.kind();
  if (!name.empty() || kind == FontKind::kType3 || font_->font.has_base_encoding()) {
    return std::string(name);
  }
  if (program_ == nullptr) {
    return std::string(fonts::GlyphNameIn(fonts::BaseEncoding::kStandard, code));
  }
  if (kind == FontKind::kTrueType) {
    return {};
  }
  fonts::GlyphFinder finder(font_->font, *program_);
  return program_->NameOf(finder.StandardGlyphOf(code));
}

}  // namespace TarnixTools::engines::pdfa
