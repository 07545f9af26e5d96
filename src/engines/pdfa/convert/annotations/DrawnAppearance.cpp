#include "engines/pdfa/convert/annotations/DrawnAppearance.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "engines/pdfa/convert/annotations/FieldBox.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Box;
using pdf::Object;
using pdf::Point;

namespace {

// Numbers of a path, of all paths of a drawing together.
constexpr std::size_t kMaxNumbers = 1'000'000;
// The thickness of lines under and through text, and where they are, in heights of it.
constexpr double kLineWidth = 1.0 / 16;
constexpr double kWaveLength = 1.0 / 4;
constexpr int kMostWaves = 2'000;
constexpr int kMostWavesOfAnnotation = 20 * kMostWaves;
// The side of a note's icon, and how many lines are on it.
constexpr double kIconSide = 20;
constexpr int kIconLines = 3;

class Drawing {
 public:
  Drawing(const Object& annotation, pdf::Document& document)
      : annotation_(annotation),
        document_(&document),
        box_(pdf::ReadPageBox(document, annotation.Get("Rect")).value_or(Box{0, 0, 1, 1})),
        width_(BorderWidth()) {}

  const Box& box() const { return box_; }

  // That were read and written so far.
  std::size_t numbers_used() const { return numbers_used_; }

  // As RGB, gray or white components; empty for none.
  std::string Color(std::string_view key, bool is_stroke, std::string_view fallback = {}) {
    const std::string color =
        ColorOperator(Numbers(Get(key)), is_stroke ? PaintUse::kStroke : PaintUse::kFill);
    return color.empty() ? std::string(fallback) : color;
  }

  // An empty list of components says so.
  bool IsTransparent(std::string_view key) {
    const Object color = Get(key);
    return color.IsArray() && color.Items().empty();
  }

  void Put(std::string_view text) { content_ += text; }

  void Numbers(std::initializer_list<double> numbers, std::string_view name) {
    numbers_used_ += numbers.size();
    AppendOperation(content_, numbers, name);
  }

  // A shape: filled, stroked or both. False for neither.
  bool BeginShape() {
    const std::string fill = Color("IC", false);
    const std::string stroke = Color("C", true, "0 G\n");
    shape_ = width_ > 0 && !IsTransparent("C") ? (fill.empty() ? "S\n" : "B\n")
                                               : (fill.empty() ? "" : "f\n");
    content_ += fill + stroke;
    Numbers({width_}, "w");
    return !shape_.empty();
  }

  bool BeginLine() {
    content_ += Color("C", true, "0 G\n");
    Numbers({width_}, "w");
    return width_ > 0 && !IsTransparent("C");
  }

  void EndShape() { content_ += shape_; }

  // Without the difference to the rectangle that it may say, and within its border.
  Box Inner() {
    const std::vector<double> given = Numbers(Get("RD"));
    std::array<double, 4> distance{};
    std::copy_n(given.begin(), given.size() == 4 ? 4 : 0, distance.begin());
    const double half = width_ / 2;
    return {box_.left + distance[0] + half, box_.bottom + distance[1] + half,
            box_.right - distance[2] - half, box_.top - distance[3] - half};
  }

  // Of an entry.
  std::vector<double> NumbersOf(std::string_view key) { return Numbers(Get(key)); }

  // Paths of an entry that is a list of them.
  std::vector<std::vector<double>> PathsOf(std::string_view key) {
    std::vector<std::vector<double>> paths;
    std::size_t left = kMaxNumbers;
    for (const Object& item : Get(key).Items()) {
      paths.push_back(Numbers(document_->Resolve(item, arena_)));
      ++numbers_used_;
      left -= std::min(left, paths.back().size() + 1);
      if (left == 0) {
        break;
      }
    }
    return paths;
  }

  bool HasPath(const std::vector<double>& path) { return path.size() >= 4; }

  void Path(const std::vector<double>& path) {
    for (std::size_t i = 0; i + 1 < path.size(); i += 2) {
      Numbers({path[i], path[i + 1]}, i == 0 ? "m" : "l");
    }
  }

  MadeAppearance Take(bool may_blend, bool multiplies) {
    std::string dictionary = "<</Type/XObject/Subtype/Form/BBox";
    pdf::AppendBox(dictionary, box_);
    dictionary += "/Resources<<";
    if (may_blend) {
      dictionary += "/ExtGState<</G<<" + OpacityEntries(Get("CA").NumberOr(1));
      dictionary += multiplies ? "/BM/Multiply>>>>" : ">>>>";
    }
    return {dictionary + ">>>>", (may_blend ? "/G gs\n" : "") + content_};
  }

