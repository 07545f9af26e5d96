#include "engines/pdfa/convert/structure/HiddenContent.h"

#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "engines/pdfa/convert/contents/OperationPlace.h"
#include "engines/support/fonts/LibraryMissing.h"
#include "engines/support/pages/PageFont.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/content/Operators.h"
#include "pdf/tree/VisibleLayers.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;
using pdf::OperatorCode;
using pdf::OperatorGroup;

namespace {

constexpr double kThousand = 1000;
constexpr double kUnknownWidth = 500;

pdf::WalkOptions OptionsFor(const pdf::VisibleLayers& layers) {
  return {.text = true,
          .marks = true,
          .names = true,
          .operators = true,
          .forms = true,
          .patterns = true,
          .soft_masks = true,
          .appearances = true,
          .layers = &layers};
}

// An operator that shows text, as what moves on as far without showing anything.
//   numbers - what its array has besides strings, in thousandths
class HiddenText {
 public:
  explicit HiddenText(const pdf::Operation& operation) : code_(operation.code) {
    Arena arena;
    const std::vector<Object> operands = pdf::ParseOperands(operation.operands, arena);
    if (code_ == OperatorCode("\"") && operands.size() >= 2) {
      pdf::AppendNumber(start_, operands[0].NumberOr(0));
      start_ += " Tw ";
      pdf::AppendNumber(start_, operands[1].NumberOr(0));
      start_ += " Tc ";
    }
    start_ += code_ == OperatorCode("\"") || code_ == OperatorCode("'") ? "T* " : "";
    if (code_ == OperatorCode("TJ") && !operands.empty()) {
      for (const Object& item : operands.back().Items()) {
        back_ += item.NumberOr(0);
      }
    }
  }

  // advance: downwards in a font that is vertical, which is not scaled.
  void MoveOn(const pdf::TextState& text, const pdf::TextAdvance& advance) {
    const bool is_vertical = advance.y != 0;
    const double unit = text.size * (is_vertical ? 1 : text.scale) / kThousand;
    back_ -= unit != 0 ? (is_vertical ? advance.y : advance.x) / unit : 0;
  }

  std::string Text() const {
    std::string text = "\n" + start_ + "[";
    pdf::AppendNumber(text, std::isfinite(back_) ? back_ : 0);
    return text + "]TJ\n";
  }

 private:
  std::uint32_t code_;
  std::string start_;
  double back_ = 0;  // thousandths of the size
};

class Remover : private pdf::ContentVisitor {
 public:
  explicit Remover(Conversion& conversion)
      : conversion_(&conversion), layers_(conversion.document), fonts_(conversion.document) {}

  void RemoveAll() {
    pdf::ContentWalker walker(conversion_->document, *this, OptionsFor(layers_));
    for (std::size_t i = 0; i < conversion_->pages.pages().size(); ++i) {
      walker.BeginPage(conversion_->pages, i);
      walker.Run();
    }
    conversion_->report.Dropped("content on layers that are not seen", edited_);
  }

 private:
  // Content that runs.
  struct Content {
    std::uint32_t number = 0;
    bool is_page = false;
    std::size_t hidden_marks = 0;
    ContentEdits edits;
    OperationPlace place{};                 // of the operation that runs
    std::optional<std::size_t> path_begin;  // of the path that is made
    bool is_path_mixed = false;             // with other operators
    bool clips = false;                     // it also is a clip
    std::optional<HiddenText> hidden_text;  // that the operation shows
  };

  // Each once, however often it is used.
  bool EnterContent(const pdf::ContentEntry& entry) override {
    const bool is_page = entry.kind == pdf::ResourceKind::kPage;
    if (entry.number == 0 || !entered_.insert(entry.number).second) {
      return false;
    }
    contents_.push_back({.number = entry.number, .is_page = is_page, .edits = {}});
    return true;
  }

  void LeaveContent(const pdf::ContentEntry& entry) override {
    fonts_.ForgetInPlace();
    if (contents_.empty() || contents_.back().number != entry.number) {
      return;
    }
    TakeText();
    Content content = std::move(contents_.back());
    contents_.pop_back();
    if (!content.edits.empty()) {
      auto& edits = content.is_page ? conversion_->page_edits : conversion_->stream_edits;
      edits[content.number].Take(std::move(content.edits));
      ++edited_;
    }
  }

