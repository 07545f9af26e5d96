#include "engines/support/fonts/FontCatalog.h"

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <set>
#include <utility>

#include "engines/support/fonts/FontLibraries.h"
#include "engines/support/fonts/FontStyle.h"

namespace TarnixTools::engines::fonts {

namespace {

struct PatternDestroyer {
  void operator()(FcPattern* pattern) const { Fontconfig::Get().FcPatternDestroy(pattern); }
};

using PatternPtr = std::unique_ptr<FcPattern, PatternDestroyer>;

// Families with the same metrics, for systems whose configuration does not know them.
constexpr std::array<std::pair<const char*, const char*>, 8> kSameMetrics = {
    {{"Arial", "Liberation Sans"},
     {"Helvetica", "Liberation Sans"},
     {"Arial Narrow", "Liberation Sans Narrow"},
     {"Times New Roman", "Liberation Serif"},
     {"Times", "Liberation Serif"},
     {"Courier New", "Liberation Mono"},
     {"Courier", "Liberation Mono"},
     {"Calibri", "Carlito"}}};

constexpr std::array<std::string_view, 8> kGenericFamilies = {
    "sans-serif", "sans", "serif", "monospace", "mono", "cursive", "fantasy", "system-ui"};

// A value of a list in a pattern; null after the last.
const char* StringOf(const FcPattern* pattern, const char* property, int index) {
  FcChar8* value = nullptr;
  return Fontconfig::Get().FcPatternGetString(pattern, property, index, &value) == FcResultMatch
             ? reinterpret_cast<const char*>(value)
             : nullptr;
}

int NumberOf(const FcPattern* pattern, const char* property, int otherwise) {
  const Fontconfig& fc = Fontconfig::Get();
  int number = 0;
  if (fc.FcPatternGetInteger(pattern, property, 0, &number) == FcResultMatch) {
    return number;
  }
  double real = 0;
  return fc.FcPatternGetDouble(pattern, property, 0, &real) == FcResultMatch
             ? static_cast<int>(real)
             : otherwise;
}

bool HasFlag(const FcPattern* pattern, const char* property, bool otherwise) {
  FcBool flag = FcFalse;
  return Fontconfig::Get().FcPatternGetBool(pattern, property, 0, &flag) == FcResultMatch
             ? flag == FcTrue
             : otherwise;
}

const FcChar8* Text(const std::string& text) {
  return reinterpret_cast<const FcChar8*>(text.c_str());
}

bool IsSame(const std::string& one, const char* other) {
  return Fontconfig::Get().FcStrCmpIgnoreCase(Text(one), reinterpret_cast<const FcChar8*>(other)) ==
         0;
}

bool IsCalled(const InstalledFace& face, std::string_view style) {
  const std::string wanted(style);
  return !wanted.empty() &&
         std::any_of(face.styles.begin(), face.styles.end(),
                     [&](const std::string& name) { return IsSame(wanted, name.c_str()); });
}

// Whether its style has the name of the one that texts are set in.
bool IsUsual(const InstalledFace& face) {
  return IsCalled(face, "Regular") || IsCalled(face, "Book") || IsCalled(face, "Roman");
}

FontStyle StyleOf(const InstalledFace& face) {
  return {face.weight, face.slant, face.width};
}

// Whether a PDF file can hold its outlines. A variable font is listed as what it is without being
// varied, and once for each instance that has a name; what lists it with ranges is left out.
bool IsEmbeddable(const FcPattern* pattern) {
  const char* format = StringOf(pattern, FC_FONTFORMAT, 0);
  const std::string_view name = format == nullptr ? "" : format;
  return (name == "TrueType" || name == "CFF") && HasFlag(pattern, FC_OUTLINE, true) &&
         !HasFlag(pattern, FC_VARIABLE, false) && StringOf(pattern, FC_FILE, 0) != nullptr;
}

}  // namespace

class FontCatalog::Lists {
 public:
  Lists() : config_(Fontconfig::Get().FcInitLoadConfigAndFonts()) {
    const FcFontSet* set =
        config_ == nullptr ? nullptr : Fontconfig::Get().FcConfigGetFonts(config_, FcSetSystem);
    for (int i = 0; set != nullptr && i < set->nfont; ++i) {
      if (IsEmbeddable(set->fonts[i])) {
        found_.push_back({Describe(set->fonts[i]), set->fonts[i]});
      }
    }
    // The order in which directories are read is not the same everywhere.
    std::sort(found_.begin(), found_.end(), [](const Entry& a, const Entry& b) {
      return std::pair(a.face.file, a.face.index) < std::pair(b.face.file, b.face.index);
    });
    for (const Entry& entry : found_) {
      patterns_.emplace(std::pair(entry.face.file, entry.face.index), &entry);
    }
  }

