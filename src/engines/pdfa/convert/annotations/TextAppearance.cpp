#include "engines/pdfa/convert/annotations/TextAppearance.h"

#include <algorithm>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engines/pdfa/convert/annotations/FieldBox.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "engines/pdfa/convert/annotations/TextLines.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::pdfa {

using pdf::Object;

namespace {

constexpr double kLeastPadding = 2;  // points between the edge and the text
constexpr double kLeading = 1.15;    // from baseline to baseline, in heights of the font
// Sizes of text that is to fit.
constexpr double kLeastSize = 4;
constexpr double kUsualSize = 12;
constexpr double kSizeOfHeight = 0.67;                // of a field with one line
constexpr std::size_t kMostOptions = 1'000;           // that are shown
constexpr std::size_t kMostOptionsLookedAt = 10'000;  // for those that are chosen
constexpr std::size_t kMostChosen = 1'000;
constexpr std::size_t kMostCells = 1'000;  // of a comb
// As programs mark what is chosen in a list.
constexpr std::string_view kChosen = "0.6 0.75686 0.8549 rg\n";

enum class Side { kLeft, kCenter, kRight };

// What is written, and how.
struct FieldText {
  std::vector<std::u32string> lines;  // without those that are made of long ones
  bool wraps = false;
  bool is_centered = false;  // between top and bottom
  std::vector<bool> chosen;  // by line, in a list
  std::size_t cells = 0;     // of a comb; 0 for none
};

class TextDrawing {
 public:
  TextDrawing(FieldEntries& entries, FieldBox box, AppearanceFonts& fonts)
      : box_(std::move(box)), style_(ReadStyle(entries)), fonts_(&fonts) {
    const std::int64_t side = entries.OfForm("Q").IntegerOr(0);
    side_ = side == 1 || entries.Type() == "Btn" ? Side::kCenter
            : side == 2                          ? Side::kRight
                                                 : Side::kLeft;
    padding_ = std::max(2 * box_.border(), kLeastPadding);
  }

  // False where no font can be had.
  bool Write(FieldText text) {
    std::u32string all;
    for (const std::u32string& line : text.lines) {
      all += line;
    }
    if (all.empty()) {
      return true;
    }
    font_ = fonts_->Find(style_.font, all);
    if (font_ == nullptr) {
      return false;
    }
    if (text.cells > 0) {
      WriteComb(text);
      return true;
    }
    SetSize(text);
    if (text.wraps) {
      text.lines = Wrapped(text, size_);
    }
    WriteLines(text);
    return true;
  }

  MadeAppearance Take(std::string_view state) {
    std::string content = box_.Rectangle();
    if (!text_.empty()) {
      content += "/Tx BMC\nq\n";
      AppendOperation(content,
                      {box_.border(), box_.border(), box_.width() - 2 * box_.border(),
                       box_.height() - 2 * box_.border()},
                      "re W n");
      content +=
          ground_ + "BT\n" + ColorOperator(style_.color, PaintUse::kFill) + text_ + "ET\nQ\nEMC\n";
    }
    return box_.Form(std::move(content), font_ != nullptr ? font_->number() : 0, state);
  }

 private:
  double Room() const { return std::max(box_.width() - 2 * padding_, 1.0); }

  double HeightOfFont() const { return font_->ascent() - font_->descent(); }

  std::vector<std::u32string> Wrapped(const FieldText& text, double size) const {
    std::vector<std::u32string> lines;
    const auto width_of = [&](std::u32string_view part) { return font_->WidthOf(part) * size; };
    for (const std::u32string& line : text.lines) {
      for (std::u32string& part : WrappedLines(line, Room(), width_of)) {
        lines.push_back(std::move(part));
      }
    }
    return lines;
  }

  void SetSize(const FieldText& text) {
    size_ = style_.size;
    if (size_ > 0) {
      return;
    }
    if (text.wraps) {
      const double height = box_.height() - 2 * padding_;
      for (size_ = kUsualSize; size_ > kLeastSize; --size_) {
        const auto lines = static_cast<double>(Wrapped(text, size_).size());
        if (lines * size_ * HeightOfFont() * kLeading <= height) {
          return;
        }
      }
      return;
    }
    double widest = 0;
    for (const std::u32string& line : text.lines) {
      widest = std::max(widest, font_->WidthOf(line));
    }
    const double by_height = text.is_centered ? kSizeOfHeight * box_.height() : kUsualSize;
    const double by_width = widest > 0 ? Room() / widest : by_height;
    size_ = std::max(std::min(by_height, by_width), kLeastSize);
  }

