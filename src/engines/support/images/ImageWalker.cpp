#include "engines/support/images/ImageWalker.h"

#include <algorithm>
#include <utility>

#include "engines/support/images/ContentLimits.h"
#include "pdf/Error.h"
#include "pdf/content/InlineImage.h"
#include "pdf/content/Operators.h"
#include "pdf/file/NumberArrays.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;
using pdf::OperatorCode;

constexpr std::int64_t kHiddenAnnotation = 2;
constexpr std::int64_t kNoViewAnnotation = 32;
constexpr std::int64_t kFirstClippingMode = 4;  // of text (ISO 32000-2, table 104)

struct State {
  pdf::Matrix matrix;
  std::string fill_pattern;  // its name, empty for none
  std::string stroke_pattern;
  bool has_clipping_text = false;  // text that is shown clips (ISO 32000-2, 9.3.6)
  bool is_clipped_by_text = false;
};

}  // namespace

// One content stream on its way.
struct ImageWalker::Frame {
  explicit Frame(std::string bytes) : content(std::move(bytes)), reader(content) {}

  std::string content;
  pdf::ContentReader reader;
  pdf::Arena arena;    // of what lives as long as the frame
  pdf::Arena scratch;  // of one operation
  Object resources;
  std::optional<Object> objects;       // /XObject of the resources, once it was asked for
  std::optional<Object> color_spaces;  // /ColorSpace, likewise
  std::uint32_t number = 0;            // of the stream; 0 for a page's content
  pdf::Matrix base;                    // of the content's own space
  State state;
  std::vector<State> saved;
  std::vector<bool> marked;  // open marked content: whether it hides
  int hidden = 0;            // how many of it do
};

ImageWalker::ImageWalker(pdf::Document& document, const pdf::PageTree& pages,
                         const pdf::VisibleLayers& layers, std::size_t page_index, bool with_forms)
    : document_(&document),
      pages_(&pages),
      layers_(&layers),
      page_index_(page_index),
      with_forms_(with_forms),
      page_(pages.Load(pages.pages()[page_index], page_arena_)) {
  PushPage();
}

ImageWalker::~ImageWalker() = default;

bool ImageWalker::PushPage() {
  const pdf::PageTree::Page& page = pages_->pages()[page_index_];
  page_matrix_ = pdf::ReadPageGeometry(*document_, *pages_, page, page_).ToSeenPoints();
  if (with_forms_) {
    const auto annotations = document_->Resolve(page_.Get("Annots"), page_arena_).Items();
    annotations_.assign(annotations.begin(), annotations.end());
  }
  return PushContent(PageContent(page_.Get("Contents")),
                     pages_->Attribute(page, page_, pdf::InheritableKey::kResources, page_arena_),
                     page_matrix_, 0);
}

std::string ImageWalker::PageContent(const Object& contents) {
  if (contents.IsReference()) {
    if (std::optional<std::string> content = ContentOf(contents.AsReference().number)) {
      return *std::move(content);
    }
  }
  std::string all;
  for (const Object& part : document_->Resolve(contents, page_arena_).Items()) {
    const std::optional<std::string> content = ContentOf(part.AsReference().number);
    if (content && all.size() + content->size() <= limits::kMaxContentBytes) {
      all += *content;
      all += '\n';  // no token goes on in the next stream
    }
  }
  return all;
}

// What can be decoded of it; nothing for what is no stream.
std::optional<std::string> ImageWalker::ContentOf(std::uint32_t number) {
  try {
    std::optional<pdf::Decoded> decoded = document_->DecodeStream(number, limits::kMaxContentBytes);
    return decoded ? std::optional(std::move(decoded->data)) : std::nullopt;
  } catch (const pdf::Error& error) {
    if (error.code() == pdf::ErrorCode::kFilterFailed ||
        error.code() == pdf::ErrorCode::kLimitExceeded) {
      return std::nullopt;
    }
    throw;
  }
}

