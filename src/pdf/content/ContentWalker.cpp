#include "pdf/content/ContentWalker.h"

#include <algorithm>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/content/Appearances.h"
#include "pdf/content/ContentFrame.h"
#include "pdf/file/NumberArrays.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::int64_t kUncoloredTiles = 2;  // ISO 32000-2, table 74

bool IsAlongAxes(const Matrix& matrix) {
  return (matrix.b == 0 && matrix.c == 0) || (matrix.a == 0 && matrix.d == 0);
}

// Forms, patterns and appearances have a box that they do not paint beyond.
void ClipToBox(Document& document, const ContentEntry& entry, Clip& clip) {
  if (const auto box = ReadBox(document, entry.dictionary.Get("BBox"))) {
    clip.box = clip.box.Within(box->Through(entry.matrix));
    clip.is_rectangle = clip.is_rectangle && IsAlongAxes(entry.matrix);
  }
}

}  // namespace

ContentWalker::ContentWalker(Document& document, ContentVisitor& visitor,
                             const WalkOptions& options)
    : walk_(std::make_unique<WalkContext>()) {
  walk_->document = &document;
  walk_->visitor = &visitor;
  walk_->options = options;
  SetRunners(options);
}

ContentWalker::~ContentWalker() = default;

void ContentWalker::SetRunners(const WalkOptions& options) {
  const auto run = [this](OperatorGroup group, Runner runner, bool is_wanted) {
    runners_[static_cast<std::size_t>(group)] = is_wanted ? runner : nullptr;
  };
  const bool keeps_paths = options.paths || options.clips;
  const bool keeps_text = options.text || options.glyphs;
  run(OperatorGroup::kSpace, RunSpaceOperator, true);
  run(OperatorGroup::kState, RunStateOperator,
      options.style || options.soft_masks || keeps_text || options.names);
  run(OperatorGroup::kColor, RunColorOperator, options.style || options.patterns || options.names);
  run(OperatorGroup::kPath, RunPathOperator, keeps_paths);
  run(OperatorGroup::kPaint, RunPaintOperator, keeps_paths || options.patterns);
  run(OperatorGroup::kClip, RunClipOperator, keeps_paths);
  run(OperatorGroup::kText, RunTextOperator, keeps_text || options.names);
  run(OperatorGroup::kTextMode, RunTextModeOperator, true);
  run(OperatorGroup::kShowText, RunShowTextOperator, true);
  run(OperatorGroup::kMark, RunMarkOperator,
      options.marks || options.names || options.layers != nullptr);
  run(OperatorGroup::kObject, RunObjectOperator, options.images || options.forms || options.names);
  run(OperatorGroup::kInlineImage, RunInlineImageOperator, options.images || options.names);
  run(OperatorGroup::kShading, RunShadingOperator, options.shadings || options.names);
  run(OperatorGroup::kGlyph, RunGlyphOperator, true);
}

void ContentWalker::Reset() {
  frames_.clear();
  annotations_.clear();
  next_annotation_ = 0;
  contents_ = {};
  root_arena_.Reset();
  walk_->scratch.Reset();
  walk_->saved_states = 0;
  walk_->contents_run = 0;
  walk_->bytes_run = 0;
  walk_->is_exhausted = false;
  walk_->fonts.clear();
  walk_->fonts_read = 0;
}

void ContentWalker::BeginPage(const PageTree& pages, std::size_t page_index, const Matrix& matrix) {
  Reset();
  Document& document = *walk_->document;
  root_matrix_ = matrix;
  root_scope_ = ScopeOfPage(document, pages, page_index, root_arena_);
  const PageTree::Page& page = pages.pages()[page_index];
  ContentEntry entry;
  entry.number = page.number;
  entry.dictionary = pages.Load(page, root_arena_);
  entry.scope = root_scope_;
  entry.matrix = matrix;
  if (walk_->options.appearances) {
    const auto items = document.Resolve(entry.dictionary.Get("Annots"), root_arena_).Items();
    annotations_.assign(items.begin(), items.end());
  }
  contents_ = ReadPageContents(document, entry.dictionary.Get("Contents"));
  entry.parts = contents_.parts;
  auto frame = std::make_unique<ContentFrame>(*walk_, entry, std::make_unique<Arena>());
  frame->state.matrix = matrix;
  frame->entry.state = &frame->state;
  if (!walk_->visitor->EnterContent(frame->entry)) {
    return;
  }
  if (!contents_.is_whole) {
    walk_->visitor->Trouble(ContentTrouble::kUnreadable, 0);
  }
  Push(std::move(frame), std::move(contents_.bytes));
}

