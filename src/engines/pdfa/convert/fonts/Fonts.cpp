#include "engines/pdfa/convert/fonts/Fonts.h"

#include <string>

#include "engines/pdfa/FontSubject.h"
#include "engines/pdfa/convert/fonts/EmbeddedFonts.h"
#include "engines/pdfa/convert/fonts/ReplacedFont.h"
#include "engines/pdfa/convert/fonts/Type3Fonts.h"
#include "engines/pdfa/convert/fonts/UnicodeMaps.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// Fields are filled in with fonts of the form, which need not be embedded as long as no text is
// shown in them: a font that shows text elsewhere, too, is kept for them as it was.
class FormFonts {
 public:
  explicit FormFonts(Conversion& conversion) : conversion_(&conversion) {}

  void KeepOldFonts() {
    pdf::Document& document = conversion_->document;
    const pdf::Followed form = document.Follow(document.Catalog(arena_).Get("AcroForm"), arena_);
    const pdf::Followed resources = document.Follow(form.value.Get("DR"), arena_);
    const pdf::Followed fonts = document.Follow(resources.value.Get("Font"), arena_);
    if (fonts.number != 0) {
      Put(fonts.number, "", fonts.value);
    } else if (resources.number != 0) {
      Put(resources.number, "Font", fonts.value);
    } else if (form.number != 0) {
      Put(form.number, "DR", resources.value);
    }
  }

 private:
  // The dictionary of fonts is the object, the value of its key, or further down.
  void Put(std::uint32_t number, std::string_view key, const Object& value) {
    pdf::SerializeHooks hooks;
    hooks.reference = [this](std::string& out, pdf::Reference reference) {
      pdf::AppendReference(out, OldFont(reference.number));
    };
    for (const DictionaryEntry& entry : value.Entries()) {
      if (key.empty()) {
        std::string text;
        pdf::AppendObject(text, entry.value, hooks);
        conversion_->rewriter.SetEntry(number, entry.Key(), text);
      }
    }
    if (!key.empty() && value.IsDictionary()) {
      std::string text;
      pdf::AppendObject(text, value, hooks);
      conversion_->rewriter.SetEntry(number, key, text);
    }
  }

  std::uint32_t OldFont(std::uint32_t number) {
    Arena arena;
    const Object value = conversion_->document.Load({number, 0}, arena);
    if (!conversion_->rewriter.IsChanged(number) ||
        !conversion_->document.Resolve(value.Get("Type"), arena).IsName("Font")) {
      return number;
    }
    std::string text;
    pdf::AppendObject(text, value);
    return conversion_->rewriter.Add(pdf::ObjectChange::Value(std::move(text)));
  }

  Conversion* conversion_;
  Arena arena_;
};

// Throws fonts::LibraryMissing: without the libraries no document gets its fonts.
void Replace(Conversion& conversion, const FontUse& use) {
  const std::string name = SubjectOf(*use.font);
  if (use.is_sure && ReplaceFont(conversion, use)) {
    conversion.report.Changed(name + ", which was not embedded");
    return;
  }
  conversion.report.Blocking(name + " is not embedded, and no installed font can stand in for it");
}

bool IsReplaced(const FontUse& use) {
  return use.is_seen && use.font->kind() != fonts::FontKind::kType3 &&
         use.font->kind() != fonts::FontKind::kUnknown && use.font->descriptor().program == 0;
}

void TellUnicode(Conversion& conversion, const FontUse& use) {
  try {
    MendUnicode(conversion, use);
  } catch (const fonts::LibraryMissing&) {
    conversion.report.Blocking(SubjectOf(*use.font) + " does not tell its text");
  }
}

}  // namespace

void MendFonts(Conversion& conversion, const ContentSurvey& survey) {
  bool has_replaced = false;
  EmbeddedFonts embedded(conversion);
  for (const auto& [number, use] : survey.fonts()) {
    if (IsReplaced(use)) {
      Replace(conversion, use);
      has_replaced = true;
      continue;
    }
    if (use.font->kind() == fonts::FontKind::kType3) {
      MendType3Font(conversion, use);
    } else if (use.font->descriptor().program != 0) {
      embedded.Take(use);
    }
    if (Contains(kUnicodeLevels, conversion.level)) {
      TellUnicode(conversion, use);
    }
  }
  embedded.Mend();
  if (has_replaced) {
    FormFonts(conversion).KeepOldFonts();
  }
}

}  // namespace TarnixTools::engines::pdfa
