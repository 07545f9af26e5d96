#include "engines/toolbox/content/ClusterPainter.h"

#include <algorithm>

namespace TarnixTools::engines::toolbox {

using fonts::GlyphCluster;
using fonts::GlyphRun;
using fonts::ShapedGlyph;

namespace {

// Stands for nothing: text that is told by other glyphs already.
constexpr std::u32string_view kNothing = U"\x2060";

}  // namespace

ClusterPainter::ClusterPainter(EmbeddedFont& font, const GlyphRun& run, const GlyphCluster& cluster,
                               std::u32string_view text)
    : font_(&font),
      characters_(text.substr(cluster.first_character, cluster.character_count)),
      is_right_to_left_(run.is_right_to_left) {
  const double scale = 1000.0 / run.face->units_per_em();
  for (std::size_t i = 0; i < cluster.glyph_count; ++i) {
    const ShapedGlyph& glyph = run.glyphs[cluster.first_glyph + i];
    const bool is_attached = cluster.glyph_count > 1 && (glyph.advance == 0 || glyph.y_offset != 0);
    places_.push_back(
        {glyph.glyph, width_ + glyph.x_offset * scale, glyph.y_offset * scale, is_attached});
    (is_attached ? has_attached_ : has_others_) = true;
    width_ += glyph.advance * scale;
  }
}

std::vector<PaintedGlyph> ClusterPainter::Arrange(double& width) {
  width = width_;
  std::vector<PaintedGlyph> glyphs;
  if (!ArrangeOneByOne(glyphs) && !ArrangeFromRightToLeft(glyphs)) {
    ArrangeWithText(glyphs);
  }
  return glyphs;
}

PaintedGlyph ClusterPainter::Painted(const Place& place, unsigned code, Span span) const {
  return {code, place.x, place.y, font_->WidthOf(place.glyph), span};
}

// One glyph for all characters, or one for each where at most one of them is not plainly its own.
bool ClusterPainter::ArrangeOneByOne(std::vector<PaintedGlyph>& glyphs) {
  const std::size_t count = places_.size();
  if (count == 1 && (!is_right_to_left_ || characters_.size() == 1)) {
    if (const auto code = font_->CodeFor(places_[0].glyph, characters_)) {
      glyphs = {Painted(places_[0], *code, Span::kNone)};
      return true;
    }
    return false;
  }
  if (count != characters_.size() || has_attached_) {
    return false;
  }
  const auto character_of = [&](std::size_t i) { return is_right_to_left_ ? count - 1 - i : i; };
  std::size_t others = 0;
  for (std::size_t i = 0; i < count; ++i) {
    others += font_->IsGlyphOf(places_[i].glyph, characters_[character_of(i)]) ? 0 : 1;
  }
  if (others > 1) {
    return false;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const auto code = font_->CodeFor(places_[i].glyph, characters_.substr(character_of(i), 1));
    if (!code) {
      glyphs.clear();
      return false;
    }
    glyphs.push_back(Painted(places_[i], *code, Span::kNone));
  }
  return true;
}

// The main glyph stands for the first character; to its left, codes that show nothing stand for the
// others.
bool ClusterPainter::ArrangeFromRightToLeft(std::vector<PaintedGlyph>& glyphs) {
  if (!is_right_to_left_ || characters_.size() < 2) {
    return false;
  }
  const auto main = std::find_if(places_.begin(), places_.end(), [this](const Place& place) {
    return !place.is_attached || !has_others_;
  });
  for (std::size_t i = characters_.size() - 1; i > 0; --i) {
    const auto blank = font_->BlankFor(characters_.substr(i, 1));
    if (!blank) {
      glyphs.clear();
      return false;
    }
    glyphs.push_back({*blank, main->x, 0, 0, Span::kNone});
  }
  const auto code = font_->CodeFor(main->glyph, characters_.substr(0, 1));
  if (!code) {
    glyphs.clear();
    return false;
  }
  glyphs.push_back(Painted(*main, *code, Span::kNone));
  for (const Place& place : places_) {
    if (&place != &*main) {
      const auto silent = font_->CodeFor(place.glyph, kNothing);
      glyphs.push_back(Painted(place, silent ? *silent : font_->CodeAmong(place.glyph, characters_),
                               Span::kEmpty));
    }
  }
  return true;
}

// The text is said beside what stands on the baseline; what is attached has none. Some readers take
// the place of the first glyph for that of the text.
void ClusterPainter::ArrangeWithText(std::vector<PaintedGlyph>& glyphs) {
  for (const bool is_attached : {false, true}) {
    for (const Place& place : places_) {
      if (place.is_attached == is_attached) {
        const bool has_text = !is_attached || !has_others_;
        glyphs.push_back(Painted(place, font_->CodeAmong(place.glyph, characters_),
                                 has_text ? Span::kText : Span::kEmpty));
      }
    }
  }
}

}  // namespace TarnixTools::engines::toolbox