void ContentWalker::BeginContent(const ContentPlace& content, const ResourceScope& user,
                                 const Matrix& matrix) {
  Reset();
  root_matrix_ = matrix;
  root_scope_ = user;
  Enter({.kind = content.kind, .number = content.number, .matrix = matrix});
}

bool ContentWalker::Step() {
  walk_->scratch.Reset();
  if (frames_.empty()) {
    return EnterNextAppearance();
  }
  ContentFrame& frame = *frames_.back();
  if (frame.next_pending < frame.pending.size()) {
    Enter(frame.pending[frame.next_pending++]);
    return true;
  }
  frame.pending.clear();
  frame.next_pending = 0;
  Operation operation;
  if (frame.reader->Next(operation)) {
    Run(frame, operation);
  } else {
    Leave();
  }
  return true;
}

void ContentWalker::Run() {
  while (Step()) {
  }
}

const std::vector<MarkedContent>& ContentWalker::marks() const {
  static const std::vector<MarkedContent> kNone;
  return frames_.empty() ? kNone : frames_.back()->marks;
}

void ContentWalker::Run(ContentFrame& frame, const Operation& operation) {
  if (walk_->options.operators) {
    walk_->visitor->Operator(operation, frame.OffsetOf(operation));
  }
  if (const Runner runner = runners_[static_cast<std::size_t>(GroupOf(operation.code))]) {
    runner(frame, operation);
  }
}

// Content that is a stream.
void ContentWalker::Enter(const PendingContent& content) {
  if (!MayEnter(content.number)) {
    return;
  }
  auto arena = std::make_unique<Arena>();
  const ContentEntry entry = EntryOf(content, *arena);
  auto frame = std::make_unique<ContentFrame>(*walk_, entry, std::move(arena));
  SetState(*frame, content);
  frame->entry.state = &frame->state;
  if (!walk_->visitor->EnterContent(frame->entry)) {
    return;
  }
  std::optional<Decoded> decoded =
      walk_->document->TryDecodeStream(content.number, limits::kMaxContentBytes);
  if (!decoded || !decoded->complete) {
    walk_->visitor->Trouble(ContentTrouble::kUnreadable, 0);
  }
  Push(std::move(frame), decoded ? std::move(decoded->data) : std::string());
}

// False for content that leads to itself, and beyond the bounds.
bool ContentWalker::MayEnter(std::uint32_t number) {
  const bool is_open = std::any_of(frames_.begin(), frames_.end(), [&](const auto& frame) {
    return frame->entry.kind != ResourceKind::kPage && frame->entry.number == number;
  });
  if (is_open) {
    walk_->visitor->Trouble(ContentTrouble::kLoop, 0);
    return false;
  }
  if (frames_.size() >= limits::kMaxContentDepth) {
    walk_->visitor->Trouble(ContentTrouble::kTooDeep, 0);
    return false;
  }
  if (walk_->contents_run >= limits::kMaxContentsOfPage ||
      walk_->bytes_run >= limits::kMaxContentBytesOfPage) {
    if (!std::exchange(walk_->is_exhausted, true)) {
      walk_->visitor->Trouble(ContentTrouble::kTooMuch, 0);
    }
    return false;
  }
  return true;
}

