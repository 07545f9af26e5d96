#include "engines/support/pages/PageReader.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "engines/support/pages/CancelledWalk.h"
#include "engines/support/pages/CoveredText.h"
#include "engines/support/pages/PageLimits.h"
#include "engines/support/pages/PathShapes.h"
#include "foundation/Utf8.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/content/Operands.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines {

namespace {

using pdf::Matrix;
using pdf::Object;
using pdf::Point;

constexpr std::ptrdiff_t kStylesLookedAt = 64;   // of those that were met last
constexpr std::size_t kMaxReplacedGlyphs = 200;  // that one /ActualText stands for

// Follows the page's content and notes what it paints.
class PageCollector : public pdf::ContentVisitor {
 public:
  PageCollector(pdf::Document& document, PageFonts& fonts, PaintedColors& colors, PageModel& page)
      : fonts_(&fonts), colors_(&colors), page_(&page), covered_(page), document_(&document) {}

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;

  void Operator(const pdf::Operation& operation, std::size_t offset) override;

  void BeginMarked(const pdf::MarkedContent& mark) override;
  void EndMarked(const pdf::MarkedContent& mark) override;

  bool IsVertical(const pdf::TextState& text) override {
    const PageFont* font = fonts_->Find(text.font);
    return font != nullptr && font->is_vertical();
  }

  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;
  void PaintPath(const pdf::PathUse& path) override;

  void PaintShading(const pdf::ShadingUse& /*shading*/) override { page_->has_shadings = true; }

  void DrawImage(const pdf::ImageUse& image) override;
  void Trouble(pdf::ContentTrouble trouble, std::size_t offset) override;

 private:
  // Marked content that is open.
  struct Mark {
    std::int32_t id = -1;
    std::size_t first_glyph = 0;         // of the page, that it may have
    std::optional<std::u32string> text;  // that stands for all of its glyphs
  };

  std::int32_t CurrentMark() const { return marks_.empty() ? -1 : marks_.back().id; }

  bool IsOpaque(std::uint32_t image);
  void ForgetInPlace();
  bool HasRoomFor(const std::u32string& text);
  void ReplaceText(const Mark& mark);

  pdf::TextAdvance ShowAlong(const pdf::StringUse& string, PageFont& font, std::uint32_t style);
  pdf::TextAdvance ShowDownwards(const pdf::StringUse& string, PageFont& font, std::uint32_t style);
  std::uint32_t StyleOf(const pdf::StringUse& string, const PageFont& font, const Matrix& glyphs);
  void AddGlyph(const std::u32string& text, std::uint32_t style, const Point& origin,
                double advance);

