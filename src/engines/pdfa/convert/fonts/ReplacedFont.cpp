#include "engines/pdfa/convert/fonts/ReplacedFont.h"

#include <memory>
#include <string>
#include <utility>

#include "engines/pdfa/convert/fonts/ComposedFont.h"
#include "engines/pdfa/convert/fonts/FontTexts.h"
#include "engines/pdfa/convert/fonts/SubstituteFace.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontFace;
using pdf::Arena;
using pdf::Object;

namespace {

// Bits of a descriptor's /Flags (ISO 32000-2, table 121).
constexpr std::int64_t kFixedPitch = 1 << 0;
constexpr std::int64_t kSerif = 1 << 1;
constexpr std::int64_t kItalic = 1 << 6;
constexpr std::int64_t kForceBold = 1 << 18;

constexpr double kAnyWidth = -1;
constexpr std::uint32_t kMaxCode = 0xFFFF;

// Identifiers of the characters that all collections of Adobe begin with: those of ASCII.
std::uint32_t CollectionCidOf(std::uint32_t character) {
  return character >= 0x20 && character <= 0x7E ? character - 0x1F : kMaxCode;
}

const char* LanguageOf(const Object& ordering) {
  if (ordering.Text() == "GB1") {
    return "zh-cn";
  }
  if (ordering.Text() == "CNS1") {
    return "zh-tw";
  }
  if (ordering.Text() == "Japan1") {
    return "ja";
  }
  return ordering.Text() == "Korea1" || ordering.Text() == "KR" ? "ko" : "";
}

class Replacement {
 public:
  Replacement(Conversion& conversion, const FontUse& use)
      : conversion_(&conversion),
        use_(&use),
        font_(use.font.get()),
        texts_(conversion.document, *font_) {}

  bool Make() {
    ReadFont();
    face_ = FindSubstitute(Wish());
    if (face_ == nullptr) {
      return false;
    }
    ComposedFont made(*conversion_, *face_,
                      {.code_bytes = code_bytes_, .is_vertical = is_vertical_});
    for (const std::uint32_t code : use_->codes) {
      AddCode(code, made);
    }
    return made.Write(font_->number());
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  Object Get(const Object& dictionary, std::string_view key) {
    return document().Resolve(dictionary.Get(key), arena_);
  }

  void ReadFont() {
    dictionary_ = document().Load({font_->number(), 0}, arena_);
    descendant_ = dictionary_;
    if (font_->is_composite()) {
      const auto descendants = Get(dictionary_, "DescendantFonts").Items();
      descendant_ = descendants.empty() ? Object() : document().Resolve(descendants[0], arena_);
      const std::string_view encoding = Get(dictionary_, "Encoding").Text();
      is_vertical_ = encoding.ends_with("-V");
      code_bytes_ = 2;
    }
  }

  FaceWish Wish() {
    const Object descriptor = Get(descendant_, "FontDescriptor");
    const std::int64_t flags = Get(descriptor, "Flags").IntegerOr(0);
    FaceWish wish{.name = font_->name(),
                  .is_fixed_pitch = (flags & kFixedPitch) != 0,
                  .is_serif = (flags & kSerif) != 0,
                  .is_bold = (flags & kForceBold) != 0,
                  .is_italic = (flags & kItalic) != 0,
                  .language = LanguageOf(Get(Get(descendant_, "CIDSystemInfo"), "Ordering")),
                  .characters = {}};
    for (const std::uint32_t code : use_->codes) {
      if (const std::u32string text = texts_.TextOf(code); !text.empty()) {
        wish.characters.emplace_back(text.front(), WidthOf(code));
      }
    }
    return wish;
  }

  // As the font says; below 0 where it says nothing.
  double WidthOf(std::uint32_t code) const {
    if (!font_->is_composite()) {
      return font_->WidthOf(static_cast<std::uint8_t>(code))
          .value_or(font_->descriptor().missing_width.value_or(kAnyWidth));
    }
    return font_->WidthOfCid(font_->has_unicode_codes() ? CollectionCidOf(code)
                                                        : font_->CidOf(code));
  }

  // Codes of a font that goes by the numbers of its glyphs mean, where nothing else is said, those
  // of a face that is laid out alike.
  std::uint32_t GlyphOf(std::uint32_t code, const std::u32string& text) const {
    if (!text.empty()) {
      return face_->GlyphOf(text.front());
    }
    return font_->is_composite() && !font_->has_unicode_codes() && code < face_->glyph_count()
               ? code
               : 0;
  }

  void AddCode(std::uint32_t code, ComposedFont& made) {
    const std::u32string text = texts_.TextOf(code);
    std::uint32_t glyph = GlyphOf(code, text);
    if (glyph == 0) {
      glyph = face_->GlyphOf(U' ');
      conversion_->report.Changed("characters that no installed font has into blanks");
    }
    made.Add(code, glyph, WidthOf(code), text);
  }

  Conversion* conversion_;
  const FontUse* use_;
  const fonts::DocumentFont* font_;
  FontTexts texts_;
  Arena arena_;
  Object dictionary_;
  Object descendant_;  // the font itself where it is no composite one
  bool is_vertical_ = false;
  int code_bytes_ = 1;
  std::unique_ptr<FontFace> face_;
};

}  // namespace

bool ReplaceFont(Conversion& conversion, const FontUse& use) {
  return Replacement(conversion, use).Make();
}

}  // namespace TarnixTools::engines::pdfa