  const InstalledFace* FindInFamily(const std::string& family, std::string_view style) const {
    const FontStyle wanted = ParseFontStyle(style);
    const InstalledFace* best = nullptr;
    std::pair<int, bool> best_distance;
    for (const Entry& entry : found_) {
      if (!IsOfFamily(entry.pattern, family)) {
        continue;
      }
      const InstalledFace& face = entry.face;
      const int from_style = IsCalled(face, style) ? -1 : StyleDistance(wanted, StyleOf(face));
      const std::pair distance(from_style, style.empty() && !IsUsual(face));
      if (best == nullptr || distance < best_distance) {
        best = &face;
        best_distance = distance;
      }
    }
    return best;
  }

  // Finds a face by its whole name, "Liberation Sans Narrow Bold" or "LiberationSans-Bold".
  const InstalledFace* FindByWholeName(const std::string& name) const {
    for (const Entry& entry : found_) {
      for (const char* property : {FC_FULLNAME, FC_POSTSCRIPT_NAME}) {
        for (int i = 0; const char* value = StringOf(entry.pattern, property, i); ++i) {
          if (IsSame(name, value)) {
            return &entry.face;
          }
        }
      }
    }
    return nullptr;
  }

  // Families that the configuration binds to this one as firmly as its own name, in order.
  std::vector<std::string> Aliases(const std::string& family) const {
    const Fontconfig& fc = Fontconfig::Get();
    const PatternPtr pattern(fc.FcPatternCreate());
    fc.FcPatternAddString(pattern.get(), FC_FAMILY, Text(family));
    const std::lock_guard lock(mutex_);
    fc.FcConfigSubstitute(config_, pattern.get(), FcMatchPattern);
    std::vector<std::string> names;
    FcValue value;
    FcValueBinding binding = FcValueBindingWeak;
    for (int i = 0;
         fc.FcPatternGetWithBinding(pattern.get(), FC_FAMILY, i, &value, &binding) == FcResultMatch;
         ++i) {
      if (binding == FcValueBindingStrong && value.type == FcTypeString) {
        names.emplace_back(reinterpret_cast<const char*>(value.u.s));
      }
    }
    return names;
  }

  // All faces, those first that go best with the pattern's family, style and language.
  std::vector<const InstalledFace*> Sorted(const std::string& family, const FontStyle& style,
                                           const std::string& language) const {
    const Fontconfig& fc = Fontconfig::Get();
    const PatternPtr pattern(fc.FcPatternCreate());
    fc.FcPatternAddString(pattern.get(), FC_FAMILY, Text(family));
    fc.FcPatternAddInteger(pattern.get(), FC_WEIGHT, style.weight);
    fc.FcPatternAddInteger(pattern.get(), FC_SLANT, style.slant);
    fc.FcPatternAddInteger(pattern.get(), FC_WIDTH, style.width);
    // Without a language, that of the environment would be taken.
    fc.FcPatternAddString(pattern.get(), FC_LANG, Text(language.empty() ? "en" : language));
    const std::lock_guard lock(mutex_);
    fc.FcConfigSubstitute(config_, pattern.get(), FcMatchPattern);
    fc.FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultMatch;
    FcFontSet* set = fc.FcFontSort(config_, pattern.get(), FcFalse, nullptr, &result);
    std::vector<const InstalledFace*> faces;
    for (int i = 0; set != nullptr && i < set->nfont; ++i) {
      if (const char* file = StringOf(set->fonts[i], FC_FILE, 0)) {
        const auto known =
            patterns_.find(std::pair<std::string, int>(file, NumberOf(set->fonts[i], FC_INDEX, 0)));
        if (known != patterns_.end()) {
          faces.push_back(&known->second->face);
        }
      }
    }
    if (set != nullptr) {
      fc.FcFontSetDestroy(set);
    }
    return faces;
  }

