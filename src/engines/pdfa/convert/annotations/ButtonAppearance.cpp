#include "engines/pdfa/convert/annotations/ButtonAppearance.h"

#include <algorithm>
#include <array>
#include <utility>

#include "engines/pdfa/convert/annotations/FieldBox.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "pdf/Matrix.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;
using pdf::Point;

namespace {

// Signs within a square of one by one, by the characters of ZapfDingbats that /CA names them with.
constexpr std::array<Point, 3> kCheck = {{{0.2, 0.5}, {0.42, 0.25}, {0.8, 0.78}}};
constexpr std::array<Point, 2> kRising = {{{0.22, 0.22}, {0.78, 0.78}}};
constexpr std::array<Point, 2> kFalling = {{{0.22, 0.78}, {0.78, 0.22}}};
constexpr std::array<Point, 4> kDiamond = {{{0.5, 0.15}, {0.85, 0.5}, {0.5, 0.85}, {0.15, 0.5}}};
constexpr std::array<Point, 4> kSquare = {{{0.2, 0.2}, {0.8, 0.2}, {0.8, 0.8}, {0.2, 0.8}}};
constexpr std::array<Point, 10> kStar = {{{0.5, 0.9},
                                          {0.61, 0.62},
                                          {0.92, 0.6},
                                          {0.68, 0.41},
                                          {0.76, 0.12},
                                          {0.5, 0.28},
                                          {0.24, 0.12},
                                          {0.32, 0.41},
                                          {0.08, 0.6},
                                          {0.39, 0.62}}};
constexpr double kStroke = 0.12;
constexpr double kDot = 0.25;  // the radius of a circle

class Sign {
 public:
  Sign(const FieldBox& box, std::string color)
      : side_(std::max(std::min(box.width(), box.height()) - 2 * box.border(), 0.0)),
        left_((box.width() - side_) / 2),
        bottom_((box.height() - side_) / 2),
        content_("q\n" + std::move(color)) {}

  template <std::size_t kCount>
  void Fill(const std::array<Point, kCount>& points) {
    Path(points);
    content_ += "f\n";
  }

  template <std::size_t kCount>
  void Stroke(const std::array<Point, kCount>& points) {
    AppendOperation(content_, {kStroke * side_}, "w");
    Path(points);
    content_ += "S\n";
  }

  void Dot() {
    const Point middle = At({0.5, 0.5});
    const double radius = kDot * side_;
    content_ +=
        CirclePath({middle.x - radius, middle.y - radius, middle.x + radius, middle.y + radius}) +
        "f\n";
  }

  std::string Take() { return std::move(content_) + "Q\n"; }

 private:
  Point At(const Point& point) const {
    return {left_ + point.x * side_, bottom_ + point.y * side_};
  }

  template <std::size_t kCount>
  void Path(const std::array<Point, kCount>& points) {
    for (std::size_t i = 0; i < kCount; ++i) {
      const Point at = At(points[i]);
      AppendOperation(content_, {at.x, at.y}, i == 0 ? "m" : "l");
    }
  }

  double side_;
  double left_;
  double bottom_;
  std::string content_;
};

std::string SignOf(char character, const FieldBox& box, const std::vector<double>& color) {
  Sign sign(box, ColorOperator(color, PaintUse::kFill) + ColorOperator(color, PaintUse::kStroke));
  switch (character) {
    case 'l':
      sign.Dot();
      break;
    case '8':
      sign.Stroke(kRising);
      sign.Stroke(kFalling);
      break;
    case 'u':
      sign.Fill(kDiamond);
      break;
    case 'n':
      sign.Fill(kSquare);
      break;
    case 'H':
      sign.Fill(kStar);
      break;
    default:
      sign.Stroke(kCheck);
  }
  return sign.Take();
}

bool IsOn(const Object& state) {
  return state.IsName() && !state.IsName("Off") && !state.Text().empty();
}

}  // namespace

bool HasButtonStates(const Object& annotation, pdf::Document& document) {
  FieldEntries entries(document, annotation);
  return entries.Own("Subtype").IsName("Widget") && entries.Type() == "Btn" &&
         !entries.HasFlag(FieldEntries::kPushButton);
}

// Without a state of its own a widget that is all of its field has that of the field.
MadeButton ButtonAppearance(const Object& annotation, pdf::Document& document) {
  FieldEntries entries(document, annotation);
  const Object own = entries.Own("AS");
  const Object state = own.IsNull() ? entries.Own("V") : own;
  const bool is_radio = entries.HasFlag(FieldEntries::kRadio);
  const std::string caption = entries.Text(entries.Get(entries.Own("MK"), "CA"));
  const char character = caption.empty() ? (is_radio ? 'l' : '4') : caption.front();
  const FieldBox box = FieldBox::OfWidget(entries);
  const std::string ground = is_radio && character == 'l' ? box.Circle() : box.Rectangle();
  MadeButton made;
  made.is_on = IsOn(state);
  made.on_state = made.is_on ? std::string(state.Text()) : "Yes";
  made.on = box.Form(ground + SignOf(character, box, ReadStyle(entries).color), 0);
  made.off = box.Form(ground, 0);
  return made;
}

}  // namespace TarnixTools::engines::pdfa
