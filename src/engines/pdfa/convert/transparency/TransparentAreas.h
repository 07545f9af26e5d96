// Where a page is painted with transparency that is seen: half transparent paint, blend modes, soft
// masks.
//
//   TransparentAreas areas(document, pages);
//   const TransparentPage page = areas.Find(page_index);
//
// An image with a soft mask that nothing lies under counts as none: it is the same on white.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_TRANSPARENTAREAS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_TRANSPARENTAREAS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "pdf/Box.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::pdfa {

struct TransparentPage {
  std::vector<pdf::Box> areas;          // of the page's content; none overlap
  std::set<std::uint32_t> annotations;  // numbers of those whose appearances are transparent
};

class TransparentAreas : private pdf::ContentVisitor {
 public:
  // Both outlive this.
  TransparentAreas(pdf::Document& document, const pdf::PageTree& pages);

  // Throws pdf::Error for a document that cannot be read any more.
  TransparentPage Find(std::size_t page_index);

 private:
  struct Frame {
    const pdf::GraphicsState* state = nullptr;  // that is in force
    bool is_transparent = false;                // all of it is
  };

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;
  void DrawImage(const pdf::ImageUse& image) override;
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;
  void PaintPath(const pdf::PathUse& path) override;
  void PaintShading(const pdf::ShadingUse& shading) override;

  bool IsTransparent(const pdf::GraphicsState& state) const;
  bool HasSoftMask(const pdf::ImageUse& image);
  bool HasPaintUnder(const pdf::Box& box) const;
  void Note(const pdf::Box& box, const pdf::GraphicsState& state, bool is_transparent);
  void JoinAreas();

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  pdf::ContentWalker walker_;
  TransparentPage found_;
  std::vector<Frame> frames_;
  std::uint32_t annotation_ = 0;  // whose appearance runs
  std::vector<pdf::Box> painted_;
  bool has_painted_more_ = false;  // than is kept
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TRANSPARENCY_TRANSPARENTAREAS_H_