  const FcPattern* PatternOf(const InstalledFace& face) const {
    return patterns_.at(std::pair(face.file, face.index))->pattern;
  }

 private:
  struct Entry {
    InstalledFace face;
    const FcPattern* pattern;
  };

  static InstalledFace Describe(const FcPattern* pattern) {
    InstalledFace face;
    face.file = StringOf(pattern, FC_FILE, 0);
    face.index = NumberOf(pattern, FC_INDEX, 0);
    if (const char* family = StringOf(pattern, FC_FAMILY, 0)) {
      face.family = family;
    }
    for (int i = 0; const char* style = StringOf(pattern, FC_STYLE, i); ++i) {
      face.styles.emplace_back(style);
    }
    face.weight = NumberOf(pattern, FC_WEIGHT, face.weight);
    face.slant = NumberOf(pattern, FC_SLANT, face.slant);
    face.width = NumberOf(pattern, FC_WIDTH, face.width);
    return face;
  }

  static bool IsOfFamily(const FcPattern* pattern, const std::string& family) {
    for (int i = 0; const char* name = StringOf(pattern, FC_FAMILY, i); ++i) {
      if (IsSame(family, name)) {
        return true;
      }
    }
    return false;
  }

  FcConfig* config_;  // never released, as the catalog is not
  std::vector<Entry> found_;
  std::map<std::pair<std::string, int>, const Entry*> patterns_;
  mutable std::mutex mutex_;  // around what may change the configuration's caches
};

FontCatalog::FontCatalog() : lists_(std::make_unique<Lists>()) {}

FontCatalog::~FontCatalog() = default;

const FontCatalog& FontCatalog::Get() {
  // Never destroyed: threads may still use it while the process ends.
  static const FontCatalog* const catalog = new FontCatalog;
  return *catalog;
}

const InstalledFace* FontCatalog::Find(std::string_view family, std::string_view style) const {
  const std::string name(family.substr(0, family.find('\0')));
  if (name.empty()) {
    return nullptr;
  }
  if (const InstalledFace* face = lists_->FindInFamily(name, style)) {
    return face;
  }
  for (const std::string& alias : lists_->Aliases(name)) {
    if (const InstalledFace* face = lists_->FindInFamily(alias, style)) {
      return face;
    }
  }
  for (const auto& [wanted, same] : kSameMetrics) {
    if (IsSame(name, wanted)) {
      return lists_->FindInFamily(same, style);
    }
  }
  const bool is_generic =
      std::any_of(kGenericFamilies.begin(), kGenericFamilies.end(),
                  [&](std::string_view generic) { return IsSame(name, generic.data()); });
  if (is_generic) {
    const auto sorted = lists_->Sorted(name, ParseFontStyle(style), "");
    return sorted.empty() ? nullptr : lists_->FindInFamily(sorted.front()->family, style);
  }
  return lists_->FindByWholeName(name);
}

const InstalledFace* FontCatalog::FindShown(std::string_view family, std::string_view style) const {
  if (const InstalledFace* face = Find(family, style)) {
    return face;
  }
  const std::string name(family.substr(0, family.find('\0')));
  const auto sorted = lists_->Sorted(name, ParseFontStyle(style), "");
  return sorted.empty() ? nullptr : lists_->FindInFamily(sorted.front()->family, style);
}

bool FontCatalog::HasStyle(const InstalledFace& face, std::string_view style) {
  return IsCalled(face, style) || IsOfStyle(ParseFontStyle(style), StyleOf(face));
}

bool FontCatalog::Has(const InstalledFace& face, char32_t character) const {
  const Fontconfig& fc = Fontconfig::Get();
  FcCharSet* characters = nullptr;
  return fc.FcPatternGetCharSet(lists_->PatternOf(face), FC_CHARSET, 0, &characters) ==
             FcResultMatch &&
         fc.FcCharSetHasChar(characters, character) == FcTrue;
}

std::vector<const InstalledFace*> FontCatalog::Substitutes(const InstalledFace& face,
                                                           std::string_view language) const {
  return lists_->Sorted(face.family, StyleOf(face), std::string(language));
}

}  // namespace TarnixTools::engines::fonts