  void Operator(const pdf::Operation& operation, std::size_t offset) override {
    if (contents_.empty()) {
      return;
    }
    TakeText();
    Content& content = contents_.back();
    content.place = PlaceOf(operation, offset);
    const OperatorGroup group = pdf::GroupOf(operation.code);
    if (group == OperatorGroup::kPath) {
      content.path_begin = content.path_begin.value_or(content.place.begin);
    } else if (group == OperatorGroup::kClip) {
      content.clips = true;
    } else {
      content.is_path_mixed |= content.path_begin && group != OperatorGroup::kPaint;
      if (content.hidden_marks > 0) {
        Hide(content, operation, group);
      }
    }
    if (group == OperatorGroup::kPaint) {
      content.path_begin.reset();
      content.is_path_mixed = false;
      content.clips = false;
    }
  }

  // A path goes with what paints it, but for one that clips, and for one within which something is
  // set, or marked: only what paints it goes then.
  static void Hide(Content& content, const pdf::Operation& operation, OperatorGroup group) {
    const OperationPlace place = content.place;
    switch (group) {
      case OperatorGroup::kPaint:
        return content.clips || content.is_path_mixed
                   ? content.edits.Replace(place.begin, place.end, "n")
                   : content.edits.Replace(content.path_begin.value_or(place.begin), place.end,
                                           "\n");
      case OperatorGroup::kObject:
      case OperatorGroup::kInlineImage:
      case OperatorGroup::kShading:
        return content.edits.Replace(place.begin, place.end, "\n");
      case OperatorGroup::kShowText:
        content.hidden_text.emplace(operation);
        return;
      default:
        return;
    }
  }

  // All that the operation shows has been told by now.
  void TakeText() {
    Content& content = contents_.back();
    if (content.hidden_text) {
      content.edits.Replace(content.place.begin, content.place.end, content.hidden_text->Text());
      content.hidden_text.reset();
    }
  }

  // An object that is drawn may say itself on which layer it lies.
  void LookUp(pdf::ResourceCategory category, std::string_view /*name*/,
              const Object& entry) override {
    if (category != pdf::ResourceCategory::kXObject || contents_.empty() ||
        contents_.back().hidden_marks > 0) {
      return;
    }
    Arena arena;
    const Object layer = conversion_->document.Resolve(entry, arena).Get("OC");
    if (!layers_.IsSeen(layer)) {
      Content& content = contents_.back();
      content.edits.Replace(content.place.begin, content.place.end, "\n");
    }
  }

  void BeginMarked(const pdf::MarkedContent& mark) override {
    if (!contents_.empty()) {
      contents_.back().hidden_marks += mark.is_hidden ? 1 : 0;
    }
  }

  void EndMarked(const pdf::MarkedContent& mark) override {
    if (!contents_.empty()) {
      contents_.back().hidden_marks -= mark.is_hidden && contents_.back().hidden_marks > 0 ? 1 : 0;
    }
  }

  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override {
    if (!contents_.empty() && contents_.back().hidden_text) {
      contents_.back().hidden_text->MoveOn(string.state.text, AdvanceOf(string));
    }
    return std::nullopt;
  }

  pdf::TextAdvance AdvanceOf(const pdf::StringUse& string) {
    const pdf::TextState& text = string.state.text;
    try {
      if (PageFont* font = fonts_.Find(text.font)) {
        return font->AdvanceOf(string.bytes, text);
      }
    } catch (const fonts::LibraryMissing&) {
      // What cannot be measured is guessed.
    }
    const double width = kUnknownWidth / kThousand * text.size + text.char_spacing;
    return {static_cast<double>(string.bytes.size()) * width * text.scale, 0};
  }

  Conversion* conversion_;
  pdf::VisibleLayers layers_;
  PageFonts fonts_;
  std::vector<Content> contents_;    // that run, each used by the one before
  std::set<std::uint32_t> entered_;  // numbers of contents
  std::size_t edited_ = 0;           // contents
};

}  // namespace

void RemoveHiddenContent(Conversion& conversion) {
  Arena arena;
  if (conversion.is_part1() && conversion.document.Catalog(arena).Has("OCProperties")) {
    Remover(conversion).RemoveAll();
  }
}

}  // namespace TarnixTools::engines::pdfa
