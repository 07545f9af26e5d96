// A document whose pages are drawn, whoever wants them as pixels. PDFium draws, and is kept from what
// it would not survive: a document that it cannot read, but the core can, is handed to it anew,
// written well; content without end is left out; large images are reduced before; a page gets a
// bounded time.
//
//   DrawnDocument document(path, "");
//   document.LoadPage(0);
//   document.Place({.left = 0, .top = 0, .width = 850, .height = 1100});
//   std::vector<std::uint8_t> band(850 * 4 * 100, 0xFF);   // white
//   for (int top = 0; top < 1100; top += 100) {
//     document.Draw(band.data(), 850, top, 100);           // then do something with it
//   }
//   document.ReleasePage();
//
// PageBitmap.h draws a whole page at a resolution. A document is used by one thread at a time;
// PDFium works for one of all threads at a time.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWNDOCUMENT_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWNDOCUMENT_H_

#include <cstdint>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "engines/support/drawing/DrawingCost.h"
#include "engines/support/drawing/DrawingTime.h"
#include "engines/support/drawing/PagePictures.h"
#include "engines/support/drawing/Placement.h"
#include "engines/support/drawing/UndrawnObjects.h"
#include "engines/support/pdfium/PdfiumFile.h"
#include "foundation/Platform.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

class DrawnDocument {
 public:
  // password: UTF-8. Throws DrawingError and pdf::Error.
  DrawnDocument(const platform::WidePath& path, std::string password);
  ~DrawnDocument();
  DrawnDocument(const DrawnDocument&) = delete;
  DrawnDocument& operator=(const DrawnDocument&) = delete;

  int page_count() const { return page_count_; }

  // The page that the other members are about. Throws DrawingError(kPage).
  //   page_index - zero-based
  void LoadPage(int page_index);

  // The size of the page as it is seen: the crop box, turned, in points. More than 0.
  double width_points() const { return width_points_; }

  double height_points() const { return height_points_; }

  // Whether something of the page is not drawn: because it would be without end, or because the time
  // was over by then; known when the page has been drawn.
  bool is_page_partial() const { return is_page_partial_; }

  // How long drawing may take, and who may end it.
  DrawingTime& time() { return time_; }

  // Has the loaded page drawn without its text, but for that of annotations; before it is placed.
  void LeaveTextOut();

  // Says where on the bitmap the page goes, before it is drawn.
  void Place(const Placement& placement);

  // Draws rows of the bitmap, `height` of them from `top` on; each once, and from top to bottom. When
  // the time is over, what is not drawn by then stays white.
  //   pixels - of these rows, white: four bytes each, blue, green, red and one that does not matter
  void Draw(std::uint8_t* pixels, int width, int top, int height);

  // Done with the page; it may be kept for a while, since the next one may share fonts with it.
  void ReleasePage();

 private:
  void OpenCore();
  void OpenPdfium();
  void TryRepairedCopy();
  void UseRepairedCopy();
  std::unique_ptr<PdfiumFile> OpenFile(PdfiumLock& pdfium, bool& needs_password);
  void ClosePages();
  void OpenPage(int page_index);
  bool OpenPdfiumPage();
  void ForgetOldPages(PdfiumLock& pdfium);
  void ChoosePictures();
  void RemoveObjects(const std::vector<pdfium::PageObject*>& objects);
  bool HasForm();
  bool IsKnown(int page_index) const;
  const pdf::PageTree::Page& PageOf(int page_index) const;
  std::optional<pdf::PageGeometry> GeometryOf(int page_index);
  pdf::Object ResourcesOf(int page_index, pdf::Arena& arena);
  bool DrawsTooMuch(int page_index);
  bool HasUndrawnObjects(int page_index);
  bool HoldsLargeImages(int page_index);

  std::shared_ptr<std::FILE> file_;  // the original, or the repaired copy
  std::string password_;
  std::unique_ptr<pdf::Document> core_;  // null when the core cannot read it
  std::unique_ptr<pdf::PageTree> pages_;
  std::unique_ptr<DrawingCost> cost_;
  std::unique_ptr<UndrawnObjects> undrawn_;
  std::unique_ptr<PdfiumFile> pdfium_file_;  // null when there are no pages
  std::optional<bool> has_form_;             // once it was asked for
  bool is_repaired_ = false;
  int page_count_ = 0;
  int page_index_ = -1;
  bool is_page_partial_ = false;
  pdfium::Page* page_ = nullptr;
  pdfium::Page* kept_page_ = nullptr;  // the one before
  DrawingTime time_;
  Placement placement_;
  std::unique_ptr<PagePictures> pictures_;  // null for none
  double width_points_ = 0;
  double height_points_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWNDOCUMENT_H_
