#include "engines/pdfa/convert/tags/PageScan.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "pdf/BoxAround.h"
#include "pdf/content/Operators.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::OperatorCode;
using pdf::OperatorGroup;

namespace {

constexpr pdf::WalkOptions kOptions = {
    .images = true, .text = true, .paths = true, .marks = true, .operators = true, .forms = true};
// Curves painted in a row that are a drawing, and no decoration.
constexpr std::size_t kCurvesOfFigure = 20;
// How far apart pieces of a picture may lie.
constexpr double kPieceGap = 1.5;
constexpr double kThousand = 1000;
constexpr double kUnknownWidth = 500;
// Entries of marked content that say something of the text in it.
constexpr std::array<std::string_view, 4> kTextEntries = {"ActualText", "Alt", "E", "Lang"};

bool AreNear(const pdf::Box& left, const pdf::Box& right) {
  return left.left <= right.right + kPieceGap && right.left <= left.right + kPieceGap &&
         left.bottom <= right.top + kPieceGap && right.bottom <= left.top + kPieceGap;
}

double LengthOf(double x, double y) {
  return std::hypot(x, y);
}

// Where the operator begins with its operands.
std::size_t BeginOf(const pdf::Operation& operation, std::size_t offset) {
  const char* const content = operation.name.data() - offset;
  return operation.operands.empty() ? offset
                                    : static_cast<std::size_t>(operation.operands.data() - content);
}

std::size_t EndOf(const pdf::Operation& operation, std::size_t offset) {
  if (operation.image_data.data() == nullptr) {
    return offset + operation.name.size();
  }
  constexpr std::string_view kSpaces(" \t\r\n\f\0", 6);
  const char* at = operation.image_data.data() + operation.image_data.size();
  while (kSpaces.find(*at) != std::string_view::npos) {
    ++at;
  }
  return static_cast<std::size_t>(at - (operation.name.data() - offset)) + 2;
}

// A mark that says only what its text means; empty where the properties do not tell.
std::string TextMark(const pdf::Object& properties) {
  std::string text;
  for (const pdf::DictionaryEntry& entry : properties.Entries()) {
    if (std::find(kTextEntries.begin(), kTextEntries.end(), entry.Key()) != kTextEntries.end()) {
      pdf::AppendName(text, entry.Key());
      pdf::AppendObject(text, entry.value);
    }
  }
  return text.empty() ? text : "/Span<<" + text + ">>BDC";
}

}  // namespace

PageScan::PageScan(pdf::Document& document, const pdf::PageTree& pages, const ContentSurvey& survey)
    : document_(&document),
      pages_(&pages),
      survey_(&survey),
      walker_(document, *this, kOptions),
      blocks_(marks_.blocks) {}

PageMarks PageScan::Scan(std::size_t page_index) {
  marks_ = {};
  units_.clear();
  awaited_.reset();
  old_marks_.clear();
  open_artifacts_ = 0;
  forms_.clear();
  path_begin_.reset();
  text_object_ = 0;
  text_objects_ = 0;
  curves_ = 0;
  is_apart_ = false;
  blocks_.Break();
  walker_.BeginPage(*pages_, page_index);
  walker_.Run();
  FinishPage();
  return std::exchange(marks_, {});
}

bool PageScan::EnterContent(const pdf::ContentEntry& entry) {
  if (entry.kind == pdf::ResourceKind::kPage) {
    return true;
  }
  if (IsOnPage()) {
    const auto box = pdf::ReadPageBox(*document_, entry.dictionary.Get("BBox"));
    form_box_ = box.value_or(pdf::Box{}).Through(entry.matrix);
  }
  if (const auto known = looks_.find(entry.number); known != looks_.end()) {
    NoteForm(known->second);
    return false;
  }
  forms_.push_back({.number = entry.number});
  return true;
}

void PageScan::LeaveContent(const pdf::ContentEntry& entry) {
  if (entry.kind != pdf::ResourceKind::kPage && !forms_.empty()) {
    const FormLook look = forms_.back();
    forms_.pop_back();
    looks_[look.number] = look;
    NoteForm(look);
  }
}

// Of a form that has come to its end, or was known before.
void PageScan::NoteForm(const FormLook& look) {
  if (!IsOnPage()) {
    forms_.back().codes += look.codes;
    forms_.back().paints = forms_.back().paints || look.paints;
  } else if (awaited_ && (look.codes > 0 || look.paints)) {
    awaited_->paints = true;
    awaited_->box = form_box_;
    if (!IsPassedOver()) {
      awaited_->block =
          AddBlock(look.codes > 0 ? PageBlock::Kind::kTextOfForm : PageBlock::Kind::kFigure,
                   form_box_, look.codes);
    }
  }
}

