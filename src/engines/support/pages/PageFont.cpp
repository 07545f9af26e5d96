#include "engines/support/pages/PageFont.h"

#include <algorithm>
#include <cmath>

#include "engines/support/pages/PageLimits.h"
#include "engines/support/pages/StandInFace.h"
#include "engines/support/pages/TypefaceNames.h"

namespace TarnixTools::engines {

namespace {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

// Empty for a font without a program, and for one that cannot be read whole.
std::string ProgramOf(Document& document, const fonts::FontDescriptor& descriptor) {
  if (descriptor.program == 0) {
    return {};
  }
  auto stream = document.TryDecodeStream(descriptor.program, limits::kMaxFontProgramBytes);
  return stream && stream->complete ? std::move(stream->data) : std::string();
}

// From a Type 3 font's own units to those of its size.
double Type3Scale(Document& document, const Object& font) {
  Arena arena;
  const auto items = document.Resolve(font.Get("FontMatrix"), arena).Items();
  const double scale = items.empty() ? 0 : std::abs(document.Resolve(items[0], arena).NumberOr(0));
  return scale > 0 ? scale : 0.001;
}

double WidestOf(Document& document, const Object& font) {
  Arena arena;
  double widest = 0;
  for (const Object& width : document.Resolve(font.Get("Widths"), arena).Items()) {
    widest = std::max(widest, std::abs(document.Resolve(width, arena).NumberOr(0)));
  }
  return widest;
}

// Fonts of bitmaps are often shown at size 1 and have the size in their matrix: the box around
// their glyphs tells it, which is somewhat higher than the em. A box that is many times higher than
// the widest glyph is wide is none of these glyphs.
double Type3Em(Document& document, const Object& font, double scale) {
  constexpr double kBoxOfEm = 1.1;
  constexpr double kLeast = 0.5;
  constexpr double kMost = 2;
  constexpr double kBoxOfWidest = 6;
  Arena arena;
  const auto items = document.Resolve(font.Get("FontBBox"), arena).Items();
  if (items.size() < 4) {
    return 1;
  }
  const double box = std::abs(document.Resolve(items[3], arena).NumberOr(0) -
                              document.Resolve(items[1], arena).NumberOr(0));
  const double widest = WidestOf(document, font);
  const bool is_of_glyphs = widest == 0 || box <= kBoxOfWidest * widest;
  const double height = (is_of_glyphs ? box / kBoxOfEm : widest) * scale;
  return height <= 0 || (height >= kLeast && height <= kMost) ? 1 : height;
}

}  // namespace

PageFont::PageFont(Document& document, const Object& reference)
    : font_(document, reference), program_bytes_(ProgramOf(document, font_.descriptor())) {
  if (!program_bytes_.empty()) {
    program_ = fonts::FontProgram::Open(program_bytes_);
  }
  text_.emplace(document, reference, font_, program_.get());
  face_ = std::make_shared<const Typeface>(TypefaceOf(font_, program_.get()));
  if (font_.kind() == fonts::FontKind::kType3) {
    Arena arena;
    const Object font = document.Resolve(reference, arena);
    glyph_scale_ = Type3Scale(document, font);
    em_ = Type3Em(document, font, glyph_scale_);
  }
}

void PageFont::Split(std::string_view bytes, std::vector<std::uint32_t>& codes) const {
  if (font_.codes() != nullptr && font_.codes()->Split(bytes, codes)) {
    return;
  }
  codes.clear();
  const std::size_t step = font_.is_composite() ? 2 : 1;
  for (std::size_t i = 0; i + step <= bytes.size(); i += step) {
    std::uint32_t code = 0;
    for (std::size_t k = 0; k < step; ++k) {
      code = code << 8 | static_cast<std::uint8_t>(bytes[i + k]);
    }
    codes.push_back(code);
  }
}

double PageFont::AdvanceOf(std::uint32_t code) {
  const double advance = font_.is_composite() ? AdvanceOfComposite(code)
                                              : AdvanceOfSimple(static_cast<std::uint8_t>(code));
  return advance * glyph_scale_;
}

// Of a font that goes downwards each glyph is an em high, as most are.
pdf::TextAdvance PageFont::AdvanceOf(std::string_view bytes, const pdf::TextState& text) {
  pdf::TextAdvance advance;
  codes_.clear();
  Split(bytes, codes_);
  for (const std::uint32_t code : codes_) {
    const double spacing = SpacingOf(code, text);
    if (is_vertical()) {
      advance.y += -text.size + spacing;
    } else {
      advance.x += (AdvanceOf(code) * text.size + spacing) * text.scale;
    }
  }
  return advance;
}

// By a map that is not known here, what Latin letters are to the others stands in.
double PageFont::AdvanceOfComposite(std::uint32_t code) {
  constexpr std::uint32_t kNoCid = 0xFFFFFFFF;  // it has the default
  if (font_.codes() != nullptr) {
    return font_.WidthOfCid(font_.CidOf(code));
  }
  const double usual = font_.WidthOfCid(kNoCid);
  return code < 0x80 ? usual / 2 : usual;
}

// A font that is not embedded need not tell the widths of its glyphs when all readers know it.
double PageFont::AdvanceOfSimple(std::uint8_t code) {
  if (const auto width = font_.WidthOf(code)) {
    return *width;
  }
  if (font_.has_widths()) {
    return font_.descriptor().missing_width.value_or(0);
  }
  if (program_ != nullptr) {
    if (!glyphs_) {
      glyphs_.emplace(font_, *program_);
    }
    return program_->AdvanceOf(glyphs_->StandardGlyphOf(code)).value_or(0);
  }
  return StandInAdvance(*face_, TextOf(code));
}

PageFont* PageFonts::Find(const Object& reference) {
  if (reference.IsNull()) {
    return nullptr;
  }
  if (!reference.IsReference()) {
    std::unique_ptr<PageFont>& place = in_place_[reference.Entries().data()];
    if (place == nullptr) {
      place = std::make_unique<PageFont>(*document_, reference);
    }
    return place.get();
  }
  const std::uint32_t number = reference.AsReference().number;
  const auto known = fonts_.find(number);
  if (known != fonts_.end()) {
    return known->second.get();
  }
  auto font = std::make_unique<PageFont>(*document_, reference);
  program_bytes_ += font->program_size();
  if (fonts_.size() >= limits::kMaxFonts || program_bytes_ > limits::kMaxBytesOfPrograms) {
    fonts_.clear();
    program_bytes_ = font->program_size();
  }
  return fonts_.emplace(number, std::move(font)).first->second.get();
}

}  // namespace TarnixTools::engines