 private:
  Object Get(std::string_view key) { return document_->Resolve(annotation_.Get(key), arena_); }

  std::vector<double> Numbers(const Object& array) {
    std::vector<double> numbers;
    for (const Object& item : array.Items()) {
      if (numbers.size() < kMaxNumbers) {
        numbers.push_back(document_->Resolve(item, arena_).NumberOr(0));
      }
    }
    numbers_used_ += numbers.size();
    return numbers;
  }

  double BorderWidth() {
    const double width = FieldEntries(*document_, annotation_).BorderWidth(1);
    return std::clamp(width, 0.0, std::max(box_.width(), box_.height()));
  }

  Object annotation_;
  pdf::Document* document_;
  Arena arena_;
  std::size_t numbers_used_ = 0;
  Box box_;
  double width_ = 1;
  std::string shape_;
  std::string content_;
};

// Text that is marked, by its four corners (12.5.6.10): the upper ones first, as all programs write
// them.
struct Quad {
  Point top_left;
  Point top_right;
  Point bottom_left;
  Point bottom_right;

  Point Between(double share, bool is_right) const {
    const Point& low = is_right ? bottom_right : bottom_left;
    const Point& high = is_right ? top_right : top_left;
    return {low.x + (high.x - low.x) * share, low.y + (high.y - low.y) * share};
  }

