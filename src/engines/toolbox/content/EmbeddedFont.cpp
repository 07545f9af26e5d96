#include "engines/toolbox/content/EmbeddedFont.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/support/fonts/CompositeFont.h"
#include "engines/toolbox/ToolboxFailure.h"
#include "engines/toolbox/content/StreamText.h"

namespace TarnixTools::engines::toolbox {

using fonts::OutlineKind;

namespace {

// What a glyph stands for that only makes sense together with others: nothing that is seen.
constexpr char32_t kWordJoiner = 0x2060;

constexpr std::size_t kMaxCode = 0xFFFF;
constexpr int kPdf14 = 14;  // the version of PDF/A-1, the last that wants lists of glyphs

class WrittenObjects : public fonts::FontObjects {
 public:
  explicit WrittenObjects(pdf::FileWriter& writer) : writer_(&writer) {}

  std::uint32_t AddValue(const std::string& text) override {
    const std::uint32_t number = writer_->Reserve();
    writer_->WriteObject(number, text);
    return number;
  }

  std::uint32_t AddStream(const std::string& entries, std::string bytes) override {
    return WriteStreamText(*writer_, entries, bytes);
  }

 private:
  pdf::FileWriter* writer_;
};

}  // namespace

std::optional<unsigned> EmbeddedFont::CodeFor(std::uint32_t glyph, std::u32string_view text) {
  std::u32string& known = texts_[glyph];
  if (known.empty() || known == text) {
    known = text;
    return face_->CidOf(glyph);
  }
  const auto more = more_codes_.find({glyph, std::u32string(text)});
  if (more != more_codes_.end()) {
    return more->second;
  }
  // Only TrueType fonts can say which glyph a code has.
  const std::size_t code = face_->glyph_count() + more_codes_.size();
  if (face_->outline_kind() != OutlineKind::kTrueType || code > kMaxCode) {
    return std::nullopt;
  }
  more_codes_.emplace(std::pair(glyph, std::u32string(text)), static_cast<unsigned>(code));
  return static_cast<unsigned>(code);
}

unsigned EmbeddedFont::CodeAmong(std::uint32_t glyph, std::u32string_view characters) {
  std::u32string& known = texts_[glyph];
  const auto plain = std::find_if(characters.begin(), characters.end(),
                                  [&](char32_t c) { return IsGlyphOf(glyph, c); });
  if (known.empty() && plain != characters.end()) {
    known = *plain;
  }
  return face_->CidOf(glyph);
}

std::optional<unsigned> EmbeddedFont::BlankFor(std::u32string_view text) {
  const std::uint32_t blank =
      face_->outline_kind() == OutlineKind::kTrueType ? face_->BlankGlyph() : 0;
  return blank == 0 ? std::nullopt : CodeFor(blank, text);
}

double EmbeddedFont::WidthOf(std::uint32_t glyph) const {
  const double width = face_->Advance(glyph) * 1000.0 / face_->units_per_em();
  return std::round(width * 100) / 100;
}

void EmbeddedFont::Write(pdf::FileWriter& writer) const {
  fonts::CompositeFont font(*face_, {.lists_glyphs = writer.version() <= kPdf14});
  const auto add = [&](unsigned code, std::uint32_t glyph, const std::u32string& text) {
    font.Add(code, glyph, WidthOf(glyph), text.empty() ? std::u32string(1, kWordJoiner) : text);
  };
  for (const auto& [glyph, text] : texts_) {
    add(face_->CidOf(glyph), glyph, text);
  }
  for (const auto& [use, code] : more_codes_) {
    add(code, use.first, use.second);
  }
  std::string program = font.Program();
  if (program.empty()) {
    throw ToolboxFailure(kToolboxFontEmbeddingError);
  }
  WrittenObjects objects(writer);
  writer.WriteObject(resource_.number, font.Write(std::move(program), objects));
}

}  // namespace TarnixTools::engines::toolbox
