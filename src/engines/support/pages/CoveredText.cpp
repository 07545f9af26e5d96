#include "engines/support/pages/CoveredText.h"

#include "engines/support/pages/PageLimits.h"
#include "pdf/BoxAround.h"

namespace TarnixTools::engines {

namespace {

constexpr double kAscent = 0.6;  // ems over the baseline, that most of a letter is within
constexpr double kSlack = 0.1;   // ems by which it may stand out

bool HidesWhatIsBelow(const pdf::GraphicsState& state) {
  const pdf::Transparency& transparency = state.transparency;
  const pdf::Object& mode = transparency.blend_mode;
  const bool is_plain = mode.IsNull() || mode.IsName("Normal") || mode.IsName("Compatible");
  const bool has_mask = !transparency.soft_mask.IsNull() && !transparency.soft_mask.IsName("None");
  return transparency.fill_alpha >= 1 && is_plain && !has_mask && state.clip.is_rectangle &&
         !state.clip.has_text;
}

pdf::Box BoxOf(const Glyph& glyph, const TextStyle& style) {
  const double slack = kSlack * style.size;
  const double end_x = glyph.x + glyph.advance * style.direction_x;
  const double end_y = glyph.y + glyph.advance * style.direction_y;
  const double up_x = kAscent * style.size * style.direction_y;
  const double up_y = -kAscent * style.size * style.direction_x;
  const pdf::Box box = pdf::BoxAround(
      pdf::Box::OfCorners(glyph.x, glyph.y, end_x, end_y),
      pdf::Box::OfCorners(glyph.x + up_x, glyph.y + up_y, end_x + up_x, end_y + up_y));
  return {box.left + slack, box.bottom + slack, box.right - slack, box.top - slack};
}

}  // namespace

std::uint32_t CoveredText::HiddenStyle(std::uint32_t style) {
  const auto [entry, is_new] =
      hidden_.try_emplace(style, static_cast<std::uint32_t>(page_->styles.size()));
  if (is_new) {
    TextStyle hidden = page_->styles[style];
    hidden.is_hidden = true;
    page_->styles.push_back(std::move(hidden));
  }
  return entry->second;
}

void CoveredText::Cover(const pdf::Box& box, const pdf::GraphicsState& state) {
  checked_ += page_->glyphs.size();
  if (checked_ > limits::kMaxCoverChecks || !HidesWhatIsBelow(state)) {
    return;
  }
  const pdf::Box painted = box.Within(state.clip.box);
  for (Glyph& glyph : page_->glyphs) {
    const TextStyle& style = page_->styles[glyph.style];
    const bool is_near =
        glyph.x > painted.left - style.size && glyph.x < painted.right + style.size &&
        glyph.y > painted.bottom - style.size && glyph.y < painted.top + style.size;
    if (is_near && !style.is_hidden && !style.is_vertical &&
        painted.Encloses(BoxOf(glyph, style))) {
      glyph.style = HiddenStyle(glyph.style);
    }
  }
}

}  // namespace TarnixTools::engines