bool ImageWalker::PushContent(std::string content, const Object& resources,
                              const pdf::Matrix& matrix, std::uint32_t number) {
  if (frames_.size() >= limits::kMaxContentDepth || contents_run_ >= limits::kMaxContentsOfPage ||
      bytes_run_ >= limits::kMaxContentBytesOfPage) {
    return false;
  }
  ++contents_run_;
  bytes_run_ += content.size();
  auto frame = std::make_unique<Frame>(std::move(content));
  frame->resources = resources;
  frame->number = number;
  frame->base = matrix;
  frame->state.matrix = matrix;
  frames_.push_back(std::move(frame));
  return true;
}

// A form or a pattern; not within itself.
bool ImageWalker::PushForm(std::uint32_t number, const Object& dictionary,
                           const pdf::Matrix& matrix) {
  const bool is_open = std::any_of(frames_.begin(), frames_.end(),
                                   [&](const auto& frame) { return frame->number == number; });
  if (!with_forms_ || number == 0 || is_open) {
    return false;
  }
  std::optional<std::string> content = ContentOf(number);
  if (!content) {
    return false;
  }
  const Object inherited = frames_.empty() ? Object() : frames_.back()->resources;
  if (!PushContent(*std::move(content), inherited, matrix, number)) {
    return false;
  }
  Frame& frame = *frames_.back();
  const Object own = document_->Resolve(dictionary.Get("Resources"), frame.arena);
  if (own.IsDictionary()) {
    // Once more, into the arena that lives as long as the frame.
    const Object again = document_->Load({.number = number, .generation = 0}, frame.arena);
    frame.resources = document_->Resolve(again.Get("Resources"), frame.arena);
  }
  return true;
}

const DrawnImage* ImageWalker::Next() {
  image_arena_.Reset();
  while (true) {
    if (frames_.empty()) {
      if (!PushNextAnnotation()) {
        return nullptr;
      }
      continue;
    }
    Frame& frame = *frames_.back();
    pdf::Operation operation;
    if (!frame.reader.Next(operation)) {
      frames_.pop_back();
      continue;
    }
    frame.scratch.Reset();
    if (const DrawnImage* image = Run(frame, operation)) {
      if (++images_found_ > limits::kMaxImagesOfPage) {
        return nullptr;
      }
      return image;
    }
  }
}

