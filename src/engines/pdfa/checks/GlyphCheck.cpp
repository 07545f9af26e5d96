#include "engines/pdfa/checks/GlyphCheck.h"

#include <string>

#include "engines/pdfa/checks/CodeText.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "engines/support/fonts/GlyphFinder.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontKind;
using fonts::FontProgram;
using fonts::GlyphFinder;

namespace {

constexpr std::string_view kNotdef = ".notdef";

class GlyphJudge {
 public:
  GlyphJudge(CheckedDocument& checked, const CheckedFont& font, FontProgram* program)
      : checked_(&checked),
        font_(&font),
        program_(program),
        text_(checked, font, program),
        has_widths_(font.dictionary.Has("Widths")) {
    if (program != nullptr && font.font.kind() != FontKind::kType3) {
      finder_.emplace(font.font, *program);
    }
  }

  void Run() {
    for (const auto& [code, use] : font_->shown.codes) {
      Check(code, use);
    }
    if (font_->shown.has_broken_strings && finder_) {
      CheckBroken();
    }
  }

 private:
  // What is left over of a string shows .notdef.
  void CheckBroken() {
    GlyphFacts facts;
    facts.is_rendered = font_->shown.broken_are_rendered;
    facts.is_present = false;
    facts.is_notdef = true;
    facts.program_width = program_->AdvanceOf(0);
    facts.stated_width = font_->font.WidthOfCid(0);
    facts.text = std::u16string();
    checked_->findings().Check(facts, PlaceOf(0, font_->place.page_number));
  }

  void Check(std::uint32_t code, const CodeUse& use) {
    GlyphFacts facts = {.is_rendered = use.is_rendered,
                        .has_known_collection = text_.has_known_collection(),
                        .has_identity_map = text_.has_identity_map(),
                        .has_actual_text = !use.lacks_actual_text};
    if (finder_) {
      LookAtGlyph(code, facts);
    } else if (font_->font.kind() == FontKind::kType3) {
      facts.is_notdef = MeansNotdef(code);
    }
    if (Contains(kUnicodeLevels, checked_->level())) {
      facts.text = text_.Of(code);
    }
    const Place place = PlaceOf(code, use.page_number);
    checked_->findings().Check(facts, place);
  }

  // A code without a glyph shows .notdef, and is as wide.
  void LookAtGlyph(std::uint32_t code, GlyphFacts& facts) {
    const std::uint32_t glyph = finder_->StandardGlyphOf(code);
    facts.is_notdef = glyph == 0 && MeansNotdef(code);
    facts.is_present = glyph != 0 || facts.is_notdef;
    facts.program_width = program_->AdvanceOf(glyph);
    facts.stated_width = StatedWidth(code);
  }

  // Whether the font itself says that there is no glyph for the code; else the program lacks it.
  bool MeansNotdef(std::uint32_t code) const {
    if (font_->font.is_composite()) {
      return font_->font.CidOf(code) == 0;
    }
    const std::string_view name = font_->font.StandardNameOf(static_cast<std::uint8_t>(code));
    return name.empty() || name == kNotdef;
  }

  std::optional<double> StatedWidth(std::uint32_t code) const {
    if (font_->font.is_composite()) {
      return font_->font.WidthOfCid(font_->font.CidOf(code));
    }
    if (!has_widths_) {
      return std::nullopt;
    }
    const auto width = font_->font.WidthOf(static_cast<std::uint8_t>(code));
    return width ? width : font_->font.descriptor().missing_width.value_or(0);
  }

  Place PlaceOf(std::uint32_t code, std::size_t page_number) {
    subject_ = std::string(font_->place.subject) + ", code " + std::to_string(code);
    Place place = font_->place;
    place.page_number = page_number;
    place.subject = subject_;
    return place;
  }

  CheckedDocument* checked_;
  const CheckedFont* font_;
  FontProgram* program_;
  CodeText text_;
  bool has_widths_;
  std::optional<GlyphFinder> finder_;
  std::string subject_;
};

}  // namespace

void CheckGlyphs(CheckedDocument& checked, const CheckedFont& font, FontProgram* program) {
  GlyphJudge(checked, font, program).Run();
}

}  // namespace TarnixTools::engines::pdfa
