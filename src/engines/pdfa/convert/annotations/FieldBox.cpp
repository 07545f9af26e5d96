#include "engines/pdfa/convert/annotations/FieldBox.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "pdf/content/ContentReader.h"
#include "pdf/content/Operands.h"
#include "pdf/content/Operators.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;
using pdf::OperatorCode;

namespace {

// Where the handles of a quarter of a circle are, for a radius of 1.
constexpr double kArc = 0.5523;
constexpr double kLargestSize = 1'000;
constexpr std::size_t kMostComponents = 4;

std::vector<double> NumbersOf(const Object& array) {
  std::vector<double> numbers;
  const std::span<const Object> items = array.Items();
  for (const Object& item : items.first(std::min(items.size(), kMostComponents + 1))) {
    numbers.push_back(item.NumberOr(0));
  }
  return numbers;
}

double BorderWidth(FieldEntries& entries) {
  const pdf::Box box = entries.Rectangle();
  return std::clamp(entries.BorderWidth(1), 0.0, std::min(box.width(), box.height()) / 2);
}

std::string DashOf(FieldEntries& entries) {
  return entries.Get(entries.Own("BS"), "S").IsName("D") ? "[3]0 d\n" : "";
}

}  // namespace

std::string CirclePath(const pdf::Box& box) {
  const double x = (box.left + box.right) / 2;
  const double y = (box.bottom + box.top) / 2;
  const double dx = box.width() / 2 * kArc;
  const double dy = box.height() / 2 * kArc;
  std::string path;
  AppendOperation(path, {box.left, y}, "m");
  AppendOperation(path, {box.left, y + dy, x - dx, box.top, x, box.top}, "c");
  AppendOperation(path, {x + dx, box.top, box.right, y + dy, box.right, y}, "c");
  AppendOperation(path, {box.right, y - dy, x + dx, box.bottom, x, box.bottom}, "c");
  AppendOperation(path, {x - dx, box.bottom, box.left, y - dy, box.left, y}, "c");
  return path + "h ";
}

FieldStyle ReadStyle(FieldEntries& entries) {
  const std::string text(entries.OfForm("DA").Text());
  FieldStyle style{.font = "Helvetica", .color = {0}};
  pdf::ContentReader reader(text);
  pdf::Operation operation;
  pdf::Arena arena;
  while (reader.Next(operation)) {
    if (operation.code == OperatorCode("Tf")) {
      if (const auto font = pdf::LastNameAndNumber(operation, arena)) {
        style.font = entries.FontName(font->name);
        style.size = std::clamp(font->number, 0.0, kLargestSize);
      }
    }
    const std::size_t components = operation.code == OperatorCode("g")    ? 1
                                   : operation.code == OperatorCode("rg") ? 3
                                   : operation.code == OperatorCode("k")  ? 4
                                                                          : 0;
    std::vector<double> numbers(components);
    if (components > 0 && pdf::LastNumbers(operation, numbers)) {
      style.color = std::move(numbers);
    }
  }
  return style;
}

FieldBox FieldBox::OfWidget(FieldEntries& entries) {
  const Object look = entries.Own("MK");
  const pdf::Box rectangle = entries.Rectangle();
  FieldBox box;
  const std::int64_t turn = entries.Get(look, "R").IntegerOr(0);
  box.turn_ = turn % 90 == 0 ? static_cast<int>((turn % 360 + 360) % 360) : 0;
  box.width_ = rectangle.width();
  box.height_ = rectangle.height();
  if (box.turn_ % 180 != 0) {
    std::swap(box.width_, box.height_);
  }
  box.ground_ = ColorOperator(NumbersOf(entries.Get(look, "BG")), PaintUse::kFill);
  box.frame_ = ColorOperator(NumbersOf(entries.Get(look, "BC")), PaintUse::kStroke);
  box.border_ = box.frame_.empty() ? 0 : BorderWidth(entries);
  box.frame_ = box.border_ > 0 ? box.frame_ + DashOf(entries) : "";
  box.is_underline_ = entries.Get(entries.Own("BS"), "S").IsName("U");
  return box;
}

// Its colour is that of the ground; the border has that of the text.
FieldBox FieldBox::OfFreeText(FieldEntries& entries) {
  const pdf::Box rectangle = entries.Rectangle();
  FieldBox box;
  box.width_ = rectangle.width();
  box.height_ = rectangle.height();
  box.ground_ = ColorOperator(NumbersOf(entries.Own("C")), PaintUse::kFill);
  box.border_ = BorderWidth(entries);
  box.frame_ = box.border_ > 0
                   ? ColorOperator(ReadStyle(entries).color, PaintUse::kStroke) + DashOf(entries)
                   : "";
  return box;
}

std::string FieldBox::Rectangle() const {
  std::string content;
  if (!ground_.empty()) {
    content += ground_;
    AppendOperation(content, {0, 0, width_, height_}, "re f");
  }
  if (!frame_.empty()) {
    content += frame_;
    AppendOperation(content, {border_}, "w");
    const double half = border_ / 2;
    if (is_underline_) {
      AppendOperation(content, {0, half}, "m");
      AppendOperation(content, {width_, half}, "l S");
    } else {
      AppendOperation(content, {half, half, width_ - border_, height_ - border_}, "re S");
    }
  }
  return content.empty() ? content : "q\n" + content + "Q\n";
}

std::string FieldBox::Circle() const {
  const double radius = (std::min(width_, height_) - border_) / 2;
  const double x = width_ / 2;
  const double y = height_ / 2;
  const std::string path = CirclePath({x - radius, y - radius, x + radius, y + radius});
  std::string content = ground_.empty() ? "" : ground_ + path + "f\n";
  if (!frame_.empty()) {
    content += frame_;
    AppendOperation(content, {border_}, "w");
    content += path + "S\n";
  }
  return content.empty() ? content : "q\n" + content + "Q\n";
}

MadeAppearance FieldBox::Form(std::string content, std::uint32_t font,
                              std::string_view state) const {
  constexpr std::array<std::string_view, 4> kMatrices = {
      "", "/Matrix[0 1 -1 0 0 0]", "/Matrix[-1 0 0 -1 0 0]", "/Matrix[0 -1 1 0 0 0]"};
  std::string dictionary = "<</Type/XObject/Subtype/Form/BBox";
  pdf::AppendBox(dictionary, {0, 0, width_, height_});
  dictionary += kMatrices[static_cast<std::size_t>(turn_ / 90)];
  dictionary += "/Resources<<";
  if (font != 0) {
    dictionary += "/Font<</F";
    pdf::AppendReference(dictionary, font);
    dictionary += ">>";
  }
  if (!state.empty()) {
    dictionary += "/ExtGState<</G" + std::string(state) + ">>";
    content = content.empty() ? content : "/G gs\n" + content;
  }
  return {dictionary + ">>>>", content.empty() ? " " : std::move(content)};
}

}  // namespace TarnixTools::engines::pdfa
