// One content stream on its way through a walk (ContentWalker.h): for the walk and the operators
// that it runs, and nobody else.
#ifndef TARNIX_PDF_CONTENT_CONTENTFRAME_H_
#define TARNIX_PDF_CONTENT_CONTENTFRAME_H_

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "pdf/content/ContentReader.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/content/GraphicsState.h"
#include "pdf/content/PathBuilder.h"
#include "pdf/content/ResourceLookup.h"
#include "pdf/content/Type3Font.h"

namespace TarnixTools::pdf {

// Content that an operator has led to, to be gone into once the operator is done.
struct PendingContent {
  ResourceKind kind = ResourceKind::kForm;
  std::uint32_t number = 0;
  std::uint32_t user = 0;           // what leads there, where that is not the content around it
  Matrix matrix;                    // of its space, or of the one that its own matrix leads to
  bool has_matrix = true;           // whether its own matrix counts
  const Type3Font* font = nullptr;  // of a glyph
  const Color* color = nullptr;     // of a cell without colours of its own: the pattern's
};

// What all frames of a walk have in common.
struct WalkContext {
  Document* document = nullptr;
  ContentVisitor* visitor = nullptr;
  WalkOptions options;
  Arena scratch;                 // of one operation
  std::size_t saved_states = 0;  // of all frames
  std::size_t contents_run = 0;
  std::uint64_t bytes_run = 0;
  bool is_exhausted = false;  // content was left out, and that was told
  std::unordered_map<std::uint32_t, std::unique_ptr<Type3Font>> fonts;  // by number
  std::size_t fonts_read = 0;
};

struct ContentFrame {
  ContentFrame(WalkContext& context, const ContentEntry& content_entry,
               std::unique_ptr<Arena> of_entry)
      : walk(&context),
        arena(std::move(of_entry)),
        entry(content_entry),
        names(*context.document, entry.scope.resources, *arena) {}

  ContentFrame(const ContentFrame&) = delete;
  ContentFrame& operator=(const ContentFrame&) = delete;

  void Begin(std::string bytes) {
    content = std::move(bytes);
    reader.emplace(content);
  }

  // Where an operation stands.
  std::size_t OffsetOf(const Operation& operation) const {
    return static_cast<std::size_t>(operation.name.data() - content.data());
  }

  void Report(ContentTrouble trouble, const Operation& operation) const {
    walk->visitor->Trouble(trouble, OffsetOf(operation));
  }

  WalkContext* walk;
  std::unique_ptr<Arena> arena;  // of what lives as long as the frame
  ContentEntry entry;
  std::string content;
  std::optional<ContentReader> reader;
  ResourceLookup names;
  GraphicsState state;
  std::vector<GraphicsState> saved;
  std::size_t unsaved = 0;  // q beyond the bound
  PathBuilder path;
  std::optional<FillRule> clip_rule;  // that the path is going to clip by
  std::vector<MarkedContent> marks;
  std::size_t uncounted_marks = 0;  // beyond the bound
  std::size_t hidden_marks = 0;     // how many of them hide
  bool has_own_colors = true;       // false: those that it sets do not count
  std::vector<PendingContent> pending;
  std::size_t next_pending = 0;
  // Type 3 fonts that are no objects of their own, by name.
  std::unordered_map<std::string, std::unique_ptr<Type3Font>> fonts_in_place;
};

// Run an operation of one group each.
void RunSpaceOperator(ContentFrame& frame, const Operation& operation);
void RunStateOperator(ContentFrame& frame, const Operation& operation);
void RunColorOperator(ContentFrame& frame, const Operation& operation);
void RunPathOperator(ContentFrame& frame, const Operation& operation);
void RunPaintOperator(ContentFrame& frame, const Operation& operation);
void RunClipOperator(ContentFrame& frame, const Operation& operation);
void RunTextOperator(ContentFrame& frame, const Operation& operation);
void RunTextModeOperator(ContentFrame& frame, const Operation& operation);
void RunShowTextOperator(ContentFrame& frame, const Operation& operation);
void RunMarkOperator(ContentFrame& frame, const Operation& operation);
void RunObjectOperator(ContentFrame& frame, const Operation& operation);
void RunInlineImageOperator(ContentFrame& frame, const Operation& operation);
void RunShadingOperator(ContentFrame& frame, const Operation& operation);
void RunGlyphOperator(ContentFrame& frame, const Operation& operation);

// What the resources have under the name that is the last operand; a null value, and a report, for
// nothing.
Object LookUpOperand(ContentFrame& frame, const Operation& operation, ResourceCategory category);
// What they have under any name.
Object LookUp(ContentFrame& frame, const Operation& operation, ResourceCategory category,
              std::string_view name);

// Ends the marked content that was begun last.
void EndMark(ContentFrame& frame);

// Sets a font that a name or a graphics state has led to; name: where there is one.
void SetFont(ContentFrame& frame, const Object& font, double size, std::string_view name);

// Goes into the content, if it has a number, as soon as the operation is done.
void AddPending(ContentFrame& frame, const Operation& operation, const PendingContent& content);
// Goes into the cell of the pattern, if the colour is one.
void AddPattern(ContentFrame& frame, const Operation& operation, const Color& color);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_CONTENTFRAME_H_