const DrawnImage* ImageWalker::Run(Frame& frame, const pdf::Operation& operation) {
  State& state = frame.state;
  switch (operation.code) {
    case OperatorCode("q"):
      if (frame.saved.size() < limits::kMaxSavedStates) {
        frame.saved.push_back(state);
      }
      break;
    case OperatorCode("Q"):
      if (!frame.saved.empty()) {
        state = std::move(frame.saved.back());
        frame.saved.pop_back();
      }
      break;
    case OperatorCode("cm"): {
      const auto operands = pdf::ParseOperands(operation.operands, frame.scratch);
      if (operands.size() >= 6) {
        const auto number = [&](std::size_t i) {
          return operands[operands.size() - 6 + i].NumberOr(0);
        };
        const pdf::Matrix matrix{number(0), number(1), number(2), number(3), number(4), number(5)};
        state.matrix = matrix * state.matrix;
      }
      break;
    }
    case OperatorCode("Do"):
      return frame.hidden == 0 ? DrawObject(frame, operation) : nullptr;
    case OperatorCode("BI"):
      return frame.hidden == 0 ? DrawInline(frame, operation) : nullptr;
    case OperatorCode("BDC"):
    case OperatorCode("BMC"):
      BeginMarked(frame, operation);
      break;
    case OperatorCode("EMC"):
      if (!frame.marked.empty()) {
        frame.hidden -= frame.marked.back() ? 1 : 0;
        frame.marked.pop_back();
      }
      break;
    case OperatorCode("scn"):
    case OperatorCode("SCN"): {
      const auto operands = pdf::ParseOperands(operation.operands, frame.scratch);
      std::string& pattern =
          operation.code == OperatorCode("scn") ? state.fill_pattern : state.stroke_pattern;
      pattern = !operands.empty() && operands.back().IsName() ? std::string(operands.back().Text())
                                                              : std::string();
      break;
    }
    case OperatorCode("g"):
    case OperatorCode("rg"):
    case OperatorCode("k"):
    case OperatorCode("cs"):
    case OperatorCode("sc"):
      state.fill_pattern.clear();
      break;
    case OperatorCode("G"):
    case OperatorCode("RG"):
    case OperatorCode("K"):
    case OperatorCode("CS"):
    case OperatorCode("SC"):
      state.stroke_pattern.clear();
      break;
    case OperatorCode("Tr"): {
      const auto operands = pdf::ParseOperands(operation.operands, frame.scratch);
      state.has_clipping_text =
          !operands.empty() && operands.back().IntegerOr(0) >= kFirstClippingMode;
      break;
    }
    case OperatorCode("f"):
    case OperatorCode("F"):
    case OperatorCode("f*"):
      PaintPattern(frame, state.fill_pattern);
      break;
    case OperatorCode("Tj"):
    case OperatorCode("TJ"):
    case OperatorCode("'"):
    case OperatorCode("\""):
      state.is_clipped_by_text = state.is_clipped_by_text || state.has_clipping_text;
      PaintPattern(frame, state.fill_pattern);
      break;
    case OperatorCode("S"):
    case OperatorCode("s"):
      PaintPattern(frame, state.stroke_pattern);
      break;
    case OperatorCode("B"):
    case OperatorCode("B*"):
    case OperatorCode("b"):
    case OperatorCode("b*"):
      PaintPattern(frame, state.fill_pattern.empty() ? state.stroke_pattern : state.fill_pattern);
      break;
    default:
      break;
  }
  return nullptr;
}

const DrawnImage* ImageWalker::DrawObject(Frame& frame, const pdf::Operation& operation) {
  const auto operands = pdf::ParseOperands(operation.operands, frame.scratch);
  if (operands.empty() || !operands.back().IsName()) {
    return nullptr;
  }
  if (!frame.objects) {
    frame.objects = document_->Resolve(frame.resources.Get("XObject"), frame.arena);
  }
  const std::uint32_t number = frame.objects->Get(operands.back().Text()).AsReference().number;
  if (number == 0) {
    return nullptr;
  }
  image_arena_.Reset();
  const Object dictionary = document_->Load({.number = number, .generation = 0}, image_arena_);
  if (!layers_->IsSeen(dictionary.Get("OC"))) {
    return nullptr;
  }
  const Object subtype = document_->Resolve(dictionary.Get("Subtype"), image_arena_);
  if (subtype.IsName("Image")) {
    return Draw(frame, {document_, number, dictionary, {}, {}});
  }
  if (subtype.IsName("Form")) {
    const pdf::Matrix own =
        pdf::ReadMatrix(*document_, dictionary.Get("Matrix")).value_or(pdf::Matrix{});
    PushForm(number, dictionary, own * frame.state.matrix);
  }
  return nullptr;
}

const DrawnImage* ImageWalker::DrawInline(Frame& frame, const pdf::Operation& operation) {
  image_arena_.Reset();
  const Object entries = pdf::ParseInlineEntries(operation.image_entries, image_arena_);
  const Object dictionary =
      FullInlineDictionary(*document_, entries, frame.resources, image_arena_);
  return Draw(frame, {document_, 0, dictionary, operation.image_data, {}});
}

const DrawnImage* ImageWalker::Draw(Frame& frame, const DocumentImage& image) {
  if (!frame.color_spaces) {
    frame.color_spaces = document_->Resolve(frame.resources.Get("ColorSpace"), frame.arena);
  }
  drawn_ = {image, frame.state.matrix, frame.state.is_clipped_by_text};
  drawn_.image.color_spaces = *frame.color_spaces;
  return &drawn_;
}

