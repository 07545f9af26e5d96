#include "engines/office/writers/text/TextMeasure.h"

#include <algorithm>
#include <cmath>

#include "engines/office/Limits.h"
#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

// What is taken where no font tells.
constexpr double kUsualAdvance = 0.5;
constexpr char32_t kFirstWide = 0x2E80;  // from here on, scripts whose characters fill an em
constexpr double kPointsPerInch = 72;
constexpr double kHundredthsPerInch = 2540;  // of a millimetre
constexpr std::size_t kTriedSubstitutes = 40;

// Whether glyphs depend on their neighbours, so that only shaping tells how wide a text is.
bool IsShaped(char32_t character) {
  return (character >= 0x0590 && character <= 0x109F) ||
         (character >= 0x1780 && character <= 0x18AF) ||
         (character >= 0xFB1D && character <= 0xFDFF) ||
         (character >= 0xFE70 && character <= 0xFEFF);
}

bool IsWide(char32_t character) {
  return character >= kFirstWide && !IsShaped(character) && character != 0xFEFF &&
         !(character >= 0xFB00 && character <= 0xFB06);
}

std::string StyleOf(const Typeface& face) {
  std::string style = face.is_bold ? "Bold" : "";
  if (face.is_italic) {
    style += face.is_bold ? " Italic" : "Italic";
  }
  return style;
}

}  // namespace

double TextMeasure::WidthOf(const Typeface& face, std::string_view text, double size) {
  Face& found = FaceOf(face);
  const std::u32string characters = Utf8ToUtf32(text);
  if (found.loaded != nullptr && std::any_of(characters.begin(), characters.end(), IsShaped)) {
    return fonts::ShapeLine(store_, *found.installed, characters).width * size;
  }
  const double dots = DotsOf(size);
  double width = 0;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    double advance = AdvanceOf(found, characters[i]);
    if (settings_.has_kerning && i + 1 < characters.size()) {
      advance += KernOf(found, characters[i], characters[i + 1]);
    }
    width += dots > 0 ? std::round(advance * dots) : advance;
  }
  return dots > 0 ? width * kPointsPerInch / settings_.grid : width * size;
}

// Of the em, on the grid; 0 without one.
double TextMeasure::DotsOf(double size) const {
  const double hundredths = std::round(size * kHundredthsPerInch / kPointsPerInch);
  return std::round(hundredths * settings_.grid / kHundredthsPerInch);
}

// How much closer two characters stand for being neighbours.
double TextMeasure::KernOf(Face& face, char32_t first, char32_t second) {
  if (face.loaded == nullptr || first >= kFirstWide || second >= kFirstWide) {
    return 0;
  }
  if (face.kerns.size() >= limits::kMaxKernPairs) {
    face.kerns.clear();
  }
  const auto [place, is_new] =
      face.kerns.try_emplace(std::uint64_t{first} << 32 | std::uint64_t{second}, 0);
  if (is_new && face.loaded->GlyphOf(first) != 0 && face.loaded->GlyphOf(second) != 0) {
    place->second = fonts::ShapeLine(store_, *face.installed, {first, second}).width -
                    AdvanceOf(face, first) - AdvanceOf(face, second);
  }
  return place->second;
}

TextMeasure::Face& TextMeasure::FaceOf(const Typeface& face) {
  const auto [place, is_new] =
      faces_.try_emplace(std::tuple(face.family, face.is_bold, face.is_italic));
  Face& found = place->second;
  if (is_new) {
    try {
      found.installed = fonts::FontCatalog::Get().FindShown(face.family, StyleOf(face));
      found.loaded = found.installed == nullptr ? nullptr : store_.Load(*found.installed);
    } catch (const fonts::LibraryMissing&) {
      found.loaded = nullptr;
    }
  }
  return found;
}

double TextMeasure::AdvanceOf(Face& face, char32_t character) {
  const auto [place, is_new] = face.advances.try_emplace(character, kUsualAdvance);
  if (!is_new) {
    return place->second;
  }
  if (const std::uint32_t glyph = face.loaded == nullptr ? 0 : face.loaded->GlyphOf(character)) {
    place->second = static_cast<double>(face.loaded->Advance(glyph)) / face.loaded->units_per_em();
  } else if (IsWide(character)) {
    place->second = 1;
  } else if (face.loaded != nullptr) {
    place->second = AdvanceElsewhere(face, character);
  }
  return place->second;
}

double TextMeasure::AdvanceElsewhere(const Face& face, char32_t character) {
  const auto& substitutes = store_.Substitutes(*face.installed, "");
  const std::size_t count = std::min(substitutes.size(), kTriedSubstitutes);
  for (std::size_t i = 0; i < count; ++i) {
    if (!fonts::FontCatalog::Get().Has(*substitutes[i], character)) {
      continue;
    }
    fonts::FontFace* loaded = store_.Load(*substitutes[i]);
    if (const std::uint32_t glyph = loaded == nullptr ? 0 : loaded->GlyphOf(character)) {
      return static_cast<double>(loaded->Advance(glyph)) / loaded->units_per_em();
    }
  }
  return kUsualAdvance;
}

}  // namespace TarnixTools::engines::office
