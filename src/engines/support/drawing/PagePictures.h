// The large images of a page, made as small or as large as they are seen: PDFium would decode them
// in full before it makes them small, and takes long to make them large. They are painted first, and what PDFium draws goes over them; so only
// images that nothing lies under are taken.
//
//   PagePictures pictures;
//   pictures.Choose(document, pages, page_index, objects);
//   for (pdfium::PageObject* object : pictures.objects()) ...  // PDFium is not to draw these
//   pictures.Draw(pixels, width, top, height);                 // band by band, top to bottom
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_PAGEPICTURES_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_PAGEPICTURES_H_

#include <cstdint>
#include <memory>
#include <vector>

#include "engines/support/drawing/PageObjects.h"
#include "engines/support/drawing/PictureChoice.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

class PagePictures {
 public:
  PagePictures();
  ~PagePictures();
  PagePictures(const PagePictures&) = delete;
  PagePictures& operator=(const PagePictures&) = delete;

  // Finds the images in the document and opens them; all that cannot be had is left out. The
  // document outlives this. Throws pdf::Error.
  //   resources - of the page
  void Choose(pdf::Document& document, const pdf::PageTree& pages, std::size_t page_index,
              const pdf::Object& resources, const PageObjects& objects);

  // What was chosen, once.
  const std::vector<pdfium::PageObject*>& objects() const { return chosen_; }

  // Paints on rows of the bitmap: `height` of them from `top` on. Rows are painted in their order,
  // each once.
  void Draw(std::uint8_t* pixels, int width, int top, int height);

 private:
  class Picture;

  bool Add(pdf::Document& document, std::uint32_t number, const ImageObject& object,
           const PictureFit& fit);

  std::vector<std::unique_ptr<Picture>> pictures_;
  std::vector<pdfium::PageObject*> chosen_;
  std::uint64_t held_bytes_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_PAGEPICTURES_H_
