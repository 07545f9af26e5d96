#include "engines/support/layout/paragraphs/LookTable.h"

#include <cmath>

namespace TarnixTools::engines {

namespace {

std::uint32_t Packed(const Rgb& color) {
  return (std::uint32_t{color.red} << 16) | (std::uint32_t{color.green} << 8) | color.blue;
}

// Sizes are told to a tenth of a point: transformations leave less than that behind.
double Rounded(double size) {
  return std::round(size * 10) / 10;
}

}  // namespace

std::shared_ptr<const Typeface> LookTable::FaceOf(const TextStyle& style, bool is_doubled) {
  if (!is_doubled || style.face == nullptr || style.face->is_bold) {
    return style.face;
  }
  std::shared_ptr<const Typeface>& bold = bold_faces_[style.face.get()];
  if (bold == nullptr) {
    Typeface face = *style.face;
    face.is_bold = true;
    bold = std::make_shared<const Typeface>(std::move(face));
  }
  return bold;
}

std::uint32_t LookTable::Of(const PlacedGlyph& glyph, const Word& word, double line_size) {
  const TextStyle& style = page_->styles[page_->glyphs[glyph.glyph].style];
  TextLook look;
  look.face = FaceOf(style, glyph.is_doubled);
  look.size = Rounded(glyph.raise == Raise::kNone ? glyph.size : line_size);
  look.color = style.color;
  look.highlight = word.highlight;
  look.is_underlined = word.is_underlined;
  look.is_struck = word.is_struck;
  look.is_hidden = style.is_hidden;
  look.raise = glyph.raise;
  const int flags = (look.is_underlined ? 1 : 0) + (look.is_struck ? 2 : 0) +
                    (look.is_hidden ? 4 : 0) + 8 * static_cast<int>(look.raise);
  const std::int64_t highlight = look.highlight ? std::int64_t{Packed(*look.highlight)} : -1;
  const Key key{look.face.get(), look.size, Packed(look.color), highlight, flags};
  const auto [entry, is_new] = known_.try_emplace(key, looks_->size());
  if (is_new) {
    looks_->push_back(std::move(look));
  }
  return entry->second;
}

}  // namespace TarnixTools::engines
