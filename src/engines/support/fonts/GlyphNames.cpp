#include "engines/support/fonts/GlyphNames.h"

#include <algorithm>
#include <cstddef>

#include "engines/support/files/BigEndian.h"
#include "engines/support/fonts/FontProgram.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines::fonts {

namespace {

constexpr std::uint32_t kFirstOwnString = 391;  // after the standard ones
constexpr std::size_t kMaxNames = 4096;
constexpr std::size_t kMaxNameLength = 64;
constexpr std::size_t kMaxCharacters = 4 * kMaxNames;
constexpr std::size_t kMaxDigits = 5;  // of a glyph's number

std::string Index(const std::vector<std::string_view>& items) {
  std::string index;
  AppendBig(index, items.size(), 2);
  if (items.empty()) {
    return index;
  }
  constexpr int kOffsetBytes = 4;
  index += static_cast<char>(kOffsetBytes);
  std::size_t offset = 1;
  AppendBig(index, offset, kOffsetBytes);
  for (const std::string_view item : items) {
    offset += item.size();
    AppendBig(index, offset, kOffsetBytes);
  }
  for (const std::string_view item : items) {
    index += item;
  }
  return index;
}

std::string TopDictionary(std::size_t charset, std::size_t char_strings) {
  constexpr char kFourBytes = 29;
  constexpr char kCharset = 15;
  constexpr char kCharStrings = 17;
  std::string text(1, kFourBytes);
  AppendBig(text, charset, 4);
  text += kCharset;
  text += kFourBytes;
  AppendBig(text, char_strings, 4);
  return text + kCharStrings;
}

// A CFF font (Adobe Technical Note 5176) of empty glyphs that have these names, from glyph 1 on.
std::string FontOfNames(const std::vector<std::string_view>& names) {
  using std::string_view_literals::operator""sv;
  const std::string start = std::string("\1\0\4\4"sv) + Index({"x"});
  const std::string strings = Index(names) + Index({});
  std::string charset(1, '\0');
  for (std::size_t i = 0; i < names.size(); ++i) {
    AppendBig(charset, kFirstOwnString + i, 2);
  }
  const std::size_t charset_offset =
      start.size() + Index({TopDictionary(0, 0)}).size() + strings.size();
  const std::string top = TopDictionary(charset_offset, charset_offset + charset.size());
  const std::vector<std::string_view> empty_glyphs(names.size() + 1, "\x0E"sv);
  return start + Index({top}) + strings + charset + Index(empty_glyphs);
}

// Adds what is known of the names and takes those out of them.
void TakeKnown(std::vector<std::string_view>& names, CharactersByName& known) {
  const std::string font = FontOfNames(names);
  const auto program = FontProgram::Open(font);
  const std::size_t map_count = program == nullptr ? 0 : program->maps().size();
  for (std::size_t map = 0; map < map_count; ++map) {
    if (!program->maps()[map].is_unicode()) {
      continue;
    }
    for (const CodeGlyph& mapping : program->Mappings(map, kMaxCharacters)) {
      if (mapping.glyph <= names.size()) {
        known[std::string(names[mapping.glyph - 1])].push_back(mapping.code);
      }
    }
  }
  std::erase_if(names, [&](std::string_view name) { return known.contains(std::string(name)); });
}

}  // namespace

// FreeType has the list, but tells of it only what a font needs: so there is a font with the names.
// In a font each character has one glyph; names that share theirs with another take another turn.
CharactersByName CharactersOfNames(const std::vector<std::string_view>& names) {
  std::vector<std::string_view> left;
  for (const std::string_view name : names) {
    if (!name.empty() && name.size() <= kMaxNameLength && name != ".notdef") {
      left.push_back(name);
    }
  }
  std::sort(left.begin(), left.end());
  left.erase(std::unique(left.begin(), left.end()), left.end());
  left.resize(std::min(left.size(), kMaxNames));
  CharactersByName known;
  std::size_t before = left.size() + 1;
  while (!left.empty() && left.size() < before) {
    before = left.size();
    TakeKnown(left, known);
  }
  return known;
}

std::optional<std::uint32_t> GlyphNumberIn(std::string_view name) {
  const std::size_t letters =
      static_cast<std::size_t>(std::find_if(name.begin(), name.end(), pdf::IsDigit) - name.begin());
  const std::string_view digits = name.substr(letters);
  constexpr std::string_view kPrefixes[] = {"g",   "G",     "gid", "GID", "glyph",  "Glyph", "cid",
                                            "CID", "index", "c",   "C",   "glyph_", "g_",    ""};
  const bool is_known = std::find(std::begin(kPrefixes), std::end(kPrefixes),
                                  name.substr(0, letters)) != std::end(kPrefixes);
  if (!is_known || digits.empty() || digits.size() > kMaxDigits ||
      !std::all_of(digits.begin(), digits.end(), pdf::IsDigit)) {
    return std::nullopt;
  }
  std::uint32_t number = 0;
  for (const char digit : digits) {
    number = number * 10 + static_cast<std::uint32_t>(digit - '0');
  }
  return number;
}

}  // namespace TarnixTools::engines::fonts