void PageScan::Operator(const pdf::Operation& operation, std::size_t offset) {
  if (!IsOnPage()) {
    return;
  }
  TakeAwaited();
  operator_begin_ = BeginOf(operation, offset);
  operator_end_ = EndOf(operation, offset);
  switch (pdf::GroupOf(operation.code)) {
    case OperatorGroup::kPath:
    case OperatorGroup::kPaint:
      return NotePath(operation);
    case OperatorGroup::kText:
      return NoteTextObject(operation);
    case OperatorGroup::kMark:
      return NoteMark(operation);
    case OperatorGroup::kShading:
      Await(operator_begin_);
      awaited_->paints = true;
      return;
    case OperatorGroup::kShowText:
    case OperatorGroup::kObject:
    case OperatorGroup::kInlineImage:
      return Await(operator_begin_);
    default:
      return;
  }
}

void PageScan::Await(std::size_t begin) {
  awaited_ = Unit{.begin = begin,
                  .end = operator_end_,
                  .block = {},
                  .text_object = text_object_,
                  .is_apart = is_apart_,
                  .curves = std::exchange(curves_, 0),
                  .box = {}};
}

// What has been told of the operator by now is all.
void PageScan::TakeAwaited() {
  if (awaited_ && awaited_->paints && !IsPassedOver()) {
    Add(*awaited_);
  }
  awaited_.reset();
}

void PageScan::Add(const Unit& unit) {
  is_apart_ = false;
  units_.push_back(unit);
  MergeLast();
}

// The last unit goes on with the one before it where they are of one block.
void PageScan::MergeLast() {
  if (units_.size() < 2) {
    return;
  }
  const Unit& last = units_.back();
  Unit& before = units_[units_.size() - 2];
  if (last.is_apart || last.block != before.block || last.text_object != before.text_object) {
    return;
  }
  before.end = last.end;
  before.curves += last.curves;
  before.box = pdf::BoxAround(before.box, last.box);
  units_.pop_back();
}

void PageScan::NotePath(const pdf::Operation& operation) {
  if (pdf::GroupOf(operation.code) == OperatorGroup::kPath) {
    path_begin_ = path_begin_.value_or(operator_begin_);
    const bool is_curve = operation.code == OperatorCode("c") ||
                          operation.code == OperatorCode("v") ||
                          operation.code == OperatorCode("y");
    curves_ += is_curve ? 1 : 0;
    return;
  }
  if (operation.code == OperatorCode("n")) {
    curves_ = 0;
  } else {
    Await(path_begin_.value_or(operator_begin_));
  }
  path_begin_.reset();
}

void PageScan::PaintPath(const pdf::PathUse& path) {
  if (!IsOnPage()) {
    forms_.back().paints = true;
  } else if (awaited_) {
    awaited_->paints = true;
    awaited_->box = path.box;
  }
}

void PageScan::NoteTextObject(const pdf::Operation& operation) {
  if (operation.code == OperatorCode("BT")) {
    text_object_ = ++text_objects_;
    text_begin_ = operator_begin_;
    units_before_text_ = units_.size();
    has_mark_in_text_ = false;
  } else if (operation.code == OperatorCode("ET")) {
    EndTextObject();
  }
}

// A text object that belongs to one block stands in its range as a whole, which may go on with that
// of the one before.
void PageScan::EndTextObject() {
  if (text_object_ != 0 && !has_mark_in_text_ && units_.size() == units_before_text_ + 1 &&
      units_.back().block) {
    Unit& unit = units_.back();
    unit.begin = text_begin_;
    unit.end = operator_end_;
    unit.text_object = 0;
    MergeLast();
  }
  text_object_ = 0;
}

void PageScan::NoteMark(const pdf::Operation& operation) {
  const bool begins =
      operation.code == OperatorCode("BMC") || operation.code == OperatorCode("BDC");
  if (begins) {
    old_marks_.emplace_back();
  }
  if (begins || operation.code != OperatorCode("EMC")) {
    return;  // BeginMarked tells more
  }
  const bool is_removed = old_marks_.empty() || old_marks_.back().is_removed;
  if (is_removed) {
    ReplaceOperator("");
  } else {
    is_apart_ = true;
    has_mark_in_text_ = true;
  }
  if (!old_marks_.empty()) {
    open_artifacts_ -= old_marks_.back().is_artifact ? 1 : 0;
    old_marks_.pop_back();
  }
}

void PageScan::ReplaceOperator(std::string text) {
  if (marks_.edits.count() >= limits::kMaxMarkedParts) {
    marks_.is_whole = false;
    return;
  }
  marks_.edits.Replace(operator_begin_, operator_end_, std::move(text));
}

void PageScan::BeginMarked(const pdf::MarkedContent& mark) {
  if (!IsOnPage() || old_marks_.empty()) {
    return;
  }
  const bool is_artifact = mark.tag == "Artifact";
  const std::string kept = is_artifact ? "/Artifact BMC"
                           : mark.id   ? TextMark(mark.properties)
                                       : std::string();
  old_marks_.back().is_artifact = is_artifact;
  open_artifacts_ += is_artifact ? 1 : 0;
  if (mark.id) {
    ReplaceOperator(kept);
    old_marks_.back().is_removed = kept.empty();
  }
  if (!mark.id || !kept.empty()) {
    is_apart_ = true;
    has_mark_in_text_ = true;
  }
}

