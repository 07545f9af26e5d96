#include "engines/office/pages/PageReader.h"

#include <algorithm>
#include <cmath>

#include "engines/office/Limits.h"
#include "engines/office/pages/PaintedColor.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::office {

namespace {

using pdf::Matrix;
using pdf::Object;
using pdf::Point;

constexpr double kThinRule = 3;  // points: a filled rectangle as thin as that is a line

// Follows the page's content and notes what it paints.
class PageCollector : public pdf::ContentVisitor {
 public:
  PageCollector(pdf::Document& document, PageFonts& fonts, PageModel& page)
      : fonts_(&fonts), colors_(document), page_(&page) {}

  void BeginMarked(const pdf::MarkedContent& mark) override {
    marks_.push_back(mark.id ? static_cast<std::int32_t>(*mark.id) : CurrentMark());
  }

  void EndMarked(const pdf::MarkedContent& /*mark*/) override {
    if (!marks_.empty()) {
      marks_.pop_back();
    }
  }

  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;
  void PaintPath(const pdf::PathUse& path) override;
  void DrawImage(const pdf::ImageUse& image) override;

 private:
  std::int32_t CurrentMark() const { return marks_.empty() ? -1 : marks_.back(); }

  std::uint32_t StyleOf(const pdf::StringUse& string, const PageFont& font, const Matrix& glyphs);
  void AddGlyph(const std::u32string& text, std::uint32_t style, const Point& origin,
                double advance);

