// The engines for PDF/A while they are in use: initialised, with one object.
#ifndef TARNIX_DOCUMENT_PDFA_HANDLES_H_
#define TARNIX_DOCUMENT_PDFA_HANDLES_H_

#include "engines/pdfa/PdfA.h"

namespace TarnixTools {

class ValidatorHandle {
 public:
  ValidatorHandle() {
    engines::PdfValidatorInitialize();
    object_ = engines::PdfValidatorCreateObject();
  }

  ~ValidatorHandle() {
    if (object_ != nullptr) {
      engines::PdfValidatorClose(object_);
      engines::PdfValidatorDestroyObject(object_);
    }
    engines::PdfValidatorUnInitialize();
  }

  ValidatorHandle(const ValidatorHandle&) = delete;
  ValidatorHandle& operator=(const ValidatorHandle&) = delete;

  // Null when it could not be made.
  engines::TPdfValidator* Get() const { return object_; }

 private:
  engines::TPdfValidator* object_;
};

class ConverterHandle {
 public:
  ConverterHandle() {
    engines::Pdf2PdfInitialize();
    object_ = engines::Pdf2PdfCreateObject();
  }

  ~ConverterHandle() {
    if (object_ != nullptr) {
      engines::Pdf2PdfDestroyObject(object_);
    }
    engines::Pdf2PdfUnInitialize();
  }

  ConverterHandle(const ConverterHandle&) = delete;
  ConverterHandle& operator=(const ConverterHandle&) = delete;

  // Null when it could not be made.
  engines::TPdf2Pdf* Get() const { return object_; }

 private:
  engines::TPdf2Pdf* object_;
};

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_PDFA_HANDLES_H_
