// Decides how a cluster of glyphs is painted so that its characters can be had back from the page,
// in the order in which they were typed.
//
// Mostly each glyph's code tells its characters. Marks that are moved onto what they belong to, and
// glyphs that together stand for several characters, have their text said beside them
// (/ActualText; ISO 32000-2, 14.9.4). From right to left readers put the characters of a line into
// reading order one by one, so there each has to have a code of its own, even one that shows
// nothing.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_CLUSTERPAINTER_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_CLUSTERPAINTER_H_

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engines/support/fonts/TextShaper.h"
#include "engines/toolbox/content/EmbeddedFont.h"

namespace TarnixTools::engines::toolbox {

// What is said beside a glyph: nothing, the cluster's characters, or that it has no text.
enum class Span : std::uint8_t { kNone, kText, kEmpty };

// Measures are thousandths of the font size.
struct PaintedGlyph {
  unsigned code = 0;
  double x = 0;  // from the cluster's left end
  double y = 0;  // above the baseline
  double width = 0;
  Span span = Span::kNone;
};

class ClusterPainter {
 public:
  // All of it outlives the painter; text is the line's.
  ClusterPainter(EmbeddedFont& font, const fonts::GlyphRun& run, const fonts::GlyphCluster& cluster,
                 std::u32string_view text);

  std::u32string_view characters() const { return characters_; }

  // The glyphs in the order in which they are to be painted. width: of the whole cluster.
  std::vector<PaintedGlyph> Arrange(double& width);

 private:
  struct Place {
    std::uint32_t glyph = 0;
    double x = 0;
    double y = 0;
    bool is_attached = false;  // to another glyph: a mark
  };

  bool ArrangeOneByOne(std::vector<PaintedGlyph>& glyphs);
  bool ArrangeFromRightToLeft(std::vector<PaintedGlyph>& glyphs);
  void ArrangeWithText(std::vector<PaintedGlyph>& glyphs);
  PaintedGlyph Painted(const Place& place, unsigned code, Span span) const;

  EmbeddedFont* font_;
  std::u32string_view characters_;
  bool is_right_to_left_;
  std::vector<Place> places_;
  bool has_attached_ = false;
  bool has_others_ = false;  // that are not attached
  double width_ = 0;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_CLUSTERPAINTER_H_
