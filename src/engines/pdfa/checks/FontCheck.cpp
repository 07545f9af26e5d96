#include "engines/pdfa/checks/FontCheck.h"

#include <memory>
#include <string>

#include "engines/pdfa/FontSubject.h"
#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/CompositeFontCheck.h"
#include "engines/pdfa/checks/GlyphCheck.h"
#include "engines/pdfa/checks/GlyphSets.h"
#include "engines/pdfa/checks/ReadableNames.h"
#include "engines/pdfa/checks/TrueTypeCheck.h"
#include "engines/pdfa/rules/FontFacts.h"
#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/StandardFontNames.h"
#include "engines/support/fonts/SubsetTag.h"

namespace TarnixTools::engines::pdfa {

using fonts::DocumentFont;
using fonts::FontKind;
using fonts::FontProgram;
using pdf::Object;

namespace {

// Nothing tells what is in a stream of /FontFile3 without a /Subtype: readers need not take it.
bool HasProgram(const fonts::FontDescriptor& descriptor) {
  return descriptor.program != 0 && (descriptor.entry != fonts::ProgramEntry::kFontFile3 ||
                                     !descriptor.program_subtype.empty());
}

class FontJudge {
 public:
  FontJudge(CheckedDocument& checked, const ShownFonts::Font& shown)
      : checked_(&checked),
        shown_(&shown),
        font_(checked.document(), shown.object, fonts::MapsByName::kInstalled),
        subject_(SubjectOf(font_)),
        place_{.object = font_.number(), .page_number = shown.page_number, .subject = subject_} {
    dictionary_ = checked.document().Resolve(shown.object, arena_);
  }

  void Run() {
    CheckDictionary(dictionary_, Get(dictionary_, "Subtype"));
    if (Get(dictionary_, "Subtype").IsName("Type0")) {
      const auto descendants = Get(dictionary_, "DescendantFonts").Items();
      descendant_ = descendants.empty() ? Object()
                                        : checked_->document().Resolve(descendants.front(), arena_);
      CheckDictionary(descendant_, Get(descendant_, "Subtype"));
    } else {
      CheckCodes();
    }
    const std::string bytes = ProgramBytes();
    const auto program = bytes.empty() ? nullptr : FontProgram::Open(bytes);
    CheckKind(program.get());
    CheckGlyphs(*checked_, {font_, *shown_, dictionary_, descendant_, place_}, program.get());
  }

 private:
  Object Get(const Object& dictionary, std::string_view key) {
    return checked_->Get(dictionary, key, arena_);
  }

  void CheckDictionary(const Object& dictionary, const Object& subtype) {
    const fonts::FontDescriptor& descriptor = font_.descriptor();
    const bool has_no_program = subtype.IsName("Type0") || subtype.IsName("Type3");
    FontFacts facts = {.has_type = Get(dictionary, "Type").IsName("Font"),
                       .subtype = subtype.Text(),
                       .has_name = Get(dictionary, "BaseFont").IsName(),
                       .needs_program = shown_->is_rendered && !has_no_program,
                       .has_program = HasProgram(descriptor)};
    if (!has_no_program && !descriptor.program_subtype.empty()) {
      facts.program_subtype = descriptor.program_subtype;
    }
    checked_->findings().Check(facts, place_);
    CheckReadableName(checked_->findings(), Get(dictionary, "BaseFont").Text(), place_);
  }

  // Of a simple font.
  void CheckCodes() {
    const Object first = Get(dictionary_, "FirstChar");
    const Object last = Get(dictionary_, "LastChar");
    const Object widths = Get(dictionary_, "Widths");
    SimpleFontFacts facts{.is_standard = font_.kind() == FontKind::kType1 &&
                                         fonts::IsStandardFontName(font_.name())};
    if (first.IsNumber()) {
      facts.first_code = first.IntegerOr(0);
    }
    if (last.IsNumber()) {
      facts.last_code = last.IntegerOr(0);
    }
    if (widths.IsArray()) {
      facts.widths = widths.Items().size();
    }
    checked_->findings().Check(facts, place_);
  }

  std::string ProgramBytes() {
    const std::uint32_t number = HasProgram(font_.descriptor()) ? font_.descriptor().program : 0;
    auto stream = number == 0
                      ? std::nullopt
                      : checked_->document().TryDecodeStream(number, limits::kMaxProgramBytes);
    return stream ? std::move(stream->data) : std::string();
  }

  void CheckKind(FontProgram* program) {
    if (descendant_.IsDictionary()) {
      CheckCompositeFont(*checked_, {font_, *shown_, dictionary_, descendant_, place_}, program);
    } else if (font_.kind() == FontKind::kTrueType) {
      CheckTrueTypeFont(*checked_, font_, dictionary_, program, place_);
    } else if (font_.kind() == FontKind::kType1) {
      const Object names = Get(Get(dictionary_, "FontDescriptor"), "CharSet");
      const SetAgreement set = CompareCharSet(names.Text(), program);
      checked_->findings().Check(Type1FontFacts{.has_program = font_.descriptor().program != 0,
                                                .is_subset = fonts::HasSubsetTag(font_.name()),
                                                .has_char_set = names.IsString(),
                                                .char_set_is_true = set.is_true,
                                                .char_set_is_whole = set.is_whole,
                                                .char_set_has_shown = CharSetHasShown(
                                                    names.Text(), font_, program, *shown_)},
                                 place_);
    }
  }

  CheckedDocument* checked_;
  const ShownFonts::Font* shown_;
  pdf::Arena arena_;
  DocumentFont font_;
  std::string subject_;
  Place place_;
  Object dictionary_;
  Object descendant_;  // null for a simple font
};

}  // namespace

void CheckFont(CheckedDocument& checked, const ShownFonts::Font& font) {
  FontJudge(checked, font).Run();
}

}  // namespace TarnixTools::engines::pdfa
