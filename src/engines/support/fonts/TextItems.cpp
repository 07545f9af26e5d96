#include "engines/support/fonts/TextItems.h"

#include <algorithm>
#include <string>

#include "engines/support/fonts/FontLibraries.h"

namespace TarnixTools::engines::fonts {

namespace {

class Characters {
 public:
  Characters() : hb_(&HarfBuzz::Get()), funcs_(hb_->hb_unicode_funcs_get_default()) {}

  hb_script_t ScriptOf(char32_t c) const { return hb_->hb_unicode_script(funcs_, c); }

  bool IsMark(char32_t c) const {
    const hb_unicode_general_category_t category = hb_->hb_unicode_general_category(funcs_, c);
    return category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK;
  }

  bool IsControl(char32_t c) const {
    const hb_unicode_general_category_t category = hb_->hb_unicode_general_category(funcs_, c);
    return category == HB_UNICODE_GENERAL_CATEGORY_CONTROL ||
           category == HB_UNICODE_GENERAL_CATEGORY_LINE_SEPARATOR ||
           category == HB_UNICODE_GENERAL_CATEGORY_PARAGRAPH_SEPARATOR;
  }

  bool IsSpace(char32_t c) const {
    return hb_->hb_unicode_general_category(funcs_, c) ==
           HB_UNICODE_GENERAL_CATEGORY_SPACE_SEPARATOR;
  }

  // Joiners, directions and selectors, which are seen in what they do to others only.
  bool IsInvisible(char32_t c) const {
    return hb_->hb_unicode_general_category(funcs_, c) == HB_UNICODE_GENERAL_CATEGORY_FORMAT ||
           IsVariationSelector(c) || c == 0x34F || c == 0x115F || c == 0x1160 || c == 0x3164;
  }

  static bool IsVariationSelector(char32_t c) {
    return (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF) ||
           (c >= 0x180B && c <= 0x180D);
  }

  // Whether a character belongs to what stands before it.
  bool IsExtension(char32_t c) const {
    return IsMark(c) || IsVariationSelector(c) || c == 0x200C || c == 0x200D ||
           (c >= 0x1F3FB && c <= 0x1F3FF);
  }

  bool Compose(char32_t a, char32_t b, char32_t& composed) const {
    hb_codepoint_t ab = 0;
    const bool is_known = hb_->hb_unicode_compose(funcs_, a, b, &ab) != 0;
    composed = ab;
    return is_known;
  }

  bool Decompose(char32_t c, char32_t& a, char32_t& b) const {
    hb_codepoint_t first = 0;
    hb_codepoint_t second = 0;
    const bool is_known = hb_->hb_unicode_decompose(funcs_, c, &first, &second) != 0;
    a = first;
    b = second;
    return is_known;
  }

 private:
  const HarfBuzz* hb_;
  hb_unicode_funcs_t* funcs_;
};

// The language for which the ideographs of a text are meant, as far as its other letters tell.
std::string LanguageOf(std::u32string_view text, const Characters& characters) {
  bool has_ideographs = false;
  for (const char32_t c : text) {
    if (c < 0x1100) {
      continue;
    }
    switch (characters.ScriptOf(c)) {
      case HB_SCRIPT_HIRAGANA:
      case HB_SCRIPT_KATAKANA:
        return "ja";
      case HB_SCRIPT_HANGUL:
        return "ko";
      case HB_SCRIPT_BOPOMOFO:
        return "zh-tw";
      case HB_SCRIPT_HAN:
        has_ideographs = true;
        break;
      default:
        break;
    }
  }
  return has_ideographs ? "zh-cn" : "";
}

class Cutter {
 public:
  Cutter(FaceStore& faces, const InstalledFace& face, std::u32string_view text,
         const std::vector<std::uint8_t>& levels)
      : faces_(&faces), first_choice_(&face), text_(text), levels_(&levels) {}

  TextItems Cut() {
    FindScripts();
    for (std::size_t first = 0; first < text_.size();) {
      std::size_t end = first + 1;
      while (end < text_.size() && characters_.IsExtension(text_[end])) {
        ++end;
      }
      Place(first, end);
      first = end;
    }
    return std::move(result_);
  }

 private:
  // Characters of no script go with those before them, or else with those that follow.
  void FindScripts() {
    scripts_.resize(text_.size());
    hb_script_t script = HB_SCRIPT_COMMON;
    for (std::size_t i = 0; i < text_.size(); ++i) {
      const hb_script_t own = characters_.ScriptOf(text_[i]);
      if (IsReal(own)) {
        if (!IsReal(script)) {
          std::fill_n(scripts_.begin(), i, own);
        }
        script = own;
      }
      scripts_[i] = script;
    }
  }

  static bool IsReal(hb_script_t script) {
    return script != HB_SCRIPT_COMMON && script != HB_SCRIPT_INHERITED &&
           script != HB_SCRIPT_UNKNOWN;
  }