  double Height() const { return std::max(top_left.y - bottom_left.y, 1.0); }
};

std::vector<Quad> QuadsOf(Drawing& drawing) {
  const std::vector<double> numbers = drawing.NumbersOf("QuadPoints");
  std::vector<Quad> quads;
  constexpr std::size_t kNumbers = 8;
  for (std::size_t i = 0; i + kNumbers <= numbers.size(); i += kNumbers) {
    const double* at = numbers.data() + i;
    quads.push_back({{at[0], at[1]}, {at[2], at[3]}, {at[4], at[5]}, {at[6], at[7]}});
  }
  return quads;
}

bool DrawSquare(Drawing& drawing) {
  const Box box = drawing.Inner();
  const bool is_seen = drawing.BeginShape();
  drawing.Numbers({box.left, box.bottom, box.width(), box.height()}, "re");
  drawing.EndShape();
  return is_seen;
}

bool DrawCircle(Drawing& drawing) {
  const Box box = drawing.Inner();
  const bool is_seen = drawing.BeginShape();
  drawing.Put(CirclePath(box));
  drawing.EndShape();
  return is_seen;
}

bool DrawLine(Drawing& drawing) {
  const std::vector<double> line = drawing.NumbersOf("L");
  const bool is_seen = drawing.BeginLine() && line.size() == 4;
  drawing.Path(line);
  drawing.Put("S\n");
  return is_seen;
}

bool DrawPolygon(Drawing& drawing) {
  const std::vector<double> path = drawing.NumbersOf("Vertices");
  const bool is_seen = drawing.BeginShape() && drawing.HasPath(path);
  drawing.Path(path);
  drawing.Put("h ");
  drawing.EndShape();
  return is_seen;
}

bool DrawPolyLine(Drawing& drawing) {
  const std::vector<double> path = drawing.NumbersOf("Vertices");
  const bool is_seen = drawing.BeginLine() && drawing.HasPath(path);
  drawing.Path(path);
  drawing.Put("S\n");
  return is_seen;
}

bool DrawInk(Drawing& drawing) {
  bool is_seen = false;
  const bool has_width = drawing.BeginLine();
  for (const std::vector<double>& path : drawing.PathsOf("InkList")) {
    if (drawing.HasPath(path)) {
      drawing.Path(path);
      drawing.Put("S\n");
      is_seen = has_width;
    }
  }
  return is_seen;
}

bool DrawHighlight(Drawing& drawing) {
  const std::vector<Quad> quads = QuadsOf(drawing);
  drawing.Put(drawing.Color("C", false, "1 1 0 rg\n"));
  for (const Quad& quad : quads) {
    drawing.Numbers({quad.bottom_left.x, quad.bottom_left.y}, "m");
    drawing.Numbers({quad.bottom_right.x, quad.bottom_right.y}, "l");
    drawing.Numbers({quad.top_right.x, quad.top_right.y}, "l");
    drawing.Numbers({quad.top_left.x, quad.top_left.y}, "l");
    drawing.Put("f\n");
  }
  return !quads.empty() && !drawing.IsTransparent("C");
}

// A line at a share of the text's height.
bool DrawTextLine(Drawing& drawing, double share) {
  const std::vector<Quad> quads = QuadsOf(drawing);
  drawing.Put(drawing.Color("C", true, "0 G\n"));
  for (const Quad& quad : quads) {
    const Point left = quad.Between(share, false);
    const Point right = quad.Between(share, true);
    drawing.Numbers({quad.Height() * kLineWidth}, "w");
    drawing.Numbers({left.x, left.y}, "m");
    drawing.Numbers({right.x, right.y}, "l");
    drawing.Put("S\n");
  }
  return !quads.empty() && !drawing.IsTransparent("C");
}

bool DrawUnderline(Drawing& drawing) {
  return DrawTextLine(drawing, kLineWidth);
}

bool DrawStrikeOut(Drawing& drawing) {
  return DrawTextLine(drawing, 0.5);
}

bool DrawSquiggly(Drawing& drawing) {
  const std::vector<Quad> quads = QuadsOf(drawing);
  drawing.Put(drawing.Color("C", true, "0 G\n"));
  int waves_left = kMostWavesOfAnnotation;
  for (const Quad& quad : quads) {
    const Point left = quad.Between(kLineWidth, false);
    const Point right = quad.Between(kLineWidth, true);
    const double height = quad.Height() * kLineWidth;
    const double length = std::max(right.x - left.x, 0.0);
    const int most = std::clamp(waves_left, 1, kMostWaves);
    const int waves =
        static_cast<int>(std::clamp(length / (quad.Height() * kWaveLength), 1.0, double(most)));
    waves_left -= waves;
    drawing.Numbers({height}, "w");
    drawing.Numbers({left.x, left.y}, "m");
    for (int i = 1; i <= waves; ++i) {
      const double share = static_cast<double>(i) / waves;
      drawing.Numbers({left.x + (right.x - left.x) * share,
                       left.y + (right.y - left.y) * share + (i % 2 == 1 ? 2 * height : 0)},
                      "l");
    }
    drawing.Put("S\n");
  }
  return !quads.empty() && !drawing.IsTransparent("C");
}

// A sheet with lines, at the upper left corner.
bool DrawNote(Drawing& drawing) {
  const Box& box = drawing.box();
  const double width = std::min(box.width(), kIconSide);
  const double height = std::min(box.height(), kIconSide);
  const double bottom = box.top - height;
  drawing.Put("0 G\n");
  drawing.Put(drawing.Color("C", false, "1 1 0 rg\n"));
  drawing.Numbers({box.left + 1, bottom + 1, width - 2, height - 2}, "re");
  drawing.Put("B\n");
  for (int i = 1; i <= kIconLines; ++i) {
    const double y = bottom + height * i / (kIconLines + 1);
    drawing.Numbers({box.left + width / 4, y}, "m");
    drawing.Numbers({box.left + width * 3 / 4, y}, "l");
    drawing.Put("S\n");
  }
  return width > 2 && height > 2;
}

struct Painter {
  std::string_view subtype;
  bool (*draw)(Drawing& drawing);
  bool multiplies = false;  // what it lies on is to be seen through it
};

constexpr std::array<Painter, 11> kPainters = {{
    {"Square", &DrawSquare},
    {"Circle", &DrawCircle},
    {"Line", &DrawLine},
    {"Polygon", &DrawPolygon},
    {"PolyLine", &DrawPolyLine},
    {"Ink", &DrawInk},
    {"Highlight", &DrawHighlight, true},
    {"Underline", &DrawUnderline},
    {"Squiggly", &DrawSquiggly},
    {"StrikeOut", &DrawStrikeOut},
    {"Text", &DrawNote},
}};

}  // namespace

std::optional<MadeAppearance> DrawnAppearance(const Object& annotation, pdf::Document& document,
                                              bool may_blend, std::size_t& numbers_left) {
  Arena arena;
  const Object subtype = document.Resolve(annotation.Get("Subtype"), arena);
  const auto* painter = std::find_if(kPainters.begin(), kPainters.end(), [&](const Painter& each) {
    return each.subtype == subtype.Text();
  });
  if (painter == kPainters.end() || (painter->multiplies && !may_blend) || numbers_left == 0) {
    return std::nullopt;
  }
  Drawing drawing(annotation, document);
  const bool is_seen = painter->draw(drawing);
  numbers_left -= std::min(numbers_left, drawing.numbers_used());
  if (!is_seen) {
    return std::nullopt;
  }
  return drawing.Take(may_blend, painter->multiplies);
}

}  // namespace TarnixTools::engines::pdfa
