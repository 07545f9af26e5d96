#include "engines/support/images/ImageWalker.h"

#include "engines/support/images/ImageLimits.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines {

ImageWalker::ImageWalker(pdf::Document& document, const pdf::PageTree& pages,
                         const pdf::VisibleLayers& layers, std::size_t page_index, bool with_forms)
    : document_(&document),
      walker_(document, *this,
              {.images = true,
               .forms = with_forms,
               .patterns = with_forms,
               .appearances = with_forms,
               .layers = &layers}) {
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(document, pages, pages.pages()[page_index]);
  walker_.BeginPage(pages, page_index, geometry.ToSeenPoints());
}

const DrawnImage* ImageWalker::Next() {
  drawn_.reset();
  arena_.Reset();
  while (!drawn_) {
    if (!walker_.Step()) {
      return nullptr;
    }
  }
  return ++images_found_ <= limits::kMaxImagesOfPage ? &*drawn_ : nullptr;
}

void ImageWalker::DrawImage(const pdf::ImageUse& image) {
  const bool is_inline = image.number == 0;
  drawn_ = {.image = {.document = document_,
                      .number = image.number,
                      .dictionary = is_inline ? FullInlineDictionary(*document_, image.dictionary,
                                                                     image.scope.resources, arena_)
                                              : image.dictionary,
                      .data = image.data,
                      .color_spaces = image.color_spaces},
            .matrix = image.state.matrix,
            .is_clipped_by_text = image.state.clip.has_text};
}

}  // namespace TarnixTools::engines
