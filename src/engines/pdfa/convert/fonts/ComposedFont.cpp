#include "engines/pdfa/convert/fonts/ComposedFont.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "engines/pdfa/convert/fonts/SfntFile.h"

namespace TarnixTools::engines::pdfa {

using fonts::OutlineKind;
using pdf::ObjectChange;

namespace {

class ConvertedObjects : public fonts::FontObjects {
 public:
  explicit ConvertedObjects(pdf::DocumentRewriter& rewriter) : rewriter_(&rewriter) {}

  std::uint32_t AddValue(const std::string& text) override {
    return rewriter_->Add(ObjectChange::Value(text));
  }

  std::uint32_t AddStream(const std::string& entries, std::string bytes) override {
    return rewriter_->Add(ObjectChange::Stream("<<" + entries + ">>", std::move(bytes)));
  }

 private:
  pdf::DocumentRewriter* rewriter_;
};

}  // namespace

ComposedFont::ComposedFont(Conversion& conversion, const fonts::FontFace& face, ComposedCodes codes)
    : conversion_(&conversion),
      face_(&face),
      font_(face, {.code_bytes = codes.code_bytes,
                   .is_vertical = codes.is_vertical,
                   .lists_glyphs = conversion.is_part1()}) {}

void ComposedFont::Add(std::uint32_t code, std::uint32_t glyph, double width,
                       const std::u32string& text) {
  if (width < 0 || face_->outline_kind() != OutlineKind::kTrueType) {
    width = face_->Advance(glyph) * 1000.0 / face_->units_per_em();
  } else if (const auto known = advances_.find(glyph); known != advances_.end()) {
    width = known->second;
  }
  advances_.emplace(glyph, width);
  const bool is_text = !text.empty() && text.find(U'\0') == std::u32string::npos;
  font_.Add(code, glyph, width, is_text ? text : U" ");
}

void ComposedFont::SetAdvances(std::string& program) const {
  std::optional<SfntFile> file =
      face_->outline_kind() == OutlineKind::kTrueType ? SfntFile::Read(program) : std::nullopt;
  std::map<std::uint32_t, std::uint16_t> units;
  for (const auto& [glyph, width] : advances_) {
    units[glyph] = static_cast<std::uint16_t>(std::lround(width * face_->units_per_em() / 1000));
  }
  if (file && file->SetAdvances(units)) {
    program = file->Bytes();
  }
}

bool ComposedFont::Write(std::uint32_t number) {
  std::string program = font_.Program();
  if (program.empty()) {
    return false;
  }
  SetAdvances(program);
  ConvertedObjects objects(conversion_->rewriter);
  conversion_->rewriter.Change(number,
                               ObjectChange::Value(font_.Write(std::move(program), objects)));
  return true;
}

}  // namespace TarnixTools::engines::pdfa
