// What a walk through content tells (ContentWalker.h), and to whom.
//
//   class ImageCounter : public ContentVisitor {
//    public:
//     void DrawImage(const ImageUse& image) override { ++count; }
//     std::size_t count = 0;
//   };
//
// Everything that is handed over lives until the call returns, or, if the walk is made by steps,
// until the next step.
#ifndef TARNIX_PDF_CONTENT_CONTENTVISITOR_H_
#define TARNIX_PDF_CONTENT_CONTENTVISITOR_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "pdf/content/ContentReader.h"
#include "pdf/content/GraphicsState.h"
#include "pdf/content/PageContents.h"
#include "pdf/content/PathBuilder.h"
#include "pdf/content/ResourceKind.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::pdf {

// What the visitor is called for; nothing is worked out that nobody wants. All else is always told.
struct WalkOptions {
  bool images = false;
  bool text = false;  // also keeps GraphicsState::text
  bool paths = false;
  bool shadings = false;
  bool clips = false;      // also keeps GraphicsState::clip
  bool style = false;      // keeps colours, lines, transparency and rendering parameters
  bool marks = false;      // marked content
  bool names = false;      // each look-up of a resource
  bool operators = false;  // each operation as it stands

  // What is gone into, besides the content that the walk begins with.
  bool forms = false;
  bool patterns = false;     // cells of tiling patterns that something is painted with
  bool soft_masks = false;   // groups of soft masks that are set
  bool glyphs = false;       // of Type 3 fonts, as they are shown
  bool appearances = false;  // of the page's annotations, those that are shown

  // What lies on a layer that is not seen is passed over; null: all layers are seen.
  const VisibleLayers* layers = nullptr;
};

// Content that the walk goes into.
struct ContentEntry {
  ResourceKind kind = ResourceKind::kPage;
  std::uint32_t number = 0;  // of its stream; of a page's object
  std::uint32_t user = 0;    // of the annotation of an appearance, and of the font of a glyph
  Object dictionary;
  ResourceScope scope;
  Matrix matrix;                              // from its space to the space of the walk
  std::size_t depth = 0;                      // 0 for what the walk begins with
  const GraphicsState* state = nullptr;       // in force; at first that which it begins with
  std::span<const PageContents::Part> parts;  // of a page's content
  std::size_t bytes = 0;                      // of its content; once it has been read
};

struct ImageUse {
  std::uint32_t number = 0;  // of an XObject; 0 for an inline image
  Object dictionary;         // of an inline image: keys and values as they stand
  std::string_view data;     // of an inline image, encoded
  Object color_spaces;       // of the resources, by name
  const GraphicsState& state;
  const ResourceScope& scope;
};

// One string of an operator that shows text; TJ has several.
struct StringUse {
  std::string_view bytes;  // without delimiters and escapes
  double adjustment = 0;   // thousandths of the font's size that TJ has moved back before it
  std::size_t index = 0;   // among the strings of the operator
  bool is_hidden = false;  // it lies on a layer that is not seen, and only moves on
  const GraphicsState& state;
  const ResourceScope& scope;
};

// How far a string has moved on, in units of text space: spacing and scale included.
struct TextAdvance {
  double x = 0;
  double y = 0;
};

enum class FillRule : std::uint8_t { kNonZero, kEvenOdd };

struct PathUse {
  std::span<const PathSegment> segments;  // in the space of the walk
  Box box;                                // around all points, those of curves' handles included
  bool is_whole = true;                   // false: it has more segments than are kept
  bool fills = false;
  bool strokes = false;
  FillRule rule = FillRule::kNonZero;
  const GraphicsState& state;
};

struct ShadingUse {
  std::uint32_t number = 0;
  Object dictionary;
  const GraphicsState& state;
};

struct MarkedContent {
  std::string_view tag;            // as it stands, without its slash
  Object properties;               // resolved; null for none
  std::optional<std::int64_t> id;  // /MCID
  bool is_hidden = false;          // it lies on a layer that is not seen
};

// What readers pass over, or read otherwise than it was meant.
enum class ContentTrouble : std::uint8_t {
  kUnreadable,       // data that cannot be decoded, or no stream at all
  kDamaged,          // something that is no regular content
  kOperandsLeft,     // operands at the end
  kOperandsMissing,  // an operator with too few operands, or others than it takes
  kResourceMissing,  // a name that the resources do not have
  kSurplusRestore,   // Q without q
  kUnclosedSave,     // q without Q
  kSurplusMarkEnd,   // EMC without a beginning
  kUnclosedMark,     // marked content without EMC
  kLoop,             // content that leads to itself
  kTooDeep,          // limits::kMaxContentDepth
  kTooMuch,          // another bound
};

class ContentVisitor {
 public:
  virtual ~ContentVisitor() = default;

  // Before content is read; false: not to go into it.
  virtual bool EnterContent(const ContentEntry& /*entry*/) { return true; }

  // After what was gone into has come to its end.
  virtual void LeaveContent(const ContentEntry& /*entry*/) {}

  // Each operation, before anything else is told of it.
  //   offset - of the operator, in the content that is running
  virtual void Operator(const Operation& /*operation*/, std::size_t /*offset*/) {}

  // A name was looked up; entry: as the resources have it, null for none.
  virtual void LookUp(ResourceCategory /*category*/, std::string_view /*name*/,
                      const Object& /*entry*/) {}

  virtual void DrawImage(const ImageUse& /*image*/) {}

  // Says how far the string moves on; nullopt: not known.
  virtual std::optional<TextAdvance> ShowText(const StringUse& /*string*/) { return std::nullopt; }

  // Whether the font that is set writes downwards, which decides where adjustments go.
  virtual bool IsVertical(const TextState& /*text*/) { return false; }

  // A path that is filled or stroked, or both.
  virtual void PaintPath(const PathUse& /*path*/) {}

  virtual void PaintShading(const ShadingUse& /*shading*/) {}

  // The clip has become smaller, as the state says; after the path is painted.
  virtual void SetClip(const PathUse& /*path*/) {}

  virtual void BeginMarked(const MarkedContent& /*mark*/) {}

  virtual void EndMarked(const MarkedContent& /*mark*/) {}

  // MP or DP.
  virtual void MarkPoint(const MarkedContent& /*mark*/) {}

  //   offset - in the content that is running; 0 where there is none
  virtual void Trouble(ContentTrouble /*trouble*/, std::size_t /*offset*/) {}
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_CONTENTVISITOR_H_