  PageFonts* fonts_;
  PaintedColors* colors_;
  PageModel* page_;
  CoveredText covered_;
  pdf::Document* document_;
  std::vector<Mark> marks_;
  std::size_t depth_ = 0;  // of forms
  std::vector<std::uint32_t> codes_;
  std::uint32_t order_ = 0;
  std::uint32_t place_ = kNoPlace;
  std::vector<std::size_t> string_offsets_;  // of the operator that runs
};

bool AreAlike(const TextStyle& a, const TextStyle& b) {
  return a.face == b.face && std::abs(a.size - b.size) < 0.01 && a.color == b.color &&
         std::abs(a.direction_x - b.direction_x) < 1e-4 &&
         std::abs(a.direction_y - b.direction_y) < 1e-4 && a.is_vertical == b.is_vertical &&
         a.is_hidden == b.is_hidden;
}

std::uint32_t PlaceAt(std::size_t offset) {
  return static_cast<std::uint32_t>(std::min<std::size_t>(offset, kNoPlace));
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
  style.size = Length(glyphs.c, glyphs.d) * font.em();
  style.is_vertical = font.is_vertical();
  const double along = Length(glyphs.a, glyphs.b);
  style.direction_x = along > 0 ? glyphs.a / along : 1;
  style.direction_y = along > 0 ? glyphs.b / along : 0;
  const bool only_strokes = pdf::Strokes(mode) && !pdf::Fills(mode);
  const double alpha =
      only_strokes ? state.transparency.stroke_alpha : state.transparency.fill_alpha;
  style.is_hidden = (!pdf::Fills(mode) && !pdf::Strokes(mode)) || alpha <= 0;
  if (!style.is_hidden) {
    style.color = colors_->Of(only_strokes ? state.stroke : state.fill).value_or(Rgb{});
  }
  std::vector<TextStyle>& styles = page_->styles;
  const auto last =
      std::next(styles.rbegin(), std::min<std::ptrdiff_t>(std::ssize(styles), kStylesLookedAt));
  const auto known = std::find_if(
      styles.rbegin(), last, [&style](const TextStyle& other) { return AreAlike(style, other); });
  if (known != last) {
    return static_cast<std::uint32_t>(styles.rend() - known - 1);
  }
  styles.push_back(style);
  return static_cast<std::uint32_t>(styles.size() - 1);
}

// What stands in resources by itself may be read into other memory next.
void PageCollector::ForgetInPlace() {
  fonts_->ForgetInPlace();
  colors_->ForgetInPlace();
}

// Marks of a form or an appearance are told apart by it, not by the page: they mean nothing here.
bool PageCollector::EnterContent(const pdf::ContentEntry& entry) {
  ForgetInPlace();
  if (entry.kind != pdf::ResourceKind::kPage) {
    ++depth_;
    marks_.push_back({-1, page_->glyphs.size(), std::nullopt});
  }
  return true;
}

void PageCollector::LeaveContent(const pdf::ContentEntry& entry) {
  ForgetInPlace();
  if (entry.kind != pdf::ResourceKind::kPage && depth_ > 0) {
    --depth_;
    marks_.pop_back();
  }
}

// What a form paints stands where the operator does that draws the form.
void PageCollector::Operator(const pdf::Operation& operation, std::size_t offset) {
  if (depth_ > 0) {
    return;
  }
  place_ = PlaceAt(offset);
  string_offsets_.clear();
  if (operation.code == pdf::OperatorCode("TJ") && !operation.operands.empty()) {
    const auto begin = static_cast<std::size_t>(operation.name.data() - operation.operands.data());
    string_offsets_ = pdf::StringOffsets(operation.operands);
    for (std::size_t& string : string_offsets_) {
      string = offset - begin + string;
    }
  }
}

void PageCollector::BeginMarked(const pdf::MarkedContent& mark) {
  Mark opened{CurrentMark(), page_->glyphs.size(), std::nullopt};
  if (mark.id && depth_ == 0 && *mark.id >= 0 &&
      *mark.id <= std::numeric_limits<std::int32_t>::max()) {
    opened.id = static_cast<std::int32_t>(*mark.id);
  }
  pdf::Arena arena;
  const Object text = document_->Resolve(mark.properties.Get("ActualText"), arena);
  if (text.IsString() && text.Text().size() <= limits::kMaxEntryText) {
    opened.text = Utf8ToUtf32(pdf::TextStringToUtf8(text.Text()));
  }
  marks_.push_back(std::move(opened));
}

void PageCollector::EndMarked(const pdf::MarkedContent& /*mark*/) {
  if (marks_.empty()) {
    return;
  }
  const Mark mark = std::move(marks_.back());
  marks_.pop_back();
  if (mark.text) {
    ReplaceText(mark);
  }
}

bool PageCollector::HasRoomFor(const std::u32string& text) {
  const bool has_room = page_->text.size() + text.size() <= limits::kMaxTextOfPage;
  page_->is_partial = page_->is_partial || !has_room;
  return has_room;
}

// The glyphs become one, as long as all of them, if they stand in one line (ISO 32000-2, 14.9.4).
void PageCollector::ReplaceText(const Mark& mark) {
  std::vector<Glyph>& glyphs = page_->glyphs;
  const std::size_t first = mark.first_glyph;
  if (first >= glyphs.size() || glyphs.size() - first > kMaxReplacedGlyphs) {
    return;
  }
  if (!HasRoomFor(*mark.text)) {
    return;
  }
  const TextStyle& style = page_->styles[glyphs[first].style];
  const Glyph& last = glyphs.back();
  const double x = last.x - glyphs[first].x;
  const double y = last.y - glyphs[first].y;
  const double along = x * style.direction_x + y * style.direction_y;
  const double across = y * style.direction_x - x * style.direction_y;
  if (style.is_vertical || along < 0 || std::abs(across) > style.size / 2) {
    return;
  }
  Glyph glyph = glyphs[first];
  glyph.advance = along + last.advance;
  glyph.text = static_cast<std::uint32_t>(page_->text.size());
  glyph.length = static_cast<std::uint32_t>(mark.text->size());
  page_->text += *mark.text;
  glyphs.resize(first);
  if (!mark.text->empty()) {
    glyphs.push_back(glyph);
  }
}

std::optional<pdf::TextAdvance> PageCollector::ShowText(const pdf::StringUse& string) {
  const pdf::TextState& text = string.state.text;
  PageFont* font = fonts_->Find(text.font);
  if (font == nullptr) {
    return std::nullopt;
  }
  codes_.clear();
  font->Split(string.bytes, codes_);
  if (depth_ == 0 && string.index < string_offsets_.size()) {
    place_ = PlaceAt(string_offsets_[string.index]);
  }
  ++order_;
  const Matrix glyphs = text.GlyphMatrix() * string.state.matrix;
  const std::uint32_t style = string.is_hidden ? 0 : StyleOf(string, *font, glyphs);
  return font->is_vertical() ? ShowDownwards(string, *font, style)
                             : ShowAlong(string, *font, style);
}

pdf::TextAdvance PageCollector::ShowAlong(const pdf::StringUse& string, PageFont& font,
                                          std::uint32_t style) {
  const pdf::TextState& text = string.state.text;
  const Matrix line = text.matrix * string.state.matrix;
  double x = 0;  // in units of text space
  for (const std::uint32_t code : codes_) {
    const double width = font.AdvanceOf(code) * text.size * text.scale;
    if (!string.is_hidden) {
      const Point origin = line.Apply(x, text.rise);
      AddGlyph(font.TextOf(code), style, origin, Length(width * line.a, width * line.b));
    }
    x += width + font.SpacingOf(code, text) * text.scale;
  }
  return {x, 0};
}

// ISO 32000-2, 9.7.4.3.
pdf::TextAdvance PageCollector::ShowDownwards(const pdf::StringUse& string, PageFont& font,
                                              std::uint32_t style) {
  const pdf::TextState& text = string.state.text;
  const Matrix line = text.matrix * string.state.matrix;
  double y = 0;  // in units of text space
  for (const std::uint32_t code : codes_) {
    if (!string.is_hidden) {
      AddGlyph(font.TextOf(code), style, line.Apply(0, text.rise + y),
               Length(text.size * line.c, text.size * line.d));
    }
    y += -text.size + font.SpacingOf(code, text);
  }
  return {0, y};
}

void PageCollector::AddGlyph(const std::u32string& text, std::uint32_t style, const Point& origin,
                             double advance) {
  const bool is_on_page = origin.x + advance > 0 && origin.x - advance < page_->width &&
                          origin.y > 0 && origin.y < page_->height + advance;
  if (!is_on_page) {
    return;
  }
  if (page_->glyphs.size() >= limits::kMaxGlyphsOfPage || !HasRoomFor(text)) {
    page_->is_partial = true;
    return;
  }
  page_->glyphs.push_back({.text = static_cast<std::uint32_t>(page_->text.size()),
                           .length = static_cast<std::uint32_t>(text.size()),
                           .style = style,
                           .mark = CurrentMark(),
                           .place = place_,
                           .x = origin.x,
                           .y = origin.y,
                           .advance = advance});
  page_->text += text;
}

void PageCollector::PaintPath(const pdf::PathUse& path) {
  const Matrix& matrix = path.state.matrix;
  const double line_width = path.state.line.width * Length(matrix.a, matrix.b);
  const bool fills_pattern = path.fills && !path.state.fill.pattern.IsNull();
  page_->has_shadings = page_->has_shadings || fills_pattern;
  const auto fill = path.fills ? colors_->Of(path.state.fill) : std::nullopt;
  const auto stroke = path.strokes ? colors_->Of(path.state.stroke) : std::nullopt;
  std::vector<PathShape> shapes = ShapesOf(path);
  if (shapes.size() == 1 && shapes[0].kind == PathShape::Kind::kRectangle && fill && depth_ == 0) {
    covered_.Cover(shapes[0].box, path.state);
  }
  for (PathShape& shape : shapes) {
    if (page_->paths.size() >= limits::kMaxPathsOfPage) {
      page_->is_partial = true;
      return;
    }
    shape.fill = fill;
    shape.stroke = stroke;
    shape.line_width = line_width;
    shape.order = ++order_;
    shape.place = place_;
    page_->paths.push_back(shape);
  }
}

// Whether the unit square becomes a rectangle along the sides of the page.
bool FillsBox(const Matrix& matrix) {
  constexpr double kSlant = 0.001;
  const double along = std::abs(matrix.a) + std::abs(matrix.d);
  const double across = std::abs(matrix.b) + std::abs(matrix.c);
  return std::min(along, across) < kSlant * std::max(along, across);
}

// Of an image with an object of its own.
bool PageCollector::IsOpaque(std::uint32_t image) {
  if (image == 0 || page_->glyphs.empty()) {
    return false;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = image, .generation = 0}, arena);
  return !dictionary.Has("SMask") && !dictionary.Has("Mask") && !dictionary.Has("SMaskInData") &&
         !document_->Resolve(dictionary.Get("ImageMask"), arena).BooleanOr(false);
}