  void SetFont() {
    text_ += "/F ";
    AppendOperation(text_, {size_}, "Tf");
  }

  // The baseline of a line in the middle.
  double MiddleBaseline() const {
    return box_.height() / 2 - (font_->ascent() + font_->descent()) / 2 * size_;
  }

  // One character in each cell.
  void WriteComb(const FieldText& text) {
    size_ = style_.size > 0 ? style_.size : kSizeOfHeight * box_.height();
    SetFont();
    const double cell = box_.width() / static_cast<double>(text.cells);
    const std::u32string& line = text.lines.front();
    const double y = MiddleBaseline();
    double at_x = 0;
    double at_y = 0;
    for (std::size_t i = 0; i < std::min(line.size(), text.cells); ++i) {
      const std::u32string_view character = std::u32string_view(line).substr(i, 1);
      const double width = font_->WidthOf(character) * size_;
      const double x = cell * static_cast<double>(i) + (cell - width) / 2;
      Show(character, x - at_x, y - at_y);
      at_x = x;
      at_y = y;
    }
  }

  void Show(std::u32string_view line, double dx, double dy) {
    AppendOperation(text_, {dx, dy}, "Td");
    text_ += font_->Shown(line) + " Tj\n";
  }

  void WriteLines(const FieldText& text) {
    SetFont();
    const double pitch = size_ * HeightOfFont() * kLeading;
    double y =
        text.is_centered ? MiddleBaseline() : box_.height() - padding_ - font_->ascent() * size_;
    double at_x = 0;
    double at_y = 0;
    for (std::size_t i = 0; i < text.lines.size() && y > -pitch; ++i) {
      const std::u32string& line = text.lines[i];
      const double rest = box_.width() - font_->WidthOf(line) * size_;
      const double x = side_ == Side::kLeft     ? padding_
                       : side_ == Side::kCenter ? rest / 2
                                                : rest - padding_;
      if (i < text.chosen.size() && text.chosen[i]) {
        ground_ += kChosen;
        AppendOperation(
            ground_,
            {box_.border(), y + font_->descent() * size_, box_.width() - 2 * box_.border(), pitch},
            "re f");
      }
      if (!line.empty()) {
        Show(line, x - at_x, y - at_y);
        at_x = x;
        at_y = y;
      }
      y -= pitch;
    }
  }

