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

// PDFium as another library of this process has it: one session, and the mutex in front of it.
struct PdfiumShare {
  std::mutex* mutex = nullptr;
  const pdfium::Api* (*api)() = nullptr;  // null when there is none; called with the mutex held
};

// The functions while they may be called. Waits for other threads; one thread holds no two.
class PdfiumLock {
 public:
  PdfiumLock();

  // False when there is no PDFium on this machine.
  bool is_available() const { return api_ != nullptr; }

  const pdfium::Api* operator->() const { return api_; }

  // The session of this library, and that every lock here takes the session of another one. The
  // latter before the first lock.
  static PdfiumShare Share();
  static void Use(const PdfiumShare& share);

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
