// The image-to-PDF engine while it is in use: initialised, with one object.
#ifndef TARNIX_CONVERSIONS_IMG2PDF_HANDLE_H_
#define TARNIX_CONVERSIONS_IMG2PDF_HANDLE_H_

#include "engines/img2pdf/Img2Pdf.h"

namespace TarnixTools {

class Img2PdfHandle {
 public:
  Img2PdfHandle() {
    engines::Img2PdfInitialize();
    object_ = engines::Img2PdfCreateObject();
  }

  ~Img2PdfHandle() {
    if (object_ != nullptr) {
      engines::Img2PdfDestroyObject(object_);
    }
    engines::Img2PdfUnInitialize();
  }

  Img2PdfHandle(const Img2PdfHandle&) = delete;
  Img2PdfHandle& operator=(const Img2PdfHandle&) = delete;

  // Null when it could not be made.
  engines::TImg2Pdf* Get() const { return object_; }

 private:
  engines::TImg2Pdf* object_;
};

}  // namespace TarnixTools

#endif  // TARNIX_CONVERSIONS_IMG2PDF_HANDLE_H_