  FieldBox box_;
  FieldStyle style_;
  AppearanceFonts* fonts_;
  Side side_ = Side::kLeft;
  double padding_ = 0;
  AppearanceFont* font_ = nullptr;
  double size_ = 0;
  std::string ground_;  // behind lines
  std::string text_;
};

FieldText PlainText(std::u32string_view text, bool wraps) {
  FieldText made{.lines = LinesOf(text), .wraps = wraps, .is_centered = !wraps, .chosen = {}};
  if (!wraps && made.lines.size() > 1) {
    for (std::size_t i = 1; i < made.lines.size(); ++i) {
      made.lines.front() += U' ' + made.lines[i];
    }
    made.lines.resize(1);
  }
  return made;
}

FieldText TextOfField(FieldEntries& entries, std::u32string value) {
  if (entries.HasFlag(FieldEntries::kPassword)) {
    value.assign(value.size(), U'*');
  }
  FieldText text = PlainText(value, entries.HasFlag(FieldEntries::kMultiline));
  const std::int64_t most = entries.Inherited("MaxLen").IntegerOr(0);
  if (entries.HasFlag(FieldEntries::kComb) && !text.wraps && most > 0) {
    text.cells = std::min(static_cast<std::size_t>(most), kMostCells);
  }
  return text;
}

// What a value of a choice is called: an option may be a pair of both.
std::string NameOfOption(FieldEntries& entries, const Object& option, std::string* value) {
  const Object item = entries.Resolved(option);
  if (item.Items().size() < 2) {
    *value = entries.Text(item);
    return *value;
  }
  *value = entries.Text(entries.Resolved(item.Items()[0]));
  return entries.Text(entries.Resolved(item.Items()[1]));
}

std::set<std::string> ChosenOf(FieldEntries& entries, const Object& value) {
  if (!value.IsArray()) {
    return value.IsString() ? std::set<std::string>{entries.Text(value)} : std::set<std::string>();
  }
  std::set<std::string> chosen;
  const std::span<const Object> items = value.Items();
  for (const Object& item : items.first(std::min(items.size(), kMostChosen))) {
    chosen.insert(entries.Text(entries.Resolved(item)));
  }
  return chosen;
}

FieldText TextOfChoice(FieldEntries& entries, std::size_t characters_left) {
  const Object value = entries.Inherited("V");
  const std::set<std::string> chosen = ChosenOf(entries, value);
  const bool is_combo = entries.HasFlag(FieldEntries::kCombo);
  const std::int64_t first = is_combo ? 0 : entries.Inherited("TI").IntegerOr(0);
  const Object choices = entries.Inherited("Opt");
  std::span<const Object> options = choices.Items();
  options = options.subspan(
      std::min(options.size(), static_cast<std::size_t>(std::max<std::int64_t>(first, 0))));
  FieldText text{.lines = {}, .is_centered = is_combo, .chosen = {}};
  for (const Object& option : options.first(std::min(options.size(), kMostOptionsLookedAt))) {
    std::string own_value;
    const std::string name = NameOfOption(entries, option, &own_value);
    const bool is_chosen = chosen.contains(own_value);
    if ((is_combo && !is_chosen) || name.size() > characters_left) {
      continue;
    }
    characters_left -= name.size();
    text.lines.push_back(LinesOf(Utf8ToUtf32(name)).front());
    text.chosen.push_back(is_chosen && !is_combo);
    if (text.lines.size() == kMostOptions) {
      break;
    }
  }
  if (text.lines.empty() && value.IsString()) {
    return PlainText(Utf8ToUtf32(entries.Text(value)), false);
  }
  return text;
}

void Shorten(FieldText& text, std::size_t& characters_left) {
  for (std::u32string& line : text.lines) {
    line.resize(std::min(line.size(), characters_left));
    characters_left -= line.size();
  }
}

std::string OpacityOf(FieldEntries& entries) {
  const double opacity = entries.Own("CA").NumberOr(1);
  return opacity < 1 ? "<<" + OpacityEntries(opacity) + ">>" : std::string();
}

FieldText TextOf(FieldEntries& entries, bool is_free, std::size_t characters_left) {
  if (is_free) {
    return PlainText(Utf8ToUtf32(entries.Text(entries.Own("Contents"))), true);
  }
  if (entries.Type() == "Ch") {
    return TextOfChoice(entries, characters_left);
  }
  if (entries.Type() == "Btn") {
    return PlainText(Utf8ToUtf32(entries.Text(entries.Get(entries.Own("MK"), "CA"))), false);
  }
  return TextOfField(entries, Utf8ToUtf32(entries.Text(entries.Inherited("V"))));
}

}  // namespace

bool ShowsText(const Object& annotation, pdf::Document& document) {
  FieldEntries entries(document, annotation);
  const Object subtype = entries.Own("Subtype");
  const std::string_view type = subtype.IsName("Widget") ? entries.Type() : std::string_view();
  return subtype.IsName("FreeText") || type == "Tx" || type == "Ch" ||
         (type == "Btn" && entries.HasFlag(FieldEntries::kPushButton));
}

std::optional<MadeAppearance> TextAppearance(const Object& annotation, pdf::Document& document,
                                             AppearanceFonts& fonts, bool may_blend,
                                             std::size_t& characters_left) {
  FieldEntries entries(document, annotation);
  const bool is_free = entries.Own("Subtype").IsName("FreeText");
  const FieldBox box = is_free ? FieldBox::OfFreeText(entries) : FieldBox::OfWidget(entries);
  FieldText text = TextOf(entries, is_free, characters_left);
  Shorten(text, characters_left);
  TextDrawing drawing(entries, box, fonts);
  if (!drawing.Write(std::move(text))) {
    return std::nullopt;
  }
  return drawing.Take(is_free && may_blend ? OpacityOf(entries) : std::string());
}

}  // namespace TarnixTools::engines::pdfa
