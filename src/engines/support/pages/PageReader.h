// Reads pages of a document into page models.
//
//   PageReader reader(document, pages, layers);
//   const PageModel page = reader.Read(page_index);
//
// For one thread; several threads have a document each.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PAGEREADER_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PAGEREADER_H_

#include <atomic>
#include <cstddef>

#include "engines/support/pages/PageFont.h"
#include "engines/support/pages/PageModel.h"
#include "engines/support/pages/PaintedColor.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines {

// From points on a page as it is seen, upwards, to those of the model, downwards.
//   height - of the page
inline pdf::Matrix Downwards(double height) {
  return {1, 0, 0, -1, 0, height};
}

class PageReader {
 public:
  // What of a page is read.
  enum class Parts {
    kAll,
    kContent,  // without annotations, but with the places of all that is painted
  };

  // All outlive this.
  PageReader(pdf::Document& document, const pdf::PageTree& pages, const pdf::VisibleLayers& layers,
             Parts parts = Parts::kAll)
      : document_(&document),
        pages_(&pages),
        layers_(&layers),
        parts_(parts),
        fonts_(document),
        colors_(document) {}

  // Reading a page ends with Cancelled once the flag is set, which outlives this.
  void set_cancel_flag(const std::atomic<bool>& is_cancelled) { is_cancelled_ = &is_cancelled; }

  // Pages that are larger come out smaller, as a whole.
  void set_room(const pdf::SeenSize& room) { room_ = room; }

  // Of a damaged page there is what can be read. Throws pdf::Error for a document that cannot be
  // read any more.
  PageModel Read(std::size_t page_index);

 private:
  pdf::Document* document_;
  const pdf::PageTree* pages_;
  const pdf::VisibleLayers* layers_;
  Parts parts_;
  PageFonts fonts_;
  PaintedColors colors_;
  const std::atomic<bool>* is_cancelled_ = nullptr;
  pdf::SeenSize room_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PAGEREADER_H_
