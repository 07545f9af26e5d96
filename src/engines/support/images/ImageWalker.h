// Goes through the content of a page and what it draws by way of forms, patterns and annotations,
// and stops at every image.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_

#include <cstddef>
#include <optional>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/DrawnOrientation.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/tree/VisibleLayers.h"

namespace TarnixTools::engines {

struct DrawnImage {
  DocumentImage image;
  pdf::Matrix matrix;  // of the unit square that the image fills, to the page as it is seen
  bool is_clipped_by_text = false;
};

class ImageWalker : private pdf::ContentVisitor {
 public:
  // All outlive the walker.
  //   with_forms - also what forms, patterns and annotations draw
  ImageWalker(pdf::Document& document, const pdf::PageTree& pages, const pdf::VisibleLayers& layers,
              std::size_t page_index, bool with_forms);

  // The next image, valid until the next call; null at the end. Throws pdf::Error for a document
  // that cannot be read any more.
  const DrawnImage* Next();

 private:
  void DrawImage(const pdf::ImageUse& image) override;

  pdf::Document* document_;
  pdf::ContentWalker walker_;
  std::optional<DrawnImage> drawn_;  // by the last step
  pdf::Arena arena_;                 // of it
  std::size_t images_found_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWALKER_H_
