#include "engines/pdfa/convert/fonts/EmbeddedFonts.h"

#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/pdfa/FontSubject.h"
#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/fonts/SfntFile.h"
#include "engines/pdfa/convert/fonts/TrueTypeFonts.h"
#include "engines/support/fonts/CidSet.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "engines/support/fonts/SubsetTag.h"
#include "pdf/write/EntryText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontKind;
using fonts::FontProgram;
using pdf::Arena;
using pdf::Object;

namespace {

constexpr std::uint32_t kMaxCid = 0xFFFF;
// ISO 19005-2, 6.2.11.5, allows for a difference of 1; rounding takes some of that.
constexpr double kAllowedDifference = 0.9;

// The advances that glyphs have to have, in units of the program, where they have others.
std::map<std::uint32_t, std::uint16_t> WrongAdvances(FontProgram& program,
                                                     const std::vector<const FontUse*>& uses) {
  std::map<std::uint32_t, std::uint16_t> advances;
  for (const FontUse* use : uses) {
    fonts::GlyphFinder finder(*use->font, program);
    for (const std::uint32_t code : use->codes) {
      const std::uint32_t glyph = finder.StandardGlyphOf(code);
      if (glyph == 0) {
        continue;  // what is shown for it is seen to elsewhere
      }
      const auto own = program.AdvanceOf(glyph);
      const auto said = use->WidthOf(code);
      if (own && said && *said >= 0 && std::abs(*own - *said) > kAllowedDifference) {
        advances[glyph] =
            static_cast<std::uint16_t>(std::lround(*said * program.units_per_em() / 1000));
      }
    }
  }
  return advances;
}

// A bit for each identifier that the program has a glyph for, that of .notdef included, and for each
// that gets one because it is shown.
std::string CidSetOf(const FontUse& use, FontProgram& program) {
  const fonts::DocumentFont& font = *use.font;
  fonts::CidSet set;
  fonts::GlyphFinder finder(font, program);
  for (const std::uint32_t code : use.codes) {
    if (font.kind() == FontKind::kCidType2 && finder.StandardGlyphOf(code) == 0) {
      set.Add(font.CidOf(code));
    }
  }
  for (std::uint32_t cid = 1; cid <= kMaxCid; ++cid) {
    const std::uint32_t glyph =
        program.is_cid_keyed() ? program.GlyphOfCid(cid) : font.MappedGlyphOf(cid);
    if (glyph != 0 && glyph < program.glyph_count()) {
      set.Add(cid);
    }
  }
  return set.bits();
}

// The names of all glyphs.
std::string CharSetOf(FontProgram& program) {
  std::string names;
  for (std::uint32_t glyph = 0; glyph < program.glyph_count(); ++glyph) {
    const std::string name = program.NameOf(glyph);
    if (!name.empty() && name != ".notdef") {
      pdf::AppendName(names, name);
    }
  }
  std::string text;
  pdf::AppendString(text, names, false);
  return text;
}

}  // namespace

void EmbeddedFonts::Take(const FontUse& use) {
  programs_[use.font->descriptor().program].push_back(&use);
  if (use.font->is_composite()) {
    MendComposite(use);
  }
  MendLists(use);
}

// What readers take for granted has to be said (ISO 19005-2, 6.2.11.3.2).
void EmbeddedFonts::MendComposite(const FontUse& use) {
  Arena arena;
  pdf::Document& document = conversion_->document;
  const Object font = document.Load({use.font->number(), 0}, arena);
  const auto descendants = document.Resolve(font.Get("DescendantFonts"), arena).Items();
  const pdf::Followed descendant =
      document.Follow(descendants.empty() ? Object() : descendants[0], arena);
  if (use.font->kind() != FontKind::kCidType2 || !descendant.value.IsDictionary() ||
      !descendant.value.Get("CIDToGIDMap").IsNull()) {
    return;
  }
  conversion_->report.Changed("fonts that do not say which glyphs they have");
  if (descendant.number != 0) {
    conversion_->rewriter.SetEntry(descendant.number, "CIDToGIDMap", "/Identity");
    return;
  }
  std::string text = "[<<";
  pdf::AppendEntries(text, descendant.value);
  conversion_->rewriter.SetEntry(use.font->number(), "DescendantFonts",
                                 text + "/CIDToGIDMap/Identity>>]");
}

// Lists of the glyphs in a program are often wrong, and nobody needs them (6.2.11.4.2).
void EmbeddedFonts::MendLists(const FontUse& use) {
  const fonts::FontDescriptor& descriptor = use.font->descriptor();
  if (conversion_->is_part1() || !descriptor.lists_glyphs || descriptor.number == 0) {
    return;
  }
  conversion_->rewriter.RemoveEntry(descriptor.number, "CIDSet");
  conversion_->rewriter.RemoveEntry(descriptor.number, "CharSet");
}

// PDF/A-1 wants the lists of subsets (ISO 19005-1, 6.3.5), and wants them to be right.
void EmbeddedFonts::AddLists(const FontUse& use, FontProgram& program) {
  const fonts::FontDescriptor& descriptor = use.font->descriptor();
  if (!conversion_->is_part1() || descriptor.number == 0 ||
      !fonts::HasSubsetTag(use.font->name())) {
    return;
  }
  if (use.font->is_composite()) {
    std::string reference;
    pdf::AppendReference(reference, conversion_->rewriter.Add(
                                        pdf::ObjectChange::Stream("<<>>", CidSetOf(use, program))));
    conversion_->rewriter.SetEntry(descriptor.number, "CIDSet", reference);
  } else if (use.font->kind() == FontKind::kType1) {
    conversion_->rewriter.SetEntry(descriptor.number, "CharSet", CharSetOf(program));
  }
}

void EmbeddedFonts::Mend() {
  for (const auto& [number, uses] : programs_) {
    try {
      MendProgram(number, uses);
    } catch (const fonts::LibraryMissing&) {
      return;
    }
  }
}

// Text is laid out by what the document says, so that the program is what has to change.
void EmbeddedFonts::MendProgram(std::uint32_t number, const std::vector<const FontUse*>& uses) {
  const auto stream = conversion_->document.TryDecodeStream(number, limits::kMaxProgramBytes);
  const auto program = stream ? FontProgram::Open(stream->data) : nullptr;
  if (program == nullptr) {
    return;
  }
  for (const FontUse* use : uses) {
    AddLists(*use, *program);
  }
  std::optional<SfntFile> file = program->kind() == fonts::ProgramKind::kTrueType
                                     ? SfntFile::Read(stream->data)
                                     : std::nullopt;
  bool has_changed = file && MendTrueTypeFonts(*conversion_, uses, *program, *file);
  const std::map<std::uint32_t, std::uint16_t> advances = WrongAdvances(*program, uses);
  if (!advances.empty() && file && file->SetAdvances(advances)) {
    conversion_->report.Changed(SubjectOf(*uses.front()->font) +
                                ", which had other advances than its program");
    has_changed = true;
  }
  if (has_changed) {
    std::string bytes = file->Bytes();
    const std::string dictionary = "<</Length1 " + std::to_string(bytes.size()) + ">>";
    conversion_->rewriter.Change(number, pdf::ObjectChange::Stream(dictionary, std::move(bytes)));
  }
}

}  // namespace TarnixTools::engines::pdfa
