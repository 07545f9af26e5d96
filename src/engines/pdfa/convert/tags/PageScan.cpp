#include "engines/pdfa/convert/tags/PageScan.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/convert/contents/OperationPlace.h"
#include "pdf/BoxAround.h"
#include "pdf/content/Operands.h"
#include "pdf/content/Operators.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::OperatorCode;
using pdf::OperatorGroup;

namespace {

constexpr pdf::WalkOptions kOptions = {.images = true,
                                       .text = true,
                                       .paths = true,
                                       .shadings = true,
                                       .marks = true,
                                       .operators = true,
                                       .forms = true};
// Text of a form that is more than a paragraph.
constexpr std::uint64_t kParagraphCodes = 300;
// Entries of marked content that say something of the text in it.
constexpr std::array<std::string_view, 4> kTextEntries = {"ActualText", "Alt", "E", "Lang"};

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

// Where nothing hidden stays there is nothing of it to be marked.
pdf::WalkOptions OptionsFor(HiddenContent hidden, const pdf::VisibleLayers& layers) {
  pdf::WalkOptions options = kOptions;
  options.layers = hidden == HiddenContent::kIsLeftOut ? &layers : nullptr;
  return options;
}

}  // namespace

PageScan::PageScan(pdf::Document& document, const pdf::PageTree& pages, HiddenContent hidden)
    : document_(&document),
      pages_(&pages),
      finder_(document, pages),
      walker_(document, *this, OptionsFor(hidden, finder_.layers())) {}

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
  is_apart_ = false;
  last_text_.reset();
  placed_ = finder_.Find(page_index);
  marks_.blocks = placed_.TakeBlocks();
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
    awaited_->is_form = true;
    awaited_->codes = look.codes;
    awaited_->box = form_box_;
  }
}

void PageScan::Operator(const pdf::Operation& operation, std::size_t offset) {
  if (!IsOnPage()) {
    return;
  }
  TakeAwaited();
  const OperationPlace place = PlaceOf(operation, offset);
  operator_begin_ = place.begin;
  operator_end_ = place.end;
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
      Await(operator_begin_);
      return NoteStrings(operation);
    case OperatorGroup::kObject:
    case OperatorGroup::kInlineImage:
      return Await(operator_begin_);
    default:
      return;
  }
}

void PageScan::NoteStrings(const pdf::Operation& operation) {
  if (operation.code == OperatorCode("TJ")) {
    strings_ = pdf::StringOffsets(operation.operands);
    for (std::size_t& string : strings_) {
      string += operator_begin_;
    }
  }
}

void PageScan::Await(std::size_t begin) {
  strings_.clear();
  awaited_ = Unit{.begin = begin,
                  .end = operator_end_,
                  .block = {},
                  .text_object = text_object_,
                  .is_apart = is_apart_,
                  .box = {}};
}

// What has been told of the operator by now is all.
void PageScan::TakeAwaited() {
  if (awaited_ && awaited_->paints && !IsPassedOver()) {
    AddStrings(*awaited_);
  }
  awaited_.reset();
}

// What an operator shows in several blocks is cut into one operator for each, between its strings.
void PageScan::AddStrings(const Unit& unit) {
  Unit part = unit;
  part.block = BlockOf(unit);
  for (std::size_t i = 1; i < strings_.size(); ++i) {
    const std::size_t end = i + 1 < strings_.size() ? strings_[i + 1] : unit.end;
    const auto block = placed_.At(strings_[i], end);
    if (!block || block == part.block || IsPassedOver()) {
      continue;
    }
    part.end = strings_[i];
    Add(part);
    marks_.edits.Insert(strings_[i], "]TJ");
    part.begin = strings_[i];
    part.end = unit.end;
    part.is_array_rest = true;
    part.is_apart = false;
    part.block = block;
    last_text_ = block;
  }
  Add(part);
}

// Nothing for decoration.
std::optional<std::uint32_t> PageScan::BlockOf(const Unit& unit) {
  if (unit.codes == 0) {
    return placed_.At(unit.begin, unit.end);
  }
  const std::uint32_t block = BlockOfText(unit);
  last_text_ = unit.is_form && unit.codes > kParagraphCodes ? BlockOfForm(block) : block;
  return last_text_;
}

std::uint32_t PageScan::BlockOfText(const Unit& unit) {
  if (const auto found = placed_.At(unit.begin, unit.end)) {
    return *found;
  }
  if (last_text_) {
    return *last_text_;
  }
  marks_.blocks.emplace_back();
  return static_cast<std::uint32_t>(marks_.blocks.size() - 1);
}

// The block that this one lies in, which the form as a whole becomes.
std::uint32_t PageScan::BlockOfForm(std::uint32_t block) {
  while (marks_.blocks[block].parent != PageBlock::kNoParent) {
    block = marks_.blocks[block].parent;
  }
  const pdf::Box box = marks_.blocks[block].box;
  marks_.blocks[block] = {.kind = PageBlock::Kind::kForm, .look = {}, .box = box};
  return block;
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
  if (last.is_apart || last.is_array_rest || last.block != before.block ||
      last.text_object != before.text_object) {
    return;
  }
  before.end = last.end;
  before.box = pdf::BoxAround(before.box, last.box);
  units_.pop_back();
}

void PageScan::NotePath(const pdf::Operation& operation) {
  if (pdf::GroupOf(operation.code) == OperatorGroup::kPath) {
    path_begin_ = path_begin_.value_or(operator_begin_);
    return;
  }
  if (operation.code != OperatorCode("n")) {
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

// On the page the operator alone tells that it paints.
void PageScan::PaintShading(const pdf::ShadingUse& /*shading*/) {
  if (!IsOnPage()) {
    forms_.back().paints = true;
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
  } else if (awaited_) {
    awaited_->paints = true;
    awaited_->box = pdf::Box{0, 0, 1, 1}.Through(image.state.matrix);
  }
}

std::optional<pdf::TextAdvance> PageScan::ShowText(const pdf::StringUse& string) {
  if (string.is_hidden) {
    return std::nullopt;
  }
  if (!IsOnPage()) {
    forms_.back().codes += string.bytes.size();
  } else if (awaited_) {
    awaited_->paints = awaited_->paints || !string.bytes.empty();
    awaited_->codes += string.bytes.size();
  }
  return std::nullopt;
}

// Where a page shows nothing else, all that is painted is a figure.
void PageScan::TakeAllForAFigure() {
  const bool has_blocks = std::any_of(units_.begin(), units_.end(),
                                      [](const Unit& unit) { return unit.block.has_value(); });
  if (has_blocks || units_.empty()) {
    return;
  }
  PageBlock figure{.kind = PageBlock::Kind::kFigure, .look = {}, .box = units_.front().box};
  const auto index = static_cast<std::uint32_t>(marks_.blocks.size());
  for (Unit& unit : units_) {
    figure.box = pdf::BoxAround(figure.box, unit.box);
    unit.block = index;
  }
  marks_.blocks.push_back(figure);
}

void PageScan::FinishPage() {
  TakeAwaited();
  TakeAllForAFigure();
  for (const Unit& unit : units_) {
    marks_.ranges.push_back({.begin = static_cast<std::uint32_t>(unit.begin),
                             .end = static_cast<std::uint32_t>(unit.end),
                             .block = unit.block.value_or(MarkedRange::kArtifact),
                             .is_array_rest = unit.is_array_rest});
  }
}

}  // namespace TarnixTools::engines::pdfa
