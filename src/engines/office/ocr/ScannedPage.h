// Gives scanned pages their text.
//
//   ScannedPages scanned(path, "", is_cancelled);
//   scanned.AddText(model);
#ifndef TARNIX_ENGINES_OFFICE_OCR_SCANNEDPAGE_H_
#define TARNIX_ENGINES_OFFICE_OCR_SCANNEDPAGE_H_

#include <atomic>
#include <string>

#include "engines/office/ocr/TextRecogniser.h"
#include "engines/support/drawing/DrawnDocument.h"
#include "engines/support/pages/PageModel.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::office {

// Puts recognised words into a page's model.
//   scale - points to a pixel of the picture that they were recognised in
// Where so much is recognised that the page is text, its pictures go: they show it once more.
void AddRecognisedText(const RecognisedText& text, int picture_width, int picture_height,
                       double scale, PageModel& page);

// For one thread at a time.
class ScannedPages {
 public:
  // password: UTF-8. The flag outlives this. Throws DrawingError, pdf::Error, and
  // std::runtime_error where there is nothing to recognise text with.
  ScannedPages(const platform::WidePath& path, const std::string& password,
               const std::atomic<bool>& is_cancelled);

  // Draws the page and finds its text. Throws Cancelled, DrawingError and pdf::Error.
  void AddText(PageModel& page);

 private:
  TextRecogniser recogniser_;  // before the document is opened: it may be missing
  DrawnDocument document_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_OCR_SCANNEDPAGE_H_
