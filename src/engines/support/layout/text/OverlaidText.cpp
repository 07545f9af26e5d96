#include "engines/support/layout/text/OverlaidText.h"

#include <algorithm>
#include <utility>

#include "engines/support/layout/text/Characters.h"

namespace TarnixTools::engines {

namespace {

// In ems.
constexpr double kOverlap = 0.6;  // that letters of one text may share
constexpr double kGap = 1;        // between letters of one text

constexpr std::size_t kLeastLetters = 2;  // of a text that is told from others
constexpr std::size_t kMostRuns = 200;    // of a row, that are held against each other

// Glyphs that are painted one after the other and stand so.
struct Run {
  std::vector<PlacedGlyph> glyphs;
  std::size_t letters = 0;  // that are seen
  double left = 0;
  double right = 0;
  double size = 0;
};

struct Layer {
  GlyphRow row;
  std::vector<Run> runs;  // without their glyphs
};

bool ShowsNothing(const PageModel& page, const PlacedGlyph& placed) {
  const Glyph& glyph = page.glyphs[placed.glyph];
  const auto text = std::u32string_view(page.text).substr(glyph.text, glyph.length);
  return std::all_of(text.begin(), text.end(), IsSpace);
}

bool Follows(const PlacedGlyph& before, const PlacedGlyph& glyph) {
  const auto is_beside = [&](double gap) {
    return gap >= -kOverlap * before.size && gap <= kGap * before.size;
  };
  return is_beside(glyph.left - before.right) || is_beside(before.left - glyph.right);
}

std::vector<Run> RunsOf(const PageModel& page, std::vector<PlacedGlyph> glyphs) {
  std::stable_sort(glyphs.begin(), glyphs.end(),
                   [](const PlacedGlyph& a, const PlacedGlyph& b) { return a.glyph < b.glyph; });
  std::vector<Run> runs;
  for (const PlacedGlyph& glyph : glyphs) {
    if (runs.empty() || !Follows(runs.back().glyphs.back(), glyph)) {
      runs.emplace_back();
    }
    Run& run = runs.back();
    run.glyphs.push_back(glyph);
    if (ShowsNothing(page, glyph)) {
      continue;
    }
    run.left = run.letters == 0 ? glyph.left : std::min(run.left, glyph.left);
    run.right = run.letters == 0 ? glyph.right : std::max(run.right, glyph.right);
    run.size = std::max(run.size, glyph.size);
    ++run.letters;
  }
  return runs;
}

bool Overlie(const Run& a, const Run& b) {
  const double shared = std::min(a.right, b.right) - std::max(a.left, b.left);
  return a.letters >= kLeastLetters && b.letters >= kLeastLetters &&
         shared > kOverlap * std::min(a.size, b.size);
}

}  // namespace

std::vector<GlyphRow> PartOverlaid(const PageModel& page, GlyphRow row) {
  std::vector<Run> runs = RunsOf(page, row.glyphs);
  if (runs.size() < 2 || runs.size() > kMostRuns) {
    return {std::move(row)};
  }
  std::vector<Layer> layers;
  for (Run& run : runs) {
    const auto layer = std::find_if(layers.begin(), layers.end(), [&run](const Layer& own) {
      return std::none_of(own.runs.begin(), own.runs.end(),
                          [&run](const Run& other) { return Overlie(run, other); });
    });
    Layer& target = layer != layers.end() ? *layer : layers.emplace_back();
    target.row.glyphs.insert(target.row.glyphs.end(), run.glyphs.begin(), run.glyphs.end());
    run.glyphs.clear();
    target.runs.push_back(std::move(run));
  }
  if (layers.size() == 1) {
    return {std::move(row)};
  }
  std::vector<GlyphRow> rows;
  for (Layer& layer : layers) {
    layer.row.baseline = row.baseline;
    SortFromLeft(layer.row.glyphs);
    rows.push_back(std::move(layer.row));
  }
  return rows;
}

}  // namespace TarnixTools::engines