void PageCollector::DrawImage(const pdf::ImageUse& image) {
  if (page_->images.size() >= limits::kMaxPlacedImages) {
    page_->is_partial = true;
    return;
  }
  const pdf::Box box = pdf::Box{0, 0, 1, 1}.Through(image.state.matrix);
  if (depth_ == 0 && FillsBox(image.state.matrix) && IsOpaque(image.number)) {
    covered_.Cover(box, image.state);
  }
  page_->images.push_back({.number = image.number,
                           .matrix = image.state.matrix,
                           .box = box.Within(image.state.clip.box),
                           .order = ++order_,
                           .place = place_,
                           .mark = CurrentMark()});
}

// Content that is passed over, whether it cannot be read or is too much.
void PageCollector::Trouble(pdf::ContentTrouble trouble, std::size_t /*offset*/) {
  using enum pdf::ContentTrouble;
  page_->is_partial =
      page_->is_partial || trouble == kUnreadable || trouble == kTooDeep || trouble == kTooMuch;
}

}  // namespace

PageModel PageReader::Read(std::size_t page_index) {
  const pdf::PageGeometry own =
      pdf::ReadPageGeometry(*document_, *pages_, pages_->pages()[page_index]);
  const pdf::PageGeometry geometry = own.Within(room_);
  PageModel page;
  page.scale = geometry.user_unit / own.user_unit;
  page.width = geometry.SeenWidth();
  page.height = geometry.SeenHeight();
  colors_.BeginPage();
  PageCollector collector(*document_, fonts_, colors_, page);
  const bool is_all = parts_ == Parts::kAll;
  pdf::ContentWalker walker(*document_, collector,
                            {.images = true,
                             .text = true,
                             .paths = true,
                             .shadings = true,
                             .clips = true,
                             .style = true,
                             .marks = true,
                             .operators = !is_all,
                             .forms = true,
                             .appearances = is_all,
                             .layers = layers_});
  walker.BeginPage(*pages_, page_index, geometry.ToSeenPoints() * Downwards(page.height));
  RunUntilCancelled(walker, is_cancelled_);
  return page;
}

}  // namespace TarnixTools::engines
