#include "engines/pdfa/convert/annotations/AppearanceFonts.h"

#include <algorithm>
#include <utility>

#include "engines/pdfa/convert/fonts/SubstituteFace.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "pdf/syntax/HexText.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kMostFaces = 4;         // of one name, for text of several scripts
constexpr std::size_t kMostNames = 100;       // the others are shown in the first one
constexpr std::size_t kMostLookedAt = 1'000;  // characters that a face is looked for by
constexpr double kAnyWidth = -1;

}  // namespace

AppearanceFont::AppearanceFont(Conversion& conversion, std::unique_ptr<fonts::FontFace> face,
                               std::uint32_t number)
    : face_(std::move(face)), font_(conversion, *face_, {.code_bytes = 2}), number_(number) {}

std::uint32_t AppearanceFont::GlyphOf(char32_t character) const {
  const std::uint32_t glyph = face_->GlyphOf(character);
  return glyph != 0 ? glyph : face_->GlyphOf(U' ');
}

bool AppearanceFont::HasAll(std::u32string_view text) const {
  return std::all_of(text.begin(), text.end(),
                     [this](char32_t character) { return face_->GlyphOf(character) != 0; });
}

double AppearanceFont::WidthOf(std::u32string_view text) const {
  double width = 0;
  for (const char32_t character : text) {
    width += InEms(face_->Advance(GlyphOf(character)));
  }
  return width;
}

// Codes are those of glyphs.
std::string AppearanceFont::Shown(std::u32string_view text) {
  std::string codes = "<";
  for (const char32_t character : text) {
    const std::uint32_t glyph = GlyphOf(character);
    font_.Add(glyph, glyph, kAnyWidth, std::u32string(1, character));
    pdf::AppendHex(codes, glyph, 4);
  }
  return codes + ">";
}

AppearanceFont* AppearanceFonts::Find(const std::string& name, std::u32string_view text) {
  const bool is_known = fonts_.contains(name) || fonts_.size() < kMostNames;
  auto& known = is_known ? fonts_[name] : fonts_.begin()->second;
  for (const auto& font : known) {
    if (font->HasAll(text) || known.size() == kMostFaces) {
      return font.get();
    }
  }
  FaceWish wish{.name = name, .language = {}, .characters = {}};
  for (const char32_t character : text.substr(0, kMostLookedAt)) {
    wish.characters.emplace_back(character, kAnyWidth);
  }
  try {
    if (auto face = FindSubstitute(wish)) {
      const std::uint32_t number = conversion_->rewriter.Add(pdf::ObjectChange::Value("null"));
      known.push_back(std::make_unique<AppearanceFont>(*conversion_, std::move(face), number));
      return known.back().get();
    }
  } catch (const fonts::LibraryMissing&) {
    // There is no way to embed a font: nothing is drawn, which is told.
  }
  return known.empty() ? nullptr : known.front().get();
}

void AppearanceFonts::Write() {
  for (const auto& [name, known] : fonts_) {
    for (const auto& font : known) {
      if (!font->Write()) {
        conversion_->report.Blocking("font " + name + " cannot be embedded");
      }
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
