#include "engines/support/pages/TypefaceNames.h"

#include <algorithm>
#include <array>
#include <string>

#include "engines/support/fonts/SubsetTag.h"
#include "pdf/syntax/Chars.h"

namespace TarnixTools::engines {

namespace {

struct KnownFamily {
  std::string_view start;   // of the name, without spaces, in small letters
  std::string_view family;  // empty: what the name says
  bool is_serif = false;
  bool is_fixed_pitch = false;
};

// Names that are not the family's own with its spaces taken out; longer ones before those that they
// begin with.
constexpr std::array<KnownFamily, 38> kKnown = {{
    {"timesnewroman", "Times New Roman", true},
    {"times", "Times New Roman", true},
    {"nimbusrom", "Times New Roman", true},
    {"arialnarrow", "Arial Narrow"},
    {"arialblack", "Arial Black"},
    {"arialunicodems", "Arial Unicode MS"},
    {"arial", "Arial"},
    {"helveticaneue", "Helvetica Neue"},
    {"helvetica", "Helvetica"},
    {"nimbussan", "Helvetica"},
    {"couriernew", "Courier New", true, true},
    {"courier", "Courier New", true, true},
    {"nimbusmon", "Courier New", true, true},
    {"lucidaconsole", "Lucida Console", false, true},
    {"consolas", "Consolas", false, true},
    {"calibri", "Calibri"},
    {"carlito", "Carlito"},
    {"cambriamath", "Cambria Math", true},
    {"cambria", "Cambria", true},
    {"caladea", "Caladea", true},
    {"georgia", "Georgia", true},
    {"garamond", "Garamond", true},
    {"palatino", "Palatino Linotype", true},
    {"bookantiqua", "Book Antiqua", true},
    {"liberationserif", "Liberation Serif", true},
    {"liberationsans", "Liberation Sans"},
    {"liberationmono", "Liberation Mono", false, true},
    {"dejavusansmono", "DejaVu Sans Mono", false, true},
    {"dejavusans", "DejaVu Sans"},
    {"dejavuserif", "DejaVu Serif", true},
    {"segoeui", "Segoe UI"},
    {"trebuchetms", "Trebuchet MS"},
    {"comicsansms", "Comic Sans MS"},
    {"verdana", "Verdana"},
    {"tahoma", "Tahoma"},
    {"cmtt", "", true, true},
    {"cmss", ""},
    {"cm", "", true},
}};

std::string Lower(std::string_view text) {
  std::string lower;
  for (const char c : text) {
    if (c != ' ' && c != '-' && c != '_') {
      lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    }
  }
  return lower;
}

bool Contains(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [text](std::string_view word) {
    return text.find(word) != std::string_view::npos;
  });
}

// Whether a style as foundries shorten it has one of the parts: "BdIt" has "Bd" and "It". "Medi" is
// the bold of families that have no other.
bool HasShortStyle(std::string_view name, std::initializer_list<std::string_view> parts) {
  const std::size_t dash = name.rfind('-');
  const std::string_view style = dash == std::string_view::npos ? "" : name.substr(dash + 1);
  return std::any_of(parts.begin(), parts.end(), [style](std::string_view part) {
    const std::size_t at = style.find(part);
    const std::size_t end = at + part.size();
    return at != std::string_view::npos &&
           (end == style.size() || (style[end] >= 'A' && style[end] <= 'Z'));
  });
}

// "OpenSans-Light" is "Open Sans": a space before each capital that follows a small letter.
std::string Spaced(std::string_view name) {
  std::string spaced;
  for (const char c : name.substr(0, name.find_first_of("-,"))) {
    const bool is_capital = c >= 'A' && c <= 'Z';
    if (is_capital && !spaced.empty() && spaced.back() >= 'a' && spaced.back() <= 'z') {
      spaced += ' ';
    }
    spaced += c;
  }
  return spaced;
}

}  // namespace

Typeface TypefaceNamed(std::string_view name) {
  const std::string_view bare = fonts::WithoutSubsetTag(name);
  const std::string lower = Lower(bare);
  Typeface face;
  face.is_bold =
      Contains(lower, {"bold", "black", "heavy", "semibold", "demi", "cmbx", "cmssbx"}) ||
      lower.starts_with("sfbx") || HasShortStyle(bare, {"Bd", "Blk", "Hv", "Medi"});
  face.is_italic =
      Contains(lower, {"italic", "oblique", "cmti", "cmmi", "cmsl", "kursiv", "slant"}) ||
      lower.starts_with("sfti") || HasShortStyle(bare, {"It", "Ital", "Obl"});
  const auto known = std::find_if(kKnown.begin(), kKnown.end(), [&lower](const KnownFamily& entry) {
    return lower.starts_with(entry.start);
  });
  if (known != kKnown.end()) {
    face.family = known->family.empty() ? Spaced(bare) : std::string(known->family);
    face.is_serif = known->is_serif;
    face.is_fixed_pitch = known->is_fixed_pitch;
  } else {
    face.family = Spaced(bare);
    face.is_fixed_pitch = Contains(lower, {"mono", "typewriter", "console"});
  }
  return face;
}

Typeface TypefaceOf(const fonts::DocumentFont& font, const fonts::FontProgram* program) {
  const fonts::FontDescriptor& descriptor = font.descriptor();
  Typeface face = TypefaceNamed(font.name());
  face.is_bold = face.is_bold || descriptor.is_bold;
  face.is_italic = face.is_italic || descriptor.is_italic;
  face.is_serif = face.is_serif || descriptor.is_serif;
  face.is_fixed_pitch = face.is_fixed_pitch || descriptor.is_fixed_pitch;
  if (program != nullptr) {
    face.is_bold = face.is_bold || program->is_bold();
    face.is_italic = face.is_italic || program->is_italic();
  }
  return face;
}

}  // namespace TarnixTools::engines
