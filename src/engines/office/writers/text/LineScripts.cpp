#include "engines/office/writers/text/LineScripts.h"

#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

// Whether lines may end before and behind it: ideographs, kana, and the syllables of Korean, which
// not all programs keep together in words.
bool StandsAlone(char32_t character) {
  return (character >= 0x1100 && character < 0x1200) ||
         (character >= kFirstIdeograph && character < 0xFB00) ||
         (character >= 0xFF00 && character < 0x30000);
}

bool IsHyphen(char32_t c) {
  return c == '-' || c == '/' || c == 0x2010 || c == 0x2013 || c == 0x2014;
}

}  // namespace

std::size_t FirstBreak(std::string_view text, bool is_after_hyphens) {
  bool is_after_hyphen = false;
  for (std::size_t at = 0; at < text.size();) {
    const DecodedCharacter next = DecodeUtf8(text.substr(at));
    const bool is_digit = next.character >= '0' && next.character <= '9';
    if (next.character == U' ' || (is_after_hyphen && !is_digit)) {
      return at;
    }
    is_after_hyphen = is_after_hyphens && at > 0 && IsHyphen(next.character);
    if (StandsAlone(next.character)) {
      return at > 0 ? at : next.length;
    }
    at += next.length;
  }
  return std::string_view::npos;
}

bool IsJoined(std::string_view text) {
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    const char32_t c = next.character;
    if ((c >= 0x0600 && c < 0x0780) || (c >= 0x08A0 && c < 0x0900) || (c >= 0xFB50 && c < 0xFE00) ||
        (c >= 0xFE70 && c < 0xFEFF)) {
      return true;
    }
    text.remove_prefix(next.length);
  }
  return false;
}

std::size_t ScriptChanges::In(std::string_view text) {
  std::size_t changes = 0;
  while (!text.empty()) {
    const DecodedCharacter next = DecodeUtf8(text);
    const Script script = ScriptOf(next.character);
    if (next.character == U' ') {
      last_ = has_gap_at_marks_ ? last_ : Script::kNone;
    } else if (script != Script::kNone) {
      changes += last_ != Script::kNone && last_ != script ? 1 : 0;
      last_ = script;
    }
    text.remove_prefix(next.length);
  }
  return changes;
}

ScriptChanges::Script ScriptChanges::ScriptOf(char32_t c) const {
  const bool is_letter = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') ||
                         (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c < 0x530) ||
                         (has_gap_at_marks_ && c > ' ' && c < 0x80);
  return StandsAlone(c) ? Script::kIdeographs : is_letter ? Script::kLetters : Script::kNone;
}

}  // namespace TarnixTools::engines::office
