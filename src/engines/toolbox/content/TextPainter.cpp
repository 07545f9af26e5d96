#include "engines/toolbox/content/TextPainter.h"

#include <cmath>
#include <optional>
#include <string_view>

#include "engines/toolbox/content/ClusterPainter.h"
#include "engines/toolbox/content/ContentText.h"
#include "engines/toolbox/content/TargetContent.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using fonts::GlyphCluster;
using fonts::GlyphRun;

namespace {

constexpr double kSeenAdjustment = 0.5;  // thousandths of the font size
constexpr int kAdjustmentDecimals = 1;

// Glyphs that one operator shows, with adjustments between them.
class ShownGlyphs {
 public:
  explicit ShownGlyphs(std::string& out) : out_(&out) {}

  // Moves the next glyph to the right, in thousandths of the font size.
  void Adjust(double thousandths) { pending_ += thousandths; }

  void Add(unsigned code) {
    if (std::abs(pending_) >= kSeenAdjustment) {
      CloseCodes();
      pdf::AppendNumber(items_, -pending_, kAdjustmentDecimals);
      has_adjustments_ = true;
      pending_ = 0;
    }
    if (!is_open_) {
      items_ += '<';
      is_open_ = true;
    }
    AppendCode(items_, code);
  }

  // Writes the operator, if there is anything to show. An adjustment stays for what comes next.
  void Flush() {
    if (items_.empty()) {
      return;
    }
    CloseCodes();
    *out_ += has_adjustments_ ? '[' + items_ + "]TJ" : items_ + "Tj";
    items_.clear();
    has_adjustments_ = false;
  }

 private:
  void CloseCodes() {
    if (is_open_) {
      items_ += '>';
      is_open_ = false;
    }
  }

  std::string* out_;
  std::string items_;
  double pending_ = 0;
  bool is_open_ = false;
  bool has_adjustments_ = false;
};

// Lines of one paint, within one text object.
class LinePainter {
 public:
  LinePainter(TargetContent& target, std::string& out, PageContent& resources)
      : target_(&target), out_(&out), resources_(&resources) {}

  void Paint(const PaintedLine& painted) {
    ShownGlyphs glyphs(*out_);
    has_start_ = false;
    start_ = painted.start;
    for (const GlyphRun& run : painted.line->runs) {
      EmbeddedFont& font = target_->FontOf(*run.face);
      if (font_ != &font || size_ != painted.size) {
        glyphs.Flush();
        SetFont(font, painted.size);
      }
      PaintRun(run, painted.line->text, glyphs);
    }
    glyphs.Flush();
    SetRise(0, glyphs);
  }

 private:
  void SetFont(EmbeddedFont& font, double size) {
    font_ = &font;
    size_ = size;
    resources_->Add(font.resource());
    *out_ += '/';
    *out_ += kNamePrefix;
    *out_ += font.resource().name;
    pdf::AppendNumber(*out_, size);
    *out_ += " Tf";
  }

  void SetStart() {
    pdf::AppendNumber(*out_, start_.x - origin_.x);
    pdf::AppendNumber(*out_, start_.y - origin_.y);
    *out_ += " Td";
    origin_ = start_;
    has_start_ = true;
  }

  // rise: in thousandths of the font size.
  void SetRise(double rise, ShownGlyphs& glyphs) {
    if (std::abs(rise - rise_) < kSeenAdjustment) {
      return;
    }
    glyphs.Flush();
    pdf::AppendNumber(*out_, rise * size_ / 1000, 3);
    *out_ += " Ts";
    rise_ = rise;
  }

  void PaintRun(const GlyphRun& run, const std::u32string& text, ShownGlyphs& glyphs) {
    if (!has_start_) {
      SetStart();
    }
    for (const GlyphCluster& cluster : run.clusters) {
      ClusterPainter painter(*font_, run, cluster, text);
      double width = 0;
      double at = 0;
      for (const PaintedGlyph& glyph : painter.Arrange(width)) {
        SetSpan(glyph.span, painter.characters(), glyphs);
        SetRise(glyph.y, glyphs);
        glyphs.Adjust(glyph.x - at);
        glyphs.Add(glyph.code);
        at = glyph.x + glyph.width;
      }
      SetSpan(Span::kNone, {}, glyphs);
      glyphs.Adjust(width - at);
    }
  }

  void SetSpan(Span span, std::u32string_view characters, ShownGlyphs& glyphs) {
    if (span == span_) {
      return;
    }
    glyphs.Flush();
    if (span_ != Span::kNone) {
      *out_ += " EMC ";
    }
    if (span != Span::kNone) {
      *out_ += "/Span<</ActualText<FEFF";
      AppendUtf16Hex(*out_, span == Span::kText ? characters : std::u32string_view());
      *out_ += ">>>BDC ";
    }
    span_ = span;
  }

  TargetContent* target_;
  std::string* out_;
  PageContent* resources_;
  EmbeddedFont* font_ = nullptr;
  double size_ = 0;
  double rise_ = 0;
  TPdfPoint origin_;  // of the present text line, as the stream has it
  TPdfPoint start_;
  bool has_start_ = false;
  Span span_ = Span::kNone;
};

void SetPaint(const Paint& paint, TargetContent& target, std::string& out, PageContent& resources) {
  AppendAlpha(paint.alpha, target, out, resources);
  for (const double component : paint.rgb) {
    pdf::AppendNumber(out, component, 4);
  }
  out += " rg";
}

}  // namespace

void PaintLines(const std::vector<PaintedLine>& lines, TargetContent& target, std::string& out,
                PageContent& resources) {
  for (std::size_t first = 0; first < lines.size();) {
    std::size_t end = first;
    std::string shown;
    LinePainter painter(target, shown, resources);
    while (end < lines.size() && lines[end].paint == lines[first].paint) {
      painter.Paint(lines[end]);
      ++end;
    }
    if (!shown.empty()) {
      const bool is_opaque = lines[first].paint.alpha >= 1;
      out += is_opaque ? "" : "q";
      SetPaint(lines[first].paint, target, out, resources);
      out += " BT" + shown + (is_opaque ? " ET\n" : " ET Q\n");
    }
    first = end;
  }
}

}  // namespace TarnixTools::engines::toolbox