ContentEntry ContentWalker::EntryOf(const PendingContent& content, Arena& arena) {
  Document& document = *walk_->document;
  const ResourceScope& around = frames_.empty() ? root_scope_ : frames_.back()->entry.scope;
  const std::uint32_t parent = frames_.empty() ? 0 : frames_.back()->entry.number;
  ContentEntry entry;
  entry.kind = content.kind;
  entry.number = content.number;
  entry.dictionary = document.Load({.number = content.number, .generation = 0}, arena);
  entry.depth = frames_.size();
  entry.user = content.user != 0 ? content.user : parent;
  entry.scope = ScopeOf(document, entry.dictionary, content.number,
                        content.font != nullptr ? content.font->ScopeFor(around) : around, arena);
  entry.matrix = content.matrix;
  if (content.has_matrix) {
    const auto own = ReadMatrix(document, entry.dictionary.Get("Matrix"));
    entry.matrix = own.value_or(Matrix{}) * entry.matrix;
  }
  return entry;
}

// Forms and glyphs begin with what is in force where they are painted, everything else anew (ISO
// 32000-2, 8.7.3.1, 8.10.1, 9.6.4, 11.6.5.2).
void ContentWalker::SetState(ContentFrame& frame, const PendingContent& content) {
  const ContentEntry& entry = frame.entry;
  if (!frames_.empty() &&
      (entry.kind == ResourceKind::kForm || entry.kind == ResourceKind::kGlyph)) {
    frame.state = frames_.back()->state;
    frame.has_own_colors = frames_.back()->has_own_colors;
  }
  frame.state.matrix = entry.matrix;
  if (entry.kind == ResourceKind::kForm && entry.dictionary.Has("Group")) {
    frame.state.transparency = {};
  }
  if (content.color != nullptr &&
      frame.names.Follow(entry.dictionary.Get("PaintType")).value.IntegerOr(0) == kUncoloredTiles) {
    frame.has_own_colors = false;
    frame.state.fill = {.space = content.color->space, .components = content.color->components};
    frame.state.stroke = frame.state.fill;
  }
  if (walk_->options.clips) {
    ClipToBox(*walk_->document, entry, frame.state.clip);
  }
}

void ContentWalker::Push(std::unique_ptr<ContentFrame> frame, std::string content) {
  ++walk_->contents_run;
  walk_->bytes_run += content.size();
  frame->entry.bytes = content.size();
  frame->Begin(std::move(content));
  frames_.push_back(std::move(frame));
}

void ContentWalker::Leave() {
  ContentFrame& frame = *frames_.back();
  ContentVisitor& visitor = *walk_->visitor;
  const std::size_t end = frame.content.size();
  const auto report = [&](bool is_so, ContentTrouble trouble) {
    if (is_so) {
      visitor.Trouble(trouble, end);
    }
  };
  report(frame.reader->is_damaged(), ContentTrouble::kDamaged);
  report(frame.reader->has_operands_left(), ContentTrouble::kOperandsLeft);
  report(!frame.saved.empty(), ContentTrouble::kUnclosedSave);
  report(!frame.marks.empty(), ContentTrouble::kUnclosedMark);
  while (!frame.marks.empty()) {
    EndMark(frame);
  }
  visitor.LeaveContent(frame.entry);
  walk_->saved_states -= frame.saved.size();
  frames_.pop_back();
}

// Appearances are painted over the page (ISO 32000-2, 12.5.5).
bool ContentWalker::EnterNextAppearance() {
  Document& document = *walk_->document;
  while (next_annotation_ < annotations_.size()) {
    const Followed annotation = document.Follow(annotations_[next_annotation_++], walk_->scratch);
    const std::uint32_t number = ShownAppearance(document, annotation.value, walk_->options.layers);
    if (number == 0) {
      walk_->scratch.Reset();
      continue;
    }
    const Object form = document.Load({.number = number, .generation = 0}, walk_->scratch);
    Enter({.kind = ResourceKind::kAppearance,
           .number = number,
           .user = annotation.number,
           .matrix = AppearanceMatrix(document, annotation.value, form) * root_matrix_,
           .has_matrix = false});
    return true;
  }
  return false;
}

}  // namespace TarnixTools::pdf
