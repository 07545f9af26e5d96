#include "engines/pdfa/checks/ShownFonts.h"

#include "engines/pdfa/Limits.h"
#include "engines/support/fonts/DocumentFont.h"
#include "pdf/syntax/Lexer.h"
#include "pdf/syntax/Parser.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

void ShownFonts::Note(const pdf::StringUse& string, std::uint32_t page_number,
                      bool has_actual_text) {
  Font* font = FontOf(string.state.text.font);
  if (font == nullptr) {
    return;
  }
  const CodeUse use = {.is_rendered = string.state.text.mode != pdf::TextMode::kInvisible,
                       .lacks_actual_text = !has_actual_text,
                       .page_number = page_number};
  font->is_rendered |= use.is_rendered;
  font->page_number = font->page_number == 0 ? page_number : font->page_number;
  if (!font->map) {
    return;
  }
  split_.clear();
  if (!font->map->Split(string.bytes, split_)) {
    font->has_broken_strings = true;
    font->broken_are_rendered |= use.is_rendered;
  }
  for (const std::uint32_t code : split_) {
    NoteCode(*font, code, use);
  }
}

void ShownFonts::NoteCode(Font& font, std::uint32_t code, const CodeUse& use) {
  if (font.codes.size() >= limits::kMaxShownCodes && !font.codes.contains(code)) {
    return;
  }
  const auto [known, is_new] = font.codes.try_emplace(code, use);
  if (!is_new) {
    known->second.is_rendered |= use.is_rendered;
    known->second.lacks_actual_text |= use.lacks_actual_text;
  }
}

ShownFonts::Font* ShownFonts::FontOf(const Object& object) {
  if (object.IsReference()) {
    const auto known = by_number_.find(object.AsReference().number);
    if (known != by_number_.end() || by_number_.size() >= limits::kMaxShownFonts) {
      return known != by_number_.end() ? known->second : nullptr;
    }
    return by_number_[object.AsReference().number] = &Add(object);
  }
  if (!object.IsDictionary() || in_place_.size() >= limits::kMaxFontsInPlace) {
    return nullptr;
  }
  std::string text;
  pdf::AppendObject(text, object);
  const auto [known, is_new] = in_place_.try_emplace(text, nullptr);
  if (is_new) {
    Object copy;
    pdf::Lexer lexer(known->first, true);
    pdf::Parser(arena_).Parse(lexer, nullptr, copy);
    known->second = &Add(copy);
  }
  return known->second;
}

ShownFonts::Font& ShownFonts::Add(const Object& object) {
  Font& font = fonts_.emplace_back();
  font.object = object;
  const fonts::DocumentFont read(*document_, object, fonts::MapsByName::kInstalled);
  if (read.codes() != nullptr &&
      kept_ranges_ + read.codes()->range_count() <= limits::kMaxKeptRanges) {
    font.map = *read.codes();
    kept_ranges_ += font.map->range_count();
  }
  return font;
}

}  // namespace TarnixTools::engines::pdfa