// Whether what is painted gets no mark: it is decoration already, or beyond the bound.
bool PageScan::IsPassedOver() {
  if (units_.size() >= limits::kMaxMarkedParts) {
    marks_.is_whole = false;
    return true;
  }
  return open_artifacts_ > 0;
}

void PageScan::DrawImage(const pdf::ImageUse& image) {
  if (!IsOnPage()) {
    forms_.back().paints = true;
    return;
  }
  if (!awaited_) {
    return;
  }
  awaited_->paints = true;
  awaited_->is_image = true;
  awaited_->box = pdf::Box{0, 0, 1, 1}.Through(image.state.matrix);
  const bool is_piece = !units_.empty() && units_.back().is_image && units_.back().block &&
                        AreNear(units_.back().box, awaited_->box);
  if (is_piece) {
    awaited_->block = units_.back().block;
    pdf::Box& box = marks_.blocks[*awaited_->block].box;
    box = pdf::BoxAround(box, awaited_->box);
  } else if (!IsPassedOver()) {
    awaited_->block = AddBlock(PageBlock::Kind::kFigure, awaited_->box, 0);
  }
}

std::optional<pdf::TextAdvance> PageScan::ShowText(const pdf::StringUse& string) {
  if (!IsOnPage()) {
    forms_.back().codes += string.bytes.size();
    return std::nullopt;
  }
  pdf::TextAdvance advance;
  const std::optional<TextRun> run = RunOf(string, advance);
  if (awaited_ && run && !string.bytes.empty() && !IsPassedOver()) {
    const bool is_blank = string.bytes.find_first_not_of(' ') == std::string_view::npos;
    awaited_->paints = true;
    if (awaited_->block) {
      blocks_.Extend(*run);
    } else if (is_blank && !units_.empty() && units_.back().block) {
      awaited_->block = units_.back().block;
    } else {
      awaited_->block = blocks_.Add(*run);
    }
  }
  return advance;
}

// Nothing for text of no size.
std::optional<TextRun> PageScan::RunOf(const pdf::StringUse& string, pdf::TextAdvance& advance) {
  const pdf::TextState& text = string.state.text;
  const auto use = survey_->fonts().find(text.font.AsReference().number);
  split_.clear();
  const bool is_known = use != survey_->fonts().end() && use->second.font->codes() != nullptr &&
                        use->second.font->codes()->Split(string.bytes, split_);
  if (!is_known) {
    split_.assign(string.bytes.size(), 0);
  }
  for (const std::uint32_t code : split_) {
    const double width =
        is_known ? use->second.WidthOf(code).value_or(kUnknownWidth) : kUnknownWidth;
    advance.x +=
        width / kThousand * text.size + text.char_spacing + (code == ' ' ? text.word_spacing : 0);
  }
  advance.x *= text.scale;
  const pdf::Matrix glyphs = text.GlyphMatrix() * string.state.matrix;
  const pdf::Matrix lines = text.matrix * string.state.matrix;
  const double along = LengthOf(glyphs.a, glyphs.b);
  const double size = LengthOf(glyphs.c, glyphs.d);
  if (!glyphs.IsFinite() || !std::isfinite(advance.x) || along <= 0 || size <= 0) {
    return std::nullopt;
  }
  return TextRun{.begin = lines.Apply(0, text.rise),
                 .end = lines.Apply(advance.x, text.rise),
                 .along = {glyphs.a / along, glyphs.b / along},
                 .up = {glyphs.c / size, glyphs.d / size},
                 .size = size,
                 .codes = split_.size()};
}

std::uint32_t PageScan::AddBlock(PageBlock::Kind kind, const pdf::Box& box, std::uint64_t codes) {
  blocks_.Break();
  marks_.blocks.push_back({.kind = kind, .box = box, .codes = codes});
  return static_cast<std::uint32_t>(marks_.blocks.size() - 1);
}

// Drawings; and on a page without anything else, all that is painted.
void PageScan::ChooseFigures() {
  std::optional<std::uint32_t> only;
  const bool is_drawing = marks_.blocks.empty();
  for (Unit& unit : units_) {
    if (unit.block || (!is_drawing && unit.curves < kCurvesOfFigure)) {
      continue;
    }
    if (is_drawing && only) {
      pdf::Box& box = marks_.blocks[*only].box;
      box = pdf::BoxAround(box, unit.box);
    } else {
      only = AddBlock(PageBlock::Kind::kFigure, unit.box, 0);
    }
    unit.block = only;
  }
}

void PageScan::FinishPage() {
  TakeAwaited();
  ChooseFigures();
  for (const Unit& unit : units_) {
    marks_.ranges.push_back({.begin = static_cast<std::uint32_t>(unit.begin),
                             .end = static_cast<std::uint32_t>(unit.end),
                             .block = unit.block.value_or(MarkedRange::kArtifact)});
  }
}

}  // namespace TarnixTools::engines::pdfa
