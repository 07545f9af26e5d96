// PDFium in this process: loaded and initialised when it is first needed, and never let go. It is
// not made for threads, not even on different documents: who holds a PdfiumLock has it alone.
//
//   PdfiumLock pdfium;
//   if (!pdfium.is_available()) { ... }
//   pdfium::Page* page = pdfium->FPDF_LoadPage(document, 0);
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMSESSION_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMSESSION_H_

#include <memory>
#include <mutex>

#include "engines/support/pdfium/PdfiumApi.h"

namespace TarnixTools::engines {

// The functions while they may be called. Waits for other threads; one thread holds no two.
class PdfiumLock {
 public:
  PdfiumLock();

  // False when there is no PDFium on this machine.
  bool is_available() const { return api_ != nullptr; }

  const pdfium::Api* operator->() const { return api_; }

 private:
  std::unique_lock<std::mutex> lock_;
  const pdfium::Api* api_ = nullptr;
};

struct PdfiumBitmapDestroyer {
  const pdfium::Api* api;

  void operator()(pdfium::Bitmap* bitmap) const { api->FPDFBitmap_Destroy(bitmap); }
};

// Released while the lock is held.
using PdfiumBitmapPtr = std::unique_ptr<pdfium::Bitmap, PdfiumBitmapDestroyer>;

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_PDFIUMSESSION_H_