// A tiling pattern that something is painted with: its cell, once, however often it is repeated.
void ImageWalker::PaintPattern(Frame& frame, const std::string& name) {
  if (name.empty() || frame.hidden > 0 || !with_forms_) {
    return;
  }
  const Object patterns = document_->Resolve(frame.resources.Get("Pattern"), frame.scratch);
  const std::uint32_t number = patterns.Get(name).AsReference().number;
  pdf::Arena arena;
  const Object dictionary = document_->Load({.number = number, .generation = 0}, arena);
  if (document_->Resolve(dictionary.Get("PatternType"), arena).IntegerOr(0) != 1) {
    return;
  }
  const pdf::Matrix own =
      pdf::ReadMatrix(*document_, dictionary.Get("Matrix")).value_or(pdf::Matrix{});
  PushForm(number, dictionary, own * frame.base);
}

void ImageWalker::BeginMarked(Frame& frame, const pdf::Operation& operation) {
  bool is_hidden = false;
  if (operation.code == OperatorCode("BDC")) {
    const auto operands = pdf::ParseOperands(operation.operands, frame.scratch);
    if (operands.size() >= 2 && operands[0].IsName("OC") && operands[1].IsName()) {
      const Object properties =
          document_->Resolve(frame.resources.Get("Properties"), frame.scratch);
      is_hidden = !layers_->IsSeen(properties.Get(operands[1].Text()));
    }
  }
  if (frame.marked.size() < limits::kMaxSavedStates) {
    frame.marked.push_back(is_hidden);
    frame.hidden += is_hidden ? 1 : 0;
  }
}

// Appearance streams are drawn over the page (ISO 32000-2, 12.5.5).
bool ImageWalker::PushNextAnnotation() {
  while (next_annotation_ < annotations_.size()) {
    pdf::Arena arena;
    const Object annotation = document_->Resolve(annotations_[next_annotation_++], arena);
    const std::int64_t flags = document_->Resolve(annotation.Get("F"), arena).IntegerOr(0);
    if ((flags & (kHiddenAnnotation | kNoViewAnnotation)) != 0 ||
        document_->Resolve(annotation.Get("Subtype"), arena).IsName("Popup") ||
        !layers_->IsSeen(annotation.Get("OC"))) {
      continue;
    }
    Object appearance = document_->Resolve(annotation.Get("AP"), arena).Get("N");
    if (!document_->IsStream(appearance.AsReference().number)) {
      const std::string_view chosen = document_->Resolve(annotation.Get("AS"), arena).Text();
      appearance = document_->Resolve(appearance, arena).Get(chosen);
    }
    const std::uint32_t number = appearance.AsReference().number;
    const Object form = document_->Load({.number = number, .generation = 0}, arena);
    if (PushForm(number, form, AnnotationMatrix(annotation, form))) {
      return true;
    }
  }
  return false;
}

pdf::Matrix ImageWalker::AnnotationMatrix(const Object& annotation, const Object& form) {
  const pdf::Matrix own = pdf::ReadMatrix(*document_, form.Get("Matrix")).value_or(pdf::Matrix{});
  const auto rectangle = pdf::ReadBox(*document_, annotation.Get("Rect"));
  const auto box = pdf::ReadBox(*document_, form.Get("BBox"));
  if (!rectangle || !box) {
    return own * page_matrix_;
  }
  const pdf::Box drawn = box->Through(own);
  if (drawn.IsEmpty()) {
    return own * page_matrix_;
  }
  const double x = (rectangle->right - rectangle->left) / (drawn.right - drawn.left);
  const double y = (rectangle->top - rectangle->bottom) / (drawn.top - drawn.bottom);
  const pdf::Matrix placing{
      x, 0, 0, y, rectangle->left - drawn.left * x, rectangle->bottom - drawn.bottom * y};
  return own * placing * page_matrix_;
}

}  // namespace TarnixTools::engines
