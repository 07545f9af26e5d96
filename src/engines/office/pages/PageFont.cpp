#include "engines/office/pages/PageFont.h"

#include <cmath>

#include "engines/office/Limits.h"
#include "engines/office/pages/TypefaceNames.h"

namespace TarnixTools::engines::office {

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

// From a Type 3 font's own units to ems.
double Type3Scale(Document& document, const Object& reference) {
  Arena arena;
  const Object font = document.Resolve(reference, arena);
  const auto items = document.Resolve(font.Get("FontMatrix"), arena).Items();
  const double scale = items.empty() ? 0 : std::abs(document.Resolve(items[0], arena).NumberOr(0));
  return scale > 0 ? scale : 0.001;
}

}  // namespace

PageFont::PageFont(Document& document, const Object& reference)
    : font_(document, reference), program_bytes_(ProgramOf(document, font_.descriptor())) {
  if (!program_bytes_.empty()) {
    program_ = fonts::FontProgram::Open(program_bytes_);
  }
  text_.emplace(document, reference, font_, program_.get());
  face_ = std::make_shared<const Typeface>(TypefaceOf(font_));
  if (font_.kind() == fonts::FontKind::kType3) {
    glyph_scale_ = Type3Scale(document, reference);
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

double PageFont::AdvanceOf(std::uint32_t code) const {
  if (font_.is_composite()) {
    return font_.WidthOfCid(font_.CidOf(code)) * glyph_scale_;
  }
  const auto width = font_.WidthOf(static_cast<std::uint8_t>(code));
  return width.value_or(font_.descriptor().missing_width.value_or(0)) * glyph_scale_;
}

PageFont* PageFonts::Find(const Object& reference) {
  if (reference.IsNull()) {
    return nullptr;
  }
  if (!reference.IsReference()) {
    in_place_ = std::make_unique<PageFont>(*document_, reference);
    return in_place_.get();
  }
  std::unique_ptr<PageFont>& place = fonts_[reference.AsReference().number];
  if (place == nullptr) {
    place = std::make_unique<PageFont>(*document_, reference);
  }
  return place.get();
}

}  // namespace TarnixTools::engines::office
