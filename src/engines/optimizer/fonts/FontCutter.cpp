#include "engines/optimizer/fonts/FontCutter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engines/optimizer/fonts/CharacterMaps.h"
#include "engines/optimizer/fonts/ProgramSubset.h"
#include "engines/optimizer/fonts/Type1Program.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::engines::optimizer {

using fonts::FontProgram;
using fonts::GlyphFinder;
using fonts::ProgramKind;

namespace {

constexpr int kDeflateLevel = 12;

// By use and code, as the job has them.
using GlyphsOfCodes = std::vector<std::vector<std::uint32_t>>;

GlyphsOfCodes FindGlyphs(FontProgram& program, const FontJob& job) {
  GlyphsOfCodes found;
  for (const FontJob::Use& use : job.uses) {
    GlyphFinder finder(*use.font, program);
    for (const std::uint32_t code : use.codes) {
      found.push_back(finder.GlyphsOf(code));
    }
  }
  return found;
}

// Without a map of characters a font that does not tell Unicode could not be copied from by readers
// that look there.
bool NeedsMaps(const FontJob& job) {
  for (const FontJob::Use& use : job.uses) {
    if (!use.font->is_composite() || !use.font->has_to_unicode()) {
      return true;
    }
  }
  return false;
}

bool NeedsNames(const FontProgram& program, const FontJob& job) {
  for (const FontJob::Use& use : job.uses) {
    if (!use.font->is_composite() && use.font->has_encoding()) {
      return program.has_glyph_names();
    }
  }
  return false;
}

struct CutBytes {
  std::string bytes;  // empty when there is none
  std::size_t clear = 0;
  std::size_t encrypted = 0;
};

CutBytes CutType1(FontProgram& program, const std::set<std::uint32_t>& glyphs) {
  const std::optional<Type1Program> parts = Type1Program::Read(program.bytes());
  std::set<std::string> names;
  for (const std::uint32_t glyph : glyphs) {
    names.insert(program.NameOf(glyph));
  }
  Type1Text text = parts ? parts->With(names) : Type1Text();
  return {std::move(text.bytes), text.clear, text.encrypted};
}

CutBytes Cut(FontProgram& program, const FontJob& job, const std::set<std::uint32_t>& glyphs) {
  if (program.kind() == ProgramKind::kType1) {
    return CutType1(program, glyphs);
  }
  SubsetWishes wishes{.glyphs = glyphs,
                      .keeps_names = NeedsNames(program, job),
                      .drops_hints = job.drops_hints,
                      .maps = {}};
  if (program.kind() != ProgramKind::kCff && NeedsMaps(job)) {
    std::optional<std::string> maps = CutCharacterMaps(program, glyphs);
    if (!maps) {
      return {};
    }
    wishes.maps = std::move(*maps);
  }
  return {.bytes = SubsetOf(program, wishes)};
}

// Whether a glyph of the one program is that of the other: in Type 1, names are what counts.
bool IsSameGlyph(FontProgram& before, std::uint32_t glyph, FontProgram& after,
                 std::uint32_t other) {
  const bool is_same = before.kind() == ProgramKind::kType1
                           ? before.NameOf(glyph) == after.NameOf(other)
                           : glyph == other;
  return is_same && before.ShapeOf(glyph) == after.ShapeOf(other);
}

// Whether what was cut shows all that is shown as before, asked of another library than the one
// that cut it.
bool IsAsBefore(FontProgram& before, const GlyphsOfCodes& found, FontProgram& after,
                const FontJob& job) {
  const GlyphsOfCodes found_after = FindGlyphs(after, job);
  if (before.kind() != after.kind() || before.is_cid_keyed() != after.is_cid_keyed() ||
      !IsSameGlyph(before, 0, after, 0)) {
    return false;
  }
  std::set<std::pair<std::uint32_t, std::uint32_t>> compared;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const bool is_same =
        std::equal(found[i].begin(), found[i].end(), found_after[i].begin(), found_after[i].end(),
                   [&](std::uint32_t glyph, std::uint32_t other) {
                     return !compared.insert({glyph, other}).second ||
                            IsSameGlyph(before, glyph, after, other);
                   });
    if (!is_same) {
      return false;
    }
  }
  return true;
}

std::set<std::uint32_t> AllOf(const GlyphsOfCodes& found) {
  std::set<std::uint32_t> glyphs = {0};
  for (const std::vector<std::uint32_t>& of_code : found) {
    glyphs.insert(of_code.begin(), of_code.end());
  }
  return glyphs;
}

CutProgram Deflated(const CutBytes& made) {
  CutProgram cut{.data = {},
                 .byte_count = made.bytes.size(),
                 .clear_bytes = made.clear,
                 .encrypted_bytes = made.encrypted};
  pdf::DeflateTo(cut.data, made.bytes, kDeflateLevel);
  return cut;
}

CutResult CutWithLibraries(std::string_view program, const FontJob& job) {
  const std::unique_ptr<FontProgram> before = FontProgram::Open(program);
  if (before == nullptr) {
    return {std::nullopt, FontLeftAlone::kUnreadable};
  }
  if (before->is_tricky()) {
    return {std::nullopt, FontLeftAlone::kUnsure};
  }
  const GlyphsOfCodes found = FindGlyphs(*before, job);
  const CutBytes made = Cut(*before, job, AllOf(found));
  const std::unique_ptr<FontProgram> after = FontProgram::Open(made.bytes);
  if (after == nullptr || !IsAsBefore(*before, found, *after, job)) {
    return {std::nullopt, FontLeftAlone::kUnsure};
  }
  CutProgram cut = Deflated(made);
  if (cut.data.size() >= job.encoded_bytes) {
    return {std::nullopt, FontLeftAlone::kSmallest};
  }
  return {std::move(cut), {}};
}

}  // namespace

CutResult CutFont(std::string_view program, const FontJob& job) {
  try {
    return CutWithLibraries(program, job);
  } catch (const fonts::LibraryMissing&) {
    return {std::nullopt, FontLeftAlone::kNoLibrary};
  }
}

}  // namespace TarnixTools::engines::optimizer