  PageFonts* fonts_;
  PaintedColors colors_;
  PageModel* page_;
  std::vector<std::int32_t> marks_;
  std::vector<std::uint32_t> codes_;
  std::uint32_t order_ = 0;
};

bool AreAlike(const TextStyle& a, const TextStyle& b) {
  return a.face == b.face && std::abs(a.size - b.size) < 0.01 && a.color == b.color &&
         std::abs(a.direction_x - b.direction_x) < 1e-4 &&
         std::abs(a.direction_y - b.direction_y) < 1e-4 && a.is_vertical == b.is_vertical &&
         a.is_hidden == b.is_hidden;
}

double Length(double x, double y) {
  return std::hypot(x, y);
}

std::uint32_t PageCollector::StyleOf(const pdf::StringUse& string, const PageFont& font,
                                     const Matrix& glyphs) {
  const pdf::GraphicsState& state = string.state;
  const pdf::TextMode mode = state.text.mode;
  TextStyle style;
  style.face = font.face();
  style.size = Length(glyphs.c, glyphs.d);
  const double along = Length(glyphs.a, glyphs.b);
  style.direction_x = along > 0 ? glyphs.a / along : 1;
  style.direction_y = along > 0 ? glyphs.b / along : 0;
  const bool only_strokes = pdf::Strokes(mode) && !pdf::Fills(mode);
  const double alpha =
      only_strokes ? state.transparency.stroke_alpha : state.transparency.fill_alpha;
  style.color = colors_.Of(only_strokes ? state.stroke : state.fill).value_or(Rgb{});
  style.is_hidden = (!pdf::Fills(mode) && !pdf::Strokes(mode)) || alpha <= 0;
  std::vector<TextStyle>& styles = page_->styles;
  const auto known = std::find_if(styles.rbegin(), styles.rend(), [&style](const TextStyle& other) {
    return AreAlike(style, other);
  });
  if (known != styles.rend()) {
    return static_cast<std::uint32_t>(styles.rend() - known - 1);
  }
  styles.push_back(style);
  return static_cast<std::uint32_t>(styles.size() - 1);
}

std::optional<pdf::TextAdvance> PageCollector::ShowText(const pdf::StringUse& string) {
  const pdf::TextState& text = string.state.text;
  PageFont* font = fonts_->Find(text.font);
  if (font == nullptr) {
    return std::nullopt;
  }
  codes_.clear();
  font->Split(string.bytes, codes_);
  const Matrix glyphs = text.GlyphMatrix() * string.state.matrix;
  const std::uint32_t style = string.is_hidden ? 0 : StyleOf(string, *font, glyphs);
  double x = 0;  // in units of text space
  for (const std::uint32_t code : codes_) {
    const double width = font->AdvanceOf(code) * text.size * text.scale;
    if (!string.is_hidden) {
      const Matrix at = Matrix::Translation(x, text.rise) * text.matrix * string.state.matrix;
      const double advance = Length(at.Apply(width, 0).x - at.e, at.Apply(width, 0).y - at.f);
      AddGlyph(font->TextOf(code), style, {at.e, at.f}, advance);
    }
    const double spacing = text.char_spacing + (font->IsWordSpace(code) ? text.word_spacing : 0);
    x += width + spacing * text.scale;
  }
  ++order_;
  return pdf::TextAdvance{x, 0};
}

void PageCollector::AddGlyph(const std::u32string& text, std::uint32_t style, const Point& origin,
                             double advance) {
  if (page_->glyphs.size() >= limits::kMaxGlyphsOfPage) {
    page_->is_partial = true;
    return;
  }
  page_->glyphs.push_back({.text = static_cast<std::uint32_t>(page_->text.size()),
                           .length = static_cast<std::uint32_t>(text.size()),
                           .style = style,
                           .mark = CurrentMark(),
                           .x = origin.x,
                           .y = origin.y,
                           .advance = advance});
  page_->text += text;
}

PathShape::Kind KindOf(const pdf::PathUse& path) {
  const bool is_thin = path.box.width() <= kThinRule || path.box.height() <= kThinRule;
  if (path.segments.size() == 2 || (path.fills && is_thin)) {
    return PathShape::Kind::kLine;
  }
  const bool has_curves =
      std::any_of(path.segments.begin(), path.segments.end(), [](const pdf::PathSegment& segment) {
        return segment.kind == pdf::PathSegment::Kind::kCurve;
      });
  return !has_curves && path.segments.size() >= 4 && path.segments.size() <= 6
             ? PathShape::Kind::kRectangle
             : PathShape::Kind::kOther;
}

void PageCollector::PaintPath(const pdf::PathUse& path) {
  if (page_->paths.size() >= limits::kMaxPathsOfPage) {
    page_->is_partial = true;
    return;
  }
  const Matrix& matrix = path.state.matrix;
  PathShape shape{.kind = KindOf(path),
                  .box = path.box,
                  .fill = std::nullopt,
                  .stroke = std::nullopt,
                  .line_width = path.state.line.width * Length(matrix.a, matrix.b),
                  .order = ++order_};
  if (path.fills) {
    shape.fill = colors_.Of(path.state.fill);
  }
  if (path.strokes) {
    shape.stroke = colors_.Of(path.state.stroke);
  }
  page_->paths.push_back(shape);
}

void PageCollector::DrawImage(const pdf::ImageUse& image) {
  if (page_->images.size() >= limits::kMaxImagesOfPage) {
    page_->is_partial = true;
    return;
  }
  const pdf::Box box = pdf::Box{0, 0, 1, 1}.Through(image.state.matrix);
  page_->images.push_back({.number = image.number,
                           .matrix = image.state.matrix,
                           .box = box.Within(image.state.clip.box),
                           .order = ++order_});
}

}  // namespace

PageModel PageReader::Read(std::size_t page_index) {
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(*document_, *pages_, pages_->pages()[page_index]);
  PageModel page;
  page.width = geometry.SeenWidth();
  page.height = geometry.SeenHeight();
  PageCollector collector(*document_, fonts_, page);
  pdf::ContentWalker walker(*document_, collector,
                            {.images = true,
                             .text = true,
                             .paths = true,
                             .clips = true,
                             .style = true,
                             .marks = true,
                             .forms = true,
                             .appearances = true,
                             .layers = layers_});
  walker.BeginPage(*pages_, page_index, geometry.ToSeenPoints() * Downwards(page.height));
  walker.Run();
  return page;
}

}  // namespace TarnixTools::engines::office
