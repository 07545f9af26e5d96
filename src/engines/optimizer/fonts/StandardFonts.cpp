#include "engines/optimizer/fonts/StandardFonts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/fonts/HarfBuzzObjects.h"
#include "engines/support/fonts/SubsetTag.h"

namespace TarnixTools::engines::optimizer {

using fonts::DocumentFont;
using fonts::FontProgram;
using fonts::GlyphFinder;

namespace {

// In thousandths of the font's size.
constexpr double kAdvanceTolerance = 1;
constexpr double kExtentTolerance = 10;
constexpr double kScale = 1000;

struct StandardFont {
  std::string_view name;
  std::string_view family;  // with the same metrics
  std::string_view style;
};

constexpr std::array<StandardFont, 12> kStandardFonts = {{
    {"Courier", "Liberation Mono", "Regular"},
    {"Courier-Bold", "Liberation Mono", "Bold"},
    {"Courier-BoldOblique", "Liberation Mono", "Bold Italic"},
    {"Courier-Oblique", "Liberation Mono", "Italic"},
    {"Helvetica", "Liberation Sans", "Regular"},
    {"Helvetica-Bold", "Liberation Sans", "Bold"},
    {"Helvetica-BoldOblique", "Liberation Sans", "Bold Italic"},
    {"Helvetica-Oblique", "Liberation Sans", "Italic"},
    {"Times-Bold", "Liberation Serif", "Bold"},
    {"Times-BoldItalic", "Liberation Serif", "Bold Italic"},
    {"Times-Italic", "Liberation Serif", "Italic"},
    {"Times-Roman", "Liberation Serif", "Regular"},
}};

// The file of the installed face; empty for a font that is no standard one, and where there is none.
std::string FileFor(std::string_view name) {
  const auto* const found = std::find_if(
      kStandardFonts.begin(), kStandardFonts.end(),
      [&](const StandardFont& font) { return font.name == fonts::WithoutSubsetTag(name); });
  if (found == kStandardFonts.end()) {
    return {};
  }
  const fonts::InstalledFace* face = fonts::FontCatalog::Get().Find(found->family, found->style);
  const bool is_there = face != nullptr && face->family == found->family && face->index == 0 &&
                        fonts::FontCatalog::HasStyle(*face, found->style);
  return is_there ? face->file : std::string();
}

// What is measured of a glyph, in thousandths of the font's size.
struct Measures {
  double advance = 0;
  std::optional<std::array<double, 4>> sides;  // none for a glyph that shows nothing
};

std::optional<Measures> MeasuresIn(FontProgram& program, std::uint32_t glyph) {
  const auto shape = program.ShapeOf(glyph);
  if (!shape || program.units_per_em() <= 0) {
    return std::nullopt;
  }
  const double unit = kScale / program.units_per_em();
  Measures measures{.advance = static_cast<double>(shape->advance) * unit, .sides = {}};
  for (const fonts::GlyphShape::Point& point : shape->points) {
    const double x = static_cast<double>(point.x) * unit;
    const double y = static_cast<double>(point.y) * unit;
    auto& sides = measures.sides;
    sides = sides.value_or(std::array{x, y, x, y});
    *sides = {std::min((*sides)[0], x), std::min((*sides)[1], y), std::max((*sides)[2], x),
              std::max((*sides)[3], y)};
  }
  return measures;
}

bool Agree(const Measures& a, const Measures& b) {
  if (std::abs(a.advance - b.advance) > kAdvanceTolerance ||
      a.sides.has_value() != b.sides.has_value()) {
    return false;
  }
  for (std::size_t i = 0; a.sides && i < a.sides->size(); ++i) {
    if (std::abs((*a.sides)[i] - (*b.sides)[i]) > kExtentTolerance) {
      return false;
    }
  }
  return true;
}

// The name of the code's glyph, if that is what readers take without the program; empty otherwise.
std::string NameWithout(FontProgram& program, const DocumentFont& font, std::uint8_t code,
                        std::uint32_t glyph) {
  const std::string_view said = font.GlyphNameOf(code);
  const std::string_view expected =
      said.empty() ? GlyphNameIn(fonts::BaseEncoding::kStandard, code) : said;
  std::string name = program.NameOf(glyph);
  return name == expected ? name : std::string();
}

// Whether the codes of one font show in the face what they show in the program.
bool AgreesWith(FontProgram& face, FontProgram& program, const FontJob::Use& use) {
  GlyphFinder finder(*use.font, program);
  for (const std::uint32_t code : use.codes) {
    const auto byte = static_cast<std::uint8_t>(code);
    const std::vector<std::uint32_t> glyphs = finder.GlyphsOf(code);
    const std::uint32_t glyph = glyphs.empty() ? 0 : glyphs.front();
    const std::string name = NameWithout(program, *use.font, byte, glyph);
    const auto embedded = MeasuresIn(program, glyph);
    const auto installed = MeasuresIn(face, face.GlyphNamed(name));
    if (glyph == 0 || name.empty() || !embedded || !installed || !Agree(*embedded, *installed)) {
      return false;
    }
    const double width = use.font->WidthOf(byte).value_or(installed->advance);
    if (std::abs(width - installed->advance) > kAdvanceTolerance) {
      return false;
    }
  }
  return true;
}

bool IsStandardUse(FontProgram& program, const FontJob::Use& use) {
  const DocumentFont& font = *use.font;
  const std::string file = font.kind() == fonts::FontKind::kType1 && font.descriptor().number != 0
                               ? FileFor(font.name())
                               : std::string();
  if (file.empty()) {
    return false;
  }
  const fonts::Blob bytes(fonts::HarfBuzz::Get().hb_blob_create_from_file_or_fail(file.c_str()));
  const std::unique_ptr<FontProgram> face = FontProgram::Open(bytes.bytes());
  return face != nullptr && AgreesWith(*face, program, use);
}

}  // namespace

bool IsStandardProgram(std::string_view program, const FontJob& job) {
  try {
    const std::unique_ptr<FontProgram> embedded = FontProgram::Open(program);
    return embedded != nullptr && !job.uses.empty() &&
           std::all_of(job.uses.begin(), job.uses.end(),
                       [&](const FontJob::Use& use) { return IsStandardUse(*embedded, use); });
  } catch (const fonts::LibraryMissing&) {
    return false;
  }
}

void DropProgram(pdf::DocumentRewriter& rewriter, const FontJob& job, FontReport& report) {
  for (const FontJob::Use& use : job.uses) {
    for (const std::string_view key : {"FontFile", "FontFile2", "FontFile3", "CharSet"}) {
      rewriter.RemoveEntry(rewriter.Successor(use.font->descriptor().number), key);
    }
  }
  ++report.dropped;
}

}  // namespace TarnixTools::engines::optimizer
