#include "engines/pdfa/convert/fonts/SubstituteFace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontStyle.h"
#include "engines/support/fonts/SubsetTag.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontCatalog;
using fonts::FontFace;
using fonts::InstalledFace;

namespace {

constexpr std::size_t kMaxCandidates = 16;
// A missing character is worse than many that are too wide.
constexpr std::size_t kMissingCost = 1'000;

struct FamilyRow {
  std::string_view in_names;
  std::string_view family;
};

constexpr std::array<FamilyRow, 9> kFamilies = {{
    {"Helvetica", "Arial"},
    {"Arial", "Arial"},
    {"TimesNewRoman", "Times New Roman"},
    {"Times", "Times New Roman"},
    {"CourierNew", "Courier New"},
    {"Courier", "Courier New"},
    {"Symbol", "Symbol"},
    {"SymbolMT", "Symbol"},
    {"ZapfDingbats", "D050000L"},
}};

struct NameParts {
  std::string family;
  std::string style;
};

// "ABCDEF+TimesNewRomanPS-BoldMT" is "TimesNewRoman", "Bold".
NameParts PartsOf(std::string_view name) {
  name = fonts::WithoutSubsetTag(name);
  const std::size_t end = name.find_first_of(",-");
  NameParts parts;
  parts.family = name.substr(0, end);
  parts.style = end == std::string_view::npos ? "" : name.substr(end + 1);
  for (const std::string_view ending : {"MT", "PS"}) {
    for (std::string* part : {&parts.family, &parts.style}) {
      const bool is_known_name = *part == "SymbolMT";
      if (part->size() > ending.size() && part->ends_with(ending) && !is_known_name) {
        part->resize(part->size() - ending.size());
      }
    }
  }
  return parts;
}

std::string FamilyOf(const std::string& in_name) {
  for (const FamilyRow& row : kFamilies) {
    if (row.in_names == in_name) {
      return std::string(row.family);
    }
  }
  return in_name;
}

bool Says(std::string_view name, std::string_view word) {
  return name.find(word) != std::string_view::npos;
}

class Search {
 public:
  explicit Search(const FaceWish& wish) : wish_(&wish), parts_(PartsOf(wish.name)) {
    const std::string_view name = wish.name;
    if (wish.is_bold || Says(name, "Bold") || Says(name, "Black") || Says(name, "Heavy")) {
      style_ = "Bold";
    }
    if (wish.is_italic || Says(name, "Italic") || Says(name, "Oblique")) {
      style_ += style_.empty() ? "Italic" : " Italic";
    }
  }

  std::unique_ptr<FontFace> Run() {
    const FontCatalog& catalog = FontCatalog::Get();
    const std::string family = FamilyOf(parts_.family);
    Try(catalog.Find(family, style_));
    Try(catalog.Find(wish_->name, ""));
    if (wish_->language.empty()) {
      Try(catalog.Find(GenericFamily(), style_));
    }
    const fonts::FontStyle style = fonts::ParseFontStyle(style_);
    InstalledFace wanted;
    wanted.family = family;
    wanted.weight = style.weight;
    wanted.slant = style.slant;
    auto substitutes = best_cost_ == 0 ? std::vector<const InstalledFace*>()
                                       : catalog.Substitutes(wanted, wish_->language);
    // First those that have the character that the fewest have.
    const char32_t rarest = Rarest();
    std::stable_partition(substitutes.begin(), substitutes.end(),
                          [&](const InstalledFace* face) { return catalog.Has(*face, rarest); });
    for (const InstalledFace* face : substitutes) {
      if (tried_ < kMaxCandidates) {
        Try(face);
      }
    }
    return std::move(best_);
  }

 private:
  char32_t Rarest() const {
    char32_t rarest = U' ';
    for (const auto& [character, width] : wish_->characters) {
      rarest = std::max(rarest, character);
    }
    return rarest;
  }

  const char* GenericFamily() const {
    if (wish_->is_fixed_pitch) {
      return "Courier New";
    }
    return wish_->is_serif ? "Times New Roman" : "Arial";
  }

  void Try(const InstalledFace* installed) {
    if (installed == nullptr || best_cost_ == 0 || !HasSome(*installed)) {
      return;
    }
    ++tried_;
    std::unique_ptr<FontFace> face = FontFace::Load(installed->file, installed->index);
    if (face == nullptr || face->embedding_right() == fonts::EmbeddingRight::kNone) {
      return;
    }
    const std::size_t cost = CostOf(*face);
    if (best_ == nullptr || cost < best_cost_) {
      best_ = std::move(face);
      best_cost_ = cost;
    }
  }

  // Most faces have none of the characters of other writing systems, and need no reading.
  bool HasSome(const InstalledFace& face) const {
    const auto is_blank = [](const auto& wanted) { return wanted.first <= U' '; };
    return std::all_of(wish_->characters.begin(), wish_->characters.end(), is_blank) ||
           std::any_of(wish_->characters.begin(), wish_->characters.end(), [&](const auto& wanted) {
             return wanted.first > U' ' && FontCatalog::Get().Has(face, wanted.first);
           });
  }

  // The advances of TrueType glyphs are set to what they are to be; those of others are not.
  std::size_t CostOf(const FontFace& face) const {
    std::size_t cost = 0;
    for (const auto& [character, width] : wish_->characters) {
      const std::uint32_t glyph = face.GlyphOf(character);
      if (glyph == 0) {
        cost += kMissingCost;
      } else if (face.outline_kind() != fonts::OutlineKind::kTrueType && width >= 0) {
        const double own = face.Advance(glyph) * 1000.0 / face.units_per_em();
        cost += std::abs(own - width) > 1 ? 1 : 0;
      }
    }
    return cost;
  }

  const FaceWish* wish_;
  NameParts parts_;
  std::string style_;
  std::unique_ptr<FontFace> best_;
  std::size_t best_cost_ = static_cast<std::size_t>(-1);
  std::size_t tried_ = 0;
};

}  // namespace

std::unique_ptr<FontFace> FindSubstitute(const FaceWish& wish) {
  return Search(wish).Run();
}

}  // namespace TarnixTools::engines::pdfa