  // A character with the marks on it: together where one face has them all.
  void Place(std::size_t first, std::size_t end) {
    // A space goes with what stands before it, so that it does not bring in another font.
    if (end - first == 1 && characters_.IsSpace(text_[first]) && !result_.items.empty() &&
        result_.items.back().face->GlyphOf(text_[first]) != 0) {
      Add(result_.items.back().face, first, end);
      return;
    }
    if (FontFace* face = FaceFor(first, end)) {
      Add(face, first, end);
      return;
    }
    for (std::size_t i = first; i < end; ++i) {
      if (FontFace* face = FaceFor(i, i + 1)) {
        Add(face, i, i + 1);
      } else if (result_.missing == 0) {
        result_.missing = text_[i];
      }
    }
  }

  void Add(FontFace* face, std::size_t first, std::size_t end) {
    const std::uint8_t level = (*levels_)[first];
    auto& items = result_.items;
    if (!items.empty() && items.back().face == face && items.back().script == scripts_[first] &&
        items.back().level == level && items.back().first + items.back().count == first) {
      items.back().count += end - first;
    } else {
      items.push_back({face, scripts_[first], level, first, end - first});
    }
  }

  FontFace* FaceFor(std::size_t first, std::size_t end) {
    FontFace* chosen = faces_->Load(*first_choice_);
    if (chosen != nullptr && Covers(*chosen, first, end)) {
      return chosen;
    }
    // The face of what stands before, so that words are not torn apart.
    if (last_substitute_ != nullptr && last_script_ == scripts_[first] &&
        Covers(*last_substitute_, first, end)) {
      return last_substitute_;
    }
    if (!has_language_) {
      language_ = LanguageOf(text_, characters_);
      has_language_ = true;
    }
    const FontCatalog& catalog = FontCatalog::Get();
    for (const InstalledFace* candidate : faces_->Substitutes(*first_choice_, language_)) {
      if (!HasFirst(catalog, *candidate, first, end)) {
        continue;
      }
      FontFace* face = faces_->Load(*candidate);
      if (face != nullptr && face->embedding_right() != EmbeddingRight::kNone &&
          Covers(*face, first, end)) {
        last_substitute_ = face;
        last_script_ = scripts_[first];
        return face;
      }
    }
    return nullptr;
  }

  // Spares loading faces that do not have what is asked for.
  bool HasFirst(const FontCatalog& catalog, const InstalledFace& face, std::size_t first,
                std::size_t end) const {
    char32_t composed = 0;
    return catalog.Has(face, text_[first]) ||
           (end - first > 1 && characters_.Compose(text_[first], text_[first + 1], composed) &&
            catalog.Has(face, composed)) ||
           characters_.IsSpace(text_[first]);
  }

  bool Covers(const FontFace& face, std::size_t first, std::size_t end) const {
    for (std::size_t i = first; i < end; ++i) {
      char32_t composed = 0;
      if (HasGlyphs(face, text_[i]) && (i + 1 >= end || HasGlyphs(face, text_[i + 1]))) {
        continue;
      }
      if (i + 1 < end && characters_.Compose(text_[i], text_[i + 1], composed) &&
          face.GlyphOf(composed) != 0) {
        ++i;
        continue;
      }
      if (!HasGlyphs(face, text_[i])) {
        return false;
      }
    }
    return true;
  }

  // Whether the face has the character, or HarfBuzz makes it from others that the face has.
  bool HasGlyphs(const FontFace& face, char32_t c) const {
    if (face.GlyphOf(c) != 0 || characters_.IsControl(c) || characters_.IsInvisible(c)) {
      return true;
    }
    if (characters_.IsSpace(c)) {
      return face.GlyphOf(U' ') != 0;
    }
    if (c == 0x2011) {
      return face.GlyphOf(0x2010) != 0;
    }
    char32_t rest = 0;
    while (characters_.Decompose(c, c, rest)) {
      if (rest != 0 && face.GlyphOf(rest) == 0) {
        return false;
      }
      if (face.GlyphOf(c) != 0) {
        return true;
      }
    }
    return false;
  }

  FaceStore* faces_;
  const InstalledFace* first_choice_;
  std::u32string_view text_;
  const std::vector<std::uint8_t>* levels_;
  Characters characters_;
  std::vector<hb_script_t> scripts_;
  FontFace* last_substitute_ = nullptr;
  hb_script_t last_script_ = HB_SCRIPT_INVALID;
  std::string language_;
  bool has_language_ = false;
  TextItems result_;
};

}  // namespace

TextItems CutIntoItems(FaceStore& faces, const InstalledFace& face, std::u32string_view text,
                       const std::vector<std::uint8_t>& levels) {
  return Cutter(faces, face, text, levels).Cut();
}

}  // namespace TarnixTools::engines::fonts
