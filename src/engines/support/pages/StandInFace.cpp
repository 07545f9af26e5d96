#include "engines/support/pages/StandInFace.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines {

namespace {

constexpr double kThousand = 1000;
constexpr double kUsualWidth = 500;
constexpr double kFixedWidth = 600;

// Null where no face is installed.
std::unique_ptr<fonts::FontFace> Load(const Typeface& face) {
  const fonts::FontCatalog& catalog = fonts::FontCatalog::Get();
  const std::string style =
      std::string(face.is_bold ? "Bold " : "") + (face.is_italic ? "Italic" : "");
  const fonts::InstalledFace* found = catalog.Find(face.family, style);
  if (found == nullptr) {
    found = catalog.Find(face.is_serif ? "serif" : "sans-serif", style);
  }
  return found != nullptr ? fonts::FontFace::Load(found->file, found->index) : nullptr;
}

// Faces by name and style, each loaded once.
class Faces {
 public:
  double AdvanceOf(const Typeface& face, char32_t character) {
    const std::lock_guard lock(mutex_);
    const auto [place, is_new] = faces_.try_emplace({face.family, face.is_bold, face.is_italic});
    if (is_new) {
      place->second = Load(face);
    }
    const auto& loaded = place->second;
    const std::uint32_t glyph = loaded != nullptr ? loaded->GlyphOf(character) : 0;
    return glyph == 0 ? kUsualWidth : kThousand * loaded->Advance(glyph) / loaded->units_per_em();
  }

 private:
  struct Key {
    std::string family;
    bool is_bold = false;
    bool is_italic = false;

    friend auto operator<=>(const Key&, const Key&) = default;
  };

  std::mutex mutex_;
  std::map<Key, std::unique_ptr<fonts::FontFace>> faces_;
};

}  // namespace

double StandInAdvance(const Typeface& face, std::u32string_view text) {
  if (face.is_fixed_pitch) {
    return kFixedWidth;
  }
  if (text.empty()) {
    return kUsualWidth;
  }
  static auto* const faces = new Faces();  // never destroyed: threads may outlive static objects
  return faces->AdvanceOf(face, text.front());
}

}  // namespace TarnixTools::engines
